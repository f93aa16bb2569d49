#include "outputfile.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <random>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace kavro {

namespace {

// Links are followed at most this many times, as the kernel does.
constexpr int MaxLinkHops = 40;

std::string reasonOf(int code)
{
    return std::strerror(code);
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? std::string("/") : path.substr(0, slash);
}

std::optional<int> descriptorNumber(std::string_view digits)
{
    if (digits.empty() || digits.front() < '0' || digits.front() > '9')
        return std::nullopt;
    int fd = -1;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), fd);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return fd;
}

// A name part for a temporary file that no one can guess ahead.
std::string randomWord()
{
    static std::mt19937_64 generator{std::random_device()()};
    char text[16];
    const auto result =
        std::to_chars(text, text + sizeof text, std::uint32_t(generator() & 0xffffffffu), 36);
    return std::string(text, result.ptr);
}

// The names by which a process means a descriptor it already holds. Reopening them would
// truncate what the shell opened for appending, and renaming over them replaces the system's
// link with a file.
std::optional<int> processDescriptor(const std::string& path)
{
    if (path == "-" || path == "/dev/stdout")
        return 1;
    if (path == "/dev/stderr")
        return 2;
    for (const std::string& prefix :
         {std::string("/dev/fd/"), std::string("/proc/self/fd/"),
          std::string("/proc/thread-self/fd/"), "/proc/" + std::to_string(::getpid()) + "/fd/"}) {
        if (path.starts_with(prefix))
            return descriptorNumber(std::string_view(path).substr(prefix.size()));
    }
    return std::nullopt;
}

bool writeAll(int fd, const char* data, std::int64_t size, int* code)
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

bool syncFolder(const std::string& folder)
{
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
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

bool OutputFile::failWith(int code, const std::string& reason)
{
    if (m_errorCode == 0) {
        m_errorCode = code;
        m_error = reason.empty() ? reasonOf(code) : reason;
    }
    return false;
}

bool OutputFile::open(const std::string& path, Rule rule)
{
    cancel();
    m_rule = rule;
    m_temporaryMade = false;
    m_error.clear();
    m_errorCode = 0;
    m_target.clear();
    std::string current = path;
    if (current.empty())
        return failWith(ENOENT, "no file name");

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
                                "descriptor " + std::to_string(*fd) + " is not open for writing");
            m_kind = Kind::Descriptor;
            m_fd = *fd;
            if (*fd == 1)
                std::fflush(stdout);
            else if (*fd == 2)
                std::fflush(stderr);
            return true;
        }
        struct stat info = {};
        if (::lstat(current.c_str(), &info) != 0) {
            if (errno != ENOENT && errno != ENOTDIR)
                return failWith(errno);
            break; // a new file, or a folder that is none: the checks below say which
        }
        if (!S_ISLNK(info.st_mode))
            break;
        std::string link(std::size_t(info.st_size > 0 ? info.st_size : 256) + 1, '\0');
        const ssize_t length = ::readlink(current.c_str(), link.data(), link.size());
        if (length < 0)
            return failWith(errno);
        link.resize(std::size_t(length));
        current = link.starts_with('/') ? link : folderOf(current) + '/' + link;
    }

    m_target = current;
    struct stat info = {};
    const bool exists = ::stat(current.c_str(), &info) == 0;
    if (exists && S_ISDIR(info.st_mode))
        return failWith(EISDIR, current + " is a folder");
    if (exists && !S_ISREG(info.st_mode)) {
        // Devices, pipes and sockets are written where they are.
        if (!openInPlace(current, 0))
            return false;
        m_kind = Kind::Direct;
        return true;
    }

    const std::string folder = folderOf(current);
    struct stat folderInfo = {};
    if (::stat(folder.c_str(), &folderInfo) != 0)
        return failWith(errno, "folder " + folder + " does not exist");
    if (!S_ISDIR(folderInfo.st_mode))
        return failWith(ENOTDIR, folder + " is not a folder");
    // A file made here and not written whole is removed again: a card left with an empty clock
    // file is worse than one without.
    if (rule == Rule::KeepTail)
        return openInPlace(current, exists ? 0 : O_CREAT | O_EXCL);
    return openTemporary(current);
}

bool OutputFile::failToOpen(int code, const std::string& what)
{
    if (code == EACCES || code == EPERM || code == EROFS)
        return failWith(code, what + " is not writable (" + reasonOf(code) + ")");
    return failWith(code);
}

bool OutputFile::openInPlace(const std::string& target, int flags, mode_t mode)
{
    const int fd = ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | flags, mode);
    if (fd < 0)
        return failToOpen(errno, target);
    m_fd = fd;
    m_kind = Kind::InPlace;
    if (flags & O_EXCL)
        m_temporary = target; // made by us: removed again if the write fails
    return true;
}

bool OutputFile::openFreshPrivate(const std::string& target)
{
    struct stat info = {};
    if (::lstat(target.c_str(), &info) == 0) {
        // Another user may have planted a link or a file of theirs here to catch what we write.
        if (!S_ISREG(info.st_mode) || info.st_uid != ::geteuid())
            return failWith(EEXIST, target + " is not a file of this user's; left as it is");
        if (::unlink(target.c_str()) != 0 && errno != ENOENT)
            return failWith(errno);
    } else if (errno != ENOENT) {
        return failWith(errno);
    }
    // Whatever appears between the removal and here is refused, a link included.
    return openInPlace(target, O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
}

bool OutputFile::openTemporary(const std::string& target)
{
    struct stat old = {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    const std::string folder = folderOf(target);
    const std::string name = target.substr(target.rfind('/') + 1);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string candidate = folder + "/." + name + '.' + randomWord();
        // 0666 less the umask, applied by the kernel: the umask itself is never touched.
        const int fd =
            ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, 0666);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return failToOpen(errno, "folder " + folder);
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

bool OutputFile::write(const char* data, std::int64_t size)
{
    if (m_fd < 0)
        return failWith(EBADF, m_error.empty() ? std::string("not open") : m_error);
    if (m_errorCode != 0)
        return false;
    int code = 0;
    if (!writeAll(m_fd, data, size, &code))
        return failWith(code);
    return true;
}

bool OutputFile::seek(std::int64_t position)
{
    if (m_fd < 0 || m_errorCode != 0)
        return false;
    if (m_kind == Kind::Descriptor || m_kind == Kind::Direct ||
        ::lseek(m_fd, off_t(position), SEEK_SET) < 0)
        return failWith(ESPIPE, "cannot seek in " + m_target);
    return true;
}

bool OutputFile::commit()
{
    if (m_fd < 0 || m_errorCode != 0) {
        cancel();
        return m_errorCode == 0 ? failWith(EBADF, "not open") : false;
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
    if (m_kind == Kind::Temporary && ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
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
    if (!m_temporary.empty()) {
        ::unlink(m_temporary.c_str());
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
bool readStart(const std::string& path, std::string* bytes, int* code)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    const bool ok =
        fd >= 0 && ::pread(fd, bytes->data(), bytes->size(), 0) == ssize_t(bytes->size());
    if (!ok)
        *code = errno ? errno : EIO;
    if (fd >= 0)
        ::close(fd);
    return ok;
}

bool writeStart(const std::string& path, std::string_view bytes, int* code)
{
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    bool ok =
        fd >= 0 && writeAll(fd, bytes.data(), std::int64_t(bytes.size()), code) && !syncFailed(fd);
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
bool overwriteInPlace(const std::string& target, std::string_view content, std::string* reason)
{
    std::string old(content.size(), '\0');
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
    std::string back(content.size(), '\0');
    if (!readStart(target, &back, &code)) {
        *reason = reasonOf(code);
        return false;
    }
    if (back != content) {
        *reason = "what was read back differs from what was written";
        return false;
    }
    return true;
}

} // namespace

bool writeFile(const std::string& path, std::string_view content, std::string* error,
               OutputFile::Rule rule)
{
    // A card that has no room for a copy is written in place without trying one, which would
    // only end half-made.
    if (rule == OutputFile::Rule::ReplaceOrOverwrite) {
        char resolved[PATH_MAX];
        const std::string target = ::realpath(path.c_str(), resolved) ? resolved : "";
        struct stat info = {};
        struct statvfs space = {};
        if (!target.empty() && ::stat(target.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
            std::uint64_t(info.st_size) == content.size() &&
            ::statvfs(folderOf(target).c_str(), &space) == 0 &&
            std::uint64_t(space.f_bavail) * space.f_bsize <
                std::uint64_t(content.size()) + space.f_bsize) {
            std::string reason;
            if (overwriteInPlace(target, content, &reason))
                return true;
            if (error)
                *error = reason;
            return false;
        }
    }
    OutputFile file;
    if (file.open(path, rule) && file.write(content.data(), std::int64_t(content.size())) &&
        file.commit())
        return true;
    std::string reason = file.errorText();
    const int code = file.errorCode();
    struct stat info = {};
    // No room shows as ENOSPC, or (some FUSE file systems) as a write refused once the copy
    // was made: the folder took a new file, so it is not write-protected.
    const bool noRoom = code == ENOSPC || code == EDQUOT || (code == EPERM && file.temporaryMade());
    if (rule == OutputFile::Rule::ReplaceOrOverwrite && noRoom && !file.target().empty() &&
        ::stat(file.target().c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
        std::uint64_t(info.st_size) == content.size()) {
        if (overwriteInPlace(file.target(), content, &reason))
            return true;
    }
    if (error)
        *error = reason;
    return false;
}

} // namespace kavro
