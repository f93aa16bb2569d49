#include "outputfile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace kavro {

namespace {

// Links are followed at most this many times, as the kernel does.
constexpr int MaxLinkHops = 40;

QString reasonOf(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

QByteArray folderOf(const QByteArray& path)
{
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0)
        return ".";
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

std::optional<int> descriptorNumber(const QByteArray& digits)
{
    bool ok = false;
    const int fd = digits.toInt(&ok);
    if (!ok || fd < 0 || digits.startsWith('+') || digits.startsWith('-'))
        return std::nullopt;
    return fd;
}

// The names by which a process means a descriptor it already holds. Reopening them would
// truncate what the shell opened for appending, and renaming over them replaces the system's
// link with a file.
std::optional<int> processDescriptor(const QByteArray& path)
{
    if (path == "-" || path == "/dev/stdout")
        return 1;
    if (path == "/dev/stderr")
        return 2;
    for (const QByteArray& prefix :
         {QByteArray("/dev/fd/"), QByteArray("/proc/self/fd/"), QByteArray("/proc/thread-self/fd/"),
          "/proc/" + QByteArray::number(::getpid()) + "/fd/"}) {
        if (path.startsWith(prefix))
            return descriptorNumber(path.mid(prefix.size()));
    }
    return std::nullopt;
}

bool writeAll(int fd, const char* data, qint64 size, int* code)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, std::size_t(size));
        if (written < 0) {
            if (errno == EINTR)
                continue;
            *code = errno;
            return false;
        }
        if (written == 0) {
            *code = EIO;
            return false;
        }
        data += written;
        size -= written;
    }
    return true;
}

// Some file systems (and every device that is not a disk) cannot sync; that is no failure.
bool syncFailed(int fd)
{
    if (::fsync(fd) == 0)
        return false;
    return errno != EINVAL && errno != EROFS && errno != ENOTSUP;
}

bool syncFolder(const QByteArray& folder)
{
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return true; // the rename stands; a folder we may not open can't be synced by us either
    const bool failed = syncFailed(fd);
    ::close(fd);
    return !failed;
}

} // namespace

OutputFile::~OutputFile()
{
    cancel();
}

bool OutputFile::failWith(int code, const QString& reason)
{
    if (m_errorCode == 0) {
        m_errorCode = code;
        m_error = reason.isEmpty() ? reasonOf(code) : reason;
    }
    return false;
}

bool OutputFile::open(const QString& path, Rule rule)
{
    cancel();
    m_rule = rule;
    m_temporaryMade = false;
    m_error.clear();
    m_errorCode = 0;
    m_target.clear();
    QByteArray current = QFile::encodeName(path);
    if (current.isEmpty())
        return failWith(ENOENT, QStringLiteral("no file name"));

    if (rule == Rule::CreateNew) {
        // O_EXCL refuses whatever is there, a dangling link included.
        m_target = current;
        return openInPlace(current, O_CREAT | O_EXCL);
    }
    if (rule == Rule::FreshPrivate) {
        m_target = current;
        return openFreshPrivate(current);
    }

    for (int hop = 0;; ++hop) {
        if (hop > MaxLinkHops)
            return failWith(ELOOP);
        if (const std::optional<int> fd = processDescriptor(current)) {
            const int flags = ::fcntl(*fd, F_GETFL);
            if (flags < 0 || (flags & O_ACCMODE) == O_RDONLY)
                return failWith(EBADF,
                                QStringLiteral("descriptor %1 is not open for writing").arg(*fd));
            m_kind = Kind::Descriptor;
            m_fd = *fd;
            if (*fd == 1)
                std::fflush(stdout);
            else if (*fd == 2)
                std::fflush(stderr);
            return true;
        }
        struct stat info = {};
        if (::lstat(current.constData(), &info) != 0) {
            if (errno != ENOENT && errno != ENOTDIR)
                return failWith(errno);
            break; // a new file, or a folder that is none: the checks below say which
        }
        if (!S_ISLNK(info.st_mode))
            break;
        QByteArray link(qsizetype(info.st_size > 0 ? info.st_size : 256) + 1, '\0');
        const ssize_t length =
            ::readlink(current.constData(), link.data(), std::size_t(link.size()));
        if (length < 0)
            return failWith(errno);
        link.truncate(length);
        current = link.startsWith('/') ? link : folderOf(current) + '/' + link;
    }

    m_target = current;
    struct stat info = {};
    const bool exists = ::stat(current.constData(), &info) == 0;
    if (exists && S_ISDIR(info.st_mode))
        return failWith(EISDIR, QStringLiteral("%1 is a folder").arg(QFile::decodeName(current)));
    if (exists && !S_ISREG(info.st_mode)) {
        // Devices, pipes and sockets are written where they are.
        if (!openInPlace(current, 0))
            return false;
        m_kind = Kind::Direct;
        return true;
    }

    const QByteArray folder = folderOf(current);
    struct stat folderInfo = {};
    if (::stat(folder.constData(), &folderInfo) != 0)
        return failWith(errno,
                        QStringLiteral("folder %1 does not exist").arg(QFile::decodeName(folder)));
    if (!S_ISDIR(folderInfo.st_mode))
        return failWith(ENOTDIR,
                        QStringLiteral("%1 is not a folder").arg(QFile::decodeName(folder)));
    // A file made here and not written whole is removed again: a card left with an empty clock
    // file is worse than one without.
    if (rule == Rule::KeepTail)
        return openInPlace(current, exists ? 0 : O_CREAT | O_EXCL);
    return openTemporary(current);
}

bool OutputFile::failToOpen(int code, const QString& what)
{
    if (code == EACCES || code == EPERM || code == EROFS)
        return failWith(code, QStringLiteral("%1 is not writable (%2)").arg(what, reasonOf(code)));
    return failWith(code);
}

bool OutputFile::openInPlace(const QByteArray& target, int flags, mode_t mode)
{
    const int fd = ::open(target.constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY | flags, mode);
    if (fd < 0)
        return failToOpen(errno, QFile::decodeName(target));
    m_fd = fd;
    m_kind = Kind::InPlace;
    if (flags & O_EXCL)
        m_temporary = target; // made by us: removed again if the write fails
    return true;
}

bool OutputFile::openFreshPrivate(const QByteArray& target)
{
    struct stat info = {};
    if (::lstat(target.constData(), &info) == 0) {
        // Another user may have planted a link or a file of theirs here to catch what we write.
        if (!S_ISREG(info.st_mode) || info.st_uid != ::geteuid())
            return failWith(EEXIST, QStringLiteral("%1 is not a file of this user's; left as it is")
                                        .arg(QFile::decodeName(target)));
        if (::unlink(target.constData()) != 0 && errno != ENOENT)
            return failWith(errno);
    } else if (errno != ENOENT) {
        return failWith(errno);
    }
    // Whatever appears between the removal and here is refused, a link included.
    return openInPlace(target, O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
}

bool OutputFile::openTemporary(const QByteArray& target)
{
    struct stat old = {};
    const bool exists = ::stat(target.constData(), &old) == 0;
    const QByteArray folder = folderOf(target);
    const QByteArray name = target.mid(target.lastIndexOf('/') + 1);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QByteArray candidate = folder + "/." + name + '.' +
                                     QByteArray::number(QRandomGenerator::global()->generate(), 36);
        // 0666 less the umask, applied by the kernel: the umask itself is never touched.
        const int fd =
            ::open(candidate.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, 0666);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return failToOpen(errno, QStringLiteral("folder ") + QFile::decodeName(folder));
        m_fd = fd;
        m_temporary = candidate;
        m_kind = Kind::Temporary;
        m_temporaryMade = true;
        if (exists) {
            if (::geteuid() == 0 && (old.st_uid != 0 || old.st_gid != 0))
                (void)::fchown(fd, old.st_uid, old.st_gid);
            // A FAT card keeps no modes and refuses to be told one: nothing to keep there.
            if (::fchmod(fd, old.st_mode & 07777) != 0 && errno != EPERM && errno != ENOTSUP &&
                errno != ENOSYS) {
                failWith(errno);
                cancel();
                return false;
            }
        }
        return true;
    }
    return failWith(EEXIST);
}

bool OutputFile::write(const char* data, qint64 size)
{
    if (m_fd < 0)
        return failWith(EBADF, m_error.isEmpty() ? QStringLiteral("not open") : m_error);
    if (m_errorCode != 0)
        return false;
    int code = 0;
    if (!writeAll(m_fd, data, size, &code))
        return failWith(code);
    return true;
}

bool OutputFile::seek(qint64 position)
{
    if (m_fd < 0 || m_errorCode != 0)
        return false;
    if (m_kind == Kind::Descriptor || m_kind == Kind::Direct ||
        ::lseek(m_fd, off_t(position), SEEK_SET) < 0)
        return failWith(ESPIPE,
                        QStringLiteral("cannot seek in %1").arg(QFile::decodeName(m_target)));
    return true;
}

bool OutputFile::commit()
{
    if (m_fd < 0 || m_errorCode != 0) {
        cancel();
        return m_errorCode == 0 ? failWith(EBADF, QStringLiteral("not open")) : false;
    }
    if (m_kind == Kind::Descriptor) {
        m_fd = -1; // not ours to close
        m_kind = Kind::None;
        return true;
    }
    if (syncFailed(m_fd)) {
        failWith(errno);
        cancel();
        return false;
    }
    const int fd = m_fd;
    m_fd = -1;
    if (::close(fd) != 0) {
        failWith(errno);
        cancel();
        return false;
    }
    if (m_kind == Kind::Temporary && ::rename(m_temporary.constData(), m_target.constData()) != 0) {
        failWith(errno);
        cancel();
        return false;
    }
    m_temporary.clear();
    const Kind kind = m_kind;
    m_kind = Kind::None;
    // People pull the card right after: the new name must be on it too.
    if ((kind == Kind::Temporary || kind == Kind::InPlace) && !syncFolder(folderOf(m_target)))
        return failWith(EIO);
    return true;
}

void OutputFile::cancel()
{
    closeFd();
    if (!m_temporary.isEmpty()) {
        ::unlink(m_temporary.constData());
        m_temporary.clear();
    }
    m_kind = Kind::None;
}

void OutputFile::closeFd()
{
    if (m_fd >= 0 && m_kind != Kind::Descriptor)
        ::close(m_fd);
    m_fd = -1;
}

namespace {

// The bytes at the start of a file, through a descriptor of their own.
bool readStart(const QByteArray& path, QByteArray* bytes, int* code)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    const bool ok =
        fd >= 0 && ::pread(fd, bytes->data(), std::size_t(bytes->size()), 0) == bytes->size();
    if (!ok)
        *code = errno ? errno : EIO;
    if (fd >= 0)
        ::close(fd);
    return ok;
}

bool writeStart(const QByteArray& path, const QByteArray& bytes, int* code)
{
    const int fd = ::open(path.constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    bool ok = fd >= 0 && writeAll(fd, bytes.constData(), bytes.size(), code) && !syncFailed(fd);
    if (!ok && *code == 0)
        *code = errno ? errno : EIO;
    if (fd >= 0 && ::close(fd) != 0 && ok) {
        *code = errno;
        ok = false;
    }
    return ok;
}

// The card had no room for a copy: write the same number of bytes over the old ones and make
// sure they arrived. Where the write fails part-way, the old bytes are put back if they can be.
// Reading, writing and reading back each use a descriptor of their own: a FAT driver was seen
// to drop a write made through a descriptor that had read first.
bool overwriteInPlace(const QByteArray& target, const QByteArray& content, QString* reason)
{
    QByteArray old(content.size(), '\0');
    int code = 0;
    if (!readStart(target, &old, &code)) {
        *reason = reasonOf(code);
        return false;
    }
    if (!writeStart(target, content, &code)) {
        int restoreFailure = 0;
        writeStart(target, old, &restoreFailure);
        *reason = reasonOf(code);
        return false;
    }
    QByteArray back(content.size(), '\0');
    if (!readStart(target, &back, &code)) {
        *reason = reasonOf(code);
        return false;
    }
    if (back != content) {
        *reason = QStringLiteral("what was read back differs from what was written");
        return false;
    }
    return true;
}

} // namespace

bool writeFile(const QString& path, const QByteArray& content, QString* error,
               OutputFile::Rule rule)
{
    // A card that has no room for a copy is written in place without trying one, which would
    // only end half-made.
    if (rule == OutputFile::Rule::ReplaceOrOverwrite) {
        const QByteArray target = QFile::encodeName(QFileInfo(path).canonicalFilePath());
        struct stat info = {};
        struct statvfs space = {};
        if (!target.isEmpty() && ::stat(target.constData(), &info) == 0 && S_ISREG(info.st_mode) &&
            info.st_size == content.size() &&
            ::statvfs(folderOf(target).constData(), &space) == 0 &&
            quint64(space.f_bavail) * space.f_bsize < quint64(content.size()) + space.f_bsize) {
            QString reason;
            if (overwriteInPlace(target, content, &reason))
                return true;
            if (error)
                *error = reason;
            return false;
        }
    }
    OutputFile file;
    if (file.open(path, rule) && file.write(content) && file.commit())
        return true;
    QString reason = file.errorString();
    const int code = file.errorCode();
    struct stat info = {};
    // No room shows as ENOSPC, or (some FUSE file systems) as a write refused once the copy
    // was made: the folder took a new file, so it is not write-protected.
    const bool noRoom = code == ENOSPC || code == EDQUOT || (code == EPERM && file.temporaryMade());
    if (rule == OutputFile::Rule::ReplaceOrOverwrite && noRoom && !file.targetPath().isEmpty() &&
        ::stat(file.targetPath().constData(), &info) == 0 && S_ISREG(info.st_mode) &&
        info.st_size == content.size()) {
        if (overwriteInPlace(file.targetPath(), content, &reason))
            return true;
    }
    if (error)
        *error = reason;
    return false;
}

} // namespace kavro
