// Telemetry extraction against two references measured in the same run: ffmpeg copying the
// telemetry stream of the same file, and a minimal reader that only reads the index and the
// telemetry chunks. Also prints the peak memory growth and the bytes read by one extraction,
// each measured in a fresh process.

#include "qtbridge/qtbridge.h"
#include "telemetry/aviformat.h"
#include "telemetry/kvraviwriter.h"
#include "telemetry/kvrblackboxdata.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

#include <unistd.h>

using kavro::KVRAviWriter;
using kavro::KVRBlackBoxData;

namespace {

constexpr int Seconds = 180;
constexpr int FramesPerSecond = 30;

QByteArray withChecksum(const QByteArray& body)
{
    char sum = 0;
    for (char c : body)
        sum ^= c;
    return '$' + body + '*' +
           QByteArray::number(static_cast<unsigned char>(sum), 16)
               .toUpper()
               .rightJustified(2, '0') +
           "\r\n";
}

QByteArray nmeaAngle(double degrees, int degreeDigits)
{
    const double whole = std::floor(degrees);
    const double minutes = (degrees - whole) * 60;
    return QByteArray::number(int(whole)).rightJustified(degreeDigits, '0') +
           QByteArray::number(minutes, 'f', 4).rightJustified(7, '0');
}

// One second of a receiver's output along a road heading north-east at about 60 km/h.
QByteArray receiverSecond(int second, double latitude, double longitude)
{
    const int h = 9 + second / 3600, m = (second / 60) % 60, s = second % 60;
    const QByteArray time = QString::asprintf("%02d%02d%02d.000", h, m, s).toLatin1();
    const QByteArray lat = nmeaAngle(latitude, 2), lon = nmeaAngle(longitude, 3);
    return withChecksum("GNRMC," + time + ",A," + lat + ",N," + lon + ",E,32.4,41.7,150324,,,A") +
           withChecksum("GNGGA," + time + "," + lat + ",N," + lon + ",E,1,11,0.9,45.2,M,18.4,M,,") +
           withChecksum("GNGSA,A,3,02,05,12,15,18,24,25,29,,,,,1.6,0.9,1.3") +
           withChecksum("GNGSA,A,3,68,69,78,,,,,,,,,,1.6,0.9,1.3") +
           withChecksum("GPGSV,3,1,10,02,41,078,44,05,62,312,41,12,27,201,38,15,12,045,33") +
           withChecksum("GPGSV,3,2,10,18,55,140,45,24,33,265,40,25,71,012,46,29,08,330,28") +
           withChecksum("GPGSV,3,3,10,31,05,110,,32,02,250,");
}

// Real 1280x720 JPEG frames of 34 to 57 KB, so that ffmpeg reads the file as it would a
// camera's; random bytes of the same sizes when ffmpeg is missing.
QList<QByteArray> videoFrames(const QString& ffmpeg)
{
    QList<QByteArray> frames;
    for (const char* quality : {"3", "5", "8"}) {
        QProcess encode;
        if (!ffmpeg.isEmpty())
            encode.start(ffmpeg,
                         {"-v", "error", "-f", "lavfi", "-i", "testsrc2=size=1280x720:rate=1",
                          "-frames:v", "1", "-q:v", quality, "-f", "mjpeg", "-"});
        QByteArray frame;
        if (!ffmpeg.isEmpty() && encode.waitForFinished(30000))
            frame = encode.readAllStandardOutput();
        if (frame.isEmpty()) {
            frame.resize((30 + 10 * frames.size()) * 1024);
            QRandomGenerator(frames.size())
                .fillRange(reinterpret_cast<quint32*>(frame.data()), frame.size() / 4);
        }
        frames.append(frame);
    }
    return frames;
}

bool writeRecording(const QString& path, const QList<QByteArray>& frames)
{
    KVRAviWriter::Layout layout;
    layout.video.width = 1280;
    layout.video.height = 720;
    layout.audio = KVRAviWriter::AudioFormat{};
    KVRAviWriter writer(layout);
    if (!writer.open(path))
        return false;
    QRandomGenerator random(2024);
    const QByteArray audio(3200, '\0'); // 100 ms of 16 kHz mono
    double latitude = 37.5665, longitude = 126.978;
    std::uint32_t clock = 36000000; // camera clock in ms
    for (int tick = 0; tick < Seconds * 10; ++tick, clock += 100) {
        for (int f = 0; f < FramesPerSecond / 10; ++f)
            if (!writer.addVideoFrame(frames[random.bounded(int(frames.size()))]))
                return false;
        _AVI_GSENSOR_DATA_T g{171,
                              clock,
                              random.bounded(-40, 40),
                              random.bounded(-40, 40),
                              256 + random.bounded(-20, 20),
                              31};
        if (!writer.addAudioChunk(audio) ||
            !writer.addTelemetryChunk(QByteArray(reinterpret_cast<const char*>(&g), sizeof g)))
            return false;
        if (tick % 10 == 5) {
            latitude += 0.0001;
            longitude += 0.00012;
            const QByteArray text = receiverSecond(tick / 10, latitude, longitude);
            _AVI_GPS_DATA_T record{};
            record.header = 205;
            record.nTimestamp = clock;
            record.nLen = std::uint32_t(std::min<qsizetype>(text.size(), 508));
            record.fLatitude = nmeaAngle(latitude, 2).toDouble();
            record.fLongitude = nmeaAngle(longitude, 3).toDouble();
            record.fSpeed = 60;
            record.KM = '9';
            std::memcpy(record.RawData, text.constData(), record.nLen);
            if (!writer.addTelemetryChunk(
                    QByteArray(reinterpret_cast<const char*>(&record), sizeof record)))
                return false;
        }
    }
    return writer.close();
}

// The least a reader can do: the whole index in one read, then one read per telemetry chunk.
std::size_t minimalRead(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return 0;
    const int fd = file.handle();
    char sizeField[4];
    if (::pread(fd, sizeField, 4, kavro::avi::MoviListSizeOffset) != 4)
        return 0;
    const off_t indexAt =
        kavro::avi::IndexStartOffset + qFromLittleEndian<std::uint32_t>(sizeField);
    QByteArray index(qsizetype(file.size() - indexAt), '\0');
    if (::pread(fd, index.data(), std::size_t(index.size()), indexAt) != index.size())
        return 0;
    std::size_t records = 0;
    char record[sizeof(_AVI_GPS_DATA_T)];
    for (qsizetype at = 0; at + 16 <= index.size(); at += 16) {
        const char* entry = index.constData() + at;
        if (std::memcmp(entry, "02sb", 4) != 0)
            continue;
        const std::uint32_t size = qFromLittleEndian<std::uint32_t>(entry + 12);
        const off_t data =
            kavro::avi::ChunkDataOffset + qFromLittleEndian<std::uint32_t>(entry + 8);
        records += ::pread(fd, record, size > 32 ? sizeof record : 24, data) > 0;
    }
    return records;
}

// Best time of each task over alternating runs, so that both see the same load on the machine.
std::pair<double, double> bestMilliseconds(int runs, const std::function<void()>& first,
                                           const std::function<void()>& second)
{
    double best[2] = {1e300, 1e300};
    for (int i = 0; i < runs; ++i) {
        for (int task = 0; task < 2; ++task) {
            QElapsedTimer timer;
            timer.start();
            (task == 0 ? first : second)();
            best[task] = std::min(best[task], timer.nsecsElapsed() / 1e6);
        }
    }
    return {best[0], best[1]};
}

long statusValue(const char* file, const char* key)
{
    QFile status(file);
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(int(std::strlen(key))).trimmed().split(' ').first().toLong();
    return -1;
}

// Run in a fresh process: peak resident memory and bytes read around one extraction.
int measureOne(const QString& path)
{
    const long peakBefore = statusValue("/proc/self/status", "VmHWM:");
    const long readBefore = statusValue("/proc/self/io", "rchar:");
    KVRBlackBoxData store;
    if (!store.ExtractStreamInformation(kavro::nativePath(path)))
        return 1;
    const long readAfter = statusValue("/proc/self/io", "rchar:");
    const long peakAfter = statusValue("/proc/self/status", "VmHWM:");
    std::printf("%ld %ld %zu\n", peakAfter - peakBefore, readAfter - readBefore,
                store.GSensors().size());
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && std::strcmp(argv[1], "--measure") == 0)
        return measureOne(QString::fromLocal8Bit(argv[2]));
    // The recording alone, for the whole-process benchmarks of bench/wholeprocess.sh.
    if (argc == 3 && std::strcmp(argv[1], "--write") == 0)
        return writeRecording(QString::fromLocal8Bit(argv[2]),
                              videoFrames(QStandardPaths::findExecutable("ffmpeg")))
                   ? 0
                   : 1;

    QTemporaryDir dir;
    const QString path = dir.filePath("recording.avi");
    const QString ffmpeg = QStandardPaths::findExecutable("ffmpeg");
    std::printf("writing a %d-second recording...\n", Seconds);
    if (!writeRecording(path, videoFrames(ffmpeg))) {
        std::fprintf(stderr, "bench_extract: cannot write the recording\n");
        return 1;
    }
    std::printf("file: %.1f MB\n", QFile(path).size() / 1e6);

    KVRBlackBoxData store;
    std::size_t records = 0;
    const auto [extract, minimal] = bestMilliseconds(
        50, [&] { store.ExtractStreamInformation(kavro::nativePath(path)); },
        [&] { records = minimalRead(path); });
    std::printf("extraction: %.2f ms (%zu samples, %zu GPS records, %zu fixes)\n", extract,
                store.GSensors().size(), store.gpsRecords().size(), store.NMEAs().size());
    std::printf("minimal reader: %.2f ms (%zu records)\n", minimal, records);
    std::printf("extraction / minimal reader: %.2f (target at most 2)\n", extract / minimal);

    if (ffmpeg.isEmpty()) {
        std::printf("ffmpeg not installed: no ffmpeg ratio\n");
    } else {
        bool ok = true;
        const QStringList copyArguments{"-v", "error", "-i", path,   "-map", "0:2",
                                        "-c", "copy",  "-f", "data", "-y",   "/dev/null"};
        const auto [copy, again] = bestMilliseconds(
            5, [&] { ok = ok && QProcess::execute(ffmpeg, copyArguments) == 0; },
            [&] { store.ExtractStreamInformation(kavro::nativePath(path)); });
        std::printf("ffmpeg copying the telemetry stream: %.2f ms%s\n", copy,
                    ok ? "" : " (ffmpeg failed)");
        std::printf("ffmpeg / extraction: %.1f (target at least 20)\n",
                    copy / std::min(extract, again));
    }

    QProcess fresh;
    fresh.start(QCoreApplication::applicationFilePath(), {"--measure", path});
    fresh.waitForFinished(60000);
    const QList<QByteArray> values = fresh.readAllStandardOutput().simplified().split(' ');
    if (values.size() == 3) {
        std::printf("peak memory growth of one extraction: %.2f MB (target under 20)\n",
                    values[0].toLong() / 1024.0);
        std::printf("bytes read by one extraction: %.2f MB of %.1f MB\n", values[1].toLong() / 1e6,
                    QFile(path).size() / 1e6);
    } else {
        std::printf("memory measurement failed\n");
    }
    return 0;
}
