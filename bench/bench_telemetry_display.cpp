// The telemetry display on the main thread while a 60-second simulator recording plays in the
// real window offscreen: the cost of one position update (fields, graph cursor, map call),
// median and worst. Then the viewer's start-up, launched as kavro-viewer: time to the first painted
// window and to the map page's load finished, median of five, against `cvlc --version` timed in
// the same run.

#include "cardgenerator.h"
#include "customwindow.h"
#include "kvrappdelegate.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrplaybackengine.h"
#include "kvrplayinfo.h"
#include "kvrtelemetrydisplay.h"
#include "map/kvrmapview.h"
#include "player/vlcmediaplayer.h"
#include "resources/kavroresources.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

using namespace kavro;

namespace {

constexpr int RecordingSeconds = 60;
constexpr int StartupRuns = 5;
constexpr int WaitMs = 60000;

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

int fail(const char* message)
{
    std::fprintf(stderr, "bench_telemetry_display: %s\n", message);
    return 1;
}

std::optional<QString> makeCard(const QString& folder, QString* fileName)
{
    camsim::CardOptions options = camsim::CardOptions::quick();
    options.outDir = folder;
    options.minutes = 2.5;
    options.secondsPerRecording = RecordingSeconds;
    options.frontSize = QSize(640, 360);
    options.rearSize = QSize(320, 180);
    camsim::CardGenerator generator(options);
    QString error;
    if (!generator.generate(&error))
        return std::nullopt;
    for (const camsim::RecordingPlan& plan : generator.plan().recordings()) {
        if (plan.duration >= RecordingSeconds) {
            *fileName = QFileInfo(generator.plan().relativePath(plan, false)).fileName();
            return folder;
        }
    }
    return std::nullopt;
}

bool waitFor(const std::function<bool()>& done, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

struct StartupTimes
{
    double shownMs = 0;
    double mapMs = 0;
};

// Launches kavro-viewer itself, with preferences of its own, and times the lines it logs when
// its window is first painted and when its map page has loaded.
std::optional<StartupTimes> launchViewerOnce(const QString& configHome)
{
    QProcess viewer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configHome);
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("kavro.app.info=true"));
    viewer.setProcessEnvironment(environment);
    viewer.setProcessChannelMode(QProcess::MergedChannels);
    QElapsedTimer timer;
    timer.start();
    viewer.start(QStringLiteral(KAVRO_VIEWER_PATH), QStringList());
    StartupTimes times;
    QByteArray seen;
    while (times.mapMs == 0 && viewer.waitForReadyRead(WaitMs)) {
        seen += viewer.readAll();
        const double now = double(timer.nsecsElapsed()) / 1e6;
        if (times.shownMs == 0 && seen.contains("window shown"))
            times.shownMs = now;
        if (seen.contains("map page ready"))
            times.mapMs = now;
    }
    viewer.kill();
    viewer.waitForFinished(WaitMs);
    if (times.shownMs == 0 || times.mapMs == 0)
        return std::nullopt;
    return times;
}

double cvlcVersionMs()
{
    QProcess cvlc;
    QElapsedTimer timer;
    timer.start();
    cvlc.start(QStringLiteral("cvlc"), {QStringLiteral("--version")});
    if (!cvlc.waitForFinished(WaitMs) || cvlc.exitStatus() != QProcess::NormalExit)
        return -1;
    return double(timer.nsecsElapsed()) / 1e6;
}

int measureUpdates()
{
    QTemporaryDir dir;
    QString fileName;
    const std::optional<QString> card = makeCard(dir.filePath(QStringLiteral("card")), &fileName);
    if (!card)
        return fail("the simulator could not make a card");

    initImageResources();
    KVRAppDelegate delegate;
    delegate.applicationDidFinishLaunching();
    delegate.window()->show();

    // The display's own reaction, timed in place of the plain one.
    KVRTelemetryDisplay* display = delegate.telemetryDisplay();
    KVRPlayInfo* playInfo = delegate.playInfo();
    QObject::disconnect(playInfo, &KVRPlayInfo::positionChanged, display, nullptr);
    std::vector<double> costs;
    QObject::connect(playInfo, &KVRPlayInfo::positionChanged, display, [&] {
        QElapsedTimer timer;
        timer.start();
        display->updateGsensorUIByPlayPositon();
        display->updateGpsUIByPlayPosition();
        costs.push_back(double(timer.nsecsElapsed()) / 1e3);
    });

    if (!waitFor([&] { return delegate.mapWebView()->isPageReady(); }, WaitMs))
        return fail("the map page did not load");
    bool reloaded = false;
    QObject::connect(&delegate, &KVRAppDelegate::mediaListReloaded, [&] { reloaded = true; });
    delegate.openMediaDirectory(*card);
    if (!waitFor([&] { return reloaded; }, WaitMs))
        return fail("the folder was not listed");
    KVRMediaListTableModel* model = delegate.mediaListModel();
    qint64 row = -1;
    for (int r = 0; r < model->rowCount(); ++r) {
        if (model->index(r, KVRMediaListTableModel::FileColumn).data().toString() == fileName)
            row = r;
    }
    if (row < 0 || !delegate.engine()->playAtIndex(row))
        return fail("the recording did not open");
    if (!waitFor([&] { return delegate.engine()->waitingForPlayStart() == false; }, WaitMs))
        return fail("the recording did not start");
    costs.clear(); // the opening's reset is no playback update
    waitFor([&] { return delegate.player1()->position() >= 0.995f; },
            (RecordingSeconds + 20) * 1000);
    if (costs.empty())
        return fail("no position update during playback");
    std::printf("position updates during %d s of playback: %zu\n", RecordingSeconds, costs.size());
    std::printf("one update (fields, graph cursor, map call): median %.1f us, worst %.1f us\n",
                median(costs), *std::max_element(costs.begin(), costs.end()));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("KAVRO_VLC_ARGS"))
        qputenv("KAVRO_VLC_ARGS", "--aout=dummy");
    if (qEnvironmentVariableIsEmpty("QTWEBENGINE_CHROMIUM_FLAGS"))
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    QStandardPaths::setTestModeEnabled(true);
    QApplication app(argc, argv);
    if (const int status = measureUpdates())
        return status;

    std::vector<double> shown, map, cvlc;
    for (int run = 0; run < StartupRuns; ++run) {
        const QTemporaryDir configHome;
        const std::optional<StartupTimes> times = launchViewerOnce(configHome.path());
        if (!times)
            return fail("the viewer did not start");
        shown.push_back(times->shownMs);
        map.push_back(times->mapMs);
        cvlc.push_back(cvlcVersionMs());
    }
    const double yardstick = median(cvlc);
    std::printf("start-up, median of %d: first shown window %.0f ms, map page loaded %.0f ms\n",
                StartupRuns, median(shown), median(map));
    if (yardstick > 0)
        std::printf("cvlc --version %.0f ms; ratios %.2f and %.2f\n", yardstick,
                    median(shown) / yardstick, median(map) / yardstick);
    return 0;
}
