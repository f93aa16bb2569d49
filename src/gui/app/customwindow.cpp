#include "customwindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>
#include <QShortcut>
#include <QTimer>

namespace kavro {

CustomWindow::CustomWindow(QWidget* parent) : QMainWindow(parent)
{
    // Escape must leave full screen whichever control has the keyboard; the list, for one,
    // would take the key for its type-ahead search.
    m_escape = new QShortcut(Qt::Key_Escape, this, this, &CustomWindow::leaveFullscreen);
    m_escape->setEnabled(false);
}

void CustomWindow::setFullScreenFlag(bool fullScreen)
{
    m_isFullScreen = fullScreen;
    m_escape->setEnabled(fullScreen);
    emit isFullScreenChanged(fullScreen);
}

void CustomWindow::enterFullscreen()
{
    if (m_isFullScreen)
        return;
    setFullScreenFlag(true);
    if (m_initialFrame.width() == 0 || m_initialFrame.height() == 0)
        m_initialFrame = frameGeometry();
    // The window system's full-screen state is what keeps panels and docks out of the way on
    // this platform; the frame is set as well, for window systems that leave the size to us.
    menuBar()->hide();
    const QRect screenFrame = screen()->geometry();
    setWindowState(windowState() | Qt::WindowFullScreen);
    setFrame(screenFrame);
}

void CustomWindow::leaveFullscreen()
{
    if (!m_isFullScreen)
        return;
    setFullScreenFlag(false);
    setWindowState(windowState() & ~Qt::WindowFullScreen);
    menuBar()->show();
    setFrame(m_initialFrame);
}

void CustomWindow::setFrame(const QRect& frame)
{
    // The window system tells the size of its decoration only once the window is shown.
    m_pendingFrame = isVisible() ? QRect() : frame;
    // Qt places a window by its outer frame but sizes it by its inside.
    const QRect outer = frameGeometry();
    const QRect inner = geometry();
    const QMargins decoration(inner.left() - outer.left(), inner.top() - outer.top(),
                              outer.right() - inner.right(), outer.bottom() - inner.bottom());
    move(frame.topLeft());
    resize(frame.size().shrunkBy(decoration).expandedTo(QSize(1, 1)));
}

QPoint CustomWindow::draggedOrigin(const QPoint& globalPos) const
{
    QPoint origin = globalPos - m_initialLocation;
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (primary && origin.y() < primary->availableGeometry().top())
        origin.setY(primary->availableGeometry().top());
    return origin;
}

void CustomWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_isFullScreen) {
        leaveFullscreen();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

void CustomWindow::mousePressEvent(QMouseEvent* event)
{
    // Presses reach the window only where no control took them: its background.
    if (event->button() == Qt::LeftButton && !m_isFullScreen) {
        m_initialLocation = event->globalPosition().toPoint() - frameGeometry().topLeft();
        m_dragging = true;
    }
    QMainWindow::mousePressEvent(event);
}

void CustomWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging && (event->buttons() & Qt::LeftButton)) {
        move(draggedOrigin(event->globalPosition().toPoint()));
        return;
    }
    m_dragging = false;
    QMainWindow::mouseMoveEvent(event);
}

void CustomWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (m_pendingFrame.isValid()) {
        QTimer::singleShot(0, this, [this, frame = m_pendingFrame] {
            if (!m_isFullScreen)
                setFrame(frame);
        });
    }
}

void CustomWindow::closeEvent(QCloseEvent* event)
{
    emit windowWillClose();
    QMainWindow::closeEvent(event);
}

} // namespace kavro
