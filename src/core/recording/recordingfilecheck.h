#pragma once

#include <QString>

namespace kavro {

// Tells whether a recording being played is still all there: a card pulled out of its reader,
// or a file cut while it plays, leaves the player with nothing more to read, and it may simply
// come to a quiet end. Only a file that is gone or shorter counts; one that grows is fine.
class RecordingFileCheck
{
public:
    RecordingFileCheck() = default;
    // Notes the file's size now; a file that can't be seen now is never reported.
    explicit RecordingFileCheck(const QString& path);

    bool isNull() const { return m_path.isEmpty(); }
    // True when the file can no longer be seen or is shorter than it was.
    bool lost() const;

private:
    QString m_path;
    qint64 m_size = -1;
};

} // namespace kavro
