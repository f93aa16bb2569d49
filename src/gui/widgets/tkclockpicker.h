#pragma once

#include <QTime>
#include <QWidget>

namespace kavro {

// A time of day on a clock face. Dragging near the rim sets the minute hand, nearer the centre
// the hour hand (in the half of the day already shown); Up and Down step one minute.
class TKClockPicker : public QWidget
{
    Q_OBJECT

public:
    explicit TKClockPicker(QWidget* parent = nullptr);

    QTime time() const { return m_time; }
    // Shows the time without reporting it, as a program setting the picker does.
    void setTime(QTime time);

    QSize sizeHint() const override { return {150, 150}; }

signals:
    // Only the user's changes.
    void timeChanged(QTime time);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void pick(QPointF position, bool startOfDrag);
    void change(QTime time);

    QTime m_time{0, 0, 0};
    bool m_draggingHour = false;
};

} // namespace kavro
