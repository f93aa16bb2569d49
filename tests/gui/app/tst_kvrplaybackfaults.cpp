#include "appfixture.h"
#include "fusecard.h"

using namespace kavro;
using kavro::test::Viewer;

// Faults that happen to a recording while it plays, made for real.
class TestKVRPlaybackFaults : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    test::TinyCard m_card;

    // A card of one front/rear pair and one lone front recording after it, in stage/DCIM.
    bool stagePair(const QString& stage)
    {
        const camsim::RecordingPlan& pair = *m_card.longestPair();
        const QString dcim = stage + "/DCIM/";
        return QDir().mkpath(dcim) && QFile::copy(m_card.path(pair, false), dcim + Front) &&
               QFile::copy(m_card.path(pair, true), dcim + Rear) &&
               QFile::copy(m_card.path(pair, false), dcim + Next);
    }

    static constexpr const char* Front = "alwa_20240101_000000_F.avi";
    static constexpr const char* Rear = "alwa_20240101_000000_R.avi";
    static constexpr const char* Next = "alwa_20240101_000100_F.avi";

private slots:
    void initTestCase() { m_card.makeInTest(); }

    // The player stops on the recording and says so, as for one that fails to open, instead of
    // moving on; the window goes on with another recording.
    void aRecordingLostWhilePlayingStopsThere_data()
    {
        QTest::addColumn<bool>("pullCard");
        QTest::newRow("file cut short") << false;
        QTest::newRow("card pulled out") << true;
    }

    void aRecordingLostWhilePlayingStopsThere()
    {
        QFETCH(bool, pullCard);
        QTemporaryDir dir;
        const QString stage = dir.filePath("stage"), mount = dir.filePath("mnt");
        QVERIFY(stagePair(stage));
        test::FuseCard card;
        QString folder = stage + "/DCIM";
        if (pullCard) {
            QString error;
            QVERIFY2(card.insert(dir.filePath("card.img"), stage, 8, mount, &error),
                     qPrintable(error));
            folder = mount + "/DCIM";
        }

        Viewer viewer;
        QVERIFY(viewer.openFolder(folder));
        QCOMPARE(viewer.model()->rowCount(), 3);
        QVERIFY(viewer.playRow(0));
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.ui().speedField->text().isEmpty(), test::StartWaitMs);
        if (pullCard) {
            card.pull();
        } else {
            QFile file(folder + "/" + Front);
            QVERIFY(file.resize(file.size() / 3));
        }
        QTRY_COMPARE_WITH_TIMEOUT(viewer.ui().statusField->text(),
                                  "This recording could not be played: " + QString(Front),
                                  test::StartWaitMs);
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

        QVERIFY(viewer.openFolder(m_card.root));
        QVERIFY(viewer.playRow(0));
        QVERIFY(viewer.ui().statusField->text().isEmpty());
    }

    // The small picture's file goes while the pair plays: the small picture and the sound switch
    // go with it, and the large picture plays on to its end and the next recording.
    void aPartnerLostWhilePlayingLeavesTheMainOne_data()
    {
        QTest::addColumn<bool>("cutShort");
        QTest::newRow("partner deleted") << false;
        QTest::newRow("partner cut short") << true;
    }

    void aPartnerLostWhilePlayingLeavesTheMainOne()
    {
        QFETCH(bool, cutShort);
        QTemporaryDir dir;
        QVERIFY(stagePair(dir.path()));
        Viewer viewer;
        QVERIFY(viewer.openFolder(dir.filePath("DCIM")));
        QVERIFY(viewer.playRow(0));
        QTRY_VERIFY_WITH_TIMEOUT(viewer.player2()->isPlaying(), test::StartWaitMs);
        QVERIFY(viewer.ui().audioToggleButton->isVisible());
        QFile rear(dir.filePath("DCIM/") + Rear);
        QVERIFY(cutShort ? rear.resize(rear.size() / 3) : rear.remove());

        QTRY_VERIFY_WITH_TIMEOUT(viewer.player2()->media().isNull(), test::StartWaitMs);
        QCOMPARE(viewer.ui().statusField->text(),
                 "This recording could not be played: " + QString(Rear));
        QVERIFY(!viewer.delegate->video2View()->isVisible());
        QVERIFY(!viewer.ui().audioToggleButton->isVisible());
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(0));
        QCOMPARE(QFileInfo(viewer.player1()->media().path()).fileName(), QString(Front));
        // Played to its end, the pair gives way to the row after the partner's.
        viewer.delegate->controls()->videoPositionSliderMoved(0.95);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.engine()->mediaIndex() == 2 && viewer.playing(),
                                 test::StartWaitMs);
    }
};

QTEST_MAIN(TestKVRPlaybackFaults)
#include "tst_kvrplaybackfaults.moc"
