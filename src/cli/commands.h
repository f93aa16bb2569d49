#pragma once

#include <QStringList>

namespace kavro::cli {

// Each subcommand receives the arguments after its own name and returns the exit status.
int runTelemetryCommand(const QStringList& arguments);
int runListCommand(const QStringList& arguments);
int runConfigCommand(const QStringList& arguments);
int runDrvCommand(const QStringList& arguments);
int runClockCommand(const QStringList& arguments);

} // namespace kavro::cli
