#include "cardlog.h"

namespace kavro {

// Debug lines are off unless asked for (QT_LOGGING_RULES); warnings always show.
Q_LOGGING_CATEGORY(lcCard, "kavro.card", QtInfoMsg)

} // namespace kavro
