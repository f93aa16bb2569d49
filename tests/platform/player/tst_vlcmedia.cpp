#include "player/vlcmedia.h"
#include "player/vlctime.h"

#include <QDir>
#include <QTest>

#include <limits>

using kavro::VLCMedia;
using kavro::VLCTime;

Q_DECLARE_METATYPE(VLCTime)

class TestVLCMedia : public QObject
{
    Q_OBJECT

private slots:
    void pathUrlDirectionAndIdentity()
    {
        const VLCMedia media = VLCMedia::mediaWithPath("sub dir/alwa_r.AVI");
        const QString absolute = QDir::current().absoluteFilePath("sub dir/alwa_r.AVI");
        QCOMPARE(media.path(), absolute);
        QCOMPARE(media.url(), QUrl::fromLocalFile(absolute));
        QVERIFY(media.length().isNull()); // not opened by a player yet
        QVERIFY(media.isRearMedia() && !media.isFrontMedia());
        QVERIFY(VLCMedia::mediaWithPath(QString::fromUtf8("/카드/é/alwa_F.avi")).isFrontMedia());
        const VLCMedia copy = media;
        QVERIFY(copy == media);
        QVERIFY(!(VLCMedia::mediaWithPath("sub dir/alwa_r.AVI") == media));

        // No path gives no media, which has no direction either.
        const VLCMedia none = VLCMedia::mediaWithPath(QString());
        QVERIFY(none.isNull() && none == VLCMedia());
        QCOMPARE(none.mediaDirection(), 2);
        QVERIFY(none.url().isEmpty() && none.path().isEmpty() && none.length().isNull());
    }

    void stringValue_data()
    {
        QTest::addColumn<VLCTime>("time");
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << VLCTime::nullTime() << "--:--";
        QTest::newRow("start") << VLCTime(0) << "00:00";
        QTest::newRow("under a second") << VLCTime(999) << "00:00";
        // The end test of the player compares the remaining time's text with "00:00".
        QTest::newRow("last fraction before the end") << VLCTime(-999) << "00:00";
        QTest::newRow("one second left") << VLCTime(-1000) << "-00:01";
        QTest::newRow("minutes") << VLCTime(61999) << "01:01";
        QTest::newRow("just under an hour") << VLCTime(3599999) << "59:59";
        QTest::newRow("an hour") << VLCTime(3600000) << "1:00:00";
        QTest::newRow("hours remaining") << VLCTime(-3725000) << "-1:02:05";
        QTest::newRow("ten hours") << VLCTime(36000000) << "10:00:00";
        QTest::newRow("most negative")
            << VLCTime(std::numeric_limits<qint64>::min()) << "-2562047788015:12:55";
    }

    void stringValue()
    {
        QFETCH(VLCTime, time);
        QFETCH(QString, text);
        QCOMPARE(time.stringValue(), text);
    }

    void nullTimeIsNotZero()
    {
        QVERIFY(VLCTime::nullTime().isNull() && !VLCTime(0).isNull());
        QCOMPARE(VLCTime::nullTime().intValue(), 0);
        QVERIFY(VLCTime(0) != VLCTime::nullTime());
    }
};

QTEST_GUILESS_MAIN(TestVLCMedia)
#include "tst_vlcmedia.moc"
