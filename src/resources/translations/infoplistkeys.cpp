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
    // Choices of the settings pages, named in the core's field table.
    //% "Off"
    QT_TRID_NOOP("unuse"),
    //% "On"
    QT_TRID_NOOP("use"),
    //% "Off"
    QT_TRID_NOOP("off"),
    //% "On"
    QT_TRID_NOOP("on"),
    //% "None"
    QT_TRID_NOOP("none"),
    //% "Default"
    QT_TRID_NOOP("default"),
    //% "Auto"
    QT_TRID_NOOP("auto"),
    //% "External power"
    QT_TRID_NOOP("externpower"),
    //% "Custom"
    QT_TRID_NOOP("customize"),
    //% "least"
    QT_TRID_NOOP("insensitive"),
    //% "most"
    QT_TRID_NOOP("sensitive"),
    //% "Normal"
    QT_TRID_NOOP("setting.video.quality_normal"),
    //% "High"
    QT_TRID_NOOP("setting.video.quality_high"),
    //% "Highest"
    QT_TRID_NOOP("setting.video.quality_highest"),
    //% "30 fps"
    QT_TRID_NOOP("30fps"),
    //% "15 fps"
    QT_TRID_NOOP("15fps"),
    //% "No filter"
    QT_TRID_NOOP("cpl_unuse"),
    //% "CPL filter"
    QT_TRID_NOOP("cpl_use"),
    //% "Light tint"
    QT_TRID_NOOP("light_tinting"),
    //% "Dark tint"
    QT_TRID_NOOP("dark_tinting"),
    //% "%1 s"
    QT_TRID_NOOP("nSecond_fmt"),
    //% "%1 min"
    QT_TRID_NOOP("nMinute_fmt"),
    //% "%1 h"
    QT_TRID_NOOP("nHour_fmt"),
    //% "Mon"
    QT_TRID_NOOP("mon"),
    //% "Tue"
    QT_TRID_NOOP("tue"),
    //% "Wed"
    QT_TRID_NOOP("wed"),
    //% "Thu"
    QT_TRID_NOOP("thu"),
    //% "Fri"
    QT_TRID_NOOP("fri"),
    //% "Sat"
    QT_TRID_NOOP("sat"),
    //% "Sun"
    QT_TRID_NOOP("sun"),
    //% "Low"
    QT_TRID_NOOP("setting.aux.low"),
    //% "Medium (sedan)"
    QT_TRID_NOOP("setting.aux.medium_sedan"),
    //% "High (SUV)"
    QT_TRID_NOOP("setting.aux.high_suv"),
    //% "low"
    QT_TRID_NOOP("setting.aux.volume_low"),
    //% "high"
    QT_TRID_NOOP("setting.aux.volume_up"),
    //% "5 min"
    QT_TRID_NOOP("5min"),
    //% "3 min"
    QT_TRID_NOOP("3min"),
    //% "Top left"
    QT_TRID_NOOP("setting.aux.pip_top_left"),
    //% "Top right"
    QT_TRID_NOOP("setting.aux.pip_top_right"),
    //% "Bottom left"
    QT_TRID_NOOP("setting.aux.pip_bottom_left"),
    //% "Bottom right"
    QT_TRID_NOOP("setting.aux.pip_bottom_right"),
    //% "Off"
    QT_TRID_NOOP("setting.aux.auto_format_notuse"),
    //% "4 weeks"
    QT_TRID_NOOP("setting.aux.auto_format_4week"),
    //% "8 weeks"
    QT_TRID_NOOP("setting.aux.auto_format_8week"),
    //% "16 weeks"
    QT_TRID_NOOP("setting.aux.auto_format_16week"),
    //% "32 weeks"
    QT_TRID_NOOP("setting.aux.auto_format_32week"),
    //% "Korean"
    QT_TRID_NOOP("Korean"),
    //% "English"
    QT_TRID_NOOP("English"),
    //% "French"
    QT_TRID_NOOP("French"),
    //% "Spanish (Europe)"
    QT_TRID_NOOP("Spanish.Europe"),
    //% "Arabic"
    QT_TRID_NOOP("Arabic"),
    //% "Chinese"
    QT_TRID_NOOP("Chinese"),
    //% "Russian"
    QT_TRID_NOOP("Russian"),
    //% "Japanese"
    QT_TRID_NOOP("Japanese"),
    //% "Thai"
    QT_TRID_NOOP("Thai"),
    //% "Bahasa Indonesia"
    QT_TRID_NOOP("BahasaIndonesia"),
    //% "Vietnamese"
    QT_TRID_NOOP("Vietnamese"),
    //% "Mongolian"
    QT_TRID_NOOP("Mongolian"),
    //% "Spanish (South America)"
    QT_TRID_NOOP("Spanish.SouthAmerica"),
    //% "German"
    QT_TRID_NOOP("German"),
    //% "Turkish"
    QT_TRID_NOOP("Turkish"),
    //% "Italian"
    QT_TRID_NOOP("Italian"),
    //% "Hindi"
    QT_TRID_NOOP("Hindi"),
    //% "Cantonese"
    QT_TRID_NOOP("Cantonese"),
    //% "Czech"
    QT_TRID_NOOP("Czech"),
    //% "Portuguese"
    QT_TRID_NOOP("Portuguese"),
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
