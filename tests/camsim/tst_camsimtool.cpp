#include "testsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

using kavro::test::failedCleanly;

kavro::test::ToolResult
runCamsim(const QStringList& arguments,
          const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    return kavro::test::runProgram(QStringLiteral(KAVRO_CAMSIM_PATH), arguments, 120000,
                                   environment);
}

} // namespace

class TestCamsimTool : public QObject
{
    Q_OBJECT

private slots:
    void refusesUnusableArguments_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no output folder") << QStringList{"--quick"};
        QTest::newRow("unknown option") << QStringList{"--out", "x", "--bogus"};
        QTest::newRow("stray argument") << QStringList{"--out", "x", "extra"};
        QTest::newRow("seed not a number") << QStringList{"--out", "x", "--seed", "abc"};
        QTest::newRow("no minutes") << QStringList{"--out", "x", "--minutes", "0"};
        QTest::newRow("odd width") << QStringList{"--out", "x", "--front-size", "641x360"};
        QTest::newRow("too small for the time code")
            << QStringList{"--out", "x", "--rear-size", "96x54"};
        QTest::newRow("size without x") << QStringList{"--out", "x", "--rear-size", "640"};
        QTest::newRow("no frames") << QStringList{"--out", "x", "--fps", "0"};
        QTest::newRow("recordings too short")
            << QStringList{"--out", "x", "--seconds-per-recording", "1"};
        QTest::newRow("image inside the card") << QStringList{"--out", "x", "--image", "x/a.img"};
    }

    void refusesUnusableArguments()
    {
        QFETCH(QStringList, arguments);
        QTemporaryDir dir;
        const QString current = QDir::currentPath();
        QDir::setCurrent(dir.path());
        const auto result = runCamsim(arguments);
        QDir::setCurrent(current);
        QVERIFY(failedCleanly(result, "kavro-camsim: "));
        QVERIFY(!QFileInfo::exists(dir.filePath("x")));
    }

    void neverWritesIntoAFolderInUse()
    {
        QTemporaryDir dir;
        QVERIFY(QDir().mkpath(dir.filePath("card")));
        QVERIFY(kavro::test::writeFile(dir.filePath("card/notes.txt"), "mine"));
        QVERIFY(kavro::test::writeFile(dir.filePath("card.img"), "old image"));
        const auto result = runCamsim(
            {"--quick", "--out", dir.filePath("card"), "--image", dir.filePath("card.img")});
        QVERIFY(failedCleanly(result, "kavro-camsim: ", 1));
        QCOMPARE(QDir(dir.filePath("card")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{"notes.txt"});
        QCOMPARE(kavro::test::readFile(dir.filePath("card/notes.txt")), QByteArray("mine"));
        QCOMPARE(kavro::test::readFile(dir.filePath("card.img")), QByteArray("old image"));
    }

    void saysSoWhenFfmpegIsMissing()
    {
        QTemporaryDir dir;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", dir.filePath("nothing-here"));
        const auto result = runCamsim({"--quick", "--out", dir.filePath("card")}, environment);
        QVERIFY(failedCleanly(result, "kavro-camsim: ", 1));
        QVERIFY(result.err.contains("ffmpeg"));
    }

    void writesACardQuietly()
    {
        QTemporaryDir dir;
        const auto result = runCamsim(
            {"--quick", "--minutes", "0.2", "--seed", "3", "--out", dir.filePath("card")});
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.err.isEmpty(), result.err.constData());
        QCOMPARE(result.out.count('\n'), 1);
        for (const char* file : {"config.bin", "timeset.cfg", "DrvInfo/kavro_000.drv", "DCIM"})
            QVERIFY2(QFileInfo::exists(QDir(dir.filePath("card")).filePath(file)), file);
    }

    void help()
    {
        const auto result = runCamsim({"--help"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.out.contains("--out"));
        QVERIFY(result.out.contains("--image"));
    }
};

QTEST_MAIN(TestCamsimTool)
#include "tst_camsimtool.moc"
