#include "appfixture.h"

using namespace kavro;
using kavro::test::Viewer;

class TestKVRPlaybackControls : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    test::TinyCard m_card;
    std::unique_ptr<Viewer> m_viewer;
    QString m_longestName;
    int m_longestRow = -1;

    KVRPlaybackControls* controls() const { return m_viewer->delegate->controls(); }
    KVRPlayInfo* playInfo() const { return m_viewer->delegate->playInfo(); }
    // The picture's height against the front recording's own lines.
    QString shownSize() const
    {
        const double lines = m_card.plan->options().frontSize.height();
        return QString::asprintf("%.2fx", m_viewer->ui().videoContainerView->height() / lines);
    }

private slots:
    void initTestCase()
    {
        m_card.makeInTest();
        const camsim::RecordingPlan* longest = m_card.longestPair();
        QVERIFY(longest);
        m_longestName = m_card.fileName(*longest, false);
    }

    // Each test starts on a fresh window playing the longest pair from its start.
    void init()
    {
        QVERIFY(test::startViewer(m_viewer, m_card.root));
        m_longestRow = m_viewer->rowOf(m_longestName);
        QVERIFY(m_longestRow >= 0);
        QTRY_COMPARE(m_viewer->window()->frameGeometry().size(), KVRWindowLayout::minWindowSize());
        QVERIFY(m_viewer->playRow(m_longestRow));
    }

    void cleanup() { m_viewer.reset(); }

    // [ and ] step the speed within 1..2; Ctrl+Up/Down step the volume by ten within 0..200,
    // where the slider also goes. Each step: the slider set first (-1: left), the key, then
    // the speed and volume the person gets.
    void speedAndVolumeStayInTheirRanges()
    {
        Viewer& viewer = *m_viewer;
        QSlider* slider = viewer.ui().volumeSlider;
        QCOMPARE(controls()->volume(), quint64(70));
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
            QCOMPARE(playInfo()->speed(), step.speed);
            QCOMPARE(viewer.ui().speedTextButton->text(), step.speed == 1 ? "1.0x" : "2.0x");
            QCOMPARE(viewer.player1()->rate(), float(step.speed));
            QCOMPARE(viewer.player2()->rate(), float(step.speed));
            QCOMPARE(controls()->volume(), quint64(step.volume));
            QCOMPARE(slider->value(), step.volume);
            // The front file of this pair has the sound.
            QCOMPARE(viewer.player1()->audio()->volume(), step.volume);
        }
    }

    // Shorter than ten seconds: Left goes to the start, Right to the end. Paused, Left moves the
    // picture, the slider, the time and the telemetry to the start; the time beside the slider
    // counts the recording's own seconds.
    void jumpsStopAtTheStartAndTheEnd()
    {
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
        QCOMPARE(playInfo()->position(), 0.0);
        QCOMPARE(viewer.ui().videoPositionSlider->fraction(), 0.0);
        QVERIFY(viewer.ui().playTimeField->text().startsWith("00:00 / "));
        QTRY_VERIFY(viewer.ui().graphView->timePosition() < 0.05);

        QTest::keyClick(viewer.ui().mediaListTableView, Qt::Key_Right);
        QTRY_VERIFY_WITH_TIMEOUT(
            viewer.player1()->position() >= 0.998f && viewer.player2()->position() >= 0.998f, 5000);
    }

    void playButtonPausesResumesAndReplaysAtTheEnd()
    {
        Viewer& viewer = *m_viewer;
        viewer.ui().playButton->click();
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
        QTRY_COMPARE(viewer.player2()->state(), VLCMediaPlayerStatePaused);
        QTRY_COMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_play_n"));
        viewer.ui().playButton->click();
        QTRY_VERIFY(viewer.player1()->isPlaying() && viewer.player2()->isPlaying());
        QTRY_COMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_pause_n"));

        // Sent to the end with the slider, then played again from the start.
        controls()->videoPositionSliderMoved(1.0);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player1()->position() >= 0.998f &&
                                     !viewer.delegate->playInfo()->isPlaying(),
                                 5000);
        viewer.ui().playButton->click();
        QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
        QVERIFY(viewer.player1()->position() < 0.5f);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(m_longestRow));
    }

    // The loaded row chosen again: paused, it plays from the start (double-click, then Return);
    // playing, it goes on.
    void theLoadedRowChosenAgain()
    {
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
                viewer.doubleClickRow(m_longestRow);
            QTRY_VERIFY_WITH_TIMEOUT(viewer.playing(), test::StartWaitMs);
            QVERIFY2(paused ? time() < before - 800 : time() >= before,
                     qPrintable(QString("%1 -> %2 ms").arg(before).arg(time())));
            QCOMPARE(viewer.engine()->mediaIndex(), qint64(m_longestRow));
        };
        QTRY_VERIFY_WITH_TIMEOUT(time() > 1500, test::StartWaitMs);
        chooseAgain(true, false);
        QTRY_VERIFY_WITH_TIMEOUT(time() > 300, test::StartWaitMs);
        chooseAgain(false, false);
        QTRY_VERIFY_WITH_TIMEOUT(time() > 1500, test::StartWaitMs);
        chooseAgain(true, true);
    }

    // The size shown follows the window back from full screen, also while paused.
    void pausedFullScreenAndBackKeepsTheSizeTrue()
    {
        Viewer& viewer = *m_viewer;
        QTRY_COMPARE(viewer.ui().sizeTextButton->text(), shownSize());
        const QString windowed = viewer.ui().sizeTextButton->text();
        viewer.ui().playButton->click();
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
        QWidget* list = viewer.ui().mediaListTableView;
        QTest::keyClick(list, Qt::Key_F);
        QTRY_VERIFY(viewer.ui().sizeTextButton->text() != windowed);
        QTest::keyClick(list, Qt::Key_Escape);
        QTRY_COMPARE(viewer.ui().sizeTextButton->text(), windowed);
    }

    // 1020x640 grows by 204x128 while it fits the 1600x1000 screen (less 100 in height), then
    // goes full screen; smaller leaves full screen for the start-up frame, and no further.
    void sizeStepsGrowToFullScreenAndShrinkToTheMinimum()
    {
        Viewer& viewer = *m_viewer;
        CustomWindow* window = viewer.window();
        const QRect start = window->frameGeometry();
        QCOMPARE(start.size(), KVRWindowLayout::minWindowSize());
        const QSize full(1600, 1000);
        const std::pair<Qt::Key, QSize> steps[] = {
            {Qt::Key_Minus, start.size()}, {Qt::Key_Equal, {1224, 768}},
            {Qt::Key_Equal, {1428, 896}},  {Qt::Key_Equal, full},
            {Qt::Key_Equal, full},         {Qt::Key_Minus, start.size()},
            {Qt::Key_Minus, start.size()}};
        for (const auto& [key, size] : steps) {
            QTest::keyClick(viewer.ui().mediaListTableView, key, Qt::ControlModifier);
            QCOMPARE(window->frameGeometry().size(), size);
            QCOMPARE(window->isFullScreen(), size == full);
        }
        QCOMPARE(window->frameGeometry(), start);
        QTRY_COMPARE(viewer.ui().sizeTextButton->text(), shownSize());
    }
};

QTEST_MAIN(TestKVRPlaybackControls)
#include "tst_kvrplaybackcontrols.moc"
