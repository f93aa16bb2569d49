#include "telemetryexport.h"

#include "card/nmeadegrees.h"
#include "common/jsonwriter.h"
#include "common/numbertext.h"
#include "kvrblackboxdata.h"

#include <QXmlStreamWriter>

#include <charconv>
#include <cmath>

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
QString fixedText(double value)
{
    char buffer[400];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return QString::fromLatin1(buffer, result.ptr - buffer);
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
    QXmlStreamWriter xml(&out);
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

void appendCsvLines(QByteArray& out, const KVRBlackBoxData& store, std::string_view filePrefix)
{
    const auto& samples = store.GSensors();
    std::string line;
    for (std::size_t k = 0; k < samples.size(); ++k) {
        line.assign(filePrefix);
        line += std::to_string(k) + ',' + shortestText(samples[k].x) + ',' +
                shortestText(samples[k].y) + ',' + shortestText(samples[k].z);
        if (k < store.vGpsData().size()) {
            const _AVI_GPS_DATA_T& record = store.vGpsData()[k]->data();
            const KVRGpsData& fix = store.gpsRecords()[store.vGpsRecordIndex()[k]].fix;
            line += ',' + shortestText(latitudeOf(record, fix)) + ',' +
                    shortestText(longitudeOf(record, fix)) + ',' + std::to_string(record.fSpeed) +
                    ',' + unitOf(record);
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
    xml.writeStartElement("trkseg");
    for (const RoutePoint& point : points) {
        xml.writeStartElement("trkpt");
        xml.writeAttribute("lat", fixedText(point.latitude));
        xml.writeAttribute("lon", fixedText(point.longitude));
        if (point.time)
            xml.writeTextElement("time", point.time->toString(Qt::ISODateWithMs));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void writeKmlGeometry(QXmlStreamWriter& xml, const std::vector<RoutePoint>& points)
{
    if (points.empty())
        return;
    QStringList coordinates;
    for (const RoutePoint& point : points)
        coordinates.append(fixedText(point.longitude) + ',' + fixedText(point.latitude));
    xml.writeStartElement(points.size() == 1 ? "Point" : "LineString");
    if (points.size() > 1)
        xml.writeTextElement("tessellate", "1");
    xml.writeTextElement("coordinates", coordinates.join(' '));
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
