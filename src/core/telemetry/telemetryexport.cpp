#include "telemetryexport.h"

#include "card/nmeadegrees.h"
#include "common/jsonwriter.h"
#include "kvrblackboxdata.h"

#include <QBuffer>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
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

std::optional<QDateTime> utcOf(const _SYSTEMTIME& now)
{
    const QDate date(now.wYear, now.wMonth, now.wDay);
    const QTime time(now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

// A byte of the sentence as a one-character string; bytes past ASCII are taken as Latin-1 so
// that the output stays valid UTF-8.
QString letter(char c)
{
    return QString(QChar::fromLatin1(c));
}

// Plain decimal notation, as short as round-trips: XML schemas for coordinates don't take
// exponents.
void appendFixed(QByteArray& out, double value)
{
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    out.append(buffer, result.ptr - buffer);
}

// The UTC of a point as ISO 8601 with milliseconds and a 'Z', as QDateTime writes it; written
// by hand for the four-digit years ISO 8601 knows, since QDateTime's own formatting was most of
// the cost of a route.
void appendIsoUtc(QByteArray& out, const QDateTime& time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    if (date.year() < 0 || date.year() > 9999) {
        out.append(time.toString(Qt::ISODateWithMs).toUtf8());
        return;
    }
    char text[] = "0000-00-00T00:00:00.000Z";
    auto put = [&text](int at, int value, int digits) {
        for (int i = at + digits - 1; i >= at; --i, value /= 10)
            text[i] = char('0' + value % 10);
    };
    put(0, date.year(), 4);
    put(5, date.month(), 2);
    put(8, date.day(), 2);
    put(11, clock.hour(), 2);
    put(14, clock.minute(), 2);
    put(17, clock.second(), 2);
    put(20, clock.msec(), 3);
    out.append(text, qsizetype(sizeof text - 1));
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

QString utcText(const _SYSTEMTIME& now)
{
    return QString::asprintf("%04u-%02u-%02uT%02u:%02u:%02u.%03u", now.wYear, now.wMonth, now.wDay,
                             now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
}

template <typename T> void field(JsonWriter& json, std::string_view key, const T& value)
{
    json.key(key);
    json.value(value);
}

void beginXml(QXmlStreamWriter& xml)
{
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
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

QByteArray telemetryJson(const KVRBlackBoxData& store)
{
    JsonWriter json;
    writeTelemetryObject(json, store);
    return json.take();
}

QByteArray telemetryCsv(const KVRBlackBoxData& store)
{
    QByteArray csv = csvHeader(false);
    appendCsvLines(csv, store);
    return csv;
}

QByteArray routeGpx(const std::vector<RoutePoint>& points, const QString& name)
{
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QXmlStreamWriter xml(&buffer);
    beginGpx(xml);
    xml.writeStartElement("trk");
    xml.writeTextElement("name", xmlSafe(name));
    writeGpxSegment(xml, points);
    xml.writeEndDocument();
    return out;
}

QByteArray routeGeoJson(const std::vector<RoutePoint>& points, const QString& name)
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

QByteArray routeKml(const std::vector<RoutePoint>& points, const QString& name)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    beginKml(xml);
    xml.writeTextElement("name", xmlSafe(name));
    if (!points.empty()) {
        xml.writeStartElement("Placemark");
        xml.writeTextElement("name", xmlSafe(name));
        writeKmlGeometry(xml, points);
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return out;
}

namespace exportpart {

void writeTelemetryObject(JsonWriter& json, const KVRBlackBoxData& store, const QString* file)
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

QByteArray csvHeader(bool withFile)
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

void appendCsvLines(QByteArray& out, const KVRBlackBoxData& store, std::string_view filePrefix)
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
        out.append(line.data(), qsizetype(line.size()));
    }
}

QByteArray csvField(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    if (!utf8.contains(',') && !utf8.contains('"') && !utf8.contains('\n') && !utf8.contains('\r'))
        return utf8;
    return '"' + utf8.replace("\"", "\"\"") + '"';
}

void beginGpx(QXmlStreamWriter& xml)
{
    beginXml(xml);
    xml.writeStartElement("gpx");
    xml.writeDefaultNamespace("http://www.topografix.com/GPX/1/1");
    xml.writeAttribute("version", "1.1");
    xml.writeAttribute("creator", "kavro");
    xml.writeNamespace("http://www.w3.org/2001/XMLSchema-instance", "xsi");
    xml.writeAttribute("http://www.w3.org/2001/XMLSchema-instance", "schemaLocation",
                       "http://www.topografix.com/GPX/1/1 "
                       "http://www.topografix.com/GPX/1/1/gpx.xsd");
}

void beginKml(QXmlStreamWriter& xml)
{
    beginXml(xml);
    xml.writeStartElement("kml");
    xml.writeDefaultNamespace("http://www.opengis.net/kml/2.2");
    xml.writeStartElement("Document");
}

void writeGpxSegment(QXmlStreamWriter& xml, const std::vector<RoutePoint>& points)
{
    // The points are the bulk of a route and hold nothing to escape, so they are written as the
    // stream writer lays them out (auto-formatted at the depth of gpx > trk > trkseg) straight to
    // its device; the writer's own state is the same before and after a whole segment.
    QByteArray text;
    text.reserve(qsizetype(32 + points.size() * 96));
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
    xml.device()->write(text);
}

void writeKmlGeometry(QXmlStreamWriter& xml, const std::vector<RoutePoint>& points)
{
    if (points.empty())
        return;
    QByteArray coordinates;
    for (const RoutePoint& point : points) {
        if (!coordinates.isEmpty())
            coordinates.append(' ');
        appendFixed(coordinates, point.longitude);
        coordinates.append(',');
        appendFixed(coordinates, point.latitude);
    }
    xml.writeStartElement(points.size() == 1 ? "Point" : "LineString");
    if (points.size() > 1)
        xml.writeTextElement("tessellate", "1");
    xml.writeTextElement("coordinates", QString::fromLatin1(coordinates));
    xml.writeEndElement();
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

QString xmlSafe(QString text)
{
    for (QChar& c : text)
        if (c.unicode() < 0x20 && c != u'\t' && c != u'\n' && c != u'\r')
            c = QChar::ReplacementCharacter;
    return text;
}

} // namespace exportpart

} // namespace kavro
