#include "kvrsegmentedcontrol.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

namespace kavro {

KVRSegmentedControl::KVRSegmentedControl(QWidget* parent)
    : QWidget(parent), m_group(new QButtonGroup(this)), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(QMargins());
    m_layout->setSpacing(0);
    m_group->setExclusive(true);
    // The chosen segment must stand out at a glance, in every style.
    setStyleSheet(QStringLiteral(
        "QPushButton { border: 1px solid #8c8c8c; padding: 3px 8px; background: #fbfbfb; }"
        "QPushButton:checked { background: #2f6fc9; color: white; border-color: #24569c; }"
        "QPushButton:disabled { color: #a0a0a0; }"
        "QPushButton:checked:disabled { background: #a9bfdf; color: #f0f0f0; }"));
    connect(m_group, &QButtonGroup::idClicked, this, &KVRSegmentedControl::segmentClicked);
}

void KVRSegmentedControl::setLabels(const QStringList& labels)
{
    int selected = selectedSegment();
    while (segmentCount() > labels.size()) {
        QAbstractButton* button = m_group->button(segmentCount() - 1);
        m_group->removeButton(button);
        delete button;
    }
    while (segmentCount() < labels.size()) {
        auto* button = new QPushButton(this);
        button->setCheckable(true);
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
        button->setObjectName(QStringLiteral("segment%1").arg(segmentCount()));
        m_group->addButton(button, segmentCount());
        m_layout->addWidget(button);
    }
    for (int i = 0; i < labels.size(); ++i)
        setLabel(i, labels.at(i));
    if (selected >= segmentCount())
        setSelectedSegment(-1);
}

void KVRSegmentedControl::setLabel(int segment, const QString& label)
{
    if (QAbstractButton* button = segmentButton(segment))
        button->setText(label);
}

QString KVRSegmentedControl::label(int segment) const
{
    QAbstractButton* button = segmentButton(segment);
    return button ? button->text() : QString();
}

int KVRSegmentedControl::segmentCount() const
{
    return static_cast<int>(m_group->buttons().size());
}

int KVRSegmentedControl::selectedSegment() const
{
    return m_group->checkedId();
}

void KVRSegmentedControl::setSelectedSegment(int segment)
{
    if (QAbstractButton* button = segmentButton(segment)) {
        button->setChecked(true);
        return;
    }
    // An exclusive group cannot uncheck its last checked button.
    m_group->setExclusive(false);
    for (QAbstractButton* button : m_group->buttons())
        button->setChecked(false);
    m_group->setExclusive(true);
}

QAbstractButton* KVRSegmentedControl::segmentButton(int segment) const
{
    return m_group->button(segment);
}

} // namespace kavro
