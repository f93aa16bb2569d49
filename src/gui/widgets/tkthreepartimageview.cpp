#include "widgets/tkthreepartimageview.h"

#include <QPainter>

#include <algorithm>

namespace kavro {

TKThreePartImageView::TKThreePartImageView(QWidget* parent) : QWidget(parent) {}

void TKThreePartImageView::setImages(const QString& left, const QString& middle,
                                     const QString& right)
{
    m_left = TKImage::named(left);
    m_middle = TKImage::named(middle);
    m_right = TKImage::named(right);
    update();
}

void TKThreePartImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const qreal w = width(), h = height();
    // Caps wider than the view together share it in proportion.
    qreal left = m_left.size().width(), right = m_right.size().width();
    if (left + right > w && left + right > 0) {
        const qreal scale = w / (left + right);
        left *= scale;
        right *= scale;
    }
    m_middle.draw(&painter, QRectF(left, 0, std::max<qreal>(w - left - right, 0), h));
    m_left.draw(&painter, QRectF(0, 0, left, h));
    m_right.draw(&painter, QRectF(w - right, 0, right, h));
}

} // namespace kavro
