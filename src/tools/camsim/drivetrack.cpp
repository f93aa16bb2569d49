#include "drivetrack.h"

#include "random.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kavro::camsim {

namespace {

constexpr double Step = 1.0;               // m between path points
constexpr double MetresPerDegree = 111195; // mean, on a sphere of the earth's mean radius
constexpr double LateralComfort = 1.9;     // m/s² a driver accepts in a bend
constexpr double Braking = 1.8;            // m/s²

double kmh(double value)
{
    return value / 3.6;
}

struct PathPoint
{
    double east = 0;
    double north = 0;
    double heading = 0; // radians, unwrapped
    double curvature = 0;
    double target = 0; // m/s the driver aims at here
    double dwell = -1; // s standing here; negative: no stop
};

class PathBuilder
{
public:
    explicit PathBuilder(double headingDegrees)
    {
        PathPoint start;
        start.heading = headingDegrees * std::numbers::pi / 180;
        m_points.push_back(start);
    }

    void straight(double length, double target) { advance(length, 0, target); }

    void bend(double radius, double angleDegrees, double target)
    {
        const double length = radius * std::abs(angleDegrees) * std::numbers::pi / 180;
        advance(length, std::copysign(1.0 / radius, angleDegrees), target);
    }

    void stopHere(double dwell) { m_points.back().dwell = dwell; }
    std::vector<PathPoint>& points() { return m_points; }

private:
    void advance(double length, double curvature, double target)
    {
        const int steps = std::max(1, static_cast<int>(std::lround(length / Step)));
        for (int i = 0; i < steps; ++i) {
            PathPoint next = m_points.back();
            next.heading += curvature * Step;
            next.east += Step * std::sin(next.heading);
            next.north += Step * std::cos(next.heading);
            next.curvature = curvature;
            next.target = target;
            next.dwell = -1;
            m_points.push_back(next);
        }
    }

    std::vector<PathPoint> m_points;
};

// Adds one stretch of road: a straight, then a gentle bend or a junction. One draw a statement,
// so that the compiler's order of evaluation cannot change the road.
void addStretch(PathBuilder& builder, Random& random, double cruise)
{
    const double length = random.uniform(120, 480);
    const double target = cruise + random.uniform(-8, 6);
    builder.straight(length, kmh(target));
    const bool junction = random.chance(0.3);
    if (junction && random.chance(0.5))
        builder.stopHere(random.uniform(6, 18));
    const double turn = junction ? random.uniform(82, 96) : random.uniform(8, 38);
    const double side = random.chance(0.5) ? 1 : -1;
    const double radius = junction ? random.uniform(14, 22) : random.uniform(130, 450);
    builder.bend(radius, side * turn, kmh(junction ? 25 : cruise));
}

struct Profile
{
    std::vector<double> speed;     // m/s at each point
    std::vector<double> arrival;   // s
    std::vector<double> departure; // s
};

Profile speedProfile(const std::vector<PathPoint>& points)
{
    const std::size_t count = points.size();
    Profile profile;
    std::vector<double>& v = profile.speed;
    v.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        double limit = points[i].target;
        if (points[i].curvature != 0)
            limit = std::min(limit, std::sqrt(LateralComfort / std::abs(points[i].curvature)));
        if (points[i].dwell >= 0 || i == 0 || i + 1 == count)
            limit = 0;
        v[i] = limit;
    }
    for (std::size_t i = 1; i < count; ++i) {
        const double acceleration = std::max(0.6, 1.8 - 0.05 * v[i - 1]);
        v[i] = std::min(v[i], std::sqrt(v[i - 1] * v[i - 1] + 2 * acceleration * Step));
    }
    for (std::size_t i = count - 1; i-- > 0;)
        v[i] = std::min(v[i], std::sqrt(v[i + 1] * v[i + 1] + 2 * Braking * Step));

    profile.arrival.resize(count);
    profile.departure.resize(count);
    double time = 0;
    for (std::size_t i = 0; i < count; ++i) {
        // Creeping from one standstill to the next takes as long as speeding up and braking.
        if (i > 0)
            time +=
                v[i - 1] + v[i] > 1 ? 2 * Step / (v[i - 1] + v[i]) : 2 * std::sqrt(Step / Braking);
        profile.arrival[i] = time;
        time += std::max(points[i].dwell, 0.0);
        profile.departure[i] = time;
    }
    return profile;
}

double wrapDegrees(double degrees)
{
    degrees = std::fmod(degrees, 360.0);
    return degrees < 0 ? degrees + 360 : degrees;
}

} // namespace

DriveTrack DriveTrack::simulate(const RouteSettings& settings, Random& random)
{
    PathBuilder builder(settings.initialHeading);
    Profile profile;
    // Grow the road until the drive lasts long enough, then cut it where the driver has to
    // start braking for the final stop.
    for (;;) {
        addStretch(builder, random, settings.cruiseSpeed);
        profile = speedProfile(builder.points());
        if (profile.arrival.back() >= settings.duration)
            break;
    }
    std::vector<PathPoint>& points = builder.points();
    const double cruise = kmh(settings.cruiseSpeed);
    // The red light added below takes its share of the time.
    const double driving = std::max(
        2.0, settings.duration - (settings.lightStopAt >= 0 ? settings.lightStopDwell : 0));
    // A short drive spends half its time speeding up and half braking.
    const double brakingTime = std::min(cruise / Braking, driving / 2);
    std::size_t end = points.size();
    while (end > 2 && profile.departure[end - 1] > driving - brakingTime)
        --end;
    points.resize(std::max<std::size_t>(end, 2));

    std::optional<std::size_t> light;
    if (settings.lightStopAt >= 0 && points.size() >= 3) {
        const auto at =
            static_cast<std::size_t>(settings.lightStopAt * static_cast<double>(points.size()));
        light = std::clamp<std::size_t>(at, 1, points.size() - 2);
        points[*light].dwell = settings.lightStopDwell;
    }
    profile = speedProfile(points);

    DriveTrack track;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i].dwell < 0)
            continue;
        track.m_stops.push_back(
            {profile.arrival[i], profile.departure[i], static_cast<double>(i) * Step});
        if (light && *light == i)
            track.m_lightStop = track.m_stops.back();
    }

    const double total = profile.departure.back();
    const auto sampleCount = static_cast<std::size_t>(std::floor(total / SampleInterval)) + 1;
    const double cosLatitude = std::cos(settings.originLatitude * std::numbers::pi / 180);
    std::size_t i = 0;
    for (std::size_t k = 0; k < sampleCount; ++k) {
        const double time = static_cast<double>(k) * SampleInterval;
        while (i + 1 < points.size() && profile.arrival[i + 1] <= time)
            ++i;
        DriveSample sample;
        sample.time = time;
        double along = 0;
        if (i + 1 < points.size() && time > profile.departure[i]) {
            // Constant acceleration between two points.
            const double v0 = profile.speed[i];
            const double v1 = profile.speed[i + 1];
            const double acceleration = (v1 * v1 - v0 * v0) / (2 * Step);
            const double tau = time - profile.departure[i];
            along = std::clamp(v0 * tau + 0.5 * acceleration * tau * tau, 0.0, Step);
            sample.speed = std::max(0.0, v0 + acceleration * tau);
        }
        const PathPoint& a = points[i];
        const PathPoint& b = points[std::min(i + 1, points.size() - 1)];
        const double f = along / Step;
        sample.distance = static_cast<double>(i) * Step + along;
        sample.east = a.east + (b.east - a.east) * f;
        sample.north = a.north + (b.north - a.north) * f;
        sample.heading =
            wrapDegrees((a.heading + (b.heading - a.heading) * f) * 180 / std::numbers::pi);
        sample.curvature = b.curvature;
        sample.latitude = settings.originLatitude + sample.north / MetresPerDegree;
        sample.longitude = settings.originLongitude + sample.east / (MetresPerDegree * cosLatitude);
        sample.lateralAcceleration = sample.speed * sample.speed * sample.curvature;
        track.m_samples.push_back(sample);
    }
    std::vector<DriveSample>& s = track.m_samples;
    for (std::size_t k = 0; k < s.size(); ++k) {
        const std::size_t before = k > 0 ? k - 1 : k;
        const std::size_t after = std::min(k + 1, s.size() - 1);
        if (after > before)
            s[k].longitudinalAcceleration =
                (s[after].speed - s[before].speed) / (s[after].time - s[before].time);
    }
    return track;
}

double DriveTrack::duration() const
{
    return m_samples.empty() ? 0 : m_samples.back().time;
}

DriveSample DriveTrack::at(double time) const
{
    if (m_samples.empty())
        return {};
    const double position = time / SampleInterval;
    const auto k = static_cast<std::size_t>(std::max(0.0, position));
    if (time < 0 || k + 1 >= m_samples.size()) {
        DriveSample standing = time < 0 ? m_samples.front() : m_samples.back();
        standing.time = time;
        standing.speed = 0;
        standing.longitudinalAcceleration = 0;
        standing.lateralAcceleration = 0;
        return standing;
    }
    const DriveSample& a = m_samples[k];
    const DriveSample& b = m_samples[k + 1];
    const double f = position - static_cast<double>(k);
    auto mix = [f](double x, double y) { return x + (y - x) * f; };
    DriveSample sample = a;
    sample.time = time;
    sample.distance = mix(a.distance, b.distance);
    sample.east = mix(a.east, b.east);
    sample.north = mix(a.north, b.north);
    sample.latitude = mix(a.latitude, b.latitude);
    sample.longitude = mix(a.longitude, b.longitude);
    sample.speed = mix(a.speed, b.speed);
    double turn = b.heading - a.heading;
    if (turn > 180)
        turn -= 360;
    if (turn < -180)
        turn += 360;
    sample.heading = wrapDegrees(a.heading + turn * f);
    sample.curvature = mix(a.curvature, b.curvature);
    sample.longitudinalAcceleration = mix(a.longitudinalAcceleration, b.longitudinalAcceleration);
    sample.lateralAcceleration = mix(a.lateralAcceleration, b.lateralAcceleration);
    return sample;
}

} // namespace kavro::camsim
