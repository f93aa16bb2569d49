#pragma once

#include <QStringList>
#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QHBoxLayout;

namespace kavro {

// A row of buttons of which one at most is selected, like the tabs of the settings window and
// the choices of its pages.
class KVRSegmentedControl : public QWidget
{
    Q_OBJECT

public:
    explicit KVRSegmentedControl(QWidget* parent = nullptr);

    // The label filler: as many segments as labels, segment i titled label i.
    void setLabels(const QStringList& labels);
    void setLabel(int segment, const QString& label);
    QString label(int segment) const;
    int segmentCount() const;

    // -1 when none is selected; selecting -1 or an index past the end clears the selection.
    int selectedSegment() const;
    void setSelectedSegment(int segment);

    QAbstractButton* segmentButton(int segment) const;

signals:
    // The user chose a segment (not emitted for setSelectedSegment).
    void segmentClicked(int segment);

private:
    QButtonGroup* m_group;
    QHBoxLayout* m_layout;
};

} // namespace kavro
