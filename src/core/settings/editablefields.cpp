#include "editablefields.h"

#include "kvrvalidator.h"
#include "settingvalues.h"
#include "timezonetable.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <span>

namespace kavro {

namespace {

enum class Rule
{
    Range,          // low..high
    Values,         // one of a page's value table
    Threshold,      // 0 (empty field) or 5..150 hundredths
    CardShare,      // the slider: both shares, in tens, each at least 20
    RearCameraBits, // bits 0 to 2, the others kept
    PlateNumber,    // up to 8 ASCII letters and digits
};

struct EditableField
{
    std::string_view name;
    Rule rule;
    std::int64_t low = 0;
    std::int64_t high = 0;
    std::span<const std::uint32_t> values = {};
};

constexpr EditableField range(std::string_view name, std::int64_t low, std::int64_t high)
{
    return {name, Rule::Range, low, high};
}
constexpr EditableField choice(std::string_view name, int count)
{
    return range(name, 0, count - 1);
}
constexpr EditableField values(std::string_view name, std::span<const std::uint32_t> table)
{
    return {name, Rule::Values, 0, 0, table};
}
constexpr EditableField rule(std::string_view name, Rule kind)
{
    return {name, kind};
}

const std::array EditableFields = {
    // Basic
    values("always_mode_timeout", AlwaysModeTimeoutValues),
    choice("g_sensor_enable", 2),
    rule("gsen_x_threshold", Rule::Threshold),
    rule("gsen_y_threshold", Rule::Threshold),
    rule("gsen_z_threshold", Rule::Threshold),
    rule("parkmode_x_threshold", Rule::Threshold),
    rule("parkmode_y_threshold", Rule::Threshold),
    rule("parkmode_z_threshold", Rule::Threshold),
    choice("ledoff", 2),
    choice("ledoff_rear", 2),
    rule("szPlateNumber", Rule::PlateNumber),
    values("sd_mem_always_reserved", PowerVoltageValues),
    values("sd_mem_motion_reserved", PowerTimeValues),
    choice("sd_mem_event_reserved", 2),
    range("CableVoltCorr", 1, CableLossChoiceCount),
    rule("external_rear_camera", Rule::RearCameraBits),
    // Video
    choice("vid_enc_bitrate", 3),
    choice("vid_brightness", 5),
    choice("vid_enc_bitrate_R", 3),
    choice("vid_brightness_R", 5),
    choice("flip_video", 2),
    choice("rear_fps", 2),
    choice("front_cpl_use", 4),
    choice("rear_cpl_use", 3),
    // GPS
    choice("nodriving_day", 8),
    choice("speed_disp_unit", 2),
    choice("time_gmt", TimeZoneCount),
    choice("summer_time", 2),
    choice("osd_speed_flag", 2),
    choice("SaveDuration", 8),
    choice("NightTime", 2),
    // Motion
    choice("motion720pCValue", 6),
    choice("motion1080pCValue", 6),
    range("motionBlock", 0, MotionBlockMask),
    range("motionBlock_Rear", 0, MotionBlockMask),
    // Aux
    rule("sd_mem_always_ratio", Rule::CardShare),
    rule("sd_mem_motion_ratio", Rule::CardShare),
    choice("DayTime", 3),
    choice("lcd_autopoweroff", 4),
    choice("Gamma", 2),
    choice("lcd_brightness", 3),
    choice("lcd_brightness_night", 2),
    choice("parking_rear_off", 2),
    choice("lcd_screensaver", LcdScreenSaverChoiceCount),
    choice("parking_alarm", 2),
    choice("always_mode_recording_time", 2),
    choice("pip_position", 4),
    choice("autoFormatAlarm", 5),
    // Audio
    choice("aud_input_vol", 4),
    choice("aud_output_vol", 4),
    choice("alarm_ontime_flag", 2),
    range("Brightness1", 0, MalaysiaLanguage),
};

const EditableField* findEditableField(std::string_view name)
{
    auto it = std::find_if(EditableFields.begin(), EditableFields.end(),
                           [name](const EditableField& field) { return field.name == name; });
    return it == EditableFields.end() ? nullptr : &*it;
}

std::optional<std::int64_t> parseInteger(const QString& text)
{
    static const QRegularExpression Decimal(QStringLiteral("^[0-9]{1,10}$"));
    static const QRegularExpression Hex(QStringLiteral("^0[xX][0-9a-fA-F]{1,8}$"));
    bool ok = false;
    qulonglong value = 0;
    if (Decimal.match(text).hasMatch())
        value = text.toULongLong(&ok, 10);
    else if (Hex.match(text).hasMatch())
        value = text.mid(2).toULongLong(&ok, 16);
    if (!ok)
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

QString listOf(std::span<const std::uint32_t> table)
{
    QStringList items;
    for (std::uint32_t value : table)
        items.append(QString::number(value));
    return items.join(QStringLiteral(", "));
}

std::optional<QString> assignPlateNumber(_FILEDATA& record, const QString& text)
{
    if (text.size() > KVRValidator::CarNumberLength || KVRValidator::filterCarNumber(text) != text)
        return QStringLiteral("takes up to %1 ASCII letters and digits")
            .arg(KVRValidator::CarNumberLength);
    setPlateNumber(record, text);
    return std::nullopt;
}

std::optional<QString> assignCardShare(_FILEDATA& record, bool always, std::int64_t value)
{
    bool onSlider = value % CardShareStep == 0 && value <= 100;
    if (!onSlider || KVRValidator::validateCardShare(static_cast<int>(value / CardShareStep)))
        return QStringLiteral("must be 20 to 80 in steps of 10");
    std::uint32_t share = static_cast<std::uint32_t>(value);
    record.sd_mem_always_ratio = always ? share : 100 - share;
    record.sd_mem_motion_ratio = 100 - record.sd_mem_always_ratio;
    return std::nullopt;
}

std::optional<QString> checkInteger(const EditableField& editable, std::int64_t value)
{
    switch (editable.rule) {
    case Rule::Range:
        if (value < editable.low || value > editable.high)
            return QStringLiteral("must be %1 to %2").arg(editable.low).arg(editable.high);
        break;
    case Rule::Values:
        if (std::find(editable.values.begin(), editable.values.end(), value) ==
            editable.values.end())
            return QStringLiteral("must be one of %1").arg(listOf(editable.values));
        break;
    case Rule::Threshold:
        if (!isStorableThreshold(value))
            return QStringLiteral("must be 0 or %1 to %2 (hundredths of g)")
                .arg(MinThresholdHundredths)
                .arg(MaxThresholdHundredths);
        break;
    case Rule::RearCameraBits:
        if (value < 0 || value > RearCameraBitsMask)
            return QStringLiteral("must be 0 to %1 (bits 0 to 2)").arg(RearCameraBitsMask);
        break;
    case Rule::CardShare:
    case Rule::PlateNumber:
        break;
    }
    return std::nullopt;
}

} // namespace

QStringList editableFieldNames()
{
    QStringList names;
    for (const EditableField& editable : EditableFields)
        names.append(QString::fromLatin1(editable.name.data(), editable.name.size()));
    return names;
}

std::optional<QString> assignField(_FILEDATA& record, const QString& name, const QString& value)
{
    QByteArray latinName = name.toLatin1();
    std::string_view fieldName(latinName.constData(), static_cast<std::size_t>(latinName.size()));
    const FileDataField* field = findFileDataField(fieldName);
    if (!field)
        return QStringLiteral("no such field");
    const EditableField* editable = findEditableField(fieldName);
    if (!editable) {
        if (fieldName == "checksum" || fieldName == "osd_plate_flag")
            return QStringLiteral("is computed when the file is saved");
        return QStringLiteral("is not edited by any settings page");
    }
    if (editable->rule == Rule::PlateNumber)
        return assignPlateNumber(record, value);

    std::optional<std::int64_t> number = parseInteger(value);
    if (!number)
        return QStringLiteral("'%1' is not a number (decimal, or hexadecimal with 0x)").arg(value);
    if (editable->rule == Rule::CardShare)
        return assignCardShare(record, fieldName == "sd_mem_always_ratio", *number);
    if (std::optional<QString> refusal = checkInteger(*editable, *number))
        return refusal;
    if (editable->rule == Rule::RearCameraBits)
        *number |= record.external_rear_camera & ~RearCameraBitsMask;
    setFieldInteger(record, *field, *number);
    return std::nullopt;
}

std::optional<QString> assignFields(_FILEDATA& record, const QStringList& assignments)
{
    _FILEDATA edited = record;
    for (const QString& assignment : assignments) {
        qsizetype equals = assignment.indexOf(u'=');
        if (equals <= 0)
            return QStringLiteral("'%1' is not NAME=VALUE").arg(assignment);
        if (auto refusal = assignField(edited, assignment.left(equals), assignment.mid(equals + 1)))
            return QStringLiteral("%1: %2").arg(assignment.left(equals), *refusal);
    }
    // Two assignments of one control (a field named twice, or both card shares) must agree:
    // each must still hold once all are applied.
    for (const QString& assignment : assignments) {
        qsizetype equals = assignment.indexOf(u'=');
        _FILEDATA again = edited;
        assignField(again, assignment.left(equals), assignment.mid(equals + 1));
        if (fileDataBytes(again) != fileDataBytes(edited))
            return QStringLiteral("%1: conflicts with another assignment")
                .arg(assignment.left(equals));
    }
    record = edited;
    return std::nullopt;
}

} // namespace kavro
