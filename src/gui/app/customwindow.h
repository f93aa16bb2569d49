#pragma once

#include <QMainWindow>
#include <QPoint>
#include <QRect>

class QShortcut;

namespace kavro {

// The main window. Its full screen is its own mode: the window is laid over its whole screen and
// the menu bar hides, rather than moving to a separate full-screen space, so leaving returns to
// the frame it started with. It can be moved by dragging anywhere on its background.
class CustomWindow : public QMainWindow
{
    Q_OBJECT
    Q_PROPERTY(bool isFullScreen READ isFullScreen NOTIFY isFullScreenChanged)

public:
    explicit CustomWindow(QWidget* parent = nullptr);

    bool isFullScreen() const { return m_isFullScreen; }
    void enterFullscreen();
    void leaveFullscreen();

    QRect initialFrame() const { return m_initialFrame; }
    void setInitialFrame(const QRect& frame) { m_initialFrame = frame; }
    QPoint initialLocation() const { return m_initialLocation; }

    // The outer frame, title bar included where the window system draws one.
    void setFrame(const QRect& frame);

    // Where a drag that started at initialLocation() puts the window when the pointer is at
    // globalPos: the window follows the pointer, but its top edge never rises above the top of
    // the usable area of the primary screen.
    QPoint draggedOrigin(const QPoint& globalPos) const;

signals:
    void isFullScreenChanged(bool fullScreen);
    // The window is closing; playback must stop before it goes.
    void windowWillClose();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void setFullScreenFlag(bool fullScreen);

    QShortcut* m_escape = nullptr;
    QPoint m_initialLocation;
    QRect m_initialFrame;
    QRect m_pendingFrame;
    bool m_isFullScreen = false;
    bool m_dragging = false;
};

} // namespace kavro
