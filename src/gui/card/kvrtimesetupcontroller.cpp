#include "card/kvrtimesetupcontroller.h"

#include "card/alertsheet.h"
#include "card/cardrules.h"
#include "card/filepanel.h"
#include "card/kvrdisksource.h"
#include "card/timesetfile.h"
#include "widgets/tkclockpicker.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTimeEdit>
#include <QTimer>

namespace kavro {

namespace {

Q_LOGGING_CATEGORY(lcClockWindow, "kavro.card.clock", QtInfoMsg)

// The check box acts as a button: it shows its tick this long after a click.
constexpr int TodayTickMs = 200;

} // namespace

KVRTimeSetupController::KVRTimeSetupController(std::shared_ptr<KVRDiskSource> disks,
                                               QWidget* parent)
    : QWidget(parent, Qt::Window), m_disks(std::move(disks))
{
    awakeFromNib();
    onInitDIalog();
}

KVRTimeSetupController::~KVRTimeSetupController() = default;

void KVRTimeSetupController::awakeFromNib()
{
    setObjectName(QStringLiteral("timeSetupWindow"));
    //% "Camera Clock"
    setWindowTitle(qtTrId("time.window_title"));

    datePicker = new QCalendarWidget(this);
    datePicker->setObjectName(QStringLiteral("datePicker"));
    datePicker->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    // The camera's text holds four-digit years.
    datePicker->setDateRange(QDate(2000, 1, 1), QDate(9999, 12, 31));
    connect(datePicker, &QCalendarWidget::selectionChanged, this,
            &KVRTimeSetupController::daySelectedFromPicker);

    dateField = new QLabel(this);
    dateField->setObjectName(QStringLiteral("dateField"));
    dateField->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = dateField->font();
    bold.setBold(true);
    dateField->setFont(bold);

    nowDaySettingChk = new QCheckBox(this);
    nowDaySettingChk->setObjectName(QStringLiteral("nowDaySettingChk"));
    connect(nowDaySettingChk, &QCheckBox::clicked, this, &KVRTimeSetupController::nowDayChecked);

    timePicker = new QTimeEdit(this);
    timePicker->setObjectName(QStringLiteral("timePicker"));
    timePicker->setDisplayFormat(QStringLiteral("HH:mm:ss"));
    timePicker->setWrapping(true);
    connect(timePicker, &QTimeEdit::timeChanged, this,
            &KVRTimeSetupController::timeSelectedFromPicker);

    clockTimePicker = new TKClockPicker(this);
    clockTimePicker->setObjectName(QStringLiteral("clockTimePicker"));
    connect(clockTimePicker, &TKClockPicker::timeChanged, this,
            &KVRTimeSetupController::timeSelectedFromClickTimePicker);

    //% "Cancel"
    cancelButton = new QPushButton(qtTrId("cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    cancelButton->setAutoDefault(false);
    connect(cancelButton, &QPushButton::clicked, this, &KVRTimeSetupController::onCloseCmd);
    //% "Save"
    saveButton = new QPushButton(qtTrId("save"), this);
    saveButton->setObjectName(QStringLiteral("saveButton"));
    saveButton->setAutoDefault(false);
    connect(saveButton, &QPushButton::clicked, this, &KVRTimeSetupController::onSaveConfigFile);

    auto* layout = new QGridLayout(this);
    layout->addWidget(datePicker, 0, 0);
    layout->addWidget(clockTimePicker, 0, 1);
    layout->addWidget(dateField, 1, 0);
    layout->addWidget(timePicker, 1, 1);
    layout->addWidget(nowDaySettingChk, 2, 0);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cancelButton);
    buttons->addWidget(saveButton);
    layout->addLayout(buttons, 3, 0, 1, 2);
    layout->setColumnStretch(0, 1);

    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    connect(save, &QShortcut::activated, this, &KVRTimeSetupController::onSaveConfigFile);
    auto* close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &KVRTimeSetupController::onCloseCmd);
}

void KVRTimeSetupController::windowDidLoad()
{
    show();
    if (QScreen* screen = this->screen()) {
        QRect visible = screen->availableGeometry();
        QRect frame = frameGeometry();
        move(visible.topLeft() + QPoint((visible.width() - frame.width()) / 2,
                                        (visible.height() - frame.height()) / 2));
    }
    // Opened from a menu key, the keys that follow are meant for this window.
    raise();
    activateWindow();
}

void KVRTimeSetupController::onInitDIalog()
{
    loadSettingFile();
    // The file holds whole seconds; the pickers show what will be written.
    const QDateTime now = QDateTime::currentDateTime();
    const QTime second = now.time();
    selectedDate_ = selectedTime_ =
        QDateTime(now.date(), QTime(second.hour(), second.minute(), second.second()));
    datePicker->setSelectedDate(selectedDate_.date());
    const QSignalBlocker quiet(timePicker);
    timePicker->setTime(selectedTime_.time());
    clockTimePicker->setTime(selectedTime_.time());
    showSelectedDate(true);
}

void KVRTimeSetupController::showSelectedDate(bool alsoToday)
{
    const QLocale locale;
    dateField->setText(locale.toString(selectedDate_.date(), QLocale::LongFormat));
    // The check box names the day it would pick, so only a new "today" changes it.
    if (alsoToday)
        //% "Today"
        nowDaySettingChk->setText(QStringLiteral("%1(%2)").arg(
            qtTrId("today"), locale.toString(selectedDate_.date(), QLocale::ShortFormat)));
}

void KVRTimeSetupController::loadSettingFile()
{
    // Once, as the window opens: a card put in later is reached through the save panel.
    m_SettingFilePath.clear();
    if (!m_disks)
        return;
    const QString name = QString::fromLatin1(TimeSetFileName);
    if (std::optional<QUrl> volume = m_disks->usbVolumeContainingFile(name))
        m_SettingFilePath = QDir(volume->toLocalFile()).filePath(name);
}

void KVRTimeSetupController::daySelectedFromPicker()
{
    selectedDate_ = QDateTime(datePicker->selectedDate(), selectedDate_.time());
    showSelectedDate(false);
}

void KVRTimeSetupController::timeSelectedFromClickTimePicker()
{
    selectedTime_ = QDateTime(selectedTime_.date(), clockTimePicker->time());
    // Set by the program, the field's change is not the user's.
    const QSignalBlocker quiet(timePicker);
    timePicker->setTime(selectedTime_.time());
}

void KVRTimeSetupController::timeSelectedFromPicker()
{
    selectedTime_ = QDateTime(selectedTime_.date(), timePicker->time());
    clockTimePicker->setTime(selectedTime_.time());
}

void KVRTimeSetupController::nowDayChecked()
{
    selectedDate_ = QDateTime::currentDateTime();
    showSelectedDate(true);
    datePicker->setSelectedDate(selectedDate_.date());
    QTimer::singleShot(TodayTickMs, nowDaySettingChk,
                       [box = nowDaySettingChk] { box->setChecked(false); });
}

void KVRTimeSetupController::openSavePanel()
{
    QFileDialog* panel = openFilePanel(this, QFileDialog::AcceptSave, QString(),
                                       QStringLiteral("cfg"), QString::fromLatin1(TimeSetFileName));
    // A cancelled panel writes nothing and says nothing.
    connect(panel, &QFileDialog::fileSelected, this, &KVRTimeSetupController::writeConfigFile);
}

void KVRTimeSetupController::onSaveConfigFile()
{
    if (m_SettingFilePath.isEmpty())
        openSavePanel();
    else
        writeConfigFile(m_SettingFilePath);
}

void KVRTimeSetupController::writeConfigFile(const QString& path)
{
    QString error = QStringLiteral("no valid date and time chosen");
    const std::optional<QByteArray> text = timeSetText(selectedDate_, selectedTime_);
    // The alert below comes even when the write failed; the reason goes to the log.
    if (!text || !doWriteConfigFile(path, *text, &error))
        qCWarning(lcClockWindow, "clock file not written to %s: %s", qUtf8Printable(path),
                  qUtf8Printable(error));
    //% "The clock file was saved. Put the card into the camera to set its clock."
    showAlertSheet(this, QStringLiteral("KAVRO"), qtTrId("time.filesave"), this,
                   [this] { didEndAlert(); });
}

void KVRTimeSetupController::didEndAlert()
{
    close();
}

void KVRTimeSetupController::onCloseCmd()
{
    close();
}

} // namespace kavro
