#pragma once

#include "cardoptions.h"
#include "drivetrack.h"
#include "telemetrysynth.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace kavro::camsim {

class Random;

// The camera's recording modes, numbered as the recording list numbers them.
enum class RecordingMode
{
    Always = 0,
    Motion = 1,
    Event = 2,
};

struct DrivePlan
{
    RouteSettings route;
    DriveTrack track;
    QDateTime
        cameraStart; // the camera's clock at drive time 0 (local time, as the camera shows it)
    DriveClock clock;
    std::uint64_t sceneSeed = 0;
    std::optional<double> impact; // drive time of the bump at the red light
};

struct RecordingPlan
{
    int drive = 0;
    RecordingMode mode = RecordingMode::Always;
    double start = 0;    // drive time, whole seconds
    double duration = 0; // whole seconds
    bool hasRear = true;
    bool frontAudio = true;
    bool rearAudio = false;
    QString folder;                 // relative to the card's root
    std::optional<double> impact;   // drive time, when the recording holds the bump
    std::optional<double> passerBy; // drive time at which a passing car is nearest
};

// A file on the card that the recording list must not admit.
struct StrayFile
{
    enum class Kind
    {
        CopyOfRecording, // the bytes of a real recording under a name the list refuses
        Snapshot,        // a JPEG still of a recording's first frame
    };
    QString path; // relative to the card's root
    Kind kind = Kind::CopyOfRecording;
    std::size_t recording = 0; // the recording it comes from
};

// Everything the simulated camera did, decided from the options and the seed before a single
// byte is written: the drives, the recordings cut from them, and the odd files beside them.
// Tests make the same plan again to know what the card must hold.
class CardPlan
{
public:
    static constexpr int CameraUtcOffset = 9 * 3600; // the default time zone of config.bin, +09:00
    static constexpr char PlateNumber[] = "34KV5678";

    explicit CardPlan(const CardOptions& options);

    const CardOptions& options() const { return m_options; }
    const std::vector<DrivePlan>& drives() const { return m_drives; }
    const std::vector<RecordingPlan>& recordings() const { return m_recordings; }
    const std::vector<StrayFile>& strays() const { return m_strays; }
    // When the camera's clock was set from timeset.cfg: before the first drive.
    QDateTime clockSetting() const;

    const DrivePlan& driveOf(const RecordingPlan& recording) const;
    QDateTime cameraStart(const RecordingPlan& recording) const;
    // "alwa_20250516_081236_F" and the like, without extension.
    QString baseName(const RecordingPlan& recording, bool rear) const;
    // Path relative to the card's root.
    QString relativePath(const RecordingPlan& recording, bool rear) const;
    TelemetrySynth telemetry(const RecordingPlan& recording) const;

private:
    void planDrives(Random& random);
    void planRecordings(Random& random);
    void planStrays();
    void addDrive(const RouteSettings& route, const QDateTime& start, std::uint32_t bootMs,
                  double geoidSeparation);
    void cutDrive(int drive, double from, double to, const RecordingPlan& pattern);

    CardOptions m_options;
    std::vector<DrivePlan> m_drives;
    std::vector<RecordingPlan> m_recordings;
    std::vector<StrayFile> m_strays;
};

} // namespace kavro::camsim
