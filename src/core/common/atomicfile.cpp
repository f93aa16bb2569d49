#include "atomicfile.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavro {

// Plain POSIX on purpose: QSaveFile reports success after a buffered write that the file system
// cut short (a full card, a file-size limit), and would then rename a truncated file over the
// old one. Here every write, the sync and the close are checked before the rename.
bool writeFileAtomically(const QString& path, const QByteArray& content, QString* error)
{
    const QByteArray target = QFile::encodeName(path);
    QByteArray temporary = target + ".XXXXXX";
    auto failWith = [&](int code) {
        if (error)
            *error = QString::fromLocal8Bit(std::strerror(code));
        return false;
    };

    int fd = ::mkstemp(temporary.data());
    if (fd < 0)
        return failWith(errno);

    struct stat existing{};
    mode_t mode;
    if (::stat(target.constData(), &existing) == 0) {
        mode = existing.st_mode & 07777;
    } else {
        mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }

    int code = 0;
    if (::fchmod(fd, mode) != 0)
        code = errno;
    const char* data = content.constData();
    size_t left = static_cast<size_t>(content.size());
    while (code == 0 && left > 0) {
        ssize_t written = ::write(fd, data, left);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            code = errno;
        } else if (written == 0) {
            code = EIO;
        } else {
            data += written;
            left -= static_cast<size_t>(written);
        }
    }
    if (code == 0 && ::fsync(fd) != 0)
        code = errno;
    if (::close(fd) != 0 && code == 0)
        code = errno;
    if (code == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        code = errno;
    if (code != 0) {
        ::unlink(temporary.constData());
        return failWith(code);
    }
    return true;
}

} // namespace kavro
