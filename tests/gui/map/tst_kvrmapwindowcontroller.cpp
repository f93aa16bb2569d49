#include "map/kvrmapwindowcontroller.h"

#include "map/kvrmapview.h"
#include "mappagetest.h"

#include <QRegularExpression>
#include <QTest>
#include <QWidget>

#include <cmath>

using kavro::KVRMapWindowController;
using kavro::RoutePoint;
using namespace kavro::test;

namespace {

// Pixels close to a colour of the page (the marker's fill, the route's line).
int pixelsNear(const QImage& image, QColor colour)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (qAbs(pixel.red() - colour.red()) < 24 &&
                qAbs(pixel.green() - colour.green()) < 24 &&
                qAbs(pixel.blue() - colour.blue()) < 24)
                ++count;
        }
    }
    return count;
}

} // namespace

class TestKVRMapWindowController : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareMapTests(); }

    void movesBesideTheFrameKeepingItsSize_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QPoint>("topLeft");
        QTest::newRow("settings window") << QRect(100, 80, 600, 400) << QPoint(700, 80);
        QTest::newRow("one pixel") << QRect(0, 0, 1, 1) << QPoint(1, 0);
        QTest::newRow("left of the screen") << QRect(-300, 50, 200, 100) << QPoint(-100, 50);
    }

    void movesBesideTheFrameKeepingItsSize()
    {
        QFETCH(QRect, frame);
        QFETCH(QPoint, topLeft);
        KVRMapWindowController controller;
        controller.moveWindowRightBy(frame);
        QWidget* window = controller.window();
        QCOMPARE(window->frameGeometry().topLeft(), topLeft);
        QCOMPARE(window->size(), KVRMapWindowController::DefaultWindowSize);
    }

    // As the drive-record viewer uses it: shown, then given the route and the position before
    // the page has loaded. Offline here: the route and marker on the plain background, the scale
    // and the label. The picture is kept under /tmp for a person to look at.
    void showsTheRouteAndMarker()
    {
        KVRMapWindowController controller;
        QVERIFY(!controller.isWindowLoaded());
        QTest::ignoreMessage(
            QtInfoMsg,
            QRegularExpression(R"(^map window frame \{\{-?\d+, -?\d+\}, \{420, 420\}\}$)"));
        controller.showWindow();
        QVERIFY(controller.window()->isVisible());
        kavro::KVRMapView* view = controller.mapWebView();
        std::vector<RoutePoint> route;
        for (int i = 0; i <= 40; ++i)
            route.push_back({37.500 + i * 0.0008, 127.030 + 0.004 * std::sin(i / 6.0), {}});
        view->setRoute(route);
        controller.updateMapLat(route[28].latitude, route[28].longitude);
        QVERIFY(loadOffline(*view));
        // The page is given six decimals.
        QCOMPARE(markerOf(mapState(*view)), (QList<double>{37.5224, 127.026004}));
        QTRY_VERIFY_WITH_TIMEOUT(mapState(*view).value("offline").toBool(), 20000);

        QImage picture;
        QTRY_VERIFY_WITH_TIMEOUT((picture = controller.window()->grab().toImage(),
                                  pixelsNear(picture, QColor(0xe8, 0x45, 0x3c)) > 60),
                                 20000);
        QVERIFY(pixelsNear(picture, QColor(0x1a, 0x73, 0xe8)) > 200);
        QVERIFY(picture.save(QStringLiteral("/tmp/kavro-map-window.png")));
    }
};

QTEST_MAIN(TestKVRMapWindowController)
#include "tst_kvrmapwindowcontroller.moc"
