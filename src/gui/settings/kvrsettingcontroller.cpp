#include "kvrsettingcontroller.h"

#include "card/alertsheet.h"
#include "card/cardrules.h"
#include "card/filepanel.h"
#include "card/kvrformatwindowcontroller.h"
#include "card/kvrhelperformatter.h"
#include "kvrsegmentedcontrol.h"
#include "kvrsettingforaudioviewcontroller.h"
#include "kvrsettingforauxviewcontroller.h"
#include "kvrsettingforbasicviewcontroller.h"
#include "kvrsettingforflashdataviewcontroller.h"
#include "kvrsettingforgpsviewcontroller.h"
#include "kvrsettingformotionviewcontroller.h"
#include "kvrsettingforvideoviewcontroller.h"
#include "kvrsettingloadingsheet.h"
#include "records/driveinfoformat.h"
#include "settings/settingfile.h"
#include "settings/timezonetable.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QHBoxLayout>
#include <QLoggingCategory>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStandardPaths>
#include <QtConcurrent>

namespace kavro {

namespace {

Q_LOGGING_CATEGORY(lcSettingWindow, "kavro.settings.window", QtInfoMsg)

const char* const TabKeys[KVRSettingController::TabCount] = {
    //% "Video"
    QT_TRID_NOOP("setting.video"),
    //% "Basic"
    QT_TRID_NOOP("setting.basic"),
    //% "GPS"
    QT_TRID_NOOP("setting.gps"),
    //% "Aux"
    QT_TRID_NOOP("setting.aux"),
    //% "Motion"
    QT_TRID_NOOP("setting.motion"),
    //% "Audio"
    QT_TRID_NOOP("setting.audio"),
    //% "Drive records"
    QT_TRID_NOOP("setting.driveinfoview"),
};

qint64 fileSize(const QString& path)
{
    QFileInfo info(path);
    return info.isFile() ? info.size() : 0;
}

} // namespace

KVRSettingController::KVRSettingController(Options options, QWidget* parent)
    : QWidget(parent, Qt::Window), m_options(std::move(options))
{
    awakeFromNib();
    makeDefaultFileData(m_FileData);
    loadSettingFile2();
}

// A read still running finds its watcher gone with the window and reports to no one.
KVRSettingController::~KVRSettingController() = default;

void KVRSettingController::awakeFromNib()
{
    setObjectName(QStringLiteral("settingWindow"));
    m_functionSegmentedControl = new KVRSegmentedControl(this);
    m_functionSegmentedControl->setObjectName(QStringLiteral("functionSegmentedControl"));
    QStringList tabs;
    for (const char* key : TabKeys)
        tabs.append(qtTrId(key));
    m_functionSegmentedControl->setLabels(tabs);
    connect(m_functionSegmentedControl, &KVRSegmentedControl::segmentClicked, this,
            &KVRSettingController::clickFunctionSegmentedControl);

    m_targetView = new QScrollArea(this);
    m_targetView->setObjectName(QStringLiteral("targetView"));
    m_targetView->setWidgetResizable(true);
    m_targetView->setFrameShape(QFrame::NoFrame);

    const auto button = [this](const QString& title, const char* name, auto action) {
        auto* pushButton = new QPushButton(title, this);
        pushButton->setObjectName(QString::fromLatin1(name));
        pushButton->setAutoDefault(false);
        connect(pushButton, &QPushButton::clicked, this, action);
        return pushButton;
    };
    //% "Format Card"
    m_sdcardFormatButton = button(qtTrId("setting.sdcardformat"), "sdcardFormatButton",
                                  &KVRSettingController::onFormat);
    //% "Disk Utility"
    m_diskUtilButton =
        button(qtTrId("setting.disk_utility"), "diskUtilButton", &KVRSettingController::onDiskUtil);
    //% "Initialise"
    m_resetButton = button(qtTrId("setting.initialize"), "resetButton",
                           &KVRSettingController::onSaveDefaultSetting);
    //% "Cancel"
    m_cancelButton = button(qtTrId("cancel"), "cancelButton", &KVRSettingController::onCloseCmd);
    //% "Save"
    m_saveButton = button(qtTrId("save"), "saveButton", &KVRSettingController::onSave);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_sdcardFormatButton);
    buttons->addWidget(m_diskUtilButton);
    buttons->addStretch(1);
    buttons->addWidget(m_resetButton);
    buttons->addWidget(m_cancelButton);
    buttons->addWidget(m_saveButton);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_functionSegmentedControl);
    layout->addWidget(m_targetView, 1);
    layout->addLayout(buttons);

    m_loadingSheet = new KVRSettingLoadingSheet(this);

    // The keys are a contract: scripts outside the tests drive the window with them.
    const auto shortcut = [this](const QKeySequence& keys, auto action) {
        auto* key = new QShortcut(keys, this);
        connect(key, &QShortcut::activated, this, action);
        connect(key, &QShortcut::activatedAmbiguously, this,
                [keys] { qCWarning(lcSettingWindow) << "ambiguous key" << keys; });
    };
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), [this] { moveTab(1); });
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), [this] { moveTab(1); });
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), [this] { moveTab(-1); });
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), [this] { moveTab(-1); });
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] { moveTab(-1); });
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_S), [this] { onSave(); });
    shortcut(QKeySequence(Qt::Key_Escape), [this] { onCloseCmd(); });

    resize(900, 700);
}

bool KVRSettingController::loadSettingFile2()
{
    findUSBVolume();
    if (m_SettingFilePath.isEmpty() || !QFileInfo::exists(m_SettingFilePath))
        return false;
    readSettingFile(m_SettingFilePath, m_FileData);
    return true;
}

bool KVRSettingController::loadSettingFile()
{
    findUSBVolume();
    if (m_SettingFilePath.isEmpty() || !QFileInfo::exists(m_SettingFilePath))
        return false;
    m_loading = true;
    m_loadingSheet->showLoading(QStringLiteral("Loading..."));
    // The read fills a copy: the record is not touched while a page could look at it.
    auto* watcher = new QFutureWatcher<_FILEDATA>(this);
    connect(watcher, &QFutureWatcher<_FILEDATA>::finished, this, [this, watcher] {
        watcher->deleteLater();
        finishLoading(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run([path = m_SettingFilePath, record = m_FileData]() mutable {
        readSettingFile(path, record);
        return record;
    }));
    return true;
}

void KVRSettingController::finishLoading(const _FILEDATA& record)
{
    m_FileData = record;
    m_loadingSheet->hideLoading();
    m_loading = false;
    changeViewController(VideoTab);
    // Without a window manager nothing gives the window its keys back once the sheet is gone.
    connect(m_loadingSheet, &QDialog::finished, this, &QWidget::activateWindow,
            Qt::SingleShotConnection);
}

void KVRSettingController::findUSBVolume()
{
    if (!m_options.cardFolder.isEmpty()) {
        // A folder is taken as the card's root, under the same size rule as a card's file.
        m_selectedUSBDisk.reset();
        QString path = QDir(m_options.cardFolder).absoluteFilePath(SettingFileName);
        m_SettingFilePath = fileSize(path) == qint64(FileDataSize) ? path : QString();
        return;
    }
    if (!m_options.disks || m_options.disks->usbDiskEntities().isEmpty()) {
        qCDebug(lcSettingWindow) << "no removable devices";
        return;
    }
    m_SettingFilePath.clear();
    m_selectedUSBDisk.reset();
    std::optional<TKUSBDiskEntity> disk = m_options.disks->findCardDisk();
    if (!disk)
        return;
    if (fileSize(QDir(disk->mountedPath()).filePath(SettingFileName)) != qint64(FileDataSize))
        return;
    const QString label = QString::fromLatin1(CardVolumeLabel);
    if (disk->volumeName() != label) {
        if (std::optional<QString> error =
                m_options.disks->setVolumeName(*disk, label, m_options.allowUserInteraction)) {
            qCDebug(lcSettingWindow).noquote() << QStringLiteral("error=%1").arg(*error);
        } else if (std::optional<TKUSBDiskEntity> renamed = m_options.disks->findCardDisk()) {
            // The volume was mounted anew under its new name.
            disk = renamed;
        }
    }
    m_SettingFilePath = QDir(disk->mountedPath()).filePath(SettingFileName);
    m_selectedUSBDisk = disk;
}

void KVRSettingController::showWindow()
{
    show();
    centreOnScreen();
    // Opened from a menu key, the keys that follow are meant for this window.
    raise();
    activateWindow();
    onInitDIalog();
}

void KVRSettingController::centreOnScreen()
{
    if (QScreen* screen = this->screen()) {
        QRect visible = screen->availableGeometry();
        QRect frame = frameGeometry();
        move(visible.topLeft() + QPoint((visible.width() - frame.width()) / 2,
                                        (visible.height() - frame.height()) / 2));
    }
}

void KVRSettingController::onInitDIalog()
{
    makeDefaultFileData(m_FileData);
    const bool reading = loadSettingFile();
    m_strVersion = QCoreApplication::applicationVersion();
    if (m_strVersion.isEmpty())
        m_strVersion = QStringLiteral(KAVRO_VERSION);
    //% "KAVRO Settings"
    const QString title = qtTrId("setting.window_title");
    if (m_SettingFilePath.isEmpty()) {
        setWindowTitle(QStringLiteral("%1[Ver %2]").arg(title, m_strVersion));
        // A new setup starts in this computer's time zone.
        m_FileData.time_gmt = findSystemTimeZoneIndex();
    } else {
        setWindowTitle(
            QStringLiteral("%1[Ver %2] : %3").arg(title, m_strVersion, m_SettingFilePath));
    }
    // With a file to read, the first page waits for it.
    if (!reading)
        changeViewController(VideoTab);
}

void KVRSettingController::clickFunctionSegmentedControl(int index)
{
    changeViewController(index);
}

void KVRSettingController::moveTab(int step)
{
    if (m_loading || m_lastSelectedTabIndex < 0)
        return;
    int index = (m_lastSelectedTabIndex + step + TabCount) % TabCount;
    m_functionSegmentedControl->setSelectedSegment(index);
    changeViewController(index);
}

void KVRSettingController::changeViewController(int index)
{
    if (index == m_lastSelectedTabIndex || index < 0 || index >= TabCount)
        return;
    if (auto* page = qobject_cast<KVRSettingControllerDelegate*>(m_targetController.data())) {
        if (std::optional<QString> message = page->validateUserInput()) {
            m_functionSegmentedControl->setSelectedSegment(m_lastSelectedTabIndex);
            showAlert(this, QStringLiteral("KAVRO"), *message);
            return;
        }
        if (!page->populate())
            return;
        page->onHide();
    }
    if (m_targetController) {
        QWidget* old = m_targetView->takeWidget();
        // The drive-records page lives as long as the window; the others are made per visit.
        if (old && old != m_driveInfoController) {
            old->deleteLater();
        } else if (old) {
            old->hide();
            old->setParent(this);
        }
    }

    KVRSettingControllerDelegate* page = nullptr;
    switch (index) {
    case VideoTab:
        page = new KVRSettingForVideoViewController;
        break;
    case BasicTab:
        page = new KVRSettingForBasicViewController;
        break;
    case GpsTab:
        page = new KVRSettingForGpsViewController;
        break;
    case AuxTab:
        page = new KVRSettingForAuxViewController;
        break;
    case MotionTab:
        page = new KVRSettingForMotionViewController;
        break;
    case AudioTab:
        page = new KVRSettingForAudioViewController;
        break;
    default:
        page = createDriveInfoController();
        break;
    }
    if (page != m_driveInfoController) {
        page->setObjectName(QString::fromLatin1(TabKeys[index]));
        page->setWindowTitle(qtTrId(TabKeys[index]));
    }
    m_targetController = page;
    m_targetView->setWidget(page);
    page->show();
    page->setMainController(this);
    page->setFileData(&m_FileData);
    m_lastSelectedTabIndex = index;
    m_functionSegmentedControl->setSelectedSegment(index);
}

KVRSettingForFlashDataViewController* KVRSettingController::createDriveInfoController()
{
    if (!m_driveInfoController) {
        auto* page = new KVRSettingForFlashDataViewController;
        page->setObjectName(QStringLiteral("setting.driveinfoview"));
        //% "Drive Records"
        page->setWindowTitle(qtTrId("setting.information"));
        page->setFlashDataFilePath(driveInfoFilePath());
        m_driveInfoController = page;
    }
    return m_driveInfoController;
}

QString KVRSettingController::driveInfoFilePath() const
{
    QString root = !m_options.cardFolder.isEmpty()
                       ? m_options.cardFolder
                       : (m_selectedUSBDisk ? m_selectedUSBDisk->mountedPath() : QString());
    if (root.isEmpty())
        return QString();
    QString path = QDir(root).absoluteFilePath(QString::fromLatin1(drv::CardFilePath));
    return QFileInfo::exists(path) ? path : QString();
}

bool KVRSettingController::populate()
{
    if (auto* page = qobject_cast<KVRSettingControllerDelegate*>(m_targetController.data()))
        page->populate();
    return true;
}

std::optional<QString> KVRSettingController::validateUserInput()
{
    if (auto* page = qobject_cast<KVRSettingControllerDelegate*>(m_targetController.data()))
        return page->validateUserInput();
    return std::nullopt;
}

std::optional<QString> KVRSettingController::cardSettingPath() const
{
    if (!m_options.cardFolder.isEmpty())
        return QDir(m_options.cardFolder).absoluteFilePath(SettingFileName);
    if (m_selectedUSBDisk) {
        QString path = QDir(m_selectedUSBDisk->mountedPath()).filePath(SettingFileName);
        if (!m_selectedUSBDisk->mountedPath().isEmpty() && QFileInfo::exists(path))
            return path;
    }
    // The card may have been pulled and put back, or another one put in, since the window opened.
    if (m_options.disks) {
        if (std::optional<TKUSBDiskEntity> card = m_options.disks->findCardDisk();
            card && !card->mountedPath().isEmpty())
            return QDir(card->mountedPath()).filePath(SettingFileName);
    }
    return std::nullopt;
}

void KVRSettingController::onSave()
{
    if (m_loading)
        return;
    if (std::optional<QString> message = validateUserInput()) {
        showAlert(this, QStringLiteral("KAVRO"), *message);
        return;
    }
    populate();
    prepareFileDataForSave(m_FileData);
    if (std::optional<QString> path = cardSettingPath()) {
        writeTo(*path);
        return;
    }
    QFileDialog* panel =
        openFilePanel(this, QFileDialog::AcceptSave, QStringLiteral("Save Settings"), QString(),
                      QString::fromLatin1(SettingFileName));
    connect(panel, &QFileDialog::fileSelected, this, &KVRSettingController::writeTo);
}

void KVRSettingController::writeTo(const QString& path)
{
    if (std::optional<QString> error = writeSettingFile(m_FileData, path)) {
        qCDebug(lcSettingWindow) << "cannot save" << path << *error;
        //% "The card could not be written. It may be write-protected, full or removed."
        showAlert(this, QStringLiteral("Warn"), qtTrId("msg.write_protected_disk"));
        return;
    }
    //% "The file was saved."
    showAlertSheet(this, path, qtTrId("msg.saved"), this, [this] { onCloseCmd(); });
}

void KVRSettingController::onCloseCmd()
{
    close();
}

void KVRSettingController::closeEvent(QCloseEvent* event)
{
    // Leaving while the card is being read would drop the first page's record.
    if (m_loading)
        event->ignore();
    else
        QWidget::closeEvent(event);
}

void KVRSettingController::onSaveDefaultSetting()
{
    makeDefaultFileData(m_FileData);
    if (auto* page = qobject_cast<KVRSettingControllerDelegate*>(m_targetController.data()))
        page->setFileData(&m_FileData);
}

void KVRSettingController::onFormat()
{
    if (!m_formatter)
        m_formatter = std::make_shared<KVRHelperFormatter>();
    auto controller =
        std::make_unique<KVRFormatWindowController>(m_options.disks, m_formatter, this);
    KVRFormatWindowController* window = controller.get();
    // The window held before goes when the new one is stored.
    m_lastDialogController = std::move(controller);
    window->windowDidLoad();
}

void KVRSettingController::onDiskUtil()
{
    for (const char* program : {"gnome-disks", "partitionmanager"}) {
        QString path = QStandardPaths::findExecutable(QString::fromLatin1(program));
        if (!path.isEmpty() && QProcess::startDetached(path, {}))
            return;
    }
    //% "No disk utility is installed. Install GNOME Disks or KDE Partition Manager."
    showAlert(this, QStringLiteral("KAVRO"), qtTrId("msg.no_disk_utility"));
}

} // namespace kavro
