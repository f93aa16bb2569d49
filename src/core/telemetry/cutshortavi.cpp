#include "cutshortavi.h"

#include "aviformat.h"
#include "common/corelog.h"
#include "qtbridge/qtbridge.h"
#include "recordingfile.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <map>

namespace kavro {

namespace {

constexpr std::uint32_t KeyFrameFlag = 0x10; // AVIIF_KEYFRAME
// Enough of a video chunk to see the kinds of its first NAL units.
constexpr qint64 VideoProbeSize = 64;

bool isVideoChunk(const char* id)
{
    return id[2] == 'd' && (id[3] == 'c' || id[3] == 'b');
}

// An H.264 access unit that starts with a sequence parameter set or an IDR slice can be decoded
// on its own. A chunk without start codes is another codec's; those are taken as key frames.
bool isKeyFrame(const QByteArray& start)
{
    bool sawStartCode = false;
    for (qsizetype i = 0; i + 3 < start.size(); ++i) {
        if (start[i] != 0 || start[i + 1] != 0 || start[i + 2] != 1)
            continue;
        sawStartCode = true;
        const int type = start[i + 3] & 0x1f;
        if (type == 5 || type == 7)
            return true;
        if (type == 1)
            return false;
    }
    return !sawStartCode;
}

struct StreamCount
{
    std::uint32_t chunks = 0;
    std::uint64_t bytes = 0;
};

// The main header's frame count and each stream header's length, as the chunks present give
// them: a player that finds them disagreeing with the index takes the index for broken.
void setLengths(QByteArray& header, int videoFrames, const std::map<int, StreamCount>& streams)
{
    if (header.mid(avi::MainHeaderIdOffset, 4) == "avih")
        qToLittleEndian(std::uint32_t(videoFrames), header.data() + avi::TotalFramesOffset);
    int stream = 0;
    for (qsizetype at = header.indexOf("strh"); at >= 0 && at + 56 <= header.size();
         at = header.indexOf("strh", at + 4), ++stream) {
        const auto found = streams.find(stream);
        const StreamCount count = found == streams.end() ? StreamCount{} : found->second;
        const std::uint32_t sampleSize =
            qFromLittleEndian<std::uint32_t>(header.constData() + at + 52);
        const std::uint64_t length = sampleSize > 0 ? count.bytes / sampleSize : count.chunks;
        qToLittleEndian(std::uint32_t(std::min<std::uint64_t>(length, UINT32_MAX)),
                        header.data() + at + 40);
    }
}

void appendU32(QByteArray& bytes, std::uint32_t value)
{
    char le[4];
    qToLittleEndian(value, le);
    bytes.append(le, 4);
}

} // namespace

std::shared_ptr<const CutShortAvi> CutShortAvi::open(const QString& path)
{
    RecordingFile file(nativePath(path));
    char head[12];
    if (!file.open() || file.size() < avi::MoviTypeOffset + 4 ||
        file.readAt(0, head, sizeof head) != sizeof head || std::memcmp(head, "RIFF", 4) != 0 ||
        std::memcmp(head + 8, "AVI ", 4) != 0 || file.hasIndex())
        return nullptr;

    auto avi = std::make_shared<CutShortAvi>();
    avi->m_path = path;
    QByteArray& index = avi->m_index;
    index.append("idx1\0\0\0\0", 8);
    QByteArray probe;
    std::map<int, StreamCount> streams; // by the number in the chunk id
    const std::uint64_t end =
        file.walkMoviChunks([&](const char* id, std::uint64_t data, std::uint32_t size) {
            if (id[0] >= '0' && id[0] <= '9' && id[1] >= '0' && id[1] <= '9') {
                StreamCount& stream = streams[(id[0] - '0') * 10 + (id[1] - '0')];
                ++stream.chunks;
                stream.bytes += size;
            }
            std::uint32_t flags = KeyFrameFlag;
            if (isVideoChunk(id)) {
                probe.resize(std::min<qint64>(size, VideoProbeSize));
                probe.resize(file.readAt(data, probe.data(), probe.size()));
                ++avi->m_videoFrames;
                if (!isKeyFrame(probe))
                    flags = 0;
                else
                    ++avi->m_keyFrames;
            }
            index.append(id, 4);
            appendU32(index, flags);
            appendU32(index, std::uint32_t(data - 8 - avi::MoviTypeOffset));
            appendU32(index, size);
            return index.size() < (qsizetype(1) << 30);
        });
    if (index.size() == 8)
        return nullptr;
    qToLittleEndian(std::uint32_t(index.size() - 8), index.data() + 4);
    if (end & 1)
        index.prepend('\0'); // chunks start on even offsets
    avi->m_moviEnd = end;

    avi->m_header.resize(avi::MoviTypeOffset + 4);
    if (file.readAt(0, avi->m_header.data(), avi->m_header.size()) != avi->m_header.size())
        return nullptr;
    qToLittleEndian(std::uint32_t(std::min<std::uint64_t>(avi->size() - 8, UINT32_MAX)),
                    avi->m_header.data() + 4);
    qToLittleEndian(std::uint32_t(end - avi::MoviTypeOffset),
                    avi->m_header.data() + avi::MoviListSizeOffset);
    setLengths(avi->m_header, avi->m_videoFrames, streams);
    CoreLog::print(LogTelemetry, CoreLog::Level::Debug,
                   "%s has no index: %d of %d video frames are key frames, %llu bytes",
                   qUtf8Printable(path), avi->m_keyFrames, avi->m_videoFrames,
                   static_cast<unsigned long long>(end));
    return avi;
}

qint64 CutShortAvi::read(QFile& file, std::uint64_t offset, char* target, qint64 length) const
{
    qint64 copied = 0;
    while (copied < length && offset < size()) {
        const qint64 want = length - copied;
        qint64 got = 0;
        if (offset < std::uint64_t(m_header.size())) {
            got = std::min<qint64>(want, m_header.size() - qint64(offset));
            std::memcpy(target + copied, m_header.constData() + offset, std::size_t(got));
        } else if (offset < m_moviEnd) {
            if (!file.seek(qint64(offset)))
                return copied ? copied : -1;
            got = file.read(target + copied, std::min<qint64>(want, qint64(m_moviEnd - offset)));
            if (got <= 0)
                return copied ? copied : -1; // the card went away under us
        } else {
            const qint64 at = qint64(offset - m_moviEnd);
            got = std::min<qint64>(want, m_index.size() - at);
            std::memcpy(target + copied, m_index.constData() + at, std::size_t(got));
        }
        copied += got;
        offset += std::uint64_t(got);
    }
    return copied;
}

} // namespace kavro
