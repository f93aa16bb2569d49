#include "filedata.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kavro {

namespace {

// Name, offset and size come from the record itself, so the table cannot drift from it.
// clang-format off
#define KAVRO_FIELD(field, kind) \
    FileDataField{#field, offsetof(_FILEDATA, field), FieldType::kind, sizeof(_FILEDATA::field)}
// clang-format on

constexpr std::array Fields = {
    KAVRO_FIELD(cfg_ver, U16),
    KAVRO_FIELD(checksum, U16),
    KAVRO_FIELD(disp_segment_mode, U32),
    KAVRO_FIELD(sd_mem_always_ratio, U32),
    KAVRO_FIELD(sd_mem_event_ratio, U32),
    KAVRO_FIELD(sd_mem_motion_ratio, U32),
    KAVRO_FIELD(sd_mem_always_reserved, U32),
    KAVRO_FIELD(sd_mem_event_reserved, U32),
    KAVRO_FIELD(sd_mem_motion_reserved, U32),
    KAVRO_FIELD(aud_enable, U32),
    KAVRO_FIELD(aud_codec_type, U32),
    KAVRO_FIELD(aud_sampling_freq, U32),
    KAVRO_FIELD(aud_bitrate, U32),
    KAVRO_FIELD(aud_input_vol, U32),
    KAVRO_FIELD(aud_output_vol, U32),
    KAVRO_FIELD(vid_enc_res, U32),
    KAVRO_FIELD(vid_enc_bitrate, U32),
    KAVRO_FIELD(vid_framerate, U32),
    KAVRO_FIELD(vid_brightness, U32),
    KAVRO_FIELD(vid_contrast, U32),
    KAVRO_FIELD(vid_saturation, U32),
    KAVRO_FIELD(vid_sharpness, U32),
    KAVRO_FIELD(vid_hue, U32),
    KAVRO_FIELD(gsen_x_threshold, I32),
    KAVRO_FIELD(gsen_y_threshold, I32),
    KAVRO_FIELD(gsen_z_threshold, I32),
    KAVRO_FIELD(always_mode_timeout, U32),
    KAVRO_FIELD(parkmode_x_threshold, I32),
    KAVRO_FIELD(parkmode_y_threshold, I32),
    KAVRO_FIELD(parkmode_z_threshold, I32),
    KAVRO_FIELD(motion1080pCValue, U32),
    KAVRO_FIELD(motion720pCValue, U32),
    KAVRO_FIELD(motionBlock, U32),
    KAVRO_FIELD(high_temp_threshold, I32),
    KAVRO_FIELD(high_temp_duration, U32),
    KAVRO_FIELD(safe_temp_threshold, I32),
    KAVRO_FIELD(safe_temp_duration, U32),
    KAVRO_FIELD(composite_mode, U32),
    KAVRO_FIELD(osd_option, U32),
    KAVRO_FIELD(osd_speed_flag, I32),
    KAVRO_FIELD(osd_plate_flag, I32),
    KAVRO_FIELD(plate_number, U32),
    KAVRO_FIELD(speed_disp_unit, U32),
    KAVRO_FIELD(time_gmt, I32),
    KAVRO_FIELD(summer_time, U32),
    KAVRO_FIELD(nodriving_day, U32),
    KAVRO_FIELD(auto_drive_in_mode_on, U32),
    KAVRO_FIELD(auto_park_in_mode_on, U32),
    KAVRO_FIELD(motion_detect_mode_on, U32),
    KAVRO_FIELD(event_only_mode_on, U32),
    KAVRO_FIELD(g_sensor_enable, U32),
    KAVRO_FIELD(audio_mux_enable, U32),
    KAVRO_FIELD(safe_temp_mode_on, U32),
    KAVRO_FIELD(alarm_ontime_flag, U32),
    KAVRO_FIELD(voiceEnable, U32),
    KAVRO_FIELD(drivingSecurity, U32),
    KAVRO_FIELD(parkingSecurity, U32),
    KAVRO_FIELD(SaveDuration, U32),
    KAVRO_FIELD(MemConfig, U32),
    KAVRO_FIELD(BrightnessFixed, U32),
    KAVRO_FIELD(DayTime, U32),
    KAVRO_FIELD(NightTime, U32),
    KAVRO_FIELD(Brightness1, U32),
    KAVRO_FIELD(ledoff, U32),
    KAVRO_FIELD(Gamma, U32),
    KAVRO_FIELD(szPlateNumber, Chars),
    KAVRO_FIELD(vid_enc_bitrate_R, U32),
    KAVRO_FIELD(vid_brightness_R, U32),
    KAVRO_FIELD(vid_sharpness_R, U32),
    KAVRO_FIELD(lcd_autopoweroff, U32),
    KAVRO_FIELD(lcd_brightness, U32),
    KAVRO_FIELD(lcd_screensaver, U32),
    KAVRO_FIELD(parking_rear_off, U32),
    KAVRO_FIELD(sd2_mem_always_ratio, U32),
    KAVRO_FIELD(sd2_mem_event_ratio, U32),
    KAVRO_FIELD(sd2_mem_motion_ratio, U32),
    KAVRO_FIELD(flip_video, U32),
    KAVRO_FIELD(parking_alarm, U32),
    KAVRO_FIELD(rear_fps, U32),
    KAVRO_FIELD(motion_zone, U32),
    KAVRO_FIELD(motionBlock_Rear, U32),
    KAVRO_FIELD(ledoff_rear, U32),
    KAVRO_FIELD(always_mode_recording_time, U32),
    KAVRO_FIELD(pip_position, U32),
    KAVRO_FIELD(always_motion, U32),
    KAVRO_FIELD(lcd_brightness_night, U32),
    KAVRO_FIELD(size_rear, U32),
    KAVRO_FIELD(front_cpl_use, U32),
    KAVRO_FIELD(rear_cpl_use, U32),
    KAVRO_FIELD(wifi_ssid, Chars),
    KAVRO_FIELD(wifi_password, Chars),
    KAVRO_FIELD(CableVoltCorr, U32),
    KAVRO_FIELD(autoFormatAlarm, U32),
    KAVRO_FIELD(wifi_channel, U32),
    KAVRO_FIELD(flip_front_video, U32),
    KAVRO_FIELD(external_rear_camera, U32),
    KAVRO_FIELD(dummy00, U32Array),
    KAVRO_FIELD(debug_mode, U32),
};

#undef KAVRO_FIELD

// The table must cover the record byte for byte, in order, or the command line would show and
// edit the wrong bytes.
constexpr bool coversRecord()
{
    std::uint32_t next = 0;
    for (const FileDataField& field : Fields) {
        if (field.offset != next)
            return false;
        next += field.size;
    }
    return next == FileDataSize;
}
static_assert(Fields.size() == 98);
static_assert(coversRecord());

const char* bytesOf(const _FILEDATA& record)
{
    return reinterpret_cast<const char*>(&record);
}
char* bytesOf(_FILEDATA& record)
{
    return reinterpret_cast<char*>(&record);
}

template <typename T> T load(const _FILEDATA& record, std::size_t offset)
{
    T value;
    std::memcpy(&value, bytesOf(record) + offset, sizeof value);
    return value;
}

template <typename T> void store(_FILEDATA& record, std::size_t offset, T value)
{
    std::memcpy(bytesOf(record) + offset, &value, sizeof value);
}

} // namespace

std::span<const FileDataField> fileDataFields()
{
    return Fields;
}

const FileDataField* findFileDataField(std::string_view name)
{
    auto it = std::find_if(Fields.begin(), Fields.end(),
                           [name](const FileDataField& field) { return field.name == name; });
    return it == Fields.end() ? nullptr : &*it;
}

bool isIntegerField(const FileDataField& field)
{
    return field.type == FieldType::U16 || field.type == FieldType::U32 ||
           field.type == FieldType::I32;
}

std::int64_t fieldInteger(const _FILEDATA& record, const FileDataField& field)
{
    switch (field.type) {
    case FieldType::U16:
        return load<std::uint16_t>(record, field.offset);
    case FieldType::U32:
        return load<std::uint32_t>(record, field.offset);
    case FieldType::I32:
        return load<std::int32_t>(record, field.offset);
    case FieldType::Chars:
    case FieldType::U32Array:
        break;
    }
    return 0;
}

void setFieldInteger(_FILEDATA& record, const FileDataField& field, std::int64_t value)
{
    switch (field.type) {
    case FieldType::U16:
        store(record, field.offset, static_cast<std::uint16_t>(value));
        break;
    case FieldType::U32:
        store(record, field.offset, static_cast<std::uint32_t>(value));
        break;
    case FieldType::I32:
        store(record, field.offset, static_cast<std::int32_t>(value));
        break;
    case FieldType::Chars:
    case FieldType::U32Array:
        break;
    }
}

std::uint32_t fieldArrayElement(const _FILEDATA& record, const FileDataField& field,
                                std::size_t index)
{
    if (field.type != FieldType::U32Array || index >= field.size / sizeof(std::uint32_t))
        return 0;
    return load<std::uint32_t>(record, field.offset + index * sizeof(std::uint32_t));
}

QByteArrayView fieldBytes(const _FILEDATA& record, const FileDataField& field)
{
    return QByteArrayView(bytesOf(record) + field.offset, field.size);
}

QString fieldText(const _FILEDATA& record, const FileDataField& field)
{
    QByteArrayView bytes = fieldBytes(record, field);
    qsizetype end = bytes.indexOf('\0');
    return QString::fromUtf8(end < 0 ? bytes : bytes.first(end));
}

void setFieldText(_FILEDATA& record, const FileDataField& field, QByteArrayView text)
{
    char* target = bytesOf(record) + field.offset;
    std::memset(target, 0, field.size);
    qsizetype length = text.indexOf('\0');
    if (length < 0)
        length = text.size();
    if (length > 0)
        std::memcpy(target, text.data(), std::min<std::size_t>(field.size, length));
}

QString plateNumber(const _FILEDATA& record)
{
    return fieldText(record, *findFileDataField("szPlateNumber"));
}

void setPlateNumber(_FILEDATA& record, const QString& text)
{
    setFieldText(record, *findFileDataField("szPlateNumber"), text.toUtf8());
}

QByteArray fileDataBytes(const _FILEDATA& record)
{
    return QByteArray(bytesOf(record), FileDataSize);
}

bool fileDataFromBytes(QByteArrayView bytes, _FILEDATA& record)
{
    if (static_cast<std::size_t>(bytes.size()) != FileDataSize)
        return false;
    std::memcpy(bytesOf(record), bytes.data(), FileDataSize);
    return true;
}

} // namespace kavro
