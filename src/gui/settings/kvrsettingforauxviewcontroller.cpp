#include "kvrsettingforauxviewcontroller.h"

#include "kvrradiomatrix.h"
#include "kvrsegmentedcontrol.h"
#include "settings/kvrvalidator.h"
#include "settings/settingvalues.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>

namespace kavro {

namespace {

QString percent(std::uint32_t value)
{
    return QString::asprintf("%d%%", static_cast<int>(value));
}

} // namespace

KVRSettingForAuxViewController::KVRSettingForAuxViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    m_memeryRatioSlider = new QSlider(Qt::Horizontal, this);
    m_memeryRatioSlider->setObjectName(QStringLiteral("memeryRatioSlider"));
    m_memeryRatioSlider->setRange(0, CardShareSliderMax);
    m_memeryRatioSlider->setPageStep(1);
    m_memeryRatioSlider->setTickPosition(QSlider::TicksBelow);
    m_memeryRatioSlider->setTickInterval(1);
    m_alwaysField = new QLabel(this);
    m_alwaysField->setObjectName(QStringLiteral("alwaysField"));
    m_motionField = new QLabel(this);
    m_motionField->setObjectName(QStringLiteral("motionField"));
    //% "The camera applies a new share only after the card is formatted."
    m_sdcardCapacityWarningLabel = new QLabel(qtTrId("msg.memconfig_warning"), this);
    m_sdcardCapacityWarningLabel->setObjectName(QStringLiteral("sdcardCapacityWarningLabel"));
    m_sdcardCapacityWarningLabel->setWordWrap(true);
    m_sdcardCapacityWarningLabel->setStyleSheet(QStringLiteral("color: #c03030"));
    m_sdcardCapacityWarningLabel->hide();
    connect(m_memeryRatioSlider, &QSlider::valueChanged, this,
            &KVRSettingForAuxViewController::sliderMoved);

    auto* share = new QGridLayout;
    //% "Continuous"
    share->addWidget(new QLabel(qtTrId("setting.aux.always")), 0, 0);
    share->addWidget(m_memeryRatioSlider, 0, 1);
    //% "Motion"
    share->addWidget(new QLabel(qtTrId("setting.aux.motion")), 0, 2, Qt::AlignRight);
    share->addWidget(m_alwaysField, 1, 0);
    share->addWidget(m_motionField, 1, 2, Qt::AlignRight);
    share->addWidget(m_sdcardCapacityWarningLabel, 2, 0, 1, 3);
    share->setColumnStretch(1, 1);

    auto* grid = new QGridLayout(this);
    int row = 0;
    //% "Card share"
    grid->addWidget(groupBox(qtTrId("setting.aux.sdcard_capacity"), share), row++, 0, 1, 2);
    const auto add = [&grid, &row](const QString& title, QWidget* control, int column) {
        grid->addWidget(groupBox(title, control), row, column);
        if (column == 1)
            ++row;
    };
    //% "Night exposure"
    add(qtTrId("setting.aux.night_ae_setting"), segments("DayTime"), 0);
    //% "Screen off after"
    add(qtTrId("setting.aux.lcd_auto_off"), segments("lcd_autopoweroff"), 1);
    //% "Mains frequency"
    add(qtTrId("setting.aux.country_ac_power_setting"), segments("Gamma"), 0);
    //% "Screen brightness"
    add(qtTrId("setting.aux.lcd_brightness"), segments("lcd_brightness"), 1);
    //% "Dimmed screen at night"
    add(qtTrId("setting.aux.lcd_brightness_night"), segments("lcd_brightness_night"), 0);
    //% "Rear camera in parking mode"
    add(qtTrId("setting.aux.parking_rear_setting"), segments("parking_rear_off"), 1);
    //% "Screen protection"
    add(qtTrId("setting.aux.lcd_screensaver"), segments("lcd_screensaver"), 0);
    //% "Parking monitor notice"
    add(qtTrId("setting.aux.parking_monitor_notice"), segments("parking_alarm"), 1);
    //% "Length of one recording"
    add(qtTrId("setting.aux.recording_length"), segments("always_mode_recording_time"), 0);
    //% "Small picture position"
    add(qtTrId("setting.aux.pip_position"), matrix("pip_position", 2, 2), 1);
    //% "Format reminder"
    grid->addWidget(groupBox(qtTrId("setting.aux.auto_format_alarm"), segments("autoFormatAlarm")),
                    row++, 0, 1, 2);
    grid->setRowStretch(row, 1);
}

void KVRSettingForAuxViewController::displayFileData()
{
    KVRSettingControllerDelegate::displayFileData();
    const _FILEDATA* record = fileData();
    // The fields show the stored shares even between slider steps; saving rounds them to it.
    m_displaying = true;
    m_memeryRatioSlider->setValue(sliderPositionForAlwaysRatio(record->sd_mem_always_ratio));
    m_displaying = false;
    m_alwaysField->setText(percent(record->sd_mem_always_ratio));
    m_motionField->setText(percent(record->sd_mem_motion_ratio));
}

void KVRSettingForAuxViewController::sliderMoved(int position)
{
    if (m_displaying)
        return;
    CardShare share = cardShareForSliderPosition(position);
    m_alwaysField->setText(percent(share.always));
    m_motionField->setText(percent(share.motion));
    m_sdcardCapacityWarningLabel->show();
}

std::optional<QString> KVRSettingForAuxViewController::validateUserInput()
{
    if (auto message = KVRValidator::validateCardShare(m_memeryRatioSlider->value())) {
        focus(m_memeryRatioSlider);
        return qtTrId(message->key.toLatin1().constData());
    }
    return std::nullopt;
}

void KVRSettingForAuxViewController::collectFileData()
{
    KVRSettingControllerDelegate::collectFileData();
    CardShare share = cardShareForSliderPosition(m_memeryRatioSlider->value());
    fileData()->sd_mem_always_ratio = share.always;
    fileData()->sd_mem_motion_ratio = share.motion;
}

} // namespace kavro
