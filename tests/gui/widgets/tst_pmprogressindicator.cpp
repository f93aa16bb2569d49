#include "widgets/pmprogressindicator.h"

#include "../widgetrender.h"

#include <QTest>

using kavro::PMProgressIndicator;
using kavro::test::renderOn;

namespace {

const QColor canvas(255, 0, 255);

bool isAccent(QRgb pixel)
{
    return qBlue(pixel) > 180 && qGreen(pixel) > 150 && qRed(pixel) < 140;
}

bool isTrack(QRgb pixel)
{
    return QColor(pixel).lightness() < 60;
}

} // namespace

class TestPMProgressIndicator : public QObject
{
    Q_OBJECT

private slots:
    void determinateBarFillsItsFraction()
    {
        PMProgressIndicator indicator;
        indicator.setIndeterminate(false);
        indicator.resize(200, 8);
        indicator.setDoubleValue(50);
        const QImage half = renderOn(indicator, canvas);
        for (int x : {50, 98, 102, 150})
            QVERIFY(x < 100 ? isAccent(half.pixel(x, 4)) : isTrack(half.pixel(x, 4)));
        // Rounded ends: the very corner shows what lies behind.
        QCOMPARE(QColor(half.pixel(0, 0)), canvas);

        indicator.setMinValue(40);
        indicator.setMaxValue(60);
        const QImage halfAgain = renderOn(indicator, canvas);
        QCOMPARE(indicator.fraction(), 0.5);
        QCOMPARE(halfAgain, half);

        // Values stay inside the range; a maximum below the minimum is taken as the minimum.
        indicator.setDoubleValue(qQNaN());
        QCOMPARE(indicator.doubleValue(), 50.0);
        indicator.setDoubleValue(150);
        QCOMPARE(indicator.doubleValue(), 60.0);
        indicator.setMaxValue(20);
        QCOMPARE(indicator.maxValue(), 40.0);
        QCOMPARE(indicator.fraction(), 0.0);
    }

    void indeterminateBarMovesOnlyWhileAnimating()
    {
        PMProgressIndicator indicator;
        indicator.resize(200, 8);
        const QImage resting = renderOn(indicator, canvas);
        for (int x = 0; x < 200; x += 10)
            QVERIFY(!isAccent(resting.pixel(x, 4)));
        indicator.startAnimation();
        const QImage first = renderOn(indicator, canvas);
        QTRY_VERIFY(renderOn(indicator, canvas) != first);
        indicator.stopAnimation();
        QCOMPARE(renderOn(indicator, canvas), resting);
    }

    void determinateWheelDrawsAnArcFromTheTop()
    {
        PMProgressIndicator indicator;
        indicator.setIndicatorStyle(PMProgressIndicator::SpinningStyle);
        QCOMPARE(indicator.sizeHint(), QSize(32, 32));
        indicator.setIndeterminate(false);
        indicator.resize(32, 32);
        indicator.setDoubleValue(25);
        const QImage quarter = renderOn(indicator, canvas);
        // The ring runs 1.5 px inside the edge; a quarter covers the upper right part.
        QVERIFY(isAccent(quarter.pixel(25, 6)));
        QVERIFY(isTrack(quarter.pixel(6, 25)));
        QVERIFY(isTrack(quarter.pixel(25, 25)));
    }
};

QTEST_MAIN(TestPMProgressIndicator)
#include "tst_pmprogressindicator.moc"
