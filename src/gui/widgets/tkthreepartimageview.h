#pragma once

#include "widgets/tkimage.h"

#include <QWidget>

namespace kavro {

// A horizontal bar drawn from three images: the left and right caps at their own width, the
// middle stretched between them; all three take the view's height. Other widgets may sit on it
// (the full-screen control bar does).
class TKThreePartImageView : public QWidget
{
    Q_OBJECT

public:
    explicit TKThreePartImageView(QWidget* parent = nullptr);

    void setImages(const QString& left, const QString& middle, const QString& right);

    const TKImage& leftImage() const { return m_left; }
    const TKImage& middleImage() const { return m_middle; }
    const TKImage& rightImage() const { return m_right; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TKImage m_left;
    TKImage m_middle;
    TKImage m_right;
};

} // namespace kavro
