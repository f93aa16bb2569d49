#pragma once

#include "telemetry/kvrgsensor.h"

#include <QColor>
#include <QPixmap>
#include <QWidget>

#include <vector>

namespace kavro {

// The strip under the videos: the whole recording's G-sensor trace, one line per axis, on a
// fixed scale of -2 to +2 g, with a white bar at the play position. The drawing is defined with
// the origin at the bottom left and y upwards; it is turned into widget coordinates only when
// painted.
class GraphView : public QWidget
{
    Q_OBJECT

public:
    explicit GraphView(QWidget* parent = nullptr);

    // Keeps its own copy, so the store may be refilled for the next recording while this one is
    // still on screen.
    void setGraphData(std::vector<KVRGSensor> values);
    // Clamped to 0..1; a value that is not finite is ignored.
    void updateTimePosition(double position);

    const std::vector<KVRGSensor>& values() const { return m_values; }
    double timePosition() const { return m_timePosition; }

    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor& color);

    // The graph area in the drawing's coordinates (origin bottom left, y upwards).
    QPointF graphAreaLeftBottom() const { return {20, 8}; }
    QSizeF graphAreaSize() const { return {qreal(width() - 40), qreal(height() - 16)}; }
    QPointF graphAreaZeroValuePoint() const;

    QSize sizeHint() const override { return {600, 130}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void drawBackgroundRect(QPainter& painter) const;
    void drawGraphDataWithContext(QPainter& painter) const;
    void drawTimePositionVerticalBarWithContext(QPainter& painter) const;
    void drawString(QPainter& painter, const QString& text, const QPointF& point) const;
    // From the drawing's coordinates to the widget's (origin top left, y downwards).
    QPointF toWidget(const QPointF& point) const { return {point.x(), height() - point.y()}; }
    QRectF toWidget(const QRectF& rect) const;

    // Everything but the position bar, drawn once per data set and size: a position change
    // then costs a copy instead of stroking some ten thousand points again.
    QPixmap m_layer;

    std::vector<KVRGSensor> m_values;
    double m_timePosition = 0;
    QColor m_backgroundColor;
};

} // namespace kavro
