#include "telemetryexport.h"

#include "card/nmeadegrees.h"
#include "common/jsonwriter.h"
#include "common/xmlwriter.h"
#include "kvrblackboxdata.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace kavro {

namespace {

// NMEA form without its sign, then the hemisphere of the fix: anything but 'N' or 'E' counts as
// south or west, as the player shows it.
double signedDegrees(double nmea, bool negative)
{
    const double degrees = nmeaToDegrees(std::fabs(nmea));
    return negative ? -degrees : degrees;
}

double latitudeOf(const _AVI_GPS_DATA_T& record, const KVRGpsData& fix)
{
    return signedDegrees(record.fLatitude, fix.NS != 'N');
}

double longitudeOf(const _AVI_GPS_DATA_T& record, const KVRGpsData& fix)
{
    return signedDegrees(record.fLongitude, fix.EW != 'E');
}

const char* unitOf(const _AVI_GPS_DATA_T& record)
{
    return record.KM == '9' ? "km/h" : "mi/h";
}

bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// The fields as a calendar date and a clock time, or nothing; a record's year is 0 to 65535.
std::optional<UtcTime> utcOf(const _SYSTEMTIME& now)
{
    static constexpr int MonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = now.wYear;
    const int month = now.wMonth;
    const int day = now.wDay;
    if (year == 0 || month < 1 || month > 12 || day < 1 ||
        day > MonthDays[month - 1] + (month == 2 && isLeapYear(year)) || now.wHour > 23 ||
        now.wMinute > 59 || now.wSecond > 59 || now.wMilliseconds > 999)
        return std::nullopt;
    return UtcTime{year, month, day, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

// A byte of the sentence as a one-character string; bytes past ASCII are taken as Latin-1 so
// that the output stays valid UTF-8.
std::string letter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80)
        return std::string(1, c);
    return {char(0xc0 | (byte >> 6)), char(0x80 | (byte & 0x3f))};
}

// Plain decimal notation, as short as round-trips: XML schemas for coordinates don't take
// exponents.
void appendFixed(std::string& out, double value)
{
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    out.append(buffer, result.ptr);
}

// The UTC of a point as ISO 8601 with milliseconds and a 'Z'. ISO 8601's plain form has four
// digits of year; a record's later years (it holds up to 65535) give an empty time.
void appendIsoUtc(std::string& out, const UtcTime& time)
{
    if (time.year > 9999)
        return;
    char text[] = "0000-00-00T00:00:00.000Z";
    auto put = [&text](int at, int value, int digits) {
        for (int i = at + digits - 1; i >= at; --i, value /= 10)
            text[i] = char('0' + value % 10);
    };
    put(0, time.year, 4);
    put(5, time.month, 2);
    put(8, time.day, 2);
    put(11, time.hour, 2);
    put(14, time.minute, 2);
    put(17, time.second, 2);
    put(20, time.millisecond, 3);
    out.append(text, sizeof text - 1);
}

void appendNumber(std::string& line, std::uint64_t value)
{
    char buffer[24];
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

// Shortest round-trip text as shortestText() gives it, without a string of its own.
template <typename T> void appendShortest(std::string& line, T value)
{
    if (!std::isfinite(value))
        return;
    char buffer[64];
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string utcText(const _SYSTEMTIME& now)
{
    char text[64];
    const int length =
        std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u.%03u", now.wYear,
                      now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    return std::string(text, std::size_t(std::max(0, length)));
}

template <typename T> void field(JsonWriter& json, std::string_view key, const T& value)
{
    json.key(key);
    json.value(value);
}

void beginXml(XmlWriter& xml)
{
    xml.startDocument();
}

} // namespace

using namespace exportpart;

std::vector<RoutePoint> routePoints(const KVRBlackBoxData& store)
{
    std::vector<RoutePoint> points;
    points.reserve(store.gpsRecords().size());
    for (const KVRBlackBoxData::GpsRecordFix& entry : store.gpsRecords()) {
        const _AVI_GPS_DATA_T& record = entry.record->data();
        RoutePoint point{latitudeOf(record, entry.fix), longitudeOf(record, entry.fix),
                         utcOf(entry.fix.Now)};
        if (!std::isfinite(point.latitude) || !std::isfinite(point.longitude) ||
            std::fabs(point.latitude) > 90 || point.longitude < -180 || point.longitude >= 180)
            continue;
        points.push_back(point);
    }
    return points;
}

std::string telemetryJson(const KVRBlackBoxData& store)
{
    JsonWriter json;
    writeTelemetryObject(json, store);
    return json.take();
}

std::string telemetryCsv(const KVRBlackBoxData& store)
{
    std::string csv = csvHeader(false);
    appendCsvLines(csv, store);
    return csv;
}

std::string routeGpx(const std::vector<RoutePoint>& points, std::string_view name)
{
    XmlWriter xml;
    beginGpx(xml);
    xml.startElement("trk");
    xml.textElement("name", xmlSafe(name));
    writeGpxSegment(xml, points);
    xml.endDocument();
    return xml.takePending();
}

std::string routeGeoJson(const std::vector<RoutePoint>& points, std::string_view name)
{
    JsonWriter json;
    json.beginObject();
    field(json, "type", "FeatureCollection");
    json.key("features");
    json.beginArray();
    // A line needs two positions; a single fix is a point, none is an empty collection.
    if (!points.empty()) {
        json.beginObject();
        field(json, "type", "Feature");
        json.key("properties");
        json.beginObject(JsonWriter::Layout::Inline);
        field(json, "name", name);
        json.endObject();
        json.key("geometry");
        writeGeoJsonGeometry(json, points);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    return json.take();
}

std::string routeKml(const std::vector<RoutePoint>& points, std::string_view name)
{
    XmlWriter xml;
    beginKml(xml);
    xml.textElement("name", xmlSafe(name));
    if (!points.empty()) {
        xml.startElement("Placemark");
        xml.textElement("name", xmlSafe(name));
        writeKmlGeometry(xml, points);
        xml.endElement();
    }
    xml.endDocument();
    return xml.takePending();
}

namespace exportpart {

void writeTelemetryObject(JsonWriter& json, const KVRBlackBoxData& store, const std::string* file)
{
    json.beginObject();
    if (file)
        field(json, "file", *file);
    json.key("gsensor");
    json.beginArray();
    for (const KVRGSensor& sample : store.GSensors()) {
        json.beginArray(JsonWriter::Layout::Inline);
        json.value(sample.x);
        json.value(sample.y);
        json.value(sample.z);
        json.endArray();
    }
    json.endArray();

    json.key("gps");
    json.beginArray();
    for (const KVRBlackBoxData::GpsRecordRef& wrapper : store.vGpsData()) {
        const _AVI_GPS_DATA_T& record = wrapper->data();
        json.beginObject(JsonWriter::Layout::Inline);
        field(json, "timestamp", record.nTimestamp);
        field(json, "lat", record.fLatitude);
        field(json, "lon", record.fLongitude);
        field(json, "speed", record.fSpeed);
        field(json, "unit", unitOf(record));
        json.endObject();
    }
    json.endArray();

    // The fix's decimals were read in single precision; printed as such they read back equal.
    json.key("nmea");
    json.beginArray();
    for (const KVRGpsData& fix : store.NMEAs()) {
        json.beginObject(JsonWriter::Layout::Inline);
        field(json, "lat", float(fix.Latitude));
        field(json, "lon", float(fix.Longitude));
        field(json, "ns", letter(fix.NS));
        field(json, "ew", letter(fix.EW));
        field(json, "hdop", float(fix.HDOP));
        field(json, "sats", fix.SatelliteUsedCount);
        field(json, "speed", float(fix.SpeedOverGround));
        field(json, "course", float(fix.CourseOverGround));
        field(json, "utc", utcText(fix.Now));
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

std::string csvHeader(bool withFile)
{
    return withFile ? "file,index,x,y,z,latitude,longitude,speed,unit\n"
                    : "index,x,y,z,latitude,longitude,speed,unit\n";
}

namespace {

// The shortest texts of recent axis values. A G-sensor reports a few hundred distinct counts in a
// recording, so most values are turned into text once rather than once per sample.
class AxisTexts
{
public:
    std::string_view text(float value)
    {
        const std::uint32_t bits = std::bit_cast<std::uint32_t>(value);
        Entry& entry = m_entries[(bits * 2654435761u) >> 24];
        if (!entry.used || entry.bits != bits) {
            // The shortest text of a float is at most 15 characters ("-1.17549435e-38").
            char* end = std::to_chars(entry.text, entry.text + sizeof entry.text, value).ptr;
            entry.length = std::isfinite(value) ? std::uint8_t(end - entry.text) : 0;
            entry.bits = bits;
            entry.used = true;
        }
        return {entry.text, entry.length};
    }

private:
    struct Entry
    {
        std::uint32_t bits = 0;
        bool used = false;
        std::uint8_t length = 0;
        char text[24];
    };
    std::array<Entry, 256> m_entries{};
};

} // namespace

void appendCsvLines(std::string& out, const KVRBlackBoxData& store, std::string_view filePrefix)
{
    const auto& samples = store.GSensors();
    AxisTexts axes;
    // Samples come ten to a GPS record: its position is turned into text once per record.
    std::string line;
    std::string position;
    std::size_t positionOf = SIZE_MAX;
    for (std::size_t k = 0; k < samples.size(); ++k) {
        line.assign(filePrefix);
        appendNumber(line, k);
        for (float axis : {samples[k].x, samples[k].y, samples[k].z}) {
            line += ',';
            line += axes.text(axis);
        }
        if (k < store.vGpsData().size()) {
            const std::size_t recordIndex = store.vGpsRecordIndex()[k];
            if (recordIndex != positionOf) {
                const _AVI_GPS_DATA_T& record = store.vGpsData()[k]->data();
                const KVRGpsData& fix = store.gpsRecords()[recordIndex].fix;
                position.assign(1, ',');
                appendShortest(position, latitudeOf(record, fix));
                position += ',';
                appendShortest(position, longitudeOf(record, fix));
                position += ',';
                appendNumber(position, record.fSpeed);
                (position += ',') += unitOf(record);
                positionOf = recordIndex;
            }
            line += position;
        } else {
            line += ",,,,";
        }
        line += '\n';
        out.append(line);
    }
}

std::string csvField(std::string_view text)
{
    if (text.find_first_of(",\"\n\r") == std::string_view::npos)
        return std::string(text);
    std::string field(1, '"');
    for (const char c : text) {
        if (c == '"')
            field += '"';
        field += c;
    }
    return field += '"';
}

void beginGpx(XmlWriter& xml)
{
    beginXml(xml);
    xml.startElement("gpx");
    xml.attribute("xmlns", "http://www.topografix.com/GPX/1/1");
    xml.attribute("version", "1.1");
    xml.attribute("creator", "kavro");
    xml.attribute("xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance");
    xml.attribute("xsi:schemaLocation", "http://www.topografix.com/GPX/1/1 "
                                        "http://www.topografix.com/GPX/1/1/gpx.xsd");
}

void beginKml(XmlWriter& xml)
{
    beginXml(xml);
    xml.startElement("kml");
    xml.attribute("xmlns", "http://www.opengis.net/kml/2.2");
    xml.startElement("Document");
}

void writeGpxSegment(XmlWriter& xml, const std::vector<RoutePoint>& points)
{
    // The points are the bulk of a route and hold nothing to escape, so they are written as the
    // writer lays them out (at the depth of gpx > trk > trkseg) as markup of their own; the
    // writer's state is the same before and after a whole segment.
    std::string text;
    text.reserve(32 + points.size() * 96);
    if (points.empty())
        text.append("\n    <trkseg/>");
    else
        text.append("\n    <trkseg>");
    for (const RoutePoint& point : points) {
        text.append("\n      <trkpt lat=\"");
        appendFixed(text, point.latitude);
        text.append("\" lon=\"");
        appendFixed(text, point.longitude);
        if (!point.time) {
            text.append("\"/>");
            continue;
        }
        text.append("\">\n        <time>");
        appendIsoUtc(text, *point.time);
        text.append("</time>\n      </trkpt>");
    }
    if (!points.empty())
        text.append("\n    </trkseg>");
    xml.raw(text);
}

void writeKmlGeometry(XmlWriter& xml, const std::vector<RoutePoint>& points)
{
    if (points.empty())
        return;
    std::string coordinates;
    for (const RoutePoint& point : points) {
        if (!coordinates.empty())
            coordinates += ' ';
        appendFixed(coordinates, point.longitude);
        coordinates += ',';
        appendFixed(coordinates, point.latitude);
    }
    xml.startElement(points.size() == 1 ? "Point" : "LineString");
    if (points.size() > 1)
        xml.textElement("tessellate", "1");
    xml.textElement("coordinates", coordinates);
    xml.endElement();
}

void writeGeoJsonGeometry(JsonWriter& json, const std::vector<RoutePoint>& points)
{
    if (points.empty()) {
        json.null();
        return;
    }
    json.beginObject();
    field(json, "type", points.size() == 1 ? "Point" : "LineString");
    json.key("coordinates");
    if (points.size() > 1)
        json.beginArray();
    for (const RoutePoint& point : points) {
        json.beginArray(JsonWriter::Layout::Inline);
        json.value(point.longitude);
        json.value(point.latitude);
        json.endArray();
    }
    if (points.size() > 1)
        json.endArray();
    json.endObject();
}

std::string xmlSafe(std::string_view text)
{
    std::string safe;
    safe.reserve(text.size());
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r')
            safe.append("\xef\xbf\xbd"); // U+FFFD
        else
            safe += c;
    }
    return safe;
}

} // namespace exportpart

} // namespace kavro
