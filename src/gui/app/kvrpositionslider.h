#pragma once

#include <QSlider>

namespace kavro {

// A horizontal slider over a fraction 0..1 (the play position). It tells apart the person's
// moves from the program's: only the first are reported, once per move (at the release of a
// drag, at once for a click or a key), and a click on the groove jumps to the clicked place.
class KVRPositionSlider : public QSlider
{
    Q_OBJECT

public:
    static constexpr int Steps = 10000;

    explicit KVRPositionSlider(QWidget* parent = nullptr);

    double fraction() const { return double(value()) / Steps; }
    // Moves the knob without reporting a move; ignored while the person holds the knob.
    void setFraction(double fraction);

signals:
    void userMoved(double fraction);

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool m_settingFraction = false;
};

} // namespace kavro
