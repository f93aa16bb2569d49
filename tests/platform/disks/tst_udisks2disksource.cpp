// Disk discovery through the real QtDBus code against the UDisks2 stand-in on a private bus, with
// FAT32 images mounted by fusefat: listing, hot-plug, the volume rename, the clock window's file
// onto the image and the format window.

#include "disks/udisks2disksource.h"
#include "resources/translations/infoplisttranslator.h"

#include "card/formattarget.h"
#include "card/kvrformatter.h"
#include "card/kvrformatwindowcontroller.h"
#include "card/kvrtimesetupcontroller.h"

#include "settings/kvrsettingcontroller.h"
#include "settings/settingfile.h"
#include "testsupport.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeEdit>

using namespace kavro;

namespace {

constexpr int WaitMs = 20000;

bool tool(const QString& program, const QStringList& arguments, QByteArray* out = nullptr)
{
    test::ToolResult result = test::runProgram(program, arguments, 30000);
    if (out)
        *out = result.out;
    return !result.crashed && result.exitCode == 0;
}

_FILEDATA milesRecord()
{
    _FILEDATA record;
    makeDefaultFileData(record);
    record.speed_disp_unit = 1;
    prepareFileDataForSave(record);
    return record;
}

// Formats the image that stands for a device with the helper's own mkfs.fat command line, or
// runs a script in its place.
class ImageFormatter : public KVRFormatter
{
public:
    ImageFormatter(QString images, QString script)
        : m_images(std::move(images)), m_script(std::move(script))
    {
    }

    ShellScriptResult format(const TKUSBDiskEntity& disk, int sectorsPerCluster) override
    {
        if (!m_script.isEmpty())
            return runShellScript(m_script, false);
        const QString image = QDir(m_images).filePath(QFileInfo(disk.deviceFilePath()).fileName() +
                                                      QStringLiteral(".img"));
        QStringList quoted;
        for (const QString& argument :
             mkfsFatArguments(image, sectorsPerCluster, disk.mediaWhole()))
            quoted.append('\'' + argument + '\'');
        ShellScriptResult result =
            runShellScript(QStringLiteral("mkfs.fat ") + quoted.join(' '), false);
        // Looked at before the card is mounted again.
        formatted = test::cardLayoutProblem(image, sectorsPerCluster);
        return result;
    }

    QString formatted = QStringLiteral("not formatted");

private:
    QString m_images;
    QString m_script;
};

} // namespace

class TestUDisks2DiskSource : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        test::isolatedConfigHome();
        installInfoPlistTranslator(QStringLiteral("en"));
        for (const char* program :
             {"dbus-daemon", "fusefat", "fusermount", "mkfs.fat", "fsck.fat", "fatlabel", "mcopy"})
            QVERIFY2(!QStandardPaths::findExecutable(program).isEmpty(), program);
        QVERIFY2(QFileInfo::exists("/dev/fuse"), "fusefat needs /dev/fuse");
        QVERIFY(m_dir.isValid());
        m_bus.start(QStringLiteral("dbus-daemon"), {"--session", "--nofork", "--print-address=1"});
        QVERIFY(m_bus.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(m_bus.canReadLine(), WaitMs);
        m_address = QString::fromLatin1(m_bus.readLine().trimmed());
        m_connection = std::make_unique<QDBusConnection>(
            QDBusConnection::connectToBus(m_address, QStringLiteral("test")));
        QVERIFY(m_connection->isConnected());
    }

    // Before the service is there: no removable devices, at once, and the format window's empty
    // state, whose button says so.
    void noServiceMeansNoDisks()
    {
        UDisks2DiskSource disks(*m_connection);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(disks.usbDiskEntities().isEmpty());
        QVERIFY(!disks.findCardDisk());
        QVERIFY(clock.elapsed() < UDisks2DiskSource::CallTimeoutMs);
        UDisks2DiskSource noBus(QDBusConnection(QStringLiteral("never connected")));
        QVERIFY(noBus.usbDiskEntities().isEmpty());

        KVRFormatWindowController window(std::make_shared<UDisks2DiskSource>(*m_connection),
                                         nullptr);
        window.windowDidLoad();
        QTRY_VERIFY_WITH_TIMEOUT(window.stopProgressBar(), WaitMs);
        QStringList shown;
        for (const char* field : {"allocationUnitField", "pathField", "fileSystemField"})
            shown.append(window.findChild<QLabel*>(field)->text());
        QCOMPARE(shown, (QStringList{"128KB", "-", "FAT32"}));
        QTest::mouseClick(window.findChild<QPushButton*>("formatButton"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(window.findChild<QMessageBox*>(), WaitMs);
        const QMessageBox* box = window.findChild<QMessageBox*>();
        QCOMPARE(box->text() + ": " + box->informativeText(), "KAVRO: There is no USB drive.");
    }

    void startStandIn()
    {
        m_mounts = m_dir.filePath("media");
        QDir().mkpath(m_mounts);
        m_standIn.start(QStringLiteral(KAVRO_STANDIN_PATH), {m_address, m_mounts});
        QVERIFY(m_standIn.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(m_log.append(m_standIn.readAllStandardOutput()).contains("ready"),
                                 WaitMs);
    }

    // A card slot in the computer is left out; a card without a partition table is the whole
    // medium. Cards coming and going are the format window's test.
    void listsUsbVolumes()
    {
        UDisks2DiskSource disks(*m_connection);
        const QString mounted = addCard("sdk1", "CARD", "usb", false, false);
        const QString readOnly = addCard("sdm1", "RO", "usb", true, true);
        addCard("mmcblk0p1", "SLOT", "sdio", false, false);

        QStringList listed;
        for (const TKUSBDiskEntity& card : disks.usbDiskEntities())
            listed.append(QStringLiteral("%1 %2 %3 <%4> %5 w%6 whole%7 %8")
                              .arg(card.volumeName(), card.mountedPath(), card.deviceFilePath(),
                                   card.deviceModel())
                              .arg(card.volumeSize())
                              .arg(card.writable())
                              .arg(card.mediaWhole())
                              .arg(card.key()));
        const QString blocks = "/org/freedesktop/UDisks2/block_devices/";
        QCOMPARE(listed,
                 QStringList(
                     {"CARD " + mounted + " /dev/sdk1 <Generic Card Reader> 41943040 w1 whole0 " +
                          blocks + "sdk1",
                      "RO " + readOnly + " /dev/sdm1 <Generic Card Reader> 41943040 w0 whole1 " +
                          blocks + "sdm1"}));
        QVERIFY(QFileInfo::exists(mounted + "/config.bin"));
        removeCard("mmcblk0p1");
        removeCard("sdm1");
    }

    // The window found the card under another name: it is renamed without asking for a
    // password, mounted anew and read from the new path; saving there is the window's own test.
    // The stand-in refuses a label on a mounted volume, as the daemon does, so the rename must
    // unmount first.
    void settingsWindowRenamesTheCard()
    {
        auto disks = std::make_shared<UDisks2DiskSource>(*m_connection);

        KVRSettingController window({disks, QString(), false});
        // The stand-in mounts a card under the label it reads from the image.
        const QString renamed = m_mounts + "/KAVRO";
        QCOMPARE(window.settingFilePath(), renamed + "/config.bin");
        QCOMPARE(window.filedata()->speed_disp_unit, 1u);
        QTRY_VERIFY_WITH_TIMEOUT(m_log.append(m_standIn.readAllStandardOutput())
                                     .contains("SetLabel sdk1 no_user_interaction=true"),
                                 WaitMs);

        removeCard("sdk1");
    }

    // The card holding timeset.cfg is written without a save panel, keeping the longer file's
    // tail. Which card holds it is the card rules' test.
    void clockFileOnTheCard()
    {
        const QString clockFile = m_dir.filePath("sdq1.cfg");
        QVERIFY(test::writeFile(clockFile, "2020/01/01 00:00:00 tail\n"));
        const QString mounted = addCard("sdq1", "CLOCK", "usb", false, false, clockFile);
        QVERIFY(!mounted.isEmpty());

        KVRTimeSetupController window(std::make_shared<UDisks2DiskSource>(*m_connection));
        QCOMPARE(window.settingFilePath(), mounted + "/timeset.cfg");
        window.windowDidLoad();
        window.findChild<QCalendarWidget*>("datePicker")->setSelectedDate(QDate(2027, 3, 5));
        auto* time = window.findChild<QTimeEdit*>("timePicker");
        time->setFocus();
        time->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClicks(time, "070409");
        QTest::mouseClick(window.findChild<QPushButton*>("saveButton"), Qt::LeftButton);
        // Without a panel the confirmation follows the write; what it says is the window's test.
        QTRY_VERIFY_WITH_TIMEOUT(window.findChild<QMessageBox*>(), WaitMs);
        QCOMPARE(test::readFile(mounted + "/timeset.cfg"), "2027/03/05 07:04:09 tail\n");
        removeCard("sdq1");
    }

    // A card coming or going refreshes the list; the chosen one stays chosen while it is there.
    void formatWindowKeepsTheChoice()
    {
        QVERIFY(!addCard("sdu1", "FIRST", "usb", false, false).isEmpty());
        QVERIFY(!addCard("sdv1", "SECOND", "usb", false, false).isEmpty());
        KVRFormatWindowController window(std::make_shared<UDisks2DiskSource>(*m_connection),
                                         nullptr);
        window.windowDidLoad();
        QTRY_VERIFY_WITH_TIMEOUT(window.usbDiskArray().size() == 2 && window.stopProgressBar(),
                                 WaitMs);
        auto* combo = window.findChild<QComboBox*>("usbDiskCombo");
        QCOMPARE(combo->currentIndex(), 0);
        combo->setCurrentIndex(1);
        QVERIFY(window.findChild<QLabel*>("pathField")->text().startsWith("/dev/sdv1   "));
        QVERIFY(!addCard("sdt1", "THIRD", "usb", false, false).isEmpty()); // listed first
        QTRY_VERIFY_WITH_TIMEOUT(window.usbDiskArray().size() == 3, WaitMs);
        QCOMPARE(window.selectedUSBDisk()->deviceFilePath(), QString("/dev/sdv1"));
        QCOMPARE(combo->currentText(), window.selectedUSBDisk()->displayString());
        removeCard("sdv1");
        QTRY_VERIFY_WITH_TIMEOUT(window.usbDiskArray().size() == 2, WaitMs);
        QCOMPARE(window.selectedUSBDisk()->deviceFilePath(), QString("/dev/sdt1"));
        removeCard("sdt1");
        removeCard("sdu1");
    }

    void formatThroughTheWindow_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<QString>("script"); // runs instead of mkfs.fat
        QTest::addColumn<bool>("reopen");    // the window closed and opened anew during the job
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("informative"); // a part of it
        QTest::addColumn<int>("sectors");         // 0: the card must be left as it was
        // config.bin afterwards: "before", "defaults" (there was none), or "kept" beside the card
        QTest::addColumn<QString>("onCard");
        const qint64 gib = 1ll << 30, small = 64ll << 20;
        const QString done = "The card was formatted.", cannot = "The card cannot be formatted.";
        QTest::newRow("5 GiB, window replaced during the job")
            << "sdg1" << 5 * gib << false << "" << true << done << "[5.0 GB] KAVRO" << 32
            << "before";
        // fusefat cannot write to 64 KB clusters: the restore fails, and the copy is named.
        QTest::newRow("32 GiB, card not writable after the format")
            << "sdo1" << 32 * gib << false << "" << false << "config.bin copy fail"
            << "Its former settings file is kept in " << 128 << "kept";
        QTest::newRow("no config.bin: the defaults")
            << "sdh1" << 4 * gib << false << "" << false << done
            << "[4.0 GB] KAVRO <Generic Card Reader>" << 32 << "defaults";
        QTest::newRow("formatter ends with 1")
            << "sdi1" << small << false
            << "echo 'mkfs.fat: unable to open /dev/sdi1: Read-only file system' >&2; exit 1"
            << false << cannot
            << "[64 MB] CARD <Generic Card Reader>\nThe card could not be written" << 0 << "before";
        QTest::newRow("formatter ends with 3")
            << "sdj1" << small << false << "echo 'no such device' >&2; exit 3" << false << cannot
            << "<Generic Card Reader>\nError:no such device" << 0 << "before";
        QTest::newRow("read-only card") << "sdn1" << small << true << "" << false << cannot
                                        << "\nThe card could not be written" << 0 << "before";
    }

    // The settings window's Format Card button, then the format button, as a person would; what
    // the image holds afterwards is read without mounting it.
    void formatThroughTheWindow()
    {
        QFETCH(QString, name);
        QFETCH(qint64, size);
        QFETCH(bool, readOnly);
        QFETCH(QString, script);
        QFETCH(bool, reopen);
        QFETCH(QString, message);
        QFETCH(QString, informative);
        QFETCH(int, sectors);
        QFETCH(QString, onCard);
        qputenv("TMPDIR", QFile::encodeName(m_dir.path())); // where config.bin is put aside
        const QString mounted =
            addCard(name, "CARD", "usb", readOnly, false, {}, size, onCard != "defaults");
        QVERIFY(!mounted.isEmpty());
        // Pulled out whatever happens, so that the next card gets the mount path of its label.
        const auto pull = qScopeGuard([&] { removeCard(name); });
        auto disks = std::make_shared<UDisks2DiskSource>(*m_connection);
        // Opened on a folder, the settings window leaves the card's label alone.
        KVRSettingController settings({disks, m_dir.path(), true});
        auto formatter = std::make_shared<ImageFormatter>(m_dir.path(), script);
        settings.setFormatter(formatter);
        settings.showWindow();
        QTRY_VERIFY_WITH_TIMEOUT(!settings.isLoading(), WaitMs);
        const auto openFormatWindow = [&] {
            QTest::mouseClick(settings.findChild<QPushButton*>("sdcardFormatButton"),
                              Qt::LeftButton);
            return qobject_cast<KVRFormatWindowController*>(settings.lastDialogController());
        };
        KVRFormatWindowController* window = openFormatWindow();
        QTRY_VERIFY_WITH_TIMEOUT(
            window && window->stopProgressBar() && !window->usbDiskArray().isEmpty(), WaitMs);
        QCOMPARE(window->findChild<QLabel*>("pathField")->text(), "/dev/" + name + "   " + mounted);
        QCOMPARE(window->findChild<QLabel*>("allocationUnitField")->text(),
                 QString("%1 KB").arg(size < 7 * (1ll << 30) ? 32 : 128));

        QTest::mouseClick(window->findChild<QPushButton*>("formatButton"), Qt::LeftButton);
        QWidget* host = window;
        if (reopen) {
            QTest::mouseClick(window->findChild<QPushButton*>("cancelButton"), Qt::LeftButton);
            QVERIFY(!window->isVisible());
            // The job's window goes as the new one takes its place.
            QVERIFY(openFormatWindow()->isVisible());
            host = &settings;
        }
        QMessageBox* box = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((box = host->findChild<QMessageBox*>()), 5 * WaitMs);
        QVERIFY2(box->text() == message, qPrintable(box->text() + ": " + box->informativeText()));
        QVERIFY2(box->informativeText().contains(informative), qPrintable(box->informativeText()));
        const QString informativeText = box->informativeText();
        QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
        if (message == "The card was formatted." && !reopen)
            QTRY_VERIFY_WITH_TIMEOUT(!window->isVisible(), WaitMs);

        removeCard(name);
        QVERIFY2((sectors == 0) != formatter->formatted.isEmpty(),
                 qPrintable(formatter->formatted));
        // fusefat, which failed on the 64 KB clusters, leaves the dirty bit set.
        const QString problem = test::cardLayoutProblem(image(name), sectors);
        if (onCard != "kept")
            QVERIFY2(sectors == 0 ? !problem.isEmpty() : problem.isEmpty(), qPrintable(problem));
        QByteArray onImage;
        const bool there = tool("mcopy", {"-n", "-i", image(name), "::config.bin", "-"}, &onImage);
        QCOMPARE(there, onCard != "kept");
        if (onCard == "kept")
            onImage = test::readFile(informativeText.section("kept in ", 1).chopped(1));
        _FILEDATA defaults;
        makeDefaultFileData(defaults);
        QCOMPARE(onImage, fileDataBytes(onCard == "defaults" ? defaults : milesRecord()));
        QVERIFY(QFile::remove(image(name)));
    }

    void cleanupTestCase()
    {
        m_standIn.terminate();
        m_standIn.waitForFinished(5000);
        // Whatever a failed test left mounted.
        for (const QString& dir : QDir(m_mounts).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            tool("fusermount", {"-u", QDir(m_mounts).filePath(dir)});
        m_connection.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("test"));
        m_bus.terminate();
        m_bus.waitForFinished(5000);
    }

private:
    QString image(const QString& name) const { return m_dir.filePath(name + ".img"); }

    // A sparse FAT32 image holding a settings file with the miles unit (and the clock file given),
    // plugged in and mounted.
    QString addCard(const QString& name, const QString& label, const QString& bus, bool readOnly,
                    bool whole, const QString& clockFile = QString(), qint64 size = 40 << 20,
                    bool withSettings = true)
    {
        const QString path = image(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
            return QString();
        file.close();
        const QString settings = m_dir.filePath(name + ".bin");
        test::writeFile(settings, fileDataBytes(milesRecord()));
        if (!tool("mkfs.fat", {"-F", "32", "-n", label, path}) ||
            (withSettings && !tool("mcopy", {"-i", path, settings, "::config.bin"})) ||
            (!clockFile.isEmpty() && !tool("mcopy", {"-i", path, clockFile, "::timeset.cfg"})))
            return QString();
        QDBusMessage reply = m_connection->call(
            QDBusMessage::createMethodCall("org.freedesktop.UDisks2", "/org/freedesktop/UDisks2",
                                           "org.kavro.StandIn", "AddCard")
            << name << path << bus << readOnly << !whole);
        return reply.arguments().value(0).toString();
    }

    void removeCard(const QString& name)
    {
        m_connection->call(QDBusMessage::createMethodCall("org.freedesktop.UDisks2",
                                                          "/org/freedesktop/UDisks2",
                                                          "org.kavro.StandIn", "RemoveCard")
                           << name);
    }

    QTemporaryDir m_dir;
    QProcess m_bus;
    QProcess m_standIn;
    QString m_address;
    QString m_mounts;
    QByteArray m_log;
    std::unique_ptr<QDBusConnection> m_connection;
};

QTEST_MAIN(TestUDisks2DiskSource)
#include "tst_udisks2disksource.moc"
