#include "appfixture.h"

#include "telemetry/cutshortavi.h"

#include <algorithm>

using namespace kavro;
using kavro::test::Viewer;

namespace {

using camsim::RecordingPlan;

// The largest difference between the frame numbers both pictures show, over a few looks.
std::optional<int> pictureDrift(const Viewer& viewer)
{
    std::vector<int> drifts;
    for (int look = 0; look < 5; ++look) {
        const auto large = test::frameNumber(viewer.delegate->video1View()->lastFrame());
        const auto small = test::frameNumber(viewer.delegate->video2View()->lastFrame());
        if (large && small)
            drifts.push_back(std::abs(*large - *small));
        QTest::qWait(120);
    }
    if (drifts.empty())
        return std::nullopt;
    std::sort(drifts.begin(), drifts.end());
    return drifts[drifts.size() / 2];
}

// A person's click at a fraction of the slider's length.
void clickSlider(KVRPositionSlider* slider, double fraction)
{
    QTest::mouseClick(slider, Qt::LeftButton, {},
                      QPoint(int(fraction * slider->width()), slider->height() / 2));
}

} // namespace

class TestKVRPlaybackEngine : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    test::TinyCard m_card;
    std::unique_ptr<Viewer> m_viewer;

    int rowOf(const RecordingPlan& plan, bool rear) const
    {
        return m_viewer->rowOf(m_card.fileName(plan, rear));
    }

private slots:
    // One viewer for all tests (starting one costs more than most tests), back on the card's list
    // before each.
    void initTestCase()
    {
        m_card.makeInTest();
        m_viewer = std::make_unique<Viewer>();
    }

    void init()
    {
        m_viewer->delegate->loading()->setLongestDisplayTime(
            KVRLoadingController::LongestDisplayTime);
        QVERIFY(m_viewer->openFolder(m_card.root));
        QVERIFY(m_viewer->model()->rowCount() > 4);
    }

    // A row still opening when the next test reopens the list would refuse that test's row.
    void cleanup()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!m_viewer->engine()->waitingForPlayStart(), test::StartWaitMs);
    }

    void cleanupTestCase() { m_viewer.reset(); }

    void playsTheRowLargeAndItsPartnerSmall_data()
    {
        QTest::addColumn<bool>("rearRow");
        QTest::addColumn<bool>("lone"); // a front file without a partner
        QTest::newRow("front row") << false << false;
        QTest::newRow("rear row") << true << false;
        QTest::newRow("lone front row") << false << true;
    }

    void playsTheRowLargeAndItsPartnerSmall()
    {
        QFETCH(bool, rearRow);
        QFETCH(bool, lone);
        const RecordingPlan* plan =
            m_card.first([lone](const RecordingPlan& r) { return r.hasRear != lone; });
        QVERIFY(plan);
        const int row = rowOf(*plan, rearRow);
        QVERIFY(row >= 0);
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.playRow(row));

        QCOMPARE(viewer.player1()->media().path(), m_card.path(*plan, rearRow));
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), row);
        QCOMPARE(viewer.ui().player1BackgroundView->logoImageName(),
                 rearRow ? "v1_rear_logo" : "v1_front_logo");
        // The pictures themselves: the front camera's frames are the larger ones.
        const QSize front = m_card.plan->options().frontSize;
        const QSize rear = m_card.plan->options().rearSize;
        QCOMPARE(viewer.delegate->video1View()->lastFrame().size(), rearRow ? rear : front);
        QCOMPARE(viewer.ui().audioToggleButton->isVisible(), !lone);
        QCOMPARE(viewer.engine()->hasRearMedia(), !lone);
        if (lone) {
            QVERIFY(viewer.player2()->media().isNull());
            QVERIFY(!viewer.delegate->video2View()->isVisible());
        } else {
            QCOMPARE(viewer.player2()->media().path(), m_card.path(*plan, !rearRow));
            QCOMPARE(viewer.ui().player2BackgroundView->logoImageName(),
                     rearRow ? "v2_front_logo" : "v2_rear_logo");
            QCOMPARE(viewer.delegate->video2View()->lastFrame().size(), rearRow ? front : rear);
        }

        // The telemetry is the front file's, whichever row was chosen.
        KVRBlackBoxData frontData;
        QVERIFY(frontData.ExtractStreamInformation(m_card.path(*plan, false)));
        QVERIFY(!frontData.GSensors().empty());
        QCOMPARE(viewer.ui().graphView->values().size(), frontData.GSensors().size());
        QCOMPARE(viewer.ui().graphView->values().front().x, frontData.GSensors().front().x);
        QCOMPARE(viewer.ui().gsensorXField->text(), QString("X=+0.00"));
        QVERIFY(viewer.ui().speedField->text().isEmpty());
        QVERIFY(viewer.engine()->isPlayNextTimerActive());
        QVERIFY(viewer.delegate->playInfo()->isPlaying());

        // Chosen by either row, a pair moves on to the row two places after the chosen one; a
        // lone file to the next.
        const int next = row + (lone ? 1 : 2);
        QVERIFY(next < viewer.model()->rowCount());
        clickSlider(viewer.ui().videoPositionSlider, 0.9);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.engine()->mediaIndex(), qint64(next), test::StartWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), next);
    }

    void theLastRowRestsAtItsEnd()
    {
        Viewer& viewer = *m_viewer;
        const int last = viewer.model()->rowCount() - 1;
        QVERIFY(viewer.playRow(last));
        clickSlider(viewer.ui().videoPositionSlider, 0.9);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player1()->state() == VLCMediaPlayerStatePaused &&
                                     viewer.player1()->position() >= 0.998f,
                                 test::StartWaitMs);
        // The end rule looks once a second and then waits one more.
        QTest::qWait(2500);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(last));
        QVERIFY(!viewer.engine()->isPlayNextTimerActive());
        QVERIFY(!viewer.delegate->playInfo()->isPlaying());
        QCOMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_play_n"));
        QCOMPARE(viewer.ui().videoPositionSlider->fraction(), 1.0);
        // The last picture stays on screen.
        QVERIFY(viewer.delegate->video1View()->isVisible());
    }

    void swapExchangesThePictures()
    {
        // The longest pair leaves time for the swap and a look at both pictures after it.
        const RecordingPlan* pair = m_card.longestPair();
        QVERIFY(pair && pair->duration >= 4);
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.playRow(rowOf(*pair, false)));
        QTRY_VERIFY_WITH_TIMEOUT(test::frameNumber(viewer.delegate->video1View()->lastFrame()) &&
                                     test::frameNumber(viewer.delegate->video2View()->lastFrame()),
                                 test::StartWaitMs);
        const auto before = pictureDrift(viewer);
        QVERIFY(before);

        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_S);
        QVERIFY(viewer.engine()->swapping());
        QCOMPARE(viewer.player1()->media().path(), m_card.path(*pair, true));
        viewer.engine()->swapPlayer(); // ignored while the first swap runs
        QCOMPARE(viewer.player1()->media().path(), m_card.path(*pair, true));
        QCOMPARE(viewer.ui().player1BackgroundView->logoImageName(), QString("v1_rear_logo"));
        QCOMPARE(viewer.ui().player2BackgroundView->logoImageName(), QString("v2_front_logo"));

        QTRY_VERIFY_WITH_TIMEOUT(!viewer.engine()->swapping(), 5000);
        QCOMPARE(viewer.delegate->video1View()->lastFrame().size(),
                 m_card.plan->options().rearSize);
        QCOMPARE(viewer.delegate->video2View()->lastFrame().size(),
                 m_card.plan->options().frontSize);
        QCOMPARE(viewer.delegate->video1View()->geometry(), viewer.ui().videoContainerView->rect());
        // Both show the same moment again, taken up where the swap started.
        const auto after = pictureDrift(viewer);
        QVERIFY(after);
        QVERIFY2(*after <= 2, qPrintable(QString("frames apart: %1").arg(*after)));
        const auto frame = test::frameNumber(viewer.delegate->video1View()->lastFrame());
        QVERIFY(frame && *frame > 30);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(rowOf(*pair, false)));
    }

    void theAudioFollowsTheAutomaticChoice_data()
    {
        QTest::addColumn<bool>("frontAudio");
        QTest::addColumn<bool>("rearAudio");
        QTest::addColumn<int>("direction");
        QTest::newRow("front has sound") << true << false << int(KVRPlayInfo::AudioFront);
        QTest::newRow("only rear has sound") << false << true << int(KVRPlayInfo::AudioRear);
        QTest::newRow("silent pair") << false << false << int(KVRPlayInfo::AudioNone);
    }

    void theAudioFollowsTheAutomaticChoice()
    {
        QFETCH(bool, frontAudio);
        QFETCH(bool, rearAudio);
        QFETCH(int, direction);
        const RecordingPlan* pair = m_card.first([&](const RecordingPlan& r) {
            return r.hasRear && r.frontAudio == frontAudio && r.rearAudio == rearAudio;
        });
        if (!pair)
            QSKIP("the simulator's card has no such pair");
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.playRow(rowOf(*pair, false)));
        KVRPlayInfo* playInfo = viewer.delegate->playInfo();
        QTRY_COMPARE(playInfo->audioMediaDirection(), direction);
        TKImageButton* toggle = viewer.ui().audioToggleButton;
        QCOMPARE(toggle->isVisible(), direction != KVRPlayInfo::AudioNone);
        QCOMPARE(toggle->isChecked(), direction == KVRPlayInfo::AudioRear);
        // player1 holds the front file here.
        QCOMPARE(viewer.player1()->audio()->isMuted(), direction != KVRPlayInfo::AudioFront);
        QCOMPARE(viewer.player2()->audio()->isMuted(), direction != KVRPlayInfo::AudioRear);
        if (direction == KVRPlayInfo::AudioNone)
            return;

        // The person's choice (the button, or A) moves the sound to the other camera.
        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_A);
        const int other = 1 - direction;
        QCOMPARE(playInfo->audioMediaDirection(), other);
        QCOMPARE(viewer.player1()->audio()->isMuted(), other != KVRPlayInfo::AudioFront);
        QCOMPARE(viewer.player2()->audio()->isMuted(), other != KVRPlayInfo::AudioRear);
        const auto audible = other == KVRPlayInfo::AudioFront ? viewer.player1() : viewer.player2();
        QCOMPARE(quint64(audible->audio()->volume()), viewer.delegate->controls()->volume());
    }

    void aRecordingThatNeverStartsIsGivenUp()
    {
        QTemporaryDir dir;
        const QString broken = dir.filePath("alwa_20240101_000000_F.avi");
        // A RIFF header that promises an AVI file, and nothing playable behind it.
        static constexpr char junk[] = "RIFF\x10\0\0\0AVI junk that is no video";
        QVERIFY(test::writeFile(broken, QByteArray(junk, sizeof junk - 1)));
        QVERIFY(QFile::copy(m_card.path(*m_card.first([](auto& r) { return !r.hasRear; }), false),
                            dir.filePath("alwa_20240102_000000_F.avi")));
        Viewer& viewer = *m_viewer;
        viewer.delegate->loading()->setLongestDisplayTime(1.5);
        QVERIFY(viewer.openFolder(dir.path()));
        viewer.doubleClickRow(0);
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.ui().statusField->text().isEmpty(), test::StartWaitMs);
        QVERIFY(viewer.ui().statusField->text().contains("alwa_20240101_000000_F.avi"));
        QVERIFY(!viewer.engine()->waitingForPlayStart());
        QVERIFY(!viewer.ui().progressIndicator->isVisible());
        // The person can go on with another recording, given the usual time to start.
        viewer.delegate->loading()->setLongestDisplayTime(KVRLoadingController::LongestDisplayTime);
        QVERIFY(viewer.playRow(1));
        QVERIFY(viewer.ui().statusField->text().isEmpty());
    }

    // A pair whose rear file is empty: the front plays alone, as a lone front row does.
    void aBrokenPartnerLeavesTheMainPlayingAlone()
    {
        const RecordingPlan* pair = m_card.first([](const RecordingPlan& r) { return r.hasRear; });
        QTemporaryDir dir;
        const QString front = m_card.fileName(*pair, false);
        QVERIFY(QFile::copy(m_card.path(*pair, false), dir.filePath(front)));
        QVERIFY(test::writeFile(dir.filePath(m_card.fileName(*pair, true)), {}));
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.openFolder(dir.path()));
        QCOMPARE(viewer.model()->rowCount(), 2);
        viewer.doubleClickRow(viewer.rowOf(front));
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player2()->media().isNull() && viewer.playing(),
                                 test::StartWaitMs);
        QCOMPARE(viewer.player1()->media().path(), dir.filePath(front));
        QVERIFY(!viewer.ui().audioToggleButton->isVisible());
        QVERIFY(viewer.ui().statusField->text().isEmpty());
    }

    // The crash recording: the front file stops mid-way without its index, the rear runs on.
    // The telemetry comes back from the chunks, and the partner is placed by elapsed time.
    void aPairCutShortPlaysInStepWithItsRecoveredTelemetry()
    {
        const RecordingPlan* pair = m_card.longestPair();
        QTemporaryDir dir;
        const QString front = dir.filePath(m_card.fileName(*pair, false));
        const QByteArray whole = test::readFile(m_card.path(*pair, false));
        QVERIFY(test::writeFile(front, whole.left(whole.size() / 2)));
        QVERIFY(QFile::copy(m_card.path(*pair, true), dir.filePath(m_card.fileName(*pair, true))));
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.openFolder(dir.path()));
        QVERIFY(viewer.playRow(viewer.rowOf(QFileInfo(front).fileName())));
        QVERIFY(viewer.ui().graphView->values().size() > 5);
        QVERIFY(viewer.ui().telemetryNoteField->isVisible());

        viewer.ui().playButton->click();
        QTRY_COMPARE(viewer.player2()->state(), VLCMediaPlayerStatePaused);
        // The two players at the same time from the start of their recordings, within a frame.
        const auto times = [&viewer] {
            return QString("%1 / %2 ms")
                .arg(viewer.player1()->time().intValue())
                .arg(viewer.player2()->time().intValue());
        };
        const auto inStep = [&viewer] {
            return std::abs(viewer.player1()->time().intValue() -
                            viewer.player2()->time().intValue()) <= 34;
        };
        for (const double fraction : {0.7, 0.3}) {
            clickSlider(viewer.ui().videoPositionSlider, fraction);
            QTRY_VERIFY_WITH_TIMEOUT(!viewer.engine()->moving(), 3000);
            const qint64 target = qint64(fraction * viewer.player1()->lengthMilliseconds());
            QTRY_VERIFY2_WITH_TIMEOUT(
                inStep() && std::abs(viewer.player1()->time().intValue() - target) < 100,
                qPrintable(times()), 5000);
        }

        // The whole rear file large: past the front file's end the small picture rests on the
        // front file's last frame.
        const auto cut = CutShortAvi::open(front);
        QVERIFY(cut);
        QVERIFY(viewer.playRow(viewer.rowOf(m_card.fileName(*pair, true))));
        viewer.ui().playButton->click();
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
        clickSlider(viewer.ui().videoPositionSlider, 0.9);
        QTRY_VERIFY_WITH_TIMEOUT(test::frameNumber(viewer.delegate->video2View()->lastFrame()) ==
                                     cut->videoFrames() - 1,
                                 3000);
        // Back within its length, the partner that rested at its end follows again.
        QTRY_VERIFY(!viewer.engine()->moving());
        clickSlider(viewer.ui().videoPositionSlider, 0.2);
        QTRY_VERIFY(!viewer.engine()->moving());
        QTRY_VERIFY2_WITH_TIMEOUT(inStep() &&
                                      viewer.player2()->state() == VLCMediaPlayerStatePaused,
                                  qPrintable(times()), 5000);
        QTest::qWait(500);
        QVERIFY2(inStep(), qPrintable(times()));
    }

    // An empty file fails as soon as the player says so, and the failure names that file even
    // when the person has selected another row meanwhile.
    void anEmptyFileFailsAtOnceNamingItself()
    {
        QTemporaryDir dir;
        const QString lone = m_card.path(*m_card.first([](auto& r) { return !r.hasRear; }), false);
        QVERIFY(QFile::copy(lone, dir.filePath("alwa_20240101_000000_F.avi")));
        QVERIFY(test::writeFile(dir.filePath("alwa_20240101_000100_F.avi"), {}));
        QVERIFY(QFile::copy(lone, dir.filePath("alwa_20240101_000200_F.avi")));
        Viewer& viewer = *m_viewer;
        viewer.delegate->loading()->setLongestDisplayTime(120.0);
        QVERIFY(viewer.openFolder(dir.path()));
        QVERIFY(viewer.playRow(0));
        viewer.ui().mediaListTableView->selectOnlyRow(2);
        clickSlider(viewer.ui().videoPositionSlider, 0.9);
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.ui().statusField->text().isEmpty(), test::StartWaitMs);
        QVERIFY2(viewer.ui().statusField->text().endsWith(" alwa_20240101_000100_F.avi"),
                 qPrintable(viewer.ui().statusField->text()));
        QVERIFY(!viewer.engine()->waitingForPlayStart());
    }

    void openingAnotherFolderStopsPlayback()
    {
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.playRow(0));
        QTemporaryDir empty;
        QVERIFY(viewer.openFolder(empty.path()));
        QVERIFY(viewer.player1()->media().isNull());
        QVERIFY(viewer.player2()->media().isNull());
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(-1));
        QVERIFY(!viewer.engine()->isPlayNextTimerActive());
        QTRY_VERIFY(!viewer.delegate->video1View()->isVisible());
        QCOMPARE(viewer.model()->rowCount(), 0);
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), -1);
        // Nothing to play: a double-click or Return on the empty list opens nothing.
        QTest::mouseDClick(viewer.ui().mediaListTableView->viewport(), Qt::LeftButton);
        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_Return);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(-1));
        QVERIFY(!viewer.engine()->waitingForPlayStart());
    }
};

QTEST_MAIN(TestKVRPlaybackEngine)
#include "tst_kvrplaybackengine.moc"
