#include "tripplan.h"

#include "qtbridge/qtbridge.h"
#include "recording/kvrmedialist.h"
#include "recordingprobe.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <optional>

namespace kavro {

namespace {

// Seconds of the name's time on a plain count of days. Only differences are used, so no time
// zone enters; fields that the camera's range test lets through past a calendar (24 o'clock,
// second 60, 31 February) carry over as a clock would.
std::int64_t nameSeconds(const KVRMediaTime& time)
{
    const std::int64_t days = QDate(time.year, time.month, 1).toJulianDay() + time.day - 1;
    return days * 86400 + time.hour * 3600 + time.minute * 60 + time.second;
}

} // namespace

bool readTelemetry(KVRBlackBoxData& store, const std::string& path,
                   const TelemetryReadOptions& options)
{
    store.setLimits(options.limits);
    store.setRecoverCutShort(options.recover);
    return store.ExtractStreamInformation(path);
}

TripPlan TripPlan::make(const QStringList& paths, const Options& options)
{
    TripPlan plan;
    const std::vector<Candidate> chosen = onePerMoment(plan.gather(paths));
    plan.measure(chosen, options.read);
    plan.cutIntoDrives(options.gapSeconds);
    return plan;
}

std::vector<TripPlan::Candidate> TripPlan::gather(const QStringList& paths)
{
    std::vector<Candidate> candidates;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        if (info.isDir()) {
            KVRMediaList list;
            list.setDirectoryPathAndWait(QDir::cleanPath(info.absoluteFilePath()));
            if (list.count() == 0)
                m_problems.push_back({path, QStringLiteral("no recordings in %1").arg(path)});
            for (const KVRMediaPtr& media : list.medias())
                candidates.push_back({media, media->path()});
            continue;
        }
        // A file named on the command line is read whatever its name; one that is no recording
        // name has no start time and pairs with nothing.
        const QString absolute = info.absoluteFilePath();
        KVRMediaPtr media = KVRMediaList::createMediaByPath(absolute);
        candidates.push_back({media ? media : KVRMedia::mediaWithPath(absolute), path});
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
    QHash<QString, std::size_t> byKey;
    for (const Candidate& candidate : candidates) {
        const KVRMedia& media = *candidate.media;
        const bool recordingName = KVRMedia::hasRecordingNameLength(media.mediaNameView()) &&
                                   (media.isFrontMedia() || media.isRearMedia());
        const QString key = recordingName ? u'\x01' + KVRMediaList::mediaPairKey(media.path())
                                          : u'\x02' + media.path();
        auto found = byKey.constFind(key);
        const std::size_t slot = found != byKey.constEnd() ? *found : moments.size();
        if (slot == moments.size()) {
            moments.emplace_back();
            byKey.insert(key, slot);
        }
        // As in the pair table, a later file of the same moment and channel takes the slot.
        (media.isRearMedia() ? moments[slot].rear : moments[slot].front) = candidate;
    }
    std::vector<Candidate> chosen;
    chosen.reserve(moments.size());
    for (const Moment& moment : moments)
        chosen.push_back(moment.front ? *moment.front : *moment.rear);
    std::stable_sort(chosen.begin(), chosen.end(), [](const Candidate& a, const Candidate& b) {
        return a.media->compareDate(*b.media) < 0;
    });
    return chosen;
}

void TripPlan::measure(const std::vector<Candidate>& chosen, const TelemetryReadOptions& options)
{
    KVRBlackBoxData store;
    for (const Candidate& candidate : chosen) {
        const RecordingProbe probe = RecordingProbe::probe(nativePath(candidate.media->path()));
        if (probe.status() == RecordingProbe::Status::CannotOpen) {
            m_problems.push_back(
                {candidate.shownPath, QStringLiteral("cannot open %1: %2")
                                          .arg(candidate.shownPath, pathText(probe.openError()))});
            continue;
        }
        if (probe.status() == RecordingProbe::Status::NotAvi) {
            m_problems.push_back(
                {candidate.shownPath,
                 QStringLiteral("%1 is not a RIFF/AVI file").arg(candidate.shownPath)});
            continue;
        }
        std::optional<double> seconds = probe.headerSeconds();
        if (!seconds && readTelemetry(store, nativePath(candidate.media->path()), options))
            seconds = RecordingProbe::telemetrySeconds(store);
        m_recordings.push_back({candidate.media, seconds.value_or(0), 0});
    }
}

void TripPlan::cutIntoDrives(double gapSeconds)
{
    std::optional<double> driveEnd; // of the drive so far; none after a recording without time
    for (std::size_t i = 0; i < m_recordings.size(); ++i) {
        Recording& recording = m_recordings[i];
        const bool timed = recording.media->hasTime();
        const double start = timed ? double(nameSeconds(recording.media->time())) : 0;
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

QString TripPlan::startText(const KVRMedia& media, char separator)
{
    if (!media.hasTime())
        return QString();
    return QString::asprintf("%04d-%02d-%02d%c%02d:%02d:%02d", media.year(), media.month(),
                             media.day(), separator, media.hour(), media.minute(), media.second());
}

const char* TripPlan::modeWord(const KVRMedia& media)
{
    if (media.isEventMedia())
        return "event";
    return media.isMotionMedia() ? "motion" : "always";
}

} // namespace kavro
