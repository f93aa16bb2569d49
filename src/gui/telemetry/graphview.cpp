#include "telemetry/graphview.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace kavro {

namespace {

const QColor gridColor = QColor::fromRgbF(0.8f, 0.8f, 0.8f);
const QColor labelColor = Qt::white;
const QColor barColor = Qt::white;
// Red, green and blue, lifted just enough to read on the dark strip.
const QColor axisColors[3] = {QColor(255, 59, 48), QColor(52, 199, 89), QColor(64, 140, 255)};
const char* const scaleLabels[5] = {"-2", "-1", "0", "+1", "+2"};
constexpr int pointsPerPixel = 10;

float axisValue(const KVRGSensor& sample, int axis)
{
    return axis == 0 ? sample.x : axis == 1 ? sample.y : sample.z;
}

} // namespace

GraphView::GraphView(QWidget* parent) : QWidget(parent), m_backgroundColor(0x14, 0x16, 0x19)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void GraphView::setGraphData(std::vector<KVRGSensor> values)
{
    m_values = std::move(values);
    m_layer = QPixmap();
    update();
}

void GraphView::updateTimePosition(double position)
{
    if (!std::isfinite(position))
        return;
    m_timePosition = std::clamp(position, 0.0, 1.0);
    update();
}

void GraphView::setBackgroundColor(const QColor& color)
{
    m_backgroundColor = color;
    m_layer = QPixmap();
    update();
}

QPointF GraphView::graphAreaZeroValuePoint() const
{
    return {graphAreaLeftBottom().x(), graphAreaLeftBottom().y() + graphAreaSize().height() * 0.5};
}

QRectF GraphView::toWidget(const QRectF& rect) const
{
    // A rectangle grows upwards from its origin in the drawing, downwards in the widget.
    return {rect.x(), height() - rect.y() - rect.height(), rect.width(), rect.height()};
}

void GraphView::paintEvent(QPaintEvent*)
{
    if (size().isEmpty())
        return;
    const qreal ratio = devicePixelRatioF();
    if (m_layer.isNull() || m_layer.devicePixelRatio() != ratio) {
        m_layer = QPixmap(size() * ratio);
        m_layer.setDevicePixelRatio(ratio);
        QPainter layer(&m_layer);
        drawBackgroundRect(layer);
        if (!m_values.empty())
            drawGraphDataWithContext(layer);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_layer);
    if (!m_values.empty())
        drawTimePositionVerticalBarWithContext(painter);
}

void GraphView::resizeEvent(QResizeEvent* event)
{
    m_layer = QPixmap();
    QWidget::resizeEvent(event);
}

void GraphView::drawBackgroundRect(QPainter& painter) const
{
    painter.fillRect(rect(), m_backgroundColor);
    const QPointF origin = graphAreaLeftBottom();
    const QSizeF area = graphAreaSize();
    const qreal quarter = area.height() * 0.25;
    for (int i = 0; i <= 4; ++i) {
        painter.fillRect(toWidget(QRectF(origin.x(), origin.y() + i * quarter, area.width(), 1)),
                         gridColor);
    }
    painter.fillRect(toWidget(QRectF(origin.x(), origin.y(), 1, area.height())), gridColor);
    for (int i = 0; i <= 4; ++i)
        drawString(painter, QLatin1String(scaleLabels[i]), {origin.x(), origin.y() + i * quarter});
}

void GraphView::drawGraphDataWithContext(QPainter& painter) const
{
    const QSizeF area = graphAreaSize();
    const qreal quarter = area.height() * 0.25;
    const QPointF zero = graphAreaZeroValuePoint();
    const std::size_t count = m_values.size();
    // Ten points per pixel whatever the recording's length: point i shows sample N * i / P.
    const long long points = static_cast<long long>(area.width()) * pointsPerPixel + 1;
    const double samplesPerPoint = double(count) / double(points);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (int axis = 0; axis < 3; ++axis) {
        QPainterPath path;
        path.moveTo(
            toWidget(QPointF(zero.x() + 1, zero.y() + axisValue(m_values[0], axis) * quarter)));
        for (long long i = 1; i < points; ++i) {
            const auto index = std::size_t(double(i) * samplesPerPoint);
            if (index >= count)
                break;
            const qreal x = zero.x() + 1 + double(i) / pointsPerPixel;
            path.lineTo(
                toWidget(QPointF(x, zero.y() + axisValue(m_values[index], axis) * quarter)));
        }
        painter.strokePath(path,
                           QPen(axisColors[axis], 1, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    }
    painter.restore();
}

void GraphView::drawTimePositionVerticalBarWithContext(QPainter& painter) const
{
    const QPointF origin = graphAreaLeftBottom();
    const QSizeF area = graphAreaSize();
    painter.fillRect(
        toWidget(QRectF(origin.x() + area.width() * m_timePosition, origin.y(), 2, area.height())),
        barColor);
}

void GraphView::drawString(QPainter& painter, const QString& text, const QPointF& point) const
{
    // The layout counts in device-independent pixels, so the 12-point face is 12 pixels here.
    QFont font(QStringLiteral("Helvetica"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(labelColor);
    const QFontMetricsF metrics(font);
    const qreal textHeight = metrics.height();
    // The text's box ends 2 px left of the point and its bottom lies textHeight / 2 - 2 below
    // it, which about centres the text on the line.
    const QPointF boxBottomRight =
        toWidget(QPointF(point.x() - 2, point.y() - (textHeight * 0.5 - 2)));
    const qreal left = boxBottomRight.x() - metrics.horizontalAdvance(text);
    painter.drawText(QPointF(left, boxBottomRight.y() - metrics.descent()), text);
}

} // namespace kavro
