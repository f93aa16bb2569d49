#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class QWidget;

namespace kavro {

class KVRDiskSource;

// The main window's way to the card windows: the settings window (on the card, or on a folder
// that stands for one), the clock window, and the start-up read of the camera's speed unit. Only
// the window opened last is kept; opening another releases it.
class KVRSettingCommands : public QObject
{
    Q_OBJECT

public:
    KVRSettingCommands(QWidget* mainWindow, std::shared_ptr<KVRDiskSource> disks,
                       QObject* parent = nullptr);
    ~KVRSettingCommands() override;

    // Reads the speed unit from the card's settings without showing a window and without any
    // password dialog; a card found with another name is renamed as the settings window does.
    void readSpeedUnit();
    bool mileDisplay() const { return m_bMileDisplay; }

    void showSettingPanel();
    // The settings window on a folder taken as the card's root.
    void showSettingPanelForFolder(const QString& folder);
    void openCardFolderDialog();
    void showTimeSetupPanel();

    QWidget* lastDialogController() const { return m_lastDialogController.get(); }

private:
    void keep(std::unique_ptr<QWidget> controller);

    QPointer<QWidget> m_mainWindow;
    std::shared_ptr<KVRDiskSource> m_disks;
    std::unique_ptr<QWidget> m_lastDialogController;
    bool m_bMileDisplay = false;
};

} // namespace kavro
