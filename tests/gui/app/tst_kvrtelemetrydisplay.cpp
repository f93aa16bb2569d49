// The telemetry display: a panel of its own fed hand-written recordings, and inside the real main
// window simulator recordings played with libVLC, the map page in Qt WebEngine, read back as the
// person would see them.

#include "appfixture.h"
#include "kvrtelemetrydisplay.h"
#include "qtbridge/qtbridge.h"
#include "telemetry/kvrblackboxdata.h"

#include "../map/mappagetest.h"

#include <QRegularExpression>

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

    QStringList fields() const
    {
        return {x.text(), y.text(), z.text(), speed.text(), hdop.text(), satellites.text()};
    }

    KVRPlayInfo playInfo;
    GraphView graph;
    KVRMapView map;
    QLabel x, y, z, speed, hdop, satellites;
    double playerPosition = 0;
    KVRTelemetryDisplay display;
};

// "X=+0.12" as a number; the signs themselves are checked on literal text below.
double shownNumber(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("[-+]?\\d+\\.\\d+"));
    return number.match(text).captured().toDouble();
}

} // namespace

class TestKVRTelemetryDisplay : public QObject
{
    Q_OBJECT

public:
    static void initMain() { prepareViewerEnvironment(); }

private:
    TinyCard m_card;

private slots:
    void initTestCase()
    {
        prepareMapTests();
        m_card.makeInTest();
    }

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
        QCOMPARE(panel.fields(),
                 QStringList({"X=+0.04", "Y=-1.50", "Z=0.00", "57 Km/h", "0.9", "8"}));
        QVERIFY(sameMarker(markerOf(mapState(panel.map)), QList<double>{37.558333, 126.99}));

        // Record 1, whose fix says south and west; HDOP from the second of two fixes.
        panel.playInfo.setPosition(0.5);
        QCOMPARE(panel.fields(),
                 QStringList({"X=0.00", "Y=-1.50", "Z=0.00", "40 Mi/h", "1.3", "11"}));
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
        QCOMPARE(panel.fields(), QStringList(6, QString()));
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

    // Paused at a position, the fields and the marker show the entries the position picks; the
    // southern, western drive is drawn with negative coordinates (northern, eastern ones: the
    // panel above, and the exported page of the capture tests). A recording without GPS next
    // says so and takes the marker away.
    void pausedAtAPositionShowsItsTelemetryThenNoneWithoutGps()
    {
        const double seek = 0.8;
        const camsim::RecordingPlan* recording =
            m_card.first([this](const camsim::RecordingPlan& r) {
                return m_card.plan->driveOf(r).route.originLatitude < 0 && r.hasRear;
            });
        QVERIFY(recording);
        Viewer viewer;
        QVERIFY(viewer.openFolder(m_card.root));
        const QString name = m_card.fileName(*recording, false);
        QVERIFY(viewer.playRow(viewer.rowOf(name)));

        // Pause, then drag the slider as a person would.
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        emit viewer.ui().videoPositionSlider->userMoved(seek);
        QTRY_VERIFY_WITH_TIMEOUT(std::abs(viewer.delegate->playInfo()->position() - seek) < 0.05,
                                 10000);
        const double position = viewer.delegate->playInfo()->position();

        // What the camera stored, from the simulator's plan; each field shows the entry at the
        // same fraction of its stream.
        const camsim::TelemetryPlan stored =
            m_card.plan->telemetry(*recording)
                .recording(recording->start, recording->duration, recording->impact);
        QVERIFY(!stored.gsensor.empty() && stored.fixes.size() == stored.gps.size());
        const auto at = [position](std::size_t count) { return std::size_t(position * count); };
        const _AVI_GSENSOR_DATA_T& sample = stored.gsensor[at(stored.gsensor.size())];
        const QLabel* fields[] = {viewer.ui().gsensorXField, viewer.ui().gsensorYField,
                                  viewer.ui().gsensorZField};
        const int axes[] = {sample.xAxis, sample.yAxis, sample.zAxis};
        for (int axis = 0; axis < 3; ++axis)
            QVERIFY2(std::abs(shownNumber(fields[axis]->text()) - axes[axis] / 256.0) < 0.0051,
                     qPrintable(fields[axis]->text()));

        const std::size_t k = at(stored.gps.size());
        QCOMPARE(viewer.ui().speedField->text(),
                 QStringLiteral("%1 Km/h").arg(stored.gps[k].fSpeed));
        const camsim::GpsFix& fix = stored.fixes[k];
        // HDOP and satellites come from the sentence at that fraction of all sentences read; a
        // record's GSA pair follows its RMC and GGA, so the count may still be the previous one's.
        const auto usedBy = [](const camsim::GpsFix& f) {
            return int(f.gpsUsed.size() + f.glonassUsed.size());
        };
        const camsim::GpsFix& before = stored.fixes[k > 0 ? k - 1 : 0];
        const int satellites = viewer.ui().sateliteField->text().toInt();
        QVERIFY2(satellites == usedBy(fix) || satellites == usedBy(before),
                 qPrintable(viewer.ui().sateliteField->text()));
        const double hdop = viewer.ui().hdopField->text().toDouble();
        QVERIFY2(std::abs(hdop - fix.hdop) < 0.051 || std::abs(hdop - before.hdop) < 0.051,
                 qPrintable(viewer.ui().hdopField->text()));

        // The simulator's fixes all say the drive's own hemispheres; the file keeps minutes to
        // four decimals, about 2e-6 degrees.
        QVERIFY(viewer.delegate->telemetryDisplay()->south());
        QVERIFY(viewer.delegate->telemetryDisplay()->west());
        QVERIFY(fix.latitude < 0);
        KVRMapView& map = *viewer.delegate->mapWebView();
        QVERIFY(waitForPage(map));
        const QVariantMap state = mapState(map);
        const QList<double> marker = markerOf(state);
        QCOMPARE(marker.size(), 2);
        QVERIFY(std::abs(marker[0] - fix.latitude) < 1e-5);
        QVERIFY(std::abs(marker[1] - fix.longitude) < 1e-5);
        QVERIFY(state.value("route").toInt() >= 2);
        QVERIFY(viewer.ui().positionField->text().contains(QRegularExpression("S.*W")));
        QVERIFY(std::abs(shownNumber(viewer.ui().positionField->text()) - std::abs(fix.latitude)) <
                1e-5);
        // The players finish their seek after the slider has moved; the graph follows them.
        QTRY_COMPARE_WITH_TIMEOUT(viewer.ui().graphView->timePosition(),
                                  double(viewer.player1()->position()), 10000);

        // Two seconds of G-sensor samples and no GPS record.
        QTemporaryDir folder;
        QVERIFY(writePlainRecording(
            folder.filePath("alwa_20250516_081236_F.avi"), QSize(160, 96), 20,
            [](int frame) { return QColor::fromHsv(frame * 18, 200, 200); },
            [](KVRAviWriter& writer, int frame) {
                return writer.addTelemetryRecord(_AVI_GSENSOR_DATA_T{
                    171, std::uint32_t(100 * (frame + 1)), frame * 8, 0, 256, 25});
            }));
        QVERIFY(viewer.openFolder(folder.path()));
        QVERIFY(viewer.playRow(0));
        QTRY_COMPARE(viewer.ui().positionField->text(),
                     QStringLiteral("This recording has no GPS data"));
        QCOMPARE(viewer.ui().speedField->text(), QString());
        QTRY_COMPARE(viewer.ui().gsensorZField->text(), QStringLiteral("Z=+1.00"));
        // That the page hears so at every change is the display's own test.
        const QVariantMap after = mapState(map);
        QVERIFY(after.value("debug").toStringList().contains("GPS Data Count=Zero"));
        QVERIFY(markerOf(after).isEmpty());
    }
};

QTEST_MAIN(TestKVRTelemetryDisplay)
#include "tst_kvrtelemetrydisplay.moc"
