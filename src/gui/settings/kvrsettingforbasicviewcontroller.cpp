#include "kvrsettingforbasicviewcontroller.h"

#include "card/alertsheet.h"
#include "common/preferences.h"
#include "kvrcarnumbertextfield.h"
#include "kvrsegmentedcontrol.h"
#include "settings/kvrvalidator.h"
#include "settings/settingvalues.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace kavro {

namespace {

QString thresholdText(std::int32_t hundredths)
{
    return QString::asprintf("%.2f", hundredths / 100.0);
}

std::int32_t thresholdValue(const QLineEdit* field)
{
    return thresholdHundredths(KVRValidator::scanNumber(field->text()).value_or(0.0));
}

QString messageText(const ValidationMessage& message)
{
    QString text = qtTrId(message.key.toLatin1().constData());
    for (const QVariant& argument : message.args)
        text = text.arg(argument.toString());
    return text;
}

} // namespace

KVRSettingForBasicViewController::KVRSettingForBasicViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    //% "Impact detection"
    m_gsensorEnableChk = checkBox("g_sensor_enable", qtTrId("setting.basic.enable_gsensor"));
    connect(m_gsensorEnableChk, &QCheckBox::clicked, this, [this] { changeGsensorEnable(); });
    m_drivingSeg = sensitivitySegments();
    m_drivingSeg->setObjectName(QStringLiteral("gsensorSensitivityDrivingSeg"));
    m_drivingFields = thresholdFields(QStringLiteral("Driving"));
    m_parkingSeg = sensitivitySegments();
    m_parkingSeg->setObjectName(QStringLiteral("gsensorSensitivityParkingSeg"));
    m_parkingFields = thresholdFields(QStringLiteral("Parking"));
    m_carNumberField = new KVRCarNumberTextField(this);
    m_carNumberField->setObjectName(QStringLiteral("carNumberField"));
    m_powerVoltageCombo = list("sd_mem_always_reserved");
    connect(m_powerVoltageCombo, &QComboBox::activated, this,
            &KVRSettingForBasicViewController::powerVoltageSelected);
    m_powerTimeCombo = list("sd_mem_motion_reserved");
    //% "Use external power"
    m_useExternalPowerChk =
        checkBox("sd_mem_event_reserved", qtTrId("setting.basic.use_external_power"));
    connect(m_useExternalPowerChk, &QCheckBox::clicked, this,
            [this] { clickUseExternalPowerChk(); });
    //% "Use the external rear camera"
    m_rearCameraChecks[0] = new QCheckBox(qtTrId("setting.basic.external_rear_camera_use"));
    //% "Its LED lights on events"
    m_rearCameraChecks[1] =
        new QCheckBox(qtTrId("setting.basic.external_rear_camera_led_use_event"));
    //% "Its LED lights on motion"
    m_rearCameraChecks[2] =
        new QCheckBox(qtTrId("setting.basic.external_rear_camera_led_use_motion"));
    m_rearCameraChecks[0]->setObjectName(QStringLiteral("externalRearCameraUse"));
    m_rearCameraChecks[1]->setObjectName(QStringLiteral("externalRearCameraUseEvent"));
    m_rearCameraChecks[2]->setObjectName(QStringLiteral("externalRearCameraUseMotion"));
    connect(m_rearCameraChecks[0], &QCheckBox::clicked, this,
            [this] { clickExternalRearCameraUseCheck(); });

    const auto thresholdRow = [](KVRSegmentedControl* segments, const ThresholdFields& fields) {
        auto* column = new QVBoxLayout;
        column->addWidget(segments);
        auto* row = new QHBoxLayout;
        for (int axis = 0; axis < 3; ++axis) {
            row->addWidget(new QLabel(QString(QChar(u'X' + axis))));
            row->addWidget(fields[static_cast<std::size_t>(axis)]);
            row->addSpacing(16);
        }
        row->addStretch(1);
        column->addLayout(row);
        return column;
    };
    auto* others = new QVBoxLayout;
    //% "Front security LED"
    others->addWidget(checkBox("ledoff", qtTrId("setting.basic.enable_front_security_led")));
    //% "Rear security LED"
    others->addWidget(checkBox("ledoff_rear", qtTrId("setting.basic.enable_rear_security_led")));
    auto* carNumber = new QHBoxLayout;
    //% "Car number"
    carNumber->addWidget(new QLabel(qtTrId("setting.basic.car_number_input")));
    carNumber->addWidget(m_carNumberField, 1);
    others->addLayout(carNumber);

    auto* power = new QFormLayout;
    //% "Cut-off voltage"
    power->addRow(qtTrId("setting.basic.set_voltage"), m_powerVoltageCombo);
    //% "Timer"
    power->addRow(qtTrId("setting.basic.set_timer"), m_powerTimeCombo);
    power->addRow(m_useExternalPowerChk);
    //% "The camera stops recording in parking mode below this battery voltage or after this time."
    auto* guide = new QLabel(qtTrId("setting.basic.power_guide"));
    guide->setWordWrap(true);
    power->addRow(guide);

    auto* rearCamera = new QVBoxLayout;
    for (QCheckBox* check : m_rearCameraChecks)
        rearCamera->addWidget(check);

    auto* grid = new QGridLayout(this);
    //% "Automatic parking mode after"
    grid->addWidget(groupBox(qtTrId("setting.basic.auto_parking_waiting_time"),
                             segments("always_mode_timeout")),
                    0, 0, 1, 2);
    auto* impact = new QVBoxLayout;
    impact->addWidget(m_gsensorEnableChk);
    //% "Driving impact sensitivity"
    impact->addWidget(groupBox(qtTrId("setting.basic.driving_impact_sensitivity"),
                               thresholdRow(m_drivingSeg, m_drivingFields)));
    //% "Parking impact sensitivity"
    impact->addWidget(groupBox(qtTrId("setting.basic.parking_impact_sensitivity"),
                               thresholdRow(m_parkingSeg, m_parkingFields)));
    grid->addLayout(impact, 1, 0, 1, 2);
    //% "Others"
    grid->addWidget(groupBox(qtTrId("setting.basic.others"), others), 2, 0);
    //% "Cable voltage loss"
    grid->addWidget(groupBox(qtTrId("setting.basic.cable_voltage_loss"), list("CableVoltCorr")), 3,
                    0);
    //% "Cut-off voltage setting"
    grid->addWidget(groupBox(qtTrId("setting.basic.cutoff_voltage_setting"), power), 2, 1, 2, 1);
    //% "External rear camera"
    grid->addWidget(groupBox(qtTrId("setting.basic.external_rear_camera_settings"), rearCamera), 4,
                    0, 1, 2);
    grid->setRowStretch(5, 1);

    connect(m_drivingSeg, &KVRSegmentedControl::segmentClicked, this,
            [this] { updateGsensorThreshold(); });
    connect(m_parkingSeg, &KVRSegmentedControl::segmentClicked, this,
            [this] { updateGsensorThreshold(); });
}

KVRSegmentedControl* KVRSettingForBasicViewController::sensitivitySegments()
{
    auto* control = new KVRSegmentedControl(this);
    const QString insensitive = qtTrId("insensitive");
    const QString sensitive = qtTrId("sensitive");
    //% "Customise"
    const QString customize = qtTrId("setting.basic.customize");
    control->setLabels({QStringLiteral("1(%1)").arg(insensitive), QStringLiteral("2"),
                        QStringLiteral("3"), QStringLiteral("4"),
                        QStringLiteral("5(%1)").arg(sensitive), customize});
    return control;
}

KVRSettingForBasicViewController::ThresholdFields
KVRSettingForBasicViewController::thresholdFields(const QString& prefix)
{
    ThresholdFields fields{};
    for (int axis = 0; axis < 3; ++axis) {
        auto* field = new QLineEdit(this);
        field->setObjectName(QStringLiteral("gsensorSensitivityThreshold%1%2Field")
                                 .arg(QChar(u'X' + axis))
                                 .arg(prefix));
        field->setMaximumWidth(60);
        fields[static_cast<std::size_t>(axis)] = field;
    }
    return fields;
}

void KVRSettingForBasicViewController::displayFileData()
{
    _FILEDATA* record = fileData();
    // Files of older cameras hold 0; the page stores the default 0.3 V in its place.
    record->CableVoltCorr = normalizedCableVoltCorr(record->CableVoltCorr);
    KVRSettingControllerDelegate::displayFileData();

    m_drivingSeg->setSelectedSegment(findDrivingGsensorThresholdIndexByX(
        record->gsen_x_threshold, record->gsen_y_threshold, record->gsen_z_threshold));
    m_parkingSeg->setSelectedSegment(findParkingGsensorThresholdIndexByX(
        record->parkmode_x_threshold, record->parkmode_y_threshold, record->parkmode_z_threshold));
    const std::int32_t driving[] = {record->gsen_x_threshold, record->gsen_y_threshold,
                                    record->gsen_z_threshold};
    const std::int32_t parking[] = {record->parkmode_x_threshold, record->parkmode_y_threshold,
                                    record->parkmode_z_threshold};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        m_drivingFields[axis]->setText(thresholdText(driving[axis]));
        m_parkingFields[axis]->setText(thresholdText(parking[axis]));
    }
    changeGsensorEnable();

    m_carNumberField->setText(plateNumber(*record));
    updatePowerUI();
    for (std::size_t bit = 0; bit < m_rearCameraChecks.size(); ++bit)
        m_rearCameraChecks[bit]->setChecked(
            GetRearCameraSetting(record->external_rear_camera, static_cast<int>(bit)) == 1);
    changeExternalRearCemeraSettings();
}

std::optional<QString> KVRSettingForBasicViewController::validateUserInput()
{
    for (auto [segments, fields] :
         {std::pair{m_drivingSeg, &m_drivingFields}, std::pair{m_parkingSeg, &m_parkingFields}}) {
        if (segments->selectedSegment() != CustomThresholdIndex)
            continue;
        for (QLineEdit* field : *fields) {
            if (auto message = KVRValidator::validateGsensorThreshold(field->text())) {
                focus(field);
                return messageText(*message);
            }
        }
    }
    return std::nullopt;
}

void KVRSettingForBasicViewController::collectFileData()
{
    KVRSettingControllerDelegate::collectFileData();
    _FILEDATA* record = fileData();
    record->gsen_x_threshold = thresholdValue(m_drivingFields[0]);
    record->gsen_y_threshold = thresholdValue(m_drivingFields[1]);
    record->gsen_z_threshold = thresholdValue(m_drivingFields[2]);
    record->parkmode_x_threshold = thresholdValue(m_parkingFields[0]);
    record->parkmode_y_threshold = thresholdValue(m_parkingFields[1]);
    record->parkmode_z_threshold = thresholdValue(m_parkingFields[2]);
    // Saving with Ctrl+S does not end the field's editing; filter as leaving it would.
    m_carNumberField->textDidEndEditing();
    setPlateNumber(*record, m_carNumberField->text());
    for (std::size_t bit = 0; bit < m_rearCameraChecks.size(); ++bit)
        record->external_rear_camera =
            SetRearCameraSetting(record->external_rear_camera, static_cast<int>(bit),
                                 m_rearCameraChecks[bit]->isChecked() ? 1 : 0);
    // A card reset on this computer keeps the camera bits chosen last.
    auto preferences = openPreferences();
    preferences->setValue(PrefExternalRearCamera, record->external_rear_camera);
    preferences->sync();
}

void KVRSettingForBasicViewController::changeGsensorEnable()
{
    const bool enabled = m_gsensorEnableChk->isChecked();
    m_drivingSeg->setEnabled(enabled);
    m_parkingSeg->setEnabled(enabled);
    // Preset rows stay read-only while impact detection is on: only "customize" is typed.
    updateGsensorThreshold();
}

void KVRSettingForBasicViewController::updateGsensorThreshold()
{
    const bool enabled = m_gsensorEnableChk->isChecked();
    for (auto [segments, fields, driving] : {std::tuple{m_drivingSeg, &m_drivingFields, true},
                                             std::tuple{m_parkingSeg, &m_parkingFields, false}}) {
        int index = segments->selectedSegment();
        std::optional<GsensorThreshold> preset =
            driving ? drivingThresholdPreset(index) : parkingThresholdPreset(index);
        if (preset) {
            (*fields)[0]->setText(thresholdText(preset->x));
            (*fields)[1]->setText(thresholdText(preset->y));
            (*fields)[2]->setText(thresholdText(preset->z));
        }
        for (QLineEdit* field : *fields)
            field->setEnabled(enabled && index == CustomThresholdIndex);
    }
}

void KVRSettingForBasicViewController::updatePowerUI()
{
    const bool external = fileData()->sd_mem_event_reserved == 1;
    m_powerVoltageCombo->setEnabled(!external);
    m_powerTimeCombo->setEnabled(!external);
    m_useExternalPowerChk->setChecked(external);
}

void KVRSettingForBasicViewController::powerVoltageSelected(int index)
{
    if (index == ExternalPowerVoltageIndex)
        //% "With external power the camera cuts off at 10 V. Check the power unit."
        showAlert(window(), QStringLiteral("Warning"), qtTrId("msg.use_external_power_10v"));
}

void KVRSettingForBasicViewController::clickUseExternalPowerChk()
{
    fileData()->sd_mem_event_reserved = m_useExternalPowerChk->isChecked() ? 1 : 0;
    updatePowerUI();
}

void KVRSettingForBasicViewController::clickExternalRearCameraUseCheck()
{
    _FILEDATA* record = fileData();
    record->external_rear_camera = SetRearCameraSetting(
        record->external_rear_camera, RearCameraUseBit, m_rearCameraChecks[0]->isChecked() ? 1 : 0);
    changeExternalRearCemeraSettings();
}

void KVRSettingForBasicViewController::changeExternalRearCemeraSettings()
{
    // The LED boxes keep their ticks while the camera is off.
    const bool used = GetRearCameraSetting(fileData()->external_rear_camera, RearCameraUseBit) == 1;
    m_rearCameraChecks[1]->setEnabled(used);
    m_rearCameraChecks[2]->setEnabled(used);
}

} // namespace kavro
