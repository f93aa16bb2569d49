#include "widgets/pmtaskbarprogress.h"

#include "widgets/widgetslog.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

#ifdef KAVRO_HAVE_DBUS
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantMap>
#endif

namespace kavro {

namespace {

const char launcherPath[] = "/com/kavro/viewer/launcherentry";
const char launcherInterface[] = "com.canonical.Unity.LauncherEntry";

QString defaultApplicationUri()
{
    QString desktopFile = QGuiApplication::desktopFileName();
    if (desktopFile.isEmpty())
        desktopFile = QStringLiteral("kavro-viewer");
    if (!desktopFile.endsWith(QLatin1String(".desktop")))
        desktopFile += QLatin1String(".desktop");
    return QStringLiteral("application://") + desktopFile;
}

} // namespace

PMTaskbarProgress::PMTaskbarProgress(QObject* parent)
    : QObject(parent), m_applicationUri(defaultApplicationUri())
{
}

PMTaskbarProgress::~PMTaskbarProgress()
{
    // Leave no stale bar on the dock once nobody drives it.
    setProgressVisible(false);
}

bool PMTaskbarProgress::isSupported()
{
#ifdef KAVRO_HAVE_DBUS
    return true;
#else
    return false;
#endif
}

void PMTaskbarProgress::setProgress(double fraction)
{
    m_progress = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    publish();
}

void PMTaskbarProgress::setProgressVisible(bool visible)
{
    m_visible = visible;
    publish();
}

void PMTaskbarProgress::publish()
{
    // A hidden bar's value does not matter to the dock; only its disappearance does.
    if (m_published && m_visible == m_publishedVisible &&
        (!m_visible || m_progress == m_publishedProgress))
        return;
    if (!m_published && !m_visible)
        return;
#ifdef KAVRO_HAVE_DBUS
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage update = QDBusMessage::createSignal(
        QLatin1String(launcherPath), QLatin1String(launcherInterface), QStringLiteral("Update"));
    update << m_applicationUri
           << QVariantMap{{QStringLiteral("progress"), m_progress},
                          {QStringLiteral("progress-visible"), m_visible}};
    if (!bus.send(update)) {
        qCDebug(lcWidgets) << "taskbar progress not sent:" << bus.lastError().message();
        return;
    }
#endif
    m_published = true;
    m_publishedProgress = m_progress;
    m_publishedVisible = m_visible;
}

} // namespace kavro
