#pragma once

#include <QLoggingCategory>

namespace kavro {

Q_DECLARE_LOGGING_CATEGORY(lcWidgets)

} // namespace kavro
