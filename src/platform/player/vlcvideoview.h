#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

namespace kavro {

class VLCMediaPlayer;

// Shows the picture of one player, scaled to fill the view with its aspect ratio kept and black
// bars on the free sides; black while the player has no picture.
class VLCVideoView : public QWidget
{
    Q_OBJECT

public:
    explicit VLCVideoView(QWidget* parent = nullptr);

    // The player whose frames to show; the view does not own it and copes with its destruction.
    void setMediaPlayer(VLCMediaPlayer* player);
    VLCMediaPlayer* mediaPlayer() const { return m_player; }

    // The last frame the player displayed, at the size it was rendered.
    QImage lastFrame() const;
    // Where that frame is drawn inside the view; empty without a frame.
    QRect pictureRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QImage& shownFrame() const;

    QPointer<VLCMediaPlayer> m_player;
};

} // namespace kavro
