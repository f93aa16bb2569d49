#pragma once

#include "card/kvrdisksource.h"
#include "card/tkusbdiskentity.h"
#include "settings/filedata.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class QAbstractButton;
class QPushButton;
class QScrollArea;

namespace kavro {

class KVRFormatter;
class KVRSegmentedControl;
class KVRSettingControllerDelegate;
class KVRSettingForFlashDataViewController;
class KVRSettingLoadingSheet;

// The settings window: finds the camera's card, reads its config.bin into one record, shows one
// page of it at a time under a row of tabs, checks and collects a page when the user leaves it or
// saves, and writes the file back with its checksum.
class KVRSettingController : public QWidget
{
    Q_OBJECT

public:
    static constexpr int TabCount = 7;
    enum Tab
    {
        VideoTab,
        BasicTab,
        GpsTab,
        AuxTab,
        MotionTab,
        AudioTab,
        DriveInfoTab
    };

    struct Options
    {
        std::shared_ptr<KVRDiskSource> disks;
        // Not empty: this folder stands for the card's root, and no disk is looked for.
        QString cardFolder;
        // False at start-up: the system must ask for no password before the main window shows.
        bool allowUserInteraction = true;
    };

    // Builds the window (not shown), fills the record with the defaults and, when the card holds
    // a settings file, reads it at once.
    explicit KVRSettingController(Options options, QWidget* parent = nullptr);
    ~KVRSettingController() override;

    // Shows the window centred on its screen and prepares it: the record is read again in the
    // background and the Video page appears once it is there.
    void showWindow();

    bool loadSettingFile2();
    bool loadSettingFile();
    void findUSBVolume();
    const _FILEDATA* filedata() const { return &m_FileData; }

    void onInitDIalog();
    void changeViewController(int index);
    bool populate();
    std::optional<QString> validateUserInput();
    void onSave();
    void onCloseCmd();
    void onSaveDefaultSetting();
    void onFormat();
    // What the formatting window formats with; by default the privileged helper.
    void setFormatter(std::shared_ptr<KVRFormatter> formatter)
    {
        m_formatter = std::move(formatter);
    }
    void onDiskUtil();
    KVRSettingForFlashDataViewController* createDriveInfoController();

    // The path the drive-records page is to read, empty when the card has none.
    QString driveInfoFilePath() const;

    const QString& settingFilePath() const { return m_SettingFilePath; }
    const std::optional<TKUSBDiskEntity>& selectedUSBDisk() const { return m_selectedUSBDisk; }
    int lastSelectedTabIndex() const { return m_lastSelectedTabIndex; }
    // The formatting window opened last, kept until the next one or this window goes.
    QWidget* lastDialogController() const { return m_lastDialogController.get(); }
    QWidget* targetController() const { return m_targetController; }
    KVRSegmentedControl* functionSegmentedControl() const { return m_functionSegmentedControl; }
    KVRSettingLoadingSheet* loadingSheet() const { return m_loadingSheet; }
    // True from the start of the background read until the first page shows the record.
    bool isLoading() const { return m_loading; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void awakeFromNib();
    void clickFunctionSegmentedControl(int index);
    void moveTab(int step);
    void centreOnScreen();
    void finishLoading(const _FILEDATA& record);
    void writeTo(const QString& path);
    std::optional<QString> cardSettingPath() const;

    Options m_options;
    _FILEDATA m_FileData;
    QString m_SettingFilePath;
    std::optional<TKUSBDiskEntity> m_selectedUSBDisk;
    QString m_strVersion;
    int m_lastSelectedTabIndex = -1;
    QPointer<QWidget> m_targetController;
    QScrollArea* m_targetView = nullptr;
    KVRSettingForFlashDataViewController* m_driveInfoController = nullptr;
    KVRSegmentedControl* m_functionSegmentedControl = nullptr;
    QPushButton* m_sdcardFormatButton = nullptr;
    QPushButton* m_diskUtilButton = nullptr;
    QPushButton* m_resetButton = nullptr;
    QPushButton* m_saveButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
    KVRSettingLoadingSheet* m_loadingSheet = nullptr;
    bool m_loading = false;
    std::shared_ptr<KVRFormatter> m_formatter;
    std::unique_ptr<QWidget> m_lastDialogController;
};

} // namespace kavro
