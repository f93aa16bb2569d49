#include "settings/settingfields.h"
#include "settings/settingfile.h"
#include "settings/settingvalues.h"

#include <QtTest>

using namespace kavro;

class TestSettingValues : public QObject
{
    Q_OBJECT

private slots:
    // Stored value -> the control's index, and what that index stores again. Cable loss 0, rear
    // off 5, PiP 7 and Malaysia are read through the pages in the pages' test.
    void choiceTable_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<qint64>("stored");
        QTest::addColumn<int>("index");
        QTest::addColumn<qint64>("saved"); // -1: the record keeps its value
        QTest::newRow("waiting time unknown") << "always_mode_timeout" << 45LL << 2 << 30LL;
        QTest::newRow("external power") << "sd_mem_always_reserved" << 10000LL << 2 << 10000LL;
        QTest::newRow("voltage unknown") << "sd_mem_always_reserved" << 12050LL << 8 << 12000LL;
        QTest::newRow("timer unknown") << "sd_mem_motion_reserved" << 5LL << 0 << 0LL;
        QTest::newRow("front LED on") << "ledoff" << 0LL << 1 << 0LL;
        QTest::newRow("front LED odd") << "ledoff" << 5LL << 0 << 1LL;
        QTest::newRow("g-sensor odd") << "g_sensor_enable" << 7LL << 1 << 1LL;
        QTest::newRow("external power odd") << "sd_mem_event_reserved" << 2LL << 0 << 0LL;
        QTest::newRow("brightness 7") << "vid_brightness" << 7LL << 0 << 0LL;
        QTest::newRow("screen saver default") << "lcd_screensaver" << 0LL << 1 << 0LL;
        QTest::newRow("screen saver odd") << "lcd_screensaver" << 9LL << 1 << 0LL;
        QTest::newRow("pip 0 bottom right") << "pip_position" << 0LL << 3 << 0LL;
        QTest::newRow("pip 2 top left") << "pip_position" << 2LL << 0 << 2LL;
        QTest::newRow("language 21") << "Brightness1" << 21LL << -1 << -1LL;
        QTest::newRow("zone unknown") << "time_gmt" << -1LL << -1 << -1LL;
    }

    void choiceTable()
    {
        QFETCH(QString, field);
        QFETCH(qint64, stored);
        QFETCH(int, index);
        QFETCH(qint64, saved);
        const SettingField* setting = findSettingField(field.toStdString());
        QVERIFY(setting);
        QCOMPARE(choiceIndexForValue(*setting, stored), index);
        QCOMPARE(choiceValueAt(*setting, index).value_or(-1), saved);
    }

    void everyTableNameIsARecordField()
    {
        _FILEDATA defaults;
        makeDefaultFileData(defaults);
        for (const SettingField& field : settingFields()) {
            const FileDataField* recordField = findFileDataField(field.name);
            QVERIFY2(recordField &&
                         isIntegerField(*recordField) == (field.kind != SettingKind::PlateNumber),
                     field.name.data());
            // The defaults are values a page shows as they are.
            if (field.kind == SettingKind::Choice)
                QVERIFY2(isStorableValue(defaults, field, fieldInteger(defaults, *recordField)),
                         field.name.data());
        }
    }

    void thresholdPresets()
    {
        QCOMPARE(findDrivingGsensorThresholdIndexByX(50, 45, 45), 2);
        QCOMPARE(findDrivingGsensorThresholdIndexByX(50, 45, 44), CustomThresholdIndex);
        QCOMPARE(findParkingGsensorThresholdIndexByX(8, 8, 8), 4);
        QCOMPARE(findParkingGsensorThresholdIndexByX(8, 8, 9), CustomThresholdIndex);
        QCOMPARE(findParkingGsensorThresholdIndexByX(12, 8, 8), CustomThresholdIndex);
        for (int index = 0; index < CustomThresholdIndex; ++index) {
            GsensorThreshold driving = *drivingThresholdPreset(index);
            QCOMPARE(findDrivingGsensorThresholdIndexByX(driving.x, driving.y, driving.z), index);
            GsensorThreshold parking = *parkingThresholdPreset(index);
            QCOMPARE(findParkingGsensorThresholdIndexByX(parking.x, parking.y, parking.z), index);
        }
        QCOMPARE(thresholdHundredths(0.29), 29);
    }

    void bitEncodings()
    {
        quint32 camera = SetRearCameraSetting(0xF0, RearCameraUseBit, 1);
        camera = SetRearCameraSetting(camera, RearCameraLedOnMotionBit, 1);
        QCOMPARE(camera, 0xF5u);
        QCOMPARE(GetRearCameraSetting(camera, RearCameraLedOnEventBit), 0u);
        QCOMPARE(SetRearCameraSetting(camera, RearCameraUseBit, 2), 0xF4u); // only 1 sets

        std::array<bool, 12> watched = watchedMotionBlocks(0x60); // boxes 06 and 07 excluded
        for (int box = 0; box < 12; ++box)
            QCOMPARE(watched[box], box != 5 && box != 6);
        QCOMPARE(motionBlockMaskFromWatched(watchedMotionBlocks(0xFFFF)), 0xFFFu);
        watched.fill(true);
        watched[0] = false; // box 01
        QCOMPARE(motionBlockMaskFromWatched(watched), 0x100u);
        watched.fill(true);
        watched[8] = false; // box 09
        QCOMPARE(motionBlockMaskFromWatched(watched), 0x1u);
    }

    void cellEncodings()
    {
        QCOMPARE(voiceLanguageCell(1, 4), (MatrixCell{0, 1}));
        QVERIFY(!voiceLanguageCell(MalaysiaLanguage, 4));
        QVERIFY(!voiceLanguageByCell({5, 0}, 4)); // cell 20 lies past the languages
        for (quint32 language = 0; language < 20; ++language)
            QCOMPARE(voiceLanguageByCell(*voiceLanguageCell(language, 6), 6), language);
    }
};

QTEST_GUILESS_MAIN(TestSettingValues)
#include "tst_settingvalues.moc"
