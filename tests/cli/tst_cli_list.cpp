#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace kavro::test;

class TestCliList : public QObject
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

private:
    QTemporaryDir m_card;
};

QTEST_GUILESS_MAIN(TestCliList)
#include "tst_cli_list.moc"
