#pragma once

#include <QObject>
#include <QRect>

#include <memory>

class QWidget;

namespace kavro {

class KVRMapView;

// A small window of its own showing one position on the map, placed beside the window that
// opened it. The window is made on first use and lives as long as the controller.
class KVRMapWindowController : public QObject
{
    Q_OBJECT

public:
    static constexpr QSize DefaultWindowSize{420, 420};

    explicit KVRMapWindowController(QObject* parent = nullptr);
    ~KVRMapWindowController() override;

    // The window, made and loaded (windowDidLoad) on first use.
    QWidget* window();
    bool isWindowLoaded() const { return m_window != nullptr; }
    KVRMapView* mapWebView() const { return m_mapWebView; }

    // Shows the window and brings it to the front.
    void showWindow();
    // Puts the window's left edge at the right edge of frame and its top level with frame's top
    // (frame: another window's frameGeometry), keeping its size.
    void moveWindowRightBy(const QRect& frame);
    // Marks the position (decimal degrees) on the map; waits for the page if it is still loading.
    void updateMapLat(double latitude, double longitude);

protected:
    // Called once the window has been made: logs its frame and loads the map page.
    virtual void windowDidLoad();

private:
    std::unique_ptr<QWidget> m_window;
    KVRMapView* m_mapWebView = nullptr;
};

} // namespace kavro
