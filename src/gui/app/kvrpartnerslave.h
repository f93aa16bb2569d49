#pragma once

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

namespace kavro {

class VLCMediaPlayer;

// Keeps the small player on the large one's frame while both play. libVLC reports each player's
// time a few times a second; the two reports, carried forward to the same moment, give how far
// apart the pictures are. A partner a frame or more apart plays a little faster or slower until
// it has caught up, which nobody notices; only one far apart is sent there with a seek.
class KVRPartnerSlave : public QObject
{
    Q_OBJECT

public:
    KVRPartnerSlave(VLCMediaPlayer* leader, VLCMediaPlayer* follower, QObject* parent = nullptr);

    // Corrections wait while this says no (a seek or a swap under way).
    void setMayCorrect(std::function<bool()> mayCorrect) { m_mayCorrect = std::move(mayCorrect); }
    // Forgets what was measured and ends a correction: the players were just placed anew.
    void restart();
    // Leader's time minus follower's in milliseconds, from the last second's reports; nothing
    // until there are enough of them.
    std::optional<double> offset() const;
    bool correcting() const { return m_correctionEnd >= 0; }

    // Two players seeked while they play go on each at its own pace, a frame or two apart. This
    // pauses both on the frames at the given times and lets them go on together a moment later.
    void holdAt(qint64 leaderMs, qint64 followerMs);
    bool holding() const { return m_holding; }
    // Ends a hold and leaves both players paused.
    void cancelHold();

    // Further apart than this the partner is seeked: a catch-up by rate would take too long.
    static constexpr double SeekBeyondMs = 400;
    // A partner this far apart is corrected: two thirds of a frame at 30 frames a second.
    static constexpr double CorrectBeyondMs = 22;

private:
    struct Report
    {
        qint64 time = -1; // the player's time, milliseconds
        qint64 at = 0;    // when it came, on m_clock
    };

    void timeChanged(VLCMediaPlayer* player);
    void endCorrection();
    void correct(double offsetMs);
    double rate() const;

    VLCMediaPlayer* m_leader;
    VLCMediaPlayer* m_follower;
    std::function<bool()> m_mayCorrect;
    QElapsedTimer m_clock;
    Report m_leaderReport;
    Report m_followerReport;
    std::vector<double> m_offsets; // the last second's estimates, oldest first
    qint64 m_correctionEnd = -1;   // on m_clock; -1 while none runs
    qint64 m_quietUntil = 0;       // no estimates before this: a rate change takes a while
    bool m_holding = false;
    quint64 m_hold = 0; // counts the holds, so that an old hold's end does not end a new one
};

} // namespace kavro
