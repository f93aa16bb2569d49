#include "cardfiles.h"

#include "card/timesetfile.h"
#include "cardplan.h"
#include "common/outputfile.h"
#include "nmeacomposer.h"
#include "random.h"
#include "settings/settingfile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kavro::camsim {

namespace {

// "3724.1234" as its two stored halves, 3724 and 1234.
void splitNmea(const QByteArray& field, std::uint16_t& whole, std::uint16_t& fraction)
{
    const QByteArray number = field.left(field.indexOf(','));
    const qsizetype dot = number.indexOf('.');
    whole = static_cast<std::uint16_t>(number.left(dot).toUInt());
    fraction = static_cast<std::uint16_t>(number.mid(dot + 1).toUInt());
}

std::int16_t axis(std::int32_t counts)
{
    return static_cast<std::int16_t>(std::clamp(counts, -32768, 32767));
}

} // namespace

_FILEDATA CardFiles::settings()
{
    _FILEDATA record;
    makeDefaultFileData(record);
    // The default takes this computer's preference; a generated card must not depend on it.
    record.external_rear_camera = 0;
    std::memcpy(record.szPlateNumber, CardPlan::PlateNumber, sizeof record.szPlateNumber);
    prepareFileDataForSave(record);
    return record;
}

QByteArray CardFiles::clockText(const CardPlan& plan)
{
    const QDateTime at = plan.clockSetting();
    return timeSetText(at.date(), at.time()).value_or(QByteArray());
}

std::vector<_DRIVE_INFO_T> CardFiles::driveRecords(const CardPlan& plan)
{
    std::vector<_DRIVE_INFO_T> records;
    std::uint16_t sequence = 0;
    for (const DrivePlan& drive : plan.drives()) {
        const TelemetrySynth synth(drive.track, drive.clock);
        const auto end = static_cast<int>(std::floor(drive.track.duration()));
        std::uint16_t maxSpeed = 0;
        for (int second = -DriveRecordsBeforeFix; second <= end; ++second) {
            const QDateTime at = drive.cameraStart.addSecs(second);
            _DRIVE_INFO_T record;
            record.seq = ++sequence;
            record.yoil = static_cast<std::uint8_t>(at.date().dayOfWeek() % 7);
            record.year = static_cast<std::uint8_t>(at.date().year() - 1900);
            record.month = static_cast<std::uint8_t>(at.date().month());
            record.day = static_cast<std::uint8_t>(at.date().day());
            record.hour = static_cast<std::uint8_t>(at.time().hour());
            record.minute = static_cast<std::uint8_t>(at.time().minute());
            record.second = static_cast<std::uint8_t>(at.time().second());
            const _AVI_GSENSOR_DATA_T g = synth.gsensorAt(second, drive.impact);
            record.xAxis = axis(g.xAxis);
            record.yAxis = axis(g.yAxis);
            record.zAxis = axis(g.zAxis);
            // The battery rests at 12.4 V until the engine runs, then the alternator charges.
            record.battery = static_cast<std::int16_t>(
                second < -3 ? 124
                            : 141 + std::lround(2 * Random::smooth(drive.clock.seed ^ 0x42,
                                                                   second / 20.0)));
            if (second >= 0) {
                const GpsFix fix = synth.fixAt(second);
                record.value = 1;
                splitNmea(NmeaComposer::latitudeField(fix.latitude), record.lat, record.latFrac);
                splitNmea(NmeaComposer::longitudeField(fix.longitude), record.lon, record.lonFrac);
                record.curSpeed = static_cast<std::uint16_t>(TelemetrySynth::speedKmh(fix));
                record.drivingDistance =
                    static_cast<std::uint32_t>(std::lround(drive.track.at(second).distance / 100));
                maxSpeed = std::max(maxSpeed, record.curSpeed);
            }
            record.maxSpeed = maxSpeed;
            records.push_back(record);
        }
    }
    return records;
}

bool CardFiles::writeSettings(const QString& root, QString* error)
{
    const _FILEDATA record = settings();
    if (const auto failure = writeSettingFile(record, QDir(root).filePath(SettingsFile))) {
        if (error)
            *error = QStringLiteral("cannot write %1 (%2)").arg(SettingsFile, *failure);
        return false;
    }
    return true;
}

bool CardFiles::writeClock(const QString& root, const CardPlan& plan, QString* error)
{
    return writeFile(QDir(root).filePath(ClockFile), clockText(plan), error);
}

bool CardFiles::writeDriveRecords(const QString& root, const CardPlan& plan, QString* error)
{
    const std::vector<_DRIVE_INFO_T> records = driveRecords(plan);
    _DRIVE_INFO_HEADER_T header;
    header.count = static_cast<std::uint32_t>(records.size());
    QByteArray content(reinterpret_cast<const char*>(&header), sizeof header);
    content.append(reinterpret_cast<const char*>(records.data()),
                   static_cast<qsizetype>(records.size() * sizeof(_DRIVE_INFO_T)));
    const QString path = QDir(root).filePath(QLatin1String(drv::CardFilePath));
    if (!QDir().mkpath(QFileInfo(path).path())) {
        if (error)
            *error = QStringLiteral("cannot make the folder of %1").arg(path);
        return false;
    }
    return writeFile(path, content, error);
}

} // namespace kavro::camsim
