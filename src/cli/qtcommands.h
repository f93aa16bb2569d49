#pragma once

#include <QStringList>

namespace kavro::cli {

// The companion's commands, on the settings record and the drive records.
int runConfigCommand(const QStringList& arguments);
int runDrvCommand(const QStringList& arguments);
int runClockCommand(const QStringList& arguments);

} // namespace kavro::cli
