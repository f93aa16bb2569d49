#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavro {

class JsonWriter;
class KVRBlackBoxData;
class XmlWriter;

// A fix's UTC as the receiver gave it; only dates and times that exist on a calendar are kept.
struct UtcTime
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;

    friend bool operator==(const UtcTime&, const UtcTime&) = default;
};

// One point of a recording's route in signed decimal degrees, with the UTC of its fix when the
// fix has a date.
struct RoutePoint
{
    double latitude = 0;
    double longitude = 0;
    std::optional<UtcTime> time;
};

// One point per GPS record read from the file, in file order, the hemisphere taken from the fix
// after that record's sentences. Records whose position is no place on earth (not finite,
// latitude beyond ±90, longitude outside [-180, 180)) are left out, so that every format stays a
// valid document.
std::vector<RoutePoint> routePoints(const KVRBlackBoxData& store);

// The store as JSON: "gsensor" (x, y, z per sample), "gps" (the record in force per sample) and
// "nmea" (the fix after every sentence).
std::string telemetryJson(const KVRBlackBoxData& store);
// One line per G-sensor sample with its merged GPS position in signed decimal degrees.
std::string telemetryCsv(const KVRBlackBoxData& store);

// The route as a GPX 1.1 track, a GeoJSON feature collection and a KML 2.2 document; name
// labels the track. Texts are UTF-8.
std::string routeGpx(const std::vector<RoutePoint>& points, std::string_view name);
std::string routeGeoJson(const std::vector<RoutePoint>& points, std::string_view name);
std::string routeKml(const std::vector<RoutePoint>& points, std::string_view name);

// The pieces of the documents above, so that a document of many recordings holds exactly what
// each recording's own document holds.
namespace exportpart {

// The object of telemetryJson, with a leading "file" key when file is given.
void writeTelemetryObject(JsonWriter& json, const KVRBlackBoxData& store,
                          const std::string* file = nullptr);
// The CSV header line, with a leading "file" column when withFile is set.
std::string csvHeader(bool withFile);
// The lines of telemetryCsv; a non-empty filePrefix (an escaped field with its comma) leads
// every line.
void appendCsvLines(std::string& out, const KVRBlackBoxData& store,
                    std::string_view filePrefix = {});
// A field as CSV carries it: quoted when it holds a comma, a quote or a line break.
std::string csvField(std::string_view text);

// Auto-formatting, the XML declaration and the opened root element with its namespaces.
void beginGpx(XmlWriter& xml);
void beginKml(XmlWriter& xml);
void writeGpxSegment(XmlWriter& xml, const std::vector<RoutePoint>& points);
// A KML Point or LineString; nothing for no points.
void writeKmlGeometry(XmlWriter& xml, const std::vector<RoutePoint>& points);
// The value of a GeoJSON "geometry" key: a Point, a LineString, or null for no points.
void writeGeoJsonGeometry(JsonWriter& json, const std::vector<RoutePoint>& points);
// Characters that XML 1.0 cannot carry at all become U+FFFD.
std::string xmlSafe(std::string_view text);

} // namespace exportpart

} // namespace kavro
