#include "settings/settingvalues.h"

#include <QtTest>

using namespace kavro;

class TestSettingValues : public QObject
{
    Q_OBJECT

private slots:
    void unknownValuesFallBack()
    {
        QCOMPARE(findAlwaysModeTimeoutIndexByValue(45), 2); // 30 s
        QCOMPARE(findPowerVoltageIndexByValue(10000), ExternalPowerVoltageIndex);
        QCOMPARE(findPowerVoltageIndexByValue(12050), 8); // 12.0 V
        QCOMPARE(findPowerTimeIndexByValue(5), 0);
        QCOMPARE(cableLossIndexByValue(0), 3); // older files: the 0.3 V default
        QCOMPARE(cableLossIndexByValue(8), 3);
        QCOMPARE(choiceIndexByValue(7, 5), 0);
        QCOMPARE(lcdScreenSaverIndexByValue(9), 1);
        QCOMPARE(parkingRearOffIndexByValue(5), 0);
        QCOMPARE(sliderPositionForAlwaysRatio(75), 7);
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
        const QList<MatrixCell> pipCells = {{1, 1}, {0, 1}, {0, 0}, {1, 0}};
        for (quint32 position = 0; position < 4; ++position) {
            QCOMPARE(pipCellForPosition(position), pipCells[position]);
            QCOMPARE(pipPositionForCell(pipCells[position]), position);
        }
        QCOMPARE(pipCellForPosition(7), (MatrixCell{1, 1}));
        QCOMPARE(pipPositionForCell({2, 0}), 0u);

        QCOMPARE(voiceLanguageCell(1, 4), (MatrixCell{0, 1}));
        QVERIFY(!voiceLanguageCell(MalaysiaLanguage, 4));
        QVERIFY(!voiceLanguageByCell({5, 0}, 4)); // cell 20 lies past the languages
        for (quint32 language = 0; language < 20; ++language)
            QCOMPARE(voiceLanguageByCell(*voiceLanguageCell(language, 6), 6), language);
    }
};

QTEST_GUILESS_MAIN(TestSettingValues)
#include "tst_settingvalues.moc"
