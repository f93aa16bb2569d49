#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace kavro {

// The one way the program writes a file. What happens depends on what the path names:
// - a regular file, or a path that does not exist yet: the content goes to a temporary file in
//   the same folder, which is synced and renamed over the target (keeping the old file's mode
//   and, for root, its owner), and the folder is synced; a failure leaves the old file whole;
// - "-", /dev/stdout, /dev/stderr, /dev/fd/N, /proc/self/fd/N: the descriptor the process
//   already holds is written, so "-o /dev/stdout >> log" appends as a plain ">>" would;
// - a symbolic link: followed to its final target, which is then treated as above; the link
//   stays a link;
// - a device, pipe or socket: opened and written in place, never renamed over;
// - a folder, or a path whose folder is missing or not writable: an error, and nothing is made.
// The process's umask is never changed: new files get 0666 less the umask from the kernel.
class OutputFile
{
public:
    enum class Rule
    {
        // Replaced atomically (see above).
        Replace,
        // Replaced atomically, but where the folder has no room for a temporary copy and the old
        // file has the new content's size, overwritten in place, synced and read back. A card
        // that loop recording has filled must still take a new config.bin.
        ReplaceOrOverwrite,
        // Written from its first byte without truncating: bytes past the new content stay. A
        // file this made is removed again when the write fails.
        KeepTail,
        // Made afresh; an existing file (or link) is never replaced.
        CreateNew,
        // Made afresh and readable by its owner only, for a fixed name in a folder everyone may
        // write to: a regular file of this user's own is removed first; a link, or anything
        // someone else owns, is refused and left as it is.
        FreshPrivate,
    };

    OutputFile() = default;
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Resolves the path and opens what will be written. False with errorString() set when the
    // target can't be written; nothing has been created then.
    bool open(const QString& path, Rule rule = Rule::Replace);
    bool write(const char* data, qint64 size);
    bool write(const QByteArray& bytes) { return write(bytes.constData(), bytes.size()); }
    // Moves the write position; only regular files can seek.
    bool seek(qint64 position);
    // Makes the content final: synced, renamed into place, folder synced. False leaves the
    // target as it was (for the atomic rules).
    bool commit();
    // Drops what was written to a temporary file; closes the rest.
    void cancel();

    const QString& errorString() const { return m_error; }
    // The errno of the first failure, 0 when none.
    int errorCode() const { return m_errorCode; }
    // A temporary copy was created beside the target (whatever happened to it afterwards).
    bool temporaryMade() const { return m_temporaryMade; }
    // The file the content lands in, after links were followed; empty for a descriptor.
    const QByteArray& targetPath() const { return m_target; }

private:
    enum class Kind
    {
        None,
        Descriptor,
        Direct,
        Temporary,
        InPlace
    };

    bool failWith(int code, const QString& reason = {});
    // Opening failed: a refusal to write names the file or folder that refused.
    bool failToOpen(int code, const QString& what);
    bool openTemporary(const QByteArray& target);
    bool openInPlace(const QByteArray& target, int flags, mode_t mode = 0666);
    bool openFreshPrivate(const QByteArray& target);
    void closeFd();

    Kind m_kind = Kind::None;
    Rule m_rule = Rule::Replace;
    int m_fd = -1;
    QByteArray m_target;
    QByteArray m_temporary;
    QString m_error;
    int m_errorCode = 0;
    bool m_temporaryMade = false;
};

// Writes the whole content by the rule. Returns false with the reason in error.
bool writeFile(const QString& path, const QByteArray& content, QString* error = nullptr,
               OutputFile::Rule rule = OutputFile::Rule::Replace);

} // namespace kavro
