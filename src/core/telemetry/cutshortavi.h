#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>

class QFile;

namespace kavro {

// A recording cut short by a power loss, seen as the whole file it would have been: the sizes in
// its header cover the chunks that are really there, and an index built from those chunks
// follows them. Players then know its length and seek in it as in any recording. The file on the
// card is only read, never changed.
class CutShortAvi
{
public:
    // None for a file that has its index, is not a RIFF/AVI, or holds no whole chunk.
    static std::shared_ptr<const CutShortAvi> open(const QString& path);

    const QString& path() const { return m_path; }
    // The size of the whole file as it is shown.
    std::uint64_t size() const { return m_moviEnd + std::uint64_t(m_index.size()); }
    // Copies up to length bytes at offset of the file as it is shown; file is the recording opened
    // for reading. Returns the bytes copied, 0 at the end, -1 when the recording can't be read.
    qint64 read(QFile& file, std::uint64_t offset, char* target, qint64 length) const;

    int videoFrames() const { return m_videoFrames; }
    int keyFrames() const { return m_keyFrames; }

private:
    QString m_path;
    QByteArray m_header;         // the file's header with its sizes set
    std::uint64_t m_moviEnd = 0; // just after the last whole chunk
    QByteArray m_index;          // the "idx1" chunk
    int m_videoFrames = 0;
    int m_keyFrames = 0;
};

} // namespace kavro
