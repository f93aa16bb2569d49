#include "commands.h"
#include "handover.h"

#include <string_view>

using namespace kavro::cli;

namespace {

const char* const ToolHelp = R"(Usage: kavro COMMAND [ARGUMENTS]

Reads and writes the files of the KAVRO dash camera and its card.

Commands:
  telemetry PATH... [--format json|csv|gpx|geojson|kml] [--gap SECONDS] [--progress]
                                                         telemetry of recordings or whole cards
  list DIR [--format text|json]                          recordings of a folder, in list order
  config show FILE [--format json|text]                  fields of a config.bin
  config defaults OUT                                    write the default config.bin
  config set FILE NAME=VALUE...                          change fields of a config.bin
  drv FILE [--format csv|text]                           drive records of a .drv file
  clock PATH [--at "YYYY/MM/DD HH:MM:SS"]                write timeset.cfg

Every command takes --help. The commands that print (telemetry, list, config show, drv) take
-o FILE to write their output to a file instead; "-o -" is standard output.
Exit status: 0 on success, 2 on unusable input (with one line on stderr); telemetry gives 1 when
it skipped some files but read others.)";

} // namespace

int main(int argc, char* argv[])
{
    HandOver::setArguments(argc, argv);
    if (argc < 2)
        return fail("no command given (try 'kavro --help')");
    const std::string_view command = argv[1];
    if (command == "--help" || command == "-h" || command == "help")
        return printHelp(ToolHelp);
    if (command == "--version")
        return printHelp("kavro " KAVRO_VERSION);
    if (command == "telemetry")
        return runTelemetryCommand(Arguments(argv + 2, argv + argc));
    if (command == "list")
        return runListCommand(Arguments(argv + 2, argv + argc));
    if (command == "config" || command == "drv" || command == "clock")
        return fail(HandOver::toCompanion());
    return fail("unknown command '" + std::string(command) + "' (try 'kavro --help')");
}
