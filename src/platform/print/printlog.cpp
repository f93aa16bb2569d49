#include "printlog.h"

Q_LOGGING_CATEGORY(lcPrint, "kavro.print")
