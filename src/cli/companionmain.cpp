// kavro-qtcli: the commands of kavro on the settings record and the drive records, with their
// toolkit. kavro hands these command lines over unchanged.
#include "qtcommandline.h"
#include "qtcommands.h"

#include <QCoreApplication>

using namespace kavro::cli;

int main(int argc, char* argv[])
{
    // No application object: nothing here runs an event loop, and building one costs a locale
    // set-up on every start. The names are kept for the preferences store.
    QCoreApplication::setApplicationName("kavro");
    QCoreApplication::setOrganizationName("KAVRO");

    if (argc < 2)
        return fail("no command given (try 'kavro --help')");
    const std::string command = argv[1];
    QStringList arguments;
    for (int i = 2; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (command == "config")
        return runConfigCommand(arguments);
    if (command == "drv")
        return runDrvCommand(arguments);
    if (command == "clock")
        return runClockCommand(arguments);
    return fail("unknown command '" + command + "' (try 'kavro --help')");
}
