#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

class QXmlStreamWriter;

namespace kavro {

class JsonWriter;
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

// The pieces of the documents above, so that a document of many recordings holds exactly what
// each recording's own document holds.
namespace exportpart {

// The object of telemetryJson, with a leading "file" key when file is given.
void writeTelemetryObject(JsonWriter& json, const KVRBlackBoxData& store,
                          const QString* file = nullptr);
// The CSV header line, with a leading "file" column when withFile is set.
QByteArray csvHeader(bool withFile);
// The lines of telemetryCsv; a non-empty filePrefix (an escaped field with its comma) leads
// every line.
void appendCsvLines(QByteArray& out, const KVRBlackBoxData& store,
                    std::string_view filePrefix = {});
// A field as CSV carries it: quoted when it holds a comma, a quote or a line break.
QByteArray csvField(const QString& text);

// Auto-formatting, the XML declaration and the opened root element with its namespaces.
void beginGpx(QXmlStreamWriter& xml);
void beginKml(QXmlStreamWriter& xml);
void writeGpxSegment(QXmlStreamWriter& xml, const std::vector<RoutePoint>& points);
// A KML Point or LineString; nothing for no points.
void writeKmlGeometry(QXmlStreamWriter& xml, const std::vector<RoutePoint>& points);
// The value of a GeoJSON "geometry" key: a Point, a LineString, or null for no points.
void writeGeoJsonGeometry(JsonWriter& json, const std::vector<RoutePoint>& points);
// Characters that XML 1.0 cannot carry at all become U+FFFD.
QString xmlSafe(QString text);

} // namespace exportpart

} // namespace kavro
