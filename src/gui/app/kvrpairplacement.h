#pragma once

#include <QObject>

namespace kavro {

class KVRPartnerSlave;
class VLCMediaPlayer;

// Puts the small picture's player where the large one is after a move: at the same time from the
// start of its recording, on its last frame when its recording is shorter, held on one frame
// with the large one when both play, and opened afresh where libVLC no longer seeks it.
class KVRPairPlacement : public QObject
{
    Q_OBJECT

public:
    KVRPairPlacement(VLCMediaPlayer* player1, VLCMediaPlayer* player2, KVRPartnerSlave* slave,
                     QObject* parent = nullptr);

    // A seek of both while they play holds them on one frame; told it may not, the pair is taken
    // as paused.
    void placePartnerAt(qint64 milliseconds, bool mayHold = true);
    // Pauses both players on the frame at the time and lets them go on together.
    void holdPairAt(qint64 milliseconds);
    // Both players paused on one frame, the large one's as near as libVLC tells it; with
    // onOneFrame false (the pictures being exchanged) only a partner that missed the pause is
    // paused.
    void alignPaused(bool onOneFrame);
    // Called as the partner reports its time: one opened afresh while paused is paused now that
    // it plays, at its place.
    void pauseReopenedPartner();
    void forgetPartnerPause() { m_partnerPauseAt = -1; }

    // The partner was sent to the target of the move under way; the move's end leaves it there.
    bool placedForMove() const { return m_placedForMove; }
    void forgetMove() { m_placedForMove = false; }

signals:
    // The partner's file was opened again, and its sound track with it.
    void partnerReopened();

private:
    void placePairOnOneFrame();
    void reopenPartnerAt(qint64 milliseconds, bool playing);

    VLCMediaPlayer* m_player1;
    VLCMediaPlayer* m_player2;
    KVRPartnerSlave* m_slave;
    bool m_placedForMove = false;
    // Where a partner opened afresh while paused is paused once it plays; -1 for none.
    qint64 m_partnerPauseAt = -1;
};

} // namespace kavro
