#include "qtcommandline.h"
#include "qtcommands.h"

#include "card/cardrules.h"
#include "card/timesetfile.h"

#include <QDir>
#include <QFileInfo>

namespace kavro::cli {

namespace {

const char* const ClockHelp = R"(Usage: kavro clock PATH [--at "YYYY/MM/DD HH:MM:SS"]

Writes the camera's clock file: PATH/timeset.cfg when PATH is a folder (a card's root), else the
file PATH. It holds the given moment, or the computer's local time now, as 19 characters; the
camera sets its clock from it. An existing longer file keeps its bytes after the first 19.)";

} // namespace

int runClockCommand(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("clock"), arguments);
    if (!line.parse({QStringLiteral("--at")}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(ClockHelp);
    if (line.positional().size() != 1)
        return fail(
            QStringLiteral("clock: expected one folder or file (try 'kavro clock --help')"));

    std::optional<QByteArray> text;
    if (std::optional<QString> at = line.value(QStringLiteral("--at"))) {
        std::optional<std::pair<QDate, QTime>> moment = parseTimeSetText(*at);
        if (moment)
            text = timeSetText(moment->first, moment->second);
        if (!text)
            return fail(QStringLiteral("clock: '%1' is not a real moment in the form "
                                       "YYYY/MM/DD HH:MM:SS")
                            .arg(*at));
    } else {
        QDateTime now = QDateTime::currentDateTime();
        text = timeSetText(now, now);
        if (!text)
            return fail(QStringLiteral("clock: the computer's clock is out of range"));
    }

    QString path = line.positional().constFirst();
    if (QFileInfo(path).isDir())
        path = QDir(path).filePath(TimeSetFileName);
    if (!QFileInfo(QFileInfo(path).absolutePath()).isDir())
        return fail(QStringLiteral("clock: no folder %1").arg(QFileInfo(path).absolutePath()));
    QString error;
    if (!doWriteConfigFile(path, *text, &error))
        return fail(QStringLiteral("clock: cannot write %1: %2").arg(path, error));
    return ExitOk;
}

} // namespace kavro::cli
