#pragma once

#include "commandline.h"

namespace kavro::cli {

// kavro itself links no toolkit library; the commands on the settings record and the drive
// records run in its companion, kavro-qtcli, to which kavro hands the whole command line over
// (see handover.h). Each command receives the arguments
// after its own name and returns the exit status.
int runTelemetryCommand(const Arguments& arguments);
int runListCommand(const Arguments& arguments);
// The telemetry of one recording file, as a document of its own.
int telemetryOfOneRecording(const CommandLine& line, const std::string& path,
                            const std::string& format);
// The telemetry of several recordings or folders as one document.
int runTripTelemetry(const CommandLine& line, const std::string& format, double gapSeconds);

} // namespace kavro::cli
