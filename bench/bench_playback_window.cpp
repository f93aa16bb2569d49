// The main window playing a simulated pair, driven as a person drives it: the time from the
// double-click to both pictures against the extraction's one-second wait plus 300 ms, the drift
// between the two pictures read from their time codes at 1x and 2x, and the window's CPU time
// against two cvlc processes decoding the same two files in the same run.

#include "cardgenerator.h"
#include "customwindow.h"
#include "kvrappdelegate.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrplaybackcontrols.h"
#include "kvrplaybackengine.h"
#include "player/vlcmediaplayer.h"
#include "player/vlcvideoview.h"
#include "resources/kavroresources.h"
#include "timecode.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

using namespace kavro;

namespace {

constexpr int PairSeconds = 60;
constexpr int CpuSeconds = 20;
constexpr double TargetStartMs = 1000 + 300; // the extraction's wait plus the allowed rest

struct Pair
{
    QString front;
    QString rear;
};

std::optional<Pair> makeCard(const QString& folder)
{
    camsim::CardOptions options = camsim::CardOptions::quick();
    options.outDir = folder;
    options.minutes = 2.5;
    options.secondsPerRecording = PairSeconds;
    options.frontSize = QSize(640, 360);
    options.rearSize = QSize(320, 180);
    camsim::CardGenerator generator(options);
    QString error;
    if (!generator.generate(&error)) {
        std::fprintf(stderr, "bench_playback_window: %s\n", qUtf8Printable(error));
        return std::nullopt;
    }
    for (const camsim::RecordingPlan& plan : generator.plan().recordings()) {
        if (plan.hasRear && plan.duration >= PairSeconds)
            return Pair{QDir(folder).filePath(generator.plan().relativePath(plan, false)),
                        QDir(folder).filePath(generator.plan().relativePath(plan, true))};
    }
    std::fprintf(stderr, "bench_playback_window: the card has no %d-second pair\n", PairSeconds);
    return std::nullopt;
}

double cpuSecondsOfThisProcess()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double cpuSecondsOfProcess(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = stat.readAll();
    // Fields after the command name, which ends with the last ')'.
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (fields.size() < 13)
        return 0;
    return (fields[11].toDouble() + fields[12].toDouble()) / double(sysconf(_SC_CLK_TCK));
}

// Runs the event loop until the condition holds or the time is up.
template <typename Condition> bool waitFor(Condition condition, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
    return true;
}

void wait(int ms)
{
    waitFor([] { return false; }, ms);
}

void sendMouse(QWidget* widget, QEvent::Type type, const QPoint& at)
{
    const Qt::MouseButtons buttons =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton, buttons, {});
    QCoreApplication::sendEvent(widget, &event);
}

class Bench
{
public:
    Bench()
    {
        initImageResources();
        m_delegate = std::make_unique<KVRAppDelegate>();
        m_delegate->applicationDidFinishLaunching();
        m_delegate->window()->show();
    }

    bool open(const QString& folder)
    {
        bool reloaded = false;
        QObject::connect(
            m_delegate.get(), &KVRAppDelegate::mediaListReloaded, m_delegate.get(),
            [&reloaded] { reloaded = true; }, Qt::SingleShotConnection);
        m_delegate->openMediaDirectory(folder);
        return waitFor([&reloaded] { return reloaded; }, 30000);
    }

    int rowOf(const QString& path) const
    {
        const QString name = QFileInfo(path).fileName();
        KVRMediaListTableModel* model = m_delegate->mediaListModel();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->mediaAtIndex(row)->fileName() == name)
                return row;
        }
        return -1;
    }

    // Milliseconds from the double-click to a picture of the new recording in both views.
    double doubleClickToPictures(int row)
    {
        KVRMediaListTableView* table = m_delegate->ui().mediaListTableView;
        const QModelIndex index = table->model()->index(row, 3);
        table->scrollTo(index);
        const QPoint at = table->visualRect(index).center();
        QWidget* viewport = table->viewport();
        sendMouse(viewport, QEvent::MouseButtonPress, at);
        sendMouse(viewport, QEvent::MouseButtonRelease, at);
        // Frames of the recording before must not count.
        int frames1 = 0;
        int frames2 = 0;
        QObject context;
        QObject::connect(m_delegate->player1(), &VLCMediaPlayer::frameReady, &context,
                         [&frames1] { ++frames1; });
        QObject::connect(m_delegate->player2(), &VLCMediaPlayer::frameReady, &context,
                         [&frames2] { ++frames2; });
        QElapsedTimer clock;
        clock.start();
        sendMouse(viewport, QEvent::MouseButtonDblClick, at);
        sendMouse(viewport, QEvent::MouseButtonRelease, at);
        const bool shown = waitFor(
            [&] {
                return !m_delegate->engine()->waitingForPlayStart() &&
                       m_delegate->video1View()->isVisible() &&
                       m_delegate->video2View()->isVisible() &&
                       !m_delegate->video1View()->lastFrame().isNull() &&
                       !m_delegate->video2View()->lastFrame().isNull() && frames1 > 0 &&
                       frames2 > 0;
            },
            30000);
        return shown ? double(clock.elapsed()) : -1;
    }

    // Frame differences between the two pictures, sampled while the pair plays.
    std::vector<int> drift(int seconds)
    {
        std::vector<int> drifts;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < seconds * 1000) {
            wait(200);
            const auto large = camsim::TimeCode::read(m_delegate->video1View()->lastFrame());
            const auto small = camsim::TimeCode::read(m_delegate->video2View()->lastFrame());
            if (large && small)
                drifts.push_back(std::abs(*large - *small));
        }
        return drifts;
    }

    KVRAppDelegate* delegate() const { return m_delegate.get(); }

private:
    std::unique_ptr<KVRAppDelegate> m_delegate;
};

void printDrift(const char* label, std::vector<int> drifts)
{
    if (drifts.empty()) {
        std::printf("drift %s: no readable time codes\n", label);
        return;
    }
    std::sort(drifts.begin(), drifts.end());
    std::printf("drift %s: median %d frames, worst %d frames over %zu looks\n", label,
                drifts[drifts.size() / 2], drifts.back(), drifts.size());
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("KAVRO_VLC_ARGS"))
        qputenv("KAVRO_VLC_ARGS", "--aout=dummy");
    qputenv("QT_LOGGING_RULES", "kavro.*.debug=false;kavro.*.info=false");
    QApplication app(argc, argv);

    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("card"));
    const std::optional<Pair> pair = makeCard(folder);
    if (!pair)
        return 1;

    Bench bench;
    if (!bench.open(folder))
        return 1;
    const int row = bench.rowOf(pair->front);

    // The start, a few times over; other rows in between so that each start is a new opening.
    std::vector<double> starts;
    for (int run = 0; run < 5; ++run) {
        const double ms = bench.doubleClickToPictures(run % 2 == 0 ? row : row + 1);
        if (ms < 0) {
            std::fprintf(stderr, "bench_playback_window: the pictures never showed\n");
            return 1;
        }
        starts.push_back(ms);
        wait(500);
    }
    std::sort(starts.begin(), starts.end());
    const double start = starts[starts.size() / 2];
    std::printf("double-click to both pictures: median %.0f ms (%.0f..%.0f), %.2fx of the "
                "1 s wait + 300 ms target\n",
                start, starts.front(), starts.back(), start / TargetStartMs);

    // Drift over the whole pair at 1x, then at 2x.
    if (bench.doubleClickToPictures(row) < 0)
        return 1;
    printDrift("at 1x", bench.drift(PairSeconds - 2));
    if (bench.doubleClickToPictures(row) < 0)
        return 1;
    bench.delegate()->controls()->increaseSpeed();
    printDrift("at 2x", bench.drift(PairSeconds / 2 - 2));

    // CPU: the window playing the pair against two cvlc processes decoding the same files.
    if (bench.doubleClickToPictures(row) < 0)
        return 1;
    const double before = cpuSecondsOfThisProcess();
    wait(CpuSeconds * 1000);
    const double viewerCpu = cpuSecondsOfThisProcess() - before;
    bench.delegate()->engine()->stopPlay();

    const QString cvlc = QStandardPaths::findExecutable(QStringLiteral("cvlc"));
    if (cvlc.isEmpty()) {
        std::printf("viewer CPU: %.2f s per %d s of playback (cvlc not installed, no ratio)\n",
                    viewerCpu, CpuSeconds);
        return 0;
    }
    double referenceCpu = 0;
    std::vector<std::unique_ptr<QProcess>> players;
    // VLC refuses to run as root; a machine's CI may well be root, so it runs as nobody there.
    const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
    const bool asNobody = geteuid() == 0 && !setpriv.isEmpty();
    if (asNobody) {
        for (const QString& path :
             {dir.path(), folder, QFileInfo(pair->front).path(), QFileInfo(pair->rear).path()})
            QFile::setPermissions(path,
                                  QFile::permissions(path) | QFile::ReadOther | QFile::ExeOther);
    }
    for (const QString& file : {pair->front, pair->rear}) {
        auto process = std::make_unique<QProcess>();
        const QStringList arguments{"--intf",
                                    "dummy",
                                    "--vout",
                                    "dummy",
                                    "--aout",
                                    "dummy",
                                    "--no-video-title-show",
                                    "--play-and-exit",
                                    file};
        if (asNobody)
            process->start(setpriv,
                           QStringList{"--reuid=65534", "--regid=65534", "--clear-groups", cvlc} +
                               arguments);
        else
            process->start(cvlc, arguments);
        process->waitForStarted();
        players.push_back(std::move(process));
    }
    wait(CpuSeconds * 1000);
    for (auto& process : players) {
        referenceCpu += cpuSecondsOfProcess(process->processId());
        process->kill();
        process->waitForFinished();
    }
    std::printf("CPU over %d s: viewer %.2f s, two cvlc with dummy video output %.2f s, "
                "ratio %.2fx\n",
                CpuSeconds, viewerCpu, referenceCpu,
                referenceCpu > 0 ? viewerCpu / referenceCpu : 0.0);
    return 0;
}
