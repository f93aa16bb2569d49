#include "common/outputfile.h"
#include "testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <unistd.h>

using namespace kavro;
using Rule = OutputFile::Rule;

// What the shared write path does with each kind of target. Everything happens in a private
// folder: a device node made there stands for /dev/null, never the real one.
class TestOutputFile : public QObject
{
    Q_OBJECT

private:
    static mode_t currentUmask()
    {
        // Read from the kernel so that the test does not change what it checks.
        const QByteArray status = test::readFile("/proc/self/status");
        const qsizetype at = status.indexOf("Umask:") + 6;
        return mode_t(status.mid(at, status.indexOf('\n', at) - at).trimmed().toUInt(nullptr, 8));
    }
    static QStringList entries(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                      QDir::NoDotAndDotDot);
    }

private slots:
    void regularFileReplacedWithModeKept()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("config.bin");
        QVERIFY(test::writeFile(path, QByteArray(1000, 'x')));
        QVERIFY(::chmod(QFile::encodeName(path), 0640) == 0);
        struct stat before = {};
        ::stat(QFile::encodeName(path), &before);
        const mode_t mask = currentUmask();

        QVERIFY(writeFile(path, "short"));
        QCOMPARE(test::readFile(path), QByteArray("short"));
        struct stat after = {};
        ::stat(QFile::encodeName(path), &after);
        QCOMPARE(after.st_mode & 07777, mode_t(0640));
        QVERIFY(after.st_ino != before.st_ino); // replaced, not rewritten
        QCOMPARE(currentUmask(), mask);
        QCOMPARE(entries(dir.path()), QStringList{"config.bin"}); // no temporary left

        const QString fresh = dir.filePath("new.csv");
        QVERIFY(writeFile(fresh, "a"));
        struct stat made = {};
        ::stat(QFile::encodeName(fresh), &made);
        QCOMPARE(made.st_mode & 07777, mode_t(0666 & ~mask));
    }

    void failedWriteKeepsOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("config.bin");
        QVERIFY(test::writeFile(path, "old content"));
        QString error;
        {
            test::FileSizeLimit fullCard(64);
            QVERIFY(!writeFile(path, QByteArray(4096, 'n'), &error));
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(test::readFile(path), QByteArray("old content"));
        QCOMPARE(entries(dir.path()), QStringList{"config.bin"});
    }

    void linksAreFollowed()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("real"));
        const QString target = dir.filePath("real/out.gpx");
        QVERIFY(test::writeFile(target, "old"));
        // A relative link to a relative link: both stay links, the file at the end is replaced.
        QVERIFY(QFile::link("real/out.gpx", dir.filePath("first")));
        QVERIFY(::symlink("first", QFile::encodeName(dir.filePath("second"))) == 0);
        QVERIFY(writeFile(dir.filePath("second"), "new"));
        QVERIFY(QFileInfo(dir.filePath("first")).isSymLink());
        QVERIFY(QFileInfo(dir.filePath("second")).isSymLink());
        QCOMPARE(test::readFile(target), QByteArray("new"));

        // A link to a file not made yet makes it; a loop is an error.
        QVERIFY(::symlink("real/later.csv", QFile::encodeName(dir.filePath("later"))) == 0);
        QVERIFY(writeFile(dir.filePath("later"), "made"));
        QCOMPARE(test::readFile(dir.filePath("real/later.csv")), QByteArray("made"));
        QVERIFY(::symlink("loop", QFile::encodeName(dir.filePath("loop"))) == 0);
        QVERIFY(!writeFile(dir.filePath("loop"), "x"));
    }

    void devicesAndPipesWrittenInPlace()
    {
        QTemporaryDir dir;
        const QString fifo = dir.filePath("pipe");
        QVERIFY(::mkfifo(QFile::encodeName(fifo), 0600) == 0);
        QByteArray received;
        std::thread reader([&] {
            QFile file(fifo);
            if (file.open(QIODevice::ReadOnly))
                received = file.readAll();
        });
        const bool written = writeFile(fifo, "through the pipe");
        reader.join();
        QVERIFY(written);
        QCOMPARE(received, QByteArray("through the pipe"));
        QVERIFY(QFileInfo(fifo).exists() && !QFileInfo(fifo).isFile());

        if (::geteuid() != 0)
            QSKIP("making a device node needs root");
        const QString null = dir.filePath("null");
        QVERIFY(::mknod(QFile::encodeName(null), S_IFCHR | 0666, makedev(1, 3)) == 0);
        QVERIFY(writeFile(null, QByteArray(100000, 'z')));
        struct stat info = {};
        QVERIFY(::stat(QFile::encodeName(null), &info) == 0);
        QVERIFY(S_ISCHR(info.st_mode));
        QCOMPARE(entries(dir.path()), (QStringList{"null", "pipe"}));
    }

    void refusedTargets_data()
    {
        QTest::addColumn<QString>("path"); // "@" is the private folder
        QTest::addColumn<QString>("reason");
        QTest::newRow("a folder") << "@/sub"
                                  << "is a folder";
        QTest::newRow("missing folder") << "@/no/such/file"
                                        << "does not exist";
        QTest::newRow("a file as folder") << "@/plain/file"
                                          << "is not a folder";
        QTest::newRow("unwritable folder") << "/sys/kavro-test"
                                           << "not writable";
        QTest::newRow("closed descriptor") << "/dev/fd/987"
                                           << "not open for writing";
    }

    void refusedTargets()
    {
        QFETCH(QString, path);
        QFETCH(QString, reason);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir("sub"));
        QVERIFY(test::writeFile(dir.filePath("plain"), "p"));
        const QStringList before = entries(dir.path());
        QString error;
        QVERIFY(!writeFile(path.replace("@", dir.path()), "x", &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(entries(dir.path()), before);
        QCOMPARE(entries(dir.filePath("sub")), QStringList{});
    }

    // A capture copy never replaces a file, nor writes through a link. The clock file's kept tail
    // is the clock-file test's.
    void createNewNeverReplaces()
    {
        QTemporaryDir dir;
        const QString copy = dir.filePath("capture.jpg"), victim = dir.filePath("victim");
        QVERIFY(writeFile(copy, "first", nullptr, Rule::CreateNew));
        QVERIFY(!writeFile(copy, "second", nullptr, Rule::CreateNew));
        QCOMPARE(test::readFile(copy), QByteArray("first"));
        QVERIFY(test::writeFile(victim, "precious"));
        QVERIFY(QFile::link(victim, dir.filePath("link.jpg")));
        QVERIFY(!writeFile(dir.filePath("link.jpg"), "second", nullptr, Rule::CreateNew));
        QCOMPARE(test::readFile(victim), QByteArray("precious"));
    }

    // The fixed snapshot name in a shared folder: what is there decides whether it is written.
    void freshPrivateFile_data()
    {
        QTest::addColumn<QString>("planted"); // none, own, link, dangling, other, folder
        QTest::addColumn<bool>("written");
        QTest::newRow("nothing there") << "none" << true;
        QTest::newRow("own earlier snapshot") << "own" << true;
        QTest::newRow("link to a victim") << "link" << false;
        QTest::newRow("dangling link") << "dangling" << false;
        QTest::newRow("another user's file") << "other" << false;
        QTest::newRow("folder") << "folder" << false;
    }

    void freshPrivateFile()
    {
        QFETCH(QString, planted);
        QFETCH(bool, written);
        QTemporaryDir dir;
        const QString path = dir.filePath("kavro_capture.jpg");
        const QString victim = dir.filePath("victim");
        QVERIFY(test::writeFile(victim, "precious"));
        if (planted == "own") {
            QVERIFY(test::writeFile(path, "old snapshot, longer than the new one"));
            QVERIFY(::chmod(QFile::encodeName(path), 0666) == 0);
        } else if (planted == "link") {
            QVERIFY(QFile::link(victim, path));
        } else if (planted == "dangling") {
            QVERIFY(QFile::link(dir.filePath("not-yet"), path));
        } else if (planted == "other") {
            if (::geteuid() != 0)
                QSKIP("only root can give a file to another user");
            QVERIFY(test::writeFile(path, "theirs"));
            QVERIFY(::chown(QFile::encodeName(path), 65534, 65534) == 0);
        } else if (planted == "folder") {
            QVERIFY(QDir(dir.path()).mkdir("kavro_capture.jpg"));
        }
        const QFileInfo before(path);

        QString error;
        QCOMPARE(writeFile(path, "new", &error, Rule::FreshPrivate), written);
        QCOMPARE(test::readFile(victim), QByteArray("precious"));
        QVERIFY(!QFileInfo::exists(dir.filePath("not-yet")));
        struct stat after = {};
        QCOMPARE(::lstat(QFile::encodeName(path), &after), 0);
        if (written) {
            QCOMPARE(test::readFile(path), QByteArray("new"));
            QCOMPARE(after.st_mode & 07777, mode_t(0600));
            QCOMPARE(after.st_uid, ::geteuid());
        } else {
            QVERIFY2(!error.isEmpty(), "a refusal says why");
            QCOMPARE(QFileInfo(path).isSymLink(), before.isSymLink());
            QCOMPARE(QFileInfo(path).ownerId(), before.ownerId());
        }
    }

    // A card that loop recording filled still takes a settings file of the same size, written
    // in place; a write-protected one keeps the old file. Real FAT images, mounted with fusefat.
    void fullAndWriteProtectedCards_data()
    {
        QTest::addColumn<bool>("writable");
        QTest::newRow("full card") << true;
        QTest::newRow("write-protected card") << false;
    }

    void fullAndWriteProtectedCards()
    {
        QFETCH(bool, writable);
        for (const char* tool : {"fusefat", "fusermount", "mkfs.fat", "mcopy", "fsck.fat"})
            QVERIFY2(!QStandardPaths::findExecutable(tool).isEmpty(), tool);
        QTemporaryDir dir;
        const QString image = dir.filePath("card.img"), mount = dir.filePath("mnt");
        const QByteArray old(428, 'o'), fresh(428, 'n');
        QVERIFY(test::writeFile(dir.filePath("config.bin"), old));
        QFile imageFile(image);
        QVERIFY(imageFile.open(QIODevice::WriteOnly) && imageFile.resize(2 << 20));
        imageFile.close();
        const auto run = [](const QString& tool, const QStringList& arguments) {
            const test::ToolResult result = test::runProgram(tool, arguments);
            return result.exitCode == 0 && !result.crashed;
        };
        QVERIFY(run("mkfs.fat", {"-n", "KAVRO", image}));
        QVERIFY(run("mcopy", {"-i", image, dir.filePath("config.bin"), "::config.bin"}));
        QVERIFY(QDir(dir.path()).mkdir("mnt"));
        QVERIFY(run("fusefat", {"-o", writable ? "rw+" : "ro", image, mount}));
        if (writable) {
            QFile fill(QDir(mount).filePath("fill"));
            QVERIFY(fill.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            const QByteArray block(64 * 1024, 'f');
            while (fill.write(block) == block.size()) {
            }
        }
        QString error;
        const bool written =
            writeFile(QDir(mount).filePath("config.bin"), fresh, &error, Rule::ReplaceOrOverwrite);
        QVERIFY2(written == writable, qPrintable(error));
        QCOMPARE(error.isEmpty(), writable);
        QVERIFY(!entries(mount).join(' ').contains(".config.bin.")); // no temporary left
        QVERIFY(run("fusermount", {"-u", mount}));
        QVERIFY(run("fsck.fat", {"-n", image}));
        const test::ToolResult onCard =
            test::runProgram("mcopy", {"-n", "-i", image, "::config.bin", "-"});
        QCOMPARE(onCard.out, writable ? fresh : old);
    }
};

QTEST_GUILESS_MAIN(TestOutputFile)
#include "tst_outputfile.moc"
