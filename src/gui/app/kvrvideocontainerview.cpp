#include "kvrvideocontainerview.h"

#include <QChildEvent>
#include <QVariant>

namespace kavro {

namespace {
constexpr char HeldProperty[] = "kavroHeldByAnimation";
}

KVRVideoContainerView::KVRVideoContainerView(QWidget* parent) : QWidget(parent) {}

void KVRVideoContainerView::setChildHeld(QWidget* child, bool held)
{
    child->setProperty(HeldProperty, held);
    if (!held)
        child->setGeometry(rect());
}

void KVRVideoContainerView::fitChildren()
{
    for (QObject* object : children()) {
        auto* child = qobject_cast<QWidget*>(object);
        if (child && !child->isWindow() && !child->property(HeldProperty).toBool())
            child->setGeometry(rect());
    }
}

void KVRVideoContainerView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitChildren();
}

void KVRVideoContainerView::childEvent(QChildEvent* event)
{
    QWidget::childEvent(event);
    if (event->added()) {
        if (auto* child = qobject_cast<QWidget*>(event->child()))
            child->setGeometry(rect());
    }
}

} // namespace kavro
