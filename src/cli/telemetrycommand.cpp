#include "commandline.h"
#include "commands.h"

#include "telemetry/kvrblackboxdata.h"
#include "telemetry/telemetryexport.h"

#include <QFile>
#include <QFileInfo>

namespace kavro::cli {

namespace {

const char* const TelemetryHelp =
    R"(Usage: kavro telemetry FILE [--format json|csv|gpx|geojson|kml] [--recover] [-o OUT]

Reads the G-sensor samples and GPS records stored in a recording of the camera.

Formats:
  json     (default) "gsensor": [x, y, z] per sample in g; "gps": the GPS record in force at
           each sample (timestamp, lat/lon as stored in NMEA form, speed, unit); "nmea": the
           fix after every sentence (lat, lon, ns, ew, hdop, sats, speed, course, utc)
  csv      one line per sample: index,x,y,z,latitude,longitude,speed,unit, with the sample's
           position in signed decimal degrees (empty when it has none)
  gpx      the route, one point per GPS record, as a GPX 1.1 track
  geojson  the route as a GeoJSON LineString feature
  kml      the route as a KML 2.2 LineString placemark

Route points whose position is not a place on earth are left out.

--recover  a recording cut short by a power loss has no index (the camera writes it last), so
           its telemetry is not found; with --recover such a file is read chunk by chunk up to
           its last whole chunk, and a line on stderr says so. Files with an index are read
           through it either way.
Exit status: 0 on success, 2 when FILE cannot be read or is not RIFF/AVI.)";

} // namespace

int runTelemetryCommand(const QStringList& arguments)
{
    CommandLine line("telemetry", arguments);
    if (!line.parse({"-o", "--format"}, {"--recover"}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(TelemetryHelp);
    const std::optional<QString> format = line.format({"json", "csv", "gpx", "geojson", "kml"});
    if (!format)
        return fail(line.error());
    if (line.positional().size() != 1)
        return fail("telemetry: expected one FILE (try 'kavro telemetry --help')");

    const QString path = line.positional().first();
    KVRBlackBoxData store;
    store.setRecoverCutShort(line.has("--recover"));
    if (!store.ExtractStreamInformation(path)) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return fail(
                QStringLiteral("telemetry: cannot open %1: %2").arg(path, file.errorString()));
        return fail(QStringLiteral("telemetry: %1 is not a RIFF/AVI file").arg(path));
    }

    if (store.recovered())
        note(QStringLiteral("telemetry: %1 has no index; recovered from a recording cut short")
                 .arg(path));

    const QString name = QFileInfo(path).fileName();
    QByteArray output;
    if (*format == "json")
        output = telemetryJson(store);
    else if (*format == "csv")
        output = telemetryCsv(store);
    else if (*format == "gpx")
        output = routeGpx(routePoints(store), name);
    else if (*format == "geojson")
        output = routeGeoJson(routePoints(store), name);
    else
        output = routeKml(routePoints(store), name);
    return writeOutput(line, output);
}

} // namespace kavro::cli
