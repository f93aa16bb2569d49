#include "card/kvrformatwindowcontroller.h"

#include "card/alertsheet.h"
#include "card/cardrules.h"
#include "card/formattarget.h"
#include "card/kvrdisksource.h"
#include "card/kvrformatter.h"

#include <QApplication>
#include <QComboBox>
#include <QFutureWatcher>
#include <QGridLayout>
#include <QLabel>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimer>
#include <QtConcurrent>

namespace kavro {

namespace {

Q_LOGGING_CATEGORY(lcFormatWindow, "kavro.card.format", QtInfoMsg)

constexpr char FormattingText[] = "Formatting...";
// Disk notices come in bursts (a mount changes several objects).
constexpr int DisksChangedDelayMs = 500;

// Runs work on the thread pool and hands its result to done on the main thread. done and the
// shared owners it captures live until then, so the last owner of what the work uses is always
// let go on the main thread, even when the window that asked is gone.
template <typename T, typename Work, typename Done> void runInBackground(Work work, Done done)
{
    // Owned by the application, so that one still waiting as the program ends goes with it.
    auto* watcher = new QFutureWatcher<T>(QCoreApplication::instance());
    QObject::connect(watcher, &QFutureWatcher<T>::finished, watcher,
                     [watcher, done = std::move(done)] {
                         done(watcher->result());
                         watcher->deleteLater();
                     });
    watcher->setFuture(QtConcurrent::run(std::move(work)));
}

} // namespace

KVRFormatWindowController::KVRFormatWindowController(std::shared_ptr<KVRDiskSource> disks,
                                                     std::shared_ptr<KVRFormatter> formatter,
                                                     QWidget* opener)
    : QWidget(nullptr, Qt::Window), m_disks(std::move(disks)), m_formatter(std::move(formatter)),
      m_opener(opener)
{
    awakeFromNib();
    m_disksChangedTimer = new QTimer(this);
    m_disksChangedTimer->setSingleShot(true);
    m_disksChangedTimer->setInterval(DisksChangedDelayMs);
    connect(m_disksChangedTimer, &QTimer::timeout, this, [this] {
        m_refreshAgain = true;
        refreshIfAsked();
    });
    // The platform's disk source tells of hot-plugging; the core interface does not know it.
    auto* notifier = dynamic_cast<QObject*>(m_disks.get());
    if (notifier && notifier->metaObject()->indexOfSignal("disksChanged()") >= 0)
        connect(notifier, SIGNAL(disksChanged()), this, SLOT(disksChangedLater()));
}

// A job still running reports to the opener, or on its own.
KVRFormatWindowController::~KVRFormatWindowController() = default;

void KVRFormatWindowController::awakeFromNib()
{
    setObjectName(QStringLiteral("formatWindow"));
    //% "Format Card"
    setWindowTitle(qtTrId("setting.sdcardformat"));
    setMinimumWidth(460);

    const auto field = [this](const char* name) {
        auto* label = new QLabel(this);
        label->setObjectName(QString::fromLatin1(name));
        return label;
    };
    usbDiskCombo = new QComboBox(this);
    usbDiskCombo->setObjectName(QStringLiteral("usbDiskCombo"));
    connect(usbDiskCombo, &QComboBox::currentIndexChanged, this,
            &KVRFormatWindowController::updateSelectedDiskInfo);
    pathField = field("pathField");
    pathField->setTextInteractionFlags(Qt::TextSelectableByMouse);
    allocationUnitLabel = field("allocationUnitLabel");
    allocationUnitField = field("allocationUnitField");
    fileSystemLabel = field("fileSystemLabel");
    fileSystemField = field("fileSystemField");
    progressBar = new QProgressBar(this);
    progressBar->setObjectName(QStringLiteral("progressBar"));
    progressBar->setTextVisible(false);
    progressMessageField = field("progressMessageField");

    formatButton = new QPushButton(this);
    formatButton->setObjectName(QStringLiteral("formatButton"));
    formatButton->setAutoDefault(false);
    connect(formatButton, &QPushButton::clicked, this, &KVRFormatWindowController::onFormat);
    cancelButton = new QPushButton(this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    cancelButton->setAutoDefault(false);
    connect(cancelButton, &QPushButton::clicked, this, &KVRFormatWindowController::cancel);

    auto* layout = new QGridLayout(this);
    layout->addWidget(usbDiskCombo, 0, 0, 1, 2);
    layout->addWidget(pathField, 1, 0, 1, 2);
    layout->addWidget(allocationUnitLabel, 2, 0);
    layout->addWidget(allocationUnitField, 2, 1);
    layout->addWidget(fileSystemLabel, 3, 0);
    layout->addWidget(fileSystemField, 3, 1);
    layout->addWidget(progressBar, 4, 0, 1, 2);
    layout->addWidget(progressMessageField, 5, 0, 1, 2);
    layout->setRowMinimumHeight(4, progressBar->sizeHint().height());
    layout->setRowMinimumHeight(5, progressMessageField->sizeHint().height());
    layout->setColumnStretch(1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cancelButton);
    buttons->addWidget(formatButton);
    layout->addLayout(buttons, 6, 0, 1, 2);

    auto* close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &KVRFormatWindowController::cancel);
}

void KVRFormatWindowController::windowDidLoad()
{
    //% "Allocation unit size"
    allocationUnitLabel->setText(qtTrId("setting.format.allocation_unit_size"));
    //% "File system"
    fileSystemLabel->setText(qtTrId("setting.format.filesystem"));
    //% "Format"
    formatButton->setText(qtTrId("setting.format.format"));
    //% "Cancel"
    cancelButton->setText(qtTrId("cancel"));
    fileSystemField->setText(QStringLiteral("FAT32"));
    pathField->setText(QStringLiteral("-"));
    updateSelectedDiskInfo();
    m_stopProgressBar = true;
    progressBar->hide();
    progressMessageField->hide();

    show();
    if (QScreen* screen = this->screen()) {
        const QRect visible = screen->availableGeometry();
        const QRect frame = frameGeometry();
        move(visible.topLeft() + QPoint((visible.width() - frame.width()) / 2,
                                        (visible.height() - frame.height()) / 2));
    }
    raise();
    activateWindow();
    loadUSBVolumes();
}

QList<TKUSBDiskEntity> KVRFormatWindowController::doLoadUSBVolumes() const
{
    return m_disks ? m_disks->usbDiskEntities() : QList<TKUSBDiskEntity>();
}

void KVRFormatWindowController::loadUSBVolumes(std::function<void()> completion)
{
    bool ownsProgress = false;
    if (!m_stopProgressBar) {
        setProgressText(QString::fromLatin1(KVRFormatJob::SearchingText));
    } else {
        showProgressBar(QString::fromLatin1(KVRFormatJob::SearchingText));
        ownsProgress = true;
    }
    ++m_refreshesInFlight;
    m_refreshAgain = false;
    QPointer<KVRFormatWindowController> self(this);
    runInBackground<QList<TKUSBDiskEntity>>(
        [disks = m_disks]() mutable {
            const std::shared_ptr<KVRDiskSource> owned = std::move(disks);
            return owned ? owned->usbDiskEntities() : QList<TKUSBDiskEntity>();
        },
        [self, disks = m_disks, ownsProgress,
         completion = std::move(completion)](const QList<TKUSBDiskEntity>& found) {
            if (!self)
                return;
            --self->m_refreshesInFlight;
            const std::optional<TKUSBDiskEntity> selected = self->selectedUSBDisk();
            self->setDisks(found, selected ? selected->deviceFilePath() : QString());
            // A job started meanwhile owns the display now.
            if (ownsProgress && !self->m_formatting)
                self->hideProgressBar();
            if (completion)
                completion();
            self->refreshIfAsked();
        });
}

void KVRFormatWindowController::disksChangedLater()
{
    m_disksChangedTimer->start();
}

void KVRFormatWindowController::refreshIfAsked()
{
    // A job changes the disks itself and brings the list up to date when it ends.
    if (m_refreshAgain && isVisible() && !m_formatting && m_refreshesInFlight == 0)
        loadUSBVolumes();
}

void KVRFormatWindowController::setDisks(const QList<TKUSBDiskEntity>& disks,
                                         const QString& keepDevice)
{
    // The list and the combo box change together, so an index into one is one into the other.
    {
        const QSignalBlocker quiet(usbDiskCombo);
        m_usbDiskArray = disks;
        usbDiskCombo->clear();
        for (const TKUSBDiskEntity& disk : disks)
            usbDiskCombo->addItem(disk.displayString());
        if (!disks.isEmpty())
            usbDiskCombo->setCurrentIndex(0);
    }
    // The disk chosen before stays chosen while it is there.
    if (keepDevice.isEmpty() || !selectUSBByDevFile(keepDevice))
        updateSelectedDiskInfo();
}

std::optional<TKUSBDiskEntity> KVRFormatWindowController::selectedUSBDisk() const
{
    const int index = usbDiskCombo->currentIndex();
    if (index < 0 || index >= m_usbDiskArray.size())
        return std::nullopt;
    return m_usbDiskArray.at(index);
}

std::optional<TKUSBDiskEntity>
KVRFormatWindowController::selectUSBByDevFile(const QString& deviceFilePath)
{
    for (int i = 0; i < m_usbDiskArray.size(); ++i) {
        if (m_usbDiskArray.at(i).deviceFilePath() == deviceFilePath) {
            usbDiskCombo->setCurrentIndex(i);
            updateSelectedDiskInfo();
            return m_usbDiskArray.at(i);
        }
    }
    return std::nullopt;
}

void KVRFormatWindowController::updateSelectedDiskInfo()
{
    const std::optional<TKUSBDiskEntity> disk = selectedUSBDisk();
    if (!disk) {
        allocationUnitField->setText(QStringLiteral("128KB"));
        pathField->setText(QStringLiteral("-"));
        return;
    }
    pathField->setText(QStringLiteral("%1   %2").arg(disk->deviceFilePath(), disk->mountedPath()));
    allocationUnitField->setText(
        QStringLiteral("%1 KB").arg(clusterSizeByVolumeSizeInKB(disk->volumeSize())));
}

void KVRFormatWindowController::onFormat()
{
    if (m_formatting)
        return;
    const std::optional<TKUSBDiskEntity> disk = selectedUSBDisk();
    if (!disk) {
        //% "There is no USB drive."
        QString why = qtTrId("msg.no_usb_drive");
        if (!m_usbDiskArray.isEmpty())
            //% "Please select USB drive."
            why = qtTrId("msg.select_usb_drive");
        showAlert(this, QStringLiteral("KAVRO"), why);
        return;
    }
    if (!disk->writable()) {
        //% "The card cannot be formatted."
        showAlert(
            this, qtTrId("msg.cannot_format"),
            QStringLiteral("%1\n%2").arg(
                disk->displayString(),
                //% "The card could not be written. It may be write-protected, full or removed."
                qtTrId("msg.write_protected_disk")));
        return;
    }
    doFormat(*disk);
}

void KVRFormatWindowController::doFormat(const TKUSBDiskEntity& disk)
{
    qCInfo(lcFormatWindow) << "formatting" << disk.deviceFilePath() << disk.displayString();
    m_formatting = true;
    formatButton->setEnabled(false);
    usbDiskCombo->setEnabled(false);
    showProgressBar(QString::fromLatin1(FormattingText));

    auto job = std::make_shared<KVRFormatJob>(m_disks, m_formatter, disk);
    QPointer<KVRFormatWindowController> self(this);
    QPointer<QWidget> opener = m_opener;
    runInBackground<KVRFormatJob::Result>(
        [job, self]() mutable {
            const std::shared_ptr<KVRFormatJob> owned = std::move(job);
            return owned->run([self](const QString& text) {
                QMetaObject::invokeMethod(
                    qApp,
                    [self, text] {
                        if (self)
                            self->setProgressText(text);
                    },
                    Qt::QueuedConnection);
            });
        },
        [self, opener, job](const KVRFormatJob::Result& result) {
            formatDidFinished(self, opener, result);
        });
}

void KVRFormatWindowController::formatDidFinished(QPointer<KVRFormatWindowController> window,
                                                  QPointer<QWidget> opener,
                                                  const KVRFormatJob::Result& result)
{
    if (window) {
        window->m_formatting = false;
        window->m_refreshAgain = false;
        window->formatButton->setEnabled(true);
        window->usbDiskCombo->setEnabled(true);
        window->setDisks(result.disks, result.deviceFilePath);
        window->hideProgressBar();
    }
    // A window closed while the job ran shows nothing; its opener, if still open, tells instead.
    QWidget* host = nullptr;
    if (window && window->isVisible())
        host = window;
    else if (opener && opener->isVisible())
        host = opener;

    const QString cannotFormat = qtTrId("msg.cannot_format");
    const QString copyFail = QStringLiteral("config.bin copy fail");
    switch (result.outcome) {
    case KVRFormatJob::Outcome::Completed: {
        //% "The card was formatted."
        QMessageBox* box =
            showAlert(host, qtTrId("msg.format_complete"), result.target->displayString());
        if (host == window)
            QObject::connect(box, &QDialog::finished, window.data(),
                             &KVRFormatWindowController::cancel);
        return;
    }
    case KVRFormatJob::Outcome::SaveFailed:
        showAlert(
            host, cannotFormat,
            QStringLiteral("%1\n%2").arg(
                result.displayString,
                //% "Its settings file could not be put aside, so the card was left as it was."
                qtTrId("msg.format_config_not_saved")));
        return;
    case KVRFormatJob::Outcome::FormatFailed: {
        QString why;
        if (result.format.code == 1) {
            showAlert(host, cannotFormat,
                      QStringLiteral("%1\n%2").arg(result.displayString,
                                                   qtTrId("msg.write_protected_disk")));
            return;
        }
        if (result.format.code == ShellScriptResult::AuthorisationDismissed)
            //% "The request for administrator rights was dismissed."
            why = qtTrId("msg.format_auth_dismissed");
        else if (result.format.code == ShellScriptResult::NotAuthorised)
            //% "Administrator rights were not granted."
            why = qtTrId("msg.format_not_authorised");
        else
            why = result.format.message;
        showAlert(host, cannotFormat,
                  QStringLiteral("%1\nError:%2").arg(result.displayString, why));
        return;
    }
    case KVRFormatJob::Outcome::RestoreFailed:
    case KVRFormatJob::Outcome::DiskLost: {
        QString why;
        if (result.outcome == KVRFormatJob::Outcome::DiskLost)
            //% "The card was formatted but not found again, so no settings file was written to it."
            why = qtTrId("msg.format_card_lost");
        else if (result.savedConfigPath.isEmpty())
            why = qtTrId(qPrintable(result.error)); // the settings writer's message key
        else
            why = result.error; // the write path's own reason
        // The card's former settings are not lost: the user must know where they are.
        if (!result.savedConfigPath.isEmpty())
            //% "Its former settings file is kept in %1."
            why += '\n' + qtTrId("msg.format_copy_kept").arg(result.savedConfigPath);
        showAlert(host, copyFail, why);
        return;
    }
    }
}

void KVRFormatWindowController::cancel()
{
    close();
}

void KVRFormatWindowController::setProgressText(const QString& text)
{
    progressMessageField->setText(text);
}

void KVRFormatWindowController::showProgressBar(const QString& text)
{
    progressBar->show();
    progressMessageField->show();
    // Busy: the bar shows that work runs, not how much is left.
    progressBar->setRange(0, 0);
    m_stopProgressBar = false;
    m_progress = 0;
    setProgressText(text);
    const int generation = ++m_progressGeneration;
    QTimer::singleShot(ProgressStepMs, this, [this, generation] {
        if (generation == m_progressGeneration)
            updateProgressBar(ProgressDurationSeconds);
    });
}

void KVRFormatWindowController::updateProgressBar(double duration)
{
    progressBar->show();
    progressMessageField->show();
    m_progress += 100.0 / (duration / (ProgressStepMs / 1000.0));
    progressBar->setValue(int(m_progress));
    if (m_progress >= 100 || m_stopProgressBar) {
        progressBar->setRange(0, 100);
        progressBar->setValue(0);
        progressBar->hide();
        progressMessageField->hide();
        m_stopProgressBar = true;
        return;
    }
    const int generation = m_progressGeneration;
    QTimer::singleShot(ProgressStepMs, this, [this, generation, duration] {
        if (generation == m_progressGeneration)
            updateProgressBar(duration);
    });
}

void KVRFormatWindowController::hideProgressBar()
{
    progressBar->hide();
    progressMessageField->hide();
    m_stopProgressBar = true;
}

} // namespace kavro
