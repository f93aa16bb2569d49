#pragma once

#include "tripplan.h"

#include <functional>
#include <string_view>

namespace kavro {

// The telemetry of many recordings as one document, written recording by recording: only one
// recording's telemetry is in memory at a time, and the text goes out to the sink as soon as a
// recording is done.
//
// GPX: a track per drive (named by its start, its description listing its files) with a segment
// per recording. GeoJSON: a feature per recording with "file", "mode", "start" and "drive". KML:
// a Folder per drive with a Placemark per recording. CSV and JSON: the single-file forms with the
// file name added. Each recording's part holds exactly what its own document holds.
class TripExport
{
public:
    enum class Format
    {
        Json,
        Csv,
        Gpx,
        GeoJson,
        Kml,
    };
    // Takes the next piece of the document; false stops the export.
    using Sink = std::function<bool(std::string_view)>;
    // Called after each recording with the number done so far.
    using Progress = std::function<void(std::size_t done)>;
    // Called for a file that the reader refused although the plan took it (it changed since);
    // its part is left empty.
    using Refusal = std::function<void(const TripPlan::Problem&)>;

    TripExport(const TripPlan& plan, Format format, const TelemetryReadOptions& options);

    // Told the path of each file whose telemetry was recovered from a recording cut short.
    void setRecoveryNotice(std::function<void(const std::string& path)> notice)
    {
        m_recoveryNotice = std::move(notice);
    }

    // Writes the whole document. Returns false when the sink refused a piece.
    bool write(const Sink& sink, const Progress& progress = {}, const Refusal& refusal = {});

private:
    const TripPlan& m_plan;
    Format m_format;
    TelemetryReadOptions m_options;
    std::function<void(const std::string& path)> m_recoveryNotice;
};

} // namespace kavro
