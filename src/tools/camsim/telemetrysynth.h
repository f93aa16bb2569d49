#pragma once

#include "nmeacomposer.h"
#include "telemetry/aviformat.h"

#include <QDateTime>

#include <cstdint>
#include <optional>
#include <vector>

namespace kavro::camsim {

class DriveTrack;

// What ties a drive to the camera: when it started (UTC) and where the camera's millisecond
// clock stood then.
struct DriveClock
{
    QDateTime utcStart;         // drive time 0, whole seconds
    std::uint32_t bootMs = 0;   // camera clock at drive time 0
    std::uint64_t seed = 0;     // sensor noise and sky of this drive
    double geoidSeparation = 0; // m, constant over a short drive
};

// The telemetry stream of one recording, in the order it goes into the file.
struct TelemetryPlan
{
    std::vector<_AVI_GSENSOR_DATA_T> gsensor; // one per 100 ms from the recording's start
    std::vector<_AVI_GPS_DATA_T> gps;         // one per second
    std::vector<GpsFix> fixes;                // the fix behind each GPS record
    // How many G-sensor records precede each GPS record in the stream.
    std::vector<std::size_t> gpsAfter;
};

// Samples the receiver and the G-sensor along a drive. Every value is a function of the drive
// time alone, so two recordings that meet agree, and any recording can be made on its own.
class TelemetrySynth
{
public:
    static constexpr std::int32_t GpsDelayMs = 60; // the fix reaches the camera a little late
    static constexpr double Gravity = 9.81;
    static constexpr double CountsPerG = 256;

    TelemetrySynth(const DriveTrack& track, DriveClock clock);

    // start and duration in seconds of drive time; impact, when set, in drive time too.
    TelemetryPlan recording(double start, double duration, std::optional<double> impact) const;

    GpsFix fixAt(double driveTime) const;
    _AVI_GSENSOR_DATA_T gsensorAt(double driveTime, std::optional<double> impact) const;
    std::uint32_t cameraMs(double driveTime) const;
    // The speed a camera stores and shows: whole km/h.
    static std::uint32_t speedKmh(const GpsFix& fix);

private:
    _AVI_GPS_DATA_T gpsRecord(const GpsFix& fix, double driveTime) const;
    void fillSky(GpsFix& fix, double driveTime) const;

    const DriveTrack& m_track;
    DriveClock m_clock;
};

} // namespace kavro::camsim
