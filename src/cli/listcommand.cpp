#include "qtcommandline.h"
#include "qtcommands.h"
#include "streamedoutput.h"

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

// The texts of one row in UTF-8. The path is converted once; the file name and the group are
// parts of it (an admitted name ends in "_F" or "_R" and ".avi" in any case), and the date and
// time are written digit by digit: per-row formatting was most of the cost of a full card.
struct Row
{
    explicit Row(const KVRMedia& media) : path(media.path().toUtf8())
    {
        const qsizetype fileStart = path.lastIndexOf('/') + 1;
        file = view(fileStart, path.size() - fileStart);
        fileChars = media.path().size() - (media.path().lastIndexOf(u'/') + 1);
        group = file.size() >= 6 ? file.substr(0, file.size() - 6) : std::string_view();
        if (!media.hasTime())
            return;
        const KVRMediaTime& t = media.time();
        // The name's range test keeps the year to four digits and the rest to two.
        digits(date, t.year, 4);
        date[4] = date[7] = '-';
        digits(date + 5, t.month, 2);
        digits(date + 8, t.day, 2);
        digits(time, t.hour, 2);
        time[2] = time[5] = ':';
        digits(time + 3, t.minute, 2);
        digits(time + 6, t.second, 2);
        dated = true;
    }

    std::string_view view(qsizetype from, qsizetype length) const
    {
        return {path.constData() + from, std::size_t(length)};
    }
    std::string_view dateText() const { return dated ? std::string_view(date, 10) : ""; }
    std::string_view timeText() const { return dated ? std::string_view(time, 8) : ""; }

    static void digits(char* out, int value, int count)
    {
        for (int i = count - 1; i >= 0; --i, value /= 10)
            out[i] = char('0' + value % 10);
    }

    QByteArray path;
    std::string_view file;
    std::string_view group;
    qsizetype fileChars = 0; // in UTF-16 units, as the text columns have always been counted
    char date[10] = {};
    char time[8] = {};
    bool dated = false;
};

std::string_view modeWord(const KVRMedia& media)
{
    switch (media.mediaDivision()) {
    case KVRMediaDivisionMotion:
        return "motion";
    case KVRMediaDivisionEvent:
        return "event";
    default:
        return "always";
    }
}

std::string_view channelWord(const KVRMedia& media)
{
    if (media.isFrontMedia())
        return "front";
    return media.isRearMedia() ? "rear" : "unknown";
}

// Rows go out in pieces of about this size: a full card's list is megabytes, and holding it
// whole cost more in fresh pages than writing it.
constexpr qsizetype PieceSize = 64 * 1024;

bool jsonRows(const KVRMediaList& list, StreamedOutput& output)
{
    const QHash<QString, KVRMediaPair> pairs = list.mediaPairDic();
    JsonWriter json;
    json.beginArray();
    for (const KVRMediaPtr& media : list.medias()) {
        const Row row(*media);
        json.beginObject(JsonWriter::Layout::Inline);
        json.key("path");
        json.value(std::string_view(row.path.constData(), std::size_t(row.path.size())));
        json.key("file");
        json.value(row.file);
        json.key("mode");
        json.value(modeWord(*media));
        json.key("channel");
        json.value(channelWord(*media));
        json.key("date");
        json.value(row.dateText());
        json.key("time");
        json.value(row.timeText());
        json.key("group");
        json.value(row.group);
        json.key("partner");
        const auto pair = pairs.constFind(media->mediaGroupName());
        if (KVRMediaPtr partner = pair != pairs.constEnd() ? pair->partnerOf(*media) : nullptr)
            json.value(partner->path().toStdString());
        else
            json.null();
        json.endObject();
        if (json.pendingSize() >= std::size_t(PieceSize) && !output.write(json.takePending()))
            return false;
    }
    json.endArray();
    return output.write(json.take());
}

bool textRows(const KVRMediaList& list, StreamedOutput& output)
{
    const QList<KVRMediaPtr> medias = list.medias();
    qsizetype fileWidth = 0;
    for (const KVRMediaPtr& media : medias)
        fileWidth = std::max(fileWidth, media->path().size() - media->path().lastIndexOf(u'/') - 1);
    QByteArray text;
    text.reserve(PieceSize + 4096);
    auto column = [&text](std::string_view value, qsizetype chars, qsizetype width) {
        if (value.empty()) {
            value = "-";
            chars = 1;
        }
        text.append(value.data(), qsizetype(value.size()));
        text.append(std::max<qsizetype>(0, width - chars) + 2, ' ');
    };
    for (const KVRMediaPtr& media : medias) {
        const Row row(*media);
        column(modeWord(*media), qsizetype(modeWord(*media).size()), 6);
        column(row.dateText(), qsizetype(row.dateText().size()), 10);
        column(row.timeText(), qsizetype(row.timeText().size()), 8);
        column(channelWord(*media), qsizetype(channelWord(*media).size()), 5);
        column(row.file, row.fileChars, fileWidth);
        text.append(row.path);
        text.append('\n');
        if (text.size() >= PieceSize) {
            if (!output.write(text))
                return false;
            text.resize(0);
        }
    }
    return output.write(text);
}

} // namespace

int runListCommand(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("list"), arguments);
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
    StreamedOutput output(line.line());
    if (*format == "json")
        jsonRows(list, output);
    else
        textRows(list, output);
    return output.finish();
}

} // namespace kavro::cli
