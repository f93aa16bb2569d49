#include "map/kvrmappage.h"

#include "map/maplog.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QWebEngineProfile>

namespace kavro {

namespace {

constexpr char ProfileName[] = "kavro-map";

} // namespace

KVRMapPage::KVRMapPage(QObject* parent) : QWebEnginePage(sharedProfile(), parent) {}

QWebEngineProfile* KVRMapPage::sharedProfile()
{
    static QWebEngineProfile* profile = [] {
        auto* made =
            new QWebEngineProfile(QLatin1String(ProfileName), QCoreApplication::instance());
        made->setHttpUserAgent(userAgent());
        made->setHttpCacheType(QWebEngineProfile::DiskHttpCache);
        made->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
        return made;
    }();
    return profile;
}

QString KVRMapPage::userAgent()
{
    QString version = QCoreApplication::applicationVersion();
    if (version.isEmpty())
        version = QStringLiteral(KAVRO_VERSION);
    return QStringLiteral("KAVRO-Viewer/") + version;
}

void KVRMapPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
                                          const QString& message, int lineNumber,
                                          const QString& sourceID)
{
    if (level == ErrorMessageLevel)
        qCWarning(lcMap).noquote() << sourceID << lineNumber << message;
    else
        qCDebug(lcMap).noquote() << sourceID << lineNumber << message;
}

bool KVRMapPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (url.scheme() == QLatin1String("qrc"))
        return true;
    if (type == NavigationTypeLinkClicked &&
        (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http")))
        QDesktopServices::openUrl(url);
    else
        qCDebug(lcMap) << "navigation refused" << url << isMainFrame;
    return false;
}

} // namespace kavro
