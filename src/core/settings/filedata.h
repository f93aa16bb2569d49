#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// The camera's settings record, the whole content of config.bin. It is stored exactly as it lies
// in memory: little-endian, natural alignment, no padding, 428 bytes.
static_assert(std::endian::native == std::endian::little,
              "config.bin is read and written as the in-memory record");

// NOLINTBEGIN(bugprone-reserved-identifier): the camera's own record name
struct _FILEDATA
{
    std::uint16_t cfg_ver = 0;
    std::uint16_t checksum = 0;
    std::uint32_t disp_segment_mode = 0;
    std::uint32_t sd_mem_always_ratio = 0;
    std::uint32_t sd_mem_event_ratio = 0;
    std::uint32_t sd_mem_motion_ratio = 0;
    std::uint32_t sd_mem_always_reserved = 0; // cut-off voltage, mV of a 12 V system
    std::uint32_t sd_mem_event_reserved = 0;  // external power in use
    std::uint32_t sd_mem_motion_reserved = 0; // power timer, hours
    std::uint32_t aud_enable = 0;
    std::uint32_t aud_codec_type = 0;
    std::uint32_t aud_sampling_freq = 0;
    std::uint32_t aud_bitrate = 0;
    std::uint32_t aud_input_vol = 0;
    std::uint32_t aud_output_vol = 0;
    std::uint32_t vid_enc_res = 0;
    std::uint32_t vid_enc_bitrate = 0;
    std::uint32_t vid_framerate = 0;
    std::uint32_t vid_brightness = 0;
    std::uint32_t vid_contrast = 0;
    std::uint32_t vid_saturation = 0;
    std::uint32_t vid_sharpness = 0;
    std::uint32_t vid_hue = 0;
    std::int32_t gsen_x_threshold = 0; // hundredths of g
    std::int32_t gsen_y_threshold = 0;
    std::int32_t gsen_z_threshold = 0;
    std::uint32_t always_mode_timeout = 0; // seconds
    std::int32_t parkmode_x_threshold = 0;
    std::int32_t parkmode_y_threshold = 0;
    std::int32_t parkmode_z_threshold = 0;
    std::uint32_t motion1080pCValue = 0; // rear camera
    std::uint32_t motion720pCValue = 0;  // front camera
    std::uint32_t motionBlock = 0;
    std::int32_t high_temp_threshold = 0;
    std::uint32_t high_temp_duration = 0;
    std::int32_t safe_temp_threshold = 0;
    std::uint32_t safe_temp_duration = 0;
    std::uint32_t composite_mode = 0;
    std::uint32_t osd_option = 0;
    std::int32_t osd_speed_flag = 0;
    std::int32_t osd_plate_flag = 0;
    std::uint32_t plate_number = 0;
    std::uint32_t speed_disp_unit = 0;
    std::int32_t time_gmt = 0; // index into the time-zone table
    std::uint32_t summer_time = 0;
    std::uint32_t nodriving_day = 0;
    std::uint32_t auto_drive_in_mode_on = 0;
    std::uint32_t auto_park_in_mode_on = 0;
    std::uint32_t motion_detect_mode_on = 0;
    std::uint32_t event_only_mode_on = 0;
    std::uint32_t g_sensor_enable = 0;
    std::uint32_t audio_mux_enable = 0;
    std::uint32_t safe_temp_mode_on = 0;
    std::uint32_t alarm_ontime_flag = 0;
    std::uint32_t voiceEnable = 0;
    std::uint32_t drivingSecurity = 0;
    std::uint32_t parkingSecurity = 0;
    std::uint32_t SaveDuration = 0;
    std::uint32_t MemConfig = 0;
    std::uint32_t BrightnessFixed = 0;
    std::uint32_t DayTime = 0;     // night exposure
    std::uint32_t NightTime = 0;   // GPS kept on while parked
    std::uint32_t Brightness1 = 0; // voice-guidance language
    std::uint32_t ledoff = 0;
    std::uint32_t Gamma = 0; // mains frequency
    char szPlateNumber[8] = {};
    std::uint32_t vid_enc_bitrate_R = 0;
    std::uint32_t vid_brightness_R = 0;
    std::uint32_t vid_sharpness_R = 0;
    std::uint32_t lcd_autopoweroff = 0;
    std::uint32_t lcd_brightness = 0;
    std::uint32_t lcd_screensaver = 0;
    std::uint32_t parking_rear_off = 0;
    std::uint32_t sd2_mem_always_ratio = 0;
    std::uint32_t sd2_mem_event_ratio = 0;
    std::uint32_t sd2_mem_motion_ratio = 0;
    std::uint32_t flip_video = 0;
    std::uint32_t parking_alarm = 0;
    std::uint32_t rear_fps = 0;
    std::uint32_t motion_zone = 0;
    std::uint32_t motionBlock_Rear = 0;
    std::uint32_t ledoff_rear = 0;
    std::uint32_t always_mode_recording_time = 0;
    std::uint32_t pip_position = 0;
    std::uint32_t always_motion = 0;
    std::uint32_t lcd_brightness_night = 0;
    std::uint32_t size_rear = 0;
    std::uint32_t front_cpl_use = 0;
    std::uint32_t rear_cpl_use = 0;
    char wifi_ssid[16] = {};
    char wifi_password[16] = {};
    std::uint32_t CableVoltCorr = 0; // cable-loss list index + 1
    std::uint32_t autoFormatAlarm = 0;
    std::uint32_t wifi_channel = 0;
    std::uint32_t flip_front_video = 0;
    std::uint32_t external_rear_camera = 0;
    std::uint32_t dummy00[4] = {};
    std::uint32_t debug_mode = 0;
};
// NOLINTEND(bugprone-reserved-identifier)

static_assert(sizeof(_FILEDATA) == 428);
static_assert(offsetof(_FILEDATA, checksum) == 2);
static_assert(offsetof(_FILEDATA, disp_segment_mode) == 4);
static_assert(offsetof(_FILEDATA, gsen_x_threshold) == 88);
static_assert(offsetof(_FILEDATA, osd_plate_flag) == 156);
static_assert(offsetof(_FILEDATA, time_gmt) == 168);
static_assert(offsetof(_FILEDATA, Gamma) == 252);
static_assert(offsetof(_FILEDATA, szPlateNumber) == 256);
static_assert(offsetof(_FILEDATA, vid_enc_bitrate_R) == 264);
static_assert(offsetof(_FILEDATA, wifi_ssid) == 356);
static_assert(offsetof(_FILEDATA, CableVoltCorr) == 388);
static_assert(offsetof(_FILEDATA, external_rear_camera) == 404);
static_assert(offsetof(_FILEDATA, dummy00) == 408);
static_assert(offsetof(_FILEDATA, debug_mode) == 424);

namespace kavro {

constexpr std::size_t FileDataSize = sizeof(_FILEDATA);

enum class FieldType
{
    U16,
    U32,
    I32,
    Chars,
    U32Array
};

// One field of the record, as the command line and the settings window name and address it.
struct FileDataField
{
    std::string_view name;
    std::uint32_t offset;
    FieldType type;
    std::uint32_t size; // bytes
};

// Every field of the record, in record order.
std::span<const FileDataField> fileDataFields();
const FileDataField* findFileDataField(std::string_view name);

bool isIntegerField(const FileDataField& field);

// The value of a U16, U32 or I32 field (0 for the others).
std::int64_t fieldInteger(const _FILEDATA& record, const FileDataField& field);
// Stores the value truncated to the field's width; other kinds are left alone.
void setFieldInteger(_FILEDATA& record, const FileDataField& field, std::int64_t value);
// One element of a U32Array field (0 when out of range).
std::uint32_t fieldArrayElement(const _FILEDATA& record, const FileDataField& field,
                                std::size_t index);
QByteArrayView fieldBytes(const _FILEDATA& record, const FileDataField& field);

// A byte field read as UTF-8 up to its first zero byte; invalid sequences become U+FFFD.
QString fieldText(const _FILEDATA& record, const FileDataField& field);
// The first bytes of the text up to the field's size, zero-filled; no terminating zero when full.
void setFieldText(_FILEDATA& record, const FileDataField& field, QByteArrayView text);

QString plateNumber(const _FILEDATA& record);
void setPlateNumber(_FILEDATA& record, const QString& text);

QByteArray fileDataBytes(const _FILEDATA& record);
// Copies exactly FileDataSize bytes; false (record untouched) for any other length.
bool fileDataFromBytes(QByteArrayView bytes, _FILEDATA& record);

} // namespace kavro
