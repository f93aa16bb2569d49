#include "kvrplaybackengine.h"

#include "applog.h"
#include "kvrloadingcontroller.h"
#include "kvrmainwindowui.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrpairplacement.h"
#include "kvrpartnerslave.h"
#include "kvrplaybackcontrols.h"
#include "kvrplayinfo.h"
#include "kvrplaynexttimer.h"
#include "kvrpositionslider.h"
#include "kvrrendersizefollower.h"
#include "kvrvideocontainerview.h"
#include "kvrwindowlayout.h"
#include "player/vlcmediaplayer.h"
#include "player/vlcvideoview.h"
#include "qtbridge/qtbridge.h"
#include "telemetry/graphview.h"
#include "widgets/artworknames.h"
#include "widgets/tkimagebutton.h"
#include "widgets/tkvideobackgroundimageview.h"

#include <QFileInfo>
#include <QLabel>
#include <QTimer>
#include <QtConcurrent>

#include <algorithm>
#include <utility>

namespace kavro {

namespace {

constexpr double StartResyncDelay = 0.3;
constexpr int SwapRestoreMs = 800;
constexpr int SwapDoneMs = 1700;

bool isPaused(const VLCMediaPlayer* player)
{
    return player->state() == VLCMediaPlayerStatePaused;
}

} // namespace

KVRPlaybackEngine::KVRPlaybackEngine(KVRMainWindowUI& ui, const Players& players,
                                     KVRPlayInfo* playInfo, const KVRMediaListTableModel* rows,
                                     QObject* parent)
    : QObject(parent), m_ui(ui), m_players(players), m_playInfo(playInfo), m_rows(rows),
      m_blackBoxData(std::make_unique<KVRBlackBoxData>()),
      m_slave(new KVRPartnerSlave(players.player1, players.player2, this)),
      m_placement(new KVRPairPlacement(players.player1, players.player2, m_slave, this)),
      m_renderSizes(new KVRRenderSizeFollower(ui.videoContainerView, players.player1,
                                              ui.subVideoContainerView, players.player2, this)),
      m_playNextTimer(new KVRPlayNextTimer(players.player1, this))
{
    connect(m_playNextTimer, &KVRPlayNextTimer::recordingLost, this, [this] {
        qCWarning(lcApp) << "the recording can no longer be read:" << m_openingFileName;
        failRecording();
    });
    connect(m_playNextTimer, &KVRPlayNextTimer::partnerLost, this, [this] {
        // Held, both players wait for each other: the partner goes once the hold is over.
        if (m_slave->holding())
            return;
        emit statusMessage(qtTrId("main.cannot_play") + QLatin1Char(' ') +
                           QFileInfo(m_players.player2->media().path()).fileName());
        dropPartner("the partner can no longer be read:");
        chooseAudioAuto();
        m_controls->updateAudioUI();
    });
    connect(m_playNextTimer, &KVRPlayNextTimer::endReached, this, &KVRPlaybackEngine::playNext);
    connect(m_placement, &KVRPairPlacement::partnerReopened, this,
            [this] { m_controls->updateAudioUI(); });
    m_slave->setMayCorrect([this] { return !m_moving && !m_swapping && !m_waitingForPlayStart; });
    m_blackBoxData->setWaitAfterReading(true);
    // The recording a driver most needs is often the one a crash cut short.
    m_blackBoxData->setRecoverCutShort(true);
    for (VLCMediaPlayer* player : {m_players.player1, m_players.player2}) {
        connect(player, &VLCMediaPlayer::mediaPlayerStateChanged, this,
                &KVRPlaybackEngine::mediaPlayerStateChanged);
        connect(player, &VLCMediaPlayer::mediaPlayerTimeChanged, this,
                &KVRPlaybackEngine::mediaPlayerTimeChanged);
    }
}

KVRPlaybackEngine::~KVRPlaybackEngine()
{
    // The store must outlive a running extraction.
    m_extraction.waitForFinished();
}

void KVRPlaybackEngine::setCollaborators(KVRPlaybackControls* controls, KVRWindowLayout* layout,
                                         KVRLoadingController* loading)
{
    m_controls = controls;
    m_layout = layout;
    m_loading = loading;
}

bool KVRPlaybackEngine::hasMedia(const VLCMediaPlayer* player)
{
    return player && !player->media().isNull();
}

bool KVRPlaybackEngine::playsOn(const VLCMediaPlayer* player)
{
    return isPlaying(player) && !player->pauseRequested();
}

bool KVRPlaybackEngine::isPlaying(const VLCMediaPlayer* player)
{
    return hasMedia(player) && player->isPlaying() &&
           player->remainingTime().stringValue() != QLatin1String("00:00");
}

bool KVRPlaybackEngine::hasAudio(const VLCMediaPlayer* player)
{
    return hasMedia(player) && !player->audioTrackIndexes().isEmpty();
}

bool KVRPlaybackEngine::isPlayNextTimerActive() const
{
    return m_playNextTimer->isActive();
}

void KVRPlaybackEngine::setMoving(bool moving, double position)
{
    m_moving = moving;
    m_movingPosition = position;
}

bool KVRPlaybackEngine::playAtIndex(qint64 index)
{
    if (m_rows->count() == 0)
        return false;
    // One opening at a time, which also keeps two extractions from overlapping; the last row
    // asked for meanwhile opens once the opening under way has started or failed.
    if (m_waitingForPlayStart || m_extraction.isRunning()) {
        m_pendingIndex = index;
        return false;
    }
    m_pendingIndex = -1;
    index = std::clamp<qint64>(index, 0, m_rows->count() - 1);
    m_waitingForPlayStart = true;
    const quint64 opening = ++m_opening;
    m_slave->cancelHold();
    m_playNextTimer->stop();

    VLCMediaPlayer* player1 = m_players.player1;
    VLCMediaPlayer* player2 = m_players.player2;
    player1->stop();
    player1->setMedia(VLCMedia());
    player2->stop();
    player2->setMedia(VLCMedia());

    m_mediaIndex = index;
    m_placement->forgetPartnerPause();
    const KVRMediaPtr opened = m_rows->mediaAtIndex(index);
    m_openingFileName = opened ? opened->fileName() : QString();
    // The long-run check counts the openings by this line.
    qCInfo(lcApp, "opening row %lld: %s", index, qUtf8Printable(m_openingFileName));
    m_ui.mediaListTableView->selectOnlyRow(index);
    updateVideoUI();
    m_playNextTimer->watchFiles(player1->media().path(), player2->media().path());
    emit statusMessage(QString());
    m_loading->showLoading(QStringLiteral("Loading..."));
    // An opening that never starts is given up after the indicator's time, whatever hid the
    // indicator before (a late report of the last recording's player).
    QTimer::singleShot(int(m_loading->longestDisplayTime() * 1000), this, [this, opening] {
        if (opening == m_opening)
            giveUpOpening();
    });

    const VLCMediaPlayer* frontPlayer = player1->media().isRearMedia() ? player2 : player1;
    const QString frontPath = frontPlayer->media().path();
    KVRBlackBoxData* store = m_blackBoxData.get();
    emit telemetryWillChange();
    disconnect(&m_extraction, nullptr, this, nullptr);
    connect(&m_extraction, &QFutureWatcher<bool>::finished, this,
            [this, opening] { completeOpening(opening); });
    m_extraction.setFuture(QtConcurrent::run(
        [store, frontPath] { return store->ExtractStreamInformation(nativePath(frontPath)); }));
    return true;
}

void KVRPlaybackEngine::updateVideoUI()
{
    const KVRMediaPtr media = m_rows->mediaAtIndex(m_mediaIndex);
    if (!media)
        return;
    const std::optional<KVRMediaPair> pair = m_rows->findMediaPairWithFileName(media->mediaName());
    // Each picture is rendered at the size it is shown, from its first frame on.
    m_renderSizes->apply();
    m_players.player1->setMedia(VLCMedia::mediaWithPath(media->path()));

    KVRMediaPtr partner;
    if (pair)
        partner = media->isRearMedia() ? pair->frontMedia() : pair->rearMedia();
    if (partner) {
        m_players.player2->setMedia(VLCMedia::mediaWithPath(partner->path()));
    } else {
        m_players.player2->stop();
        m_players.player2->setMedia(VLCMedia());
    }
    const bool rear = media->isRearMedia();
    m_ui.player1BackgroundView->setLogoImage(rear ? artwork::largeRearLogo
                                                  : artwork::largeFrontLogo);
    m_ui.player2BackgroundView->setLogoImage(rear ? artwork::smallFrontLogo
                                                  : artwork::smallRearLogo);
    // The small picture shows once its player plays; without a partner it stays away.
    const bool twoPlayers = hasMedia(m_players.player2);
    if (!twoPlayers)
        m_players.video2View->hide();
    m_ui.audioToggleButton->setVisible(twoPlayers);
}

void KVRPlaybackEngine::completeOpening(quint64 opening)
{
    if (opening != m_opening) {
        // Abandoned while the telemetry was read.
        openPendingRow();
        return;
    }
    m_ui.graphView->setGraphData(m_blackBoxData->GSensors());
    m_ui.telemetryNoteField->setVisible(m_blackBoxData->recovered());
    emit telemetryReady(m_blackBoxData.get());
    initMediaControlView();
    m_players.player1->play();
    m_hasRearMedia = false;
    if (hasMedia(m_players.player2)) {
        m_players.player2->play();
        m_hasRearMedia = true;
    }
}

void KVRPlaybackEngine::initMediaControlView()
{
    m_waitingForPlayStart = true;
    m_ui.videoPositionSlider->setFraction(0);
    m_ui.videoPositionSliderForFullScreen->setFraction(0);
    m_controls->setVideoScaleIndex(0);
    m_layout->updateSideViewButton();
    m_playInfo->setSpeed(1.0);
    m_players.player1->setRate(1.0f);
    m_players.player2->setRate(1.0f);
    m_playInfo->setPosition(0);
    m_ui.gsensorXField->setText(QStringLiteral("X=+0.00"));
    m_ui.gsensorYField->setText(QStringLiteral("Y=+0.00"));
    m_ui.gsensorZField->setText(QStringLiteral("Z=+0.00"));
    m_ui.speedField->clear();
    m_ui.hdopField->clear();
    m_ui.sateliteField->clear();
}

void KVRPlaybackEngine::updateVideoViewsVisibility()
{
    const auto showsPicture = [](const VLCMediaPlayer* player) {
        return hasMedia(player) && (player->isPlaying() || isPaused(player));
    };
    m_players.video1View->setVisible(showsPicture(m_players.player1));
    m_players.video2View->setVisible(showsPicture(m_players.player2));
}

void KVRPlaybackEngine::mediaPlayerStateChanged(VLCMediaPlayer* player)
{
    VLCMediaPlayer* player1 = m_players.player1;
    VLCMediaPlayer* player2 = m_players.player2;
    // An error, or an end before anything was shown (an empty file), means the recording can't
    // be played: say so at once rather than after the loading indicator's time.
    const auto failedToOpen = [](const VLCMediaPlayer* player) {
        const VLCMediaPlayerState state = player->state();
        return state == VLCMediaPlayerStateError ||
               (state == VLCMediaPlayerStateEnded && !player->hasVideoOut());
    };
    if (m_waitingForPlayStart && !m_extraction.isRunning() && player == player1 &&
        hasMedia(player1) && failedToOpen(player1)) {
        giveUpOpening();
        return;
    }
    if (m_waitingForPlayStart && !m_extraction.isRunning() && player == player2 &&
        hasMedia(player2) && failedToOpen(player2)) {
        // A broken partner file must not keep the main recording from playing.
        dropPartner("cannot play");
        m_hasRearMedia = false;
    }
    // Held, the pause is the engine's own, not a state to show.
    if (m_slave->holding())
        return;
    const bool p1 = hasMedia(player1) && player1->isPlaying();
    const bool p2 = hasMedia(player2) && player2->isPlaying();
    updateVideoViewsVisibility();

    if (hasMedia(player1) && hasMedia(player2)) {
        if (isPaused(player1) && isPaused(player2)) {
            didFinishPlay();
            return;
        }
        if (!(p1 && p2))
            return;
    } else if (hasMedia(player1)) {
        if (isPaused(player1)) {
            didFinishPlay();
            return;
        }
        if (!p1)
            return;
    } else {
        return;
    }

    if (m_waitingForPlayStart) {
        m_waitingForPlayStart = false;
        didStartPlayer();
        m_playNextTimer->start();
        // The two files open at their own pace; without this the small picture would run a
        // few frames apart for the whole recording.
        m_alignAtResync = true;
        syncVideoPositionDelay(StartResyncDelay);
        emit playbackStarted();
        openPendingRow();
    } else {
        m_controls->updateAudioUI();
    }
}

void KVRPlaybackEngine::didStartPlayer()
{
    VLCMediaPlayer* player1 = m_players.player1;
    if (!hasMedia(player1))
        return;
    m_playInfo->setSpeed(player1->rate());
    m_playInfo->setIsPlaying(isPlaying(player1));
    chooseAudioAuto();
    if (m_playInfo->scale() == 0 && player1->hasVideoOut() && player1->videoSize().width() > 0)
        m_controls->updatePlayInfoScale();
}

void KVRPlaybackEngine::didFinishPlay()
{
    m_playInfo->setPosition(m_players.player1->position());
    m_playInfo->setIsPlaying(isPlaying(m_players.player1));
}

void KVRPlaybackEngine::mediaPlayerTimeChanged(VLCMediaPlayer* player)
{
    if (player == m_players.player2)
        m_placement->pauseReopenedPartner();
    updateVideoViewsVisibility();
    m_playNextTimer->playerMoved();
    if (!m_loading->stopVideoLoadingView()) {
        m_loading->hideLoading();
        chooseAudioAuto();
        // The picture's size is known by now, and it differs between the cameras.
        m_controls->updatePlayInfoScale();
    }
    m_playInfo->setIsPlaying(isPlaying(m_players.player1));
    if (m_moving) {
        m_timeChangeCounter = -1;
        if (m_movingPosition > 0)
            m_playInfo->setPosition(m_movingPosition);
    } else if (player == m_players.player1) {
        // Every third event is plenty for the slider and the telemetry.
        m_timeChangeCounter = (m_timeChangeCounter + 1) % 3;
        if (m_timeChangeCounter == 0)
            m_playInfo->setPosition(m_players.player1->position());
    }
}

void KVRPlaybackEngine::syncVideoPositionDelay(double seconds)
{
    const bool pair = hasMedia(m_players.player1) && hasMedia(m_players.player2);
    if (!pair)
        m_moving = false;
    const quint64 opening = m_opening;
    const quint64 resync = ++m_resync;
    QTimer::singleShot(int(seconds * 1000), this, [this, opening, pair, resync] {
        // A move begun since ends with its own resynchronisation, which this one must not cut
        // short (nor take the partner it placed for unplaced).
        if (resync != m_resync)
            return;
        if (pair)
            m_moving = false;
        if (opening != m_opening || !hasMedia(m_players.player1))
            return;
        // Held on one frame, both players go on together when the hold ends.
        if (pair && hasMedia(m_players.player2) && !m_slave->holding()) {
            VLCMediaPlayer* player2 = m_players.player2;
            const qint64 time = m_players.player1->time().intValue();
            const qint64 length2 = player2->lengthMilliseconds();
            // A pause the person made since must not be undone by a hold.
            if (playsOn(m_players.player1)) {
                // Playing, the partner follows by rate, without the jump of a seek; one resting
                // at its end while the large one is back within its length is sent there.
                if (m_alignAtResync && player2->isPlaying())
                    m_placement->holdPairAt(time);
                else if (!player2->isPlaying() && (length2 <= 0 || time < length2))
                    placePartnerAt(time);
                m_slave->restart();
            } else if (!m_placement->placedForMove()) {
                // A paused player may not have reported where its seek landed yet; the partner
                // was sent to the same target when the seek began, and stays there.
                alignPausedPair();
            }
        }
        m_placement->forgetMove();
        m_alignAtResync = false;
        // A paused player sends no time events: show the telemetry of where the seek landed.
        if (!isPlaying(m_players.player1))
            m_playInfo->setPosition(m_players.player1->position());
    });
}

void KVRPlaybackEngine::placePartnerAt(qint64 milliseconds, bool mayHold)
{
    m_placement->placePartnerAt(milliseconds, mayHold);
}

void KVRPlaybackEngine::alignPausedPair()
{
    if (m_slave->holding()) {
        // The person paused during a hold: it stays paused, and says so.
        m_slave->cancelHold();
        didFinishPlay();
    }
    m_placement->alignPaused(!m_swapping);
}

bool KVRPlaybackEngine::playNext()
{
    m_playNextTimer->stop();
    const qint64 next = m_mediaIndex + 1 + (m_hasRearMedia ? 1 : 0);
    if (next >= m_rows->count())
        return false; // the last row: playback rests at its end
    return playAtIndex(next);
}

void KVRPlaybackEngine::openPendingRow()
{
    if (m_pendingIndex < 0)
        return;
    // Once the caller is done with the opening before.
    QTimer::singleShot(0, this, [this] {
        const qint64 index = std::exchange(m_pendingIndex, -1);
        if (index >= 0)
            playAtIndex(index);
    });
}

bool KVRPlaybackEngine::reopenCurrentRow()
{
    if (m_waitingForPlayStart)
        return false;
    m_players.player1->setMedia(VLCMedia());
    m_players.player2->setMedia(VLCMedia());
    return playAtIndex(m_mediaIndex);
}

void KVRPlaybackEngine::chooseAudioAuto()
{
    VLCMediaPlayer* chosen = nullptr;
    if (hasAudio(m_players.player1))
        chosen = m_players.player1;
    else if (hasAudio(m_players.player2))
        chosen = m_players.player2;
    m_playInfo->setAudioMediaDirection(chosen ? chosen->media().mediaDirection()
                                              : KVRPlayInfo::AudioNone);
}

void KVRPlaybackEngine::setLogos()
{
    m_ui.player1BackgroundView->setLogoImage(m_players.player1->media().isRearMedia()
                                                 ? artwork::largeRearLogo
                                                 : artwork::largeFrontLogo);
    m_ui.player2BackgroundView->setLogoImage(m_players.player2->media().isFrontMedia()
                                                 ? artwork::smallFrontLogo
                                                 : artwork::smallRearLogo);
}

void KVRPlaybackEngine::swapPlayer()
{
    VLCMediaPlayer* player1 = m_players.player1;
    VLCMediaPlayer* player2 = m_players.player2;
    // Held on one frame after a seek, the pair counts as playing.
    const bool held = m_slave->holding();
    if ((!held && (!isPlaying(player1) || !isPlaying(player2))) || m_swapping)
        return;
    m_slave->cancelHold();
    m_swapping = true;
    m_placement->forgetPartnerPause();
    const qint64 time = player1->time().intValue();
    player1->pause();
    player2->pause();
    // Fresh media objects: one libVLC media is never in two players at once.
    const QString path1 = player1->media().path();
    const QString path2 = player2->media().path();
    m_playNextTimer->swapFiles();
    player1->setMedia(VLCMedia::mediaWithPath(path2));
    player2->setMedia(VLCMedia::mediaWithPath(path1));
    player1->play();
    player2->play();
    setLogos();
    setMoving(true, player1->position());
    m_layout->animateSwap(m_players.video1View, m_players.video2View);
    player1->audio()->setMute(true);
    player2->audio()->setMute(true);

    const quint64 opening = m_opening;
    QTimer::singleShot(SwapRestoreMs, this, [this, opening, time] {
        if (opening != m_opening)
            return;
        m_moving = false;
        // The moment of the drive that was shown, in whichever file is now large.
        const qint64 length = m_players.player1->lengthMilliseconds();
        m_players.player1->setTime(VLCTime(length > 0 ? std::min(time, length) : time));
        placePartnerAt(time);
    });
    QTimer::singleShot(SwapDoneMs, this, [this, opening] {
        m_swapping = false;
        if (opening == m_opening)
            m_controls->updateAudioUI();
    });
}

void KVRPlaybackEngine::stopPlay()
{
    m_players.player1->pause();
    m_players.player1->setMedia(VLCMedia());
    m_players.player2->pause();
    m_players.player2->setMedia(VLCMedia());
}

void KVRPlaybackEngine::clearCurrentRecording()
{
    ++m_opening;
    m_slave->cancelHold();
    m_playNextTimer->stop();
    m_players.player1->stop();
    m_players.player1->setMedia(VLCMedia());
    m_players.player2->stop();
    m_players.player2->setMedia(VLCMedia());
    m_waitingForPlayStart = false;
    m_pendingIndex = -1;
    m_placement->forgetPartnerPause();
    m_mediaIndex = -1;
    m_playNextTimer->watchFiles({}, {});
    m_hasRearMedia = false;
    m_playInfo->setIsPlaying(false);
    m_playInfo->setPosition(0);
    m_ui.graphView->setGraphData({});
    m_ui.telemetryNoteField->hide();
    m_loading->hideLoading();
    updateVideoViewsVisibility();
    emit recordingCleared();
}

void KVRPlaybackEngine::dropPartner(const char* why)
{
    VLCMediaPlayer* player2 = m_players.player2;
    qCWarning(lcApp) << why << player2->media().path() << "- playing alone";
    player2->stop();
    player2->setMedia(VLCMedia());
    m_playNextTimer->watchPartner({});
    m_placement->forgetPartnerPause();
    m_ui.audioToggleButton->hide();
    updateVideoViewsVisibility();
}

void KVRPlaybackEngine::giveUpOpening()
{
    if (!m_waitingForPlayStart)
        return;
    qCWarning(lcApp) << "the recording did not start:" << m_openingFileName;
    failRecording();
}

void KVRPlaybackEngine::failRecording()
{
    const QString failed = m_openingFileName;
    const qint64 pending = m_pendingIndex;
    clearCurrentRecording();
    m_pendingIndex = pending;
    openPendingRow();
    //% "This recording could not be played:"
    emit statusMessage(qtTrId("main.cannot_play") + QLatin1Char(' ') + failed);
}

} // namespace kavro
