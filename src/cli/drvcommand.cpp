#include "qtcommandline.h"
#include "qtcommands.h"

#include "records/kvrflashdata.h"

namespace kavro::cli {

namespace {

const char* const DrvHelp = R"(Usage: kavro drv FILE [--format csv|text] [-o FILE]

Prints the drive records of a .drv file (the camera keeps them in DrvInfo/kavro_000.drv).

  --format csv    the viewer's CSV export: a line of column titles, then one line per record
                  with its row number first (default)
  --format text   the same columns as an aligned table
  -o FILE         write to FILE instead of standard output)";

// The records as a table for a person: every column as wide as its widest text, right-aligned
// like the viewer's cells.
QByteArray textTable(const KVRFlashData& data)
{
    std::vector<QStringList> rows;
    QStringList titles;
    for (const FlashDataColumnInfo& column : flashDataColumns())
        titles.append(QString::fromLatin1(column.title));
    rows.push_back(titles);
    for (qint64 row = 0; row < data.count(); ++row) {
        QStringList cells;
        for (int column = 0; column < FlashDataColumnCount; ++column)
            cells.append(data.stringForColumnIndex(column, row));
        rows.push_back(cells);
    }

    std::vector<qsizetype> widths(FlashDataColumnCount, 0);
    for (const QStringList& cells : rows) {
        for (int column = 0; column < FlashDataColumnCount; ++column)
            widths[column] = std::max(widths[column], cells.at(column).size());
    }
    QByteArray table;
    for (const QStringList& cells : rows) {
        QStringList padded;
        for (int column = 0; column < FlashDataColumnCount; ++column)
            padded.append(cells.at(column).rightJustified(widths[column]));
        table += padded.join(QLatin1String("  ")).toUtf8() + '\n';
    }
    return table;
}

} // namespace

int runDrvCommand(const QStringList& arguments)
{
    QtCommandLine line(QStringLiteral("drv"), arguments);
    if (!line.parse({QStringLiteral("-o"), QStringLiteral("--format")}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(DrvHelp);
    std::optional<QString> format = line.format({QStringLiteral("csv"), QStringLiteral("text")});
    if (!format)
        return fail(line.error());
    if (line.positional().size() != 1)
        return fail(QStringLiteral("drv: expected one .drv file (try 'kavro drv --help')"));

    const QString& path = line.positional().constFirst();
    KVRFlashData data;
    QString error;
    if (!data.doReadFlashDataFile(path, &error))
        return fail(QStringLiteral("drv: cannot read %1: %2").arg(path, error));
    return writeOutput(line,
                       *format == QLatin1String("text") ? textTable(data) : data.csvDocument());
}

} // namespace kavro::cli
