#include "kvrsettingcommands.h"

#include "card/kvrdisksource.h"
#include "card/kvrtimesetupcontroller.h"
#include "settings/kvrsettingcontroller.h"

#include <QFileDialog>

namespace kavro {

KVRSettingCommands::KVRSettingCommands(QWidget* mainWindow, std::shared_ptr<KVRDiskSource> disks,
                                       QObject* parent)
    : QObject(parent), m_mainWindow(mainWindow), m_disks(std::move(disks))
{
}

KVRSettingCommands::~KVRSettingCommands() = default;

void KVRSettingCommands::readSpeedUnit()
{
    m_bMileDisplay = false;
    KVRSettingController controller({m_disks, QString(), false});
    m_bMileDisplay = (controller.filedata()->speed_disp_unit & 0xFF) != 0;
}

void KVRSettingCommands::keep(std::unique_ptr<QWidget> controller)
{
    // The window held before goes when the new one is stored.
    m_lastDialogController = std::move(controller);
}

void KVRSettingCommands::showSettingPanel()
{
    auto controller = std::make_unique<KVRSettingController>(
        KVRSettingController::Options{m_disks, QString(), true});
    KVRSettingController* window = controller.get();
    keep(std::move(controller));
    window->showWindow();
}

void KVRSettingCommands::showSettingPanelForFolder(const QString& folder)
{
    auto controller = std::make_unique<KVRSettingController>(
        KVRSettingController::Options{m_disks, folder, true});
    KVRSettingController* window = controller.get();
    keep(std::move(controller));
    window->showWindow();
}

void KVRSettingCommands::openCardFolderDialog()
{
    //% "Open Card Folder"
    QString folder =
        QFileDialog::getExistingDirectory(m_mainWindow, qtTrId("main.open_card_folder"));
    if (!folder.isEmpty())
        showSettingPanelForFolder(folder);
}

void KVRSettingCommands::showTimeSetupPanel()
{
    auto controller = std::make_unique<KVRTimeSetupController>(m_disks);
    KVRTimeSetupController* window = controller.get();
    keep(std::move(controller));
    window->windowDidLoad();
}

} // namespace kavro
