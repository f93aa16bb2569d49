#include "fusecard.h"
#include "recording/kvrmedialist.h"
#include "recording/kvrmedialistdelegate.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

using namespace kavro;

namespace {

// The rows as paths relative to root.
QStringList rows(const KVRMediaList& list, const QString& root)
{
    QStringList paths;
    for (const KVRMediaPtr& media : list.medias())
        paths << QDir(root).relativeFilePath(media->path());
    return paths;
}

QString relativePath(const QString& root, const KVRMediaPtr& media)
{
    return media ? QDir(root).relativeFilePath(media->path()) : QString();
}

class RecordingDelegate : public KVRMediaListDelegate
{
public:
    void mediaListChanged(KVRMediaList* list) override
    {
        QMutexLocker locker(&lock);
        ++calls;
        thread = QThread::currentThread();
        lastCount = list->count();
    }

    QMutex lock;
    int calls = 0;
    QThread* thread = nullptr;
    qsizetype lastCount = -1;
};

} // namespace

class TestKVRMediaList : public QObject
{
    Q_OBJECT

private slots:
    // Listed paths are the folder's path from the root without detours, as the list prints them.
    void folderPathsAreCleaned_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("clean");
        QTest::newRow("dots and doubled slashes") << "/a/./b//c/"
                                                  << "/a/b/c";
        QTest::newRow("parent") << "/a/b/../../c/.."
                                << "/";
        QTest::newRow("above the root") << "/../x"
                                        << "/x";
        QTest::newRow("relative") << "x/../y" << QDir::currentPath() + "/y";
    }

    void folderPathsAreCleaned()
    {
        QFETCH(QString, given);
        QFETCH(QString, clean);
        QCOMPARE(QString::fromStdString(RecordingScan::cleanAbsolute(given.toStdString())), clean);
    }

    void scanSortsAndPairs()
    {
        QTemporaryDir root;
        QVERIFY(test::makeFiles(
            root.path(),
            {"day1/alwa_20240131_120000_R.avi", "day1/alwa_20240131_120000_F.avi",
             "day1/sub/deeper/event_20240131_120000_R.AVI", "day2/motion_20240131_110000_F.avi",
             "ALWA_20241399_999999_F.avi", "folder.avi/alwa_20240131_100000_R.avi",
             // Not admitted: extension, length, channel suffix (case-sensitive), time range.
             "notes.txt", "alwa_20240131_120000_F.mp4", "clip.avi",
             "alwa_20240131_120000_xxx_F.avi", "alwa_20240131_120000_X.avi",
             "alwa_20240131_120000_f.avi", "alwa_20241331_120000_F.avi",
             "motion_20240131_250000_R.avi"}));

        KVRMediaList list;
        list.setDirectoryPathAndWait(root.path());
        QCOMPARE(
            rows(list, root.path()),
            QStringList({"ALWA_20241399_999999_F.avi", "folder.avi/alwa_20240131_100000_R.avi",
                         "day2/motion_20240131_110000_F.avi",
                         "day1/sub/deeper/event_20240131_120000_R.AVI",
                         "day1/alwa_20240131_120000_F.avi", "day1/alwa_20240131_120000_R.avi"}));
        QCOMPARE(list.count(), 6);
        QVERIFY(!list.mediaAtIndex(-1));
        QVERIFY(!list.mediaAtIndex(list.count()));

        // Every row sits in the pair of its group, in the slot of its channel.
        const QHash<QString, KVRMediaPair> pairs = list.mediaPairDic();
        QCOMPARE(pairs.size(), 5);
        for (const KVRMediaPtr& media : list.medias()) {
            KVRMediaPair pair = pairs.value(media->mediaGroupName());
            QCOMPARE(media->isFrontMedia() ? pair.frontMedia() : pair.rearMedia(), media);
        }
        KVRMediaPair both = pairs.value("alwa_20240131_120000");
        QCOMPARE(both.partnerOf(*both.frontMedia()), both.rearMedia());
        KVRMediaPair lone = pairs.value("motion_20240131_110000");
        QVERIFY(!lone.rearMedia());
        QVERIFY(!lone.partnerOf(*lone.frontMedia()));

        for (const char* name : {"/elsewhere/alwa_20240131_120000_R.avi", "alwa_20240131_120000_F",
                                 "alwa_20240131_120000"})
            QCOMPARE(list.findMediaPairWithFileName(name)->rearMedia(), both.rearMedia());
        QVERIFY(!list.findMediaPairWithFileName("alwa_20240131_120000_f"));
    }

    // Both fronts of one moment stay rows, in folder order; the later one holds the pair's slot.
    // A second folder then replaces the first wholly.
    void laterRecordTakesTheSlotUntilAnotherFolder()
    {
        QTemporaryDir first;
        QTemporaryDir second;
        QVERIFY(test::makeFiles(first.path(),
                                {"a/alwa_20240131_120000_F.avi", "b/alwa_20240131_120000_F.avi",
                                 "a/alwa_20240131_120000_R.avi", "event_20240131_130000_F.avi"}));
        QVERIFY(test::makeFiles(second.path(), {"alwa_20240131_120000_F.avi"}));
        KVRMediaList list;
        list.setDirectoryPathAndWait(first.path());
        QCOMPARE(rows(list, first.path()),
                 QStringList({"a/alwa_20240131_120000_F.avi", "b/alwa_20240131_120000_F.avi",
                              "a/alwa_20240131_120000_R.avi", "event_20240131_130000_F.avi"}));
        auto pair = list.findMediaPairWithFileName("alwa_20240131_120000");
        QCOMPARE(relativePath(first.path(), pair->frontMedia()), "b/alwa_20240131_120000_F.avi");
        QCOMPARE(relativePath(first.path(), pair->rearMedia()), "a/alwa_20240131_120000_R.avi");

        list.setDirectoryPathAndWait(second.path());
        QCOMPARE(rows(list, second.path()), QStringList({"alwa_20240131_120000_F.avi"}));
        QCOMPARE(list.mediaPairDic().keys(), QStringList({"alwa_20240131_120000"}));
        QVERIFY(!list.findMediaPairWithFileName("alwa_20240131_120000")->rearMedia());

        // An empty path is stored and changes nothing else.
        list.setDirectoryPathAndWait(QString());
        QCOMPARE(list.directoryPath(), QString());
        QCOMPARE(list.count(), 1);
    }

    void linkLoopsAreListedOnce()
    {
        QTemporaryDir root;
        QVERIFY(test::makeFiles(root.path(),
                                {"a/alwa_20240131_120000_F.avi", "b/alwa_20240131_120000_R.avi"}));
        QVERIFY(QFile::link(root.path(), root.filePath("a/up")));
        QVERIFY(QFile::link(root.filePath("a"), root.filePath("b/also-a")));
        QVERIFY(QFile::link("missing", root.filePath("b/alwa_20240131_130000_F.avi")));

        KVRMediaList list;
        list.setDirectoryPathAndWait(root.path());
        // A dangling link counts as a file: its name is all the list looks at.
        QCOMPARE(rows(list, root.path()),
                 QStringList({"a/alwa_20240131_120000_F.avi", "b/alwa_20240131_120000_R.avi",
                              "b/alwa_20240131_130000_F.avi"}));
    }

    void backgroundScanTellsTheDelegateOnce_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<int>("count");

        QTest::newRow("recordings")
            << QStringList{"x/alwa_20240131_120000_F.avi", "y/alwa_20240131_120000_R.avi"} << 2;
        QTest::newRow("nothing admissible") << QStringList{"clip.avi", "readme.txt"} << 0;
        QTest::newRow("empty folder") << QStringList{} << 0;
    }

    void backgroundScanTellsTheDelegateOnce()
    {
        QFETCH(QStringList, files);
        QFETCH(int, count);

        QTemporaryDir root;
        QVERIFY(test::makeFiles(root.path(), files));
        RecordingDelegate delegate;
        KVRMediaList list;
        list.setDelegate(&delegate);
        list.addMedia(KVRMedia::mediaWithPath("/old/alwa_20240131_120000_F.avi"));
        list.setDirectoryPath(root.path());
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(delegate.calls, 1);
        QVERIFY(delegate.thread != QThread::currentThread());
        QCOMPARE(delegate.lastCount, count);
        QCOMPARE(list.count(), count);

        list.setDirectoryPath(QString());
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(delegate.calls, 1);
    }

    void lastFolderSetWins()
    {
        QTemporaryDir small;
        // On disk, not in memory: there a scan may end before its list is destroyed below.
        QTemporaryDir large;
        QVERIFY(test::makeFiles(small.path(), {"alwa_20240131_120000_F.avi"}));
        // Large enough that an older scan, had it not given up, would end after the newest one.
        QStringList many;
        for (int i = 0; i < 3000; ++i)
            many << QString::asprintf("%02d/alwa_20240131_%02d%02d%02d_F.avi", i / 60, i / 3600,
                                      i / 60 % 60, i % 60);
        QVERIFY(test::makeFiles(large.path(), many));

        RecordingDelegate delegate;
        KVRMediaList list;
        list.setDelegate(&delegate);
        // Switch at different stages of the large scan: listing, sorting, queued.
        for (int round = 0; round < 6; ++round) {
            list.setDirectoryPath(large.path());
            QThread::msleep((5 - round) * 2);
            list.setDirectoryPath(small.path());
        }
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(rows(list, small.path()), QStringList({"alwa_20240131_120000_F.avi"}));
        QCOMPARE(list.mediaPairDic().size(), 1);
        QCOMPARE(delegate.lastCount, 1);

        // A list destroyed with its scan under way waits for it; ASan sees any late access. A
        // scan may end, and report, before its list goes.
        for (int round = 0; round < 5; ++round) {
            KVRMediaList doomed;
            doomed.setDelegate(&delegate);
            doomed.setDirectoryPath(large.path());
        }
        QThreadPool* pool = QThreadPool::globalInstance();
        pool->waitForDone();
        // With every worker busy the scan is still queued when its list goes: it never reports.
        const int calls = delegate.calls;
        QSemaphore busy;
        for (int worker = 0; worker < pool->maxThreadCount(); ++worker)
            pool->start([&busy] { busy.acquire(); });
        for (int round = 0; round < 3; ++round) {
            KVRMediaList doomed;
            doomed.setDelegate(&delegate);
            doomed.setDirectoryPath(large.path());
        }
        busy.release(pool->maxThreadCount());
        pool->waitForDone();
        QCOMPARE(delegate.calls, calls);
    }

    void scanStopsAtTheLimit()
    {
        QTemporaryDir root(test::manyFilesTemplate());
        QStringList files;
        for (int i = 0; i < KVRMediaList::MaxMedias + 5; ++i)
            files << QString::asprintf("%s/alwa_20240131_%02d%02d%02d_F.avi", i < 60 ? "a" : "b",
                                       i / 3600, i / 60 % 60, i % 60);
        QVERIFY(test::makeFiles(root.path(), files));
        KVRMediaList list;
        list.setDirectoryPathAndWait(root.path());
        // Folders and names are taken in name order, so the cut falls at a known name.
        QCOMPARE(list.count(), KVRMediaList::MaxMedias);
        QCOMPARE(list.mediaAtIndex(list.count() - 1)->mediaName(), "alwa_20240131_040959_F");
    }

    // The card pulled out of its reader while its folders are read: the scan ends, and the list
    // holds what was read before, in order.
    void cardPulledOutDuringTheScan()
    {
        QTemporaryDir dir;
        QStringList files;
        // A folder a day, enough of them that the scan is still under way when the card goes.
        for (int day = 0; day < 100; ++day) {
            for (int i = 0; i < 3; ++i)
                files << QString::asprintf("DCIM/%03d/alwa_2024%02d%02d_00%02d00_F.avi", day,
                                           day / 28 + 1, day % 28 + 1, i);
        }
        QVERIFY(test::makeFiles(dir.filePath("stage"), files));
        test::FuseCard card;
        const QString mount = dir.filePath("mnt");
        QString error;
        QVERIFY2(card.insert(dir.filePath("card.img"), dir.filePath("stage"), 8, mount, &error),
                 qPrintable(error));
        // Pulled while the fourth day's folder is read.
        card.freezeWhen("readdir(/DCIM/003)");

        RecordingDelegate delegate;
        KVRMediaList list;
        list.setDelegate(&delegate);
        list.setDirectoryPath(mount);
        QTRY_VERIFY_WITH_TIMEOUT(card.frozen(), 20000);
        card.pull();
        const auto reported = [&delegate] {
            QMutexLocker locker(&delegate.lock);
            return delegate.calls;
        };
        QTRY_COMPARE_WITH_TIMEOUT(reported(), 1, 20000);
        const QStringList read = rows(list, mount);
        QVERIFY2(!read.isEmpty() && read.size() < files.size(), qPrintable(read.join(' ')));
        // Each row one of the card's files, once, in time order.
        QVERIFY(std::includes(files.begin(), files.end(), read.begin(), read.end()));
    }
};

QTEST_GUILESS_MAIN(TestKVRMediaList)
#include "tst_kvrmedialist.moc"
