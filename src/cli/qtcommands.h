#pragma once

#include <QStringList>

namespace kavro::cli {

// The companion's commands, on the recording list, the settings record and the drive records.
int runListCommand(const QStringList& arguments);
int runConfigCommand(const QStringList& arguments);
int runDrvCommand(const QStringList& arguments);
int runClockCommand(const QStringList& arguments);

} // namespace kavro::cli
