#pragma once

#include <QWebEnginePage>

class QWebEngineProfile;

namespace kavro {

// The web page that holds the map. It stays on the map: links (the tile attribution) open in the
// user's browser instead of replacing the map, and the page's console goes to our log.
class KVRMapPage : public QWebEnginePage
{
    Q_OBJECT

public:
    explicit KVRMapPage(QObject* parent = nullptr);

    // The profile every map page shares, made on first use and owned by the application: a disk
    // cache of its own, so tiles are fetched once, and a user agent that names the application as
    // the tile servers' usage policy asks.
    static QWebEngineProfile* sharedProfile();
    // "KAVRO-Viewer/<version>".
    static QString userAgent();

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int lineNumber, const QString& sourceID) override;
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
};

} // namespace kavro
