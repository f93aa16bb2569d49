#pragma once

#include <QLineEdit>

namespace kavro {

// The car-number field: when editing ends it keeps only ASCII letters and digits, eight at
// most, since the camera's overlay font has nothing else.
class KVRCarNumberTextField : public QLineEdit
{
    Q_OBJECT

public:
    explicit KVRCarNumberTextField(QWidget* parent = nullptr);

    void textDidEndEditing();

protected:
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace kavro
