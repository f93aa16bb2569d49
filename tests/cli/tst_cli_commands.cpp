#include "testsupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace kavro::test;

namespace {

const QByteArray Csv = "No.,Seq,Date,Time,Day,Latitude,Longitude,Distance,Speed,Max Speed,Valid,"
                       "X,Y,Z,Battery\n"
                       "1,17,2026/03/05,07:04:09,THU,3724.5000,12701.2000,123.4,57,88,A,+0.02,"
                       "-0.50,+1.00,12.4\n"
                       "2,18,2026/03/05,07:04:10,SAT,3724.5000,12701.2000,123.4,57,88,V,+0.02,"
                       "-0.50,+1.00, 9.8\n";

} // namespace

// What `kavro list`, `kavro drv` and `kavro clock` print and write when they succeed.
class TestCliCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_card.isValid());
        QVERIFY(makeFiles(
            m_card.path(),
            {"DCIM/100/alwa_20240131_120000_F.avi", "DCIM/100/alwa_20240131_120000_R.avi",
             "DCIM/101/event_20240131_120000_R.avi", "DCIM/101/motion_20240131_110000_F.avi",
             "backup/motion_20240131_110000_R.avi", "ALWA_20240131_120000_F.avi"}));

        // Two records and the start of a third, as the camera writes them.
        QByteArray bytes = QByteArray::fromHex(
            "020000000000000000000000"
            "110004017e03050704098c0e88139d31d0073900d20400000000000058000000050080ff00017c00"
            "120006007e030507040a8c0e88139d31d0073900d20400000000000058000000050080ff00016200");
        m_drv = m_card.filePath("kavro_000.drv");
        QVERIFY(writeFile(m_drv, bytes + "partial record"));
    }

    void jsonRows()
    {
        ToolResult result = runKavro({"list", m_card.path(), "--format", "json"});
        QCOMPARE(result.exitCode, 0);
        QJsonParseError error;
        QJsonArray rows = QJsonDocument::fromJson(result.out, &error).array();
        QCOMPARE(error.error, QJsonParseError::NoError);

        const QDir card(m_card.path());
        QStringList order;
        for (const QJsonValue& value : rows) {
            QJsonObject row = value.toObject();
            QCOMPARE(row.keys().size(), 8);
            QVERIFY(QDir::isAbsolutePath(row["path"].toString()));
            QCOMPARE(QFileInfo(row["path"].toString()).fileName(), row["file"].toString());
            order << card.relativeFilePath(row["path"].toString());
        }
        QCOMPARE(order,
                 QStringList({"ALWA_20240131_120000_F.avi", "DCIM/101/motion_20240131_110000_F.avi",
                              "backup/motion_20240131_110000_R.avi",
                              "DCIM/101/event_20240131_120000_R.avi",
                              "DCIM/100/alwa_20240131_120000_F.avi",
                              "DCIM/100/alwa_20240131_120000_R.avi"}));
        // Keys are written in contract order.
        QVERIFY(result.out.contains("{\"path\": \""));
        QVERIFY(result.out.contains("\"group\": \"ALWA_20240131_120000\", \"partner\": null}"));

        QJsonObject noTime = rows[0].toObject();
        QCOMPARE(noTime["mode"].toString(), "always");
        QCOMPARE(noTime["date"].toString() + noTime["time"].toString(), "");

        // The partner may live in another folder.
        QJsonObject motion = rows[1].toObject();
        QCOMPARE(
            QStringList({motion["mode"].toString(), motion["channel"].toString(),
                         motion["date"].toString(), motion["time"].toString(),
                         motion["group"].toString()}),
            QStringList({"motion", "front", "2024-01-31", "11:00:00", "motion_20240131_110000"}));
        QCOMPARE(rows[2].toObject()["partner"].toString(), motion["path"].toString());
        QCOMPARE(motion["partner"].toString(), rows[2].toObject()["path"].toString());
        QVERIFY(rows[3].toObject()["partner"].isNull());
        QCOMPARE(rows[4].toObject()["partner"].toString(), rows[5].toObject()["path"].toString());
    }

    void textRows()
    {
        ToolResult result = runKavro({"list", m_card.path()});
        QCOMPARE(result.exitCode, 0);
        QList<QByteArray> lines = result.out.split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines[3].simplified(),
                 "event 2024-01-31 12:00:00 rear event_20240131_120000_R.avi " +
                     QFile::encodeName(m_card.filePath("DCIM/101/event_20240131_120000_R.avi")));
        QVERIFY(lines[0].startsWith("always  -           -         front  ALWA_"));
        // Columns line up: every path starts at the same offset.
        qsizetype pathColumn = lines[0].indexOf('/');
        for (const QByteArray& line : lines)
            QCOMPARE(line.indexOf('/'), pathColumn);
    }

    void emptyFolder()
    {
        QTemporaryDir empty;
        ToolResult text = runKavro({"list", empty.path()});
        QCOMPARE(text.exitCode, 0);
        QCOMPARE(text.out + text.err, QByteArray());
        QCOMPARE(runKavro({"list", empty.path(), "--format=json"}).out, QByteArray("[]\n"));
    }

    void drvFormats()
    {
        ToolResult csv = runKavro({"drv", m_drv});
        QCOMPARE(csv.exitCode, 0);
        QCOMPARE(csv.out, Csv);
        QVERIFY(csv.err.isEmpty());

        ToolResult text = runKavro({"drv", m_drv, "--format=text"});
        QCOMPARE(text.exitCode, 0);
        QList<QByteArray> lines = text.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 3);
        // Aligned and right-justified: equal lengths, each column ending where its title ends.
        QCOMPARE(lines[1].size(), lines[0].size());
        QCOMPARE(lines[2].size(), lines[0].size());
        QCOMPARE(lines[1].indexOf("3724.5000") + 9, lines[0].indexOf("Latitude") + 8);
        QVERIFY(lines[2].endsWith("    9.8"));

        QString out = m_card.filePath("records.csv");
        ToolResult toFile = runKavro({"drv", "--format", "csv", m_drv, "-o", out});
        QCOMPARE(toFile.exitCode, 0);
        QVERIFY(toFile.out.isEmpty());
        QCOMPARE(readFile(out), Csv);
    }

    void clockWrites()
    {
        QTemporaryDir card;
        QString timeset = card.filePath("timeset.cfg");
        ToolResult result = runKavro({"clock", card.path(), "--at", "2027/03/05 07:04:09"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.err.isEmpty());
        QCOMPARE(readFile(timeset), "2027/03/05 07:04:09");

        QDateTime before = QDateTime::currentDateTime();
        QCOMPARE(runKavro({"clock", card.path()}).exitCode, 0);
        QDateTime after = QDateTime::currentDateTime();
        QByteArray now = readFile(timeset);
        QDateTime written = QDateTime::fromString(QString::fromLatin1(now), "yyyy/MM/dd HH:mm:ss");
        QVERIFY2(now.size() == 19 && written.secsTo(before) <= 1 && written.secsTo(after) >= 0,
                 now.constData());
    }

private:
    QTemporaryDir m_card;
    QString m_drv;
};

QTEST_GUILESS_MAIN(TestCliCommands)
#include "tst_cli_commands.moc"
