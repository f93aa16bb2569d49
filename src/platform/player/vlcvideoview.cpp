#include "vlcvideoview.h"

#include "vlcmediaplayer.h"

#include <QPainter>

#include <cstdlib>

namespace kavro {

VLCVideoView::VLCVideoView(QWidget* parent) : QWidget(parent)
{
    // Every pixel is painted here, black bars included.
    setAttribute(Qt::WA_OpaquePaintEvent);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, Qt::black);
    setPalette(colours);
}

void VLCVideoView::setMediaPlayer(VLCMediaPlayer* player)
{
    if (m_player == player)
        return;
    if (m_player)
        disconnect(m_player, nullptr, this, nullptr);
    m_player = player;
    if (player) {
        connect(player, &VLCMediaPlayer::frameReady, this, qOverload<>(&QWidget::update));
        // A destroyed player leaves its last frame behind otherwise.
        connect(player, &QObject::destroyed, this, qOverload<>(&QWidget::update));
    }
    update();
}

QImage VLCVideoView::lastFrame() const
{
    return m_player ? m_player->lastFrame() : QImage();
}

const QImage& VLCVideoView::shownFrame() const
{
    static const QImage none;
    return m_player ? m_player->shownFrame() : none;
}

QRect VLCVideoView::pictureRect() const
{
    const QImage& frame = shownFrame();
    if (frame.isNull() || width() <= 0 || height() <= 0)
        return {};
    QSize fitted = frame.size().scaled(size(), Qt::KeepAspectRatio);
    // A picture rendered for this view is a pixel or two off its fitted size (even sizes): drawn
    // as it is, it needs no scaling pass.
    const QSize off = fitted - frame.size();
    if (std::abs(off.width()) <= 2 && std::abs(off.height()) <= 2 && width() >= frame.width() &&
        height() >= frame.height())
        fitted = frame.size();
    return QRect(QPoint((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
}

void VLCVideoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QImage& frame = shownFrame();
    const QRect target = pictureRect();
    if (frame.isNull() || target.isEmpty()) {
        painter.fillRect(rect(), Qt::black);
        return;
    }
    // Only the bars are filled, so the picture is drawn once per frame.
    const QRegion bars = QRegion(rect()) - QRegion(target);
    for (const QRect& bar : bars)
        painter.fillRect(bar, Qt::black);
    if (target.size() == frame.size()) {
        // A player rendering at the shown size: a plain copy.
        painter.drawImage(target.topLeft(), frame);
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, frame);
}

} // namespace kavro
