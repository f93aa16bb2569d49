#include "recordingprobe.h"

#include "aviformat.h"
#include "kvrblackboxdata.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace kavro {

namespace {

// "RIFF" size "AVI " "LIST" size "hdrl" "avih" size, then the main header.
constexpr qint64 MainHeaderIdOffset = 24;
constexpr qint64 MainHeaderOffset = 32;
constexpr qint64 MicroSecPerFrameOffset = MainHeaderOffset;
constexpr qint64 TotalFramesOffset = MainHeaderOffset + 16;
constexpr qint64 HeadBytes = TotalFramesOffset + 4;

std::uint32_t u32At(const char* bytes)
{
    return qFromLittleEndian<std::uint32_t>(bytes);
}

// The file open for reading, closed when done. Plain descriptor calls: a card has hundreds of
// recordings, and the probe is three small reads of each.
class ReadOnlyFile
{
public:
    explicit ReadOnlyFile(const QString& path)
        : m_fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
    {
        if (m_fd < 0)
            m_error = QString::fromLocal8Bit(std::strerror(errno));
    }
    ~ReadOnlyFile()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    bool isOpen() const { return m_fd >= 0; }
    const QString& error() const { return m_error; }
    // How many of length bytes at offset were there (-1 on an error). One call suffices: a read
    // of a regular file comes back short only at its end.
    qint64 readAt(qint64 offset, char* target, qint64 length) const
    {
        return ::pread(m_fd, target, std::size_t(length), off_t(offset));
    }

private:
    int m_fd;
    QString m_error;
};

} // namespace

RecordingProbe RecordingProbe::probe(const QString& path)
{
    RecordingProbe probe;
    const ReadOnlyFile file(path);
    if (!file.isOpen()) {
        probe.m_openError = file.error();
        return probe;
    }
    char head[HeadBytes];
    const qint64 got = file.readAt(0, head, HeadBytes);
    if (got < 12 || std::memcmp(head, "RIFF", 4) != 0 || std::memcmp(head + 8, "AVI ", 4) != 0) {
        probe.m_status = Status::NotAvi;
        return probe;
    }
    probe.m_status = Status::Readable;
    if (got < HeadBytes || std::memcmp(head + MainHeaderIdOffset, "avih", 4) != 0)
        return probe;
    const std::uint32_t microSecPerFrame = u32At(head + MicroSecPerFrameOffset);
    const std::uint32_t totalFrames = u32At(head + TotalFramesOffset);
    char listSize[4];
    char indexId[4];
    if (microSecPerFrame == 0 || totalFrames == 0 ||
        file.readAt(avi::MoviListSizeOffset, listSize, 4) != 4 ||
        file.readAt(qint64(avi::MoviTypeOffset) + u32At(listSize), indexId, 4) != 4 ||
        std::memcmp(indexId, "idx1", 4) != 0)
        return probe;
    probe.m_headerSeconds = double(totalFrames) * microSecPerFrame / 1e6;
    return probe;
}

std::optional<double> RecordingProbe::telemetrySeconds(const KVRBlackBoxData& store)
{
    std::optional<std::uint32_t> first;
    std::uint32_t last = 0;
    auto take = [&](std::uint32_t time) {
        first = first ? std::min(*first, time) : time;
        last = std::max(last, time);
    };
    for (const KVRAviGSensorData& sample : store.vGSensorData())
        take(sample.data().timestamp);
    for (const KVRBlackBoxData::GpsRecordFix& entry : store.gpsRecords())
        take(entry.record->data().nTimestamp);
    if (!first)
        return std::nullopt;
    return (last - *first) / 1000.0;
}

} // namespace kavro
