#include "card/formattarget.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace kavro;

// What the formatting helper lets through: the checks on fixture copies of sysfs and the mount
// table, and the real helper refusing a regular file and a loop device. Never run on a disk of
// the machine.
class TestFormatTarget : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString path(const QString& relative) const { return m_dir.filePath(relative); }

    // A disk in the fixture sysfs: its folder under devices/, its number, and whether removable.
    void addDisk(const QString& where, const QString& name, int major, int minor, bool removable,
                 int partitions)
    {
        const QString disk = path("sys/devices/" + where + "/block/" + name);
        QVERIFY(QDir().mkpath(disk));
        QVERIFY(test::writeFile(disk + "/dev",
                                QStringLiteral("%1:%2\n").arg(major).arg(minor).toLatin1()));
        QVERIFY(test::writeFile(disk + "/removable", removable ? "1\n" : "0\n"));
        QVERIFY(
            QFile::link(disk, path(QStringLiteral("sys/dev/block/%1:%2").arg(major).arg(minor))));
        for (int p = 1; p <= partitions; ++p) {
            const QString part = disk + '/' + name + QString::number(p);
            QVERIFY(QDir().mkpath(part));
            QVERIFY(test::writeFile(part + "/partition", QByteArray::number(p) + '\n'));
            QVERIFY(test::writeFile(
                part + "/dev", QStringLiteral("%1:%2\n").arg(major).arg(minor + p).toLatin1()));
            QVERIFY(QFile::link(
                part, path(QStringLiteral("sys/dev/block/%1:%2").arg(major).arg(minor + p))));
        }
    }

    void addNode(const QString& name, int major, int minor)
    {
        QVERIFY(::mknod(QFile::encodeName(path("dev/" + name)).constData(), S_IFBLK | 0600,
                        makedev(major, minor)) == 0);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(path("sys/dev/block")) && QDir().mkpath(path("dev")));
        QVERIFY(test::writeFile(path("regular.img"), QByteArray(4096, 'r')));
        if (::geteuid() != 0)
            return; // block device nodes can only be made by root
        const QString usb = "pci0000:00/0000:00:14.0/usb1/1-2/1-2:1.0/host6/target6:0:0/6:0:0:0";
        addDisk(usb, "sdb", 8, 16, true, 1);
        addDisk("pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0", "sda", 8, 0, false, 2);
        addDisk("pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host7/target7:0:0/7:0:0:0", "sdc", 8, 32,
                false, 0);
        addDisk("virtual", "loop0", 7, 0, false, 0);
        addNode("sdb", 8, 16);
        addNode("sdb1", 8, 17);
        addNode("sda1", 8, 1);
        addNode("sdc", 8, 32);
        addNode("loop0", 7, 0);
        addNode("unknown", 9, 99);
    }

    void checks_data()
    {
        QTest::addColumn<QString>("device");
        QTest::addColumn<QByteArray>("mounted"); // "MAJ:MIN mountpoint" or empty
        QTest::addColumn<QString>("refusal");    // a part of the reason; empty: let through
        QTest::addColumn<bool>("wholeDisk");
        QTest::newRow("partition of a USB card") << "sdb1" << QByteArray() << "" << false;
        QTest::newRow("whole USB card") << "sdb" << QByteArray("8:40 /media/other") << "" << true;
        QTest::newRow("mounted partition") << "sdb1" << QByteArray("8:17 /media/me/KAVRO\\040CARD")
                                           << "mounted at /media/me/KAVRO CARD" << false;
        QTest::newRow("disk with a mounted partition")
            << "sdb" << QByteArray("8:17 /mnt") << "mounted at /mnt" << true;
        QTest::newRow("root on the card") << "sdb" << QByteArray("8:17 /") << "system's /" << true;
        QTest::newRow("/boot on the card")
            << "sdb1" << QByteArray("8:17 /boot") << "system's /boot" << false;
        QTest::newRow("/home on the card")
            << "sdb" << QByteArray("8:16 /home") << "system's /home" << true;
        QTest::newRow("internal disk") << "sda1" << QByteArray() << "not on a USB disk" << false;
        QTest::newRow("USB disk not removable")
            << "sdc" << QByteArray() << "not a removable disk" << true;
        QTest::newRow("loop device") << "loop0" << QByteArray() << "virtual" << true;
        QTest::newRow("unknown number")
            << "unknown" << QByteArray() << "not a disk the system knows" << false;
        QTest::newRow("regular file")
            << "../regular.img" << QByteArray() << "not a block device" << false;
        QTest::newRow("nothing there") << "gone" << QByteArray() << "cannot read" << false;
    }

    void checks()
    {
        QFETCH(QString, device);
        QFETCH(QByteArray, mounted);
        QFETCH(QString, refusal);
        QFETCH(bool, wholeDisk);
        if (::geteuid() != 0)
            QSKIP("the fixture's block device nodes can only be made by root");
        const QByteArray table = "22 27 0:21 / /proc rw,relatime - proc proc rw\n" +
                                 (mounted.isEmpty() ? QByteArray()
                                                    : "31 27 " + mounted.replace(' ', " / ") +
                                                          " rw,relatime - vfat /dev/x rw\n");
        QVERIFY(test::writeFile(path("mountinfo"), table));
        const FormatTargetCheck check =
            checkFormatTarget(path("dev/" + device), {path("sys"), path("mountinfo")});
        if (refusal.isEmpty()) {
            QVERIFY2(check.refusal.isEmpty(), qPrintable(check.refusal));
            QCOMPARE(check.wholeDisk, wholeDisk);
        } else {
            QVERIFY2(check.refusal.contains(refusal), qPrintable(check.refusal));
        }
    }

    // The real helper, on the real system: a regular file and a loop device are refused and left
    // as they were, and so are arguments it does not take.
    void helperRefuses()
    {
        const QString helper = QStringLiteral(KAVRO_FORMAT_HELPER);
        const QByteArray before = test::readFile(path("regular.img"));
        QList<QStringList> calls{{},
                                 {path("regular.img")},
                                 {path("regular.img"), "64"},
                                 {path("dev/sdb1"), "3"},
                                 {path("dev/sdb1"), "256"},
                                 {"dev/sdb1", "32"},
                                 {path("regular.img"), "32", "extra"}};
        QString loopDevice;
        if (::geteuid() == 0) {
            const test::ToolResult loop =
                test::runProgram("losetup", {"-f", "--show", path("regular.img")});
            loopDevice = QString::fromLatin1(loop.out).trimmed();
            if (loop.exitCode == 0 && !loopDevice.isEmpty())
                calls.append({loopDevice, "32"});
            else
                qWarning("no loop device here: %s", loop.err.constData());
        } else {
            qWarning("not root: the loop device case is left out (losetup needs root)");
        }
        for (const QStringList& arguments : calls) {
            const test::ToolResult result = test::runProgram(helper, arguments);
            QVERIFY2(test::failedCleanly(result, "kavro-format-helper: "),
                     qPrintable(arguments.join(' ')));
        }
        if (!loopDevice.isEmpty())
            test::runProgram("losetup", {"-d", loopDevice});
        QCOMPARE(test::readFile(path("regular.img")), before);
    }

    // The layout mkfs.fat makes with these arguments is checked on card images in the disk tests.
    void clusterSizeByVolume()
    {
        QCOMPARE(clusterSizeByVolumeSizeInKB(4'000'000'000ull), 32);
        QCOMPARE(clusterSizeByVolumeSizeInKB(7ull * 1024 * 1024 * 1024 - 1), 32);
        QCOMPARE(clusterSizeByVolumeSizeInKB(7ull * 1024 * 1024 * 1024), 128);
        QCOMPARE(clusterSizeByVolumeSizeInKB(32'000'000'000ull), 128);
    }
};

QTEST_GUILESS_MAIN(TestFormatTarget)
#include "tst_formattarget.moc"
