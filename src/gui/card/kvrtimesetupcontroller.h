#pragma once

#include <QDateTime>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

class QCalendarWidget;
class QCheckBox;
class QLabel;
class QPushButton;
class QTimeEdit;

namespace kavro {

class KVRDiskSource;
class TKClockPicker;

// The clock window: the user picks a day and a time of day, and the window writes them into the
// camera's timeset.cfg, on the card that already holds one or wherever the user chooses.
class KVRTimeSetupController : public QWidget
{
    Q_OBJECT

public:
    // Builds the window (not shown) and notes the card's timeset.cfg, if a card holds one.
    explicit KVRTimeSetupController(std::shared_ptr<KVRDiskSource> disks,
                                    QWidget* parent = nullptr);
    ~KVRTimeSetupController() override;

    // Shows the window centred on its screen with today's date and the current time.
    void windowDidLoad();

    void onInitDIalog();
    void loadSettingFile();
    void daySelectedFromPicker();
    void timeSelectedFromClickTimePicker();
    void timeSelectedFromPicker();
    void nowDayChecked();
    void onSaveConfigFile();
    void onCloseCmd();

    // Empty when no card held timeset.cfg as the window opened.
    const QString& settingFilePath() const { return m_SettingFilePath; }
    const QDateTime& selectedDate() const { return selectedDate_; }
    const QDateTime& selectedTime() const { return selectedTime_; }

private:
    void awakeFromNib();
    void showSelectedDate(bool alsoToday);
    void openSavePanel();
    void writeConfigFile(const QString& path);
    void didEndAlert();

    std::shared_ptr<KVRDiskSource> m_disks;
    QString m_SettingFilePath;
    QDateTime selectedDate_;
    QDateTime selectedTime_;
    QCalendarWidget* datePicker = nullptr;
    QCheckBox* nowDaySettingChk = nullptr;
    QTimeEdit* timePicker = nullptr;
    TKClockPicker* clockTimePicker = nullptr;
    QLabel* dateField = nullptr;
    QPushButton* saveButton = nullptr;
    QPushButton* cancelButton = nullptr;
};

} // namespace kavro
