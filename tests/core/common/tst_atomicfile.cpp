#include "common/atomicfile.h"
#include "testsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestAtomicFile : public QObject
{
    Q_OBJECT

private slots:
    void replacesWholeContent()
    {
        QTemporaryDir dir;
        QString path = dir.filePath("config.bin");
        QVERIFY(kavro::test::writeFile(path, QByteArray(1000, 'x')));
        QVERIFY(kavro::writeFileAtomically(path, "short"));
        QCOMPARE(kavro::test::readFile(path), QByteArray("short"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 1); // no temporary left behind
    }

    void failedWriteKeepsOldFile()
    {
        QTemporaryDir dir;
        QString path = dir.filePath("config.bin");
        QVERIFY(kavro::test::writeFile(path, "old content"));
        QString error;
        {
            kavro::test::FileSizeLimit fullCard(64);
            QVERIFY(!kavro::writeFileAtomically(path, QByteArray(4096, 'n'), &error));
        }
        QVERIFY(!error.isEmpty());
        QCOMPARE(kavro::test::readFile(path), QByteArray("old content"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 1);

        error.clear();
        QVERIFY(!kavro::writeFileAtomically(dir.filePath("no/such/folder/file"), "x", &error));
        QVERIFY(!error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestAtomicFile)
#include "tst_atomicfile.moc"
