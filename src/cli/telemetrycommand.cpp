#include "commandline.h"
#include "commands.h"

#include "telemetry/kvrblackboxdata.h"
#include "telemetry/telemetryexport.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

std::string fileName(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool isFolder(const std::string& path)
{
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// Seconds as a decimal number, blanks around it allowed; nothing else.
std::optional<double> secondsOf(std::string_view text)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.remove_suffix(1);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

} // namespace

int telemetryOfOneRecording(const CommandLine& line, const std::string& path,
                            const std::string& format)
{
    KVRBlackBoxData store;
    store.setRecoverCutShort(line.has("--recover"));
    if (!store.ExtractStreamInformation(path)) {
        const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            return fail("telemetry: cannot open " + path + ": " + std::strerror(errno));
        ::close(fd);
        return fail("telemetry: " + path + " is not a RIFF/AVI file");
    }

    if (store.recovered())
        note("telemetry: " + path + " has no index; recovered from a recording cut short");

    const std::string name = fileName(path);
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

int runTelemetryCommand(const Arguments& arguments)
{
    CommandLine line("telemetry", arguments);
    if (!line.parse({"-o", "--format", "--gap"}, {"--progress", "--recover"}))
        return fail(line.error());
    if (line.helpRequested())
        return printHelp(TelemetryHelp);
    const std::optional<std::string> format = line.format({"json", "csv", "gpx", "geojson", "kml"});
    if (!format)
        return fail(line.error());
    if (line.positional().empty())
        return fail("telemetry: expected a FILE or folder (try 'kavro telemetry --help')");
    double gapSeconds = 120;
    if (const std::optional<std::string> gap = line.value("--gap")) {
        const std::optional<double> seconds = secondsOf(*gap);
        if (!seconds || !std::isfinite(*seconds) || *seconds < 0)
            return fail("telemetry: --gap takes seconds, 0 or more, not '" + *gap + "'");
        gapSeconds = *seconds;
    }

    // One file keeps the document it has always had, so that existing scripts keep working.
    const std::string& first = line.positional().front();
    if (line.positional().size() == 1 && !isFolder(first))
        return telemetryOfOneRecording(line, first, *format);
    return runTripTelemetry(line, *format, gapSeconds);
}

} // namespace kavro::cli
