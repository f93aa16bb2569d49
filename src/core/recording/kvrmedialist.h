#pragma once

#include "kvrmedia.h"
#include "kvrmediapair.h"
#include "recordingscan.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>

#include <atomic>
#include <functional>
#include <optional>

namespace kavro {

class KVRMediaListDelegate;

// The recordings of a folder and its subfolders, sorted by start time, with a table that files
// each front recording with the rear recording of the same moment.
//
// A scan builds the new rows and pair table aside and swaps them in when it ends, so readers on
// any thread always see one whole list: the previous one until the swap, the new one after.
// When setDirectoryPath is called again while a scan runs, the older scan is abandoned; it
// publishes nothing and tells no one, so the last folder set always wins.
class KVRMediaList
{
public:
    // The scan stops collecting around this many recordings (see eachDir).
    static constexpr qsizetype MaxMedias = qsizetype(RecordingScan::MaxRecordings);

    KVRMediaList() = default;
    // Waits for a running scan to give up. Do not destroy the list on a thread the delegate
    // waits for.
    ~KVRMediaList();
    KVRMediaList(const KVRMediaList&) = delete;
    KVRMediaList& operator=(const KVRMediaList&) = delete;

    // Stores the folder and scans it on the global thread pool; returns at once. An empty path
    // is stored and starts nothing (the current rows stay).
    void setDirectoryPath(const QString& path);
    // The same scan on the calling thread, for the command line and tests: returns once the new
    // list is published and the delegate has been told.
    void setDirectoryPathAndWait(const QString& path);

    qsizetype count() const;
    KVRMediaPtr mediaAtIndex(qint64 index) const;
    // Accepts a bare name, a name with extension or a whole path, with or without the channel
    // suffix.
    std::optional<KVRMediaPair> findMediaPairWithFileName(const QString& name) const;
    // Appends a row and files it in its pair; a later record of the same name and channel takes
    // the slot of the earlier one, and both stay rows.
    void addMedia(const KVRMediaPtr& media);

    // The admission test of the scan: a record for a recording name, or null.
    static KVRMediaPtr createMediaByPath(const QString& path);
    // Collects the admissible ".avi" files below dir, in name order inside each folder.
    static void eachDir(const QString& dir, QList<KVRMediaPtr>& array);
    // The key of the pair table for a file name or path: without folder, extension and
    // "_F"/"_R" suffix.
    static QString mediaPairKey(const QString& name);

    QList<KVRMediaPtr> medias() const;
    QHash<QString, KVRMediaPair> mediaPairDic() const;
    QString directoryPath() const;
    KVRMediaListDelegate* delegate() const;
    void setDelegate(KVRMediaListDelegate* delegate);

private:
    struct Content
    {
        QList<KVRMediaPtr> medias;
        QHash<QString, KVRMediaPair> mediaPairDic;
    };
    using StopCheck = std::function<bool()>;

    static void filePair(Content& content, const KVRMediaPtr& media);
    static void collect(const QString& dir, QList<KVRMediaPtr>& array, const StopCheck& stop);
    quint64 storeDirectoryPath(const QString& path);
    void scan(const QString& path, quint64 generation);

    mutable QMutex m_lock;
    Content m_content;
    QString m_directoryPath;
    KVRMediaListDelegate* m_delegate = nullptr;
    // Bumped by every setDirectoryPath; a scan whose number is no longer current gives up.
    std::atomic<quint64> m_generation{0};
    QList<QFuture<void>> m_scans;
};

} // namespace kavro
