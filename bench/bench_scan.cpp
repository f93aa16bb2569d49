// Folder scan against `find DIR -iname '*.avi' | sort` on the same tree: 15000 empty recordings
// nested by day and hour, as a full card holds them. Prints both medians and their ratio.

#include "recording/kvrmedialist.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

using namespace kavro;

namespace {

constexpr int Recordings = 15000;
constexpr int Runs = 15;

// Front and rear files of one-minute recordings, 60 per hour folder, in rotating modes.
bool makeCard(const QString& root)
{
    static const char* const Prefixes[] = {"alwa_", "motion_", "event_"};
    int written = 0;
    for (int moment = 0; written < Recordings; ++moment) {
        int day = 1 + moment / (24 * 60);
        int hour = moment / 60 % 24;
        int minute = moment % 60;
        QString folder = QStringLiteral("%1/202403%2/%3")
                             .arg(root)
                             .arg(day, 2, 10, QChar('0'))
                             .arg(hour, 2, 10, QChar('0'));
        if (minute == 0 && !QDir().mkpath(folder))
            return false;
        for (const char* channel : {"F", "R"}) {
            QString name = QString::asprintf("%s202403%02d_%02d%02d00_%s.avi", Prefixes[moment % 3],
                                             day, hour, minute, channel);
            QFile file(folder + u'/' + name);
            if (!file.open(QIODevice::WriteOnly))
                return false;
            ++written;
        }
    }
    return true;
}

double milliseconds(const std::function<bool()>& run)
{
    QElapsedTimer timer;
    timer.start();
    return run() ? timer.nsecsElapsed() / 1e6 : -1;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    // The tree alone, for the whole-process benchmarks of bench/wholeprocess.sh.
    if (argc == 3 && std::strcmp(argv[1], "--write") == 0)
        return makeCard(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
    QTemporaryDir root;
    if (!root.isValid() || !makeCard(root.path())) {
        std::fprintf(stderr, "bench_scan: cannot create the test tree\n");
        return 2;
    }

    qsizetype rows = 0;
    auto scanRun = [&] {
        KVRMediaList list;
        list.setDirectoryPathAndWait(root.path());
        rows = list.count();
        return rows > 0;
    };
    auto findRun = [&] {
        QProcess shell;
        shell.setStandardOutputFile(QProcess::nullDevice());
        shell.start("/bin/sh", {"-c", "find \"$0\" -iname '*.avi' | sort", root.path()});
        return shell.waitForFinished(-1) && shell.exitCode() == 0;
    };
    // One warm-up each, then alternate, so that a busy machine slows both sides alike.
    std::vector<double> scanTimes;
    std::vector<double> findTimes;
    for (int i = 0; i <= Runs; ++i) {
        double scan = milliseconds(scanRun);
        double find = milliseconds(findRun);
        if (scan < 0 || find < 0) {
            std::fprintf(stderr, "bench_scan: a run failed\n");
            return 2;
        }
        if (i > 0) {
            scanTimes.push_back(scan);
            findTimes.push_back(find);
        }
    }
    const double scan = median(scanTimes);
    const double find = median(findTimes);
    std::printf("recordings listed: %lld of %d\n", static_cast<long long>(rows), Recordings);
    std::printf("scan: %.2f ms (median of %d)\n", scan, Runs);
    std::printf("find | sort: %.2f ms (median of %d)\n", find, Runs);
    std::printf("scan/find ratio: %.2f\n", scan / find);
    return 0;
}
