// The telemetry display inside the real main window: simulator recordings played with libVLC,
// the map page in Qt WebEngine, read back as the person would see them.

#include "appfixture.h"
#include "card/nmeadegrees.h"
#include "kvrtelemetrydisplay.h"
#include "telemetry/kvraviwriter.h"

#include "../map/mappagetest.h"

#include <QBuffer>
#include <QPainter>
#include <QRegularExpression>

#include <cmath>

using namespace kavro;
using namespace kavro::test;

namespace {

QString gsensorExpected(char axis, float value)
{
    return QString::asprintf("%c=%s%.2f", axis, value > 0 ? "+" : "", double(value));
}

// A two-second MJPG front recording with G-sensor samples and no GPS record.
bool writeRecordingWithoutGps(const QString& path)
{
    KVRAviWriter::Layout layout;
    layout.video.width = 160;
    layout.video.height = 96;
    layout.video.fpsNumerator = 10;
    KVRAviWriter writer(layout);
    bool ok = writer.open(path);
    for (int frame = 0; frame < 20; ++frame) {
        QImage image(160, 96, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(frame * 18, 200, 200));
        QByteArray jpeg;
        QBuffer buffer(&jpeg);
        ok = ok && image.save(&buffer, "JPG") && writer.addVideoFrame(jpeg);
        ok = ok && writer.addTelemetryRecord(_AVI_GSENSOR_DATA_T{
                       171, std::uint32_t(100 * (frame + 1)), frame * 8, 0, 256, 25});
    }
    return writer.close() && ok;
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
        QString error;
        QVERIFY2(m_card.make(&error), qPrintable(error));
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
        const camsim::RecordingPlan* recording = nullptr;
        for (const camsim::RecordingPlan& plan : m_card.plan->recordings()) {
            const double latitude = m_card.plan->driveOf(plan).route.originLatitude;
            if ((latitude < 0) == southWest && plan.hasRear) {
                recording = &plan;
                break;
            }
        }
        QVERIFY(recording);
        Viewer& viewer = startViewer();
        QVERIFY(viewer.openFolder(m_card.root));
        const QString name = QFileInfo(m_card.path(*recording, false)).fileName();
        QVERIFY(viewer.playRow(viewer.rowOf(name)));

        // Pause, then drag the slider as a person would.
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        emit viewer.ui().videoPositionSlider->userMoved(seek);
        QTest::qWait(600); // the players' seek and the resynchronisation
        const double position = viewer.delegate->playInfo()->position();
        QVERIFY(std::abs(position - seek) < 0.05);

        const KVRBlackBoxData& store = viewer.engine()->blackBoxData();
        QVERIFY(!store.GSensors().empty() && !store.vGpsData().empty() && !store.NMEAs().empty());
        const KVRGSensor& sample =
            store.GSensors()[std::size_t(position * store.GSensors().size())];
        QCOMPARE(viewer.ui().gsensorXField->text(), gsensorExpected('X', sample.x));
        QCOMPARE(viewer.ui().gsensorYField->text(), gsensorExpected('Y', sample.y));
        QCOMPARE(viewer.ui().gsensorZField->text(), gsensorExpected('Z', sample.z));

        const std::size_t k = std::size_t(position * store.vGpsData().size());
        const _AVI_GPS_DATA_T& record = store.vGpsData()[k]->data();
        QCOMPARE(
            viewer.ui().speedField->text(),
            QStringLiteral("%1 %2").arg(record.fSpeed).arg(record.KM == '9' ? "Km/h" : "Mi/h"));
        const KVRGpsData& fix = store.NMEAs()[std::size_t(position * store.NMEAs().size())];
        QCOMPARE(viewer.ui().hdopField->text(), QString::asprintf("%.1f", double(float(fix.HDOP))));
        QCOMPARE(viewer.ui().sateliteField->text(), QString::number(fix.SatelliteUsedCount));

        // The simulator's fixes all say the drive's own hemispheres.
        QCOMPARE(viewer.delegate->telemetryDisplay()->south(), southWest);
        QCOMPARE(viewer.delegate->telemetryDisplay()->west(), southWest);
        const double sign = southWest ? -1 : 1;
        const double latitude = sign * nmeaToDegrees(std::abs(record.fLatitude));
        const double longitude = sign * nmeaToDegrees(std::abs(record.fLongitude));
        KVRMapView& map = *viewer.delegate->mapWebView();
        QVERIFY(waitForPage(map));
        const QVariantMap state = mapState(map);
        const QList<double> marker = markerOf(state);
        QCOMPARE(marker.size(), 2);
        QVERIFY2(std::abs(marker[0] - latitude) < 1e-6 && std::abs(marker[1] - longitude) < 1e-6,
                 qPrintable(QStringLiteral("%1,%2 vs %3,%4")
                                .arg(marker[0], 0, 'f', 6)
                                .arg(marker[1], 0, 'f', 6)
                                .arg(latitude, 0, 'f', 6)
                                .arg(longitude, 0, 'f', 6)));
        QVERIFY(state.value("route").toInt() >= 2);
        const QString hemispheres = southWest ? QStringLiteral("S.*W") : QStringLiteral("N.*E");
        QVERIFY(viewer.ui().positionField->text().contains(QRegularExpression(hemispheres)));
        QVERIFY(viewer.ui().positionField->text().contains(
            QString::number(std::abs(latitude), 'f', 6)));
        QCOMPARE(viewer.ui().graphView->timePosition(), double(viewer.player1()->position()));
    }

    // The map pane is the right column's other face, with the page loaded at start-up.
    void theMapPaneSharesTheRightColumn()
    {
        Viewer& viewer = startViewer();
        KVRMapView* map = viewer.delegate->mapWebView();
        QVERIFY(map);
        QCOMPARE(map->parentWidget(), viewer.ui().mapContainerTopView);
        QVERIFY(waitForPage(*map));
        QVERIFY(!map->isVisible());
        QTest::mouseClick(viewer.ui().informationButtonImageView, Qt::LeftButton);
        QTRY_VERIFY(map->isVisible());
        QVERIFY(map->width() > 200 && map->height() > 200);
        QVERIFY(!viewer.ui().mediaListTableView->isVisible());
    }

    void aRecordingWithoutGpsTellsThePageAtEveryChange()
    {
        QTemporaryDir folder;
        QVERIFY(writeRecordingWithoutGps(
            folder.filePath(QStringLiteral("alwa_20250516_081236_F.avi"))));
        Viewer& viewer = startViewer();
        KVRMapView& map = *viewer.delegate->mapWebView();
        QVERIFY(waitForPage(map));
        QVERIFY(viewer.openFolder(folder.path()));
        QVERIFY(viewer.playRow(0));
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        QTest::qWait(400);
        QCOMPARE(viewer.ui().speedField->text(), QString());
        const auto debugLines = [&map] {
            return mapState(map).value("debug").toStringList().count(
                QStringLiteral("GPS Data Count=Zero"));
        };
        const qsizetype before = debugLines();
        QVERIFY(before >= 1 && before < 40);
        for (double seek : {0.2, 0.4, 0.6}) {
            emit viewer.ui().videoPositionSlider->userMoved(seek);
            QTest::qWait(500);
        }
        QVERIFY(debugLines() >= before + 3);
        QCOMPARE(viewer.ui().speedField->text(), QString());
        QVERIFY(markerOf(mapState(map)).isEmpty());
        QCOMPARE(viewer.ui().positionField->text(),
                 QStringLiteral("This recording has no GPS data"));
        QVERIFY(viewer.ui().gsensorZField->text() == QStringLiteral("Z=+1.00"));
    }

private:
    Viewer& startViewer()
    {
        m_viewer = std::make_unique<Viewer>();
        return *m_viewer;
    }

    TinyCard m_card;
    std::unique_ptr<Viewer> m_viewer;
};

QTEST_MAIN(TestKVRTelemetryDisplayWindow)
#include "tst_kvrtelemetrydisplaywindow.moc"
