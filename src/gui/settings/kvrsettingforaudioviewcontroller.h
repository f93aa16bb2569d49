#pragma once

#include "kvrsettingcontrollerdelegate.h"

class QRadioButton;

namespace kavro {

// The "setting.audio" page: microphone and speaker volume, the hourly alarm and the language of
// the camera's voice guidance, with Malaysia on a button of its own beside the language matrix.
class KVRSettingForAudioViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    static constexpr int LanguageColumns = 4;

    explicit KVRSettingForAudioViewController(QWidget* parent = nullptr);

protected:
    void displayFileData() override;
    void collectFileData() override;

private:
    void voiceLangMatrixSelected();
    void malaysiaRadioSelected();

    KVRRadioMatrix* m_voiceLangRadio;
    QRadioButton* m_malaysiaRadio;
};

} // namespace kavro
