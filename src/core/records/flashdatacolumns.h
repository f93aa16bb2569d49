#pragma once

#include "driveinfoformat.h"

#include <QString>

#include <array>

namespace kavro {

// The fifteen columns of the drive-record table, in order. The index is the column's identifier.
enum FlashDataColumn : int
{
    ColumnIndex = 0, // row number counted from 1
    ColumnSeq,
    ColumnDate,
    ColumnTime,
    ColumnYoil,
    ColumnLat,
    ColumnLon,
    ColumnDrivingDistance,
    ColumnCurSpeed,
    ColumnMaxSpeed,
    ColumnValue,
    ColumnX,
    ColumnY,
    ColumnZ,
    ColumnBattery,
    FlashDataColumnCount
};

// A column's localisation key, its English title (what the command line and the untranslated
// viewer show) and its width in points. Key and title stay together so that a translation by key
// and the English export can never disagree on the order.
struct FlashDataColumnInfo
{
    const char* key;
    const char* title;
    int width;
};

const std::array<FlashDataColumnInfo, FlashDataColumnCount>& flashDataColumns();

// The text the table shows in a column for the record in the given row (0-based). Column 0 shows
// the row number; an unknown column gives an empty text.
QString flashDataCellText(int column, const _DRIVE_INFO_T& record, qint64 row);

// The latitude and longitude texts, "%04d.%04d" and "%05d.%04d" of the record's two parts.
QString flashDataLatitudeText(const _DRIVE_INFO_T& record);
QString flashDataLongitudeText(const _DRIVE_INFO_T& record);

// A record's position in decimal degrees, read back from its latitude and longitude texts. The
// file carries no hemisphere, so both are taken as north and east. A zero coordinate means the
// camera had no position: such a record opens the map without moving it.
struct FlashDataPosition
{
    double latitude = 0;
    double longitude = 0;
    bool movesMap() const { return latitude != 0 && longitude != 0; }
};

FlashDataPosition flashDataPosition(const _DRIVE_INFO_T& record);

} // namespace kavro
