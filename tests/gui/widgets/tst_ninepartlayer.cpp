#include "widgets/ninepartlayer.h"
#include "widgets/tkvideobackgroundimageview.h"

#include "../widgetrender.h"

#include <QPainter>
#include <QTest>

using kavro::NinePartLayer;
using kavro::TKImage;
using kavro::TKVideoBackgroundImageView;
using kavro::test::imageAlone;
using kavro::test::paintedArea;
using kavro::test::renderOn;

namespace {

QImage transparentImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

class TestNinePartLayer : public QObject
{
    Q_OBJECT

private slots:
    void cornersStayUnscaledAtAnySize_data()
    {
        QTest::addColumn<QString>("set");
        QTest::addColumn<QSize>("size");
        QTest::newRow("main area, small") << "v1" << QSize(200, 120);
        QTest::newRow("main area, large") << "v1" << QSize(900, 500);
        QTest::newRow("second area, small") << "v2" << QSize(120, 90);
        QTest::newRow("second area, large") << "v2" << QSize(334, 250);
    }

    void cornersStayUnscaledAtAnySize()
    {
        QFETCH(QString, set);
        QFETCH(QSize, size);
        TKVideoBackgroundImageView view;
        view.setBackgroundNineImageName(set);
        view.resize(size);
        const QImage image = renderOn(view);

        const QImage topLeft = imageAlone(set + "_top_left_corner");
        const QImage bottomRight = imageAlone(set + "_bottom_right_corner");
        QVERIFY(!topLeft.isNull() && !bottomRight.isNull());
        QCOMPARE(image.copy(QRect(QPoint(0, 0), topLeft.size())), topLeft);
        const QPoint farCorner(size.width() - bottomRight.width(),
                               size.height() - bottomRight.height());
        QCOMPARE(image.copy(QRect(farCorner, bottomRight.size())), bottomRight);
        // The rounded corner leaves the outermost pixel clear; the edges run straight to it.
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(image.pixel(size.width() / 2, 0), topLeft.pixel(topLeft.width() - 1, 0));
        QCOMPARE(image.pixel(0, size.height() / 2), topLeft.pixel(0, topLeft.height() - 1));
        QCOMPARE(qAlpha(image.pixel(size.width() / 2, size.height() / 2)), 255);
    }

    void logoIsCentredAtItsOwnSize()
    {
        TKVideoBackgroundImageView view;
        view.setBackgroundNineImageName(QStringLiteral("v1"));
        view.setLogoImage(QStringLiteral("v1_rear_logo"));
        view.resize(640, 360);
        const QImage image = renderOn(view);
        const QRgb fill = image.pixel(30, 30);
        // Where the logo's own picture lies inside its image, moved to the centred box.
        const TKImage logo = TKImage::named(QStringLiteral("v1_rear_logo"));
        const QImage logoAlone = imageAlone(QStringLiteral("v1_rear_logo"));
        const QRect picture = paintedArea(logoAlone, qRgba(0, 0, 0, 0), logoAlone.rect());
        QVERIFY(!picture.isEmpty());
        const QPoint box((640 - logo.size().width()) / 2, (360 - logo.size().height()) / 2);
        QCOMPARE(paintedArea(image, fill, QRect(20, 20, 600, 320)), picture.translated(box));

        view.setLogoImage(QStringLiteral("v1_front_logo"));
        QVERIFY(renderOn(view) != image);
    }

    void framesSmallerThanTheirCornersStayInside()
    {
        const NinePartLayer layer = NinePartLayer::fromImageSet(QStringLiteral("v1"));
        QImage image = transparentImage(QSize(40, 40));
        QPainter painter(&image);
        layer.draw(&painter, QRectF(10, 10, 20, 10));
        painter.end();
        const QRect drawn = paintedArea(image, qRgba(0, 0, 0, 0), image.rect());
        QVERIFY(!drawn.isEmpty());
        QVERIFY(QRect(10, 10, 20, 10).contains(drawn));
    }

    void missingImagesDrawNothing()
    {
        TKVideoBackgroundImageView view;
        view.setBackgroundNineImageName(QStringLiteral("no_such_set"));
        view.setLogoImage(QStringLiteral("no_such_logo"));
        view.resize(100, 60);
        QCOMPARE(renderOn(view), transparentImage(QSize(100, 60)));
    }
};

QTEST_MAIN(TestNinePartLayer)
#include "tst_ninepartlayer.moc"
