#include "commandline.h"
#include "commands.h"

#include <QCoreApplication>
#include <QStringList>

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
    // No application object: nothing here runs an event loop, and building one costs a locale
    // set-up on every start. The names are kept for the preferences store.
    QCoreApplication::setApplicationName("kavro");
    QCoreApplication::setOrganizationName("KAVRO");

    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.isEmpty())
        return fail("no command given (try 'kavro --help')");
    QString command = arguments.takeFirst();
    if (command == "--help" || command == "-h" || command == "help")
        return printHelp(ToolHelp);
    if (command == "--version")
        return printHelp(QStringLiteral("kavro " KAVRO_VERSION));
    if (command == "telemetry")
        return runTelemetryCommand(arguments);
    if (command == "list")
        return runListCommand(arguments);
    if (command == "config")
        return runConfigCommand(arguments);
    if (command == "drv")
        return runDrvCommand(arguments);
    if (command == "clock")
        return runClockCommand(arguments);
    return fail(QStringLiteral("unknown command '%1' (try 'kavro --help')").arg(command));
}
