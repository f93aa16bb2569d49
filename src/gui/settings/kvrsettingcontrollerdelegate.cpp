#include "kvrsettingcontrollerdelegate.h"

#include "kvrradiomatrix.h"
#include "kvrsegmentedcontrol.h"
#include "kvrsettingcontroller.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QTimer>
#include <QVBoxLayout>

namespace kavro {

KVRSettingControllerDelegate::KVRSettingControllerDelegate(QWidget* parent) : QWidget(parent) {}

void KVRSettingControllerDelegate::setFileData(_FILEDATA* fileData)
{
    m_fileData = fileData;
    if (m_fileData)
        displayFileData();
}

bool KVRSettingControllerDelegate::populate()
{
    if (!m_fileData || validateUserInput())
        return false;
    collectFileData();
    return true;
}

std::optional<QString> KVRSettingControllerDelegate::validateUserInput()
{
    return std::nullopt;
}

void KVRSettingControllerDelegate::displayFileData()
{
    for (const Binding& binding : m_bindings)
        binding.select(choiceIndexInRecord(*m_fileData, *binding.field));
}

void KVRSettingControllerDelegate::collectFileData()
{
    for (const Binding& binding : m_bindings)
        storeChoiceIndex(*m_fileData, *binding.field, binding.index());
}

QString KVRSettingControllerDelegate::labelText(const ChoiceLabel& label)
{
    switch (label.kind) {
    case ChoiceLabel::None:
        return QString();
    case ChoiceLabel::Literal:
        return QString::fromUtf8(label.text);
    case ChoiceLabel::Key:
        return qtTrId(label.text);
    case ChoiceLabel::KeyWithNumber:
        return qtTrId(label.text).arg(label.number);
    case ChoiceLabel::LiteralWithKey:
        return QString::fromUtf8(label.text).arg(qtTrId(label.argument));
    }
    return QString();
}

QStringList KVRSettingControllerDelegate::labelTexts(const SettingField& field)
{
    QStringList texts;
    for (const SettingChoice& choice : field.choices)
        texts.append(labelText(choice.label));
    return texts;
}

void KVRSettingControllerDelegate::fillList(QComboBox* list, const QStringList& labels)
{
    list->clear();
    list->addItems(labels);
}

const SettingField& KVRSettingControllerDelegate::field(const char* fieldName) const
{
    const SettingField* found = findSettingField(fieldName);
    Q_ASSERT_X(found, "KVRSettingControllerDelegate", fieldName);
    return *found;
}

KVRSegmentedControl* KVRSettingControllerDelegate::segments(const char* fieldName)
{
    const SettingField& setting = field(fieldName);
    auto* control = new KVRSegmentedControl(this);
    control->setObjectName(QString::fromLatin1(fieldName));
    control->setLabels(labelTexts(setting));
    m_bindings.append({&setting, [control] { return control->selectedSegment(); },
                       [control](int index) { control->setSelectedSegment(index); }});
    return control;
}

QComboBox* KVRSettingControllerDelegate::list(const char* fieldName)
{
    const SettingField& setting = field(fieldName);
    auto* control = new QComboBox(this);
    control->setObjectName(QString::fromLatin1(fieldName));
    fillList(control, labelTexts(setting));
    m_bindings.append({&setting, [control] { return control->currentIndex(); },
                       [control](int index) { control->setCurrentIndex(index); }});
    return control;
}

QCheckBox* KVRSettingControllerDelegate::checkBox(const char* fieldName, const QString& title)
{
    const SettingField& setting = field(fieldName);
    auto* control = new QCheckBox(title, this);
    control->setObjectName(QString::fromLatin1(fieldName));
    m_bindings.append({&setting, [control] { return control->isChecked() ? 1 : 0; },
                       [control](int index) { control->setChecked(index == 1); }});
    return control;
}

KVRRadioMatrix* KVRSettingControllerDelegate::matrix(const char* fieldName, int rows, int columns)
{
    const SettingField& setting = field(fieldName);
    auto* control = new KVRRadioMatrix(rows, columns, this);
    control->setObjectName(QString::fromLatin1(fieldName));
    control->setCellTitles(labelTexts(setting));
    m_bindings.append({&setting,
                       [control] {
                           std::optional<MatrixCell> cell = control->selectedCell();
                           return cell ? cell->row * control->numberOfColumns() + cell->column : -1;
                       },
                       [control](int index) {
                           int columns = control->numberOfColumns();
                           if (index < 0 || index >= control->numberOfRows() * columns)
                               control->deselectAllCells();
                           else
                               control->selectCell({index / columns, index % columns});
                       }});
    return control;
}

QGroupBox* KVRSettingControllerDelegate::groupBox(const QString& title, QWidget* content)
{
    auto* layout = new QVBoxLayout;
    layout->addWidget(content);
    return groupBox(title, layout);
}

QGroupBox* KVRSettingControllerDelegate::groupBox(const QString& title, QLayout* content)
{
    auto* box = new QGroupBox(title);
    box->setLayout(content);
    return box;
}

void KVRSettingControllerDelegate::focus(QWidget* control)
{
    QTimer::singleShot(0, control, [control] { control->setFocus(Qt::OtherFocusReason); });
}

} // namespace kavro
