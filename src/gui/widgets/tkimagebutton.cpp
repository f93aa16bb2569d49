#include "widgets/tkimagebutton.h"

#include <QFocusEvent>
#include <QPainter>

namespace kavro {

namespace {

const QColor focusRingColor(0x6c, 0xc0, 0xe5);
constexpr qreal disabledOpacity = 0.35;

} // namespace

TKImageButton::TKImageButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

TKImageButton::ImageSet TKImageButton::imageSet(const QString& name)
{
    ImageSet set;
    set.normal = TKImage::named(name);
    const QString base = set.normal.name();
    if (base.endsWith(QLatin1String("_n"))) {
        const QString stem = base.chopped(2);
        if (TKImage::exists(stem + QLatin1String("_p")))
            set.pressed = TKImage::named(stem + QLatin1String("_p"));
        if (TKImage::exists(stem + QLatin1String("_h")))
            set.rollOver = TKImage::named(stem + QLatin1String("_h"));
    }
    return set;
}

void TKImageButton::setImage(const QString& name)
{
    m_off = imageSet(name);
    updateGeometry();
    update();
}

void TKImageButton::setImages(const QString& normal, const QString& pressed,
                              const QString& rollOver)
{
    m_off.normal = TKImage::named(normal);
    m_off.pressed = pressed.isEmpty() ? TKImage() : TKImage::named(pressed);
    m_off.rollOver = rollOver.isEmpty() ? TKImage() : TKImage::named(rollOver);
    updateGeometry();
    update();
}

void TKImageButton::setOnImage(const QString& name)
{
    m_on = imageSet(name);
    setCheckable(true);
    updateGeometry();
    update();
}

const TKImage& TKImageButton::currentImage() const
{
    const ImageSet& set = isChecked() && !m_on.normal.isNull() ? m_on : m_off;
    if (isDown() && !set.pressed.isNull())
        return set.pressed;
    if (m_hovered && isEnabled() && !isDown() && !set.rollOver.isNull())
        return set.rollOver;
    return set.normal;
}

QSize TKImageButton::sizeHint() const
{
    return m_off.normal.size().expandedTo(m_on.normal.size());
}

void TKImageButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const TKImage& image = currentImage();
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    // Centred, at its own size, on whole pixels.
    const QSize size = image.size();
    image.draw(&painter, QPointF((width() - size.width()) / 2, (height() - size.height()) / 2));
    if (m_keyboardFocus && hasFocus()) {
        painter.setOpacity(1.0);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(focusRingColor, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
    }
}

void TKImageButton::enterEvent(QEnterEvent* event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void TKImageButton::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void TKImageButton::focusInEvent(QFocusEvent* event)
{
    // A ring only when the keyboard brought the focus; a click needs no reminder.
    const Qt::FocusReason reason = event->reason();
    m_keyboardFocus = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                      reason == Qt::ShortcutFocusReason;
    QAbstractButton::focusInEvent(event);
}

void TKImageButton::focusOutEvent(QFocusEvent* event)
{
    m_keyboardFocus = false;
    QAbstractButton::focusOutEvent(event);
}

} // namespace kavro
