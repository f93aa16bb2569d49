#include "kvrplaybackcontrols.h"

#include "applog.h"
#include "customwindow.h"
#include "kvrmainwindowui.h"
#include "kvrplayinfo.h"
#include "kvrpositionslider.h"
#include "kvrvideocontainerview.h"
#include "kvrwindowlayout.h"
#include "player/vlcmediaplayer.h"
#include "widgets/artworknames.h"
#include "widgets/tkimagebutton.h"

#include <QLabel>
#include <QScreen>
#include <QSlider>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace kavro {

namespace {

constexpr double EndPosition = KVRPlaybackEngine::EndPosition;
constexpr int ResumeDelayMs = 100;
constexpr auto hasMedia = &KVRPlaybackEngine::hasMedia;
constexpr double ResyncDelay = 0.3;

// The recording's length in milliseconds, 0 while unknown.
qint64 lengthOf(const VLCMediaPlayer* player)
{
    return std::max<qint64>(0, player->media().length().intValue());
}

// "mm:ss", or "h:mm:ss" from an hour on.
QString clockText(qint64 milliseconds)
{
    const qint64 seconds = std::max<qint64>(0, milliseconds) / 1000;
    if (seconds >= 3600)
        return QString::asprintf("%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60,
                                 seconds % 60);
    return QString::asprintf("%02lld:%02lld", seconds / 60, seconds % 60);
}

} // namespace

KVRPlaybackControls::KVRPlaybackControls(KVRMainWindowUI& ui,
                                         const KVRPlaybackEngine::Players& players,
                                         KVRPlayInfo* playInfo, KVRPlaybackEngine* engine,
                                         QObject* parent)
    : QObject(parent), m_ui(ui), m_players(players), m_playInfo(playInfo), m_engine(engine)
{
    observePlayInfo();
}

void KVRPlaybackControls::observePlayInfo()
{
    connect(m_playInfo, &KVRPlayInfo::speedChanged, this, [this](double speed) {
        m_ui.speedTextButton->setText(QString::asprintf("%.1fx", speed));
    });
    connect(m_playInfo, &KVRPlayInfo::scaleChanged, this, [this](double scale) {
        m_ui.sizeTextButton->setText(QString::asprintf("%.2fx", scale));
    });
    connect(m_playInfo, &KVRPlayInfo::isPlayingChanged, this, [this](bool playing) {
        const QString image = playing ? artwork::pause : artwork::play;
        m_ui.playButton->setImage(image);
        m_ui.playButtonForFullScreen->setImage(image);
    });
    // The sliders show the position; the telemetry display follows the same signal.
    connect(m_playInfo, &KVRPlayInfo::positionChanged, this, [this](double position) {
        const double shown = position >= 1.0 ? 1.0 : position;
        m_ui.videoPositionSlider->setFraction(shown);
        m_ui.videoPositionSliderForFullScreen->setFraction(shown);
        const qint64 length = hasMedia(m_players.player1) ? lengthOf(m_players.player1) : 0;
        const QString times =
            clockText(qint64(shown * double(length))) + QStringLiteral(" / ") + clockText(length);
        m_ui.playTimeField->setText(times);
        m_ui.playTimeFieldForFullScreen->setText(times);
    });
    connect(m_playInfo, &KVRPlayInfo::audioMediaDirectionChanged, this,
            &KVRPlaybackControls::updateAudioUI);
    connect(this, &KVRPlaybackControls::volumeChanged, this, &KVRPlaybackControls::updateAudioUI);
}

void KVRPlaybackControls::setVolume(quint64 volume)
{
    m_volume = std::min(volume, MaxVolume);
    emit volumeChanged(m_volume);
}

double KVRPlaybackControls::sliderValue() const
{
    return m_playInfo->position();
}

void KVRPlaybackControls::clickPlayButton()
{
    VLCMediaPlayer* player1 = m_players.player1;
    VLCMediaPlayer* player2 = m_players.player2;
    if (!hasMedia(player1))
        return;
    if (m_playInfo->isPlaying()) {
        for (VLCMediaPlayer* player : {player1, player2}) {
            if (KVRPlaybackEngine::isPlaying(player))
                player->pause();
        }
        // The two pictures were a frame or so apart while playing; paused they are the same.
        m_engine->alignPausedPair();
        return;
    }
    if (player1->position() >= EndPosition) {
        if (sliderValue() >= EndPosition) {
            // At the end: the same row again, from the start.
            m_engine->reopenCurrentRow();
            return;
        }
        // The slider was moved back while resting at the end.
        const VLCTime time(qint64(sliderValue() * double(lengthOf(player1))));
        player1->setTime(time);
        m_engine->placePartnerAt(time.intValue());
        QTimer::singleShot(ResumeDelayMs, this, [player1, player2] {
            player1->play();
            if (hasMedia(player2))
                player2->play();
        });
        return;
    }
    player1->play();
    if (hasMedia(player2)) {
        player2->play();
        m_engine->syncVideoPositionDelay(ResyncDelay);
    }
}

void KVRPlaybackControls::setBothPlayersToTheirEnd()
{
    for (VLCMediaPlayer* player : {m_players.player1, m_players.player2}) {
        if (hasMedia(player))
            player->setTime(VLCTime(lengthOf(player)));
    }
}

void KVRPlaybackControls::videoPositionSliderMoved(double value)
{
    qCDebug(lcApp, "[D ] position slider moved:%lf <=> %lf", m_playInfo->position(), value);
    m_playInfo->setPosition(value);
    m_playInfo->setIsPlaying(KVRPlaybackEngine::isPlaying(m_players.player1));
    if (m_engine->moving() || !hasMedia(m_players.player1))
        return;
    if (value >= EndPosition) {
        setBothPlayersToTheirEnd();
        return;
    }
    m_engine->setMoving(true, value);
    m_players.player1->setPosition(float(value));
    m_engine->placePartnerAt(qint64(value * double(lengthOf(m_players.player1))));
    m_engine->syncVideoPositionDelay(ResyncDelay);
}

void KVRPlaybackControls::jumpForward()
{
    VLCMediaPlayer* player1 = m_players.player1;
    qCDebug(lcApp) << "[D ] _player1.time=" << player1->time().stringValue()
                   << ",remainingTime.stringValue=" << player1->remainingTime().stringValue();
    if (m_engine->moving() || !hasMedia(player1))
        return;
    if (player1->remainingTime().intValue() / 1000.0 > -JumpSeconds) {
        setBothPlayersToTheirEnd();
        return;
    }
    const double lengthSeconds = lengthOf(player1) / 1000.0;
    const double target = player1->position() + JumpSeconds / lengthSeconds;
    m_engine->setMoving(true, target);
    m_playInfo->setPosition(target);
    const qint64 targetTime = player1->time().intValue() + JumpSeconds * 1000;
    player1->jumpForward(JumpSeconds);
    m_engine->placePartnerAt(targetTime);
    m_engine->syncVideoPositionDelay(ResyncDelay);
}

void KVRPlaybackControls::jumpBackward()
{
    VLCMediaPlayer* player1 = m_players.player1;
    if (m_engine->moving() || !hasMedia(player1))
        return;
    if (player1->time().intValue() / 1000.0 < JumpSeconds) {
        // Back to the start; the position and the telemetry follow there too, also when paused.
        m_playInfo->setPosition(0);
        player1->setTime(VLCTime::nullTime());
        m_engine->placePartnerAt(0);
        m_engine->syncVideoPositionDelay(ResyncDelay);
    } else {
        m_engine->setMoving(true, sliderValue());
        const qint64 targetTime = player1->time().intValue() - JumpSeconds * 1000;
        player1->jumpBackward(JumpSeconds);
        m_engine->placePartnerAt(targetTime);
        m_engine->syncVideoPositionDelay(ResyncDelay);
    }
    updateAudioUI();
}

void KVRPlaybackControls::increaseSpeed()
{
    if (m_playInfo->speed() + 1.0 > MaxSpeed)
        return;
    for (VLCMediaPlayer* player : {m_players.player1, m_players.player2})
        player->setRate(player->rate() + 1.0f);
    m_playInfo->setSpeed(m_playInfo->speed() + 1.0);
}

void KVRPlaybackControls::decreaseSpeed()
{
    if (m_playInfo->speed() <= MinSpeed)
        return;
    for (VLCMediaPlayer* player : {m_players.player1, m_players.player2})
        player->setRate(player->rate() - 1.0f);
    m_playInfo->setSpeed(m_playInfo->speed() - 1.0);
}

void KVRPlaybackControls::volumeUp()
{
    setVolume(std::min(m_volume + VolumeStep, MaxVolume));
}

void KVRPlaybackControls::volumeDown()
{
    setVolume(m_volume >= VolumeStep ? m_volume - VolumeStep : 0);
}

void KVRPlaybackControls::volumeSliderMoved(int value)
{
    setVolume(quint64(std::max(0, value)));
}

void KVRPlaybackControls::sizeUp()
{
    if (m_players.player1->isPlaying())
        setVideoScaleIndex(+1);
}

void KVRPlaybackControls::sizeDown()
{
    if (m_players.player1->isPlaying())
        setVideoScaleIndex(-1);
}

void KVRPlaybackControls::setVideoScaleIndex(int step)
{
    CustomWindow* window = m_ui.window;
    const QScreen* screen = window->screen();
    const QRect screenFrame = screen ? screen->geometry() : QRect();
    const QRect frame = window->frameGeometry();
    const QSize minimum = KVRWindowLayout::minWindowSize();
    QSize size = frame.size() + minimum * (step * SizeStep);
    if (step > 0) {
        if (window->isFullScreen())
            return;
        if (size.width() > screenFrame.width() || size.height() > screenFrame.height() - 100) {
            window->enterFullscreen();
            return;
        }
    } else if (window->isFullScreen()) {
        window->leaveFullscreen();
        return;
    }
    if (size.width() < minimum.width() || size.height() < minimum.height())
        size = minimum;
    window->setFrame(QRect(frame.topLeft(), size));
}

void KVRPlaybackControls::updatePlayInfoScale()
{
    VLCMediaPlayer* player1 = m_players.player1;
    const QSize video = player1->videoSize();
    // Paused too: leaving full screen while paused must not leave the full-screen scale shown.
    if (hasMedia(player1) && player1->hasVideoOut() && video.height() > 0)
        m_playInfo->setScale(double(m_ui.videoContainerView->height()) / video.height());
}

void KVRPlaybackControls::toggleAudioChoice(bool rear)
{
    m_playInfo->setAudioMediaDirection(rear ? KVRPlayInfo::AudioRear : KVRPlayInfo::AudioFront);
}

void KVRPlaybackControls::updateAudioUI()
{
    const std::int32_t direction = m_playInfo->audioMediaDirection();
    VLCMediaPlayer* audible = nullptr;
    if (direction == KVRPlayInfo::AudioFront || direction == KVRPlayInfo::AudioRear) {
        for (VLCMediaPlayer* player : {m_players.player1, m_players.player2}) {
            if (hasMedia(player) && player->media().mediaDirection() == direction) {
                audible = player;
                break;
            }
        }
    }
    for (VLCMediaPlayer* player : {m_players.player1, m_players.player2}) {
        player->audio()->setMute(player != audible);
        if (player == audible)
            player->audio()->setVolume(int(m_volume));
    }
    // A choice between two recordings needs two recordings.
    const bool choice = direction != KVRPlayInfo::AudioNone && hasMedia(m_players.player2);
    m_ui.audioToggleButton->setVisible(choice);
    m_ui.audioToggleButton->setChecked(direction == KVRPlayInfo::AudioRear);
    m_ui.volumeSlider->blockSignals(true);
    m_ui.volumeSlider->setValue(int(m_volume));
    m_ui.volumeSlider->blockSignals(false);
}

} // namespace kavro
