#include "appfixture.h"
#include "fusecard.h"

#include "telemetry/cutshortavi.h"

using namespace kavro;
using kavro::test::Viewer;

using camsim::RecordingPlan;

// Openings, play-next, broken files and files lost while they play, and the person's controls,
// on one viewer (the swap: the partner test). Each opening checks as much as it can: opening a row
// to both pictures playing is what costs the time here.
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

    const RecordingPlan* pairWithSound(bool front, bool rear) const
    {
        return m_card.first([=](const RecordingPlan& r) {
            return r.hasRear && r.frontAudio == front && r.rearAudio == rear;
        });
    }

    // The recording chosen by its front or rear row plays: the chosen file large, its partner
    // small, the front file's telemetry, the sound where the automatic choice puts it.
    void verifyOpened(const RecordingPlan& plan, bool rearRow, int audio)
    {
        Viewer& viewer = *m_viewer;
        const bool lone = !plan.hasRear;
        QCOMPARE(viewer.player1()->media().path(), m_card.path(plan, rearRow));
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), rowOf(plan, rearRow));
        QCOMPARE(viewer.ui().player1BackgroundView->logoImageName(),
                 rearRow ? "v1_rear_logo" : "v1_front_logo");
        // The pictures themselves: the front camera's frames are the larger ones.
        const QSize front = m_card.plan->options().frontSize;
        const QSize rear = m_card.plan->options().rearSize;
        QCOMPARE(viewer.delegate->video1View()->lastFrame().size(), rearRow ? rear : front);
        QCOMPARE(viewer.engine()->hasRearMedia(), !lone);
        if (lone) {
            QVERIFY(viewer.player2()->media().isNull());
            QVERIFY(!viewer.delegate->video2View()->isVisible());
        } else {
            QCOMPARE(viewer.player2()->media().path(), m_card.path(plan, !rearRow));
            QCOMPARE(viewer.ui().player2BackgroundView->logoImageName(),
                     rearRow ? "v2_front_logo" : "v2_rear_logo");
            QCOMPARE(viewer.delegate->video2View()->lastFrame().size(), rearRow ? front : rear);
        }

        // The front file's samples as the simulator wrote them, in g.
        const auto stored =
            m_card.plan->telemetry(plan).recording(plan.start, plan.duration, plan.impact).gsensor;
        QCOMPARE(viewer.ui().graphView->values().size(), stored.size());
        QVERIFY(std::abs(viewer.ui().graphView->values().front().x - stored[0].xAxis / 256.0) <
                1e-6);
        QCOMPARE(viewer.ui().gsensorXField->text(), QString("X=+0.00"));
        QVERIFY(viewer.ui().speedField->text().isEmpty());
        QVERIFY(viewer.engine()->isPlayNextTimerActive());
        QVERIFY(viewer.delegate->playInfo()->isPlaying());

        QTRY_COMPARE(viewer.delegate->playInfo()->audioMediaDirection(), audio);
        verifyAudio(audio, rearRow);
    }

    void verifyAudio(int audio, bool rearRow)
    {
        Viewer& viewer = *m_viewer;
        TKImageButton* toggle = viewer.ui().audioToggleButton;
        QCOMPARE(toggle->isVisible(), audio != KVRPlayInfo::AudioNone);
        QCOMPARE(toggle->isChecked(), audio == KVRPlayInfo::AudioRear);
        VLCMediaPlayer* frontPlayer = rearRow ? viewer.player2() : viewer.player1();
        VLCMediaPlayer* rearPlayer = rearRow ? viewer.player1() : viewer.player2();
        QCOMPARE(frontPlayer->audio()->isMuted(), audio != KVRPlayInfo::AudioFront);
        QCOMPARE(rearPlayer->audio()->isMuted(), audio != KVRPlayInfo::AudioRear);
        if (audio != KVRPlayInfo::AudioNone) {
            const auto audible = audio == KVRPlayInfo::AudioFront ? frontPlayer : rearPlayer;
            QCOMPARE(quint64(audible->audio()->volume()), viewer.delegate->controls()->volume());
        }
    }

    static constexpr const char* Front = "alwa_20240101_000000_F.avi";
    static constexpr const char* Rear = "alwa_20240101_000000_R.avi";

    // A card of one front/rear pair and one lone front recording after it, in stage/DCIM.
    bool stagePair(const QString& stage)
    {
        const RecordingPlan& pair = *m_card.longestPair();
        const QString dcim = stage + "/DCIM/";
        return QDir().mkpath(dcim) && QFile::copy(m_card.path(pair, false), dcim + Front) &&
               QFile::copy(m_card.path(pair, true), dcim + Rear) &&
               QFile::copy(m_card.path(pair, false), dcim + "alwa_20240101_000100_F.avi");
    }

    // The longest pair's front row playing from its start (time enough to act on it), or -1.
    int playLongestPair()
    {
        const int row = rowOf(*m_card.longestPair(), false);
        return m_viewer->playRow(row) ? row : -1;
    }

    // The picture's height against the front recording's own lines.
    QString shownSize() const
    {
        const double lines = m_card.plan->options().frontSize.height();
        return QString::asprintf("%.2fx", m_viewer->ui().videoContainerView->height() / lines);
    }

    // Played to its end, the row gives way to the row next.
    void playToTheEnd(int next)
    {
        Viewer& viewer = *m_viewer;
        QVERIFY(next < viewer.model()->rowCount());
        viewer.clickSlider(0.95);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.engine()->mediaIndex(), qint64(next), test::StartWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), next);
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

    // A lone front file moves on to the next row; on the quick card that is the last pair's
    // front row, which rests at its end.
    void aLoneRowMovesOnToTheLastRowWhichRests()
    {
        const RecordingPlan* lone = m_card.first([](const RecordingPlan& r) { return !r.hasRear; });
        QVERIFY(lone && !lone->frontAudio);
        Viewer& viewer = *m_viewer;
        const int row = rowOf(*lone, false);
        QVERIFY(viewer.playRow(row));
        verifyOpened(*lone, false, KVRPlayInfo::AudioNone);
        if (QTest::currentTestFailed())
            return;
        // The last pair, whose front row is the only front row with a partner opened here.
        const RecordingPlan& last = m_card.plan->recordings().back();
        QVERIFY(last.hasRear && last.frontAudio);
        QCOMPARE(rowOf(last, false), row + 1);
        QCOMPARE(rowOf(last, true), viewer.model()->rowCount() - 1);
        playToTheEnd(row + 1);
        verifyOpened(last, false, KVRPlayInfo::AudioFront);
        if (QTest::currentTestFailed())
            return;

        viewer.clickSlider(0.95);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player1()->state() == VLCMediaPlayerStatePaused &&
                                     viewer.player1()->position() >= 0.998f,
                                 test::StartWaitMs);
        // The end rule has looked and found no row to move to.
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.engine()->isPlayNextTimerActive(), 5000);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(row + 1));
        QVERIFY(!viewer.delegate->playInfo()->isPlaying());
        QCOMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_play_n"));
        QCOMPARE(viewer.ui().videoPositionSlider->fraction(), 1.0);
        // The last picture stays on screen.
        QVERIFY(viewer.delegate->video1View()->isVisible());
    }

    // An empty file fails as soon as the player says so, naming itself even when the person has
    // selected another row meanwhile; a file that never starts is given up after the loading
    // time; a pair whose rear file is empty plays its front alone, as a lone front row does.
    void brokenFilesAreNamedAndLeftBehind()
    {
        const RecordingPlan* pair = m_card.first([](const RecordingPlan& r) { return r.hasRear; });
        QTemporaryDir dir;
        const QString junk = "alwa_20240101_000000_F.avi", empty = "alwa_20240101_000100_F.avi";
        // A RIFF header that promises an AVI file, and nothing playable behind it.
        static constexpr char riff[] = "RIFF\x10\0\0\0AVI junk that is no video";
        QVERIFY(test::writeFile(dir.filePath(junk), QByteArray(riff, sizeof riff - 1)));
        QVERIFY(test::writeFile(dir.filePath(empty), {}));
        const QString front = m_card.fileName(*pair, false);
        QVERIFY(QFile::copy(m_card.path(*pair, false), dir.filePath(front)));
        QVERIFY(test::writeFile(dir.filePath(m_card.fileName(*pair, true)), {}));
        Viewer& viewer = *m_viewer;
        QLabel* status = viewer.ui().statusField;
        KVRLoadingController* loading = viewer.delegate->loading();
        loading->setLongestDisplayTime(120.0);
        QVERIFY(viewer.openFolder(dir.path()));
        QCOMPARE(viewer.model()->rowCount(), 4);

        viewer.doubleClickRow(viewer.rowOf(empty));
        viewer.ui().mediaListTableView->selectOnlyRow(viewer.rowOf(front));
        QTRY_VERIFY_WITH_TIMEOUT(!status->text().isEmpty(), test::StartWaitMs);
        QVERIFY2(status->text().endsWith(" " + empty), qPrintable(status->text()));
        QVERIFY(!viewer.engine()->waitingForPlayStart());

        loading->setLongestDisplayTime(1.5);
        viewer.doubleClickRow(viewer.rowOf(junk));
        // The indicator hidden early, as a late report of the last recording's player hides it,
        // still leaves the opening its time.
        loading->hideLoading();
        QTRY_VERIFY_WITH_TIMEOUT(status->text().contains(junk), test::StartWaitMs);
        QVERIFY(!viewer.engine()->waitingForPlayStart());
        QVERIFY(!viewer.ui().progressIndicator->isVisible());

        // The person goes on with another recording, given the usual time to start.
        loading->setLongestDisplayTime(KVRLoadingController::LongestDisplayTime);
        viewer.doubleClickRow(viewer.rowOf(front));
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player2()->media().isNull() && viewer.playing(),
                                 test::StartWaitMs);
        QCOMPARE(viewer.player1()->media().path(), dir.filePath(front));
        QVERIFY(!viewer.ui().audioToggleButton->isVisible());
        QVERIFY(status->text().isEmpty());
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
            viewer.clickSlider(fraction);
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
        viewer.clickSlider(0.9);
        const auto smallFrame = [&viewer] {
            return test::frameNumber(viewer.delegate->video2View()->lastFrame()).value_or(-1);
        };
        QTRY_VERIFY2_WITH_TIMEOUT(smallFrame() == cut->videoFrames() - 1,
                                  qPrintable(QString("frame %1 of %2, %3, state %4")
                                                 .arg(smallFrame())
                                                 .arg(cut->videoFrames())
                                                 .arg(times())
                                                 .arg(viewer.player2()->state())),
                                  3000);
        // Back within its length, the partner that rested at its end follows again.
        QTRY_VERIFY(!viewer.engine()->moving());
        viewer.clickSlider(0.2);
        QTRY_VERIFY(!viewer.engine()->moving());
        QTRY_VERIFY2_WITH_TIMEOUT(inStep() &&
                                      viewer.player2()->state() == VLCMediaPlayerStatePaused,
                                  qPrintable(times()), 5000);
        QTest::qWait(300);
        QVERIFY2(inStep(), qPrintable(times()));
    }

    // A file lost while its pair plays. The large picture's: the player stops on the recording
    // and says so, as for one that fails to open, instead of moving on. The small picture's: the
    // small picture and the sound switch go with it, and the large picture plays on to its end
    // and the next recording.
    void aFileLostWhilePlaying_data()
    {
        QTest::addColumn<QString>("lost");
        QTest::addColumn<QString>("how");
        QTest::newRow("file cut short") << Front << "cut";
        QTest::newRow("card pulled out") << Front << "pull";
        QTest::newRow("partner deleted") << Rear << "delete";
        QTest::newRow("partner cut short") << Rear << "cut";
    }

    void aFileLostWhilePlaying()
    {
        QFETCH(QString, lost);
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString stage = dir.filePath("stage"), mount = dir.filePath("mnt");
        QVERIFY(stagePair(stage));
        test::FuseCard card;
        QString folder = stage + "/DCIM";
        if (how == "pull") {
            QString error;
            QVERIFY2(card.insert(dir.filePath("card.img"), stage, 8, mount, &error),
                     qPrintable(error));
            folder = mount + "/DCIM";
        }
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.openFolder(folder));
        QCOMPARE(viewer.model()->rowCount(), 3);
        QVERIFY(viewer.playRow(0));
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.ui().speedField->text().isEmpty(), test::StartWaitMs);
        QVERIFY(viewer.ui().audioToggleButton->isVisible());
        QFile file(folder + "/" + lost);
        if (how == "pull")
            card.pull();
        else
            QVERIFY(how == "cut" ? file.resize(file.size() / 3) : file.remove());
        QTRY_COMPARE_WITH_TIMEOUT(viewer.ui().statusField->text(),
                                  "This recording could not be played: " + lost, test::StartWaitMs);
        if (lost == Rear) {
            QTRY_VERIFY(viewer.player2()->media().isNull());
            QVERIFY(!viewer.delegate->video2View()->isVisible());
            QVERIFY(!viewer.ui().audioToggleButton->isVisible());
            QCOMPARE(viewer.engine()->mediaIndex(), qint64(0));
            QCOMPARE(QFileInfo(viewer.player1()->media().path()).fileName(), QString(Front));
            // Played to its end, the pair gives way to the row after the partner's.
            playToTheEnd(2);
            return;
        }
        QVERIFY(viewer.player1()->media().isNull());
        QVERIFY(viewer.player2()->media().isNull());
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(-1));
        QVERIFY(!viewer.engine()->isPlayNextTimerActive());
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), qint64(0));
        // The telemetry shown is no longer any recording's.
        for (const QLabel* field : {viewer.ui().gsensorXField, viewer.ui().speedField,
                                    viewer.ui().hdopField, viewer.ui().sateliteField})
            QVERIFY2(field->text().isEmpty(), qPrintable(field->text()));
        QVERIFY(viewer.ui().graphView->values().empty());
        // Off the card before it goes.
        QVERIFY(viewer.openFolder(m_card.root));
    }

    // [ and ] step the speed within 1..2; Ctrl+Up/Down step the volume by ten within 0..200,
    // where the slider also goes. Each step: the slider set first (-1: left), the key, then
    // the speed and volume the person gets.
    void speedAndVolumeStayInTheirRanges()
    {
        QVERIFY(playLongestPair() >= 0);
        Viewer& viewer = *m_viewer;
        QSlider* slider = viewer.ui().volumeSlider;
        QCOMPARE(viewer.delegate->controls()->volume(), quint64(70));
        const struct
        {
            int slider;
            Qt::Key key;
            Qt::KeyboardModifiers modifiers;
            double speed;
            int volume;
        } steps[] = {{-1, Qt::Key_BracketLeft, {}, 1, 70},
                     {-1, Qt::Key_BracketRight, {}, 2, 70},
                     {-1, Qt::Key_BracketRight, {}, 2, 70},
                     {-1, Qt::Key_BracketLeft, {}, 1, 70},
                     {-1, Qt::Key_Up, Qt::ControlModifier, 1, 80},
                     {195, Qt::Key_Up, Qt::ControlModifier, 1, 200},
                     {-1, Qt::Key_Up, Qt::ControlModifier, 1, 200},
                     {5, Qt::Key_Down, Qt::ControlModifier, 1, 0}};
        for (const auto& step : steps) {
            if (step.slider >= 0)
                slider->setValue(step.slider);
            QTest::keyClick(viewer.ui().mediaListTableView, step.key, step.modifiers);
            QCOMPARE(viewer.delegate->playInfo()->speed(), step.speed);
            QCOMPARE(viewer.ui().speedTextButton->text(), step.speed == 1 ? "1.0x" : "2.0x");
            QCOMPARE(viewer.player1()->rate(), float(step.speed));
            QCOMPARE(viewer.player2()->rate(), float(step.speed));
            QCOMPARE(viewer.delegate->controls()->volume(), quint64(step.volume));
            QCOMPARE(slider->value(), step.volume);
            // The front file of this pair has the sound.
            QCOMPARE(viewer.player1()->audio()->volume(), step.volume);
        }
        slider->setValue(70);
    }

    // Shorter than ten seconds: Left goes to the start, Right to the end. Paused, Left moves the
    // picture, the slider, the time and the telemetry to the start; the time beside the slider
    // counts the recording's own seconds. At the end the button plays the row again from the
    // start (pause and resume: the partner test and Space in the program's test).
    void jumpsStopAtTheStartAndTheEndWhereTheButtonReplays()
    {
        const int row = playLongestPair();
        QVERIFY(row >= 0);
        Viewer& viewer = *m_viewer;
        const int seconds = m_card.longestPair()->duration;
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player1()->time().intValue() > 1500, test::StartWaitMs);
        viewer.ui().playButton->click();
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
        const QStringList times = viewer.ui().playTimeField->text().split(" / ");
        QCOMPARE(times.size(), 2);
        QVERIFY2(times[0] >= QString("00:01"), qPrintable(times[0]));
        const int total = times[1].section(':', 1).toInt();
        QVERIFY2(total == seconds || total == seconds - 1, qPrintable(times[1]));

        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_Left);
        QTRY_VERIFY(viewer.player1()->time().intValue() < 300);
        QCOMPARE(viewer.delegate->playInfo()->position(), 0.0);
        QCOMPARE(viewer.ui().videoPositionSlider->fraction(), 0.0);
        QVERIFY(viewer.ui().playTimeField->text().startsWith("00:00 / "));
        QTRY_VERIFY(viewer.ui().graphView->timePosition() < 0.05);

        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_Right);
        QTRY_VERIFY_WITH_TIMEOUT(
            viewer.player1()->position() >= 0.998f && viewer.player2()->position() >= 0.998f, 5000);
        viewer.ui().playButton->click();
        QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
        QVERIFY(viewer.player1()->position() < 0.5f);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(row));
        QTRY_COMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_pause_n"));
    }

    // The loaded row chosen again: paused, it plays from the start (double-click, then Return);
    // playing, it goes on.
    void theLoadedRowChosenAgain()
    {
        const int row = playLongestPair();
        QVERIFY(row >= 0);
        Viewer& viewer = *m_viewer;
        const auto time = [&viewer] { return viewer.player1()->time().intValue(); };
        const auto chooseAgain = [&](bool paused, bool byKey) {
            if (paused) {
                viewer.ui().playButton->click();
                QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
            }
            const qint64 before = time();
            if (byKey)
                QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_Return);
            else
                viewer.doubleClickRow(row);
            QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
            QVERIFY2(paused ? time() < before - 800 : time() >= before,
                     qPrintable(QString("%1 -> %2 ms").arg(before).arg(time())));
            QCOMPARE(viewer.engine()->mediaIndex(), qint64(row));
        };
        QTRY_VERIFY_WITH_TIMEOUT(time() > 1500, test::StartWaitMs);
        chooseAgain(true, false);
        QTRY_VERIFY_WITH_TIMEOUT(time() > 300, test::StartWaitMs);
        chooseAgain(false, false);
        QTRY_VERIFY_WITH_TIMEOUT(time() > 1500, test::StartWaitMs);
        chooseAgain(true, true);
    }

    // 1020x640 grows by 204x128 while it fits the 1600x1000 screen (less 100 in height), then
    // goes full screen; smaller leaves full screen for the start-up frame, and no further. The
    // size shown follows each step, also through F and Escape while paused.
    void sizeStepsGrowToFullScreenAndShrinkToTheMinimum()
    {
        QVERIFY(playLongestPair() >= 0);
        Viewer& viewer = *m_viewer;
        CustomWindow* window = viewer.window();
        const QRect start = window->frameGeometry();
        QCOMPARE(start.size(), KVRWindowLayout::minWindowSize());
        const QSize full(1600, 1000);
        const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
        const std::tuple<Qt::Key, Qt::KeyboardModifiers, QSize> steps[] = {
            {Qt::Key_Minus, ctrl, start.size()}, {Qt::Key_Equal, ctrl, {1224, 768}},
            {Qt::Key_Equal, ctrl, {1428, 896}},  {Qt::Key_Equal, ctrl, full},
            {Qt::Key_Equal, ctrl, full},         {Qt::Key_Minus, ctrl, start.size()},
            {Qt::Key_Minus, ctrl, start.size()}, {Qt::Key_F, {}, full},
            {Qt::Key_Escape, {}, start.size()}};
        for (const auto& [key, modifiers, size] : steps) {
            if (key == Qt::Key_F) { // F and Escape paused
                viewer.ui().playButton->click();
                QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
            }
            QTest::keyClick(viewer.ui().mediaListTableView, key, modifiers);
            QTRY_COMPARE(window->frameGeometry().size(), size);
            QCOMPARE(window->isFullScreen(), size == full);
            QTRY_COMPARE(viewer.ui().sizeTextButton->text(), shownSize());
        }
        QCOMPARE(window->frameGeometry(), start);
    }

    // Chosen by its rear row, a pair plays the rear file large and moves on two rows after the
    // chosen one; another folder opened stops it all (last: the viewer closes faster stopped).
    void aRearRowPlaysLargeAndMovesTwoRowsOn()
    {
        const RecordingPlan* rearSound = pairWithSound(false, true);
        const RecordingPlan* silent = pairWithSound(false, false);
        QVERIFY(rearSound && silent);
        Viewer& viewer = *m_viewer;
        const int row = rowOf(*rearSound, true);
        // Chosen while another row still opens, it is the one that plays.
        viewer.doubleClickRow(row + 2);
        QVERIFY(viewer.playRow(row));
        verifyOpened(*rearSound, true, KVRPlayInfo::AudioRear);
        if (QTest::currentTestFailed())
            return;
        // The person's choice (the button, or A) moves the sound to the other camera.
        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_A);
        QCOMPARE(viewer.delegate->playInfo()->audioMediaDirection(), KVRPlayInfo::AudioFront);
        verifyAudio(KVRPlayInfo::AudioFront, true);

        // On the quick card the silent pair's rear row is two rows on.
        QCOMPARE(viewer.cell(row + 2, KVRMediaListTableModel::FileColumn),
                 m_card.fileName(*silent, true));
        playToTheEnd(row + 2);
        verifyOpened(*silent, true, KVRPlayInfo::AudioNone);
        if (QTest::currentTestFailed())
            return;

        QTemporaryDir empty;
        QVERIFY(viewer.openFolder(empty.path()));
        QVERIFY(viewer.player1()->media().isNull());
        QVERIFY(viewer.player2()->media().isNull());
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(-1));
        QVERIFY(!viewer.engine()->isPlayNextTimerActive());
        QTRY_VERIFY(!viewer.delegate->video1View()->isVisible());
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
