#include "recordingfile.h"

#include "aviformat.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavro {

RecordingFile::~RecordingFile()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

bool RecordingFile::open()
{
    m_fd = ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_fd >= 0) {
        struct stat info;
        if (::fstat(m_fd, &info) == 0 && !S_ISDIR(info.st_mode)) {
            m_size = std::uint64_t(info.st_size);
            return true;
        }
        const int code = S_ISDIR(info.st_mode) ? EISDIR : errno;
        ::close(m_fd);
        m_fd = -1;
        errno = code;
    }
    m_error = std::strerror(errno);
    return false;
}

std::int64_t RecordingFile::readAt(std::uint64_t offset, void* target, std::int64_t length)
{
    if (offset >= m_size || length <= 0)
        return 0;
    // One call instead of a seek and a read: the walk reads thousands of small records.
    std::int64_t got = 0;
    while (got < length) {
        const ssize_t n = ::pread(m_fd, static_cast<char*>(target) + got, std::size_t(length - got),
                                  off_t(offset + got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        got += n;
    }
    return got;
}

std::int64_t RecordingFile::bytesAt(std::uint64_t offset, std::int64_t length,
                                    std::int64_t blockSize, const char** bytes)
{
    const std::uint64_t end = m_blockStart + m_blockLength;
    if (!m_block || offset < m_blockStart || offset + std::uint64_t(length) > end) {
        const auto wanted = std::size_t(std::max(blockSize, length));
        if (wanted > m_blockCapacity) {
            m_block = std::make_unique_for_overwrite<char[]>(wanted);
            m_blockCapacity = wanted;
        }
        m_blockLength = std::size_t(readAt(offset, m_block.get(), std::int64_t(wanted)));
        m_blockStart = offset;
    }
    *bytes = m_block.get() + (offset - m_blockStart);
    return std::min<std::int64_t>(length, std::int64_t(m_blockLength) -
                                              std::int64_t(offset - m_blockStart));
}

std::uint64_t RecordingFile::indexChunkOffset()
{
    char sizeField[4];
    if (readAt(avi::MoviListSizeOffset, sizeField, 4) != 4)
        return m_size;
    return std::uint64_t(avi::MoviTypeOffset) + avi::u32At(sizeField);
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
constexpr std::int64_t ChunkBlockSize = 4 * 1024;

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
        const std::uint32_t size = avi::u32At(header + 4);
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
