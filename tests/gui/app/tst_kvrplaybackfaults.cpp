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

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(m_card.make(&error), qPrintable(error));
    }

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
        const QString lost = "alwa_20240101_000000_F.avi", next = "alwa_20240101_000100_F.avi";
        const QString source = m_card.path(*m_card.longestPair(), false);
        QVERIFY(QDir().mkpath(stage + "/DCIM"));
        QVERIFY(QFile::copy(source, stage + "/DCIM/" + lost));
        QVERIFY(QFile::copy(source, stage + "/DCIM/" + next));
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
        QCOMPARE(viewer.model()->rowCount(), 2);
        QVERIFY(viewer.playRow(0));
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.ui().speedField->text().isEmpty(), test::StartWaitMs);
        if (pullCard) {
            card.pull();
        } else {
            QFile file(folder + "/" + lost);
            QVERIFY(file.resize(file.size() / 3));
        }
        QTRY_COMPARE_WITH_TIMEOUT(viewer.ui().statusField->text(),
                                  "This recording could not be played: " + lost, test::StartWaitMs);
        QVERIFY(viewer.player1()->media().isNull());
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
};

QTEST_MAIN(TestKVRPlaybackFaults)
#include "tst_kvrplaybackfaults.moc"
