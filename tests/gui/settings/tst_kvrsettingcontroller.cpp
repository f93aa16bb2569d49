// The settings window as a whole: which card and file it takes, where it saves, what it refuses,
// the keys of its contract, and a save whose card is pulled out at the worst moment.

#include "settingwindowfixture.h"

#include "fusecard.h"
#include "kvrsettingcommands.h"
#include "resources/translations/infoplisttranslator.h"

#include <dlfcn.h>

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QSlider>

using namespace kavro;
using namespace kavro::test;

namespace {

_FILEDATA recordWithZone(int zone)
{
    _FILEDATA record = defaultRecord();
    record.time_gmt = zone;
    record.speed_disp_unit = 1;
    prepareFileDataForSave(record);
    return record;
}

// Runs once, just before the next rename onto a config.bin.
std::function<void()> g_beforeRename;

} // namespace

// Stands in for the C library's rename in this program: the product calls it the usual way.
extern "C" int rename(const char* from, const char* to)
{
    if (g_beforeRename && QByteArray(to).endsWith("/config.bin"))
        std::exchange(g_beforeRename, {})();
    using Rename = int (*)(const char*, const char*);
    static const auto real = reinterpret_cast<Rename>(::dlsym(RTLD_NEXT, "rename"));
    return real(from, to);
}

class TestKVRSettingController : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolatedConfigHome();
        qputenv("TZ", "UTC"); // the computer's zone is 00:00, index 14
        installInfoPlistTranslator(QStringLiteral("en"));
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_disks = std::make_shared<FolderDisks>();
    }

    void settingFileOfAnotherSize_data()
    {
        QTest::addColumn<int>("size"); // -1: no config.bin
        QTest::newRow("429 bytes") << 429;
        QTest::newRow("no file") << -1;
    }

    // A file of another size is not read: the window starts from the defaults in the computer's
    // zone, names no file, and saving writes a whole record over it. A 428-byte file is named and
    // kept in the pages' round trip.
    void settingFileOfAnotherSize()
    {
        QFETCH(int, size);
        if (size >= 0)
            QVERIFY(writeFile(cardFile(), fileDataBytes(recordWithZone(5)).leftJustified(size)));
        auto window = openWindow({nullptr, m_dir->path(), true});
        QVERIFY(window);
        QVERIFY(!window->windowTitle().contains(cardFile()));
        QVERIFY(window->windowTitle().contains("[Ver "));
        saveAndDismiss(window.get());
        QByteArray saved = readFile(cardFile());
        QCOMPARE(saved.size(), 428);
        QCOMPARE(u32At(saved, 168), 14u);
        QCOMPARE(u32At(saved, 164), 0u);
    }

    void cardAmongDisks_data()
    {
        QTest::addColumn<QStringList>("disks"); // NAME, or NAME- for a card without config.bin
        QTest::addColumn<bool>("refuseRename");
        QTest::addColumn<QString>("folder"); // where the window reads; empty: nowhere
        QTest::addColumn<QStringList>("renames");
        QTest::newRow("KAVRO listed second")
            << QStringList{"CARD", "KAVRO"} << false << "KAVRO" << QStringList{};
        QTest::newRow("KAVRO without file wins, then nothing to read")
            << QStringList{"CARD", "KAVRO-"} << false << "" << QStringList{};
        QTest::newRow("other name renamed")
            << QStringList{"CARD"} << false << "KAVRO" << QStringList{"CARD>KAVRO interactive"};
        // Each look for the card (when made, when shown) tries again.
        QTest::newRow("rename refused")
            << QStringList{"CARD"} << true << "CARD"
            << QStringList{"CARD>KAVRO interactive", "CARD>KAVRO interactive"};
    }

    void cardAmongDisks()
    {
        QFETCH(QStringList, disks);
        QFETCH(bool, refuseRename);
        QFETCH(QString, folder);
        QFETCH(QStringList, renames);
        for (const QString& disk : disks)
            addDisk(disk.chopped(disk.endsWith('-')), !disk.endsWith('-'));
        m_disks->refuseRename = refuseRename;
        auto window = openWindow({m_disks, QString(), true});
        QVERIFY(window);
        QCOMPARE(m_disks->renames, renames);
        QString expected = folder.isEmpty() ? QString() : m_dir->filePath(folder + "/config.bin");
        QCOMPARE(window->settingFilePath(), expected);
        QCOMPARE(window->windowTitle().endsWith(" : " + expected), !folder.isEmpty());
    }

    void startUpReadsSpeedUnitQuietly()
    {
        KVRSettingCommands none(nullptr, m_disks);
        none.readSpeedUnit();
        QVERIFY(!none.mileDisplay());

        addDisk("CARD", true); // speed_disp_unit 1
        KVRSettingCommands commands(nullptr, m_disks);
        commands.readSpeedUnit();
        QVERIFY(commands.mileDisplay());
        QCOMPARE(m_disks->renames, QStringList{"CARD>KAVRO quiet"});
    }

    void newWindowReleasesTheOldOne_data()
    {
        QTest::addColumn<bool>("clock");
        QTest::addColumn<QString>("window");
        QTest::newRow("settings") << false << "settingWindow";
        QTest::newRow("clock") << true << "timeSetupWindow";
    }

    void newWindowReleasesTheOldOne()
    {
        QFETCH(bool, clock);
        QFETCH(QString, window);
        KVRSettingCommands commands(nullptr, m_disks);
        const auto open = [&] {
            if (clock)
                commands.showTimeSetupPanel();
            else
                commands.showSettingPanelForFolder(m_dir->path());
        };
        open();
        QPointer<QWidget> first = commands.lastDialogController();
        QVERIFY(first && first->isVisible());
        QCOMPARE(first->objectName(), window);
        open();
        QVERIFY(!first);
        QVERIFY(commands.lastDialogController()->isVisible());
    }

    void invalidThresholdKeepsThePage()
    {
        QVERIFY(writeFile(cardFile(), fileDataBytes(recordWithZone(5))));
        const QByteArray before = readFile(cardFile());
        auto window = openWindow({nullptr, m_dir->path(), true});
        QVERIFY(window);
        QTest::keyClick(window.get(), Qt::Key_PageDown, Qt::ControlModifier);
        QWidget* basic = window->targetController();
        clickSegment(basic, "gsensorSensitivityDrivingSeg", 5);
        auto* x = basic->findChild<QLineEdit*>("gsensorSensitivityThresholdXDrivingField");
        x->selectAll();
        QTest::keyClicks(x, "abc");

        // By key, by click on another tab, and by saving: the message, the page stays.
        const QList<std::function<void()>> attempts = {
            [&] { key(window.get(), Qt::Key_PageDown, Qt::ControlModifier); },
            [&] {
                QTest::mouseClick(window->functionSegmentedControl()->segmentButton(3),
                                  Qt::LeftButton);
            },
            [&] { key(window.get(), Qt::Key_S, Qt::ControlModifier); },
        };
        for (const auto& attempt : attempts) {
            attempt();
            QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
            QMessageBox* alert = visibleAlert(window.get());
            QCOMPARE(alert->text(), QString("KAVRO"));
            QCOMPARE(alert->informativeText(), qtTrId("msg.input_value_invalid_format"));
            dismissAlert(window.get());
            QCOMPARE(window->lastSelectedTabIndex(), 1);
            QCOMPARE(window->functionSegmentedControl()->selectedSegment(), 1);
            QCOMPARE(window->targetController(), basic);
            QTRY_COMPARE_WITH_TIMEOUT(window->focusWidget(), x, WaitMs);
        }
        QCOMPARE(readFile(cardFile()), before);
        // Out of range is refused as well; a value in range goes through in the pages' test.
        x->selectAll();
        QTest::keyClicks(x, "1.51");
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
        QCOMPARE(visibleAlert(window.get())->informativeText(),
                 qtTrId("msg.gsensor_outofrange_fmt").arg(0.05).arg(1.5));
        dismissAlert(window.get());
    }

    void cardShareBelowTwentyKeepsThePage()
    {
        auto window = openWindow({nullptr, m_dir->path(), true});
        QVERIFY(window);
        QTest::mouseClick(window->functionSegmentedControl()->segmentButton(3), Qt::LeftButton);
        auto* slider = window->targetController()->findChild<QSlider*>("memeryRatioSlider");
        slider->setFocus();
        for (int step = 0; step < 6; ++step) // 7 -> 1
            QTest::keyClick(slider, Qt::Key_Left);
        key(window.get(), Qt::Key_Tab, Qt::ControlModifier);
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
        QCOMPARE(visibleAlert(window.get())->informativeText(), qtTrId("msg.sdcard_ratio_too_low"));
        QCOMPARE(window->lastSelectedTabIndex(), 3);
    }

    void initialiseThenCancelOrSave()
    {
        _FILEDATA record = recordWithZone(5);
        QVERIFY(writeFile(cardFile(), fileDataBytes(record)));
        auto window = openWindow({nullptr, m_dir->path(), true});
        QVERIFY(window);
        QTest::mouseClick(window->findChild<QPushButton*>("resetButton"), Qt::LeftButton);
        key(window.get(), Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), WaitMs);
        QCOMPARE(readFile(cardFile()), fileDataBytes(record));

        window = openWindow({nullptr, m_dir->path(), true});
        QVERIFY(window);
        QTest::mouseClick(window->findChild<QPushButton*>("resetButton"), Qt::LeftButton);
        saveAndDismiss(window.get());
        _FILEDATA defaults = defaultRecord(); // +09:00 whatever the computer's zone
        prepareFileDataForSave(defaults);
        QCOMPARE(readFile(cardFile()), fileDataBytes(defaults));
    }

    // Without a card the user picks the file; a card put in while the window is open is where the
    // save goes, and one pulled out is not.
    void saveTargetFollowsTheCards()
    {
        auto window = openWindow({m_disks, QString(), true});
        QVERIFY(window);
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        QFileDialog* panel = savePanel(window.get());
        QVERIFY(panel);
        QCOMPARE(panel->windowTitle(), QString("Save Settings"));
        panel->reject();
        QTRY_VERIFY_WITH_TIMEOUT(!savePanel(window.get()), WaitMs);
        QVERIFY(window->isVisible());

        const QString chosen = m_dir->filePath("chosen.bin");
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        panel = savePanel(window.get());
        QVERIFY(panel);
        panel->selectFile(chosen);
        static_cast<QDialog*>(panel)->accept();
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
        QCOMPARE(visibleAlert(window.get())->text(), chosen);
        QTest::keyClick(visibleAlert(window.get()), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), WaitMs);
        QCOMPARE(readFile(chosen).size(), 428);

        // A card without a settings file arrives while a window is open.
        window = openWindow({m_disks, QString(), true});
        QVERIFY(window);
        addDisk("KAVRO", false);
        saveAndDismiss(window.get());
        QCOMPARE(readFile(m_dir->filePath("KAVRO/config.bin")).size(), 428);

        // The card is pulled out before the save: the user is asked again.
        window = openWindow({m_disks, QString(), true});
        QVERIFY(window);
        QCOMPARE(window->settingFilePath(), m_dir->filePath("KAVRO/config.bin"));
        m_disks->disks.clear();
        QDir(m_dir->filePath("KAVRO")).removeRecursively();
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(savePanel(window.get()));
        QVERIFY(!QFileInfo::exists(m_dir->filePath("KAVRO/config.bin")));
    }

    // The new content is on the card beside the old file, and only the rename is left.
    void cardPulledBeforeTheRenameKeepsTheOldFile()
    {
        const QString stage = m_dir->filePath("stage"), mount = m_dir->filePath("mnt");
        const QString image = m_dir->filePath("card.img");
        _FILEDATA record = defaultRecord();
        prepareFileDataForSave(record);
        const QByteArray before = fileDataBytes(record);
        QVERIFY(QDir().mkpath(stage) && writeFile(stage + "/config.bin", before));
        FuseCard card;
        QString error;
        QVERIFY2(card.insert(image, stage, 2, mount, &error), qPrintable(error));

        auto window = openWindow({nullptr, mount, true});
        QVERIFY(window);
        clickSegment(window->targetController(), "vid_brightness", 0);
        g_beforeRename = [&card] { card.pull(); };
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!g_beforeRename); // it ran
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
        QCOMPARE(visibleAlert(window.get())->text(), QString("Warn"));
        QCOMPARE(visibleAlert(window.get())->informativeText(), qtTrId("msg.write_protected_disk"));
        dismissAlert(window.get());
        QVERIFY(window->isVisible());
        // Nothing landed on the computer's own disk where the card was.
        QVERIFY(QDir(mount).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));

        QVERIFY2(card.mount(image, mount, &error), qPrintable(error));
        QCOMPARE(readFile(mount + "/config.bin"), before);
        // The copy written before the pull can't be taken off a card that is gone: it stays, hidden
        // under a name the camera does not read.
        QStringList left = QDir(mount).entryList(QDir::Files | QDir::Hidden);
        left.removeOne("KAVRO"); // the volume label, which fusefat lists as a file
        QCOMPARE(left.size(), 2);
        QCOMPARE(left.last().toLower(), "config.bin");
        QVERIFY2(left.first().startsWith(".config.bin."), qPrintable(left.first()));
    }

    void loadingSheetClosesSoonAfterTheRead()
    {
        QVERIFY(writeFile(cardFile(), fileDataBytes(recordWithZone(5))));
        KVRSettingController window({nullptr, m_dir->path(), true});
        QElapsedTimer clock;
        clock.start();
        window.showWindow();
        QVERIFY(window.loadingSheet()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!window.loadingSheet()->isVisible(), WaitMs);
        QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(window.lastSelectedTabIndex(), 0);
        QCOMPARE(window.driveInfoFilePath(), QString());
        QVERIFY(makeFiles(m_dir->path(), {"DrvInfo/kavro_000.drv"}));
        QCOMPARE(window.driveInfoFilePath(), m_dir->filePath("DrvInfo/kavro_000.drv"));
        // The tab already shown is not rebuilt.
        QWidget* page = window.targetController();
        QTest::mouseClick(window.functionSegmentedControl()->segmentButton(0), Qt::LeftButton);
        QCOMPARE(window.targetController(), page);
    }

    // GNOME Disks first, else KDE Partition Manager, else the user is told.
    void diskUtilityStartsTheDesktopsTool()
    {
        const QByteArray path = qgetenv("PATH");
        auto restore = qScopeGuard([&] { qputenv("PATH", path); });
        const QString bin = m_dir->filePath("bin");
        QVERIFY(QDir().mkpath(bin));
        const QString started = m_dir->filePath("started");
        QVERIFY(writeFile(bin + "/partitionmanager",
                          "#!/bin/sh\necho partitionmanager > " + started.toUtf8() + "\n"));
        QFile::setPermissions(bin + "/partitionmanager", QFile::ExeOwner | QFile::ReadOwner);
        qputenv("PATH", bin.toUtf8());
        KVRSettingController window({nullptr, m_dir->path(), true});
        window.onDiskUtil();
        QTRY_COMPARE_WITH_TIMEOUT(readFile(started), QByteArray("partitionmanager\n"), WaitMs);
        QVERIFY(!visibleAlert(&window));

        qputenv("PATH", m_dir->filePath("nothing").toUtf8());
        window.show();
        window.onDiskUtil();
        QVERIFY(visibleAlert(&window));
        QCOMPARE(visibleAlert(&window)->informativeText(), qtTrId("msg.no_disk_utility"));
    }

private:
    static QFileDialog* savePanel(QWidget* window)
    {
        for (QFileDialog* panel : window->findChildren<QFileDialog*>("savePanel")) {
            if (panel->isVisible())
                return panel;
        }
        return nullptr;
    }
    QString cardFile() const { return m_dir->filePath("config.bin"); }

    // A disk on a folder of its own; with a file, that file is a record with the miles unit.
    void addDisk(const QString& name, bool withFile)
    {
        QString root = m_dir->filePath(name);
        QDir().mkpath(root);
        if (withFile)
            QVERIFY(writeFile(root + "/config.bin", fileDataBytes(recordWithZone(5))));
        m_disks->disks.append({name, root});
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::shared_ptr<FolderDisks> m_disks;
};

QTEST_MAIN(TestKVRSettingController)
#include "tst_kvrsettingcontroller.moc"
