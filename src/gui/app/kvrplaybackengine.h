#pragma once

#include "player/vlcmedia.h"
#include "telemetry/kvrblackboxdata.h"

#include <QFutureWatcher>
#include <QObject>

#include <memory>

namespace kavro {

class KVRLoadingController;
class KVRPairPlacement;
class KVRPartnerSlave;
class KVRMediaListTableModel;
class KVRPlayInfo;
class KVRPlaybackControls;
class KVRPlayNextTimer;
class KVRRenderSizeFollower;
class KVRWindowLayout;
class VLCMediaPlayer;
class VLCVideoView;
struct KVRMainWindowUI;

// Plays one row of the recording list in two players at once: the row's file large in player1,
// its front/rear partner small in player2. Reads the telemetry of the pair's front file before
// both start, recognises the start and the end of playback, keeps player2 in step after seeks,
// moves on to the next row at the end, exchanges the two pictures on request and picks the
// audible recording.
class KVRPlaybackEngine : public QObject
{
    Q_OBJECT

public:
    // The end of a recording: a player resting on its last frames.
    static constexpr double EndPosition = 0.998;

    struct Players
    {
        VLCMediaPlayer* player1 = nullptr;
        VLCMediaPlayer* player2 = nullptr;
        VLCVideoView* video1View = nullptr;
        VLCVideoView* video2View = nullptr;
    };

    KVRPlaybackEngine(KVRMainWindowUI& ui, const Players& players, KVRPlayInfo* playInfo,
                      const KVRMediaListTableModel* rows, QObject* parent = nullptr);
    ~KVRPlaybackEngine() override;

    void setCollaborators(KVRPlaybackControls* controls, KVRWindowLayout* layout,
                          KVRLoadingController* loading);

    // True when opening began; false for an empty list, or while another opening is awaited: the
    // last row asked for then opens once that one has started or failed.
    bool playAtIndex(qint64 index);
    bool playNext();
    // The current row again, from its start.
    bool reopenCurrentRow();
    void stopPlay();
    // Stops both players and forgets the recording, for a newly opened folder.
    void clearCurrentRecording();
    void swapPlayer();
    // Ends the move after the given delay: the small player follows the large one, and a paused
    // window shows where the seek landed.
    void syncVideoPositionDelay(double seconds);
    // Puts the small player at the same time from the start of its recording as the given one,
    // or on its last frame when its recording is shorter. A seek of both while they play holds
    // them on one frame; told it may not, the pair is taken as paused.
    void placePartnerAt(qint64 milliseconds, bool mayHold = true);
    // Both paused players on one frame: the large one's, as near as libVLC tells it.
    void alignPausedPair();
    const KVRPartnerSlave* partnerSlave() const { return m_slave; }
    void chooseAudioAuto();

    static bool hasMedia(const VLCMediaPlayer* player);
    static bool isPlaying(const VLCMediaPlayer* player);
    // Playing and meant to go on: just paused, libVLC may still say the player plays.
    static bool playsOn(const VLCMediaPlayer* player);
    static bool hasAudio(const VLCMediaPlayer* player);

    qint64 mediaIndex() const { return m_mediaIndex; }
    bool waitingForPlayStart() const { return m_waitingForPlayStart; }
    bool hasRearMedia() const { return m_hasRearMedia; }
    bool swapping() const { return m_swapping; }
    bool moving() const { return m_moving; }
    double movingPosition() const { return m_movingPosition; }
    void setMoving(bool moving, double position);
    bool isPlayNextTimerActive() const;
    const KVRBlackBoxData& blackBoxData() const { return *m_blackBoxData; }

signals:
    // Told to the user quietly, in the window.
    void statusMessage(const QString& text);
    // Both players started a recording.
    void playbackStarted();
    // The telemetry store is about to be refilled on a background thread: nothing may read it
    // until telemetryReady.
    void telemetryWillChange();
    // The store holds the telemetry of the recording about to play.
    void telemetryReady(const kavro::KVRBlackBoxData* store);
    // No recording is shown any more (it failed, or a folder was opened).
    void recordingCleared();

private:
    void updateVideoUI();
    void initMediaControlView();
    void completeOpening(quint64 opening);
    void mediaPlayerStateChanged(VLCMediaPlayer* player);
    void mediaPlayerTimeChanged(VLCMediaPlayer* player);
    void updateVideoViewsVisibility();
    void didStartPlayer();
    void didFinishPlay();
    // Gives up an opening whose start never came: the user may open another.
    void giveUpOpening();
    void failRecording();
    // Opens the row asked for while the last opening was under way, if any.
    void openPendingRow();
    // The small picture's file can't be played: the large one goes on alone.
    void dropPartner(const char* why);
    void setLogos();

    KVRMainWindowUI& m_ui;
    Players m_players;
    KVRPlayInfo* m_playInfo;
    const KVRMediaListTableModel* m_rows;
    KVRPlaybackControls* m_controls = nullptr;
    KVRWindowLayout* m_layout = nullptr;
    KVRLoadingController* m_loading = nullptr;

    std::unique_ptr<KVRBlackBoxData> m_blackBoxData;
    QFutureWatcher<bool> m_extraction;
    KVRPartnerSlave* m_slave = nullptr;
    KVRPairPlacement* m_placement = nullptr;
    KVRRenderSizeFollower* m_renderSizes = nullptr;
    // Checks the large picture's file while it plays (a card pulled out or a file cut short
    // underneath stops playback instead of moving on) and moves on at the end.
    KVRPlayNextTimer* m_playNextTimer = nullptr;

    qint64 m_mediaIndex = -1;
    // The row asked for while an opening was under way; -1 for none.
    qint64 m_pendingIndex = -1;
    // The file of the opening under way, named if it fails whatever row is selected by then.
    QString m_openingFileName;
    // Bumped by every opening and by whatever abandons one, so that late completions and
    // delayed moves of an older recording do nothing.
    quint64 m_opening = 0;
    // Bumped by every resynchronisation asked for; only the latest one runs when its time comes.
    quint64 m_resync = 0;
    int m_timeChangeCounter = -1;
    double m_movingPosition = 0;
    bool m_waitingForPlayStart = false;
    bool m_hasRearMedia = false;
    bool m_swapping = false;
    bool m_moving = false;
    // The next resynchronisation sends both players to one time: the start of a recording.
    bool m_alignAtResync = false;
};

} // namespace kavro
