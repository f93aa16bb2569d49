#include "kvrsettingforaudioviewcontroller.h"

#include "kvrradiomatrix.h"
#include "kvrsegmentedcontrol.h"
#include "settings/settingvalues.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavro {

KVRSettingForAudioViewController::KVRSettingForAudioViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    constexpr int rows =
        (static_cast<int>(VoiceLanguageKeys.size()) + LanguageColumns - 1) / LanguageColumns;
    m_voiceLangRadio = matrix("Brightness1", rows, LanguageColumns);
    m_malaysiaRadio = new QRadioButton(QStringLiteral("Malaysia"), this);
    m_malaysiaRadio->setObjectName(QStringLiteral("malaysiaRadio"));
    // The button is not in the matrix's group, so the two exclude each other by hand.
    m_malaysiaRadio->setAutoExclusive(false);
    QFont font = m_malaysiaRadio->font();
    font.setPointSize(12);
    m_voiceLangRadio->setFont(font);
    m_malaysiaRadio->setFont(font);
    connect(m_voiceLangRadio, &KVRRadioMatrix::cellClicked, this,
            [this] { voiceLangMatrixSelected(); });
    connect(m_malaysiaRadio, &QRadioButton::clicked, this, [this] { malaysiaRadioSelected(); });

    auto* languages = new QVBoxLayout;
    languages->addWidget(m_voiceLangRadio);
    languages->addWidget(m_malaysiaRadio);

    auto* layout = new QVBoxLayout(this);
    //% "Microphone volume"
    layout->addWidget(groupBox(qtTrId("setting.aux.mic_volume"), segments("aud_input_vol")));
    //% "Speaker volume"
    layout->addWidget(groupBox(qtTrId("setting.aux.speaker_volume"), segments("aud_output_vol")));
    //% "Hourly chime"
    layout->addWidget(checkBox("alarm_ontime_flag", qtTrId("setting.aux.enable_hourly_alarm")));
    //% "Voice guidance language"
    layout->addWidget(groupBox(qtTrId("setting.aux.enable_voice_guidance"), languages));
    layout->addStretch(1);
}

void KVRSettingForAudioViewController::displayFileData()
{
    KVRSettingControllerDelegate::displayFileData();
    m_malaysiaRadio->setChecked(fileData()->Brightness1 == MalaysiaLanguage);
}

void KVRSettingForAudioViewController::collectFileData()
{
    KVRSettingControllerDelegate::collectFileData();
    if (m_malaysiaRadio->isChecked())
        fileData()->Brightness1 = MalaysiaLanguage;
}

void KVRSettingForAudioViewController::voiceLangMatrixSelected()
{
    m_malaysiaRadio->setChecked(false);
}

void KVRSettingForAudioViewController::malaysiaRadioSelected()
{
    if (!m_malaysiaRadio->isChecked()) {
        // A radio button is not unset by clicking it again.
        m_malaysiaRadio->setChecked(true);
    }
    m_voiceLangRadio->deselectAllCells();
    fileData()->Brightness1 = MalaysiaLanguage;
}

} // namespace kavro
