#include "widgets/custombackgroundbox.h"

namespace kavro {

CustomBackgroundBox::CustomBackgroundBox(QWidget* parent) : TKColorBackgroundView(parent) {}

void CustomBackgroundBox::setCornerRadius(qreal radius)
{
    m_cornerRadius = qMax<qreal>(radius, 0);
    update();
}

} // namespace kavro
