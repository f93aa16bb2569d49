#pragma once

#include "kvrblackboxdata.h"
#include "recording/recordingname.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kavro {

// How each file of a document of many recordings is read. Options that change what the reader
// finds in one file belong here, so that they reach every file alike.
struct TelemetryReadOptions
{
    KVRBlackBoxData::Limits limits;
    // Recover the telemetry of files cut short (see KVRBlackBoxData::setRecoverCutShort).
    bool recover = false;
};

// Reads one file's telemetry into the store with the options; false as ExtractStreamInformation.
bool readTelemetry(KVRBlackBoxData& store, const std::string& path,
                   const TelemetryReadOptions& options);

// The recordings that the files and folders given make up, in time order and cut into drives:
// what a document of many recordings holds, decided before any telemetry is written.
//
// A folder is scanned as the recording list scans it. The telemetry of a front/rear pair is read
// once, from its front file; a lone rear file is read itself. A recording starts at the time in
// its file name (the camera's local time) and lasts what its AVI header says, or, where the
// header gives nothing or the file was cut short, from its first telemetry sample to its last.
// A new drive starts where the time from the end of the drive so far to the start of the next
// recording exceeds the gap; a recording whose name carries no time is a drive of its own.
class TripPlan
{
public:
    struct Options
    {
        double gapSeconds = 120;
        TelemetryReadOptions read;
    };

    struct Recording
    {
        RecordingName media; // the file whose telemetry is read
        double seconds = 0;
        int drive = 0; // counted from 1
    };

    // Where in recordings() a drive lies.
    struct Drive
    {
        std::size_t first = 0;
        std::size_t count = 0;
    };

    // A path that gives nothing: a file the reader refuses or a folder without recordings.
    struct Problem
    {
        std::string path;
        std::string message; // names the path
    };

    // Paths as the file system has them; messages name them as given.
    static TripPlan make(const std::vector<std::string>& paths, const Options& options);

    const std::vector<Recording>& recordings() const { return m_recordings; }
    const std::vector<Drive>& drives() const { return m_drives; }
    const std::vector<Problem>& problems() const { return m_problems; }

    // The start in the camera's local time as the file name gives it, "2025-05-16 08:36:23" with
    // a space or "2025-05-16T08:36:23" with a 'T'; empty for a name without a time.
    static std::string startText(const RecordingName& media, char separator);
    // "always", "motion" or "event".
    static const char* modeWord(const RecordingName& media);

private:
    struct Candidate
    {
        RecordingName media;
        std::string shownPath; // as given, for messages about files named on the command line
    };

    std::vector<Candidate> gather(const std::vector<std::string>& paths);
    static std::vector<Candidate> onePerMoment(const std::vector<Candidate>& candidates);
    void measure(const std::vector<Candidate>& chosen, const TelemetryReadOptions& options);
    void cutIntoDrives(double gapSeconds);

    std::vector<Recording> m_recordings;
    std::vector<Drive> m_drives;
    std::vector<Problem> m_problems;
};

} // namespace kavro
