#pragma once

#include <QWidget>

namespace kavro {

// Holds a video area's background and its video view on top of each other, both filling it. A
// child can be let go of for a while (the swap animation moves the video views itself).
class KVRVideoContainerView : public QWidget
{
    Q_OBJECT

public:
    explicit KVRVideoContainerView(QWidget* parent = nullptr);

    // While a child is held, resizing the container leaves it where it is.
    void setChildHeld(QWidget* child, bool held);
    // Puts every child that is not held back over the whole container.
    void fitChildren();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void childEvent(QChildEvent* event) override;
};

} // namespace kavro
