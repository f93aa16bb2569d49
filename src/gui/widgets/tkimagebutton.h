#pragma once

#include "widgets/tkimage.h"

#include <QAbstractButton>

namespace kavro {

// A button drawn entirely from images: normal, pressed and roll-over, and for a toggle button a
// second set shown while it is on. Its size is its image's. It takes keyboard focus (space
// presses it) and draws a focus ring then; disabled it is drawn faded. Give it an accessible
// name, since it has no text of its own.
class TKImageButton : public QAbstractButton
{
    Q_OBJECT

public:
    struct ImageSet
    {
        TKImage normal;
        TKImage pressed;
        TKImage rollOver;
    };

    explicit TKImageButton(QWidget* parent = nullptr);

    // Sets the normal image. A name ending in "_n" also brings "<base>_p" and "<base>_h" as the
    // pressed and roll-over images where those exist.
    void setImage(const QString& name);
    void setImages(const QString& normal, const QString& pressed, const QString& rollOver);
    // The image set shown while the button is on; the same "_n" rule applies. Makes the button
    // checkable.
    void setOnImage(const QString& name);

    const ImageSet& images() const { return m_off; }
    const ImageSet& onImages() const { return m_on; }
    // The image the button shows in its present state.
    const TKImage& currentImage() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    static ImageSet imageSet(const QString& name);

    ImageSet m_off;
    ImageSet m_on;
    bool m_hovered = false;
    bool m_keyboardFocus = false;
};

} // namespace kavro
