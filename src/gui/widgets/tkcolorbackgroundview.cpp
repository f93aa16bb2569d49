#include "widgets/tkcolorbackgroundview.h"

#include <QPainter>
#include <QPainterPath>

namespace kavro {

TKColorBackgroundView::TKColorBackgroundView(QWidget* parent) : QWidget(parent) {}

void TKColorBackgroundView::setBackgroundColor(const QColor& color)
{
    m_backgroundColor = color;
    update();
}

void TKColorBackgroundView::setBorder(const QColor& color, qreal width)
{
    m_borderColor = color;
    m_borderWidth = qMax<qreal>(width, 0);
    update();
}

void TKColorBackgroundView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool border = m_borderWidth > 0 && m_borderColor.alpha() > 0;
    // The border's stroke is centred on a rectangle inset by half its width, so all of it lies
    // inside the view and the fill does not show around it.
    const qreal inset = border ? m_borderWidth / 2 : 0;
    const QRectF box = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setRenderHint(QPainter::Antialiasing, m_cornerRadius > 0);
    painter.setPen(
        border ? QPen(m_borderColor, m_borderWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin)
               : QPen(Qt::NoPen));
    painter.setBrush(m_backgroundColor.alpha() > 0 ? QBrush(m_backgroundColor) : QBrush());
    if (m_cornerRadius > 0)
        painter.drawRoundedRect(box, m_cornerRadius, m_cornerRadius);
    else
        painter.drawRect(box);
}

} // namespace kavro
