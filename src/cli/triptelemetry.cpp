#include "commands.h"
#include "progressline.h"
#include "streamedoutput.h"

#include "telemetry/tripexport.h"
#include "telemetry/tripplan.h"

namespace kavro::cli {

namespace {

constexpr int ExitSomeSkipped = 1;

TripExport::Format tripFormat(const std::string& format)
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

void warn(ProgressLine& progress, const std::string& message)
{
    progress.interrupt();
    fail("telemetry: " + message);
}

} // namespace

int runTripTelemetry(const CommandLine& line, const std::string& format, double gapSeconds)
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
    exporter.setRecoveryNotice([&progress](const std::string& path) {
        progress.interrupt();
        note("telemetry: " + path + " has no index; recovered from a recording cut short");
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

} // namespace kavro::cli
