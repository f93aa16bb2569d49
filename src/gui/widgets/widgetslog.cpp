#include "widgets/widgetslog.h"

namespace kavro {

Q_LOGGING_CATEGORY(lcWidgets, "kavro.widgets")

} // namespace kavro
