#include "widgets/tkclockpicker.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace kavro {

TKClockPicker::TKClockPicker(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 120);
}

void TKClockPicker::setTime(QTime time)
{
    if (!time.isValid() || time == m_time)
        return;
    m_time = time;
    update();
}

void TKClockPicker::change(QTime time)
{
    if (time == m_time)
        return;
    m_time = time;
    update();
    emit timeChanged(m_time);
}

void TKClockPicker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = qMin(width(), height()) - 4;
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(side / 200.0, side / 200.0);

    const QPalette& colours = palette();
    painter.setPen(QPen(colours.color(QPalette::WindowText), 2));
    painter.setBrush(colours.color(QPalette::Base));
    painter.drawEllipse(QPointF(0, 0), 98, 98);
    for (int mark = 0; mark < 60; ++mark) {
        painter.setPen(QPen(colours.color(QPalette::WindowText), mark % 5 ? 1 : 3));
        painter.drawLine(QPointF(0, mark % 5 ? -90 : -84), QPointF(0, -94));
        painter.rotate(6);
    }

    const auto hand = [&painter](qreal degrees, qreal length, qreal width, const QColor& colour) {
        painter.save();
        painter.rotate(degrees);
        painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, 10), QPointF(0, -length));
        painter.restore();
    };
    const QColor text = colours.color(QPalette::WindowText);
    hand((m_time.hour() % 12 + m_time.minute() / 60.0) * 30, 50, 6, text);
    hand((m_time.minute() + m_time.second() / 60.0) * 6, 78, 4, text);
    hand(m_time.second() * 6, 86, 1.5, colours.color(QPalette::Highlight));
    painter.setBrush(text);
    painter.drawEllipse(QPointF(0, 0), 4, 4);
}

void TKClockPicker::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        pick(event->position(), true);
}

void TKClockPicker::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        pick(event->position(), false);
}

void TKClockPicker::pick(QPointF position, bool startOfDrag)
{
    const QPointF centre(width() / 2.0, height() / 2.0);
    const QPointF offset = position - centre;
    const qreal radius = (qMin(width(), height()) - 4) / 2.0;
    const qreal distance = std::hypot(offset.x(), offset.y());
    if (distance < radius * 0.1)
        return; // too close to the centre to say where it points
    if (startOfDrag)
        m_draggingHour = distance < radius * 0.55;
    // Clockwise from twelve o'clock, in whole turns.
    qreal turn = std::atan2(offset.x(), -offset.y()) / (2 * std::numbers::pi);
    if (turn < 0)
        turn += 1;
    if (m_draggingHour) {
        const int hour = int(std::lround(turn * 12)) % 12 + (m_time.hour() >= 12 ? 12 : 0);
        change(QTime(hour, m_time.minute(), m_time.second()));
    } else {
        const int minute = int(std::lround(turn * 60)) % 60;
        change(QTime(m_time.hour(), minute, m_time.second()));
    }
}

void TKClockPicker::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up)
        change(m_time.addSecs(60));
    else if (event->key() == Qt::Key_Down)
        change(m_time.addSecs(-60));
    else
        QWidget::keyPressEvent(event);
}

} // namespace kavro
