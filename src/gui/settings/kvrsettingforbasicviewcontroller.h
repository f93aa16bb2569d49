#pragma once

#include "kvrsettingcontrollerdelegate.h"

#include <array>

class QLineEdit;

namespace kavro {

class KVRCarNumberTextField;

// The "setting.basic" page: parking-mode waiting time, impact detection with its driving and
// parking thresholds, security LEDs, car number, power cut-off, cable loss and the external rear
// camera.
class KVRSettingForBasicViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    explicit KVRSettingForBasicViewController(QWidget* parent = nullptr);

    std::optional<QString> validateUserInput() override;

protected:
    void displayFileData() override;
    void collectFileData() override;

private:
    using ThresholdFields = std::array<QLineEdit*, 3>;

    void changeGsensorEnable();
    void updateGsensorThreshold();
    void updatePowerUI();
    void powerVoltageSelected(int index);
    void clickUseExternalPowerChk();
    void clickExternalRearCameraUseCheck();
    void changeExternalRearCemeraSettings();

    KVRSegmentedControl* sensitivitySegments();
    ThresholdFields thresholdFields(const QString& prefix);

    QCheckBox* m_gsensorEnableChk;
    KVRSegmentedControl* m_drivingSeg;
    KVRSegmentedControl* m_parkingSeg;
    ThresholdFields m_drivingFields;
    ThresholdFields m_parkingFields;
    KVRCarNumberTextField* m_carNumberField;
    QComboBox* m_powerVoltageCombo;
    QComboBox* m_powerTimeCombo;
    QCheckBox* m_useExternalPowerChk;
    std::array<QCheckBox*, 3> m_rearCameraChecks;
};

} // namespace kavro
