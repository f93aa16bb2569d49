#include "kvrcarnumbertextfield.h"

#include "settings/kvrvalidator.h"

#include <QKeyEvent>

namespace kavro {

KVRCarNumberTextField::KVRCarNumberTextField(QWidget* parent) : QLineEdit(parent) {}

void KVRCarNumberTextField::textDidEndEditing()
{
    QString kept = KVRValidator::filterCarNumber(text());
    if (kept != text())
        setText(kept);
}

// Filtered before the line edit's own end of editing, so editingFinished sees the kept text.
void KVRCarNumberTextField::focusOutEvent(QFocusEvent* event)
{
    textDidEndEditing();
    QLineEdit::focusOutEvent(event);
}

void KVRCarNumberTextField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        textDidEndEditing();
    QLineEdit::keyPressEvent(event);
}

} // namespace kavro
