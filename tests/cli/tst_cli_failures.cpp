#include "telemetry/kvraviwriter.h"

#include "../core/settings/settingtestdata.h"
#include "testsupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace kavro;

// Every command refuses unusable input alike: exit status 2, one line on stderr that names the
// command, nothing on stdout, and not one file of the folder created or changed.
class TestCliFailures : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QMap<QString, QByteArray> m_files; // by relative path

private slots:
    void initTestCase()
    {
        test::isolatedConfigHome();
        KVRAviWriter writer({});
        QVERIFY(writer.open(m_dir.filePath("rec.avi")));
        QVERIFY(writer.addVideoFrame("frame") && writer.close());
        m_files = {{"record.bin", test::randomRecordBytes(11)},
                   {"short.bin", test::randomRecordBytes(12).left(427)},
                   {"long.bin", test::randomRecordBytes(13) + 'x'},
                   {"kept.cfg", "1999/01/01 00:00:00"},
                   {"kavro_000.drv", QByteArray(12, '\0')},
                   {"notes.txt", "not a recording"},
                   {"rec.avi", test::readFile(m_dir.filePath("rec.avi"))}};
    }

    void init()
    {
        for (auto it = m_files.cbegin(); it != m_files.cend(); ++it)
            QVERIFY(test::writeFile(m_dir.filePath(it.key()), it.value()));
    }

    void refused_data()
    {
        QTest::addColumn<QStringList>("arguments"); // "@" stands for the folder
        QTest::addColumn<QByteArray>("prefix");
        QTest::addColumn<bool>("fullCard"); // no file may grow past 100 bytes
        auto row = [](const char* name, const QStringList& arguments, bool fullCard = false) {
            QTest::newRow(name) << arguments << "kavro: " + arguments.value(0).toUtf8() << fullCard;
        };
        QTest::newRow("no command") << QStringList{} << QByteArray("kavro: no command") << false;
        QTest::newRow("unknown command")
            << QStringList{"bogus"} << QByteArray("kavro: unknown") << false;

        row("telemetry: no file", {"telemetry"});
        row("telemetry: not AVI", {"telemetry", "@/notes.txt"});
        row("telemetry: folder without recordings", {"telemetry", "@"});
        row("telemetry: negative gap", {"telemetry", "@/rec.avi", "@", "--gap", "-1"});
        row("telemetry: gap not a number", {"telemetry", "@/rec.avi", "--gap", "2m"});
        row("telemetry: unknown format", {"telemetry", "@/rec.avi", "--format", "xml"});
        row("telemetry: unknown option", {"telemetry", "@/rec.avi", "--fast"});

        // "-" is a path like any other, and after "--" so is what looks like an option.
        QTest::newRow("telemetry: -") << QStringList{"telemetry", "-"}
                                      << QByteArray("kavro: telemetry: cannot open -") << false;
        QTest::newRow("list: -") << QStringList{"list", "-"}
                                 << QByteArray("kavro: list: no such folder: -") << false;
        QTest::newRow("list: -- then option")
            << QStringList{"list", "--", "--recursive"}
            << QByteArray("kavro: list: no such folder: --") << false;

        row("list: no folder", {"list"});
        row("list: two folders", {"list", "@", "@"});
        row("list: a file", {"list", "@/notes.txt"});
        row("list: unknown option", {"list", "@", "--recursive"});
        row("list: unknown format", {"list", "@", "--format", "xml"});

        row("drv: no file", {"drv"});
        row("drv: two files", {"drv", "@/kavro_000.drv", "@/kavro_000.drv"});
        row("drv: missing file", {"drv", "@/missing.drv"});
        row("drv: folder", {"drv", "@"});
        row("drv: unknown format", {"drv", "@/kavro_000.drv", "--format", "json"});
        row("drv: unknown option", {"drv", "@/kavro_000.drv", "--at", "x"});
        row("drv: -o into missing folder", {"drv", "@/kavro_000.drv", "-o", "@/no/out.csv"});
        // Every printing command shares one writer; a folder is never replaced by a file.
        row("telemetry: -o a folder", {"telemetry", "@/rec.avi", "-o", "@"});
        row("list: -o a folder", {"list", "@", "-o", "@"});
        row("config: show -o a folder", {"config", "show", "@/record.bin", "-o", "@"});

        row("clock: February 30", {"clock", "@", "--at", "2026/02/30 12:00:00"});
        row("clock: hour 25", {"clock", "@/kept.cfg", "--at", "2026/03/05 25:00:00"});
        row("clock: dashes", {"clock", "@", "--at", "2026-03-05 07:04:09"});
        row("clock: colons", {"clock", "@", "--at", "2026:03:05 07:04:09"});
        row("clock: --at without value", {"clock", "@", "--at"});
        row("clock: no path", {"clock"});
        row("clock: two paths", {"clock", "@", "@/kept.cfg"});
        row("clock: missing folder", {"clock", "@/no/timeset.cfg"});
        row("clock: unknown option", {"clock", "@", "-o", "@/kept.cfg"});

        row("config: no subcommand", {"config"});
        row("config: unknown subcommand", {"config", "get", "@/record.bin"});
        row("config: show short file", {"config", "show", "@/short.bin"});
        row("config: show long file", {"config", "show", "@/long.bin"});
        row("config: show missing", {"config", "show", "@/missing.bin"});
        row("config: show a folder", {"config", "show", "@"});
        row("config: show bad format", {"config", "show", "@/record.bin", "--format", "xml"});
        row("config: set short file", {"config", "set", "@/short.bin", "time_gmt=1"});
        row("config: set missing", {"config", "set", "@/missing.bin", "time_gmt=1"});
        row("config: defaults nowhere", {"config", "defaults"});
        row("config: defaults into missing folder", {"config", "defaults", "@/no/config.bin"});
        row("config: set on a full card", {"config", "set", "@/record.bin", "time_gmt=5"}, true);
        row("config: defaults on a full card", {"config", "defaults", "@/record.bin"}, true);
        // Values the settings pages could not store leave record.bin as it was.
        const QList<QPair<const char*, QStringList>> sets = {
            {"time zone past the list", {"time_gmt=34"}},
            {"mask too wide", {"motionBlock=0x1000"}},
            {"threshold below 0.05", {"gsen_x_threshold=4"}},
            {"threshold above 1.5", {"parkmode_x_threshold=151"}},
            {"voltage not listed", {"sd_mem_always_reserved=12050"}},
            {"cable loss 0", {"CableVoltCorr=0"}},
            {"brightness level 6", {"vid_brightness=5"}},
            {"camera bit 3", {"external_rear_camera=8"}},
            {"camera word with other bits", {"external_rear_camera=0x10000005"}},
            {"share too small", {"sd_mem_always_ratio=10"}},
            {"other share too small", {"sd_mem_always_ratio=90"}},
            {"share between steps", {"sd_mem_motion_ratio=75"}},
            {"plate with hyphen", {"szPlateNumber=AB-123"}},
            {"plate not ASCII", {"szPlateNumber=\u00c4B1"}},
            {"checksum", {"checksum=0"}},
            {"plate flag", {"osd_plate_flag=1"}},
            {"not edited", {"cfg_ver=1"}},
            {"reserved", {"dummy00=0"}},
            {"unknown field", {"nosuch=1"}},
            {"no value", {"time_gmt"}},
            {"fraction", {"time_gmt=1.5"}},
            {"plus sign", {"time_gmt=+3"}},
            {"overflow", {"time_gmt=99999999999999999999"}},
            {"good then bad", {"time_gmt=3", "vid_brightness=9"}},
            {"disagreeing shares", {"sd_mem_always_ratio=60", "sd_mem_motion_ratio=30"}},
            {"field twice", {"time_gmt=1", "time_gmt=2"}},
            {"nothing to set", {}},
        };
        for (const auto& [name, assignments] : sets)
            row(qPrintable(QStringLiteral("config set: ") + name),
                QStringList{"config", "set", "@/record.bin"} + assignments);
    }

    void refused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, prefix);
        QFETCH(bool, fullCard);
        arguments.replaceInStrings("@", m_dir.path());
        std::optional<test::FileSizeLimit> limit;
        if (fullCard)
            limit.emplace(100);
        QVERIFY(test::failedCleanly(test::runKavro(arguments), prefix));
        limit.reset();
        QCOMPARE(test::folderContent(m_dir.path()), m_files);
    }

    // "-o -" and the names of descriptors the process holds write through that descriptor, so
    // that a shell's ">>" still appends; nothing is created or renamed in their place.
    void outputThroughHeldDescriptor_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("-") << "-";
        QTest::newRow("/proc/self/fd/1") << "/proc/self/fd/1";
        QTest::newRow("/dev/fd/1") << "/dev/fd/1";
    }

    void outputThroughHeldDescriptor()
    {
        QFETCH(QString, target);
        const QString log = m_dir.filePath("out.log");
        QVERIFY(test::writeFile(log, "earlier line\n"));
        QProcess process;
        process.setStandardOutputFile(log, QIODevice::Append);
        process.start(QStringLiteral(KAVRO_TOOL_PATH),
                      {"config", "show", m_dir.filePath("record.bin"), "-o", target});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 0);
        const QByteArray written = test::readFile(log);
        QVERIFY(written.startsWith("earlier line\n{"));
        QCOMPARE(QDir(m_dir.path()).entryList(QDir::Files).size(), m_files.size() + 1);
        QVERIFY(QFile::remove(log));
    }

    // Standard output that takes nothing (a full disk) is an error, not a silent success.
    void fullStandardOutput_data()
    {
        QTest::addColumn<QStringList>("arguments"); // "@" stands for the card below
        QTest::newRow("list") << QStringList{"list", "@"};
        QTest::newRow("list json") << QStringList{"list", "@", "--format", "json"};
        QTest::newRow("telemetry") << QStringList{"telemetry", "@/alwa_20240131_120000_F.avi"};
        QTest::newRow("telemetry of a card") << QStringList{"telemetry", "@", "--format", "gpx"};
        QTest::newRow("config show") << QStringList{"config", "show", m_dir.filePath("record.bin")};
    }

    void fullStandardOutput()
    {
        QFETCH(QStringList, arguments);
        QTemporaryDir card;
        QVERIFY(
            QFile::copy(m_dir.filePath("rec.avi"), card.filePath("alwa_20240131_120000_F.avi")));
        QProcess process;
        process.setStandardOutputFile("/dev/full");
        process.start(QStringLiteral(KAVRO_TOOL_PATH),
                      arguments.replaceInStrings("@", card.path()));
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 2);
        const QByteArray err = process.readAllStandardError();
        QVERIFY2(err.startsWith("kavro: " + arguments[0].toUtf8()) && err.count('\n') == 1, err);
    }

    void help()
    {
        QVERIFY(test::runKavro({"--help"}).out.startsWith("Usage: kavro COMMAND"));
        for (const char* command : {"telemetry", "list", "config", "config show", "config defaults",
                                    "config set", "drv", "clock"}) {
            const auto result = test::runKavro(QString(command).split(' ') + QStringList{"--help"});
            QCOMPARE(result.exitCode, 0);
            QVERIFY(result.err.isEmpty());
            QVERIFY2(result.out.startsWith("Usage: kavro " + QByteArray(command) + ' '), command);
        }
    }
};

QTEST_GUILESS_MAIN(TestCliFailures)
#include "tst_cli_failures.moc"
