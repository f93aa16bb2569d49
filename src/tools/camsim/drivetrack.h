#pragma once

#include <optional>
#include <vector>

namespace kavro::camsim {

class Random;

// The car's state at one moment of a drive.
struct DriveSample
{
    double time = 0;                     // s since the drive started
    double distance = 0;                 // m along the route
    double east = 0;                     // m from the route's origin
    double north = 0;                    // m from the route's origin
    double latitude = 0;                 // signed decimal degrees
    double longitude = 0;                // signed decimal degrees
    double speed = 0;                    // m/s
    double heading = 0;                  // degrees clockwise from north, [0, 360)
    double curvature = 0;                // 1/m, positive in a right-hand bend
    double longitudinalAcceleration = 0; // m/s², positive when speeding up
    double lateralAcceleration = 0;      // m/s², positive towards the right
};

struct RouteSettings
{
    double originLatitude = 0;  // signed decimal degrees
    double originLongitude = 0; // signed decimal degrees
    double initialHeading = 0;  // degrees clockwise from north
    double duration = 60;       // s the drive should last, stop at the end included
    double cruiseSpeed = 60;    // km/h on open stretches
    // A stop at a red light about this far into the drive (a fraction of its length), long
    // enough for the car behind to bump into it; none when negative.
    double lightStopAt = -1;
    double lightStopDwell = 22; // s
};

struct RouteStop
{
    double arrival = 0;   // s
    double departure = 0; // s
    double position = 0;  // m along the route
};

// A drive along a made-up road: straights, bends and junctions, a speed profile that a driver
// could follow (gentle acceleration, slowing for bends, stops at lights, standing at the end),
// sampled every 100 ms.
class DriveTrack
{
public:
    static constexpr double SampleInterval = 0.1; // s

    static DriveTrack simulate(const RouteSettings& settings, Random& random);

    const std::vector<DriveSample>& samples() const { return m_samples; }
    const std::vector<RouteStop>& stops() const { return m_stops; }
    // The red light of RouteSettings::lightStopAt, when there is one.
    const std::optional<RouteStop>& lightStop() const { return m_lightStop; }
    double duration() const;
    // The state at a time, interpolated; before the start and after the end the car stands
    // where it starts and ends.
    DriveSample at(double time) const;

private:
    std::vector<DriveSample> m_samples;
    std::vector<RouteStop> m_stops;
    std::optional<RouteStop> m_lightStop;
};

} // namespace kavro::camsim
