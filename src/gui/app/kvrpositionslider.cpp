#include "kvrpositionslider.h"

#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>

#include <cmath>

namespace kavro {

KVRPositionSlider::KVRPositionSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    setRange(0, Steps);
    setPageStep(Steps / 20);
    setSingleStep(Steps / 100);
    setFocusPolicy(Qt::NoFocus); // the arrow keys jump ten seconds instead
    connect(this, &QSlider::valueChanged, this, [this] {
        if (!m_settingFraction && !isSliderDown())
            emit userMoved(fraction());
    });
    connect(this, &QSlider::sliderReleased, this, [this] { emit userMoved(fraction()); });
}

void KVRPositionSlider::setFraction(double fraction)
{
    if (isSliderDown() || !std::isfinite(fraction))
        return;
    m_settingFraction = true;
    setValue(int(std::lround(std::clamp(fraction, 0.0, 1.0) * Steps)));
    m_settingFraction = false;
}

void KVRPositionSlider::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    if (event->button() == Qt::LeftButton && !handle.contains(event->pos())) {
        const QRect groove =
            style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
        const int span = std::max(1, groove.width() - handle.width());
        const int x = event->pos().x() - groove.x() - handle.width() / 2;
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), x, span));
        event->accept();
        return;
    }
    QSlider::mousePressEvent(event);
}

} // namespace kavro
