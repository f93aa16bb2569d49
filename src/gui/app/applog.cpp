#include "applog.h"

namespace kavro {

Q_LOGGING_CATEGORY(lcApp, "kavro.app")

} // namespace kavro
