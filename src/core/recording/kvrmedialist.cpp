#include "kvrmedialist.h"

#include "kvrmedialistdelegate.h"

#include "recordingscan.h"

#include <QMutexLocker>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <string>
#include <utility>

namespace kavro {

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
    for (RecordingName& record : RecordingScan::collect(nativePath(dir), stop))
        array.append(std::make_shared<const KVRMedia>(std::move(record)));
}

void KVRMediaList::eachDir(const QString& dir, QList<KVRMediaPtr>& array)
{
    collect(dir, array, StopCheck());
}

KVRMediaPtr KVRMediaList::createMediaByPath(const QString& path)
{
    if (std::optional<RecordingName> record = RecordingName::admitted(nativePath(path)))
        return std::make_shared<const KVRMedia>(std::move(*record));
    return nullptr;
}

QString KVRMediaList::mediaPairKey(const QString& name)
{
    return pathText(RecordingName::pairKey(nativePath(name)));
}

void KVRMediaList::filePair(Content& content, const KVRMediaPtr& media)
{
    // The key of the record's file name, without building the name: its stem is the mediaName.
    auto slot =
        content.mediaPairDic.find(pathText(RecordingName::pairKey(media->recordingName().name())));
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
