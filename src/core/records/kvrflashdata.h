#pragma once

#include "driveinfoformat.h"
#include "flashdatacolumns.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class QIODevice;

namespace kavro {

// The drive records of one file, as the drive-record page and `kavro drv` hold them: the records
// read from a file, their cell texts and their CSV export.
class KVRFlashData
{
public:
    // Reads the file at path. On success the records read replace those held before; when the file
    // cannot be opened or read, false is returned with a message and the records held stay.
    bool doReadFlashDataFile(const QString& path, QString* error = nullptr);

    // Reads a header and the records after it from any device. Never allocates more than the
    // device really delivers, whatever the header claims; only complete records count.
    static std::vector<_DRIVE_INFO_T> readRecords(QIODevice& device);

    void setRecords(std::vector<_DRIVE_INFO_T> records) { m_pFalshSaveValue = std::move(records); }
    const std::vector<_DRIVE_INFO_T>& records() const { return m_pFalshSaveValue; }
    qint64 count() const { return static_cast<qint64>(m_pFalshSaveValue.size()); }

    // The held records as the camera writes them: the header, then the records. The viewer never
    // writes drive records; the camera simulator and the tests do.
    QByteArray fileBytes() const;

    // The cell text of a column and row; empty outside the table.
    QString stringForColumnIndex(int column, qint64 row) const;

    // The map position of a row, none when the row does not exist (a click below the last row).
    std::optional<FlashDataPosition> positionForRow(qint64 row) const;

    // The CSV document: UTF-8 without byte-order mark, "\n" line ends, fields never quoted. The
    // first line holds the column titles: the English ones unless fifteen others are given.
    QByteArray csvDocument(const QStringList& titles = {}) const;

    // Writes csvDocument() to path atomically: a failed write leaves any old file as it was.
    bool doWriteCSVFile(const QString& path, const QStringList& titles = {},
                        QString* error = nullptr) const;

private:
    std::vector<_DRIVE_INFO_T> m_pFalshSaveValue;
};

} // namespace kavro
