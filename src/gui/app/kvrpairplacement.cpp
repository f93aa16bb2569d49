#include "kvrpairplacement.h"

#include "kvrpartnerslave.h"
#include "kvrplaybackengine.h"
#include "player/vlcmediaplayer.h"

#include <algorithm>

namespace kavro {

namespace {

// How far before its end a shorter partner is sent to play out its last frames.
constexpr qint64 PartnerEndMarginMs = 100;

using Engine = KVRPlaybackEngine;

} // namespace

KVRPairPlacement::KVRPairPlacement(VLCMediaPlayer* player1, VLCMediaPlayer* player2,
                                   KVRPartnerSlave* slave, QObject* parent)
    : QObject(parent), m_player1(player1), m_player2(player2), m_slave(slave)
{
}

void KVRPairPlacement::placePartnerAt(qint64 milliseconds, bool mayHold)
{
    if (!Engine::hasMedia(m_player2))
        return;
    const bool playing = mayHold && Engine::playsOn(m_player1);
    m_placedForMove = true;
    const qint64 length = m_player2->lengthMilliseconds();
    const bool beyondItsEnd = length > 0 && milliseconds >= length;
    const qint64 target =
        std::max<qint64>(0, beyondItsEnd ? length - PartnerEndMarginMs : milliseconds);
    if (m_player2->position() >= Engine::EndPosition) {
        // libVLC no longer seeks a player that has reached the end of its file, whether it
        // rests there or still says it plays: open the file afresh.
        if (!beyondItsEnd)
            reopenPartnerAt(target, playing);
        return;
    }
    if (playing && !beyondItsEnd && !m_slave->holding() && m_player2->isPlaying()) {
        holdPairAt(target);
        return;
    }
    m_player2->setTime(VLCTime(target));
    // Past its end the partner plays out its last frames and rests on the last one; otherwise it
    // plays while the large one plays. Just paused, it may still say it plays: it is played.
    if ((beyondItsEnd || playing) && !Engine::playsOn(m_player2))
        m_player2->play();
}

void KVRPairPlacement::holdPairAt(qint64 milliseconds)
{
    const qint64 length1 = m_player1->lengthMilliseconds();
    m_slave->holdAt(length1 > 0 ? std::min(milliseconds, length1) : milliseconds, milliseconds);
}

void KVRPairPlacement::alignPaused(bool onOneFrame)
{
    // A partner caught between states (a correction's seek) may have missed the pause; one
    // playing out its last frames past its end goes on to rest on the last.
    const qint64 length2 = m_player2->lengthMilliseconds();
    if (!m_player1->isPlaying() && m_player2->isPlaying() && Engine::hasMedia(m_player2) &&
        (length2 <= 0 || m_player1->time().intValue() < length2 - PartnerEndMarginMs))
        m_player2->pause();
    if (onOneFrame)
        placePairOnOneFrame();
}

void KVRPairPlacement::placePairOnOneFrame()
{
    if (!Engine::hasMedia(m_player1) || !Engine::hasMedia(m_player2) ||
        m_player1->position() >= Engine::EndPosition)
        return;
    // Both to the same time land both on the first frame at or after it, the same frame of a
    // pair whose files start at the same instant.
    const qint64 time = m_player1->time().intValue();
    m_player1->setTime(VLCTime(time));
    // Paused by now, whatever libVLC still says: no hold.
    placePartnerAt(time, false);
}

void KVRPairPlacement::reopenPartnerAt(qint64 milliseconds, bool playing)
{
    m_player2->setMedia(VLCMedia::mediaWithPath(m_player2->media().path(), milliseconds));
    m_player2->play();
    // libVLC takes a pause only once the file plays; a paused window pauses it then, there.
    m_partnerPauseAt = playing ? -1 : milliseconds;
    emit partnerReopened();
}

void KVRPairPlacement::pauseReopenedPartner()
{
    if (m_partnerPauseAt < 0 || !m_player2->isPlaying())
        return;
    m_player2->pause();
    m_player2->setTime(VLCTime(m_partnerPauseAt));
    m_partnerPauseAt = -1;
}

} // namespace kavro
