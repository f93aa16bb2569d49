#include "flashdatacolumns.h"

#include "card/nmeadegrees.h"

#include <cstdio>

namespace kavro {

namespace {

// Integer printf formats only: they read the same in every locale. The two fractional formats
// are done in integers below, because the C library's "%f" follows LC_NUMERIC.
template <typename... Args> QString printed(const char* format, Args... args)
{
    char buffer[64];
    int length = std::snprintf(buffer, sizeof buffer, format, args...);
    if (length < 0)
        return {};
    return QString::fromLatin1(buffer, std::min<int>(length, sizeof buffer - 1));
}

QString yoilText(std::uint8_t yoil)
{
    static const char* const words[] = {"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};
    return QString::fromLatin1(yoil < 7 ? words[yoil] : "-");
}

// "%+.2f" of value / 256. The quotient is exact in binary, so a tie (0.125) rounds to even as the C
// library does with an exact value; a negative value that rounds to zero keeps its sign ("-0.00").
QString accelerationText(std::int16_t value)
{
    int magnitude = value < 0 ? -int(value) : int(value);
    int hundredths = magnitude * 25 / 64;
    int rest = magnitude * 25 % 64;
    if (rest > 32 || (rest == 32 && hundredths % 2 != 0))
        ++hundredths;
    return printed("%c%d.%02d", value < 0 ? '-' : '+', hundredths / 100, hundredths % 100);
}

// "%.1f" of tenths / 10.0: the nearest double to a tenth never rounds away from its own digit.
QString distanceText(std::uint32_t tenths)
{
    return printed("%u.%u", unsigned(tenths / 10), unsigned(tenths % 10));
}

QString batteryText(std::int16_t tenths)
{
    // Division and remainder truncate toward zero, so -5 shows as " 0.-5" as on the camera.
    int value = tenths;
    return printed("%2d.%1d", value / 10, value % 10);
}

} // namespace

const std::array<FlashDataColumnInfo, FlashDataColumnCount>& flashDataColumns()
{
    static const std::array<FlashDataColumnInfo, FlashDataColumnCount> columns = {{
        {"setting.flashdata.index", "No.", 38},
        {"setting.flashdata.seq", "Seq", 38},
        {"setting.flashdata.date", "Date", 86},
        {"setting.flashdata.time", "Time", 72},
        {"setting.flashdata.yoil", "Day", 70},
        {"setting.flashdata.lat", "Latitude", 64},
        {"setting.flashdata.lon", "Longitude", 72},
        {"setting.flashdata.driving_distance", "Distance", 60},
        {"setting.flashdata.cur_speed", "Speed", 60},
        {"setting.flashdata.max_speed", "Max Speed", 60},
        {"setting.flashdata.value", "Valid", 48},
        {"X", "X", 48},
        {"Y", "Y", 48},
        {"Z", "Z", 48},
        {"setting.flashdata.battery", "Battery", 60},
    }};
    return columns;
}

QString flashDataLatitudeText(const _DRIVE_INFO_T& record)
{
    return printed("%04d.%04d", int(record.lat), int(record.latFrac));
}

QString flashDataLongitudeText(const _DRIVE_INFO_T& record)
{
    return printed("%05d.%04d", int(record.lon), int(record.lonFrac));
}

QString flashDataCellText(int column, const _DRIVE_INFO_T& r, qint64 row)
{
    switch (column) {
    case ColumnIndex:
        return printed("%lld", static_cast<long long>(row) + 1);
    case ColumnSeq:
        return printed("%d", int(r.seq));
    case ColumnDate:
        return printed("%4d/%02d/%02d", r.year + 1900, int(r.month), int(r.day));
    case ColumnTime:
        return printed("%02d:%02d:%02d", int(r.hour), int(r.minute), int(r.second));
    case ColumnYoil:
        return yoilText(r.yoil);
    case ColumnLat:
        return flashDataLatitudeText(r);
    case ColumnLon:
        return flashDataLongitudeText(r);
    case ColumnDrivingDistance:
        return distanceText(r.drivingDistance);
    case ColumnCurSpeed:
        return printed("%d", int(r.curSpeed));
    case ColumnMaxSpeed:
        return printed("%d", int(r.maxSpeed));
    case ColumnValue:
        return QString::fromLatin1(r.value == 1 ? "A" : "V");
    case ColumnX:
        return accelerationText(r.xAxis);
    case ColumnY:
        return accelerationText(r.yAxis);
    case ColumnZ:
        return accelerationText(r.zAxis);
    case ColumnBattery:
        return batteryText(r.battery);
    default:
        return {};
    }
}

FlashDataPosition flashDataPosition(const _DRIVE_INFO_T& record)
{
    // The viewer reads the shown texts back as numbers, so a fraction part above 9999
    // ("3724.12345") counts as the decimals it shows, not as a carry into the minutes.
    FlashDataPosition position;
    nmeaToDegrees(&position.latitude, &position.longitude, flashDataLatitudeText(record).toDouble(),
                  flashDataLongitudeText(record).toDouble());
    return position;
}

} // namespace kavro
