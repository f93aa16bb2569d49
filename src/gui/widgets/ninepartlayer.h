#pragma once

#include "widgets/tkimage.h"

#include <array>

namespace kavro {

// Draws nine images over a rectangle: the corners at their own size, the edges stretched along
// the sides between them and the centre stretched over the rest. Used for frames that must
// keep their rounded corners at any size.
class NinePartLayer
{
public:
    enum Part
    {
        TopLeftCorner,
        TopRightCorner,
        BottomLeftCorner,
        BottomRightCorner,
        LeftEdgeFill,
        RightEdgeFill,
        TopEdgeFill,
        BottomEdgeFill,
        CenterFill,
        PartCount
    };

    // The set whose images are named "<name>_top_left_corner" ... "<name>_center_fill".
    static NinePartLayer fromImageSet(const QString& name);
    static QString partName(const QString& setName, Part part);

    void setImage(Part part, const TKImage& image) { m_parts[part] = image; }
    const TKImage& image(Part part) const { return m_parts[part]; }

    void draw(QPainter* painter, const QRectF& bounds) const;

private:
    std::array<TKImage, PartCount> m_parts;
};

} // namespace kavro
