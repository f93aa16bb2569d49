#include "resources/translations/infoplistkeys.h"

#include <QtGlobal>

namespace kavro {

namespace {

// Marked here so that lupdate keeps them in the tables with their English texts; the core, which
// owns them, has no translation layer.
const char* const dataKeys[] = {
    //% "No."
    QT_TRID_NOOP("setting.flashdata.index"),
    //% "Seq"
    QT_TRID_NOOP("setting.flashdata.seq"),
    //% "Date"
    QT_TRID_NOOP("setting.flashdata.date"),
    //% "Time"
    QT_TRID_NOOP("setting.flashdata.time"),
    //% "Day"
    QT_TRID_NOOP("setting.flashdata.yoil"),
    //% "Latitude"
    QT_TRID_NOOP("setting.flashdata.lat"),
    //% "Longitude"
    QT_TRID_NOOP("setting.flashdata.lon"),
    //% "Distance"
    QT_TRID_NOOP("setting.flashdata.driving_distance"),
    //% "Speed"
    QT_TRID_NOOP("setting.flashdata.cur_speed"),
    //% "Max Speed"
    QT_TRID_NOOP("setting.flashdata.max_speed"),
    //% "Valid"
    QT_TRID_NOOP("setting.flashdata.value"),
    //% "Battery"
    QT_TRID_NOOP("setting.flashdata.battery"),
    //% "The file could not be opened for writing. The card may be write-protected or removed."
    QT_TRID_NOOP("msg.file_open_fail"),
    //% "Please enter a number."
    QT_TRID_NOOP("msg.input_value_invalid_format"),
    //% "Please enter a value between %1 and %2."
    QT_TRID_NOOP("msg.gsensor_outofrange_fmt"),
    //% "Each recording area needs at least 20% of the card."
    QT_TRID_NOOP("msg.sdcard_ratio_too_low"),
};

} // namespace

QStringList infoPlistDataKeys()
{
    QStringList keys;
    for (const char* key : dataKeys)
        keys.append(QString::fromLatin1(key));
    return keys;
}

} // namespace kavro
