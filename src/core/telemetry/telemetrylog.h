#pragma once

#include <QLoggingCategory>

// Diagnostics of the telemetry readers and writers. Debug lines (the walk of a file) are off
// unless QT_LOGGING_RULES turns them on, so the command line's stderr stays clean.
Q_DECLARE_LOGGING_CATEGORY(lcTelemetry)
