#pragma once

#include "widgets/ninepartlayer.h"

#include <QWidget>

namespace kavro {

// What a video area shows while no picture plays: a nine-part frame over the whole view and a
// logo at its own size in the middle. The video view covers it while a player shows a picture.
class TKVideoBackgroundImageView : public QWidget
{
    Q_OBJECT

public:
    explicit TKVideoBackgroundImageView(QWidget* parent = nullptr);

    // Loads the nine images "<name>_top_left_corner" ... "<name>_center_fill".
    void setBackgroundNineImageName(const QString& name);
    void setLogoImage(const QString& name);

    QString backgroundNineImageName() const { return m_backgroundName; }
    QString logoImageName() const { return m_centerLogoImage.name(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_backgroundName;
    NinePartLayer m_background;
    TKImage m_centerLogoImage;
};

} // namespace kavro
