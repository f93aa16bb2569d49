#include "camsimlog.h"

Q_LOGGING_CATEGORY(lcCamsim, "kavro.camsim")
