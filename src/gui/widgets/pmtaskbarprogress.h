#pragma once

#include <QObject>
#include <QString>

namespace kavro {

// The progress shown on the application's entry in the desktop's dock or task bar. Linux docks
// that have one listen for the LauncherEntry "Update" signal on the session bus; elsewhere, or
// without a session bus, this does nothing and the window's own indicator is all the user sees.
// Sends only changes.
class PMTaskbarProgress : public QObject
{
    Q_OBJECT

public:
    explicit PMTaskbarProgress(QObject* parent = nullptr);
    ~PMTaskbarProgress() override;

    // Whether this build can talk to a dock at all.
    static bool isSupported();

    // The dock entry: "application://<desktop file>"; by default the application's desktop
    // file name, or "kavro-viewer.desktop" when it has none.
    QString applicationUri() const { return m_applicationUri; }
    void setApplicationUri(const QString& uri) { m_applicationUri = uri; }

    double progress() const { return m_progress; }
    // 0 to 1; values outside are clamped, NaN counts as 0.
    void setProgress(double fraction);
    bool isProgressVisible() const { return m_visible; }
    void setProgressVisible(bool visible);

private:
    void publish();

    QString m_applicationUri;
    double m_progress = 0;
    bool m_visible = false;
    bool m_published = false;
    double m_publishedProgress = -1;
    bool m_publishedVisible = false;
};

} // namespace kavro
