#pragma once

#include "widgets/tkimage.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

// Pictures of widgets and images as a person would see them on a given background.
namespace kavro::test {

inline QImage renderOn(QWidget& widget, const QColor& canvas = Qt::transparent)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(canvas);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

// A resource image at its own size on the canvas.
inline QImage imageAlone(const QString& name, const QColor& canvas = Qt::transparent)
{
    const TKImage picture = TKImage::named(name);
    QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(canvas);
    QPainter painter(&image);
    picture.draw(&painter, QPointF(0, 0));
    return image;
}

// The smallest rectangle inside `within` holding every pixel that differs from the background.
inline QRect paintedArea(const QImage& image, QRgb background, const QRect& within)
{
    QRect found;
    for (int y = within.top(); y <= within.bottom(); ++y) {
        for (int x = within.left(); x <= within.right(); ++x) {
            if (image.pixel(x, y) != background)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

} // namespace kavro::test
