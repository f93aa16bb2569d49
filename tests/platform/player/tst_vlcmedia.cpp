#include "player/vlcmedia.h"
#include "player/vlctime.h"

#include <QDir>
#include <QTest>

using kavro::VLCMedia;

class TestVLCMedia : public QObject
{
    Q_OBJECT

private slots:
    void pathUrlAndDirection()
    {
        const VLCMedia media = VLCMedia::mediaWithPath("sub dir/alwa_r.AVI");
        const QString absolute = QDir::current().absoluteFilePath("sub dir/alwa_r.AVI");
        QCOMPARE(media.path(), absolute);
        QCOMPARE(media.url(), QUrl::fromLocalFile(absolute));
        QVERIFY(media.length().isNull()); // not opened by a player yet
        QVERIFY(media.isRearMedia() && !media.isFrontMedia());
        QVERIFY(VLCMedia::mediaWithPath(QString::fromUtf8("/카드/é/alwa_F.avi")).isFrontMedia());
        QCOMPARE(VLCMedia::mediaWithPath("/card/alwa_20240131_120000_F.mp4").mediaDirection(), 2);

        const VLCMedia copy = media;
        QVERIFY(copy == media);
        QVERIFY(!(VLCMedia::mediaWithPath("sub dir/alwa_r.AVI") == media));
    }

    void noMedia()
    {
        for (const VLCMedia& media : {VLCMedia(), VLCMedia::mediaWithPath(QString())}) {
            QVERIFY(media.isNull());
            QCOMPARE(media.mediaDirection(), 2);
            QVERIFY(!media.isFrontMedia() && !media.isRearMedia());
            QVERIFY(media.url().isEmpty() && media.path().isEmpty());
            QVERIFY(media.length().isNull());
        }
    }
};

QTEST_GUILESS_MAIN(TestVLCMedia)
#include "tst_vlcmedia.moc"
