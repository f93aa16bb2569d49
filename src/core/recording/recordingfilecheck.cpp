#include "recordingfilecheck.h"

#include <QFile>

#include <sys/stat.h>

namespace kavro {

namespace {

// One stat, not QFileInfo's cached view: the answer must be the file system's of this moment,
// and a card gone from its reader fails it at once.
qint64 sizeNow(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    return status.st_size;
}

} // namespace

RecordingFileCheck::RecordingFileCheck(const QString& path) : m_path(path), m_size(sizeNow(path)) {}

bool RecordingFileCheck::lost() const
{
    if (m_path.isEmpty() || m_size < 0)
        return false;
    return sizeNow(m_path) < m_size;
}

} // namespace kavro
