#include "map/kvrmapwindowcontroller.h"

#include "map/kvrmapview.h"
#include "map/maplog.h"

#include <QVBoxLayout>
#include <QWidget>

namespace kavro {

namespace {

// A rectangle as "{{x, y}, {width, height}}".
QString rectText(const QRect& rect)
{
    return QStringLiteral("{{%1, %2}, {%3, %4}}")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

} // namespace

KVRMapWindowController::KVRMapWindowController(QObject* parent) : QObject(parent) {}

KVRMapWindowController::~KVRMapWindowController() = default;

QWidget* KVRMapWindowController::window()
{
    if (m_window)
        return m_window.get();
    m_window = std::make_unique<QWidget>(nullptr, Qt::Window);
    //% "Map"
    m_window->setWindowTitle(qtTrId("map.title"));
    m_window->resize(DefaultWindowSize);
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    m_mapWebView = new KVRMapView(m_window.get());
    layout->addWidget(m_mapWebView);
    windowDidLoad();
    return m_window.get();
}

void KVRMapWindowController::windowDidLoad()
{
    qCInfo(lcMap).noquote() << "map window frame" << rectText(m_window->frameGeometry());
    m_mapWebView->loadMapPage();
}

void KVRMapWindowController::showWindow()
{
    QWidget* shown = window();
    shown->show();
    shown->raise();
    shown->activateWindow();
}

void KVRMapWindowController::moveWindowRightBy(const QRect& frame)
{
    // Both rectangles are top-left based here, so "top level with the frame's top" is simply the
    // same y; QRect::right() would be one pixel short of the edge.
    QWidget* moved = window();
    moved->move(frame.x() + frame.width(), frame.y());
    moved->update();
}

void KVRMapWindowController::updateMapLat(double latitude, double longitude)
{
    window();
    m_mapWebView->showPosition(latitude, longitude);
}

} // namespace kavro
