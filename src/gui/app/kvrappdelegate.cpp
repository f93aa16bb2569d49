#include "kvrappdelegate.h"

#include "applog.h"
#include "card/alertsheet.h"
#include "common/preferences.h"
#include "customwindow.h"
#include "disks/udisks2disksource.h"
#include "kvrcapturecommands.h"
#include "kvrhelpcommands.h"
#include "kvrlanguagemenu.h"
#include "kvrloadingcontroller.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrplaybackcontrols.h"
#include "kvrplaybackengine.h"
#include "kvrplayinfo.h"
#include "kvrpositionslider.h"
#include "kvrsettingcommands.h"
#include "kvrtelemetrydisplay.h"
#include "kvrvideocontainerview.h"
#include "kvrwindowlayout.h"
#include "map/kvrmapview.h"
#include "player/vlclibrary.h"
#include "player/vlcmediaplayer.h"
#include "player/vlcvideoview.h"
#include "widgets/artworknames.h"
#include "widgets/custombackgroundbox.h"
#include "widgets/tkimagebutton.h"
#include "widgets/tkthreepartimageview.h"
#include "widgets/tkvideobackgroundimageview.h"

#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMenuBar>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

namespace kavro {

namespace {

// The build's language setting: anything but "en" makes every launch store English as the
// preferred language, so the texts are English from the next launch on.
constexpr char BuildLanguage[] = "auto";

VLCVideoView* newVideoView(KVRVideoContainerView* container)
{
    auto* view = new VLCVideoView(container);
    view->setObjectName(QStringLiteral("videoView"));
    container->fitChildren();
    return view;
}

} // namespace

KVRAppDelegate::KVRAppDelegate(QObject* parent)
    : QObject(parent), m_window(std::make_unique<CustomWindow>())
{
    m_ui.setupUi(m_window.get());
    awakeFromNib();
}

KVRAppDelegate::~KVRAppDelegate()
{
    die();
    // No scan may report to a half-destroyed controller.
    m_mediaList->setDelegate(nullptr);
}

void KVRAppDelegate::awakeFromNib()
{
    m_video1View = newVideoView(m_ui.videoContainerView);
    m_video1View->setObjectName(QStringLiteral("video1View"));
    m_player1 = std::make_unique<VLCMediaPlayer>(m_video1View);
    m_video2View = newVideoView(m_ui.subVideoContainerView);
    m_video2View->setObjectName(QStringLiteral("video2View"));
    m_player2 = std::make_unique<VLCMediaPlayer>(m_video2View);
    VLCLibrary::sharedLibrary();

    m_playInfo = new KVRPlayInfo(this);
    m_mediaList = std::make_unique<KVRMediaList>();

    m_ui.mediaControlBoxForFullScreen->setImages(artwork::fullScreenBar, artwork::fullScreenBar,
                                                 artwork::fullScreenBar);
    m_ui.player1BackgroundView->setBackgroundNineImageName(artwork::frameSets[0]);
    m_ui.player1BackgroundView->setLogoImage(artwork::largeFrontLogo);
    m_ui.player2BackgroundView->setBackgroundNineImageName(artwork::frameSets[1]);
    m_ui.player2BackgroundView->setLogoImage(artwork::smallRearLogo);

    initMediaListTableView();
    setupInitialValues();
}

void KVRAppDelegate::initMediaListTableView()
{
    m_model = new KVRMediaListTableModel(this);
    for (int column = 0; column < KVRMediaListTableModel::ColumnCount; ++column)
        m_columnNames << KVRMediaListTableModel::title(column);
    KVRMediaListTableView* table = m_ui.mediaListTableView;
    table->setModel(m_model);
    QHeaderView* header = table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->resizeSection(KVRMediaListTableModel::SaveModeColumn, 86);
    header->resizeSection(KVRMediaListTableModel::DateColumn, 70);
    header->resizeSection(KVRMediaListTableModel::TimeColumn, 56);
    QFont headerFont = header->font();
    headerFont.setPixelSize(11);
    header->setFont(headerFont);
    // The end of a file name tells front from rear; its middle repeats the date and time.
    table->setTextElideMode(Qt::ElideMiddle);
}

void KVRAppDelegate::setupInitialValues()
{
    connect(m_window.get(), &CustomWindow::windowWillClose, this, [this] {
        if (m_engine)
            m_engine->stopPlay();
    });

    m_layout = new KVRWindowLayout(m_ui, this);
    m_loading = new KVRLoadingController(m_ui.progressIndicator, m_ui.headBox, this);
    const KVRPlaybackEngine::Players players{m_player1.get(), m_player2.get(), m_video1View,
                                             m_video2View};
    m_engine = new KVRPlaybackEngine(m_ui, players, m_playInfo, m_model, this);
    m_mediaList->setDelegate(this);
    m_controls = new KVRPlaybackControls(m_ui, players, m_playInfo, m_engine, this);
    m_engine->setCollaborators(m_controls, m_layout, m_loading);
    connect(m_engine, &KVRPlaybackEngine::statusMessage, m_ui.statusField, &QLabel::setText);

    connect(m_window.get(), &CustomWindow::isFullScreenChanged, m_layout,
            &KVRWindowLayout::layoutWindow);
    connect(m_window.get(), &CustomWindow::isFullScreenChanged, this,
            [](bool fullScreen) { qCDebug(lcApp, "fullScreen=%d", fullScreen); });
    m_ui.backgroundBox->installEventFilter(this);
    m_ui.videoContainerView->installEventFilter(this);

    m_layout->setRightViewMode(KVRWindowLayout::MediaListMode);
    m_layout->updateSideViewButton();
    m_controls->setVolume(KVRPlaybackControls::InitialVolume);
    m_playInfo->setIsPlaying(false);
    m_layout->showFrameIfDebugging();
    m_video1View->hide();
    m_video2View->hide();
    setupTelemetryDisplay();
    m_layout->layoutWindow();

    connectControls();
    // The camera's speed unit, read from the card before the window shows.
    m_settingCommands =
        new KVRSettingCommands(m_window.get(), std::make_shared<UDisks2DiskSource>(), this);
    m_settingCommands->readSpeedUnit();
    m_captureCommands = new KVRCaptureCommands(m_ui, m_player1.get(), this);
    m_helpCommands = new KVRHelpCommands(m_window.get(), this);
    setupMenus();
}

// The map pane's page loads during start-up, so that it is ready when the first recording plays.
void KVRAppDelegate::setupTelemetryDisplay()
{
    m_mapWebView = new KVRMapView(m_ui.mapContainerTopView);
    m_mapWebView->setObjectName(QStringLiteral("mapWebView"));
    auto* mapLayout = new QVBoxLayout(m_ui.mapContainerTopView);
    mapLayout->setContentsMargins(QMargins());
    mapLayout->addWidget(m_mapWebView);
    connect(m_mapWebView, &KVRMapView::pageReady, this, [] { qCInfo(lcApp) << "map page ready"; });
    m_mapWebView->loadMapPage();

    const KVRTelemetryDisplay::Outputs outputs{
        m_ui.graphView,  m_mapWebView,   m_ui.gsensorXField, m_ui.gsensorYField, m_ui.gsensorZField,
        m_ui.speedField, m_ui.hdopField, m_ui.sateliteField, m_ui.positionField};
    m_telemetryDisplay = new KVRTelemetryDisplay(outputs, m_playInfo, this);
    m_telemetryDisplay->setPlayerPositionSource(
        [player = m_player1.get()] { return double(player->position()); });
    connect(m_engine, &KVRPlaybackEngine::telemetryWillChange, m_telemetryDisplay,
            &KVRTelemetryDisplay::detachStore);
    connect(m_engine, &KVRPlaybackEngine::telemetryReady, m_telemetryDisplay,
            &KVRTelemetryDisplay::recordingOpened);
    connect(m_engine, &KVRPlaybackEngine::recordingCleared, m_telemetryDisplay,
            &KVRTelemetryDisplay::clear);
}

void KVRAppDelegate::connectControls()
{
    const KVRMainWindowUI& ui = m_ui;
    KVRPlaybackControls* controls = m_controls;
    const auto onClick = [this](QAbstractButton* button, auto slot) {
        connect(button, &QAbstractButton::clicked, this, slot);
    };
    onClick(ui.openFolderButton, [this] { openMediaDirectoryDialog(); });
    onClick(ui.playButton, [controls] { controls->clickPlayButton(); });
    onClick(ui.playButtonForFullScreen, [controls] { controls->clickPlayButton(); });
    onClick(ui.jumpBackwardButton, [controls] { controls->jumpBackward(); });
    onClick(ui.jumpForwardButton, [controls] { controls->jumpForward(); });
    onClick(ui.speedDownButton, [controls] { controls->decreaseSpeed(); });
    onClick(ui.speedUpButton, [controls] { controls->increaseSpeed(); });
    // The speed title flips between the two speeds.
    onClick(ui.speedTextButton, [this, controls] {
        if (m_playInfo->speed() < KVRPlaybackControls::MaxSpeed)
            controls->increaseSpeed();
        else
            controls->decreaseSpeed();
    });
    onClick(ui.sizeDownButton, [controls] { controls->sizeDown(); });
    onClick(ui.sizeUpButton, [controls] { controls->sizeUp(); });
    onClick(ui.sizeTextButton, [this] { toggleFullScreen(); });
    onClick(ui.volumeDownButton, [controls] { controls->volumeDown(); });
    onClick(ui.volumeUpButton, [controls] { controls->volumeUp(); });
    connect(ui.audioToggleButton, &QAbstractButton::clicked, controls,
            &KVRPlaybackControls::toggleAudioChoice);
    onClick(ui.swapButton, [this] { m_engine->swapPlayer(); });
    onClick(ui.fullScreenButton, [this] { toggleFullScreen(); });
    onClick(ui.captureButton, [this] { m_captureCommands->captureVideo(); });
    onClick(ui.printButton, [this] { m_captureCommands->print(); });
    onClick(ui.leaveFullScreenButton, [this] { m_window->leaveFullscreen(); });
    onClick(ui.recordButtonImageView, [this] { m_layout->clickMediaListViewButton(); });
    onClick(ui.informationButtonImageView, [this] { m_layout->clickMapViewButton(); });
    connect(ui.volumeSlider, &QSlider::valueChanged, controls,
            &KVRPlaybackControls::volumeSliderMoved);
    for (KVRPositionSlider* slider : {ui.videoPositionSlider, ui.videoPositionSliderForFullScreen})
        connect(slider, &KVRPositionSlider::userMoved, controls,
                &KVRPlaybackControls::videoPositionSliderMoved);
}

bool KVRAppDelegate::mileDisplay() const
{
    return m_settingCommands && m_settingCommands->mileDisplay();
}

void KVRAppDelegate::setupMenus()
{
    QMenuBar* bar = m_window->menuBar();
    KVRPlaybackControls* controls = m_controls;
    QMenu* menu = nullptr;
    // Every action is on the window too, so its key works while the menu bar is hidden.
    const auto add = [this, &menu](const QString& text, const QKeySequence& key, auto slot) {
        QAction* action = menu->addAction(text);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, slot);
        m_window->addAction(action);
        return action;
    };

    //% "&File"
    menu = bar->addMenu(qtTrId("main.menu.file"));
    //% "&Open Folder..."
    add(qtTrId("main.menu.open"), QKeySequence::Open, [this] { openMediaDirectoryDialog(); });
    menu->addSeparator();
    KVRSettingCommands* cards = m_settingCommands;
    //% "&Settings..."
    add(qtTrId("main.menu.settings"), Qt::CTRL | Qt::Key_Comma,
        [cards] { cards->showSettingPanel(); });
    //% "Open Card &Folder..."
    add(qtTrId("main.menu.open_card_folder"), QKeySequence(),
        [cards] { cards->openCardFolderDialog(); });
    //% "&Clock..."
    add(qtTrId("main.menu.clock"), Qt::CTRL | Qt::SHIFT | Qt::Key_T,
        [cards] { cards->showTimeSetupPanel(); });
    menu->addSeparator();
    KVRCaptureCommands* capture = m_captureCommands;
    //% "Save Picture..."
    add(qtTrId("main.menu.capture"), Qt::CTRL | Qt::SHIFT | Qt::Key_S,
        [capture] { capture->captureVideo(); });
    //% "&Print Picture..."
    add(qtTrId("main.menu.print"), QKeySequence::Print, [capture] { capture->print(); });
    //% "Export Frame as PDF..."
    add(qtTrId("main.menu.export_pdf"), QKeySequence(), [capture] { capture->exportFramePdf(); });
    menu->addSeparator();
    //% "&Close Window"
    add(qtTrId("main.menu.close"), QKeySequence::Close, [this] { closeWindow(); });

    //% "&Playback"
    menu = bar->addMenu(qtTrId("main.menu.playback"));
    //% "Play / Pause"
    add(qtTrId("main.menu.play"), Qt::Key_Space, [controls] { controls->clickPlayButton(); });
    //% "Play Selected Recording"
    add(qtTrId("main.menu.play_selected"), QKeySequence(), [this] { changeAndPlay(); });
    menu->addSeparator();
    //% "Back 10 Seconds"
    add(qtTrId("main.menu.jump_backward"), Qt::Key_Left, [controls] { controls->jumpBackward(); });
    //% "Forward 10 Seconds"
    add(qtTrId("main.menu.jump_forward"), Qt::Key_Right, [controls] { controls->jumpForward(); });
    //% "Slower"
    add(qtTrId("main.menu.speed_down"), Qt::Key_BracketLeft,
        [controls] { controls->decreaseSpeed(); });
    //% "Faster"
    add(qtTrId("main.menu.speed_up"), Qt::Key_BracketRight,
        [controls] { controls->increaseSpeed(); });
    menu->addSeparator();
    //% "Quieter"
    add(qtTrId("main.menu.volume_down"), Qt::CTRL | Qt::Key_Down,
        [controls] { controls->volumeDown(); });
    //% "Louder"
    add(qtTrId("main.menu.volume_up"), Qt::CTRL | Qt::Key_Up, [controls] { controls->volumeUp(); });
    //% "Sound from Front / Rear"
    add(qtTrId("main.menu.audio_toggle"), Qt::Key_A, [this, controls] {
        if (m_ui.audioToggleButton->isVisible())
            controls->toggleAudioChoice(m_playInfo->audioMediaDirection() !=
                                        KVRPlayInfo::AudioRear);
    });
    //% "Swap Pictures"
    add(qtTrId("main.menu.swap"), Qt::Key_S, [this] { m_engine->swapPlayer(); });

    //% "&View"
    menu = bar->addMenu(qtTrId("main.menu.view"));
    //% "Larger"
    add(qtTrId("main.menu.size_up"), Qt::CTRL | Qt::Key_Equal, [controls] { controls->sizeUp(); });
    //% "Smaller"
    add(qtTrId("main.menu.size_down"), Qt::CTRL | Qt::Key_Minus,
        [controls] { controls->sizeDown(); });
    //% "Full Screen"
    add(qtTrId("main.menu.full_screen"), Qt::Key_F, [this] { toggleFullScreen(); });
    menu->addSeparator();
    //% "Recordings"
    add(qtTrId("main.menu.list_view"), Qt::CTRL | Qt::Key_1,
        [this] { m_layout->clickMediaListViewButton(); });
    //% "Map"
    add(qtTrId("main.menu.map_view"), Qt::CTRL | Qt::Key_2,
        [this] { m_layout->clickMapViewButton(); });
    menu->addSeparator();
    new KVRLanguageMenu(menu, m_window.get(), this);

    m_helpCommands->addHelpMenu(bar);
}

void KVRAppDelegate::applicationDidFinishLaunching()
{
    storePreferredLanguage();
    const QRect frame = KVRWindowLayout::minWindowFrame(m_window->screen());
    m_window->setFrame(frame);
    m_window->setInitialFrame(frame);
    m_window->setMinimumSize(KVRWindowLayout::minWindowSize() / 2);
    // The engine's row starts at -1: nothing has been played yet.
    KVRMediaListTableView* table = m_ui.mediaListTableView;
    connect(table, &QAbstractItemView::doubleClicked, this, [this] { changeAndPlay(); });
    connect(table, &KVRMediaListTableView::returnPressed, this, [this] { changeAndPlay(); });
    connect(table, &KVRMediaListTableView::directoryDropped, this,
            &KVRAppDelegate::openMediaDirectory);
}

void KVRAppDelegate::storePreferredLanguage()
{
    if (QLatin1String(BuildLanguage) == QLatin1String("en"))
        return;
    const std::unique_ptr<QSettings> preferences = openPreferences();
    QStringList languages = preferences->value(PrefLanguages).toStringList();
    if (languages.isEmpty())
        languages = QLocale::system().uiLanguages();
    for (const QString& language : languages)
        qCInfo(lcApp, "SUPPORT_LANGUAGE=%s", qUtf8Printable(language));
    preferences->setValue(PrefLanguages, QStringList{QStringLiteral("en")});
    preferences->sync();
    if (preferences->status() != QSettings::NoError)
        qCWarning(lcApp) << "cannot store the preferred language in" << preferences->fileName();
}

void KVRAppDelegate::openMediaDirectoryDialog()
{
    //% "Open a folder of recordings"
    const QString path =
        QFileDialog::getExistingDirectory(m_window.get(), qtTrId("main.open_folder"));
    if (!path.isEmpty())
        openMediaDirectory(path);
}

void KVRAppDelegate::openMediaDirectory(const QString& path)
{
    qCInfo(lcApp) << "opening" << path;
    // The old rows go with their folder, and so does the recording playing from it.
    m_engine->clearCurrentRecording();
    m_ui.mediaListTableView->setEmptyText(QString());
    m_mediaList->setDirectoryPath(path);
}

void KVRAppDelegate::openPathFromCommandLine(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        openMediaDirectory(path);
        return;
    }
    if (!info.exists()) {
        //% "There is no file or folder at %1."
        showAlert(m_window.get(), QStringLiteral("KAVRO"), qtTrId("main.path_missing").arg(path));
        return;
    }
    const QString file = info.canonicalFilePath();
    connect(
        this, &KVRAppDelegate::mediaListReloaded, this,
        [this, file] {
            for (qint64 row = 0; row < m_model->count(); ++row) {
                if (QFileInfo(m_model->mediaAtIndex(row)->path()).canonicalFilePath() == file) {
                    m_ui.mediaListTableView->selectOnlyRow(row);
                    changeAndPlay();
                    return;
                }
            }
            //% "%1 is not a recording of the camera."
            showAlert(m_window.get(), QStringLiteral("KAVRO"),
                      qtTrId("main.not_a_recording").arg(QDir::toNativeSeparators(file)));
        },
        Qt::SingleShotConnection);
    openMediaDirectory(info.absolutePath());
}

void KVRAppDelegate::mediaListChanged(KVRMediaList* list)
{
    // Handed over without waiting: the list has published its rows already, and a scan that
    // waited for the main thread could hold up the window's closing.
    QMetaObject::invokeMethod(
        this,
        [this, list] {
            m_layout->setRightViewMode(KVRWindowLayout::MediaListMode);
            m_layout->updateSideViewButton();
            m_model->reloadData(*list);
            //% "No recordings in this folder"
            m_ui.mediaListTableView->setEmptyText(
                m_model->count() == 0 ? qtTrId("main.no_recordings") : QString());
            emit mediaListReloaded();
        },
        Qt::QueuedConnection);
}

void KVRAppDelegate::changeAndPlay()
{
    const qint64 selectedRow = m_ui.mediaListTableView->selectedRow();
    qCDebug(lcApp, "selectedRow=%lld,mediaIndex=%lld,isPlaying=%d,count=%lld", selectedRow,
            m_engine->mediaIndex(), int(m_player1->isPlaying()), qint64(m_model->count()));
    if (selectedRow >= 0 && selectedRow != m_engine->mediaIndex()) {
        m_engine->playAtIndex(selectedRow);
        return;
    }
    if (m_player1->state() == VLCMediaPlayerStatePaused) {
        // A player resting at the end of its file no longer seeks: open the row anew.
        if (m_player1->position() >= KVRPlaybackEngine::EndPosition) {
            m_engine->reopenCurrentRow();
            return;
        }
        m_player1->setPosition(0);
        m_player2->setPosition(0);
    }
    m_player1->play();
    if (!m_player2->media().isNull()) {
        m_player2->play();
        m_engine->syncVideoPositionDelay(0.1);
    }
}

void KVRAppDelegate::toggleFullScreen()
{
    if (m_window->isFullScreen())
        m_window->leaveFullscreen();
    else
        m_window->enterFullscreen();
}

void KVRAppDelegate::closeWindow()
{
    m_window->close();
}

bool KVRAppDelegate::eventFilter(QObject* watched, QEvent* event)
{
    if ((watched == m_ui.backgroundBox || watched == m_ui.videoContainerView) &&
        event->type() == QEvent::Resize && m_controls)
        m_controls->updatePlayInfoScale();
    // The start-up benchmark times the viewer by these lines.
    if (watched == m_ui.backgroundBox && event->type() == QEvent::Paint && !m_windowPainted) {
        m_windowPainted = true;
        qCInfo(lcApp) << "window shown";
    }
    return QObject::eventFilter(watched, event);
}

void KVRAppDelegate::die()
{
    if (m_died)
        return;
    m_died = true;
    m_ui.backgroundBox->removeEventFilter(this);
    m_ui.videoContainerView->removeEventFilter(this);
    m_engine->stopPlay();
    // The parts that drive the players go before the players do.
    delete m_telemetryDisplay;
    m_telemetryDisplay = nullptr;
    delete m_controls;
    m_controls = nullptr;
    delete m_engine;
    m_engine = nullptr;
    m_player1.reset();
    delete m_video1View;
    m_video1View = nullptr;
    m_player2.reset();
    delete m_video2View;
    m_video2View = nullptr;
}

} // namespace kavro
