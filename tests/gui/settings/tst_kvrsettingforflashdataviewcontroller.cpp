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

// The record of the export example: 3724.5000 N 12701.2000 E, sequence 17; and one before a fix.
const QByteArray Positioned = QByteArray::fromHex(
    "110004017e03050704098c0e88139d31d0073900d20400000000000058000000050080ff00017c00");
const QByteArray NoPosition = QByteArray::fromHex(
    "120006007e030507040a000000000000000000000000000000000000000000000000000000006200");

QByteArray driveFile(std::uint32_t claimed, const QByteArray& records)
{
    QByteArray header(12, '\0');
    setU32(header, 0, claimed);
    return header + records;
}

// The cells the camera's plan puts in a row of the table (row counted from 0 over all drives):
// columns No., Seq, Date, Time, Day, Latitude, Longitude, Speed and Valid.
QStringList plannedCells(const camsim::CardPlan& plan, int row)
{
    const int beforeFix = camsim::CardFiles::DriveRecordsBeforeFix;
    int first = 0;
    for (const camsim::DrivePlan& drive : plan.drives()) {
        const int records = int(std::floor(drive.track.duration())) + 1 + beforeFix;
        if (row >= first + records) {
            first += records;
            continue;
        }
        const int second = row - first - beforeFix;
        const QDateTime at = drive.cameraStart.addSecs(second);
        QString latitude = "0000.0000";
        QString longitude = "00000.0000";
        QString speed = "0";
        if (second >= 0) {
            const camsim::GpsFix fix =
                camsim::TelemetrySynth(drive.track, drive.clock).fixAt(second);
            latitude = camsim::NmeaComposer::latitudeField(fix.latitude).chopped(2);
            longitude = camsim::NmeaComposer::longitudeField(fix.longitude).chopped(2);
            speed = QString::number(camsim::TelemetrySynth::speedKmh(fix));
        }
        return {QString::number(row + 1),
                QString::number(row + 1),
                at.toString("yyyy/MM/dd"),
                at.toString("HH:mm:ss"),
                QLocale::c().dayName(at.date().dayOfWeek(), QLocale::ShortFormat).toUpper(),
                latitude,
                longitude,
                speed,
                second >= 0 ? "A" : "V"};
    }
    return {};
}

QStringList pickedColumns(const QStringList& cells)
{
    QStringList picked;
    for (int column : {0, 1, 2, 3, 4, 5, 6, 8, 10})
        picked.append(cells.value(column));
    return picked;
}

QStringList shownCells(const Page* page, int row)
{
    QStringList cells;
    for (int column = 0; column < FlashDataColumnCount; ++column)
        cells.append(page->tableModel()->index(row, column).data().toString());
    return cells;
}

QFileDialog* visiblePanel(QWidget* window, const char* name)
{
    for (QFileDialog* panel : window->findChildren<QFileDialog*>(name)) {
        if (panel->isVisible())
            return panel;
    }
    return nullptr;
}

// The button clicked and its file dialog answered with path.
void answerPanel(QWidget* window, Page* page, const char* button, const char* panelName,
                 const QString& path)
{
    QTest::mouseClick(page->findChild<QPushButton*>(button), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(visiblePanel(window, panelName), WaitMs);
    QFileDialog* panel = visiblePanel(window, panelName);
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
        QList<int> rows = {0, camsim::CardFiles::DriveRecordsBeforeFix};
        for (const camsim::DrivePlan& drive : plan.drives()) {
            rows.append(count + camsim::CardFiles::DriveRecordsBeforeFix + 1);
            count += int(std::floor(drive.track.duration())) + 1 +
                     camsim::CardFiles::DriveRecordsBeforeFix;
            rows.append(count - 1);
        }
        Page* page = openDriveTab();
        QVERIFY(!QTest::currentTestFailed());
        QTRY_COMPARE_WITH_TIMEOUT(page->tableView()->model()->rowCount(), count, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        QVERIFY(!visibleAlert(m_window.get()));
        for (int row : rows)
            QCOMPARE(pickedColumns(shownCells(page, row)), plannedCells(plan, row));
        // The battery rests at 12.4 V before the engine starts.
        QCOMPARE(shownCells(page, 0).at(ColumnBattery), "12.4");

        const QString csv = m_dir->filePath("out/records.csv");
        QVERIFY(QDir().mkpath(m_dir->filePath("out")));
        QTest::mouseClick(page->findChild<QPushButton*>("exportButton"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(visiblePanel(m_window.get(), "savePanel"), WaitMs);
        QFileDialog* panel = visiblePanel(m_window.get(), "savePanel");
        QCOMPARE(QFileInfo(panel->selectedFiles().value(0)).completeBaseName(), "kavro_000");
        panel->selectFile(csv);
        static_cast<QDialog*>(panel)->accept();
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(m_window.get()), WaitMs);
        QCOMPARE(visibleAlert(m_window.get())->informativeText(), qtTrId("msg.saved"));

        const QList<QByteArray> lines = readFile(csv).split('\n');
        QCOMPARE(lines.size(), count + 2);
        QCOMPARE(lines.first(), EnglishTitles);
        QCOMPARE(lines.last(), QByteArray());
        for (int row : rows) {
            const QStringList fields = QString::fromUtf8(lines.at(row + 1)).split(',');
            QCOMPARE(fields.size(), int(FlashDataColumnCount));
            QCOMPARE(pickedColumns(fields), plannedCells(plan, row));
            QCOMPARE(fields, shownCells(page, row));
        }
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
        QTest::newRow("cut inside the second record")
            << driveFile(2, Positioned + NoPosition.left(39)) << 1;
        QTest::newRow("shorter than its header") << QByteArray(5, '\x02') << 0;
        QTest::newRow("count 0 before records") << driveFile(0, Positioned + Positioned) << 0;
    }

    // A card without records warns once; a damaged file opened by hand shows its whole records.
    void damagedFileOpened()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, rows);
        const QString path = m_dir->filePath("other.drv");
        QVERIFY(writeFile(path, bytes));
        Page* page = openDriveTab();
        QVERIFY(!QTest::currentTestFailed());
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(m_window.get()), WaitMs);
        QCOMPARE(visibleAlert(m_window.get())->informativeText(),
                 qtTrId("setting.flashdata.warning"));
        dismissAlert(m_window.get());

        answerPanel(m_window.get(), page, "openButton", "openPanel", path);
        QTRY_VERIFY_WITH_TIMEOUT(page->flashDataFilePath() == path && !page->isBusy(), WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        QCOMPARE(page->tableView()->model()->rowCount(), rows);
        if (rows > 0)
            QCOMPARE(shownCells(page, rows - 1).first(), QString::number(rows));
        QVERIFY(!visibleAlert(m_window.get()));

        // Away and back: no second warning. Nothing to export: no panel.
        QTest::mouseClick(m_window->functionSegmentedControl()->segmentButton(0), Qt::LeftButton);
        QTest::mouseClick(m_window->functionSegmentedControl()->segmentButton(6), Qt::LeftButton);
        QCOMPARE(m_window->targetController(), page);
        QTest::mouseClick(page->findChild<QPushButton*>("exportButton"), Qt::LeftButton);
        QTest::qWait(200);
        QVERIFY(!visibleAlert(m_window.get()));
        QCOMPARE(visiblePanel(m_window.get(), "savePanel") != nullptr, rows > 0);
    }

    void doubleClickShowsThePosition()
    {
        QVERIFY(QDir().mkpath(m_dir->filePath("DrvInfo")));
        QVERIFY(writeFile(m_dir->filePath("DrvInfo/kavro_000.drv"),
                          driveFile(2, Positioned + NoPosition)));
        Page* page = openDriveTab();
        QVERIFY(!QTest::currentTestFailed());
        QTRY_COMPARE_WITH_TIMEOUT(page->tableView()->model()->rowCount(), 2, WaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->loadingSheet()->isVisible(), WaitMs);
        const QRect second = page->tableView()->visualRect(page->tableModel()->index(1, 3));

        // Below the last row: nothing.
        doubleClickAt(page, second.center() + QPoint(0, 3 * second.height()));
        QVERIFY(!page->mapWindowController());

        // A record without position opens the map beside the window and leaves it unmarked.
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
        openWindow({nullptr, m_dir->path(), true}, m_window);
        if (QTest::currentTestFailed())
            return nullptr;
        QTest::mouseClick(m_window->functionSegmentedControl()->segmentButton(6), Qt::LeftButton);
        return qobject_cast<Page*>(m_window->targetController());
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<KVRSettingController> m_window;
};

QTEST_MAIN(TestKVRSettingForFlashDataViewController)
#include "tst_kvrsettingforflashdataviewcontroller.moc"
