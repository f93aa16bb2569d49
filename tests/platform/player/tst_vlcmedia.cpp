#include "player/vlcmedia.h"
#include "player/vlctime.h"

#include <QDir>
#include <QTest>

using kavro::VLCMedia;

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
};

QTEST_GUILESS_MAIN(TestVLCMedia)
#include "tst_vlcmedia.moc"
