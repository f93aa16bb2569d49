#include "vlcmediaplayer.h"

#include "common/outputfile.h"
#include "playerlog.h"
#include "vlcframebuffer.h"
#include "vlclibrary.h"
#include "vlcvideoview.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>
#include <QTemporaryDir>

#include <vlc/vlc.h>

#include <algorithm>

namespace kavro {

namespace {

// When a paused seek is asked again: soon enough to be unnoticed, late enough to follow a pause
// on a loaded machine.
constexpr int SettleDelaysMs[] = {80, 250, 500};

// The events the players forward; buffering is left out, libVLC sends it many times a second.
constexpr libvlc_event_type_t kForwardedEvents[] = {
    libvlc_MediaPlayerOpening,     libvlc_MediaPlayerPlaying,    libvlc_MediaPlayerPaused,
    libvlc_MediaPlayerStopped,     libvlc_MediaPlayerEndReached, libvlc_MediaPlayerEncounteredError,
    libvlc_MediaPlayerTimeChanged,
};

libvlc_media_player_t* newPlayer()
{
    libvlc_instance_t* instance = VLCLibrary::sharedLibrary()->instance();
    return instance ? libvlc_media_player_new(instance) : nullptr;
}

VLCMediaPlayerState stateFromLibVLC(libvlc_state_t state)
{
    switch (state) {
    case libvlc_Opening:
        return VLCMediaPlayerStateOpening;
    case libvlc_Buffering:
        return VLCMediaPlayerStateBuffering;
    case libvlc_Playing:
        return VLCMediaPlayerStatePlaying;
    case libvlc_Paused:
        return VLCMediaPlayerStatePaused;
    case libvlc_Ended:
        return VLCMediaPlayerStateEnded;
    case libvlc_Error:
        return VLCMediaPlayerStateError;
    case libvlc_NothingSpecial:
    case libvlc_Stopped:
        break;
    }
    return VLCMediaPlayerStateStopped;
}

} // namespace

VLCMediaPlayer::VLCMediaPlayer(VLCVideoView* videoView, QObject* parent)
    : QObject(parent), m_player(newPlayer()), m_frames(std::make_unique<VLCFrameBuffer>()),
      m_audio(m_player)
{
    connect(m_frames.get(), &VLCFrameBuffer::frameReady, this, &VLCMediaPlayer::frameReady);
    m_settleTimer.setSingleShot(true);
    connect(&m_settleTimer, &QTimer::timeout, this, &VLCMediaPlayer::settlePausedSeek);
    if (m_player) {
        m_frames->attachTo(m_player);
        attachEvents(true);
    }
    if (videoView)
        videoView->setMediaPlayer(this);
}

VLCMediaPlayer::~VLCMediaPlayer()
{
    if (!m_player)
        return;
    // Stopping joins libVLC's decoding and video threads, so no render callback can run once it
    // returns. Events it still sends are queued to this object and dropped with it.
    libvlc_media_player_stop(m_player);
    attachEvents(false);
    libvlc_media_player_release(m_player);
}

void VLCMediaPlayer::attachEvents(bool attach)
{
    libvlc_event_manager_t* events = libvlc_media_player_event_manager(m_player);
    for (libvlc_event_type_t type : kForwardedEvents) {
        if (attach)
            libvlc_event_attach(events, type, handleEvent, this);
        else
            libvlc_event_detach(events, type, handleEvent, this);
    }
}

void VLCMediaPlayer::handleEvent(const libvlc_event_t* event, void* data)
{
    // Called on a libVLC thread, possibly with libVLC locks held: only hand the news over.
    auto* player = static_cast<VLCMediaPlayer*>(data);
    if (event->type == libvlc_MediaPlayerTimeChanged) {
        QMetaObject::invokeMethod(
            player, [player] { emit player->mediaPlayerTimeChanged(player); },
            Qt::QueuedConnection);
    } else {
        QMetaObject::invokeMethod(
            player, [player] { emit player->mediaPlayerStateChanged(player); },
            Qt::QueuedConnection);
    }
}

bool VLCMediaPlayer::restingAtEnd() const
{
    return !m_pauseRequested && state() == VLCMediaPlayerStatePaused;
}

void VLCMediaPlayer::seekIssued()
{
    if (state() == VLCMediaPlayerStatePaused)
        m_pauseRequested = true;
}

void VLCMediaPlayer::settlePausedSeek()
{
    if (!m_player || m_settleTarget < 0 || !m_pauseRequested)
        return;
    libvlc_media_player_set_time(m_player, m_settleTarget);
    if (m_settleRepeats < int(std::size(SettleDelaysMs)))
        m_settleTimer.start(SettleDelaysMs[m_settleRepeats++]);
    else
        m_settleTarget = -1;
}

void VLCMediaPlayer::setMedia(const VLCMedia& media)
{
    if (!m_player)
        return;
    m_pauseRequested = false;
    m_settleTimer.stop();
    m_media = media;
    m_frames->setMedia(media.handle());
    libvlc_media_player_set_media(m_player, media.handle());
    // libVLC keeps its video output for the next recording, with the old picture in it.
    m_frames->clearPicture();
}

void VLCMediaPlayer::play()
{
    if (!m_player || m_media.isNull())
        return;
    // Playing goes on from where the seek sent the player, whatever picture it showed.
    m_pauseRequested = false;
    m_settleTimer.stop();
    libvlc_media_player_play(m_player);
}

void VLCMediaPlayer::pause()
{
    // Pausing a paused player changes nothing, and must not turn a rest at the end into a
    // pause in the middle.
    if (!m_player || state() == VLCMediaPlayerStatePaused)
        return;
    m_pauseRequested = true;
    libvlc_media_player_set_pause(m_player, 1);
}

void VLCMediaPlayer::stop()
{
    if (!m_player)
        return;
    m_pauseRequested = false;
    m_settleTimer.stop();
    libvlc_media_player_stop(m_player);
    m_frames->clearPicture();
}

VLCMediaPlayerState VLCMediaPlayer::state() const
{
    return m_player ? stateFromLibVLC(libvlc_media_player_get_state(m_player))
                    : VLCMediaPlayerStateStopped;
}

bool VLCMediaPlayer::isPlaying() const
{
    return m_player && libvlc_media_player_is_playing(m_player) == 1;
}

bool VLCMediaPlayer::isSeekable() const
{
    return m_player && libvlc_media_player_is_seekable(m_player) == 1;
}

float VLCMediaPlayer::position() const
{
    if (!m_player)
        return 0.0f;
    if (restingAtEnd())
        return 1.0f;
    // libVLC reports -1 without a recording and a little over 1 at the very end.
    return std::clamp(libvlc_media_player_get_position(m_player), 0.0f, 1.0f);
}

void VLCMediaPlayer::setPosition(float position)
{
    if (!m_player)
        return;
    position = std::clamp(position, 0.0f, 1.0f);
    const qint64 length = lengthMilliseconds();
    if (length > 0 && position < 1.0f) {
        // By time, so that a paused player lands on the frame like every other seek.
        setTime(VLCTime(qint64(double(position) * double(length))));
        return;
    }
    seekIssued();
    m_settleTimer.stop();
    libvlc_media_player_set_position(m_player, position);
}

VLCTime VLCMediaPlayer::time() const
{
    if (!m_player || m_media.isNull())
        return VLCTime::nullTime();
    const qint64 length = lengthMilliseconds();
    qint64 time = libvlc_media_player_get_time(m_player);
    if (time < 0)
        return VLCTime::nullTime();
    if (length > 0 && (time > length || restingAtEnd()))
        time = length;
    return VLCTime(time);
}

void VLCMediaPlayer::setTime(const VLCTime& time)
{
    if (!m_player)
        return;
    seekIssued();
    const qint64 target = std::max<qint64>(0, time.intValue());
    libvlc_media_player_set_time(m_player, target);
    m_settleTimer.stop();
    m_settleTarget = -1;
    if (m_pauseRequested) {
        m_settleTarget = target;
        m_settleRepeats = 1;
        m_settleTimer.start(SettleDelaysMs[0]);
    }
}

qint64 VLCMediaPlayer::lengthMilliseconds() const
{
    return m_player && !m_media.isNull() ? libvlc_media_player_get_length(m_player) : -1;
}

VLCTime VLCMediaPlayer::remainingTime() const
{
    const qint64 length = lengthMilliseconds();
    const VLCTime now = time();
    if (length <= 0 || now.isNull())
        return VLCTime::nullTime();
    return VLCTime(now.intValue() - length);
}

float VLCMediaPlayer::rate() const
{
    return m_player ? libvlc_media_player_get_rate(m_player) : 1.0f;
}

void VLCMediaPlayer::setRate(float rate)
{
    if (m_player && rate > 0)
        libvlc_media_player_set_rate(m_player, rate);
}

void VLCMediaPlayer::jumpForward(int seconds)
{
    if (!isSeekable())
        return;
    qint64 target = time().intValue() + qint64(seconds) * 1000;
    const qint64 length = lengthMilliseconds();
    if (length > 0)
        target = std::min(target, length);
    setTime(VLCTime(target));
}

void VLCMediaPlayer::jumpBackward(int seconds)
{
    jumpForward(-seconds);
}

QList<int> VLCMediaPlayer::audioTrackIndexes() const
{
    QList<int> indexes;
    if (!m_player)
        return indexes;
    libvlc_track_description_t* tracks = libvlc_audio_get_track_description(m_player);
    for (libvlc_track_description_t* track = tracks; track; track = track->p_next) {
        // libVLC lists a "Disable" entry with id -1 whenever there is any track.
        if (track->i_id != -1)
            indexes.append(track->i_id);
    }
    if (tracks)
        libvlc_track_description_list_release(tracks);
    return indexes;
}

bool VLCMediaPlayer::hasVideoOut() const
{
    return m_player && libvlc_media_player_has_vout(m_player) > 0;
}

QSize VLCMediaPlayer::videoSize() const
{
    return m_frames->sourceSize();
}

QSize VLCMediaPlayer::renderedSize() const
{
    return m_frames->frameSize();
}

void VLCMediaPlayer::setRenderSizeLimit(const QSize& limit)
{
    if (m_frames->setSizeLimit(limit) && hasVideoOut() && !restingAtEnd())
        restartVideoOutput();
}

void VLCMediaPlayer::restartVideoOutput()
{
    // libVLC asks for the picture's format only when its video output starts; taking the video
    // track away and back starts a new one, while playing from the next key frame.
    const int track = libvlc_video_get_track(m_player);
    if (track < 0)
        return;
    qCDebug(lcVlcPlayer, "restarting the video output for another picture size");
    m_frames->keepPictureUntilNextFrame();
    libvlc_video_set_track(m_player, -1);
    libvlc_video_set_track(m_player, track);
    // A paused player decodes the frame it rests on anew only when sent there.
    if (m_pauseRequested && state() == VLCMediaPlayerStatePaused)
        setTime(time());
}

QImage VLCMediaPlayer::lastFrame() const
{
    const QImage& frame = m_frames->lastFrame();
    const QSize video = m_frames->sourceSize();
    if (frame.isNull() || video.isEmpty() || frame.size() == video)
        return frame.copy();
    return frame.scaled(video, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage VLCMediaPlayer::frameAtVideoSize() const
{
    QImage frame = m_frames->copyFrontFrame();
    const QSize video = m_frames->sourceSize();
    if (frame.isNull() || video.isEmpty() || frame.size() == video)
        return frame;
    // Rendered at the size it is shown: the decoded picture itself, which libVLC writes out.
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("frame.png"));
    if (folder.isValid() &&
        libvlc_video_take_snapshot(m_player, 0, QFile::encodeName(path).constData(), 0, 0) == 0) {
        const QImage decoded(path);
        if (!decoded.isNull())
            return decoded.convertToFormat(QImage::Format_RGB32);
    }
    qCDebug(lcVlcPlayer) << "no snapshot from libVLC; scaling the rendered picture";
    return frame.scaled(video, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

const QImage& VLCMediaPlayer::shownFrame() const
{
    return m_frames->lastFrame();
}

QByteArray VLCMediaPlayer::imageFormatForPath(const QString& path)
{
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    if (suffix == "jpg" || suffix == "jpeg")
        return "jpeg";
    if (!suffix.isEmpty() && QImageWriter::supportedImageFormats().contains(suffix))
        return suffix;
    return "png";
}

QByteArray VLCMediaPlayer::videoSnapshot(const QByteArray& format, int width, int height) const
{
    const int maxSide = int(VLCFrameBuffer::kMaxSide);
    if (width < 0 || height < 0 || width > maxSide || height > maxSide) {
        qCWarning(lcVlcPlayer, "refusing a snapshot of %dx%d pixels", width, height);
        return {};
    }
    QImage frame = frameAtVideoSize();
    if (frame.isNull()) {
        qCDebug(lcVlcPlayer) << "no picture for a snapshot";
        return {};
    }
    if (width > 0 && height > 0)
        frame = frame.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    else if (width > 0)
        frame = frame.scaledToWidth(width, Qt::SmoothTransformation);
    else if (height > 0)
        frame = frame.scaledToHeight(height, Qt::SmoothTransformation);

    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (!writer.write(frame)) {
        qCWarning(lcVlcPlayer) << "cannot encode the snapshot:" << writer.errorString();
        return {};
    }
    return encoded;
}

bool VLCMediaPlayer::saveVideoSnapshotAt(const QString& path, int width, int height)
{
    const QByteArray encoded = videoSnapshot(imageFormatForPath(path), width, height);
    if (encoded.isEmpty())
        return false;
    QString error;
    if (!writeFile(path, encoded, &error)) {
        qCWarning(lcVlcPlayer) << "cannot write the snapshot" << path << error;
        return false;
    }
    return true;
}

} // namespace kavro
