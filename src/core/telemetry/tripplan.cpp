#include "tripplan.h"

#include "recording/recordingscan.h"
#include "recordingprobe.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>

#include <sys/stat.h>

namespace kavro {

namespace {

// Seconds of the name's time on a plain count of days. Only differences are used, so no time
// zone enters; fields that the camera's range test lets through past a calendar (24 o'clock,
// second 60, 31 February) carry over as a clock would.
std::int64_t nameSeconds(const KVRMediaTime& time)
{
    // Days since 1 March of year 0 on the proleptic Gregorian calendar, for the 1st of the month.
    const std::int64_t year = time.month <= 2 ? time.year - 1 : time.year;
    const std::int64_t shiftedMonth = (time.month + 9) % 12; // March is 0
    const std::int64_t monthStart =
        year * 365 + year / 4 - year / 100 + year / 400 + (153 * shiftedMonth + 2) / 5;
    const std::int64_t days = monthStart + time.day - 1;
    return days * 86400 + time.hour * 3600 + time.minute * 60 + time.second;
}

bool isFolder(const std::string& path)
{
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

bool readTelemetry(KVRBlackBoxData& store, const std::string& path,
                   const TelemetryReadOptions& options)
{
    store.setLimits(options.limits);
    store.setRecoverCutShort(options.recover);
    return store.ExtractStreamInformation(path);
}

TripPlan TripPlan::make(const std::vector<std::string>& paths, const Options& options)
{
    TripPlan plan;
    const std::vector<Candidate> chosen = onePerMoment(plan.gather(paths));
    plan.measure(chosen, options.read);
    plan.cutIntoDrives(options.gapSeconds);
    return plan;
}

std::vector<TripPlan::Candidate> TripPlan::gather(const std::vector<std::string>& paths)
{
    std::vector<Candidate> candidates;
    for (const std::string& path : paths) {
        if (isFolder(path)) {
            std::vector<RecordingName> records = RecordingScan::collect(path);
            if (records.empty())
                m_problems.push_back({path, "no recordings in " + path});
            RecordingScan::sort(records);
            for (RecordingName& record : records) {
                std::string shown = record.path();
                candidates.push_back({std::move(record), std::move(shown)});
            }
            continue;
        }
        // A file named on the command line is read whatever its name; one that is no recording
        // name has no start time and pairs with nothing.
        candidates.push_back({RecordingName(RecordingScan::cleanAbsolute(path)), path});
    }
    return candidates;
}

std::vector<TripPlan::Candidate> TripPlan::onePerMoment(const std::vector<Candidate>& candidates)
{
    struct Moment
    {
        std::optional<Candidate> front;
        std::optional<Candidate> rear;
    };
    std::vector<Moment> moments;
    std::map<std::string, std::size_t> byKey;
    for (const Candidate& candidate : candidates) {
        const RecordingName& media = candidate.media;
        const bool recordingName =
            RecordingName::hasRecordingNameLength(media.name()) && media.hasChannel();
        const std::string key = recordingName
                                    ? '\x01' + std::string(RecordingName::pairKey(media.path()))
                                    : '\x02' + media.path();
        const auto [found, added] = byKey.try_emplace(key, moments.size());
        if (added)
            moments.emplace_back();
        // As in the pair table, a later file of the same moment and channel takes the slot.
        Moment& moment = moments[found->second];
        (media.direction() == KVRMediaDirectionRear ? moment.rear : moment.front) = candidate;
    }
    std::vector<Candidate> chosen;
    chosen.reserve(moments.size());
    for (const Moment& moment : moments)
        chosen.push_back(moment.front ? *moment.front : *moment.rear);
    std::stable_sort(chosen.begin(), chosen.end(), [](const Candidate& a, const Candidate& b) {
        return a.media.compare(b.media) < 0;
    });
    return chosen;
}

void TripPlan::measure(const std::vector<Candidate>& chosen, const TelemetryReadOptions& options)
{
    KVRBlackBoxData store;
    for (const Candidate& candidate : chosen) {
        const RecordingProbe probe = RecordingProbe::probe(candidate.media.path());
        if (probe.status() == RecordingProbe::Status::CannotOpen) {
            m_problems.push_back({candidate.shownPath,
                                  "cannot open " + candidate.shownPath + ": " + probe.openError()});
            continue;
        }
        if (probe.status() == RecordingProbe::Status::NotAvi) {
            m_problems.push_back(
                {candidate.shownPath, candidate.shownPath + " is not a RIFF/AVI file"});
            continue;
        }
        std::optional<double> seconds = probe.headerSeconds();
        if (!seconds && readTelemetry(store, candidate.media.path(), options))
            seconds = RecordingProbe::telemetrySeconds(store);
        m_recordings.push_back({candidate.media, seconds.value_or(0), 0});
    }
}

void TripPlan::cutIntoDrives(double gapSeconds)
{
    std::optional<double> driveEnd; // of the drive so far; none after a recording without time
    for (std::size_t i = 0; i < m_recordings.size(); ++i) {
        Recording& recording = m_recordings[i];
        const bool timed = recording.media.hasTime();
        const double start = timed ? double(nameSeconds(recording.media.time())) : 0;
        if (!timed || !driveEnd || start - *driveEnd > gapSeconds)
            m_drives.push_back({i, 0});
        ++m_drives.back().count;
        recording.drive = int(m_drives.size());
        if (timed)
            driveEnd = std::max(driveEnd.value_or(start), start + recording.seconds);
        else
            driveEnd.reset();
    }
}

std::string TripPlan::startText(const RecordingName& media, char separator)
{
    if (!media.hasTime())
        return std::string();
    const KVRMediaTime& t = media.time();
    char text[64];
    const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02d%c%02d:%02d:%02d", t.year,
                                     t.month, t.day, separator, t.hour, t.minute, t.second);
    return std::string(text, std::size_t(length));
}

const char* TripPlan::modeWord(const RecordingName& media)
{
    if (media.division() == KVRMediaDivisionEvent)
        return "event";
    return media.division() == KVRMediaDivisionMotion ? "motion" : "always";
}

} // namespace kavro
