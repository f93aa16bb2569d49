#include "kvrmedialist.h"

#include "kvrmedialistdelegate.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QMutexLocker>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcMediaList, "kavro.recording")

namespace kavro {

namespace {

// The folder walk talks to the file system directly: readdir's entry types spare a stat per file,
// which is what lets a full card list in about the time `find` takes.
struct FolderWalk
{
    QList<KVRMediaPtr>& array;
    const std::function<bool()>& stop;
    // Every folder is listed once, however many links lead to it; this also ends link loops.
    std::set<std::pair<dev_t, ino_t>> visited;
};

// One folder's entries, their names kept in one buffer rather than one allocation each.
struct FolderEntries
{
    struct Entry
    {
        std::size_t offset;
        std::size_t length;
        unsigned char type;
    };

    std::string names;
    std::vector<Entry> entries;

    const char* name(const Entry& entry) const { return names.data() + entry.offset; }
    std::string_view view(const Entry& entry) const { return {name(entry), entry.length}; }
};

bool hasChannelSuffix(QStringView name)
{
    return name.endsWith(QLatin1StringView("_F")) || name.endsWith(QLatin1StringView("_R"));
}

// The last component of a path without its extension.
QStringView stemOfPath(QStringView path)
{
    QStringView stem;
    QStringView extension;
    KVRMedia::splitFileName(path.mid(path.lastIndexOf(u'/') + 1), &stem, &extension);
    return stem;
}

// The pair-table key of a name without extension: the name less its "_F"/"_R" suffix.
QString pairKeyOfStem(QStringView stem)
{
    return (hasChannelSuffix(stem) ? stem.chopped(2) : stem).toString();
}

// ".avi" in any case after a non-empty name, as the extension test of the scan reads it.
bool hasAviExtension(std::string_view name)
{
    return name.size() > 4 && qstrnicmp(name.data() + name.size() - 4, ".avi", 4) == 0;
}

// The folder path joined with an entry name. A name that does not survive the trip through
// QString could not be opened again by path, so such entries are passed over.
bool entryPath(const QString& folder, std::string_view native, QString* path)
{
    const bool ascii = std::all_of(native.begin(), native.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    QString decoded;
    if (!ascii) {
        QByteArray bytes(native.data(), static_cast<qsizetype>(native.size()));
        decoded = QFile::decodeName(bytes);
        if (QFile::encodeName(decoded) != bytes)
            return false;
    }
    path->reserve(folder.size() + 1 + static_cast<qsizetype>(native.size()));
    *path += folder;
    if (!folder.endsWith(u'/'))
        *path += u'/';
    if (ascii)
        *path += QLatin1StringView(native.data(), static_cast<qsizetype>(native.size()));
    else
        *path += decoded;
    return true;
}

bool isFolder(int folderFd, const char* name, unsigned char type)
{
    if (type == DT_DIR)
        return true;
    if (type != DT_LNK && type != DT_UNKNOWN)
        return false;
    // Links are followed, as an existence test follows them; a dangling one counts as a file.
    struct stat status;
    return ::fstatat(folderFd, name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

FolderEntries readEntries(DIR* folder)
{
    FolderEntries result;
    while (const dirent* entry = ::readdir(folder)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
            continue;
        std::size_t length = std::strlen(entry->d_name);
        result.entries.push_back({result.names.size(), length, entry->d_type});
        result.names.append(entry->d_name, length + 1);
    }
    // Name order rather than the file system's, so that the list, the record that wins a pair
    // slot and the cut at MaxMedias are the same on every machine.
    std::sort(result.entries.begin(), result.entries.end(),
              [&result](const FolderEntries::Entry& a, const FolderEntries::Entry& b) {
                  return result.view(a) < result.view(b);
              });
    return result;
}

// Lists the folder open at fd (and takes ownership of fd). pathBytes is the length of the
// folder's path in the file system's encoding; folders whose path would not fit PATH_MAX are
// left out, which also bounds the recursion.
void walkFolder(FolderWalk& walk, int fd, const QString& path, std::size_t pathBytes)
{
    struct stat status;
    if (::fstat(fd, &status) != 0 || !walk.visited.insert({status.st_dev, status.st_ino}).second) {
        ::close(fd);
        return;
    }
    DIR* folder = ::fdopendir(fd);
    if (!folder) {
        qCDebug(lcMediaList) << "cannot list" << path << std::strerror(errno);
        ::close(fd);
        return;
    }
    const FolderEntries listing = readEntries(folder);
    const int folderFd = ::dirfd(folder);
    for (const FolderEntries::Entry& entry : listing.entries) {
        if (walk.stop && walk.stop())
            break;
        const char* name = listing.name(entry);
        const bool folderEntry = isFolder(folderFd, name, entry.type);
        if (!folderEntry && !hasAviExtension(listing.view(entry)))
            continue;
        QString entryFullPath;
        if (!entryPath(path, listing.view(entry), &entryFullPath)) {
            qCDebug(lcMediaList) << "passing over an undecodable name in" << path;
            continue;
        }
        if (folderEntry) {
            std::size_t subBytes = pathBytes + 1 + entry.length;
            if (subBytes >= PATH_MAX)
                continue;
            int subFd = ::openat(folderFd, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            if (subFd < 0) {
                qCDebug(lcMediaList) << "cannot open" << entryFullPath << std::strerror(errno);
                continue;
            }
            walkFolder(walk, subFd, entryFullPath, subBytes);
            continue;
        }
        if (KVRMediaPtr media = KVRMediaList::createMediaByPath(entryFullPath)) {
            walk.array.append(std::move(media));
            // Ends only this folder's listing: a containing folder goes on with its next entry
            // and stops again after its next addition.
            if (walk.array.size() >= KVRMediaList::MaxMedias)
                break;
        }
    }
    ::closedir(folder);
}

} // namespace

KVRMediaList::~KVRMediaList()
{
    QList<QFuture<void>> running;
    {
        QMutexLocker locker(&m_lock);
        ++m_generation;
        running = m_scans;
    }
    for (QFuture<void>& scan : running)
        scan.waitForFinished();
}

quint64 KVRMediaList::storeDirectoryPath(const QString& path)
{
    QMutexLocker locker(&m_lock);
    m_directoryPath = path;
    m_scans.removeIf([](const QFuture<void>& scan) { return scan.isFinished(); });
    return ++m_generation;
}

void KVRMediaList::setDirectoryPath(const QString& path)
{
    quint64 generation = storeDirectoryPath(path);
    if (path.isEmpty())
        return;
    QFuture<void> future = QtConcurrent::run(QThreadPool::globalInstance(),
                                             [this, path, generation] { scan(path, generation); });
    QMutexLocker locker(&m_lock);
    m_scans.append(future);
}

void KVRMediaList::setDirectoryPathAndWait(const QString& path)
{
    quint64 generation = storeDirectoryPath(path);
    if (!path.isEmpty())
        scan(path, generation);
}

void KVRMediaList::scan(const QString& path, quint64 generation)
{
    const StopCheck superseded = [this, generation] {
        return m_generation.load(std::memory_order_relaxed) != generation;
    };
    if (superseded())
        return;
    QList<KVRMediaPtr> collection;
    collect(path, collection, superseded);
    if (superseded())
        return;
    std::stable_sort(
        collection.begin(), collection.end(),
        [](const KVRMediaPtr& a, const KVRMediaPtr& b) { return a->compareDate(*b) < 0; });
    Content built;
    built.medias = std::move(collection);
    for (const KVRMediaPtr& media : std::as_const(built.medias))
        filePair(built, media);

    KVRMediaListDelegate* delegate = nullptr;
    {
        QMutexLocker locker(&m_lock);
        if (superseded())
            return;
        std::swap(m_content, built);
        delegate = m_delegate;
    }
    // built now holds the previous rows; they are released on return, outside the lock.
    if (delegate)
        delegate->mediaListChanged(this);
}

void KVRMediaList::collect(const QString& dir, QList<KVRMediaPtr>& array, const StopCheck& stop)
{
    // Records hold absolute paths; resolving the folder once spares a lookup per record.
    const QString folder = QDir::isRelativePath(dir) ? QDir::current().absoluteFilePath(dir) : dir;
    QByteArray native = QFile::encodeName(folder);
    int fd = ::open(native.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        qCDebug(lcMediaList) << "cannot open folder" << folder << std::strerror(errno);
        return;
    }
    FolderWalk walk{array, stop, {}};
    walkFolder(walk, fd, folder, static_cast<std::size_t>(native.size()));
}

void KVRMediaList::eachDir(const QString& dir, QList<KVRMediaPtr>& array)
{
    collect(dir, array, StopCheck());
}

bool KVRMediaList::_checkTimeByName(QStringView name, qsizetype startPos)
{
    bool longEnough = false;
    KVRMediaTime time = KVRMediaTime::readFromName(name, startPos, &longEnough);
    return longEnough && time.isValid();
}

KVRMediaPtr KVRMediaList::createMediaByPath(const QString& path)
{
    // The record reads the name as the admission does: a recording-name length, then, for a known
    // prefix, a valid time, then a channel suffix; anything else leaves it without a channel (or,
    // for another length, unread). So one parse serves both.
    if (path.endsWith(u'/'))
        return nullptr; // a folder's path: its last component is empty
    KVRMediaPtr media = KVRMedia::mediaWithPath(path);
    if (!KVRMedia::hasRecordingNameLength(media->mediaNameView()) ||
        !(media->isFrontMedia() || media->isRearMedia()))
        return nullptr;
    return media;
}

QString KVRMediaList::mediaPairKey(const QString& name)
{
    return pairKeyOfStem(stemOfPath(name));
}

void KVRMediaList::filePair(Content& content, const KVRMediaPtr& media)
{
    // The key of the record's file name, without building the name: its stem is the mediaName.
    auto slot = content.mediaPairDic.find(pairKeyOfStem(media->mediaNameView()));
    if (slot == content.mediaPairDic.end())
        slot = content.mediaPairDic.insert(media->mediaGroupName(), KVRMediaPair());
    if (media->isRearMedia())
        slot->setRearMedia(media);
    else if (media->isFrontMedia())
        slot->setFrontMedia(media);
}

void KVRMediaList::addMedia(const KVRMediaPtr& media)
{
    if (!media)
        return;
    QMutexLocker locker(&m_lock);
    m_content.medias.append(media);
    filePair(m_content, media);
}

qsizetype KVRMediaList::count() const
{
    QMutexLocker locker(&m_lock);
    return m_content.medias.size();
}

KVRMediaPtr KVRMediaList::mediaAtIndex(qint64 index) const
{
    QMutexLocker locker(&m_lock);
    if (index < 0 || index >= m_content.medias.size())
        return nullptr;
    return m_content.medias.at(index);
}

std::optional<KVRMediaPair> KVRMediaList::findMediaPairWithFileName(const QString& name) const
{
    QString key = mediaPairKey(name);
    QMutexLocker locker(&m_lock);
    auto found = m_content.mediaPairDic.constFind(key);
    if (found == m_content.mediaPairDic.constEnd())
        return std::nullopt;
    return *found;
}

QList<KVRMediaPtr> KVRMediaList::medias() const
{
    QMutexLocker locker(&m_lock);
    return m_content.medias;
}

QHash<QString, KVRMediaPair> KVRMediaList::mediaPairDic() const
{
    QMutexLocker locker(&m_lock);
    return m_content.mediaPairDic;
}

QString KVRMediaList::directoryPath() const
{
    QMutexLocker locker(&m_lock);
    return m_directoryPath;
}

KVRMediaListDelegate* KVRMediaList::delegate() const
{
    QMutexLocker locker(&m_lock);
    return m_delegate;
}

void KVRMediaList::setDelegate(KVRMediaListDelegate* delegate)
{
    QMutexLocker locker(&m_lock);
    m_delegate = delegate;
}

} // namespace kavro
