#pragma once

#include <QLoggingCategory>

namespace kavro {

// Diagnostics of the map views: page loads, the page's own console, window placement.
Q_DECLARE_LOGGING_CATEGORY(lcMap)

} // namespace kavro
