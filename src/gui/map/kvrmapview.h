#pragma once

#include "telemetry/telemetryexport.h"

#include <QStringList>
#include <QUrl>
#include <QWebEngineView>

#include <vector>

namespace kavro {

// A web view showing the map page, and the bridge the application talks to it through: each call
// is a short script run in the page. Calls made before the page has loaded wait for it: the
// position and the route keep only their latest value (each one replaces the last), other
// calls keep their order (a call repeating the one just before it is kept once). The latest
// position and route are sent again whenever the page loads anew, so a reload shows what was
// shown before.
class KVRMapView : public QWebEngineView
{
    Q_OBJECT

public:
    // The tile source of the page when none is set: OpenStreetMap's standard tile server.
    static constexpr char DefaultTileUrlTemplate[] =
        "https://tile.openstreetmap.org/{z}/{x}/{y}.png";

    explicit KVRMapView(QWidget* parent = nullptr);

    // The page's resource name for a build's map-language word: "map2" for "en", else
    // "map2_eng".
    static QString pageName(const QString& languageWord);
    // This build's page in the application's resources.
    static QUrl pageUrl();

    // A tile server URL template ({z}, {x}, {y}) for the next loadMapPage.
    void setTileUrlTemplate(const QString& urlTemplate);
    QString tileUrlTemplate() const { return m_tileUrlTemplate; }

    // Loads the page; returns before it is ready (see pageReady).
    void loadMapPage();
    bool isPageReady() const { return m_ready; }

    // Runs a script in the page now, or once the page has loaded.
    void evaluateWebScript(const QString& script);
    // Marks the position (decimal degrees, south and west negative) and keeps it in view.
    void showPosition(double latitude, double longitude);
    // Takes the position mark away: no recording is shown.
    void clearPosition();
    // Tells the page that the recording has no GPS records.
    void showNoGpsData();
    // Draws the recording's route; an empty list removes it.
    void setRoute(const std::vector<RoutePoint>& points);

    // The scripts, as the page receives them.
    static QString setLatLagScript(double latitude, double longitude);
    static QString noGpsDataScript();
    static QString routeScript(const std::vector<RoutePoint>& points);

signals:
    // The page has loaded and received every call made meanwhile.
    void pageReady();

private:
    void onLoadStarted();
    void onLoadFinished(bool ok);
    void onRenderProcessTerminated();
    void run(const QString& script);

    QString m_tileUrlTemplate = QLatin1String(DefaultTileUrlTemplate);
    QString m_positionScript;
    QString m_routeScript;
    QStringList m_pending;
    bool m_ready = false;
    int m_reloadsLeft;
};

} // namespace kavro
