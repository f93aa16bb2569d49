#include "recordingfile.h"

#include "aviformat.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

namespace kavro {

bool RecordingFile::open()
{
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_size = std::uint64_t(m_file.size());
    return true;
}

qint64 RecordingFile::readAt(std::uint64_t offset, void* target, qint64 length)
{
    if (offset >= m_size || length <= 0)
        return 0;
#ifdef Q_OS_UNIX
    // One call instead of a seek and a read: the walk reads thousands of small records.
    qint64 got = 0;
    while (got < length) {
        const ssize_t n = ::pread(m_file.handle(), static_cast<char*>(target) + got,
                                  std::size_t(length - got), off_t(offset + got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        got += n;
    }
    return got;
#else
    if (!m_file.seek(qint64(offset)))
        return 0;
    return std::max<qint64>(0, m_file.read(static_cast<char*>(target), length));
#endif
}

qint64 RecordingFile::bytesAt(std::uint64_t offset, qint64 length, qint64 blockSize,
                              const char** bytes)
{
    const std::uint64_t end = m_blockStart + std::uint64_t(m_block.size());
    if (offset < m_blockStart || offset + std::uint64_t(length) > end) {
        m_block.resize(std::max(blockSize, length));
        m_block.resize(readAt(offset, m_block.data(), m_block.size()));
        m_blockStart = offset;
    }
    *bytes = m_block.constData() + (offset - m_blockStart);
    return std::min<qint64>(length, m_block.size() - qint64(offset - m_blockStart));
}

std::uint64_t RecordingFile::indexChunkOffset()
{
    char sizeField[4];
    if (readAt(avi::MoviListSizeOffset, sizeField, 4) != 4)
        return m_size;
    return std::uint64_t(avi::MoviTypeOffset) + qFromLittleEndian<std::uint32_t>(sizeField);
}

bool RecordingFile::hasIndex()
{
    char id[8];
    return readAt(indexChunkOffset(), id, sizeof id) == sizeof id &&
           std::memcmp(id, "idx1", 4) == 0;
}

namespace {

// The chunk walk reads less ahead than the index walk: most of what lies between two chunk
// headers is video.
constexpr qint64 ChunkBlockSize = 4 * 1024;

// Chunk ids are four printable characters ("00dc", "01wb", "02sb", "JUNK").
bool isChunkId(const char* id)
{
    return std::all_of(id, id + 4, [](char c) { return c >= 0x20 && c < 0x7f; });
}

} // namespace

std::uint64_t RecordingFile::walkMoviChunks(const ChunkVisitor& visit)
{
    std::uint64_t offset = std::uint64_t(avi::MoviTypeOffset) + 4;
    std::uint64_t end = offset;
    for (;;) {
        const char* header = nullptr;
        if (bytesAt(offset, 8, ChunkBlockSize, &header) < 8)
            break;
        if (std::memcmp(header, "LIST", 4) == 0) {
            offset += 12; // into a "rec " list
            continue;
        }
        if (!isChunkId(header) || std::memcmp(header, "idx1", 4) == 0)
            break;
        char id[4];
        std::memcpy(id, header, 4); // the window moves on the visitor's reads
        const std::uint32_t size = qFromLittleEndian<std::uint32_t>(header + 4);
        const std::uint64_t data = offset + 8;
        if (data + size > m_size)
            break; // cut off by the end of the file
        offset = data + size + (size & 1);
        end = std::min(offset, m_size);
        if (!visit(id, data, size))
            break;
    }
    return end;
}

} // namespace kavro
