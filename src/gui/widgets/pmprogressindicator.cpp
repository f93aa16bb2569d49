#include "widgets/pmprogressindicator.h"

#include "widgets/pmtaskbarprogress.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace kavro {

namespace {

const QColor trackColor(0x26, 0x2a, 0x30);
const QColor fillColor(0x6c, 0xc0, 0xe5);
constexpr int frameIntervalMs = 33;
constexpr int barCycleMs = 1400;
constexpr int wheelCycleMs = 1000;
constexpr int wheelSpokes = 12;

} // namespace

PMProgressIndicator::PMProgressIndicator(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_clock.start();
}

PMProgressIndicator::~PMProgressIndicator() = default;

void PMProgressIndicator::setIndicatorStyle(IndicatorStyle style)
{
    m_style = style;
    // A bar may grow along its length; a wheel keeps its size.
    setSizePolicy(style == BarStyle ? QSizePolicy::Preferred : QSizePolicy::Fixed,
                  QSizePolicy::Fixed);
    updateGeometry();
    update();
}

void PMProgressIndicator::setIndeterminate(bool indeterminate)
{
    m_indeterminate = indeterminate;
    update();
    updateTaskbar();
}

void PMProgressIndicator::setMinValue(double value)
{
    if (std::isnan(value))
        return;
    m_minValue = value;
    m_maxValue = std::max(m_maxValue, value);
    setDoubleValue(m_value);
}

void PMProgressIndicator::setMaxValue(double value)
{
    if (std::isnan(value))
        return;
    m_maxValue = std::max(value, m_minValue);
    setDoubleValue(m_value);
}

void PMProgressIndicator::setDoubleValue(double value)
{
    if (std::isnan(value))
        return;
    m_value = std::clamp(value, m_minValue, m_maxValue);
    update();
    updateTaskbar();
}

double PMProgressIndicator::fraction() const
{
    const double range = m_maxValue - m_minValue;
    return range > 0 ? (m_value - m_minValue) / range : 0.0;
}

void PMProgressIndicator::startAnimation()
{
    if (!m_animation.isActive())
        m_animation.start(frameIntervalMs, this);
    update();
    updateTaskbar();
}

void PMProgressIndicator::stopAnimation()
{
    m_animation.stop();
    update();
    updateTaskbar();
}

void PMProgressIndicator::setShowsTaskbarProgress(bool shows)
{
    if (shows == showsTaskbarProgress())
        return;
    if (shows)
        m_taskbar = std::make_unique<PMTaskbarProgress>();
    else
        m_taskbar.reset();
    updateTaskbar();
}

QSize PMProgressIndicator::sizeHint() const
{
    return m_style == BarStyle ? QSize(160, 8) : QSize(32, 32);
}

double PMProgressIndicator::phase(int cycleMs) const
{
    return double(m_clock.elapsed() % cycleMs) / cycleMs;
}

void PMProgressIndicator::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_style == BarStyle)
        paintBar(painter);
    else
        paintWheel(painter);
}

void PMProgressIndicator::paintBar(QPainter& painter) const
{
    const QRectF track = QRectF(rect());
    const qreal radius = track.height() / 2;
    QPainterPath clip;
    clip.addRoundedRect(track, radius, radius);
    painter.setClipPath(clip);
    painter.fillRect(track, trackColor);
    if (!m_indeterminate) {
        painter.fillRect(
            QRectF(track.left(), track.top(), track.width() * fraction(), track.height()),
            fillColor);
        return;
    }
    if (!isAnimating())
        return;
    // A short segment sweeping across and wrapping around, as long as the animation runs.
    const qreal segment = track.width() * 0.3;
    const qreal left = -segment + (track.width() + segment) * phase(barCycleMs);
    QLinearGradient gradient(left, 0, left + segment, 0);
    gradient.setColorAt(0, Qt::transparent);
    gradient.setColorAt(0.5, fillColor);
    gradient.setColorAt(1, Qt::transparent);
    painter.fillRect(QRectF(left, track.top(), segment, track.height()), gradient);
}

void PMProgressIndicator::paintWheel(QPainter& painter) const
{
    const qreal side = std::min(width(), height());
    const QPointF centre = QRectF(rect()).center();
    const qreal outer = side / 2 - 1;
    if (outer <= 0)
        return;
    if (!m_indeterminate) {
        const QRectF ring(centre.x() - outer + 1.5, centre.y() - outer + 1.5, 2 * outer - 3,
                          2 * outer - 3);
        painter.setPen(QPen(trackColor, 3));
        painter.drawEllipse(ring);
        painter.setPen(QPen(fillColor, 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(ring, 90 * 16, -int(std::lround(fraction() * 360 * 16)));
        return;
    }
    // Twelve spokes fading behind the leading one; a resting wheel stays dim.
    const int lead = isAnimating() ? int(phase(wheelCycleMs) * wheelSpokes) : -1;
    for (int i = 0; i < wheelSpokes; ++i) {
        const int behind = (lead - i + wheelSpokes) % wheelSpokes;
        QColor color = fillColor;
        color.setAlphaF(lead < 0 ? 0.25 : float(1.0 - 0.75 * behind / (wheelSpokes - 1)));
        painter.setPen(QPen(color, std::max<qreal>(side / 14, 1.5), Qt::SolidLine, Qt::RoundCap));
        const double angle = 2 * M_PI * i / wheelSpokes - M_PI / 2;
        const QPointF direction(std::cos(angle), std::sin(angle));
        painter.drawLine(centre + direction * outer * 0.5, centre + direction * outer);
    }
}

void PMProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_animation.timerId())
        update();
    else
        QWidget::timerEvent(event);
}

void PMProgressIndicator::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateTaskbar();
}

void PMProgressIndicator::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    updateTaskbar();
}

void PMProgressIndicator::updateTaskbar()
{
    if (!m_taskbar)
        return;
    m_taskbar->setProgress(fraction());
    m_taskbar->setProgressVisible(isVisible() && (isAnimating() || !m_indeterminate));
}

} // namespace kavro
