#include "widgets/custombackgroundbox.h"
#include "widgets/tkthreepartimageview.h"

#include "../widgetrender.h"

#include <QPainter>
#include <QTest>

using kavro::CustomBackgroundBox;
using kavro::TKColorBackgroundView;
using kavro::TKThreePartImageView;
using kavro::test::imageAlone;
using kavro::test::renderOn;

// The plain backgrounds: the three-part bar and the colour boxes.
class TestTKThreePartImageView : public QObject
{
    Q_OBJECT

private slots:
    void capsKeepTheirWidthAndTheMiddleStretches()
    {
        const QColor canvas(40, 0, 40);
        TKThreePartImageView bar;
        bar.setImages(QStringLiteral("record_p"), QStringLiteral("v1_center_fill"),
                      QStringLiteral("information_p"));
        bar.resize(400, 28);
        const QImage image = renderOn(bar, canvas);
        const QImage left = imageAlone(QStringLiteral("record_p"), canvas);
        const QImage right = imageAlone(QStringLiteral("information_p"), canvas);
        QCOMPARE(image.copy(QRect(QPoint(0, 0), left.size())), left);
        QCOMPARE(image.copy(QRect(QPoint(400 - right.width(), 0), right.size())), right);
        const QRgb middle = imageAlone(QStringLiteral("v1_center_fill"), canvas).pixel(0, 0);
        for (int x : {left.width(), 200, 400 - right.width() - 1})
            QCOMPARE(image.pixel(x, 14), middle);
    }

    void colourViewFillsAndDrawsItsBorderInside()
    {
        TKColorBackgroundView view;
        view.resize(50, 30);
        QCOMPARE(renderOn(view, Qt::magenta).pixel(25, 15), QColor(Qt::magenta).rgba());
        view.setBackgroundColor(Qt::black);
        view.setBorder(Qt::white, 2);
        QImage expected(view.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter(&expected).fillRect(2, 2, 46, 26, Qt::black);
        QCOMPARE(renderOn(view, Qt::magenta), expected);
    }

    void roundedBoxLeavesItsCornersClear()
    {
        CustomBackgroundBox box;
        box.resize(60, 40);
        box.setBackgroundColor(Qt::black);
        box.setCornerRadius(10);
        const QImage image = renderOn(box, Qt::magenta);
        QCOMPARE(image.pixel(0, 0), QColor(Qt::magenta).rgba());
        QCOMPARE(image.pixel(59, 39), QColor(Qt::magenta).rgba());
        QCOMPARE(image.pixel(30, 0), QColor(Qt::black).rgba());
        QCOMPARE(image.pixel(30, 20), QColor(Qt::black).rgba());
    }
};

QTEST_MAIN(TestTKThreePartImageView)
#include "tst_tkthreepartimageview.moc"
