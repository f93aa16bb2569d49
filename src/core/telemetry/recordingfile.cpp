#include "recordingfile.h"

#include <algorithm>

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

} // namespace kavro
