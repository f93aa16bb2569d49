#include "widgets/pmprogressindicator.h"
#include "widgets/pmtaskbarprogress.h"

#include <QDBusConnection>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QVariantMap>

using kavro::PMProgressIndicator;
using kavro::PMTaskbarProgress;

namespace {

struct Update
{
    QString uri;
    double progress = -1;
    bool visible = false;
};

} // namespace

// Listens on a private session bus, as a dock would.
class TestPMTaskbarProgress : public QObject
{
    Q_OBJECT

public slots:
    void onUpdate(const QString& uri, const QVariantMap& properties)
    {
        m_updates.append({uri, properties.value(QStringLiteral("progress")).toDouble(),
                          properties.value(QStringLiteral("progress-visible")).toBool()});
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
        QTRY_COMPARE(m_updates.size(), 1);
        QCOMPARE(m_updates[0].uri, QStringLiteral("application://kavro-test.desktop"));
        QCOMPARE(m_updates[0].progress, 0.5);
        QVERIFY(m_updates[0].visible);

        progress.setProgress(0.5);
        progress.setProgress(7.0);     // clamped to 1
        progress.setProgress(qQNaN()); // counts as 0
        progress.setProgressVisible(false);
        progress.setProgress(0.9); // hidden: the value does not matter to the dock
        QTRY_COMPARE(m_updates.size(), 4);
        QTest::qWait(100);
        QCOMPARE(m_updates.size(), 4);
        QCOMPARE(m_updates[1].progress, 1.0);
        QCOMPARE(m_updates[2].progress, 0.0);
        QVERIFY(!m_updates[3].visible);
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
        QTRY_VERIFY(!m_updates.isEmpty() && !m_updates.last().visible);
        QCOMPARE(m_updates.first().progress, 0.0);
        QVERIFY(m_updates.first().visible);
        QList<double> shown;
        for (const Update& update : std::as_const(m_updates)) {
            if (update.visible)
                shown.append(update.progress);
        }
        QCOMPARE(shown, (QList<double>{0.0, 0.02, 0.04, 0.06}));

        // Dropping the dock progress while shown clears the dock's bar.
        indicator.show();
        indicator.startAnimation();
        QTRY_VERIFY(m_updates.last().visible);
        indicator.setShowsTaskbarProgress(false);
        QTRY_VERIFY(!m_updates.last().visible);
    }

private:
    QProcess m_daemon;
    QList<Update> m_updates;
};

QTEST_MAIN(TestPMTaskbarProgress)
#include "tst_pmtaskbarprogress.moc"
