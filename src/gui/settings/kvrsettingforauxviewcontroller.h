#pragma once

#include "kvrsettingcontrollerdelegate.h"

class QLabel;
class QSlider;

namespace kavro {

// The "setting.aux" page: the card's share between continuous and motion recordings, night
// exposure, the camera's screen, mains frequency, the rear camera while parked, the parking
// notice, recording length, the small picture's position and the format reminder.
class KVRSettingForAuxViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    explicit KVRSettingForAuxViewController(QWidget* parent = nullptr);

    std::optional<QString> validateUserInput() override;

protected:
    void displayFileData() override;
    void collectFileData() override;

private:
    void sliderMoved(int position);

    QSlider* m_memeryRatioSlider;
    QLabel* m_alwaysField;
    QLabel* m_motionField;
    QLabel* m_sdcardCapacityWarningLabel;
    bool m_displaying = false;
};

} // namespace kavro
