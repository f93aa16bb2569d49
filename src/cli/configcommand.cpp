#include "qtcommandline.h"
#include "qtcommands.h"

#include "common/jsonwriter.h"
#include "settings/editablefields.h"
#include "settings/filedata.h"
#include "settings/settingfile.h"

#include <QFile>

#include <limits>

namespace kavro::cli {

namespace {

const char* const ConfigHelp = R"(Usage: kavro config SUBCOMMAND ...

Reads and writes the camera's settings file (config.bin, 428 bytes).

Subcommands:
  show FILE [--format json|text] [-o OUT]   every field of the file, in record order
  defaults OUT                              write the default settings file
  set FILE NAME=VALUE...                    change fields the settings pages edit

'kavro config SUBCOMMAND --help' describes each one.)";

const char* const ShowHelp = R"(Usage: kavro config show FILE [--format json|text] [-o OUT]

Prints every field of a settings file in record order, named as in the record, followed by
checksum_valid (whether the stored checksum matches the content).
  json (default)  one key per field; numbers as numbers; szPlateNumber, wifi_ssid and
                  wifi_password as text up to the first zero byte; dummy00 as 4 numbers
  text            one "name = value" line per field
The file must be exactly 428 bytes long.)";

const char* const DefaultsHelp = R"(Usage: kavro config defaults OUT

Writes the default settings file to OUT, as the settings window's reset and the card formatting
write it (checksum left 0). The external rear camera bits come from this computer's preference.)";

const char* const SetHelp = R"(Usage: kavro config set FILE NAME=VALUE...

Changes fields of a settings file to values the settings pages can store, then sets
osd_plate_flag from the car number, recomputes the checksum and writes the file back (the old
file stays intact if writing fails). Every other byte is kept. Nothing is written when any
assignment is refused.

Integers are decimal, or hexadecimal with 0x (handy for the motion-block masks).
  szPlateNumber          up to 8 ASCII letters and digits (empty clears it)
  sd_mem_always_ratio    20..80 in tens; sd_mem_motion_ratio becomes 100 minus it (and the other
  sd_mem_motion_ratio    way round), as the card-share slider does
  external_rear_camera   0..7 sets bits 0 to 2 and keeps the others; a whole value is taken
                         when its bits above 2 are those stored
  thresholds             0 or 5..150 hundredths of g
  the others             the values of their page's choices

Fields that can be set:
%1)";

// The file must be a whole record: a longer or shorter file is not a settings file, and the
// read stops one byte past the record so that a huge or endless file costs nothing.
bool loadRecord(const QString& command, const QString& path, _FILEDATA& record, int* status)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *status =
            fail(QStringLiteral("%1: cannot read %2: %3").arg(command, path, file.errorString()));
        return false;
    }
    QByteArray bytes = file.read(static_cast<qint64>(FileDataSize) + 1);
    if (!fileDataFromBytes(bytes, record)) {
        *status = fail(QStringLiteral("%1: %2 is not a settings file (it must be exactly %3 bytes)")
                           .arg(command, path)
                           .arg(FileDataSize));
        return false;
    }
    return true;
}

// Starts a subcommand: parses its options, answers --help and checks the number of positional
// arguments. Returns an exit status when the subcommand is already done.
std::optional<int> begin(QtCommandLine& line, const QStringList& valueOptions, const QString& help,
                         qsizetype minPositional, qsizetype maxPositional)
{
    if (!line.parse(valueOptions))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(help);
    qsizetype count = line.positional().size();
    if (count < minPositional || count > maxPositional)
        return fail(
            QStringLiteral("%1: wrong number of arguments (see --help)").arg(line.command()));
    return std::nullopt;
}

QByteArray showJson(const _FILEDATA& record)
{
    JsonWriter json;
    json.beginObject();
    for (const FileDataField& field : fileDataFields()) {
        json.key(field.name);
        switch (field.type) {
        case FieldType::Chars:
            json.value(fieldText(record, field).toStdString());
            break;
        case FieldType::U32Array:
            json.beginArray(JsonWriter::Layout::Inline);
            for (std::size_t i = 0; i < field.size / sizeof(std::uint32_t); ++i)
                json.value(static_cast<std::uint64_t>(fieldArrayElement(record, field, i)));
            json.endArray();
            break;
        default:
            json.value(fieldInteger(record, field));
            break;
        }
    }
    json.key("checksum_valid");
    json.value(hasValidChecksum(record));
    json.endObject();
    return QByteArray::fromStdString(json.take());
}

QByteArray quoted(const QString& text)
{
    JsonWriter json(false);
    json.value(text.toStdString());
    return QByteArray::fromStdString(json.take()).trimmed();
}

QByteArray showText(const _FILEDATA& record)
{
    QByteArray out;
    for (const FileDataField& field : fileDataFields()) {
        out += QByteArray(field.name.data(), static_cast<qsizetype>(field.name.size())) + " = ";
        switch (field.type) {
        case FieldType::Chars:
            out += quoted(fieldText(record, field));
            break;
        case FieldType::U32Array:
            for (std::size_t i = 0; i < field.size / sizeof(std::uint32_t); ++i)
                out += (i ? " " : "") + QByteArray::number(fieldArrayElement(record, field, i));
            break;
        default:
            out += QByteArray::number(fieldInteger(record, field));
            break;
        }
        out += '\n';
    }
    out += QByteArray("checksum_valid = ") + (hasValidChecksum(record) ? "true" : "false") + '\n';
    return out;
}

int runShow(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("config show"), arguments);
    if (std::optional<int> done =
            begin(line, {"-o", "--format"}, QString::fromUtf8(ShowHelp), 1, 1))
        return *done;
    std::optional<QString> format = line.format({"json", "text"});
    if (!format)
        return fail(line.error());
    _FILEDATA record;
    int status = ExitUsage;
    if (!loadRecord(line.command(), line.positional().at(0), record, &status))
        return status;
    return writeOutput(line, *format == "json" ? showJson(record) : showText(record));
}

int runDefaults(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("config defaults"), arguments);
    if (std::optional<int> done = begin(line, {}, QString::fromUtf8(DefaultsHelp), 1, 1))
        return *done;
    const QString& path = line.positional().at(0);
    if (writeDefaultSettingFile(path))
        return fail(QStringLiteral("%1: cannot write %2").arg(line.command(), path));
    return ExitOk;
}

// Names separated by blanks, indented, in lines of at most about 80 columns.
QString wrapped(const QStringList& names)
{
    QStringList lines{QString()};
    for (const QString& name : names) {
        if (!lines.last().isEmpty() && lines.last().size() + name.size() >= 80)
            lines.append(QString());
        lines.last() +=
            (lines.last().isEmpty() ? QStringLiteral("  ") : QStringLiteral(" ")) + name;
    }
    return lines.join(u'\n');
}

int runSet(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("config set"), arguments);
    QString help = QString::fromUtf8(SetHelp).arg(wrapped(editableFieldNames()));
    if (std::optional<int> done = begin(line, {}, help, 2, std::numeric_limits<qsizetype>::max()))
        return *done;
    const QString& path = line.positional().at(0);
    _FILEDATA record;
    int status = ExitUsage;
    if (!loadRecord(line.command(), path, record, &status))
        return status;
    if (std::optional<QString> refusal = assignFields(record, line.positional().mid(1)))
        return fail(QStringLiteral("%1: %2").arg(line.command(), *refusal));
    prepareFileDataForSave(record);
    if (writeSettingFile(record, path))
        return fail(QStringLiteral("%1: cannot write %2").arg(line.command(), path));
    return ExitOk;
}

} // namespace

int runConfigCommand(const QStringList& arguments)
{
    if (arguments.isEmpty())
        return fail(QStringLiteral("config: no subcommand given (try 'kavro config --help')"));
    const QString& subcommand = arguments.first();
    if (subcommand == "--help" || subcommand == "-h")
        return printHelp(QString::fromUtf8(ConfigHelp));
    if (subcommand == "show")
        return runShow(arguments.mid(1));
    if (subcommand == "defaults")
        return runDefaults(arguments.mid(1));
    if (subcommand == "set")
        return runSet(arguments.mid(1));
    return fail(QStringLiteral("config: unknown subcommand '%1' (try 'kavro config --help')")
                    .arg(subcommand));
}

} // namespace kavro::cli
