#include "kvrplaynexttimer.h"

#include "kvrplaybackengine.h"
#include "player/vlcmediaplayer.h"

namespace kavro {

namespace {

constexpr int IntervalMs = 1000;

// A player that rests on its last frame; a backend that ends instead of pausing counts too.
bool restsAtEnd(const VLCMediaPlayer* player)
{
    const VLCMediaPlayerState state = player->state();
    return (state == VLCMediaPlayerStatePaused || state == VLCMediaPlayerStateEnded) &&
           player->position() >= KVRPlaybackEngine::EndPosition;
}

} // namespace

KVRPlayNextTimer::KVRPlayNextTimer(const VLCMediaPlayer* player, QObject* parent)
    : QObject(parent), m_player(player)
{
    m_timer.setInterval(IntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &KVRPlayNextTimer::look);
}

// A check of an empty path never reports a loss.
void KVRPlayNextTimer::watchFiles(const QString& large, const QString& small)
{
    m_file = RecordingFileCheck(large);
    m_partnerFile = RecordingFileCheck(small);
}

void KVRPlayNextTimer::watchPartner(const QString& small)
{
    m_partnerFile = RecordingFileCheck(small);
}

void KVRPlayNextTimer::start()
{
    ++m_round;
    m_preparing = false;
    m_timer.start();
}

void KVRPlayNextTimer::stop()
{
    ++m_round;
    m_timer.stop();
}

void KVRPlayNextTimer::look()
{
    if (m_file.lost() || m_player->state() == VLCMediaPlayerStateError) {
        emit recordingLost();
        return;
    }
    if (m_partnerFile.lost())
        emit partnerLost();
    if (m_preparing || !restsAtEnd(m_player))
        return;
    m_preparing = true;
    const quint64 round = m_round;
    // Still resting a second later: a player just told to play again from a pause may look like
    // one resting at its end until libVLC has caught up.
    QTimer::singleShot(IntervalMs, this, [this, round] {
        if (round != m_round)
            return;
        if (restsAtEnd(m_player))
            emit endReached();
        else
            m_preparing = false;
    });
}

} // namespace kavro
