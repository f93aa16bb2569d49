#include "widgets/ninepartlayer.h"

#include <QPainter>

#include <algorithm>

namespace kavro {

namespace {

const char* const partSuffixes[NinePartLayer::PartCount] = {
    "_top_left_corner",     "_top_right_corner", "_bottom_left_corner",
    "_bottom_right_corner", "_left_edge_fill",   "_right_edge_fill",
    "_top_edge_fill",       "_bottom_edge_fill", "_center_fill",
};

// Two corners that together exceed the side they share are shrunk in proportion, so a frame
// smaller than its corners still draws them side by side instead of overlapping.
void fitPair(qreal available, qreal& first, qreal& second)
{
    const qreal total = first + second;
    if (total > available && total > 0) {
        const qreal scale = std::max<qreal>(available, 0) / total;
        first *= scale;
        second *= scale;
    }
}

} // namespace

NinePartLayer NinePartLayer::fromImageSet(const QString& name)
{
    NinePartLayer layer;
    for (int part = 0; part < PartCount; ++part)
        layer.m_parts[part] = TKImage::named(partName(name, Part(part)));
    return layer;
}

QString NinePartLayer::partName(const QString& setName, Part part)
{
    return setName + QLatin1String(partSuffixes[part]);
}

void NinePartLayer::draw(QPainter* painter, const QRectF& bounds) const
{
    if (bounds.isEmpty())
        return;
    const QSizeF topLeft = m_parts[TopLeftCorner].size();
    const QSizeF bottomRight = m_parts[BottomRightCorner].size();
    qreal left = topLeft.width(), right = bottomRight.width();
    qreal top = topLeft.height(), bottom = bottomRight.height();
    fitPair(bounds.width(), left, right);
    fitPair(bounds.height(), top, bottom);

    const qreal x0 = bounds.left(), x1 = bounds.left() + left, x2 = bounds.right() - right;
    const qreal y0 = bounds.top(), y1 = bounds.top() + top, y2 = bounds.bottom() - bottom;
    const qreal middleWidth = x2 - x1, middleHeight = y2 - y1;

    // Edges and centre are uniform along the stretched direction: sampling them without
    // smoothing keeps them sharp and leaves no seams against the corners.
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    m_parts[CenterFill].draw(painter, QRectF(x1, y1, middleWidth, middleHeight));
    m_parts[TopEdgeFill].draw(painter, QRectF(x1, y0, middleWidth, top));
    m_parts[BottomEdgeFill].draw(painter, QRectF(x1, y2, middleWidth, bottom));
    m_parts[LeftEdgeFill].draw(painter, QRectF(x0, y1, left, middleHeight));
    m_parts[RightEdgeFill].draw(painter, QRectF(x2, y1, right, middleHeight));
    m_parts[TopLeftCorner].draw(painter, QRectF(x0, y0, left, top));
    m_parts[TopRightCorner].draw(painter, QRectF(x2, y0, right, top));
    m_parts[BottomLeftCorner].draw(painter, QRectF(x0, y2, left, bottom));
    m_parts[BottomRightCorner].draw(painter, QRectF(x2, y2, right, bottom));
    painter->restore();
}

} // namespace kavro
