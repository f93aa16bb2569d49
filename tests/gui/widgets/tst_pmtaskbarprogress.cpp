#include "widgets/pmprogressindicator.h"
#include "widgets/pmtaskbarprogress.h"

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QVariantMap>

using kavro::PMProgressIndicator;
using kavro::PMTaskbarProgress;

// Listens on a private session bus, as a dock would.
class TestPMTaskbarProgress : public QObject
{
    Q_OBJECT

public slots:
    void onUpdate(const QString& uri, const QVariantMap& properties)
    {
        m_uri = uri;
        m_updates.append(QStringLiteral("%1 %2")
                             .arg(properties.value(QStringLiteral("progress")).toDouble())
                             .arg(properties.value(QStringLiteral("progress-visible")).toBool()
                                      ? "shown"
                                      : "hidden"));
    }

private slots:
    void initTestCase()
    {
        if (!PMTaskbarProgress::isSupported())
            QSKIP("built without QtDBus: the window's own indicator is all there is");
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        QVERIFY2(!daemon.isEmpty(), "dbus-daemon is not installed (Debian package dbus-daemon)");
        m_daemon.setProgram(daemon);
        m_daemon.setArguments({QStringLiteral("--session"), QStringLiteral("--nofork"),
                               QStringLiteral("--print-address=1")});
        m_daemon.start();
        QVERIFY(m_daemon.waitForStarted());
        QTRY_VERIFY(m_daemon.canReadLine());
        const QString address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        QVERIFY(!address.isEmpty());
        // The code under test uses the session bus; make it this private one before first use.
        qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
        QDBusConnection dock = QDBusConnection::connectToBus(address, QStringLiteral("dock"));
        QVERIFY(dock.isConnected());
        QVERIFY(dock.connect({}, {}, QStringLiteral("com.canonical.Unity.LauncherEntry"),
                             QStringLiteral("Update"), this, SLOT(onUpdate(QString, QVariantMap))));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("dock"));
        if (m_daemon.state() != QProcess::NotRunning) {
            m_daemon.terminate();
            m_daemon.waitForFinished();
        }
    }

    void init() { m_updates.clear(); }

    void sendsChangesOnly()
    {
        PMTaskbarProgress progress;
        progress.setApplicationUri(QStringLiteral("application://kavro-test.desktop"));
        progress.setProgress(0.5); // not shown yet: nothing for the dock
        progress.setProgressVisible(true);
        QTRY_COMPARE(m_updates, QStringList{"0.5 shown"});
        QCOMPARE(m_uri, QStringLiteral("application://kavro-test.desktop"));

        progress.setProgress(0.5);
        progress.setProgress(7.0);     // clamped to 1
        progress.setProgress(qQNaN()); // counts as 0
        progress.setProgressVisible(false);
        progress.setProgress(0.9); // hidden: the value does not matter to the dock
        const QStringList sent = {"0.5 shown", "1 shown", "0 shown", "0 hidden"};
        QTRY_COMPARE(m_updates, sent);
        QTest::qWait(100);
        QCOMPARE(m_updates, sent);
    }

    void loadingIndicatorDrivesTheDock()
    {
        // The main window's loading sequence: shown indeterminate, ticked up, then hidden.
        QWidget window;
        PMProgressIndicator indicator(&window);
        indicator.setShowsTaskbarProgress(true);
        indicator.hide();
        window.show();
        indicator.setDoubleValue(0);
        indicator.show();
        indicator.startAnimation();
        for (double value : {2.0, 4.0, 6.0})
            indicator.setDoubleValue(value);
        indicator.stopAnimation();
        indicator.hide();
        QTRY_COMPARE(m_updates, (QStringList{"0 shown", "0.02 shown", "0.04 shown", "0.06 shown",
                                             "0.06 hidden"}));

        // Dropping the dock progress while shown clears the dock's bar.
        indicator.show();
        indicator.startAnimation();
        QTRY_VERIFY(m_updates.last().endsWith("shown"));
        indicator.setShowsTaskbarProgress(false);
        QTRY_VERIFY(m_updates.last().endsWith("hidden"));
    }

private:
    QProcess m_daemon;
    QString m_uri;
    QStringList m_updates; // "PROGRESS shown|hidden"
};

QTEST_MAIN(TestPMTaskbarProgress)
#include "tst_pmtaskbarprogress.moc"
