#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

#include <memory>

namespace kavro {

class PMTaskbarProgress;

// The loading indicator of the main and settings windows: a bar or a spinning wheel, either
// indeterminate (animated while its animation runs) or showing its value between its minimum and
// maximum. Its owner shows and hides it. It can mirror its progress on the application's dock
// entry while it is shown.
class PMProgressIndicator : public QWidget
{
    Q_OBJECT

public:
    enum IndicatorStyle
    {
        BarStyle,
        SpinningStyle
    };

    explicit PMProgressIndicator(QWidget* parent = nullptr);
    ~PMProgressIndicator() override;

    IndicatorStyle indicatorStyle() const { return m_style; }
    void setIndicatorStyle(IndicatorStyle style);

    bool isIndeterminate() const { return m_indeterminate; }
    void setIndeterminate(bool indeterminate);

    double minValue() const { return m_minValue; }
    double maxValue() const { return m_maxValue; }
    // A maximum below the minimum is taken as equal to it.
    void setMinValue(double value);
    void setMaxValue(double value);
    double doubleValue() const { return m_value; }
    // Clamped to the range; NaN is ignored.
    void setDoubleValue(double value);
    // The value as a fraction of the range, 0 to 1.
    double fraction() const;

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_animation.isActive(); }

    void setShowsTaskbarProgress(bool shows);
    bool showsTaskbarProgress() const { return m_taskbar != nullptr; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void paintBar(QPainter& painter) const;
    void paintWheel(QPainter& painter) const;
    // The animation's position in its cycle, 0 to 1.
    double phase(int cycleMs) const;
    void updateTaskbar();

    IndicatorStyle m_style = BarStyle;
    bool m_indeterminate = true;
    double m_minValue = 0;
    double m_maxValue = 100;
    double m_value = 0;
    QBasicTimer m_animation;
    QElapsedTimer m_clock;
    std::unique_ptr<PMTaskbarProgress> m_taskbar;
};

} // namespace kavro
