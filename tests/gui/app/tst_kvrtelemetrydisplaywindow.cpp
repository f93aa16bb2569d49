// The telemetry display inside the real main window: simulator recordings played with libVLC,
// the map page in Qt WebEngine, read back as the person would see them.

#include "appfixture.h"
#include "kvrtelemetrydisplay.h"

#include "../map/mappagetest.h"

#include <QPainter>
#include <QRegularExpression>

#include <cmath>

using namespace kavro;
using namespace kavro::test;

namespace {

// "X=+0.12" as a number; the signs themselves are checked on literal text below.
double shownNumber(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("[-+]?\\d+\\.\\d+"));
    return number.match(text).captured().toDouble();
}

// A two-second MJPG front recording with G-sensor samples and no GPS record.
bool writeRecordingWithoutGps(const QString& path)
{
    return writePlainRecording(
        path, QSize(160, 96), 20, [](int frame) { return QColor::fromHsv(frame * 18, 200, 200); },
        [](KVRAviWriter& writer, int frame) {
            return writer.addTelemetryRecord(
                _AVI_GSENSOR_DATA_T{171, std::uint32_t(100 * (frame + 1)), frame * 8, 0, 256, 25});
        });
}

} // namespace

class TestKVRTelemetryDisplayWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        prepareViewerEnvironment();
        prepareMapTests();
        m_card.makeInTest();
    }

    void cleanup() { m_viewer.reset(); }

    // Paused at a position, the fields and the marker show the entries the position picks; the
    // southern, western drive is drawn with negative coordinates.
    void pausedAtAPositionShowsItsTelemetry_data()
    {
        QTest::addColumn<bool>("southWest");
        QTest::addColumn<double>("seek");
        QTest::newRow("north east, middle") << false << 0.5;
        QTest::newRow("south west, near the end") << true << 0.8;
    }

    void pausedAtAPositionShowsItsTelemetry()
    {
        QFETCH(bool, southWest);
        QFETCH(double, seek);
        const camsim::RecordingPlan* recording =
            m_card.first([&](const camsim::RecordingPlan& plan) {
                return (m_card.plan->driveOf(plan).route.originLatitude < 0) == southWest &&
                       plan.hasRear;
            });
        QVERIFY(recording);
        QVERIFY(test::startViewer(m_viewer, m_card.root));
        Viewer& viewer = *m_viewer;
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
        QCOMPARE(viewer.delegate->telemetryDisplay()->south(), southWest);
        QCOMPARE(viewer.delegate->telemetryDisplay()->west(), southWest);
        QCOMPARE(fix.latitude < 0, southWest);
        KVRMapView& map = *viewer.delegate->mapWebView();
        QVERIFY(waitForPage(map));
        const QVariantMap state = mapState(map);
        const QList<double> marker = markerOf(state);
        QCOMPARE(marker.size(), 2);
        QVERIFY2(std::abs(marker[0] - fix.latitude) < 1e-5 &&
                     std::abs(marker[1] - fix.longitude) < 1e-5,
                 qPrintable(QStringLiteral("%1,%2 vs %3,%4")
                                .arg(marker[0], 0, 'f', 6)
                                .arg(marker[1], 0, 'f', 6)
                                .arg(fix.latitude, 0, 'f', 6)
                                .arg(fix.longitude, 0, 'f', 6)));
        QVERIFY(state.value("route").toInt() >= 2);
        const QString hemispheres = southWest ? QStringLiteral("S.*W") : QStringLiteral("N.*E");
        QVERIFY(viewer.ui().positionField->text().contains(QRegularExpression(hemispheres)));
        QVERIFY(std::abs(shownNumber(viewer.ui().positionField->text()) - std::abs(fix.latitude)) <
                1e-5);
        // The players finish their seek after the slider has moved; the graph follows them.
        QTRY_COMPARE_WITH_TIMEOUT(viewer.ui().graphView->timePosition(),
                                  double(viewer.player1()->position()), 10000);
    }

    void aRecordingWithoutGpsTellsThePageAtEveryChange()
    {
        QTemporaryDir folder;
        QVERIFY(writeRecordingWithoutGps(
            folder.filePath(QStringLiteral("alwa_20250516_081236_F.avi"))));
        m_viewer = std::make_unique<Viewer>();
        Viewer& viewer = *m_viewer;
        // The page is loaded at start-up, before any recording.
        KVRMapView& map = *viewer.delegate->mapWebView();
        QVERIFY(waitForPage(map));
        QVERIFY(viewer.openFolder(folder.path()));
        QVERIFY(viewer.playRow(0));
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        QTRY_COMPARE(viewer.ui().positionField->text(),
                     QStringLiteral("This recording has no GPS data"));
        QCOMPARE(viewer.ui().speedField->text(), QString());
        // That the page hears so at every change is the display's own test; here, a move.
        const auto told = [&map] {
            return mapState(map).value("debug").toStringList().count("GPS Data Count=Zero");
        };
        const qsizetype before = told();
        QVERIFY(before >= 1);
        emit viewer.ui().videoPositionSlider->userMoved(0.6);
        QTRY_VERIFY_WITH_TIMEOUT(told() > before, 10000);
        QCOMPARE(viewer.ui().speedField->text(), QString());
        QVERIFY(markerOf(mapState(map)).isEmpty());
        QCOMPARE(viewer.ui().positionField->text(),
                 QStringLiteral("This recording has no GPS data"));
        QCOMPARE(viewer.ui().gsensorZField->text(), QStringLiteral("Z=+1.00"));
    }

private:
    TinyCard m_card;
    std::unique_ptr<Viewer> m_viewer;
};

QTEST_MAIN(TestKVRTelemetryDisplayWindow)
#include "tst_kvrtelemetrydisplaywindow.moc"
