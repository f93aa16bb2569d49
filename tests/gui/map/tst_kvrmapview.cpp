#include "map/kvrmapview.h"

#include "mappagetest.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <limits>

using kavro::KVRMapView;
using namespace kavro::test;

class TestKVRMapView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareMapTests(); }

    void thePageOfEachLanguage()
    {
        QCOMPARE(KVRMapView::pageName(QStringLiteral("en")), QStringLiteral("map2"));
        QCOMPARE(KVRMapView::pageName(QStringLiteral("ko")), QStringLiteral("map2_eng"));
        KVRMapView view; // registers the resources
        QVERIFY(QFile::exists(QStringLiteral(":/map/map2_eng.htm")));
    }

    // The latest position and route win; other calls arrive in the order made. Bad calls leave
    // the page as it was, and a restarted renderer is given the route and position again.
    void callsBeforeTheLoadArriveAfterIt()
    {
        KVRMapView view;
        // A drive through Seoul, south to north; a position the page cannot draw never reaches it.
        view.setRoute({{37.51, 127.05, {}},
                       {37.52, 127.045, {}},
                       {37.53, 127.04, {}},
                       {std::numeric_limits<double>::quiet_NaN(), 1, {}}});
        view.showNoGpsData();
        view.showNoGpsData();
        view.showPosition(1.0, 2.0);
        view.evaluateWebScript(QStringLiteral("KVRDebug('second')"));
        view.showPosition(37.52, 127.045);
        QVERIFY(!view.isPageReady());
        QVERIFY(loadOffline(view));

        QVariantMap state = mapState(view);
        QCOMPARE(markerOf(state), (QList<double>{37.52, 127.045}));
        QCOMPARE(state.value("route").toInt(), 3);
        QCOMPARE(state.value("debug").toStringList(),
                 (QStringList{"GPS Data Count=Zero", "second"}));

        const qint64 pid = view.page()->renderProcessPid();
        QVERIFY(pid > 0);
        QSignalSpy ready(&view, &KVRMapView::pageReady);
        ::kill(pid_t(pid), SIGKILL);
        QVERIFY(ready.wait(PageTimeoutMs));
        state = mapState(view);
        QCOMPARE(markerOf(state), (QList<double>{37.52, 127.045}));
        QCOMPARE(state.value("route").toInt(), 3);

        for (const char* script :
             {"setLatLag('abc','37')", "setLatLag('200','95')", "setLatLag('0','0')", "setLatLag()",
              "setRoute('not json')", "setRoute(42)", "setRoute([[1], null, 'x'])"})
            view.evaluateWebScript(QLatin1String(script));
        state = mapState(view);
        QCOMPARE(markerOf(state), (QList<double>{37.52, 127.045}));
        // The last call was a list, without one usable point: no route.
        QCOMPARE(state.value("route").toInt(), 0);
        view.evaluateWebScript(QStringLiteral("setRoute('[[37.5, 127.0], [91, 0], [0, 0]]')"));
        QCOMPARE(mapState(view).value("route").toInt(), 1);
    }

    void offlineItFollowsThePositionWithoutChangingTheZoom()
    {
        KVRMapView view;
        view.resize(480, 360);
        view.show();
        QVERIFY(loadOffline(view));
        // Offline, the label says so quietly in a corner of the view.
        QTRY_VERIFY_WITH_TIMEOUT(mapState(view).value("offline").toBool(), 20000);
        QCOMPARE(mapState(view).value("offlineText").toString(), QStringLiteral("Map offline"));
        const QVariantList label =
            evaluate(view, "(function () { var r = document.querySelector('.kvr-offline')"
                           ".getBoundingClientRect(); return [r.width, r.height, r.bottom]; })()")
                .toList();
        QVERIFY(label.value(0).toDouble() > 20 && label.value(1).toDouble() > 8);
        QVERIFY(label.value(2).toDouble() <= 360);

        view.showPosition(37.5665, 126.9780);
        QVariantMap state = mapState(view);
        QCOMPARE(state.value("zoom").toInt(), 16);
        const QVariant centre = state.value("center");

        // A few metres on: the marker moves, the view stays.
        view.showPosition(37.5666, 126.9781);
        state = mapState(view);
        QCOMPARE(markerOf(state), (QList<double>{37.5666, 126.9781}));
        QCOMPARE(state.value("center"), centre);

        // Another city: the view follows at the same zoom.
        view.showPosition(35.1796, 129.0756);
        QTRY_VERIFY_WITH_TIMEOUT(
            qAbs(mapState(view).value("center").toList().value(0).toDouble() - 35.1796) < 0.01,
            10000);
        QCOMPARE(mapState(view).value("zoom").toInt(), 16);
    }

    void tilesClearTheOfflineLabelAndNameTheApplication()
    {
        TileServer server;
        server.failing = "GET /2/"; // the world view the page starts with
        KVRMapView view;
        view.resize(400, 300);
        view.show();
        view.setTileUrlTemplate(server.urlTemplate());
        view.loadMapPage();
        QVERIFY(waitForPage(view));
        QTRY_VERIFY_WITH_TIMEOUT(mapState(view).value("offline").toBool(), 20000);

        view.showPosition(37.5665, 126.9780);
        const QString loadedTiles =
            QStringLiteral("Array.from(document.querySelectorAll('img.leaflet-tile-loaded'))"
                           ".filter(function (i) { return i.naturalWidth === 256; }).length");
        QTRY_VERIFY_WITH_TIMEOUT(evaluate(view, loadedTiles).toInt() >= 4, 20000);
        QVERIFY(!mapState(view).value("offline").toBool());
        // At the position's zoom or the world view that the page starts with, only what the view
        // needs and a small margin: no prefetching of other zooms or places.
        QTest::qWait(500);
        QVERIFY(server.requests.size() <= 40);
        for (const QByteArray& request : server.requests) {
            QVERIFY2(request.startsWith("GET /16/") || request.startsWith("GET /2/"),
                     request.constData());
            QVERIFY2(request.contains("\r\nUser-Agent: KAVRO-Viewer/"), request.constData());
        }
    }
};

QTEST_MAIN(TestKVRMapView)
#include "tst_kvrmapview.moc"
