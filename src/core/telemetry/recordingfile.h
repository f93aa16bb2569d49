#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kavro {

// A recording opened for the telemetry reader: positioned reads that never go past the bytes
// really present, and a window of bytes kept for reads that come close together (index entries,
// the headers of small chunks).
class RecordingFile
{
public:
    explicit RecordingFile(std::string path) : m_path(std::move(path)) {}
    ~RecordingFile();
    RecordingFile(const RecordingFile&) = delete;
    RecordingFile& operator=(const RecordingFile&) = delete;

    bool open();
    // Why open() failed, as the system says it.
    const std::string& errorString() const { return m_error; }
    std::uint64_t size() const { return m_size; }

    // Reads up to length bytes at offset; returns how many were really there.
    std::int64_t readAt(std::uint64_t offset, void* target, std::int64_t length);

    // Points bytes at up to length bytes at offset, read ahead by blockSize; returns how many
    // are there (fewer where the file ends). Valid until the next call.
    std::int64_t bytesAt(std::uint64_t offset, std::int64_t length, std::int64_t blockSize,
                         const char** bytes);

    // The file offset of the index chunk the header points at; the file's size when the file is
    // too short to say.
    std::uint64_t indexChunkOffset();
    // True when an "idx1" chunk lies where the header says. A camera cut off by a power loss
    // leaves it out, and sometimes a placeholder list size.
    bool hasIndex();

    // Walks the chunks of the movi list in file order: id, size, data padded to an even length,
    // stepping into "rec " lists. Only chunks whose data is wholly present are visited; anything
    // that is not a chunk header (a placeholder's zeros, the index) ends the walk, and so does a
    // visit that returns false. Returns the file offset just after the last chunk visited.
    using ChunkVisitor =
        std::function<bool(const char* id, std::uint64_t data, std::uint32_t size)>;
    std::uint64_t walkMoviChunks(const ChunkVisitor& visit);

private:
    std::string m_path;
    int m_fd = -1;
    std::string m_error;
    std::uint64_t m_size = 0;
    // Read into without zeroing first: a card's index block is read once per recording.
    std::unique_ptr<char[]> m_block;
    std::size_t m_blockCapacity = 0;
    std::size_t m_blockLength = 0;
    std::uint64_t m_blockStart = 0;
};

} // namespace kavro
