#pragma once

#include "commandline.h"

namespace kavro::cli {

// kavro itself links no toolkit library; the commands that need the recording list, the settings
// record or the drive records run in its companion, kavro-qtcli, to which kavro hands the whole
// command line over (see handover.h). Each command receives the arguments after its own name
// and returns the exit status.
int runTelemetryCommand(const Arguments& arguments);
// The telemetry of one recording file, as a document of its own.
int telemetryOfOneRecording(const CommandLine& line, const std::string& path,
                            const std::string& format);
// The rest of the telemetry command: several recordings or folders, or an -o file. In kavro
// this hands over to the companion.
int runTripTelemetry(const CommandLine& line, const std::string& format, double gapSeconds,
                     bool oneFile);

} // namespace kavro::cli
