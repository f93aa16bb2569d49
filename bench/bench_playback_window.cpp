// The main window playing a simulated pair, driven as a person drives it: the time from the
// double-click to both pictures against the extraction's one-second wait plus 300 ms, the drift
// between the two pictures read from their time codes in each situation a person looks at them
// (playing at 1x and 2x, paused, after seeks, jumps, resume, swap and play-next), and the window's
// CPU time against two plain libVLC players (plain_players) rendering the same two files into
// memory at the same sizes in the same run.

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
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

#include <sys/resource.h>

using namespace kavro;

namespace {

constexpr int PairSeconds = 60;
constexpr int CpuSeconds = 20;
// Looks at the pictures start this long after an action (1.7 s for the swap).
constexpr int SettleMs = 500;
constexpr int SwapSettleMs = 1700;
// The camera's own sizes.
constexpr QSize FrontSize{1280, 720};
constexpr QSize RearSize{640, 360};
constexpr double TargetStartMs = 1000 + 300; // the extraction's wait plus the allowed rest

struct Pair
{
    QString front;
    QString rear;
};

// The first pair of PairSeconds on the card the options describe.
std::optional<Pair> pairOf(const camsim::CardPlan& plan, const QString& folder)
{
    for (const camsim::RecordingPlan& recording : plan.recordings()) {
        if (recording.hasRear && recording.duration >= PairSeconds)
            return Pair{QDir(folder).filePath(plan.relativePath(recording, false)),
                        QDir(folder).filePath(plan.relativePath(recording, true))};
    }
    std::fprintf(stderr, "bench_playback_window: the card has no %d-second pair\n", PairSeconds);
    return std::nullopt;
}

std::optional<Pair> makeCard(const QString& folder)
{
    camsim::CardOptions options = camsim::CardOptions::quick();
    options.outDir = folder;
    options.minutes = 2.2;
    options.secondsPerRecording = PairSeconds;
    options.frontSize = FrontSize;
    options.rearSize = RearSize;
    camsim::CardGenerator generator(options);
    QString error;
    if (!generator.generate(&error)) {
        std::fprintf(stderr, "bench_playback_window: %s\n", qUtf8Printable(error));
        return std::nullopt;
    }
    return pairOf(generator.plan(), folder);
}

double cpuSecondsOfThisProcess()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Runs the event loop as the viewer runs it (no polling of ours counted as the viewer's CPU)
// for the given time.
void wait(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Runs the event loop until the condition holds or the time is up.
template <typename Condition> bool waitFor(Condition condition, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > ms)
            return false;
        wait(5);
    }
    return true;
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

    // Frame differences between the two pictures, looked at every 100 ms for the given time.
    std::vector<int> drift(int ms)
    {
        std::vector<int> drifts;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < ms) {
            wait(100);
            const auto large = frameNumber(m_delegate->player1());
            const auto small = frameNumber(m_delegate->player2());
            if (large && small)
                drifts.push_back(std::abs(*large - *small));
        }
        return drifts;
    }

    KVRAppDelegate* delegate() const { return m_delegate.get(); }

private:
    // The time code is read at the recording's own size, which lastFrame gives.
    static std::optional<int> frameNumber(const VLCMediaPlayer* player)
    {
        return camsim::TimeCode::read(player->lastFrame());
    }

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

    // A card the simulator made with its defaults (the demo card of scripts/run.sh) saves the
    // minutes of making one.
    QTemporaryDir dir;
    const QString folder =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : dir.filePath(QStringLiteral("card"));
    const std::optional<Pair> pair =
        argc > 1 ? pairOf(camsim::CardPlan(camsim::CardOptions()), folder) : makeCard(folder);
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

    // Drift in each situation, from SettleMs after the action.
    KVRAppDelegate* delegate = bench.delegate();
    KVRPlaybackControls* controls = delegate->controls();
    KVRPlaybackEngine* engine = delegate->engine();
    const auto look = [&bench](const char* label, int settleMs, int ms) {
        wait(settleMs);
        printDrift(label, bench.drift(ms));
    };
    const auto awaitMove = [engine] { waitFor([engine] { return !engine->moving(); }, 5000); };
    if (bench.doubleClickToPictures(row) < 0)
        return 1;
    look("after opening", SettleMs, 2000);
    look("at 1x", 0, 15000);
    controls->clickPlayButton();
    look("paused", SettleMs, 1000);
    controls->videoPositionSliderMoved(0.5);
    look("paused, after a slider seek", SettleMs, 1000);
    awaitMove();
    controls->jumpForward();
    look("paused, after a 10 s jump", SettleMs, 1000);
    awaitMove();
    controls->clickPlayButton();
    look("after resume", SettleMs, 2000);
    controls->videoPositionSliderMoved(0.3);
    look("playing, after a slider seek", SettleMs, 2000);
    awaitMove();
    controls->jumpForward();
    look("playing, after a 10 s jump", SettleMs, 2000);
    awaitMove();
    engine->swapPlayer();
    look("after swap", SwapSettleMs, 2000);
    engine->swapPlayer();
    waitFor([engine] { return !engine->swapping(); }, 5000);
    controls->increaseSpeed();
    look("at 2x", SettleMs, 10000);
    controls->decreaseSpeed();
    // Near the end, and on to the next row by itself.
    awaitMove();
    controls->videoPositionSliderMoved(0.95);
    const qint64 opened = engine->mediaIndex();
    if (!waitFor(
            [engine, opened] {
                return engine->mediaIndex() != opened && !engine->waitingForPlayStart();
            },
            30000)) {
        std::fprintf(stderr, "bench_playback_window: play-next never came\n");
        return 1;
    }
    if (!delegate->player2()->media().isNull())
        look("after play-next", SettleMs, 2000);

    // CPU: the window playing the pair against two plain players of the same files and sizes.
    if (bench.doubleClickToPictures(row) < 0)
        return 1;
    const double before = cpuSecondsOfThisProcess();
    wait(CpuSeconds * 1000);
    const double viewerCpu = cpuSecondsOfThisProcess() - before;
    const QSize size1 = delegate->player1()->renderedSize();
    const QSize size2 = delegate->player2()->renderedSize();
    engine->stopPlay();
    const QString reference =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("plain_players"));
    QProcess plain;
    plain.start(reference,
                {QString::number(CpuSeconds), pair->front, QString::number(size1.width()),
                 QString::number(size1.height()), pair->rear, QString::number(size2.width()),
                 QString::number(size2.height())});
    if (!plain.waitForFinished((CpuSeconds + 30) * 1000) || plain.exitCode() != 0) {
        std::printf("viewer CPU: %.2f s per %d s of playback (plain_players failed: %s)\n",
                    viewerCpu, CpuSeconds, plain.readAllStandardError().constData());
        return 1;
    }
    const double referenceCpu = plain.readAllStandardOutput().trimmed().toDouble();
    std::printf("CPU over %d s: viewer %.2f s, two plain libVLC players into memory at %dx%d "
                "and %dx%d %.2f s, ratio %.2fx\n",
                CpuSeconds, viewerCpu, size1.width(), size1.height(), size2.width(), size2.height(),
                referenceCpu, referenceCpu > 0 ? viewerCpu / referenceCpu : 0.0);
    return 0;
}
