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
