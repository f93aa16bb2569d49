#pragma once

#include "widgets/tkcolorbackgroundview.h"

namespace kavro {

// A layout box of the main window: a colour box that may also round its corners. The boxes
// start clear; the layout gives them their colours.
class CustomBackgroundBox : public TKColorBackgroundView
{
    Q_OBJECT

public:
    explicit CustomBackgroundBox(QWidget* parent = nullptr);

    qreal cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(qreal radius);
};

} // namespace kavro
