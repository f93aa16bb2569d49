// The drive-records tab as a person uses it: the card's records in the table, a record's position
// in the map window beside the settings window, another file opened and the records exported.

#include "settingwindowfixture.h"

#include "cardfiles.h"
#include "cardplan.h"
#include "map/kvrmapwindowcontroller.h"
#include "mappagetest.h"
#include "nmeacomposer.h"
#include "settings/kvrflashdatatablemodel.h"
#include "settings/kvrsettingforflashdataviewcontroller.h"

#include <QFileDialog>
#include <QPushButton>
#include <QTableView>

using namespace kavro;
using namespace kavro::test;

namespace {

using Page = KVRSettingForFlashDataViewController;

const char* const EnglishTitles =
    "No.,Seq,Date,Time,Day,Latitude,Longitude,Distance,Speed,Max Speed,Valid,X,Y,Z,Battery";

// The record of the export example: 3724.5000 N 12701.2000 E, sequence 17; and one with the
// longitude only, as the camera writes a fix it has not finished.
const QByteArray Positioned = QByteArray::fromHex(
    "110004017e03050704098c0e88139d31d0073900d20400000000000058000000050080ff00017c00");
const QByteArray NoPosition = QByteArray::fromHex(
    "120006007e030507040a000000009d31d00700000000000000000000000000000000000000006200");

QByteArray driveFile(std::uint32_t claimed, const QByteArray& records)
{
    QByteArray header(12, '\0');
    setU32(header, 0, claimed);
    return header + records;
}

// The rows the camera's plan gives each drive (its first, its first fix, its last), with the
// cells of columns No., Seq, Date, Time, Day, Latitude, Longitude, Speed and Valid; and the count.
QMap<int, QStringList> plannedRows(const camsim::CardPlan& plan, int* count)
{
    const int beforeFix = camsim::CardFiles::DriveRecordsBeforeFix;
    QMap<int, QStringList> rows;
    *count = 0;
    for (const camsim::DrivePlan& drive : plan.drives()) {
        const int end = int(std::floor(drive.track.duration()));
        for (int second : {-beforeFix, 0, end}) {
            const int row = *count + beforeFix + second;
            const QDateTime at = drive.cameraStart.addSecs(second);
            const camsim::GpsFix fix =
                camsim::TelemetrySynth(drive.track, drive.clock).fixAt(std::max(second, 0));
            rows[row] = {
                QString::number(row + 1),
                QString::number(row + 1),
                at.toString("yyyy/MM/dd"),
                at.toString("HH:mm:ss"),
                QLocale::c().dayName(at.date().dayOfWeek(), QLocale::ShortFormat).toUpper(),
                second < 0 ? "0000.0000"
                           : camsim::NmeaComposer::latitudeField(fix.latitude).chopped(2),
                second < 0 ? "00000.0000"
                           : camsim::NmeaComposer::longitudeField(fix.longitude).chopped(2),
                second < 0 ? "0" : QString::number(camsim::TelemetrySynth::speedKmh(fix)),
                second < 0 ? "V" : "A"};
        }
        *count += end + 1 + beforeFix;
    }
    return rows;
}

// The row's cells as the table shows them, or of the given line, in the planned columns.
QStringList cells(const Page* page, int row, QStringList line = {})
{
    QStringList picked;
    for (int column : {0, 1, 2, 3, 4, 5, 6, 8, 10})
        picked.append(line.isEmpty() ? page->tableModel()->index(row, column).data().toString()
                                     : line.value(column));
    return picked;
}

// The button clicked and its file panel, once shown, answered with path.
void answerPanel(Page* page, const char* button, const char* panelName, const QString& path)
{
    QTest::mouseClick(page->findChild<QPushButton*>(button), Qt::LeftButton);
    QFileDialog* panel = nullptr;
    QTRY_VERIFY_WITH_TIMEOUT((panel = page->window()->findChild<QFileDialog*>(panelName)), WaitMs);
    if (QLatin1String(panelName) == "savePanel")
        QCOMPARE(QFileInfo(panel->selectedFiles().value(0)).completeBaseName(), "kavro_000");
    panel->selectFile(path);
    static_cast<QDialog*>(panel)->accept();
}

void doubleClickAt(Page* page, QPoint point)
{
    QTest::mouseDClick(page->tableView()->viewport(), Qt::LeftButton, {}, point);
}

} // namespace

class TestKVRSettingForFlashDataViewController : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolatedConfigHome();
        prepareMapTests();
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void cardRecordsShownAndExported()
    {
        const camsim::CardPlan plan(camsim::CardOptions::quick());
        QString error;
        QVERIFY2(camsim::CardFiles::writeDriveRecords(m_dir->path(), plan, &error),
                 qPrintable(error));
        int count = 0;
        const QMap<int, QStringList> rows = plannedRows(plan, &count);
        Page* page = openDriveTab();
        QVERIFY(page);
        QTRY_COMPARE_WITH_TIMEOUT(page->tableView()->model()->rowCount(), count, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        QVERIFY(!visibleAlert(m_window.get()));
        for (auto row = rows.begin(); row != rows.end(); ++row)
            QCOMPARE(cells(page, row.key()), row.value());

        const QString csv = m_dir->filePath("records.csv");
        answerPanel(page, "exportButton", "savePanel", csv);
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(m_window.get()), WaitMs);
        QCOMPARE(visibleAlert(m_window.get())->informativeText(), qtTrId("msg.saved"));
        const QList<QByteArray> lines = readFile(csv).split('\n');
        QCOMPARE(lines.size(), count + 2);
        QCOMPARE(lines.first(), EnglishTitles);
        QCOMPARE(lines.last(), QByteArray());
        // The cells themselves are the writer's test; here the table's rows are what is written.
        const QStringList last = QString::fromUtf8(lines.at(count)).split(',');
        QCOMPARE(last.size(), int(FlashDataColumnCount));
        QCOMPARE(cells(page, count - 1, last), rows.last());
        // The battery rests at 12.4 V before the engine starts.
        QVERIFY(lines.at(1).endsWith(",12.4"));
    }

    void damagedFileOpened_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("rows");
        QByteArray ten;
        for (int i = 0; i < 10; ++i)
            ten += Positioned;
        QTest::newRow("header claims 100, holds 10 and a part")
            << driveFile(100, ten + Positioned.left(17)) << 10;
        // The reader's other limits are the core's tests; this one has nothing to export.
        QTest::newRow("shorter than its header") << QByteArray(5, '\x02') << 0;
    }

    // A damaged file opened by hand shows its whole records.
    void damagedFileOpened()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, rows);
        const QString path = m_dir->filePath("other.drv");
        QVERIFY(writeFile(path, bytes));
        Page* page = openDriveTab();
        QVERIFY(page);
        dismissAlert(m_window.get()); // the warning of a card without records, the pages' test

        answerPanel(page, "openButton", "openPanel", path);
        QTRY_VERIFY_WITH_TIMEOUT(page->flashDataFilePath() == path && !page->isBusy(), WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        QCOMPARE(page->tableView()->model()->rowCount(), rows);
        if (rows > 0)
            QCOMPARE(cells(page, rows - 1).first(), QString::number(rows));
        QVERIFY(!visibleAlert(m_window.get()));

        // Nothing to export: no panel.
        QTest::mouseClick(page->findChild<QPushButton*>("exportButton"), Qt::LeftButton);
        QTest::qWait(200);
        QVERIFY(!visibleAlert(m_window.get()));
        QCOMPARE(m_window->findChild<QFileDialog*>("savePanel") != nullptr, rows > 0);
    }

    void doubleClickShowsThePosition()
    {
        QVERIFY(QDir().mkpath(m_dir->filePath("DrvInfo")));
        QVERIFY(writeFile(m_dir->filePath("DrvInfo/kavro_000.drv"),
                          driveFile(2, Positioned + NoPosition)));
        Page* page = openDriveTab();
        QVERIFY(page);
        QTRY_COMPARE_WITH_TIMEOUT(page->tableView()->model()->rowCount(), 2, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        const QRect second = page->tableView()->visualRect(page->tableModel()->index(1, 3));

        // Below the last row: nothing.
        doubleClickAt(page, second.center() + QPoint(0, 3 * second.height()));
        QVERIFY(!page->mapWindowController());

        // A record without latitude opens the map beside the window and leaves it unmarked.
        doubleClickAt(page, second.center());
        QTRY_VERIFY_WITH_TIMEOUT(page->mapWindowController(), WaitMs);
        KVRMapWindowController* map = page->mapWindowController();
        QPointer<QWidget> mapWindow = map->window();
        QVERIFY(mapWindow->isVisible());
        const QRect frame = m_window->frameGeometry();
        QCOMPARE(mapWindow->frameGeometry().topLeft(),
                 QPoint(frame.x() + frame.width(), frame.y()));
        QVERIFY(loadOffline(*map->mapWebView()));
        QVERIFY(markerOf(mapState(*map->mapWebView())).isEmpty());

        // The record with one: 37 deg 24.5 min N, 127 deg 1.2 min E, in the same window.
        doubleClickAt(page,
                      page->tableView()->visualRect(page->tableModel()->index(0, 3)).center());
        QCOMPARE(page->mapWindowController(), map);
        QTRY_VERIFY_WITH_TIMEOUT(markerOf(mapState(*map->mapWebView())).size() == 2, WaitMs);
        const QList<double> marker = markerOf(mapState(*map->mapWebView()));
        QVERIFY2(qAbs(marker[0] - 37.408333) < 1e-5 && qAbs(marker[1] - 127.02) < 1e-5,
                 qPrintable(QStringLiteral("%1 %2").arg(marker[0]).arg(marker[1])));

        // Leaving the tab closes it.
        QTest::mouseClick(m_window->functionSegmentedControl()->segmentButton(2), Qt::LeftButton);
        QVERIFY(!page->mapWindowController());
        QVERIFY(!mapWindow);
    }

    void cleanup() { m_window.reset(); }

private:
    // The settings window on the test folder as its card, with its seventh tab clicked.
    Page* openDriveTab()
    {
        m_window = openWindow({nullptr, m_dir->path(), true});
        if (!m_window)
            return nullptr;
        QTest::mouseClick(m_window->functionSegmentedControl()->segmentButton(6), Qt::LeftButton);
        return qobject_cast<Page*>(m_window->targetController());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<KVRSettingController> m_window;
};

QTEST_MAIN(TestKVRSettingForFlashDataViewController)
#include "tst_kvrsettingforflashdataviewcontroller.moc"
