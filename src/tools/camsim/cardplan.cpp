#include "cardplan.h"

#include "random.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kavro::camsim {

namespace {

const char* prefixOf(RecordingMode mode)
{
    switch (mode) {
    case RecordingMode::Motion:
        return "motion_";
    case RecordingMode::Event:
        return "event_";
    case RecordingMode::Always:
        break;
    }
    return "alwa_";
}

QString folderOf(RecordingMode mode)
{
    switch (mode) {
    case RecordingMode::Motion:
        return QStringLiteral("DCIM/Motion");
    case RecordingMode::Event:
        return QStringLiteral("DCIM/Event");
    case RecordingMode::Always:
        break;
    }
    return QStringLiteral("DCIM/Always");
}

RecordingPlan pattern(RecordingMode mode, bool frontAudio, bool rearAudio)
{
    RecordingPlan plan;
    plan.mode = mode;
    plan.folder = folderOf(mode);
    plan.frontAudio = frontAudio;
    plan.rearAudio = rearAudio;
    return plan;
}

// A time of day that the camera's clock reads as local time; kept in UTC so that no time zone
// of the computer running the simulator shifts it.
QDateTime cameraTime(QDate date, int hour, int minute, int second)
{
    return QDateTime(date, QTime(hour, minute, second), Qt::UTC);
}

} // namespace

CardPlan::CardPlan(const CardOptions& options) : m_options(options)
{
    Random random(options.seed);
    planDrives(random);
    planRecordings(random);
    planStrays();
}

void CardPlan::planDrives(Random& random)
{
    const int full = std::max(2, m_options.secondsPerRecording);
    const int half = std::max(2, (full + 1) / 2);
    const double total = std::max(0.0, m_options.minutes * 60);
    // What is left after the event, the two motion recordings and drive C goes to the always
    // recordings of drives A and B.
    const double always = std::max(3.0 * full, total - 4 * half);
    const double alwaysA = std::max(2.0 * full, std::round(always * 0.6));

    struct Outline
    {
        double latitude, longitude, cruise, duration, geoidSeparation;
        QDate day;
        int hour;
    };
    const Outline outlines[] = {
        // A: a weekday morning in town, with a bump from behind at a red light.
        {37.3905, 127.0510, 55, alwaysA + half, 18.9, QDate(2025, 5, 16), 8},
        // B: the next afternoon, out of town, then parked with the camera watching.
        {37.4702, 127.1189, 72, std::max(1.0 * full, always - alwaysA), 18.9, QDate(2025, 5, 17),
         14},
        // C: a short one a week later, south of the equator and west of Greenwich.
        {-34.5921, -58.4312, 45, half + 1.0, 14.2, QDate(2025, 5, 24), 18},
    };
    for (const Outline& outline : outlines) {
        RouteSettings route;
        route.originLatitude = outline.latitude + random.uniform(-0.02, 0.02);
        route.originLongitude = outline.longitude + random.uniform(-0.02, 0.02);
        route.initialHeading = random.uniform(0, 360);
        route.duration = outline.duration;
        route.cruiseSpeed = outline.cruise;
        if (m_drives.empty()) {
            route.lightStopAt = 0.55;
            route.lightStopDwell = std::clamp(half * 0.8, 6.0, 22.0);
        }
        // One draw a statement: the order of a call's arguments is the compiler's choice.
        const int minute = random.integer(5, 50);
        const int second = random.integer(0, 59);
        const auto bootMs = static_cast<std::uint32_t>(random.integer(5200, 9800));
        addDrive(route, cameraTime(outline.day, outline.hour, minute, second), bootMs,
                 outline.geoidSeparation);
    }
}

void CardPlan::planRecordings(Random& random)
{
    const int full = std::max(2, m_options.secondsPerRecording);
    const int half = std::max(2, (full + 1) / 2);
    const RecordingPlan alwaysFront = pattern(RecordingMode::Always, true, false);

    const DrivePlan& driveA = m_drives[0];
    const double endA = std::floor(driveA.track.duration());
    double afterEvent = 0;
    if (driveA.impact) {
        // The bump in the middle of the event recording, never on its edge.
        const double eventStart = std::clamp(std::floor(*driveA.impact + 0.5 - half / 2.0), 0.0,
                                             std::max(0.0, endA - half));
        cutDrive(0, 0, eventStart, alwaysFront);
        RecordingPlan event = pattern(RecordingMode::Event, true, false);
        event.start = eventStart;
        event.duration = std::min<double>(half, endA - eventStart);
        event.impact = driveA.impact;
        m_recordings.push_back(event);
        afterEvent = eventStart + event.duration;
    }
    cutDrive(0, afterEvent, endA, alwaysFront);

    const std::size_t firstOfB = m_recordings.size();
    const double endB = std::floor(m_drives[1].track.duration());
    cutDrive(1, 0, endB, alwaysFront);
    // Someone switched the front microphone off and the rear one on for the first stretch.
    if (m_recordings.size() > firstOfB) {
        m_recordings[firstOfB].frontAudio = false;
        m_recordings[firstOfB].rearAudio = true;
    }
    // Parked: motion recordings without sound; the second one only from the front camera.
    double parkedAt = endB + random.integer(1200, 1800);
    for (int motion = 0; motion < 2; ++motion) {
        RecordingPlan watch = pattern(RecordingMode::Motion, false, false);
        watch.drive = 1;
        watch.start = parkedAt;
        watch.duration = half;
        watch.passerBy = parkedAt + half / 2.0;
        watch.hasRear = motion == 0;
        m_recordings.push_back(watch);
        parkedAt += half + random.integer(1500, 2400);
    }

    cutDrive(2, 0, std::floor(m_drives[2].track.duration()), alwaysFront);
}

void CardPlan::planStrays()
{
    // Files the list must leave out: a wrong channel letter and an impossible month, both with
    // the bytes of a real recording, and a still picture of the event.
    const RecordingPlan& first = m_recordings.front();
    QString badSuffix = baseName(first, false);
    badSuffix.replace(badSuffix.size() - 1, 1, QLatin1Char('X'));
    QString badMonth = baseName(first, false);
    const int monthAt = static_cast<int>(std::strlen(prefixOf(first.mode))) + 4;
    badMonth.replace(monthAt, 2, QStringLiteral("13"));
    m_strays.push_back({first.folder + QLatin1Char('/') + badSuffix + QStringLiteral(".avi"),
                        StrayFile::Kind::CopyOfRecording, 0});
    m_strays.push_back({first.folder + QLatin1Char('/') + badMonth + QStringLiteral(".avi"),
                        StrayFile::Kind::CopyOfRecording, 0});
    const auto event =
        std::find_if(m_recordings.begin(), m_recordings.end(),
                     [](const RecordingPlan& r) { return r.mode == RecordingMode::Event; });
    const std::size_t stillOf =
        event == m_recordings.end() ? 0 : static_cast<std::size_t>(event - m_recordings.begin());
    m_strays.push_back({relativePath(m_recordings[stillOf], false)
                            .replace(QStringLiteral(".avi"), QStringLiteral(".jpg")),
                        StrayFile::Kind::Snapshot, stillOf});
}

void CardPlan::addDrive(const RouteSettings& route, const QDateTime& start, std::uint32_t bootMs,
                        double geoidSeparation)
{
    Random random = Random(m_options.seed).fork(0x445249ULL + m_drives.size());
    DrivePlan drive;
    drive.route = route;
    drive.track = DriveTrack::simulate(route, random);
    drive.cameraStart = start;
    drive.clock.utcStart = start.addSecs(-CameraUtcOffset);
    drive.clock.bootMs = bootMs;
    drive.clock.seed = random.next();
    drive.clock.geoidSeparation = geoidSeparation;
    drive.sceneSeed = random.next();
    if (const auto& light = drive.track.lightStop())
        drive.impact = light->arrival + std::min(6.0, (light->departure - light->arrival) / 3);
    m_drives.push_back(std::move(drive));
}

void CardPlan::cutDrive(int drive, double from, double to, const RecordingPlan& pattern)
{
    const double full = std::max(2, m_options.secondsPerRecording);
    while (to - from >= 1) {
        RecordingPlan recording = pattern;
        recording.drive = drive;
        recording.start = from;
        // A short tail goes with the recording before it.
        recording.duration = to - from - full < std::max(2.0, full / 4) ? to - from : full;
        m_recordings.push_back(recording);
        from += recording.duration;
    }
}

QDateTime CardPlan::clockSetting() const
{
    const QDateTime start = m_drives.front().cameraStart.addSecs(-41 * 60);
    return QDateTime(start.date(), QTime(start.time().hour(), start.time().minute()), Qt::UTC);
}

const DrivePlan& CardPlan::driveOf(const RecordingPlan& recording) const
{
    return m_drives[static_cast<std::size_t>(recording.drive)];
}

QDateTime CardPlan::cameraStart(const RecordingPlan& recording) const
{
    return driveOf(recording).cameraStart.addSecs(
        static_cast<qint64>(std::llround(recording.start)));
}

QString CardPlan::baseName(const RecordingPlan& recording, bool rear) const
{
    return QLatin1String(prefixOf(recording.mode)) +
           cameraStart(recording).toString(QStringLiteral("yyyyMMdd_HHmmss")) +
           (rear ? QStringLiteral("_R") : QStringLiteral("_F"));
}

QString CardPlan::relativePath(const RecordingPlan& recording, bool rear) const
{
    return recording.folder + QLatin1Char('/') + baseName(recording, rear) + QStringLiteral(".avi");
}

TelemetrySynth CardPlan::telemetry(const RecordingPlan& recording) const
{
    const DrivePlan& drive = driveOf(recording);
    return TelemetrySynth(drive.track, drive.clock);
}

} // namespace kavro::camsim
