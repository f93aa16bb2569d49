#include "kvrplayinfo.h"
#include "kvrtelemetrydisplay.h"
#include "qtbridge/qtbridge.h"
#include "telemetry/graphview.h"
#include "telemetry/kvraviwriter.h"
#include "telemetry/kvrblackboxdata.h"

#include "../map/mappagetest.h"
#include "testsupport.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace kavro;
using namespace kavro::test;

namespace {

_AVI_GSENSOR_DATA_T gsensor(std::uint32_t time, std::int32_t x)
{
    return {171, time, x, -384, 0, 25};
}

// A GGA sentence: hemispheres, satellites used and HDOP.
QByteArray gga(const char* ns, const char* ew, int satellites, const char* hdop)
{
    return QStringLiteral(
               "$GPGGA,081236.00,3733.5000,%1,12659.4000,%2,1,%3,%4,30.0,M,18.9,M,,*47\r\n")
        .arg(QLatin1String(ns), QLatin1String(ew))
        .arg(satellites)
        .arg(QLatin1String(hdop))
        .toLatin1();
}

struct Chunk
{
    std::optional<_AVI_GPS_DATA_T> gps;
    std::optional<_AVI_GSENSOR_DATA_T> gsensor;
};

bool writeRecording(const QString& path, const std::vector<Chunk>& chunks)
{
    KVRAviWriter writer(KVRAviWriter::Layout{});
    bool ok = writer.open(path);
    for (const Chunk& chunk : chunks)
        ok = ok && (chunk.gps ? writer.addTelemetryRecord(*chunk.gps)
                              : writer.addTelemetryRecord(*chunk.gsensor));
    return writer.close() && ok;
}

// 3733.5 is 37° 33.5', 37.558333° as the page rounds it to six decimals.
bool sameMarker(const QList<double>& shown, const QList<double>& expected)
{
    return shown.size() == 2 && std::abs(shown[0] - expected[0]) < 1e-9 &&
           std::abs(shown[1] - expected[1]) < 1e-9;
}

// The display with its fields, graph and map page, as the main window has them.
struct Panel
{
    Panel() : display({&graph, &map, &x, &y, &z, &speed, &hdop, &satellites}, &playInfo)
    {
        display.setPlayerPositionSource([this] { return playerPosition; });
    }

    KVRPlayInfo playInfo;
    GraphView graph;
    KVRMapView map;
    QLabel x, y, z, speed, hdop, satellites;
    double playerPosition = 0;
    KVRTelemetryDisplay display;
};

} // namespace

class TestKVRTelemetryDisplay : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareMapTests(); }

    // The start, middle and end of a list are read through the panel below.
    void indexRule_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("index");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("0.99 of 100") << 0.99 << 100 << 99;
        QTest::newRow("one entry") << 0.7 << 1 << 0;
        QTest::newRow("tenths of 10") << 0.3 << 10 << 3;
        QTest::newRow("just below zero truncates to 0") << -0.05 << 7 << 0;
        QTest::newRow("negative index") << -0.5 << 7 << 6;
        QTest::newRow("not a number") << nan << 7 << 6;
        QTest::newRow("infinite") << inf << 7 << 6;
        QTest::newRow("minus infinite") << -inf << 7 << 6;
    }

    void indexRule()
    {
        QFETCH(double, position);
        QFETCH(int, count);
        QFETCH(int, index);
        QCOMPARE(KVRTelemetryDisplay::indexForPosition(position, std::size_t(count)),
                 std::size_t(index));
    }

    // The G-sensor, speed and HDOP texts are read through the panel below; these are the rest.
    void texts()
    {
        QCOMPARE(KVRTelemetryDisplay::positionText(-37.5583333, 126.99),
                 QStringLiteral("37.558333\u00b0 S   126.990000\u00b0 E"));
        QCOMPARE(KVRTelemetryDisplay::positionText(0, -0.5),
                 QStringLiteral("0.000000\u00b0 N   0.500000\u00b0 W"));
        // A speed is shown as stored, also beyond what a signed number holds.
        _AVI_GPS_DATA_T record = gpsRecord(0, {}, 0, 0, 3e9f, '1');
        QCOMPARE(KVRTelemetryDisplay::speedText(record), QStringLiteral("3000000000 Mi/h"));
    }

    // Two GPS records, the second south and west, over three samples: one fix per record, so
    // the third sample's record has no fix of its own index.
    void followsThePositionOnTheMapAndInTheFields()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("drive.avi"));
        QVERIFY(writeRecording(
            path, {{gpsRecord(100, gga("N", "E", 8, "0.95"), 3733.5, 12659.4, 57, '9'), {}},
                   {{}, gsensor(100, 10)},
                   {{}, gsensor(200, -384)},
                   {gpsRecord(300, gga("S", "W", 11, "1.26"), 3435.52, 5825.87, 40, '1'), {}},
                   {{}, gsensor(300, 0)},
                   {{}, gsensor(400, 512)}}));
        KVRBlackBoxData store;
        QVERIFY(store.ExtractStreamInformation(nativePath(path)));
        QCOMPARE(store.vGpsData().size(), std::size_t(3));
        QCOMPARE(store.NMEAs().size(), std::size_t(2));

        Panel panel;
        QVERIFY(loadOffline(panel.map));
        panel.display.recordingOpened(&store);
        QCOMPARE(mapState(panel.map).value("route").toInt(), 2);

        panel.playerPosition = 0.25;
        panel.playInfo.setPosition(0);
        QCOMPARE(panel.graph.timePosition(), 0.25);
        QCOMPARE(panel.x.text(), QStringLiteral("X=+0.04"));
        QCOMPARE(panel.y.text(), QStringLiteral("Y=-1.50"));
        QCOMPARE(panel.z.text(), QStringLiteral("Z=0.00"));
        QCOMPARE(panel.speed.text(), QStringLiteral("57 Km/h"));
        QCOMPARE(panel.hdop.text(), QStringLiteral("0.9"));
        QCOMPARE(panel.satellites.text(), QStringLiteral("8"));
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{37.558333, 126.99}));

        // Record 1, whose fix says south and west; HDOP from the second of two fixes.
        panel.playInfo.setPosition(0.5);
        QCOMPARE(panel.x.text(), QStringLiteral("X=0.00"));
        QCOMPARE(panel.speed.text(), QStringLiteral("40 Mi/h"));
        QCOMPARE(panel.hdop.text(), QStringLiteral("1.3"));
        QCOMPARE(panel.satellites.text(), QStringLiteral("11"));
        QVERIFY(panel.display.south() && panel.display.west());
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{-34.592, -58.431167}));

        // Beyond the fixes the hemisphere seen last stays in force.
        panel.playInfo.setPosition(1.0);
        QCOMPARE(panel.x.text(), QStringLiteral("X=+2.00"));
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{-34.592, -58.431167}));

        // A northern, eastern fix clears the flags again.
        panel.playInfo.setPosition(0.1);
        QVERIFY(!panel.display.south() && !panel.display.west());
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{37.558333, 126.99}));

        // The flags start over with each recording.
        panel.playInfo.setPosition(0.5);
        QVERIFY(panel.display.south());
        panel.display.recordingOpened(&store);
        QVERIFY(!panel.display.south() && !panel.display.west());
        panel.playInfo.setPosition(0.9);
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{34.592, 58.431167}));

        // No recording any more: nothing of this one stays, whatever the position does.
        panel.display.clear();
        panel.playInfo.setPosition(0.2);
        for (const QLabel* field :
             {&panel.x, &panel.y, &panel.z, &panel.speed, &panel.hdop, &panel.satellites})
            QVERIFY2(field->text().isEmpty(), qPrintable(field->text()));
        QVERIFY(panel.graph.values().empty());
        const QVariantMap cleared = mapState(panel.map);
        QVERIFY(markerOf(cleared).isEmpty());
        QCOMPARE(cleared.value("route").toInt(), 0);
    }

    // No GPS records: the page hears so at every change and the speed stays; no fixes: HDOP and
    // satellites stay; no samples: the fields stay but the cursor moves.
    void missingListsLeaveTheirFields()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("nogps.avi"));
        QVERIFY(writeRecording(path, {{{}, gsensor(100, 256)}, {{}, gsensor(200, -256)}}));
        KVRBlackBoxData store;
        QVERIFY(store.ExtractStreamInformation(nativePath(path)));

        Panel panel;
        QVERIFY(loadOffline(panel.map));
        panel.speed.setText(QStringLiteral("33 Km/h"));
        panel.hdop.setText(QStringLiteral("1.0"));
        panel.display.recordingOpened(&store);
        for (double position : {0.0, 0.7, 0.7})
            panel.playInfo.setPosition(position);
        const QVariantMap state = mapState(panel.map);
        QCOMPARE(state.value("debug").toStringList(),
                 QStringList(3, QStringLiteral("GPS Data Count=Zero")));
        QVERIFY(markerOf(state).isEmpty());
        QCOMPARE(panel.x.text(), QStringLiteral("X=-1.00"));
        QCOMPARE(panel.speed.text(), QStringLiteral("33 Km/h"));
        QCOMPARE(panel.hdop.text(), QStringLiteral("1.0"));

        // An empty store, and a store being refilled: only the cursor follows.
        KVRBlackBoxData empty;
        panel.display.recordingOpened(&empty);
        panel.playerPosition = 0.4;
        panel.playInfo.setPosition(0.2);
        QCOMPARE(panel.graph.timePosition(), 0.4);
        QCOMPARE(panel.x.text(), QStringLiteral("X=-1.00"));
        panel.display.detachStore();
        panel.playerPosition = 0.6;
        panel.playInfo.setPosition(0.3);
        QCOMPARE(panel.graph.timePosition(), 0.6);
        QCOMPARE(mapState(panel.map).value("debug").toStringList().size(), 4);
    }
};

QTEST_MAIN(TestKVRTelemetryDisplay)
#include "tst_kvrtelemetrydisplay.moc"
