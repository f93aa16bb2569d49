#include "map/maplog.h"

namespace kavro {

Q_LOGGING_CATEGORY(lcMap, "kavro.map", QtInfoMsg)

} // namespace kavro
