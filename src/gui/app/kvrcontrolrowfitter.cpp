#include "kvrcontrolrowfitter.h"

#include <QBoxLayout>
#include <QEvent>
#include <QWidget>

namespace kavro {

KVRControlRowFitter::KVRControlRowFitter(QWidget* box, QBoxLayout* row,
                                         QList<QWidget*> leastNeededFirst)
    : QObject(box), m_box(box), m_row(row)
{
    for (QWidget* widget : leastNeededFirst)
        m_optional.append(widget);
    box->installEventFilter(this);
}

bool KVRControlRowFitter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_box && (event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                             event->type() == QEvent::LayoutRequest))
        fit();
    return QObject::eventFilter(watched, event);
}

void KVRControlRowFitter::fit()
{
    if (m_fitting)
        return;
    m_fitting = true;
    // What the row needs with every optional control shown; hidden ones are not in its minimum.
    int needed = m_row->minimumSize().width();
    for (const QPointer<QWidget>& widget : m_optional) {
        if (widget && widget->isHidden())
            needed += widget->sizeHint().width() + m_row->spacing();
    }
    const QMargins margins = m_box->contentsMargins() + m_box->layout()->contentsMargins();
    const int room = m_box->width() - margins.left() - margins.right();
    for (const QPointer<QWidget>& widget : m_optional) {
        if (!widget)
            continue;
        const bool fits = needed <= room;
        widget->setVisible(fits);
        if (!fits)
            needed -= widget->sizeHint().width() + m_row->spacing();
    }
    m_fitting = false;
}

} // namespace kavro
