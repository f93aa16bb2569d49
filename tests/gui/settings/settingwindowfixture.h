#pragma once

// Shared helpers of the settings-window tests: cards on folders, the window opened on one and
// driven with the keys and clicks a person uses, and the record as bytes.

#include "card/kvrdisksource.h"
#include "settings/filedata.h"
#include "settings/kvrsegmentedcontrol.h"
#include "settings/kvrsettingcontroller.h"
#include "settings/kvrsettingloadingsheet.h"
#include "settings/settingfile.h"
#include "testsupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace kavro::test {

constexpr int WaitMs = 10000;

// USB volumes mounted on folders. Renaming a volume moves its folder, as a new mount would.
class FolderDisks : public KVRDiskSource
{
public:
    struct Disk
    {
        QString name;
        QString root;
    };
    QList<Disk> disks;
    QStringList renames; // "old>new interactive|quiet"
    bool refuseRename = false;

    std::optional<QString> setVolumeName(const TKUSBDiskEntity& entity, const QString& name,
                                         bool allowUserInteraction) override
    {
        renames.append(
            QStringLiteral("%1>%2 %3")
                .arg(entity.volumeName(), name, allowUserInteraction ? "interactive" : "quiet"));
        if (refuseRename)
            return QStringLiteral("org.freedesktop.UDisks2.Error.NotAuthorized: refused");
        for (Disk& disk : disks) {
            if (disk.root == entity.mountedPath()) {
                QString moved = QFileInfo(disk.root).absolutePath() + "/" + name;
                QDir().rename(disk.root, moved);
                disk = {name, moved};
            }
        }
        return std::nullopt;
    }

protected:
    QList<TKUSBDiskEntity> listUsbDiskEntities() const override
    {
        QList<TKUSBDiskEntity> list;
        for (const Disk& disk : disks)
            list.append(TKUSBDiskEntity(disk.name, QUrl::fromLocalFile(disk.root), "/dev/sdz1", {},
                                        8ull << 30, true, false, disk.root));
        return list;
    }
};

inline _FILEDATA defaultRecord()
{
    _FILEDATA record;
    makeDefaultFileData(record);
    return record;
}

inline void setField(_FILEDATA& record, const char* name, qint64 value)
{
    setFieldInteger(record, *findFileDataField(name), value);
}

inline QMessageBox* visibleAlert(QWidget* window)
{
    for (QMessageBox* box : window->findChildren<QMessageBox*>()) {
        if (box->isVisible())
            return box;
    }
    return nullptr;
}

// Return closes the alert; offscreen no window manager activates the window again, so this does.
inline void dismissAlert(QWidget* window)
{
    QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window), WaitMs);
    QTest::keyClick(visibleAlert(window), Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!visibleAlert(window), WaitMs);
    window->activateWindow();
    QApplication::setActiveWindow(window);
    QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), window, WaitMs);
}

// The window shown, active and with its first page up; null if it did not come up in time.
inline std::unique_ptr<KVRSettingController> openWindow(KVRSettingController::Options options)
{
    auto window = std::make_unique<KVRSettingController>(std::move(options));
    window->showWindow();
    // The loading sheet is window-modal: keys reach the window once it has closed. Offscreen
    // there is no window manager to give the window back its focus then.
    const bool loaded = QTest::qWaitFor(
        [&] {
            return window->lastSelectedTabIndex() == 0 && !window->isLoading() &&
                   !window->loadingSheet()->isVisible();
        },
        WaitMs);
    QApplication::setActiveWindow(window.get());
    if (!loaded || !QTest::qWaitForWindowActive(window.get()))
        return nullptr;
    return window;
}

// Saves with Ctrl+S and dismisses the success alert with Return; the window then closes.
inline void saveAndDismiss(KVRSettingController* window)
{
    QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window), WaitMs);
    QMessageBox* alert = visibleAlert(window);
    QVERIFY2(alert->informativeText() == qtTrId("msg.saved"), qPrintable(alert->text()));
    QTest::keyClick(alert, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), WaitMs);
}

inline void key(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : window;
    QTest::keyClick(target, key, modifiers);
}

inline void clickSegment(QWidget* page, const char* control, int segment)
{
    auto* segments = page->findChild<KVRSegmentedControl*>(control);
    QVERIFY2(segments, control);
    QTest::mouseClick(segments->segmentButton(segment), Qt::LeftButton);
}

} // namespace kavro::test
