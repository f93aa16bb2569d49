#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdint>

namespace kavro {

// A recording opened for the telemetry reader: positioned reads that never go past the bytes
// really present, and a window of bytes kept for reads that come close together (index entries,
// the headers of small chunks).
class RecordingFile
{
public:
    explicit RecordingFile(const QString& path) : m_file(path) {}

    bool open();
    std::uint64_t size() const { return m_size; }

    // Reads up to length bytes at offset; returns how many were really there.
    qint64 readAt(std::uint64_t offset, void* target, qint64 length);

    // Points bytes at up to length bytes at offset, read ahead by blockSize; returns how many
    // are there (fewer where the file ends). Valid until the next call.
    qint64 bytesAt(std::uint64_t offset, qint64 length, qint64 blockSize, const char** bytes);

private:
    QFile m_file;
    std::uint64_t m_size = 0;
    QByteArray m_block;
    std::uint64_t m_blockStart = 0;
};

} // namespace kavro
