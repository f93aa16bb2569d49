#pragma once

#include "kvrsettingcontroller.h"
#include "settings/filedata.h"
#include "settings/settingfields.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLayout;

namespace kavro {

class KVRRadioMatrix;
class KVRSegmentedControl;

// A page of the settings window. It shows the window's one record in its controls and, when
// the user leaves it or saves, checks the input and copies the controls back. The controls of
// one-choice fields are made from the field table and shown and collected through it; a page adds
// its own rules and quirks in displayFileData and collectFileData.
class KVRSettingControllerDelegate : public QWidget
{
    Q_OBJECT

public:
    explicit KVRSettingControllerDelegate(QWidget* parent = nullptr);

    // Remembers the record (not owned) and shows it at once.
    void setFileData(_FILEDATA* fileData);
    _FILEDATA* fileData() const { return m_fileData; }

    // Checks the input; when it is acceptable copies the controls into the record and returns
    // true, else changes nothing and returns false.
    bool populate();
    // The message of the first problem on the page (the page also puts the focus on its field),
    // or none.
    virtual std::optional<QString> validateUserInput();
    void setMainController(KVRSettingController* controller) { m_mainController = controller; }
    KVRSettingController* mainController() const { return m_mainController; }
    // Called when the page is left after a successful populate.
    virtual void onHide() {}

    // The text of a choice in the user's language.
    static QString labelText(const ChoiceLabel& label);
    static QStringList labelTexts(const SettingField& field);
    // The label filler of a list: all items removed, then the labels in order.
    static void fillList(QComboBox* list, const QStringList& labels);

protected:
    virtual void displayFileData();
    virtual void collectFileData();

    // Controls of table fields; shown and collected with the record by the base class.
    KVRSegmentedControl* segments(const char* fieldName);
    QComboBox* list(const char* fieldName);
    QCheckBox* checkBox(const char* fieldName, const QString& title);
    KVRRadioMatrix* matrix(const char* fieldName, int rows, int columns);

    static QGroupBox* groupBox(const QString& title, QWidget* content);
    static QGroupBox* groupBox(const QString& title, QLayout* content);
    // Makes the control the window's focus on the next turn of the event loop.
    static void focus(QWidget* control);

private:
    struct Binding
    {
        const SettingField* field;
        std::function<int()> index;
        std::function<void(int)> select;
    };
    const SettingField& field(const char* fieldName) const;

    _FILEDATA* m_fileData = nullptr;
    QPointer<KVRSettingController> m_mainController;
    QList<Binding> m_bindings;
};

} // namespace kavro
