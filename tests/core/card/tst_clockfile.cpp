#include "card/timesetfile.h"
#include "testsupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace kavro;

class TestClockFile : public QObject
{
    Q_OBJECT

private slots:
    void text()
    {
        QCOMPARE(timeSetText(QDate(2027, 3, 5), QTime(7, 4, 9)), "2027/03/05 07:04:09");
        QCOMPARE(timeSetText(QDate(999, 12, 31), QTime(23, 59, 59, 999)), "0999/12/31 23:59:59");
        QVERIFY(!timeSetText(QDate(10000, 1, 1), QTime(0, 0)));
        QVERIFY(!timeSetText(QDate(), QTime(0, 0)));

        // The window's rule: the day of one moment and the time of another, both in local time.
        QDateTime day(QDate(2026, 11, 16), QTime(23, 0));
        QDateTime clock(QDate(2001, 1, 1), QTime(13, 5, 0));
        QCOMPARE(timeSetText(day.toUTC(), clock.toUTC()), "2026/11/16 13:05:00");
    }

    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::newRow("ordinary") << "2026/11/16 13:05:00" << true;
        QTest::newRow("leap day") << "2028/02/29 00:00:00" << true;
        QTest::newRow("no leap day") << "2026/02/29 00:00:00" << false;
        QTest::newRow("February 30") << "2026/02/30 12:00:00" << false;
        QTest::newRow("year 0") << "0000/01/01 00:00:00" << false;
        QTest::newRow("one-digit month") << "2026/3/05 07:04:09" << false;
        QTest::newRow("trailing blank") << "2026/03/05 07:04:09 " << false;
        QTest::newRow("other digits") << QString::fromUtf8("٢٠٢٦/03/05 07:04:09") << false;
    }

    void parse()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        auto parsed = parseTimeSetText(text);
        QCOMPARE(parsed.has_value(), valid);
        if (valid)
            QCOMPARE(timeSetText(parsed->first, parsed->second), text.toLatin1());
    }

    void write()
    {
        QTemporaryDir dir;
        const QByteArray text = "2027/03/05 07:04:09";
        const std::pair<QByteArray, QByteArray> cases[] = {
            {{}, text},                                     // created
            {"abc", text},                                  // shorter: grows to 19
            {"1999/01/01 00:00:00\nTAIL", text + "\nTAIL"}, // longer: keeps its tail
        };
        for (const auto& [before, after] : cases) {
            QString path = dir.filePath("timeset.cfg");
            QFile::remove(path);
            if (!before.isNull())
                QVERIFY(test::writeFile(path, before));
            QVERIFY(doWriteConfigFile(path, text));
            QCOMPARE(test::readFile(path), after);
        }

        QString error;
        QVERIFY(!doWriteConfigFile(dir.path(), text, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!doWriteConfigFile(dir.filePath("missing/timeset.cfg"), text));
        QVERIFY(!QFile::exists(dir.filePath("missing")));
    }
};

QTEST_GUILESS_MAIN(TestClockFile)
#include "tst_clockfile.moc"
