#include "card/bytesize.h"
#include "card/kvrdisksource.h"
#include "testsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

using namespace kavro;

namespace {

// Disks mounted on folders of a temporary directory, so that the config.bin test runs against a
// real file system. Each entry is "NAME FLAGS": w writable, c holds config.bin, d holds a folder of
// that name, u not mounted.
class FolderDisks : public KVRDiskSource
{
public:
    explicit FolderDisks(const QStringList& entries)
    {
        for (const QString& entry : entries) {
            QString name = entry.section(' ', 0, 0), flags = entry.section(' ', 1);
            QString root = rootOf(int(m_disks.size()));
            QDir().mkpath(root);
            if (flags.contains('c'))
                test::writeFile(QDir(root).filePath("config.bin"), QByteArray(428, '\0'));
            if (flags.contains('d'))
                QDir(root).mkdir("config.bin");
            m_disks.append(TKUSBDiskEntity(
                name, flags.contains('u') ? QUrl() : QUrl::fromLocalFile(root), "/dev/sdx", {},
                8ull << 30, flags.contains('w'), false, QString::number(m_disks.size())));
        }
    }
    QString rootOf(int index) const { return m_root.filePath(QString::number(index)); }

protected:
    QList<TKUSBDiskEntity> listUsbDiskEntities() const override { return m_disks; }

private:
    QTemporaryDir m_root;
    QList<TKUSBDiskEntity> m_disks;
};

} // namespace

class TestCardRules : public QObject
{
    Q_OBJECT

private slots:
    void findCardDisk_data()
    {
        QTest::addColumn<QStringList>("disks");
        QTest::addColumn<QString>("expected"); // the winner's key; empty: none
        QTest::newRow("no disk") << QStringList{} << "";
        QTest::newRow("labelled read-only beats writable other")
            << QStringList{"CARD w", "KAVRO"} << "1";
        QTest::newRow("config.bin decides") << QStringList{"KAVRO w", "KAVRO wc"} << "1";
        QTest::newRow("writable beats read-only with config.bin")
            << QStringList{"KAVRO c", "KAVRO w"} << "1";
        QTest::newRow("first of equals") << QStringList{"KAVRO w", "KAVRO w"} << "0";
        QTest::newRow("single read-only other") << QStringList{"CARD"} << "0";
        QTest::newRow("label is case-sensitive") << QStringList{"kavro", "CARD w"} << "1";
        QTest::newRow("config.bin must be a file") << QStringList{"KAVRO wd", "KAVRO wc"} << "1";
        QTest::newRow("unmounted has no config.bin") << QStringList{"KAVRO wcu", "KAVRO wc"} << "1";
    }

    void findCardDisk()
    {
        QFETCH(QStringList, disks);
        QFETCH(QString, expected);
        std::optional<TKUSBDiskEntity> card = FolderDisks(disks).findCardDisk();
        QCOMPARE(card ? card->key() : QString(), expected);
    }

    void usbVolumeContainingFile()
    {
        FolderDisks source({"A w", "B wu", "C w", "D w"});
        QVERIFY(!source.usbVolumeContainingFile("timeset.cfg"));
        for (int disk : {3, 2})
            QVERIFY(test::writeFile(QDir(source.rootOf(disk)).filePath("timeset.cfg"), "x"));
        QCOMPARE(source.usbVolumeContainingFile("timeset.cfg")->toLocalFile(), source.rootOf(2));
    }

    void byteSize_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        const std::pair<quint64, const char*> cases[] = {
            {0, "0 B"},
            {1023, "1023 B"},
            {1024, "1.0 kB"},
            {1536, "1.5 kB"},
            {6120, "6 kB"},   // r = 1000 rounds up to the next whole unit
            {10239, "10 kB"}, // 9 units, r = 1023
            {1048575, "1.0 MB"}, // 1023.999 kB rounds into the next unit
            {7948206080, "7.4 GB"},
            {~0ull, "16 EB"},
            {10 * 1024 + 512, "10 kB"},              // whole tie: even stays
            {11 * 1024 + 512, "12 kB"},              // odd goes up
            {(10 * 1024 + 512) * 1024 + 1, "11 MB"}, // sticky: not a tie
            {1024 + 250, "1.2 kB"},                  // decimal tie: even stays
            {1024 + 350, "1.4 kB"},                  // odd goes up
            {(1024 + 250) * 1024 + 1, "1.3 MB"},     // sticky
            {1024 + 949, "1.9 kB"},                  // decimal by hundreds, not tenths
            {1023 * 1024, "1023 kB"},                // longer than the 7-byte buffer
        };
        for (const auto& [bytes, text] : cases)
            QTest::addRow("%llu", bytes) << bytes << QString::fromLatin1(text);
    }

    void byteSize()
    {
        QFETCH(quint64, bytes);
        QFETCH(QString, text);
        QCOMPARE(byteSizeString(bytes), text);

        struct
        {
            char buffer[ByteSizeBufferSize];
            char guard[8];
        } area;
        std::memset(&area, '#', sizeof area);
        formatByteSize(area.buffer, bytes);
        QCOMPARE(QString::fromLatin1(area.buffer), text.left(ByteSizeBufferSize - 1));
        QCOMPARE(QByteArray(area.guard, 8), QByteArray(8, '#'));
    }

    void displayString()
    {
        auto line = [](const QString& name, const QString& model) {
            return TKUSBDiskEntity(name, QUrl::fromLocalFile("/media/KAVRO"), "/dev/sdb1", model,
                                   7948206080, true, false, "/org/freedesktop/UDisks2/sdb1")
                .displayString();
        };
        QCOMPARE(line("KAVRO", "Card Reader"), "[7.4 GB] KAVRO <Card Reader>");
        QCOMPARE(line("KAVRO", ""), "[7.4 GB] KAVRO ");
        QCOMPARE(line("", ""), "[7.4 GB] /dev/sdb1 ");
    }
};

QTEST_GUILESS_MAIN(TestCardRules)
#include "tst_cardrules.moc"
