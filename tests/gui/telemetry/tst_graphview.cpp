#include "telemetry/graphview.h"

#include "../widgetrender.h"

#include <QTest>

using kavro::GraphView;
using kavro::KVRGSensor;
using kavro::test::renderOn;

namespace {

// The traces' colours by channel: 0 red (x), 1 green (y), 2 blue (z).
bool isTrace(QRgb pixel, int channel)
{
    const int c[3] = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
    return c[channel] > c[(channel + 1) % 3] + 30 && c[channel] > c[(channel + 2) % 3] + 30;
}

bool isWhite(QRgb pixel)
{
    return qRed(pixel) > 245 && qGreen(pixel) > 245 && qBlue(pixel) > 245;
}

// The rows of one column where a trace shows.
QList<int> traceRows(const QImage& image, int x, int channel)
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (isTrace(image.pixel(x, y), channel))
            rows.append(y);
    }
    return rows;
}

} // namespace

// A 440 x 130 view has a 400 x 114 area: grid rows 7 (+2), 36 (+1), 64 (0), 93 (-1) and 121 (-2),
// each a 1 px rectangle growing upwards from y = 8 + i * 28.5 with the origin at the bottom.
class TestGraphView : public QObject
{
    Q_OBJECT

private slots:
    void positionBarFollowsPlayPosition_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<int>("left");
        QTest::newRow("start") << 0.0 << 20;
        QTest::newRow("quarter") << 0.25 << 120;
        QTest::newRow("end") << 1.0 << 420;
        QTest::newRow("beyond the end stays at the end") << 1.5 << 420;
    }

    void positionBarFollowsPlayPosition()
    {
        QFETCH(double, position);
        QFETCH(int, left);
        GraphView view;
        view.resize(440, 130);
        view.setGraphData({KVRGSensor(0.5f, -0.5f, 1.0f)});
        view.updateTimePosition(position);
        view.updateTimePosition(qQNaN()); // ignored
        const QImage image = renderOn(view, Qt::magenta);
        // 2 px wide, from just below the top line down to the bottom line.
        QVERIFY(isWhite(image.pixel(left, 20)) && isWhite(image.pixel(left + 1, 20)));
        QVERIFY(!isWhite(image.pixel(left + 2, 20)) && !isWhite(image.pixel(left - 1, 20)));
        QVERIFY(isWhite(image.pixel(left, 8)) && isWhite(image.pixel(left, 121)));
        QVERIFY(!isWhite(image.pixel(left, 6)) && !isWhite(image.pixel(left, 123)));
    }

    void oneSampleDrawsFlatLinesWhereTheScalePutsThem_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<int>("channel");
        QTest::addColumn<int>("firstRow");
        QTest::addColumn<int>("lastRow");
        QTest::newRow("+2 on the top line") << 2.0f << 0 << 7 << 8;
        QTest::newRow("+1") << 1.0f << 1 << 35 << 37;
        QTest::newRow("0 on the zero line") << 0.0f << 2 << 64 << 65;
        QTest::newRow("-2 on the bottom line") << -2.0f << 2 << 121 << 122;
        QTest::newRow("+2.2 above the grid, not clipped") << 2.2f << 0 << 0 << 4;
        QTest::newRow("-2.2 below the grid, not clipped") << -2.2f << 1 << 125 << 129;
    }

    void oneSampleDrawsFlatLinesWhereTheScalePutsThem()
    {
        QFETCH(float, value);
        QFETCH(int, channel);
        QFETCH(int, firstRow);
        QFETCH(int, lastRow);
        KVRGSensor sample(0.5f, 0.5f, 0.5f);
        (channel == 0 ? sample.x : channel == 1 ? sample.y : sample.z) = value;
        GraphView view;
        view.resize(440, 130);
        view.setGraphData({sample});
        const QImage image = renderOn(view, Qt::magenta);
        // The points run from x = 21 to 421 and no further.
        for (int x : {22, 120, 300, 419}) {
            const QList<int> rows = traceRows(image, x, channel);
            QVERIFY2(!rows.isEmpty() && rows.first() >= firstRow && rows.last() <= lastRow,
                     qPrintable(QStringLiteral("x=%1").arg(x)));
        }
        QVERIFY(traceRows(image, 423, channel).isEmpty());
        QVERIFY(traceRows(image, 19, channel).isEmpty());
    }

    void longRecordingsAreResampledByFraction()
    {
        // A million samples: +1 in the first half, -1 in the second. Point i shows sample
        // N * i / P, so the step lies at x = 21 + 200.1.
        std::vector<KVRGSensor> values(1000000, KVRGSensor(1.0f, 0.0f, 0.0f));
        std::fill(values.begin() + 500000, values.end(), KVRGSensor(-1.0f, 0.0f, 0.0f));
        GraphView view;
        view.resize(440, 130);
        view.setGraphData(std::move(values));
        const QImage image = renderOn(view, Qt::magenta);
        for (int x : {30, 150, 218})
            QCOMPARE(traceRows(image, x, 0).value(0, -1), 36);
        for (int x : {224, 300, 419})
            QCOMPARE(traceRows(image, x, 0).value(0, -1), 93);
    }

    void newDataAndNewSizesAreRedrawn()
    {
        const std::vector<KVRGSensor> later = {KVRGSensor(-1.0f, 0.5f, 0.0f)};
        GraphView view, fresh;
        view.resize(440, 130);
        fresh.resize(440, 130);
        fresh.setGraphData(later);
        view.setGraphData({KVRGSensor(1.0f, 0.0f, 0.0f)});
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        renderOn(view, Qt::magenta);
        view.setGraphData(later);
        QCOMPARE(renderOn(view, Qt::magenta), renderOn(fresh, Qt::magenta));
        view.resize(600, 150);
        fresh.resize(600, 150);
        QCOMPARE(renderOn(view, Qt::magenta), renderOn(fresh, Qt::magenta));
        view.setGraphData({});
        view.setBackgroundColor(Qt::black);
        QCOMPARE(QColor(renderOn(view, Qt::magenta).pixel(300, 50)), QColor(Qt::black));
    }

    void noSamplesDrawsGridAndLabelsOnly()
    {
        GraphView view;
        view.resize(440, 130);
        view.updateTimePosition(0.5);
        const QImage image = renderOn(view, Qt::magenta);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 21; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                QVERIFY(!isWhite(pixel) && !isTrace(pixel, 0) && !isTrace(pixel, 1) &&
                        !isTrace(pixel, 2));
            }
        }
        const QColor grid = QColor::fromRgbF(0.8f, 0.8f, 0.8f);
        for (int row : {7, 36, 64, 93, 121})
            QCOMPARE(QColor(image.pixel(200, row)), grid);
        QCOMPARE(QColor(image.pixel(20, 90)), grid);
        QVERIFY(QColor(image.pixel(200, 50)).lightness() < 40); // a dark strip
        // The "0" label: white, ending 2 px left of x = 20, its box centred 2 px above the zero
        // line.
        const QRect label =
            kavro::test::paintedArea(image, image.pixel(2, 52), QRect(0, 50, 20, 28));
        QVERIFY(label.right() >= 14 && label.right() <= 17);
        QVERIFY2(std::abs(label.center().y() - 62) <= 3, qPrintable(QString::number(label.y())));
    }
};

QTEST_MAIN(TestGraphView)
#include "tst_graphview.moc"
