#include "settingfile.h"

#include "common/outputfile.h"
#include "common/preferences.h"

#include <QFile>
#include <QLoggingCategory>

#include <cstring>

namespace kavro {

namespace {
Q_LOGGING_CATEGORY(lcSettings, "kavro.settings", QtInfoMsg)
} // namespace

void makeDefaultFileData(_FILEDATA& record)
{
    record = _FILEDATA{};
    record.cfg_ver = 22310;
    record.disp_segment_mode = 1;
    record.sd_mem_always_ratio = 70;
    record.sd_mem_event_ratio = 1;
    record.sd_mem_motion_ratio = 30;
    record.sd_mem_always_reserved = 12100;
    record.aud_enable = 3;
    record.aud_sampling_freq = 1;
    record.aud_bitrate = 1;
    record.aud_input_vol = 3;
    record.aud_output_vol = 2;
    record.vid_enc_bitrate = 1;
    record.vid_brightness = 2;
    record.vid_contrast = 2;
    record.vid_saturation = 128;
    record.vid_sharpness = 2;
    record.vid_hue = 2;
    record.gsen_x_threshold = 50;
    record.gsen_y_threshold = 45;
    record.gsen_z_threshold = 45;
    record.always_mode_timeout = 10;
    record.parkmode_x_threshold = 8;
    record.parkmode_y_threshold = 8;
    record.parkmode_z_threshold = 8;
    record.motion1080pCValue = 3;
    record.motion720pCValue = 3;
    record.motionBlock = 0x60;
    record.high_temp_threshold = 97;
    record.high_temp_duration = 3600;
    record.safe_temp_threshold = 92;
    record.safe_temp_duration = 60;
    record.osd_speed_flag = 1;
    record.time_gmt = 28; // +09:00
    record.auto_drive_in_mode_on = 1;
    record.auto_park_in_mode_on = 1;
    record.motion_detect_mode_on = 1;
    record.g_sensor_enable = 1;
    record.audio_mux_enable = 1;
    record.safe_temp_mode_on = 1;
    record.alarm_ontime_flag = 1;
    record.voiceEnable = 1;
    record.drivingSecurity = 60;
    record.parkingSecurity = 20;
    record.SaveDuration = 1;
    record.MemConfig = 176;
    record.BrightnessFixed = 3000;
    record.DayTime = 1;
    record.Brightness1 = 1;
    std::memcpy(record.szPlateNumber, "Kavro", 5);
    record.vid_enc_bitrate_R = 1;
    record.vid_brightness_R = 2;
    record.vid_sharpness_R = 2;
    record.lcd_autopoweroff = 2;
    record.lcd_brightness = 1;
    record.sd2_mem_always_ratio = 1;
    record.sd2_mem_event_ratio = 98;
    record.sd2_mem_motion_ratio = 1;
    record.parking_alarm = 1;
    record.motionBlock_Rear = 0x60;
    record.always_mode_recording_time = 1;
    record.lcd_brightness_night = 1;
    record.CableVoltCorr = 4;
    record.external_rear_camera = openPreferences()->value(PrefExternalRearCamera, 0).toUInt();
    record.debug_mode = 1;
}

bool readSettingFile(const QString& path, _FILEDATA& record)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    qint64 read = file.read(reinterpret_cast<char*>(&record), FileDataSize);
    return read == static_cast<qint64>(FileDataSize);
}

std::optional<QString> writeSettingFile(const _FILEDATA& record, const QString& path)
{
    QString error;
    // A card that loop recording filled has no room for a temporary copy; the file keeps its
    // size, so it is then overwritten in place and read back.
    if (!writeFile(path, fileDataBytes(record), &error, OutputFile::Rule::ReplaceOrOverwrite)) {
        qCDebug(lcSettings) << "cannot write" << path << ":" << error;
        return QString::fromLatin1(FileOpenFailKey);
    }
    return std::nullopt;
}

std::optional<QString> writeDefaultSettingFile(const QString& path)
{
    _FILEDATA record;
    makeDefaultFileData(record);
    return writeSettingFile(record, path);
}

std::uint16_t fileDataChecksum(const _FILEDATA& record)
{
    const char* bytes = reinterpret_cast<const char*>(&record);
    std::uint32_t sum = 0;
    for (std::size_t offset = 4; offset < FileDataSize; offset += 4) {
        std::uint32_t word;
        std::memcpy(&word, bytes + offset, sizeof word);
        sum ^= word;
    }
    return static_cast<std::uint16_t>(sum);
}

bool hasValidChecksum(const _FILEDATA& record)
{
    return record.checksum == fileDataChecksum(record);
}

void prepareFileDataForSave(_FILEDATA& record)
{
    record.osd_plate_flag = record.szPlateNumber[0] != 0 ? 1 : 0;
    record.checksum = 0;
    record.checksum = fileDataChecksum(record);
}

} // namespace kavro
