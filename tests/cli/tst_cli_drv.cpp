#include "testsupport.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace kavro::test;

namespace {

const QByteArray Csv = "No.,Seq,Date,Time,Day,Latitude,Longitude,Distance,Speed,Max Speed,Valid,"
                       "X,Y,Z,Battery\n"
                       "1,17,2026/03/05,07:04:09,THU,3724.5000,12701.2000,123.4,57,88,A,+0.02,"
                       "-0.50,+1.00,12.4\n"
                       "2,18,2026/03/05,07:04:10,SAT,3724.5000,12701.2000,123.4,57,88,V,+0.02,"
                       "-0.50,+1.00, 9.8\n";

} // namespace

class TestCliDrv : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Two records and the start of a third, as the camera writes them.
        QByteArray bytes = QByteArray::fromHex(
            "020000000000000000000000"
            "110004017e03050704098c0e88139d31d0073900d20400000000000058000000050080ff00017c00"
            "120006007e030507040a8c0e88139d31d0073900d20400000000000058000000050080ff00016200");
        m_file = m_dir.filePath("kavro_000.drv");
        QVERIFY(writeFile(m_file, bytes + "partial record"));
    }

    void formats()
    {
        ToolResult csv = runKavro({"drv", m_file});
        QCOMPARE(csv.exitCode, 0);
        QCOMPARE(csv.out, Csv);
        QVERIFY(csv.err.isEmpty());

        ToolResult text = runKavro({"drv", m_file, "--format=text"});
        QCOMPARE(text.exitCode, 0);
        QList<QByteArray> lines = text.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 3);
        // Aligned and right-justified: equal lengths, each column ending where its title ends.
        QCOMPARE(lines[1].size(), lines[0].size());
        QCOMPARE(lines[2].size(), lines[0].size());
        QCOMPARE(lines[1].indexOf("3724.5000") + 9, lines[0].indexOf("Latitude") + 8);
        QVERIFY(lines[2].endsWith("    9.8"));

        QString out = m_dir.filePath("records.csv");
        ToolResult toFile = runKavro({"drv", "--format", "csv", m_file, "-o", out});
        QCOMPARE(toFile.exitCode, 0);
        QVERIFY(toFile.out.isEmpty());
        QCOMPARE(readFile(out), Csv);
    }

private:
    QTemporaryDir m_dir;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestCliDrv)
#include "tst_cli_drv.moc"
