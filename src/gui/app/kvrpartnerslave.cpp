#include "kvrpartnerslave.h"

#include "applog.h"
#include "player/vlcmediaplayer.h"

#include <QTimer>

#include <algorithm>
#include <cmath>

namespace kavro {

namespace {

// The reports of one player come every quarter second or so; a second's worth of estimates
// smooths out where within its step each report fell.
constexpr std::size_t Estimates = 8;
// How much faster or slower the partner plays while it catches up.
constexpr double CatchUpRate = 0.1;
// libVLC applies a rate change only to the frames it has not yet queued, some half a second
// later; the estimates wait that long after a correction, and a little more.
constexpr qint64 RateLatencyMs = 1200;
// How long a hold lasts: long enough for the paused seeks, and past the resynchronisation after a
// seek, which the hold makes unnecessary.
constexpr int HoldMs = 350;

} // namespace

KVRPartnerSlave::KVRPartnerSlave(VLCMediaPlayer* leader, VLCMediaPlayer* follower, QObject* parent)
    : QObject(parent), m_leader(leader), m_follower(follower)
{
    m_clock.start();
    for (VLCMediaPlayer* player : {leader, follower})
        connect(player, &VLCMediaPlayer::mediaPlayerTimeChanged, this,
                &KVRPartnerSlave::timeChanged);
}

void KVRPartnerSlave::restart()
{
    endCorrection();
    m_leaderReport = {};
    m_followerReport = {};
    m_offsets.clear();
    m_quietUntil = m_clock.elapsed();
}

double KVRPartnerSlave::rate() const
{
    return std::max(0.25, double(m_leader->rate()));
}

std::optional<double> KVRPartnerSlave::offset() const
{
    if (m_offsets.size() < Estimates)
        return std::nullopt;
    std::vector<double> sorted = m_offsets;
    std::nth_element(sorted.begin(), sorted.begin() + sorted.size() / 2, sorted.end());
    return sorted[sorted.size() / 2];
}

void KVRPartnerSlave::endCorrection()
{
    if (m_correctionEnd < 0)
        return;
    m_correctionEnd = -1;
    m_follower->setRate(m_leader->rate());
    m_offsets.clear();
    m_quietUntil = m_clock.elapsed() + RateLatencyMs;
}

void KVRPartnerSlave::timeChanged(VLCMediaPlayer* player)
{
    const qint64 now = m_clock.elapsed();
    const bool bothPlay = m_leader->isPlaying() && m_follower->isPlaying() &&
                          !m_leader->media().isNull() && !m_follower->media().isNull();
    if (!bothPlay || (m_mayCorrect && !m_mayCorrect())) {
        restart();
        return;
    }
    if (m_correctionEnd >= 0) {
        if (now >= m_correctionEnd)
            endCorrection();
        return;
    }
    Report& report = player == m_leader ? m_leaderReport : m_followerReport;
    const qint64 time = player->time().intValue();
    // A report that repeats the last time says nothing about when the time moved.
    if (time == report.time)
        return;
    report = {time, now};
    if (now < m_quietUntil || m_leaderReport.time < 0 || m_followerReport.time < 0)
        return;
    const double speed = rate();
    const double leader = double(m_leaderReport.time) + double(now - m_leaderReport.at) * speed;
    const double follower =
        double(m_followerReport.time) + double(now - m_followerReport.at) * speed;
    m_offsets.push_back(leader - follower);
    if (m_offsets.size() > Estimates)
        m_offsets.erase(m_offsets.begin());
    if (const std::optional<double> apart = offset(); apart && std::abs(*apart) >= CorrectBeyondMs)
        correct(*apart);
}

void KVRPartnerSlave::correct(double offsetMs)
{
    m_offsets.clear();
    const double speed = rate();
    if (std::abs(offsetMs) >= SeekBeyondMs) {
        qCDebug(lcApp, "partner %.0f ms apart: seeking it", offsetMs);
        m_follower->setTime(m_leader->time());
        m_quietUntil = m_clock.elapsed() + RateLatencyMs;
        return;
    }
    // Ahead of the partner (a positive offset): the partner plays faster for a while.
    const double factor = offsetMs > 0 ? 1 + CatchUpRate : 1 - CatchUpRate;
    const qint64 duration = qint64(std::abs(offsetMs) / (CatchUpRate * speed));
    qCDebug(lcApp, "partner %.0f ms apart: %.2fx for %lld ms", offsetMs, factor, duration);
    m_follower->setRate(float(speed * factor));
    m_correctionEnd = m_clock.elapsed() + duration;
    // The reports may pause (a short correction ends between two of them).
    QTimer::singleShot(int(duration) + 1, this, [this] {
        if (m_correctionEnd >= 0 && m_clock.elapsed() >= m_correctionEnd)
            endCorrection();
    });
}

} // namespace kavro

namespace kavro {

void KVRPartnerSlave::holdAt(qint64 leaderMs, qint64 followerMs)
{
    m_leader->pause();
    m_follower->pause();
    m_leader->setTime(VLCTime(leaderMs));
    m_follower->setTime(VLCTime(followerMs));
    m_holding = true;
    const quint64 hold = ++m_hold;
    QTimer::singleShot(HoldMs, this, [this, hold] {
        if (hold != m_hold || !m_holding)
            return;
        m_holding = false;
        m_leader->play();
        m_follower->play();
        restart();
    });
}

void KVRPartnerSlave::cancelHold()
{
    m_holding = false;
}

} // namespace kavro
