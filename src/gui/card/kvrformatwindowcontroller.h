#pragma once

#include "card/kvrformatjob.h"
#include "card/tkusbdiskentity.h"

#include <QList>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace kavro {

class KVRDiskSource;
class KVRFormatter;

// The card formatting window: the USB disks in a list, the cluster size and file system the
// selected one will get, and the formatting job with its progress. There is no confirmation
// question; the job keeps the card's config.bin.
class KVRFormatWindowController : public QWidget
{
    Q_OBJECT

public:
    // The progress display ends by itself after this long when nobody hides it.
    static constexpr double ProgressDurationSeconds = 1000;
    static constexpr int ProgressStepMs = 300;

    // opener gets the job's result when this window is gone by then.
    KVRFormatWindowController(std::shared_ptr<KVRDiskSource> disks,
                              std::shared_ptr<KVRFormatter> formatter, QWidget* opener = nullptr);
    ~KVRFormatWindowController() override;

    // Shows the window centred on its screen and starts looking for disks.
    void windowDidLoad();

    std::optional<TKUSBDiskEntity> selectUSBByDevFile(const QString& deviceFilePath);
    // The disks of the last search, in the list's order; found on a background thread.
    QList<TKUSBDiskEntity> doLoadUSBVolumes() const;
    void loadUSBVolumes(std::function<void()> completion = {});
    std::optional<TKUSBDiskEntity> selectedUSBDisk() const;
    void updateSelectedDiskInfo();
    void onFormat();
    void doFormat(const TKUSBDiskEntity& disk);
    void cancel();

    void showProgressBar(const QString& text);
    void updateProgressBar(double duration);
    void hideProgressBar();

    const QList<TKUSBDiskEntity>& usbDiskArray() const { return m_usbDiskArray; }
    bool stopProgressBar() const { return m_stopProgressBar; }
    double progress() const { return m_progress; }
    bool isFormatting() const { return m_formatting; }

    // Tells the user how a job ended, on this window or, when it is gone, on its opener or on its
    // own; the window closes when the user confirms a completed job.
    static void formatDidFinished(QPointer<KVRFormatWindowController> window,
                                  QPointer<QWidget> opener, const KVRFormatJob::Result& result);

private slots:
    // The disk service saw a disk come, go or change: the list is looked at again shortly.
    void disksChangedLater();

private:
    void awakeFromNib();
    void setDisks(const QList<TKUSBDiskEntity>& disks, const QString& keepDevice);
    void setProgressText(const QString& text);
    void refreshIfAsked();

    std::shared_ptr<KVRDiskSource> m_disks;
    std::shared_ptr<KVRFormatter> m_formatter;
    QPointer<QWidget> m_opener;
    QList<TKUSBDiskEntity> m_usbDiskArray;
    bool m_stopProgressBar = true;
    double m_progress = 0;
    bool m_formatting = false;
    int m_refreshesInFlight = 0;
    bool m_refreshAgain = false;
    // Each shown progress display counts its own steps; a step of one hidden since stops there.
    int m_progressGeneration = 0;
    QTimer* m_disksChangedTimer = nullptr;

    QComboBox* usbDiskCombo = nullptr;
    QLabel* allocationUnitField = nullptr;
    QLabel* fileSystemField = nullptr;
    QLabel* pathField = nullptr;
    QLabel* allocationUnitLabel = nullptr;
    QLabel* fileSystemLabel = nullptr;
    QPushButton* formatButton = nullptr;
    QPushButton* cancelButton = nullptr;
    QProgressBar* progressBar = nullptr;
    QLabel* progressMessageField = nullptr;
};

} // namespace kavro
