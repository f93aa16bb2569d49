// The pages against real files: a record the pages show exactly comes back byte for byte, and a
// person's changes on one page give the bytes the core computes for them.

#include "settingwindowfixture.h"

#include "resources/translations/infoplisttranslator.h"
#include "settings/kvrradiomatrix.h"
#include "settings/settingfields.h"
#include "settingtestdata.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>

using namespace kavro;
using namespace kavro::test;

using Action = std::function<void(QWidget* page)>;
using Fields = QList<QPair<QByteArray, qint64>>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(Fields)

namespace {

// Fields of every kind of control on every page off their defaults, each a value its control
// shows as it is; the other choices at their defaults (all shown as they are); the rest random.
// Choices share their binding, so one of each control kind stands for the others.
_FILEDATA everyPageChanged()
{
    _FILEDATA record, defaults = defaultRecord();
    fileDataFromBytes(randomRecordBytes(29), record);
    for (const SettingField& field : settingFields()) {
        if (field.kind == SettingKind::Choice) {
            const FileDataField& stored = *findFileDataField(field.name);
            setFieldInteger(record, stored, fieldInteger(defaults, stored));
        }
    }
    const Fields values = {
        {"vid_brightness", 4},
        {"front_cpl_use", 3},
        {"always_mode_timeout", 300},
        {"g_sensor_enable", 0},
        {"gsen_x_threshold", 33},
        {"gsen_y_threshold", 27},
        {"gsen_z_threshold", 91},
        {"parkmode_x_threshold", 20},
        {"parkmode_y_threshold", 20},
        {"parkmode_z_threshold", 20},
        {"ledoff", 1},
        {"sd_mem_always_reserved", 11700},
        {"sd_mem_event_reserved", 1},
        {"CableVoltCorr", 6},
        {"external_rear_camera", 0xA0000005},
        {"nodriving_day", 5},
        {"speed_disp_unit", 1},
        {"time_gmt", 22},
        {"summer_time", 1},
        {"sd_mem_always_ratio", 40},
        {"sd_mem_motion_ratio", 60},
        {"lcd_autopoweroff", 3},
        {"parking_rear_off", 1},
        {"pip_position", 2},
        {"motion720pCValue", 5},
        {"motionBlock", 0x0A5},
        {"motionBlock_Rear", 0xF00},
        {"aud_output_vol", 3},
        {"alarm_ontime_flag", 0},
        {"Brightness1", 13},
    };
    for (const auto& [name, value] : values)
        setField(record, name.constData(), value);
    setPlateNumber(record, QStringLiteral("AB12cd"));
    prepareFileDataForSave(record);
    return record;
}

} // namespace

class TestSettingPages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolatedConfigHome();
        qputenv("TZ", "UTC");
        installInfoPlistTranslator(QStringLiteral("en"));
    }

    void init() { QVERIFY(m_card.isValid()); }

    void everyPageVisitedWritesTheSameBytes()
    {
        const _FILEDATA record = everyPageChanged();
        QVERIFY(writeFile(settingPath(), fileDataBytes(record)));
        auto window = openWindow({nullptr, m_card.path(), true});
        QVERIFY(window);
        // Round the tabs with the keys of the contract, back to the first.
        for (int tab = 1; tab <= KVRSettingController::TabCount; ++tab) {
            key(window.get(), tab % 2 ? Qt::Key_Tab : Qt::Key_PageDown, Qt::ControlModifier);
            QCOMPARE(window->lastSelectedTabIndex(), tab % KVRSettingController::TabCount);
            // This card has no drive records: the drive tab says so, once.
            if (tab == KVRSettingController::DriveInfoTab) {
                QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
                QCOMPARE(visibleAlert(window.get())->informativeText(),
                         qtTrId("setting.flashdata.warning"));
                dismissAlert(window.get());
            }
        }
        key(window.get(), Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(window->lastSelectedTabIndex(), 6);
        QTest::qWait(200);
        QVERIFY(!visibleAlert(window.get()));
        saveAndDismiss(window.get());
        QCOMPARE(readFile(settingPath()).toHex(' '), fileDataBytes(record).toHex(' '));
    }

    void personChangesOnePage_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<Fields>("stored"); // over the defaults, before the window opens
        QTest::addColumn<Action>("action");
        QTest::addColumn<Fields>("saved"); // what the save must change
        // Independent changes on one page share a window: each start costs the loading sheet.
        QTest::newRow("video segments, flip 2 saved as unuse")
            << 0 << Fields{{"flip_video", 2}} << Action([](QWidget* page) {
                   clickSegment(page, "vid_brightness", 0);
                   clickSegment(page, "rear_cpl_use", 1);
               })
            << Fields{{"vid_brightness", 0}, {"rear_cpl_use", 1}, {"flip_video", 0}};
        QTest::newRow("driving 50/45/44 is customize, typed x; parking preset clicked")
            << 1 << Fields{{"gsen_z_threshold", 44}} << Action([](QWidget* page) {
                   auto* x =
                       page->findChild<QLineEdit*>("gsensorSensitivityThresholdXDrivingField");
                   QVERIFY(x->isEnabled());
                   QCOMPARE(x->text(), QString("0.50"));
                   x->selectAll();
                   QTest::keyClicks(x, "0.29");
                   QTest::keyClick(x, Qt::Key_Tab);
                   clickSegment(page, "gsensorSensitivityParkingSeg", 0);
               })
            << Fields{{"gsen_x_threshold", 29},
                      {"gsen_z_threshold", 44},
                      {"parkmode_x_threshold", 25},
                      {"parkmode_y_threshold", 25},
                      {"parkmode_z_threshold", 25}};
        QTest::newRow("cable loss 0 saved as 0.3v, external power ticked, rear camera off")
            << 1 << Fields{{"CableVoltCorr", 0}, {"external_rear_camera", 0x10007}}
            << Action([](QWidget* page) {
                   QTest::mouseClick(page->findChild<QCheckBox*>("sd_mem_event_reserved"),
                                     Qt::LeftButton, {}, QPoint(4, 4));
                   QVERIFY(!page->findChild<QComboBox*>("sd_mem_always_reserved")->isEnabled());
                   // The camera's LED bits are kept.
                   QTest::mouseClick(page->findChild<QCheckBox*>("externalRearCameraUse"),
                                     Qt::LeftButton, {}, QPoint(4, 4));
                   QVERIFY(!page->findChild<QCheckBox*>("externalRearCameraUseEvent")->isEnabled());
               })
            << Fields{{"CableVoltCorr", 4},
                      {"sd_mem_event_reserved", 1},
                      {"external_rear_camera", 0x10006}};
        QTest::newRow("car number typed with hyphens")
            << 1 << Fields{} << Action([](QWidget* page) {
                   auto* field = page->findChild<QLineEdit*>("carNumberField");
                   field->setFocus();
                   field->selectAll();
                   QTest::keyClicks(field, "12-34 56-78 90");
               })
            << Fields{{"szPlateNumber", 0x34333231}, {"szPlateNumber+4", 0x38373635}};
        QTest::newRow("gps miles and summer time") << 2 << Fields{} << Action([](QWidget* page) {
            clickSegment(page, "speed_disp_unit", 1);
            QTest::mouseClick(page->findChild<QCheckBox*>("summer_time"), Qt::LeftButton, {},
                              QPoint(4, 4));
        }) << Fields{{"speed_disp_unit", 1}, {"summer_time", 1}};
        QTest::newRow("share 75 shown saves 70, aux swapped encodings")
            << 3
            << Fields{{"sd_mem_always_ratio", 75},
                      {"sd_mem_motion_ratio", 25},
                      {"parking_rear_off", 5},
                      {"pip_position", 7}}
            << Action([](QWidget* page) { clickSegment(page, "lcd_screensaver", 0); })
            << Fields{{"sd_mem_always_ratio", 70},
                      {"sd_mem_motion_ratio", 30},
                      {"parking_rear_off", 1},
                      {"pip_position", 0},
                      {"lcd_screensaver", 1}};
        QTest::newRow("slider to 8") << 3 << Fields{} << Action([](QWidget* page) {
            auto* slider = page->findChild<QSlider*>("memeryRatioSlider");
            slider->setFocus();
            QTest::keyClick(slider, Qt::Key_Right);
            QVERIFY(page->findChild<QWidget*>("sdcardCapacityWarningLabel")->isVisible());
        }) << Fields{{"sd_mem_always_ratio", 80}, {"sd_mem_motion_ratio", 20}};
        QTest::newRow("motion boxes")
            << 4 << Fields{{"motionBlock", 0}, {"motionBlock_Rear", 0xFFFF}}
            << Action([](QWidget* page) {
                   QTest::mouseClick(page->findChild<QCheckBox*>("frontMotionBlock01Chk"),
                                     Qt::LeftButton, {}, QPoint(4, 4));
               })
            << Fields{{"motionBlock", 0x100}, {"motionBlock_Rear", 0xFFF}};
        QTest::newRow("Malaysia then English")
            << 5 << Fields{{"Brightness1", 20}} << Action([](QWidget* page) {
                   auto* radio = page->findChild<QRadioButton*>("malaysiaRadio");
                   QVERIFY(radio->isChecked());
                   auto* matrix = page->findChild<KVRRadioMatrix*>("Brightness1");
                   QVERIFY(!matrix->selectedCell());
                   QTest::mouseClick(matrix->cellAt({0, 1}), Qt::LeftButton, {}, QPoint(4, 4));
                   QVERIFY(!radio->isChecked());
               })
            << Fields{{"Brightness1", 1}};
        QTest::newRow("Malaysia chosen") << 5 << Fields{} << Action([](QWidget* page) {
            QTest::mouseClick(page->findChild<QRadioButton*>("malaysiaRadio"), Qt::LeftButton, {},
                              QPoint(4, 4));
        }) << Fields{{"Brightness1", 20}};
    }

    void personChangesOnePage()
    {
        QFETCH(int, tab);
        QFETCH(Fields, stored);
        QFETCH(Action, action);
        QFETCH(Fields, saved);
        _FILEDATA before = defaultRecord();
        for (const auto& [name, value] : stored)
            setField(before, name.constData(), value);
        QVERIFY(writeFile(settingPath(), fileDataBytes(before)));

        auto window = openWindow({nullptr, m_card.path(), true});
        QVERIFY(window);
        QTest::mouseClick(window->functionSegmentedControl()->segmentButton(tab), Qt::LeftButton);
        QCOMPARE(window->lastSelectedTabIndex(), tab);
        action(window->targetController());
        QVERIFY(!QTest::currentTestFailed());
        saveAndDismiss(window.get());

        QByteArray expected = fileDataBytes(before);
        for (const auto& [name, value] : saved) {
            const QList<QByteArray> parts = name.split('+'); // a field, and a byte offset in it
            int offset = int(findFileDataField(parts[0].constData())->offset) +
                         (parts.size() > 1 ? parts[1].toInt() : 0);
            setU32(expected, offset, quint32(value));
        }
        _FILEDATA record;
        QVERIFY(fileDataFromBytes(expected, record));
        prepareFileDataForSave(record);
        QCOMPARE(readFile(settingPath()).toHex(' '), fileDataBytes(record).toHex(' '));
    }

private:
    QString settingPath() const { return m_card.filePath("config.bin"); }
    QTemporaryDir m_card;
};

QTEST_MAIN(TestSettingPages)
#include "tst_settingpages.moc"
