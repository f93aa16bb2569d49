#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QBoxLayout;
class QWidget;

namespace kavro {

// Keeps a row of controls from overlapping in a narrow window: the row's fixed-size controls
// cannot shrink, so the ones that can go (given least needed first) are hidden while the row
// lacks the room for them, and come back when the window grows.
class KVRControlRowFitter : public QObject
{
    Q_OBJECT

public:
    KVRControlRowFitter(QWidget* box, QBoxLayout* row, QList<QWidget*> leastNeededFirst);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QWidget* m_box;
    QBoxLayout* m_row;
    QList<QPointer<QWidget>> m_optional;
    bool m_fitting = false;
};

} // namespace kavro
