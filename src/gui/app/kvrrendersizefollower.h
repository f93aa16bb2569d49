#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace kavro {

class VLCMediaPlayer;

// Keeps each player rendering at the size its area shows the picture, in device pixels, through
// window resizes, full screen and side views: painting then copies the picture without a scaling
// pass, and a larger area gets a sharp picture again. A resize counts once it has rested a
// moment, so that dragging a window's edge does not restart the video outputs at every step.
class KVRRenderSizeFollower : public QObject
{
    Q_OBJECT

public:
    KVRRenderSizeFollower(QWidget* largeArea, VLCMediaPlayer* large, QWidget* smallArea,
                          VLCMediaPlayer* small, QObject* parent = nullptr);

    // Tells both players their areas' sizes now.
    void apply();

    // How long a resize rests before the players follow it.
    static constexpr int SettleMs = 250;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_largeArea;
    VLCMediaPlayer* m_large;
    QWidget* m_smallArea;
    VLCMediaPlayer* m_small;
    QTimer m_settle;
};

} // namespace kavro
