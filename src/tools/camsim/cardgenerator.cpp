#include "cardgenerator.h"

#include "accessunitreader.h"
#include "audiosynth.h"
#include "camsimlog.h"
#include "cardfiles.h"
#include "fatimage.h"
#include "recordingwriter.h"
#include "videoencoder.h"

#include "common/outputfile.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImageWriter>
#include <QTemporaryDir>

#include <cmath>
#include <fcntl.h>
#include <limits>
#include <numbers>
#include <sys/stat.h>

namespace kavro::camsim {

namespace {

constexpr char FrontStream[] = "front.h264";
constexpr char RearStream[] = "rear.h264";
constexpr double FollowerApproach = 2.5; // m/s, the speed of the car behind at the bump
constexpr double PasserBySpeed = 11;     // m/s, about 40 km/h

bool fail(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

// The camera writes local times; a card read on this computer shows them as its local time.
bool setModified(const QString& path, const QDateTime& cameraTime)
{
    const QDateTime local(cameraTime.date(), cameraTime.time(), Qt::LocalTime);
    const struct timespec times[2] = {{local.toSecsSinceEpoch(), 0}, {local.toSecsSinceEpoch(), 0}};
    return ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0;
}

bool isEmptyOrMissing(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return true;
    return info.isDir() &&
           QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty();
}

} // namespace

CardGenerator::CardGenerator(const CardOptions& options) : m_plan(options) {}

FrameScene CardGenerator::sceneAt(std::size_t index, int frame) const
{
    const RecordingPlan& recording = m_plan.recordings()[index];
    const DrivePlan& drive = m_plan.driveOf(recording);
    const int fps = m_plan.options().fps;
    const double time = recording.start + static_cast<double>(frame) / fps;
    const DriveSample state = drive.track.at(time);
    const int second = frame / fps;

    FrameScene scene;
    scene.frame = frame;
    scene.cameraTime = m_plan.cameraStart(recording).addSecs(second);
    scene.distance = state.distance;
    // The overlay shows the receiver's speed of the current second, as the GPS record holds it.
    const GpsFix fix = m_plan.telemetry(recording).fixAt(recording.start + second);
    scene.speedKmh = TelemetrySynth::speedKmh(fix);
    scene.curvature = state.curvature;
    scene.heading = state.heading;
    scene.plate = QLatin1String(CardPlan::PlateNumber);
    if (drive.impact) {
        // The car behind keeps its distance, rolls up to ours at the red light and bumps into it,
        // then keeps back again.
        const double t = time - *drive.impact;
        scene.follower = t < 0 ? std::min(60.0, -t * FollowerApproach)
                               : std::min(2.0 + 1.2 * state.speed, t * 1.5);
        if (t >= 0 && t < 1)
            scene.jolt = std::exp(-t / 0.15) * std::cos(2 * std::numbers::pi * 4.5 * t);
    }
    // The traffic light nearest the car: red until the driver moves off.
    double nearest = std::numeric_limits<double>::max();
    for (const RouteStop& stop : drive.track.stops()) {
        if (std::abs(stop.position - state.distance) < nearest) {
            nearest = std::abs(stop.position - state.distance);
            scene.signalAt = stop.position;
            scene.signalRed = time < stop.departure - 1.5;
        }
    }
    if (recording.passerBy) {
        // Drawn from far ahead until it is well behind.
        const double ahead = (*recording.passerBy - time) * PasserBySpeed;
        if (ahead < 90 && ahead > -20)
            scene.oncoming = ahead;
    }
    return scene;
}

bool CardGenerator::generate(QString* error)
{
    const CardOptions& options = m_plan.options();
    if (!isEmptyOrMissing(options.outDir))
        return fail(error, QStringLiteral("%1 is not an empty folder").arg(options.outDir));
    if (!QDir().mkpath(options.outDir))
        return fail(error, QStringLiteral("cannot make %1").arg(options.outDir));
    QTemporaryDir work;
    if (!work.isValid())
        return fail(error,
                    QStringLiteral("cannot make a working folder: %1").arg(work.errorString()));

    m_summary = {};
    if (!encodeVideo(work.path(), error) || !writeRecordings(work.path(), error) ||
        !writeStrays(error) || !CardFiles::writeSettings(options.outDir, error) ||
        !CardFiles::writeClock(options.outDir, m_plan, error) ||
        !CardFiles::writeDriveRecords(options.outDir, m_plan, error))
        return false;
    const QDateTime lastDrive = m_plan.cameraStart(m_plan.recordings().back());
    if (!finishFile(QLatin1String(CardFiles::SettingsFile), lastDrive, error) ||
        !finishFile(QLatin1String(CardFiles::ClockFile), m_plan.clockSetting(), error) ||
        !finishFile(QLatin1String(drv::CardFilePath), lastDrive, error))
        return false;
    m_summary.otherFiles += 3;
    // Folders carry the time of the card's last write, so that an image of the card does not
    // depend on when it was made.
    QDirIterator folders(options.outDir, QDir::Dirs | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (folders.hasNext())
        setModified(folders.next(), lastDrive);

    if (!options.imagePath.isEmpty()) {
        const auto volumeId = static_cast<std::uint32_t>(options.seed * 0x9e3779b1u + 0x4b415652u);
        if (!FatImage::create(options.imagePath, options.outDir, volumeId,
                              m_plan.clockSetting().addSecs(-3600), error))
            return false;
    }
    return true;
}

bool CardGenerator::finishFile(const QString& relativePath, const QDateTime& cameraTime,
                               QString* error)
{
    const QString path = QDir(m_plan.options().outDir).filePath(relativePath);
    if (!setModified(path, cameraTime))
        return fail(error, QStringLiteral("cannot date %1").arg(path));
    m_summary.bytes += QFileInfo(path).size();
    return true;
}

int CardGenerator::frameCount(const RecordingPlan& recording) const
{
    return static_cast<int>(std::lround(recording.duration * m_plan.options().fps));
}

bool CardGenerator::encodeVideo(const QString& workDir, QString* error)
{
    const CardOptions& options = m_plan.options();
    VideoEncoder front({options.frontSize, options.fps, options.frontQuality});
    VideoEncoder rear({options.rearSize, options.fps, options.rearQuality});
    if (!front.start(QDir(workDir).filePath(FrontStream)))
        return fail(error, front.errorString());
    if (!rear.start(QDir(workDir).filePath(RearStream)))
        return fail(error, rear.errorString());

    // Both cameras at once: ffmpeg encodes one while the next frame of the other is drawn.
    std::unique_ptr<FrameRenderer> frontView;
    std::unique_ptr<FrameRenderer> rearView;
    QImage frontImage(options.frontSize, QImage::Format_RGB32);
    QImage rearImage(options.rearSize, QImage::Format_RGB32);
    int viewsOfDrive = -1;
    for (std::size_t index = 0; index < m_plan.recordings().size(); ++index) {
        const RecordingPlan& recording = m_plan.recordings()[index];
        if (recording.drive != viewsOfDrive) {
            const std::uint64_t scenery = m_plan.driveOf(recording).sceneSeed;
            frontView = std::make_unique<FrameRenderer>(options.frontSize, false, scenery);
            rearView = std::make_unique<FrameRenderer>(options.rearSize, true, scenery);
            viewsOfDrive = recording.drive;
        }
        qCInfo(lcCamsim, "drawing %s", qUtf8Printable(m_plan.baseName(recording, false)));
        for (int frame = 0; frame < frameCount(recording); ++frame) {
            const FrameScene scene = sceneAt(index, frame);
            frontView->render(scene, frontImage);
            if (!front.addFrame(frontImage))
                return fail(error, front.errorString());
            if (!recording.hasRear)
                continue;
            rearView->render(scene, rearImage);
            if (!rear.addFrame(rearImage))
                return fail(error, rear.errorString());
        }
    }
    if (!front.finish())
        return fail(error, front.errorString());
    if (!rear.finish())
        return fail(error, rear.errorString());
    return true;
}

bool CardGenerator::writeRecordings(const QString& workDir, QString* error)
{
    const CardOptions& options = m_plan.options();
    QFile frontFile(QDir(workDir).filePath(FrontStream));
    QFile rearFile(QDir(workDir).filePath(RearStream));
    if (!frontFile.open(QIODevice::ReadOnly) || !rearFile.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("cannot read the encoded video"));
    AccessUnitReader frontReader(frontFile);
    AccessUnitReader rearReader(rearFile);

    for (const RecordingPlan& recording : m_plan.recordings()) {
        const DrivePlan& drive = m_plan.driveOf(recording);
        const TelemetryPlan telemetry = m_plan.telemetry(recording).recording(
            recording.start, recording.duration, recording.impact);
        const SoundEvents sounds{recording.impact, recording.passerBy};
        for (const bool rear : {false, true}) {
            if (rear && !recording.hasRear)
                continue;
            RecordingStreams streams;
            streams.frameSize = rear ? options.rearSize : options.frontSize;
            streams.fps = options.fps;
            AccessUnitReader& reader = rear ? rearReader : frontReader;
            streams.frames.resize(static_cast<std::size_t>(frameCount(recording)));
            for (EncodedFrame& frame : streams.frames) {
                if (!reader.next(frame))
                    return fail(error,
                                QStringLiteral("ffmpeg returned fewer frames than it was given"));
            }
            if (!streams.frames.empty() && !streams.frames.front().keyFrame)
                return fail(error, QStringLiteral("a recording does not start on a key frame"));
            if (rear ? recording.rearAudio : recording.frontAudio)
                streams.audio = AudioSynth(drive.track, drive.clock.seed, rear)
                                    .pcm(recording.start, recording.duration, sounds);
            streams.sampleRate = AudioSynth::SampleRate;
            streams.telemetry = telemetry;
            const QString relative = m_plan.relativePath(recording, rear);
            const QString path = QDir(options.outDir).filePath(relative);
            QString reason;
            if (!QDir().mkpath(QFileInfo(path).path()))
                return fail(error, QStringLiteral("cannot make the folder of %1").arg(path));
            if (!RecordingWriter::write(path, streams, &reason))
                return fail(error, QStringLiteral("cannot write %1: %2").arg(path, reason));
            const QDateTime end =
                m_plan.cameraStart(recording).addSecs(static_cast<qint64>(recording.duration));
            if (!finishFile(relative, end, error))
                return false;
            ++m_summary.recordingFiles;
        }
    }
    EncodedFrame extra;
    if (frontReader.next(extra) || rearReader.next(extra))
        return fail(error, QStringLiteral("ffmpeg returned more frames than it was given"));
    return true;
}

bool CardGenerator::writeStrays(QString* error)
{
    const QDir card(m_plan.options().outDir);
    for (const StrayFile& stray : m_plan.strays()) {
        const RecordingPlan& source = m_plan.recordings()[stray.recording];
        const QString path = card.filePath(stray.path);
        if (stray.kind == StrayFile::Kind::CopyOfRecording) {
            if (!QFile::copy(card.filePath(m_plan.relativePath(source, false)), path))
                return fail(error, QStringLiteral("cannot write %1").arg(path));
        } else {
            const DrivePlan& drive = m_plan.driveOf(source);
            FrameRenderer renderer(m_plan.options().frontSize, false, drive.sceneSeed);
            QImage still(renderer.size(), QImage::Format_RGB32);
            renderer.render(sceneAt(stray.recording, 0), still);
            QByteArray jpeg;
            QBuffer buffer(&jpeg);
            buffer.open(QIODevice::WriteOnly);
            QImageWriter writer(&buffer, "jpg");
            writer.setQuality(85);
            if (!writer.write(still) || !writeFile(path, jpeg, error))
                return fail(error, QStringLiteral("cannot write %1").arg(path));
        }
        if (!finishFile(stray.path, m_plan.cameraStart(source), error))
            return false;
        ++m_summary.otherFiles;
    }
    return true;
}

} // namespace kavro::camsim
