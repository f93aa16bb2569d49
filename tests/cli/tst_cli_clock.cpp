#include "testsupport.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <QtTest>

using namespace kavro::test;

class TestCliClock : public QObject
{
    Q_OBJECT

private slots:
    void writes()
    {
        QTemporaryDir card;
        QString timeset = card.filePath("timeset.cfg");
        ToolResult result = runKavro({"clock", card.path(), "--at", "2027/03/05 07:04:09"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.err.isEmpty());
        QCOMPARE(readFile(timeset), "2027/03/05 07:04:09");

        // A file path is written as it is; a longer file keeps its tail.
        QString other = card.filePath("other.cfg");
        QVERIFY(writeFile(other, "1999/01/01 00:00:00 and more"));
        QCOMPARE(runKavro({"clock", "--at=2026/11/16 13:05:00", other}).exitCode, 0);
        QCOMPARE(readFile(other), "2026/11/16 13:05:00 and more");

        QDateTime before = QDateTime::currentDateTime();
        QCOMPARE(runKavro({"clock", card.path()}).exitCode, 0);
        QDateTime after = QDateTime::currentDateTime();
        QByteArray now = readFile(timeset);
        QDateTime written = QDateTime::fromString(QString::fromLatin1(now), "yyyy/MM/dd HH:mm:ss");
        QVERIFY2(now.size() == 19 && written.secsTo(before) <= 1 && written.secsTo(after) >= 0,
                 now.constData());
    }
};

QTEST_GUILESS_MAIN(TestCliClock)
#include "tst_cli_clock.moc"
