#include "map/kvrmapview.h"

#include "common/jsonwriter.h"
#include "map/kvrmappage.h"
#include "map/maplog.h"
#include "resources/map/mappageresources.h"

#include <QUrlQuery>

#include <cmath>

namespace kavro {

namespace {

// Calls kept while the page loads. Positions and routes replace their predecessor, so only
// other calls count here; beyond this the oldest go, so a page that never loads costs nothing.
constexpr qsizetype MaxPendingCalls = 256;
// A renderer that keeps dying is not restarted for ever.
constexpr int MaxRendererRestarts = 3;

// Six decimals and a point whatever the locale, as "%lf" gives in the C locale.
QString degreesText(double degrees)
{
    return QString::number(degrees, 'f', 6);
}

// A text as a JavaScript string literal (JSON's quoting is valid JavaScript).
QString scriptString(const QString& text)
{
    JsonWriter json(false);
    json.value(text);
    return QString::fromUtf8(json.take()).trimmed();
}

} // namespace

KVRMapView::KVRMapView(QWidget* parent) : QWebEngineView(parent), m_reloadsLeft(MaxRendererRestarts)
{
    initMapPageResources();
    setPage(new KVRMapPage(this));
    setContextMenuPolicy(Qt::NoContextMenu);
    connect(this, &QWebEngineView::loadStarted, this, &KVRMapView::onLoadStarted);
    connect(this, &QWebEngineView::loadFinished, this, &KVRMapView::onLoadFinished);
    connect(this, &QWebEngineView::renderProcessTerminated, this,
            &KVRMapView::onRenderProcessTerminated);
}

QString KVRMapView::pageName(const QString& languageWord)
{
    return languageWord == QLatin1String("en") ? QStringLiteral("map2")
                                               : QStringLiteral("map2_eng");
}

QUrl KVRMapView::pageUrl()
{
    return QUrl(
        QStringLiteral("qrc:/map/%1.htm").arg(pageName(QStringLiteral(KAVRO_MAP_LANGUAGE))));
}

void KVRMapView::setTileUrlTemplate(const QString& urlTemplate)
{
    m_tileUrlTemplate = urlTemplate;
}

void KVRMapView::loadMapPage()
{
    QUrl url = pageUrl();
    if (m_tileUrlTemplate != QLatin1String(DefaultTileUrlTemplate)) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("tiles"), m_tileUrlTemplate);
        url.setQuery(query);
    }
    qCDebug(lcMap) << "loading" << url;
    load(url);
}

void KVRMapView::evaluateWebScript(const QString& script)
{
    if (m_ready) {
        run(script);
        return;
    }
    // The same call again (the no-GPS note comes at every play-position change) adds nothing.
    if (!m_pending.isEmpty() && m_pending.last() == script)
        return;
    if (m_pending.size() >= MaxPendingCalls) {
        qCDebug(lcMap) << "page not ready; dropping" << m_pending.first().left(60);
        m_pending.removeFirst();
    }
    m_pending.append(script);
}

void KVRMapView::showPosition(double latitude, double longitude)
{
    m_positionScript = setLatLagScript(latitude, longitude);
    if (m_ready)
        run(m_positionScript);
}

void KVRMapView::clearPosition()
{
    // Kept like a position, so that a page loaded again has no mark either.
    m_positionScript = QStringLiteral("clearPosition()");
    if (m_ready)
        run(m_positionScript);
}

void KVRMapView::showNoGpsData()
{
    evaluateWebScript(noGpsDataScript());
}

void KVRMapView::setRoute(const std::vector<RoutePoint>& points)
{
    m_routeScript = routeScript(points);
    if (m_ready)
        run(m_routeScript);
}

QString KVRMapView::setLatLagScript(double latitude, double longitude)
{
    // The page takes the longitude first.
    return QStringLiteral("setLatLag('%1','%2')")
        .arg(degreesText(longitude), degreesText(latitude));
}

QString KVRMapView::noGpsDataScript()
{
    return QStringLiteral("KVRDebug('GPS Data Count=Zero')");
}

QString KVRMapView::routeScript(const std::vector<RoutePoint>& points)
{
    JsonWriter json(false);
    json.beginArray(JsonWriter::Layout::Inline);
    for (const RoutePoint& point : points) {
        if (!std::isfinite(point.latitude) || !std::isfinite(point.longitude))
            continue;
        json.beginArray(JsonWriter::Layout::Inline);
        json.value(point.latitude);
        json.value(point.longitude);
        json.endArray();
    }
    json.endArray();
    return QStringLiteral("setRoute(%1)").arg(QString::fromUtf8(json.take()).trimmed());
}

void KVRMapView::onLoadStarted()
{
    m_ready = false;
}

void KVRMapView::onLoadFinished(bool ok)
{
    if (!ok) {
        qCWarning(lcMap) << "map page failed to load:" << url();
        return;
    }
    m_ready = true;
    //% "Map offline"
    run(QStringLiteral("setOfflineText(%1)").arg(scriptString(qtTrId("map.offline"))));
    if (!m_routeScript.isEmpty())
        run(m_routeScript);
    if (!m_positionScript.isEmpty())
        run(m_positionScript);
    const QStringList pending = std::exchange(m_pending, {});
    for (const QString& script : pending)
        run(script);
    emit pageReady();
}

void KVRMapView::onRenderProcessTerminated()
{
    m_ready = false;
    if (m_reloadsLeft <= 0) {
        qCWarning(lcMap) << "map renderer ended again; the map stays empty";
        return;
    }
    --m_reloadsLeft;
    qCWarning(lcMap) << "map renderer ended; loading the page again";
    loadMapPage();
}

void KVRMapView::run(const QString& script)
{
    page()->runJavaScript(script);
}

} // namespace kavro
