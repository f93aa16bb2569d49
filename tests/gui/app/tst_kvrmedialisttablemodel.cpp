#include "appfixture.h"

#include <QDropEvent>
#include <QIcon>
#include <QMimeData>
#include <QRegularExpression>

using namespace kavro;
using kavro::test::Viewer;

class TestKVRMediaListTableModel : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString makeFolder(const QString& name, const QStringList& files)
    {
        const QString folder = m_dir.filePath(name);
        return test::makeFiles(folder, files) ? folder : QString();
    }

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private slots:
    void showsOneRowPerRecordingWithItsCells()
    {
        const QString folder = makeFolder(
            "card", {"DCIM/A/alwa_20240131_120000_F.avi", "DCIM/A/alwa_20240131_120000_R.avi",
                     "DCIM/E/event_20240131_120000_F.avi", "DCIM/M/motion_20240201_080910_R.AVI",
                     "ALWA_20240131_120000_F.avi"});
        Viewer viewer;
        QVERIFY(viewer.openFolder(folder));
        KVRMediaListTableModel* model = viewer.model();
        QCOMPARE(model->rowCount(), 5);
        QCOMPARE(viewer.ui().mediaListTableView->model(), model);

        // In the list's order, which the recording-list tests pin down.
        const char* const expected[] = {
            "ALWA_20240131_120000_F.avi media.always car_front_alwa - -",
            "event_20240131_120000_F.avi media.event car_front_event 2024-01-31 12:00:00",
            "alwa_20240131_120000_F.avi media.always car_front_alwa 2024-01-31 12:00:00",
            "alwa_20240131_120000_R.avi media.always car_rear_alwa 2024-01-31 12:00:00",
            "motion_20240201_080910_R.AVI media.motion car_rear_motion 2024-02-01 08:09:10",
        };
        using Model = KVRMediaListTableModel;
        for (int row = 0; row < 5; ++row) {
            QStringList want = QString(expected[row]).split(' '); // "-" for an empty cell
            want.replaceInStrings(QRegularExpression("^-$"), QString());
            want[1] = qtTrId(qPrintable(want[1]));
            const QStringList shown = {
                viewer.cell(row, Model::FileColumn), viewer.cell(row, Model::SaveModeColumn),
                Model::modeImageName(*model->mediaAtIndex(row)),
                viewer.cell(row, Model::DateColumn), viewer.cell(row, Model::TimeColumn)};
            QCOMPARE(shown, want);
            const QModelIndex mode = model->index(row, Model::SaveModeColumn);
            QVERIFY(!mode.data(Qt::DecorationRole).value<QIcon>().isNull());
            QVERIFY(!mode.siblingAtColumn(Model::DateColumn).data(Qt::DecorationRole).isValid());
        }

        const QStringList keys{"filelist.mode", "filelist.date", "filelist.time", "filelist.file"};
        for (int column = 0; column < 4; ++column) {
            QCOMPARE(model->headerData(column, Qt::Horizontal).toString(),
                     qtTrId(qPrintable(keys[column])));
            const auto alignment = model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)
                                       .value<Qt::Alignment>();
            QCOMPARE(bool(alignment & Qt::AlignLeft), column == KVRMediaListTableModel::FileColumn);
        }
        QCOMPARE(viewer.delegate->columnNames().size(), 4);
        QVERIFY(!model->index(5, 0).data().isValid());
        QVERIFY(!model->mediaAtIndex(-1));
        QVERIFY(!model->mediaAtIndex(5));
        // The pair of a rear row is found from its name alone.
        const auto pair = model->findMediaPairWithFileName("alwa_20240131_120000_R");
        QVERIFY(pair && pair->frontMedia() && pair->rearMedia());
    }

    void dropUrlsToFolder_data()
    {
        QTest::addColumn<QList<QUrl>>("urls");
        QTest::addColumn<QString>("folder");
        const QString card = makeFolder("dropped", {"DCIM/alwa_20240131_120000_F.avi"});
        const QString file = QDir(card).filePath("DCIM/alwa_20240131_120000_F.avi");
        QTest::newRow("folder") << QList<QUrl>{QUrl::fromLocalFile(card)} << card;
        QTest::newRow("file: its folder")
            << QList<QUrl>{QUrl::fromLocalFile(file)} << QFileInfo(file).absolutePath();
        QTest::newRow("web address first")
            << QList<QUrl>{QUrl("https://example.com/x"), QUrl::fromLocalFile(card)} << card;
        QTest::newRow("missing path")
            << QList<QUrl>{QUrl::fromLocalFile(m_dir.filePath("gone"))} << QString();
        QTest::newRow("nothing") << QList<QUrl>{} << QString();
    }

    void dropUrlsToFolder()
    {
        QFETCH(QList<QUrl>, urls);
        QFETCH(QString, folder);
        QCOMPARE(KVRMediaListTableView::directoryForUrls(urls), folder);
    }

    void droppingAFolderOnTheListOpensIt()
    {
        const QString card = makeFolder(
            "drop-card", {"x/alwa_20240131_120000_F.avi", "x/alwa_20240131_120000_R.avi"});
        Viewer viewer;
        QWidget* target = viewer.ui().mediaListTableView->viewport();
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(card)});
        const QPointF at(target->width() / 2.0, target->height() / 2.0);
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &enter);
        QVERIFY(enter.isAccepted());
        QSignalSpy reloaded(viewer.delegate.get(), &KVRAppDelegate::mediaListReloaded);
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(target, &drop);
        QVERIFY(reloaded.wait(test::StartWaitMs));
        QCOMPARE(viewer.model()->rowCount(), 2);
    }
};

QTEST_MAIN(TestKVRMediaListTableModel)
#include "tst_kvrmedialisttablemodel.moc"
