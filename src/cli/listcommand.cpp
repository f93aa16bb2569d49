#include "commandline.h"
#include "commands.h"

#include "common/jsonwriter.h"
#include "recording/kvrmedialist.h"

#include <QDir>
#include <QFileInfo>

namespace kavro::cli {

namespace {

const char* const ListHelp = R"(Usage: kavro list DIR [--format text|json] [-o FILE]

Lists the recordings in DIR and its subfolders as the viewer's recording list shows them: one row
per file, oldest first (at equal times event, motion, always; then front before rear).

Formats:
  text   one aligned line per row: mode, date, time, channel, file, path
  json   an array of {"path", "file", "mode", "channel", "date", "time", "group", "partner"};
         date and time are "" for a name without a valid time, partner is the path of the
         other channel's file of the same moment, or null)";

QString modeWord(const KVRMedia& media)
{
    switch (media.mediaDivision()) {
    case KVRMediaDivisionMotion:
        return QStringLiteral("motion");
    case KVRMediaDivisionEvent:
        return QStringLiteral("event");
    default:
        return QStringLiteral("always");
    }
}

QString channelWord(const KVRMedia& media)
{
    if (media.isFrontMedia())
        return QStringLiteral("front");
    return media.isRearMedia() ? QStringLiteral("rear") : QStringLiteral("unknown");
}

QString dateText(const KVRMedia& media)
{
    if (!media.hasTime())
        return QString();
    return QString::asprintf("%04d-%02d-%02d", media.year(), media.month(), media.day());
}

QString timeText(const KVRMedia& media)
{
    if (!media.hasTime())
        return QString();
    return QString::asprintf("%02d:%02d:%02d", media.hour(), media.minute(), media.second());
}

QByteArray jsonRows(const KVRMediaList& list)
{
    JsonWriter json;
    json.beginArray();
    for (const KVRMediaPtr& media : list.medias()) {
        json.beginObject(JsonWriter::Layout::Inline);
        json.key("path");
        json.value(media->path());
        json.key("file");
        json.value(media->fileName());
        json.key("mode");
        json.value(modeWord(*media));
        json.key("channel");
        json.value(channelWord(*media));
        json.key("date");
        json.value(dateText(*media));
        json.key("time");
        json.value(timeText(*media));
        json.key("group");
        json.value(media->mediaGroupName());
        json.key("partner");
        std::optional<KVRMediaPair> pair = list.findMediaPairWithFileName(media->mediaName());
        if (KVRMediaPtr partner = pair ? pair->partnerOf(*media) : nullptr)
            json.value(partner->path());
        else
            json.null();
        json.endObject();
    }
    json.endArray();
    return json.take();
}

QByteArray textRows(const KVRMediaList& list)
{
    QList<KVRMediaPtr> medias = list.medias();
    qsizetype fileWidth = 0;
    for (const KVRMediaPtr& media : medias)
        fileWidth = std::max(fileWidth, media->fileName().size());
    QString text;
    for (const KVRMediaPtr& media : medias) {
        auto column = [](const QString& value, qsizetype width) {
            return (value.isEmpty() ? QStringLiteral("-") : value).leftJustified(width) +
                   QLatin1StringView("  ");
        };
        text += column(modeWord(*media), 6) + column(dateText(*media), 10) +
                column(timeText(*media), 8) + column(channelWord(*media), 5) +
                column(media->fileName(), fileWidth) + media->path() + u'\n';
    }
    return text.toUtf8();
}

} // namespace

int runListCommand(const QStringList& arguments)
{
    CommandLine line(QStringLiteral("list"), arguments);
    if (!line.parse({"-o", "--format"}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(ListHelp);
    std::optional<QString> format = line.format({"text", "json"});
    if (!format)
        return fail(line.error());
    if (line.positional().size() != 1)
        return fail(QStringLiteral("list: expected one folder (try 'kavro list --help')"));

    const QString& given = line.positional().constFirst();
    QFileInfo folder(given);
    if (!folder.exists())
        return fail(QStringLiteral("list: no such folder: %1").arg(given));
    if (!folder.isDir())
        return fail(QStringLiteral("list: not a folder: %1").arg(given));
    if (!folder.isReadable() || !folder.isExecutable())
        return fail(QStringLiteral("list: cannot read folder: %1").arg(given));

    KVRMediaList list;
    list.setDirectoryPathAndWait(QDir::cleanPath(folder.absoluteFilePath()));
    return writeOutput(line, *format == "json" ? jsonRows(list) : textRows(list));
}

} // namespace kavro::cli
