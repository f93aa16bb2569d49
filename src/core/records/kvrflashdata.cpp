#include "kvrflashdata.h"

#include "common/outputfile.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <bit>
#include <cstring>

namespace kavro {

static_assert(std::endian::native == std::endian::little,
              "drive records are read whole as little-endian structures");

namespace {

// Debug lines are off unless asked for (QT_LOGGING_RULES), so that the command line's stderr
// carries only its own one-line messages.
Q_LOGGING_CATEGORY(lcRecords, "kavro.records", QtInfoMsg)

// Records are read in slices of this many, so that memory grows only with bytes that arrive.
constexpr qint64 RecordsPerSlice = 16384;

// Up to size bytes; fewer only where the data ends. A pipe may hand over less than asked at once.
QByteArray readUpTo(QIODevice& device, qint64 size)
{
    QByteArray bytes;
    while (bytes.size() < size) {
        QByteArray piece = device.read(size - bytes.size());
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    return bytes;
}

} // namespace

std::vector<_DRIVE_INFO_T> KVRFlashData::readRecords(QIODevice& device)
{
    std::vector<_DRIVE_INFO_T> records;
    QByteArray head = readUpTo(device, drv::HeaderSize);
    if (head.size() < qsizetype(drv::HeaderSize))
        return records;
    _DRIVE_INFO_HEADER_T header;
    std::memcpy(&header, head.constData(), drv::HeaderSize);

    // A file tells how much it holds; a pipe is read slice by slice until it ends.
    qint64 remaining = header.count;
    if (!device.isSequential())
        remaining = std::min(remaining, device.bytesAvailable() / qint64(drv::RecordSize));
    while (remaining > 0) {
        qint64 slice = std::min(remaining, RecordsPerSlice);
        QByteArray bytes = readUpTo(device, slice * qint64(drv::RecordSize));
        std::size_t complete = std::size_t(bytes.size()) / drv::RecordSize;
        std::size_t done = records.size();
        records.resize(done + complete);
        std::memcpy(records.data() + done, bytes.constData(), complete * drv::RecordSize);
        if (qint64(complete) < slice)
            break;
        remaining -= slice;
    }
    return records;
}

bool KVRFlashData::doReadFlashDataFile(const QString& path, QString* error)
{
    QFile file(path);
    QString reason;
    if (QFileInfo(path).isDir())
        reason = QStringLiteral("is a folder");
    else if (!file.open(QIODevice::ReadOnly))
        reason = file.errorString();
    if (!reason.isEmpty()) {
        qCDebug(lcRecords, "fopen fail:%s", qUtf8Printable(path));
        if (error)
            *error = reason;
        return false;
    }
    m_pFalshSaveValue = readRecords(file);
    return true;
}

QByteArray KVRFlashData::fileBytes() const
{
    _DRIVE_INFO_HEADER_T header;
    header.count = static_cast<std::uint32_t>(m_pFalshSaveValue.size());
    QByteArray bytes(reinterpret_cast<const char*>(&header), drv::HeaderSize);
    bytes.append(reinterpret_cast<const char*>(m_pFalshSaveValue.data()),
                 qsizetype(m_pFalshSaveValue.size() * drv::RecordSize));
    return bytes;
}

QString KVRFlashData::stringForColumnIndex(int column, qint64 row) const
{
    if (row < 0 || row >= count())
        return {};
    return flashDataCellText(column, m_pFalshSaveValue[std::size_t(row)], row);
}

std::optional<FlashDataPosition> KVRFlashData::positionForRow(qint64 row) const
{
    qCDebug(lcRecords, "rowNum=%lld", static_cast<long long>(row));
    if (row < 0 || row >= count())
        return std::nullopt;
    return flashDataPosition(m_pFalshSaveValue[std::size_t(row)]);
}

QByteArray KVRFlashData::csvDocument(const QStringList& titles) const
{
    QStringList fields;
    for (int column = 0; column < FlashDataColumnCount; ++column) {
        fields.append(titles.size() == FlashDataColumnCount
                          ? titles.at(column)
                          : QString::fromLatin1(flashDataColumns()[column].title));
    }
    QByteArray document = fields.join(',').toUtf8() + '\n';
    for (qint64 row = 0; row < count(); ++row) {
        fields.clear();
        for (int column = 0; column < FlashDataColumnCount; ++column)
            fields.append(stringForColumnIndex(column, row));
        document += fields.join(',').toUtf8() + '\n';
    }
    return document;
}

bool KVRFlashData::doWriteCSVFile(const QString& path, const QStringList& titles,
                                  QString* error) const
{
    return writeFile(path, csvDocument(titles), error);
}

} // namespace kavro
