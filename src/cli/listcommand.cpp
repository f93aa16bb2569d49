#include "commandline.h"
#include "commands.h"
#include "streamedoutput.h"

#include "common/jsonwriter.h"
#include "common/utf8text.h"
#include "recording/recordingscan.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>

#include <sys/stat.h>
#include <unistd.h>

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

// The texts of one row. The file name and the group are parts of the path (an admitted name
// ends in "_F" or "_R" and ".avi" in any case), and the date and time are written digit by
// digit: per-row formatting was most of the cost of a full card.
struct Row
{
    explicit Row(const RecordingName& media) : path(media.path())
    {
        file = path.substr(path.rfind('/') + 1);
        fileChars = utf16Length(file);
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

    std::string_view dateText() const { return dated ? std::string_view(date, 10) : ""; }
    std::string_view timeText() const { return dated ? std::string_view(time, 8) : ""; }

    static void digits(char* out, int value, int count)
    {
        for (int i = count - 1; i >= 0; --i, value /= 10)
            out[i] = char('0' + value % 10);
    }

    std::string_view path;
    std::string_view file;
    std::string_view group;
    std::size_t fileChars = 0; // in UTF-16 units, as the text columns have always been counted
    char date[10] = {};
    char time[8] = {};
    bool dated = false;
};

// The front and rear record of each moment, by group name; a later record of the same name and
// channel takes the slot of the earlier one, as in the viewer's pair table.
class Partners
{
public:
    explicit Partners(const std::vector<RecordingName>& list) : m_list(list)
    {
        for (std::size_t i = 0; i < list.size(); ++i) {
            Slots& pair = m_pairs[RecordingName::pairKey(list[i].name())];
            (list[i].direction() == KVRMediaDirectionRear ? pair.rear : pair.front) = i;
        }
    }
    // The record of the other channel of the same moment, or null.
    const RecordingName* of(const RecordingName& media) const
    {
        const auto found = m_pairs.find(media.groupName());
        if (found == m_pairs.end())
            return nullptr;
        const std::size_t other =
            media.direction() == KVRMediaDirectionRear ? found->second.front : found->second.rear;
        return other == None ? nullptr : &m_list[other];
    }

private:
    static constexpr std::size_t None = std::size_t(-1);
    struct Slots
    {
        std::size_t front = None;
        std::size_t rear = None;
    };
    const std::vector<RecordingName>& m_list;
    std::map<std::string_view, Slots, std::less<>> m_pairs;
};

std::string_view modeWord(const RecordingName& media)
{
    switch (media.division()) {
    case KVRMediaDivisionMotion:
        return "motion";
    case KVRMediaDivisionEvent:
        return "event";
    default:
        return "always";
    }
}

std::string_view channelWord(const RecordingName& media)
{
    if (media.direction() == KVRMediaDirectionFront)
        return "front";
    return media.direction() == KVRMediaDirectionRear ? "rear" : "unknown";
}

// Rows go out in pieces of about this size: a full card's list is megabytes, and holding it
// whole cost more in fresh pages than writing it.
constexpr std::size_t PieceSize = 64 * 1024;

bool jsonRows(const std::vector<RecordingName>& list, StreamedOutput& output)
{
    const Partners partners(list);
    JsonWriter json;
    json.beginArray();
    for (const RecordingName& media : list) {
        const Row row(media);
        json.beginObject(JsonWriter::Layout::Inline);
        json.key("path");
        json.value(row.path);
        json.key("file");
        json.value(row.file);
        json.key("mode");
        json.value(modeWord(media));
        json.key("channel");
        json.value(channelWord(media));
        json.key("date");
        json.value(row.dateText());
        json.key("time");
        json.value(row.timeText());
        json.key("group");
        json.value(row.group);
        json.key("partner");
        if (const RecordingName* partner = partners.of(media))
            json.value(partner->path());
        else
            json.null();
        json.endObject();
        if (json.pendingSize() >= PieceSize && !output.write(json.takePending()))
            return false;
    }
    json.endArray();
    return output.write(json.take());
}

bool textRows(const std::vector<RecordingName>& list, StreamedOutput& output)
{
    std::size_t fileWidth = 0;
    for (const RecordingName& media : list)
        fileWidth = std::max(fileWidth, Row(media).fileChars);
    std::string text;
    text.reserve(PieceSize + 4096);
    auto column = [&text](std::string_view value, std::size_t chars, std::size_t width) {
        if (value.empty()) {
            value = "-";
            chars = 1;
        }
        text.append(value);
        text.append((width > chars ? width - chars : 0) + 2, ' ');
    };
    for (const RecordingName& media : list) {
        const Row row(media);
        column(modeWord(media), modeWord(media).size(), 6);
        column(row.dateText(), row.dateText().size(), 10);
        column(row.timeText(), row.timeText().size(), 8);
        column(channelWord(media), channelWord(media).size(), 5);
        column(row.file, row.fileChars, fileWidth);
        text.append(row.path);
        text += '\n';
        if (text.size() >= PieceSize) {
            if (!output.write(text))
                return false;
            text.clear();
        }
    }
    return output.write(text);
}

} // namespace

int runListCommand(const Arguments& arguments)
{
    CommandLine line("list", arguments);
    if (!line.parse({"-o", "--format"}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(ListHelp);
    std::optional<std::string> format = line.format({"text", "json"});
    if (!format)
        return fail(line.error());
    if (line.positional().size() != 1)
        return fail("list: expected one folder (try 'kavro list --help')");

    const std::string& given = line.positional().front();
    struct stat info;
    if (::stat(given.c_str(), &info) != 0)
        return fail("list: no such folder: " + given);
    if (!S_ISDIR(info.st_mode))
        return fail("list: not a folder: " + given);
    if (::access(given.c_str(), R_OK | X_OK) != 0)
        return fail("list: cannot read folder: " + given);

    std::vector<RecordingName> list = RecordingScan::collect(given);
    RecordingScan::sort(list);
    StreamedOutput output(line);
    if (*format == "json")
        jsonRows(list, output);
    else
        textRows(list, output);
    return output.finish();
}

} // namespace kavro::cli
