#include "widgets/tkvideobackgroundimageview.h"

#include <QPainter>

namespace kavro {

TKVideoBackgroundImageView::TKVideoBackgroundImageView(QWidget* parent) : QWidget(parent) {}

void TKVideoBackgroundImageView::setBackgroundNineImageName(const QString& name)
{
    m_backgroundName = name;
    m_background = NinePartLayer::fromImageSet(name);
    update();
}

void TKVideoBackgroundImageView::setLogoImage(const QString& name)
{
    m_centerLogoImage = TKImage::named(name);
    update();
}

void TKVideoBackgroundImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_background.draw(&painter, QRectF(rect()));
    if (m_centerLogoImage.isNull())
        return;
    // Whole pixels keep the logo's thin strokes sharp.
    const QSize logo = m_centerLogoImage.size();
    m_centerLogoImage.draw(&painter,
                           QPointF((width() - logo.width()) / 2, (height() - logo.height()) / 2));
}

} // namespace kavro
