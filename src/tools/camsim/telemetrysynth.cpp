#include "telemetrysynth.h"

#include "drivetrack.h"
#include "random.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace kavro::camsim {

namespace {

constexpr double MetresPerDegree = 111195;
constexpr double KilometresPerNauticalMile = 1.852;
constexpr double KnotsPerMetrePerSecond = 3.6 / KilometresPerNauticalMile;

struct SkySatellite
{
    int id;
    int elevation;
    int azimuth;
    double baseSnr;
};

// The satellites above the car; a short drive sees the same sky throughout.
std::vector<SkySatellite> skyOf(std::uint64_t seed, bool glonass)
{
    Random random(seed ^ (glonass ? 0x474c4fULL : 0x475053ULL));
    const int count = glonass ? random.integer(5, 7) : random.integer(10, 12);
    const int firstId = glonass ? 65 : 1;
    const int lastId = glonass ? 88 : 32;
    std::vector<SkySatellite> sky;
    while (static_cast<int>(sky.size()) < count) {
        const int id = random.integer(firstId, lastId);
        if (std::any_of(sky.begin(), sky.end(), [id](const SkySatellite& s) { return s.id == id; }))
            continue;
        const int elevation = random.integer(4, 86);
        sky.push_back(
            {id, elevation, random.integer(0, 359), 17 + elevation * 0.3 + random.uniform(0, 9)});
    }
    std::sort(sky.begin(), sky.end(),
              [](const SkySatellite& a, const SkySatellite& b) { return a.id < b.id; });
    return sky;
}

void observe(const std::vector<SkySatellite>& sky, std::uint64_t seed, double time,
             std::vector<SatelliteInView>& inView, std::vector<int>& used)
{
    for (const SkySatellite& s : sky) {
        int snr =
            static_cast<int>(std::lround(s.baseSnr + 3 * Random::smooth(seed + s.id, time / 7)));
        if (snr < 16)
            snr = 0;
        inView.push_back({s.id, s.elevation, s.azimuth, snr});
        if (snr >= 26 && s.elevation >= 10 && used.size() < 12)
            used.push_back(s.id);
    }
}

std::int32_t counts(double metresPerSecondSquared)
{
    return static_cast<std::int32_t>(
        std::lround(metresPerSecondSquared / TelemetrySynth::Gravity * TelemetrySynth::CountsPerG));
}

} // namespace

TelemetrySynth::TelemetrySynth(const DriveTrack& track, DriveClock clock)
    : m_track(track), m_clock(std::move(clock))
{
}

std::uint32_t TelemetrySynth::cameraMs(double driveTime) const
{
    return m_clock.bootMs + static_cast<std::uint32_t>(std::llround(driveTime * 1000));
}

void TelemetrySynth::fillSky(GpsFix& fix, double driveTime) const
{
    observe(skyOf(m_clock.seed, false), m_clock.seed, driveTime, fix.gpsInView, fix.gpsUsed);
    observe(skyOf(m_clock.seed, true), m_clock.seed, driveTime, fix.glonassInView, fix.glonassUsed);
    const auto used =
        static_cast<double>(std::max<std::size_t>(1, fix.gpsUsed.size() + fix.glonassUsed.size()));
    fix.hdop = 0.5 + 4.2 / used + 0.08 * Random::smooth(m_clock.seed ^ 0x48, driveTime / 30);
    fix.pdop = fix.hdop * 1.62;
    fix.vdop = fix.hdop * 1.28;
}

GpsFix TelemetrySynth::fixAt(double driveTime) const
{
    const DriveSample s = m_track.at(driveTime);
    const std::uint64_t seed = m_clock.seed;
    GpsFix fix;
    fix.utc = m_clock.utcStart.addMSecs(std::llround(driveTime * 1000));
    // A receiver wanders by a metre or two even when the car stands still.
    const double north = 1.3 * Random::smooth(seed ^ 0x4e, driveTime / 9);
    const double east = 1.3 * Random::smooth(seed ^ 0x45, driveTime / 9);
    fix.latitude = s.latitude + north / MetresPerDegree;
    fix.longitude =
        s.longitude + east / (MetresPerDegree * std::cos(s.latitude * std::numbers::pi / 180));
    if (s.speed > 0.3) {
        fix.speedKnots = s.speed * KnotsPerMetrePerSecond *
                         (1 + 0.01 * Random::hashed(seed ^ 0x53, std::llround(driveTime)));
        fix.course = s.heading;
    } else {
        fix.speedKnots =
            0.05 + 0.2 * std::abs(Random::hashed(seed ^ 0x53, std::llround(driveTime)));
        fix.course = s.heading;
    }
    fix.altitude = 38 + 9 * Random::smooth(seed ^ 0x41, s.distance / 400) +
                   0.6 * Random::smooth(seed ^ 0x61, driveTime / 5);
    fix.geoidSeparation = m_clock.geoidSeparation;
    fillSky(fix, driveTime);
    return fix;
}

_AVI_GSENSOR_DATA_T TelemetrySynth::gsensorAt(double driveTime, std::optional<double> impact) const
{
    const DriveSample s = m_track.at(driveTime);
    const std::int64_t index = std::llround(driveTime * 10);
    Random noise(m_clock.seed ^ (static_cast<std::uint64_t>(index) * 0x9e3779b97f4a7c15ULL));
    // Road vibration grows with speed; the mount tilts the sensor a little forward.
    const double rough = 1.5 + 0.35 * s.speed;
    double x = counts(s.longitudinalAcceleration) + 5 + rough * 0.6 * noise.normal();
    double y = counts(s.lateralAcceleration) + rough * 0.6 * noise.normal();
    double z = CountsPerG + rough * noise.normal();
    if (impact && driveTime >= *impact && driveTime < *impact + 1.5) {
        // A car behind bumps into ours: a forward shove that rings out in the body and mount.
        // The shove lasts a few samples whatever the phase of the 10 Hz sampling: 1.6 to 2.4 g
        // in the first sample after the bump.
        const double t = driveTime - *impact;
        const double twoPi = 2 * std::numbers::pi;
        x += 620 * std::exp(-t / 0.25);
        y += -95 * std::exp(-t / 0.2) * std::sin(twoPi * 3 * t + 0.5);
        z += 160 * std::exp(-t / 0.12) * std::cos(twoPi * 7 * t);
    }
    _AVI_GSENSOR_DATA_T record{};
    record.header = avi::GSensorRecordTag;
    record.timestamp = cameraMs(driveTime);
    record.xAxis = static_cast<std::int32_t>(std::lround(x));
    record.yAxis = static_cast<std::int32_t>(std::lround(y));
    record.zAxis = static_cast<std::int32_t>(std::lround(z));
    record.nTemprature = static_cast<std::int32_t>(
        std::lround(41 + 3 * Random::smooth(m_clock.seed ^ 0x54, driveTime / 300)));
    return record;
}

std::uint32_t TelemetrySynth::speedKmh(const GpsFix& fix)
{
    // From the speed as the sentence states it.
    const double knots = QByteArray::number(fix.speedKnots, 'f', 2).toDouble();
    return static_cast<std::uint32_t>(std::lround(knots * KilometresPerNauticalMile));
}

_AVI_GPS_DATA_T TelemetrySynth::gpsRecord(const GpsFix& fix, double driveTime) const
{
    _AVI_GPS_DATA_T record{};
    const QByteArray text = NmeaComposer::recordText(fix, static_cast<int>(avi::GpsRawDataSize));
    record.header = avi::GpsRecordTag;
    record.nTimestamp = cameraMs(driveTime) + GpsDelayMs;
    record.nLen = static_cast<std::uint32_t>(text.size());
    record.fLatitude = NmeaComposer::nmeaForm(fix.latitude);
    record.fLongitude = NmeaComposer::nmeaForm(fix.longitude);
    record.fSpeed = speedKmh(fix);
    record.distance = static_cast<std::uint32_t>(std::lround(m_track.at(driveTime).distance));
    record.NS = fix.latitude < 0 ? 'S' : 'N';
    record.EW = fix.longitude < 0 ? 'W' : 'E';
    record.KM = '9';
    std::memcpy(record.RawData, text.constData(), static_cast<std::size_t>(text.size()));
    return record;
}

TelemetryPlan TelemetrySynth::recording(double start, double duration,
                                        std::optional<double> impact) const
{
    TelemetryPlan plan;
    const auto samples = static_cast<std::size_t>(std::llround(duration * 10));
    for (std::size_t k = 0; k < samples; ++k)
        plan.gsensor.push_back(gsensorAt(start + static_cast<double>(k) * 0.1, impact));
    const auto seconds = static_cast<std::size_t>(std::ceil(duration - 1e-9));
    for (std::size_t j = 0; j < seconds; ++j) {
        const double time = start + static_cast<double>(j);
        plan.fixes.push_back(fixAt(time));
        plan.gps.push_back(gpsRecord(plan.fixes.back(), time));
        plan.gpsAfter.push_back(std::min(samples, 10 * j + 1));
    }
    return plan;
}

} // namespace kavro::camsim
