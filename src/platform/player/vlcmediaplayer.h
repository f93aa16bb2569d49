#pragma once

#include "vlcaudio.h"
#include "vlcmedia.h"
#include "vlctime.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QSize>
#include <QTimer>

#include <memory>

struct libvlc_event_t;
struct libvlc_media_player_t;

namespace kavro {

class VLCFrameBuffer;
class VLCVideoView;

// Player states in the numbering the playback engine tests (it looks for Paused, 6, which is
// also where a player rests at the end of a recording).
enum VLCMediaPlayerState : int
{
    VLCMediaPlayerStateStopped = 0,
    VLCMediaPlayerStateOpening = 1,
    VLCMediaPlayerStateBuffering = 2,
    VLCMediaPlayerStateEnded = 3,
    VLCMediaPlayerStateError = 4,
    VLCMediaPlayerStatePlaying = 5,
    VLCMediaPlayerStatePaused = 6,
};

// One libVLC player rendering into memory. Use it from the main thread only; its signals arrive
// there too, whatever libVLC thread the underlying event came from.
class VLCMediaPlayer : public QObject
{
    Q_OBJECT

public:
    // The view, if given, shows this player's picture.
    explicit VLCMediaPlayer(VLCVideoView* videoView = nullptr, QObject* parent = nullptr);
    ~VLCMediaPlayer() override;

    // A null media stops the player and leaves it empty.
    void setMedia(const VLCMedia& media);
    VLCMedia media() const { return m_media; }

    void play();
    void pause(); // stays paused when already paused, also at the end
    void stop();
    VLCMediaPlayerState state() const;
    bool isPlaying() const;
    // Asked to pause and not asked to play since: libVLC goes on saying it plays for a moment.
    bool pauseRequested() const { return m_pauseRequested; }
    bool isSeekable() const;

    // Fraction of the recording, 0 .. 1; exactly 1 while resting at the end.
    float position() const;
    void setPosition(float position);
    // Null while nothing is open; the length while resting at the end.
    VLCTime time() const;
    // A null time means the start. A paused player shows the first frame at or after the time.
    void setTime(const VLCTime& time);
    // The recording's length in milliseconds; 0 or less while unknown.
    qint64 lengthMilliseconds() const;
    // The time still to play as a negative value; null while the length is unknown.
    VLCTime remainingTime() const;
    float rate() const;
    void setRate(float rate);
    // Relative seeks in whole seconds, kept within the recording.
    void jumpForward(int seconds);
    void jumpBackward(int seconds);

    VLCAudio* audio() { return &m_audio; }
    // The ids of the recording's audio tracks; empty when the file has no sound.
    QList<int> audioTrackIndexes() const;

    bool hasVideoOut() const;
    // The size the picture is shown at, in device pixels: it is rendered at the video's size
    // fitted into it, so that painting it needs no scaling pass; empty for the video's own size.
    // A running video output that would now choose another size starts again, showing the old
    // picture until its first new frame.
    void setRenderSizeLimit(const QSize& limit);
    // The video's own size (sample aspect applied); empty while no video runs.
    QSize videoSize() const;
    // The size of the rendered picture; empty while no video runs.
    QSize renderedSize() const;
    // A copy of the last displayed frame at the video's own size; null while no video runs.
    QImage lastFrame() const;
    // The displayed frame at the video's own size and full detail, also where it was rendered
    // smaller (a snapshot from libVLC then, which takes a moment); null while no video runs.
    QImage frameAtVideoSize() const;
    // The last displayed frame without a copy, for painting it at once; it may change once the
    // event loop runs again.
    const QImage& shownFrame() const;

    // Writes the displayed frame, encoded after the file's extension (PNG when unknown). Width
    // and height 0 keep the video's size; one of them 0 keeps its aspect ratio. The old file stays
    // when the write fails; false then, and when there is no frame.
    bool saveVideoSnapshotAt(const QString& path, int width, int height);
    // The displayed frame encoded in the given image format, sized as above; empty when there
    // is no frame. For a caller that writes the file by a rule of its own.
    QByteArray videoSnapshot(const QByteArray& format, int width, int height) const;
    // The image format a file name asks for by its extension: "jpeg", another format Qt writes,
    // else "png".
    static QByteArray imageFormatForPath(const QString& path);

signals:
    void mediaPlayerStateChanged(kavro::VLCMediaPlayer* player);
    void mediaPlayerTimeChanged(kavro::VLCMediaPlayer* player);
    // A new frame is ready (or the picture went away).
    void frameReady();

private:
    static void handleEvent(const libvlc_event_t* event, void* data);
    void attachEvents(bool attach);
    bool restingAtEnd() const;
    void seekIssued();
    void settlePausedSeek();
    void restartVideoOutput();

    libvlc_media_player_t* m_player = nullptr;
    std::unique_ptr<VLCFrameBuffer> m_frames;
    VLCMedia m_media;
    VLCAudio m_audio;

    // libVLC pauses by itself only at the end of a recording (":play-and-pause"), and its last
    // position report before that pause may be a few frames short of the end. A pause nobody
    // asked for therefore means "resting at the end", and the player then reports the end. A
    // seek while paused holds the player where it was sent.
    bool m_pauseRequested = false;

    // libVLC shows the frame of a paused seek only when the pause had settled before the seek;
    // soon after pausing it keeps the old picture. The same seek is asked again a little later,
    // which lands on the frame whenever the first did not, and costs a decode when it did.
    QTimer m_settleTimer;
    qint64 m_settleTarget = -1;
    int m_settleRepeats = 0;
};

} // namespace kavro
