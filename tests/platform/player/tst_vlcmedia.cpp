#include "player/vlcmedia.h"
#include "player/vlctime.h"

#include <QDir>
#include <QTest>

using kavro::VLCMedia;

class TestVLCMedia : public QObject
{
    Q_OBJECT

private slots:
    void mediaDirectionFromPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("direction");
        QTest::newRow("front") << "/card/DCIM/alwa_20240131_120000_F.avi" << 0;
        QTest::newRow("rear") << "/card/DCIM/event_20240131_120000_R.avi" << 1;
        QTest::newRow("rear, other case") << "/card/alwa_20240131_120000_r.AVI" << 1;
        QTest::newRow("front, other case") << "/card/x_f.Avi" << 0;
        QTest::newRow("no channel") << "/card/a.avi" << 2;
        QTest::newRow("other container") << "/card/alwa_20240131_120000_F.mp4" << 2;
        QTest::newRow("suffix inside the name") << "/card/_F.avi.bak" << 2;
        QTest::newRow("relative") << "_R.avi" << 1;
        QTest::newRow("non-ASCII folder") << QString::fromUtf8("/카드/é/alwa_F.avi") << 0;
    }

    void mediaDirectionFromPath()
    {
        QFETCH(QString, path);
        QFETCH(int, direction);
        const VLCMedia media = VLCMedia::mediaWithPath(path);
        QVERIFY(!media.isNull());
        QCOMPARE(media.mediaDirection(), direction);
        QCOMPARE(media.isFrontMedia(), direction == 0);
        QCOMPARE(media.isRearMedia(), direction == 1);
    }

    void pathAndUrl()
    {
        const VLCMedia media = VLCMedia::mediaWithPath("sub dir/alwa_F.avi");
        const QString absolute = QDir::current().absoluteFilePath("sub dir/alwa_F.avi");
        QCOMPARE(media.path(), absolute);
        QCOMPARE(media.url(), QUrl::fromLocalFile(absolute));
        QVERIFY(media.length().isNull()); // not opened by a player yet

        const VLCMedia copy = media;
        QVERIFY(copy == media);
        QVERIFY(!(VLCMedia::mediaWithPath("sub dir/alwa_F.avi") == media));
    }

    void noMedia()
    {
        for (const VLCMedia& media : {VLCMedia(), VLCMedia::mediaWithPath(QString())}) {
            QVERIFY(media.isNull());
            QCOMPARE(media.mediaDirection(), 2);
            QVERIFY(!media.isFrontMedia() && !media.isRearMedia());
            QVERIFY(media.url().isEmpty());
            QVERIFY(media.path().isEmpty());
            QVERIFY(media.length().isNull());
        }
    }
};

QTEST_GUILESS_MAIN(TestVLCMedia)
#include "tst_vlcmedia.moc"
