#pragma once

#include <QLoggingCategory>

namespace kavro {

// Diagnostics of the card windows' core: disk discovery, the command runner, the clock file.
Q_DECLARE_LOGGING_CATEGORY(lcCard)

} // namespace kavro
