#pragma once

#include <QPixmap>
#include <QRectF>
#include <QSize>
#include <QString>

class QPainter;

namespace kavro {

// An image of the interface resources, found by the name the windows use ("icon_play_n",
// "record_p.png"). Drawn from its SVG at the painter's pixel ratio, so it stays sharp on 2x
// screens. A name without an image gives a null image, which draws nothing: a missing picture
// leaves its view empty instead of stopping the window. Main thread only (pixmaps).
class TKImage
{
public:
    TKImage() = default;

    static TKImage named(const QString& name);
    static bool exists(const QString& name);

    bool isNull() const { return m_path.isEmpty(); }
    // The name without extension, as the resources list it.
    QString name() const { return m_name; }
    // The size in device-independent pixels.
    QSize size() const { return m_size; }

    // The image at its own size, rendered for the given device pixel ratio.
    QPixmap pixmap(qreal devicePixelRatio) const;
    // Draws the image at its own size with its top left corner at the point.
    void draw(QPainter* painter, const QPointF& topLeft) const;
    // Draws the image stretched over the rectangle.
    void draw(QPainter* painter, const QRectF& target) const;

private:
    QString m_name;
    QString m_path;
    QSize m_size;
};

} // namespace kavro
