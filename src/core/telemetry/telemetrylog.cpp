#include "telemetrylog.h"

Q_LOGGING_CATEGORY(lcTelemetry, "kavro.telemetry", QtInfoMsg)
