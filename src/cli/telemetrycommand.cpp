#include "commandline.h"
#include "commands.h"
#include "progressline.h"
#include "streamedoutput.h"

#include "qtbridge/qtbridge.h"
#include "telemetry/kvrblackboxdata.h"
#include "telemetry/telemetryexport.h"
#include "telemetry/tripexport.h"
#include "telemetry/tripplan.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace kavro::cli {

namespace {

const char* const TelemetryHelp =
    R"(Usage: kavro telemetry PATH... [--format json|csv|gpx|geojson|kml] [--gap SECONDS]
                        [--recover] [--progress] [-o OUT]

Reads the G-sensor samples and GPS records stored in the camera's recordings. Each PATH is a
recording or a folder; a folder is scanned as the viewer's recording list scans it. The telemetry
of a front/rear pair is read once, from its front file; a lone rear file is read itself.

One FILE gives that recording's document:
  json     (default) "gsensor": [x, y, z] per sample in g; "gps": the GPS record in force at
           each sample (timestamp, lat/lon as stored in NMEA form, speed, unit); "nmea": the
           fix after every sentence (lat, lon, ns, ew, hdop, sats, speed, course, utc)
  csv      one line per sample: index,x,y,z,latitude,longitude,speed,unit, with the sample's
           position in signed decimal degrees (empty when it has none)
  gpx      the route, one point per GPS record, as a GPX 1.1 track
  geojson  the route as a GeoJSON LineString feature
  kml      the route as a KML 2.2 LineString placemark

Several recordings, or a folder, give one document, in time order:
  json     an array of the one-file objects, each with a leading "file" key
  csv      the one-file lines with a leading file column
  gpx      a track per drive, named by its start in the camera's local time and listing its
           files in <desc>, with a segment per recording holding that recording's points
  geojson  a feature per recording (a LineString, a Point for a single fix, null without a
           fix) with the properties file, mode, start (camera's local time) and drive
  kml      a Folder per drive with a Placemark per recording

A recording starts at the time in its file name and lasts what its AVI header says (for a file
cut short: up to its last telemetry sample). A new drive starts where more than --gap seconds
(default 120) pass between the end of one recording and the start of the next.

  --progress   a progress line on stderr (on by itself after a second when stderr is a terminal)
  --recover    a recording cut short by a power loss has no index (the camera writes it last),
               so its telemetry is not found; with --recover such a file is read chunk by chunk
               up to its last whole chunk, and a line on stderr says so. Files with an index are
               read through it either way.

Route points whose position is not a place on earth are left out. Files that cannot be read are
named on stderr, one line each, and skipped.
Exit status: 0 when every recording was read; 1 when some were skipped but at least one was read;
2 when none could be read (a folder without recordings too) or the arguments are wrong.)";

constexpr int ExitSomeSkipped = 1;

int oneRecording(const CommandLine& line, const QString& path, const QString& format)
{
    KVRBlackBoxData store;
    store.setRecoverCutShort(line.has("--recover"));
    if (!store.ExtractStreamInformation(nativePath(path))) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return fail(
                QStringLiteral("telemetry: cannot open %1: %2").arg(path, file.errorString()));
        return fail(QStringLiteral("telemetry: %1 is not a RIFF/AVI file").arg(path));
    }

    if (store.recovered())
        note(QStringLiteral("telemetry: %1 has no index; recovered from a recording cut short")
                 .arg(path));

    const std::string name = QFileInfo(path).fileName().toStdString();
    std::string output;
    if (format == "json")
        output = telemetryJson(store);
    else if (format == "csv")
        output = telemetryCsv(store);
    else if (format == "gpx")
        output = routeGpx(routePoints(store), name);
    else if (format == "geojson")
        output = routeGeoJson(routePoints(store), name);
    else
        output = routeKml(routePoints(store), name);
    return writeOutput(line, output);
}

TripExport::Format tripFormat(const QString& format)
{
    if (format == "csv")
        return TripExport::Format::Csv;
    if (format == "gpx")
        return TripExport::Format::Gpx;
    if (format == "geojson")
        return TripExport::Format::GeoJson;
    if (format == "kml")
        return TripExport::Format::Kml;
    return TripExport::Format::Json;
}

void warn(ProgressLine& progress, const QString& message)
{
    progress.interrupt();
    fail("telemetry: " + message);
}

int manyRecordings(const CommandLine& line, const QString& format, double gapSeconds)
{
    TripPlan::Options options;
    options.gapSeconds = gapSeconds;
    options.read.recover = line.has("--recover");
    const TripPlan plan = TripPlan::make(line.positional(), options);
    ProgressLine progress(line.has("--progress"), plan.recordings().size(), "telemetry");
    for (const TripPlan::Problem& problem : plan.problems())
        warn(progress, problem.message);
    if (plan.recordings().empty())
        return ExitUsage;

    StreamedOutput output(line);
    std::size_t refused = 0;
    TripExport exporter(plan, tripFormat(format), options.read);
    exporter.setRecoveryNotice([&progress](const QString& path) {
        progress.interrupt();
        note(QStringLiteral("telemetry: %1 has no index; recovered from a recording cut short")
                 .arg(path));
    });
    exporter.write([&output](std::string_view piece) { return output.write(piece); },
                   [&progress](std::size_t done) { progress.update(done); },
                   [&](const TripPlan::Problem& problem) {
                       ++refused;
                       warn(progress, problem.message);
                   });
    progress.finish();
    const int written = output.finish();
    if (written != ExitOk)
        return written;
    if (refused == plan.recordings().size())
        return ExitUsage;
    return plan.problems().empty() && refused == 0 ? ExitOk : ExitSomeSkipped;
}

} // namespace

int runTelemetryCommand(const QStringList& arguments)
{
    CommandLine line("telemetry", arguments);
    if (!line.parse({"-o", "--format", "--gap"}, {"--progress", "--recover"}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(TelemetryHelp);
    const std::optional<QString> format = line.format({"json", "csv", "gpx", "geojson", "kml"});
    if (!format)
        return fail(line.error());
    if (line.positional().isEmpty())
        return fail("telemetry: expected a FILE or folder (try 'kavro telemetry --help')");
    double gapSeconds = 120;
    if (const std::optional<QString> gap = line.value("--gap")) {
        bool ok = false;
        gapSeconds = gap->toDouble(&ok);
        if (!ok || !std::isfinite(gapSeconds) || gapSeconds < 0)
            return fail(
                QStringLiteral("telemetry: --gap takes seconds, 0 or more, not '%1'").arg(*gap));
    }

    // One file keeps the document it has always had, so that existing scripts keep working.
    const QString& first = line.positional().constFirst();
    if (line.positional().size() == 1 && !QFileInfo(first).isDir())
        return oneRecording(line, first, *format);
    return manyRecordings(line, *format, gapSeconds);
}

} // namespace kavro::cli
