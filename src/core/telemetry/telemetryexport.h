#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace kavro {

class KVRBlackBoxData;

// One point of a recording's route in signed decimal degrees, with the UTC of its fix when the
// fix has a date.
struct RoutePoint
{
    double latitude = 0;
    double longitude = 0;
    std::optional<QDateTime> time;
};

// One point per GPS record read from the file, in file order, the hemisphere taken from the fix
// after that record's sentences. Records whose position is no place on earth (not finite,
// latitude beyond ±90, longitude outside [-180, 180)) are left out, so that every format stays a
// valid document.
std::vector<RoutePoint> routePoints(const KVRBlackBoxData& store);

// The store as JSON: "gsensor" (x, y, z per sample), "gps" (the record in force per sample) and
// "nmea" (the fix after every sentence).
QByteArray telemetryJson(const KVRBlackBoxData& store);
// One line per G-sensor sample with its merged GPS position in signed decimal degrees.
QByteArray telemetryCsv(const KVRBlackBoxData& store);

// The route as a GPX 1.1 track, a GeoJSON feature collection and a KML 2.2 document; name
// labels the track.
QByteArray routeGpx(const std::vector<RoutePoint>& points, const QString& name);
QByteArray routeGeoJson(const std::vector<RoutePoint>& points, const QString& name);
QByteArray routeKml(const std::vector<RoutePoint>& points, const QString& name);

} // namespace kavro
