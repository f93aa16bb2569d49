#include "telemetry/kvraviwriter.h"
#include "telemetry/tripplan.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace kavro;

// Drives are cut on the times of the file names, which the camera lets run past the calendar
// (24 o'clock, second 60); files named on the command line need no recording name.
class TestTripPlan : public QObject
{
    Q_OBJECT

private:
    // A recording of the given seconds by its header (one frame a second).
    QString write(const QString& name, int seconds)
    {
        KVRAviWriter::Layout layout;
        layout.video.fpsNumerator = 1;
        KVRAviWriter writer(layout);
        const QString path = m_dir.filePath(name);
        if (!writer.open(path))
            return {};
        for (int s = 0; s < seconds; ++s)
            writer.addVideoFrame("frame");
        return writer.close() ? path : QString();
    }

    QTemporaryDir m_dir;

private slots:
    void drives_data()
    {
        QTest::addColumn<double>("gap");
        QTest::addColumn<QList<int>>("drives"); // per file, in list order
        // clip.avi (no time) first, then 23:59:30 for 30 s, 24:00:00 for 30 s (00:00:30 the
        // next day), 00:01:00 after a 30 s pause, 00:02:00 a minute later after 60 s of
        // recording, and 00:02:30 inside it.
        QTest::newRow("gap 30") << 30.0 << QList<int>{1, 2, 2, 2, 2, 2};
        QTest::newRow("gap 29") << 29.0 << QList<int>{1, 2, 2, 3, 3, 3};
        QTest::newRow("gap 0") << 0.0 << QList<int>{1, 2, 2, 3, 3, 3};
    }

    void drives()
    {
        QFETCH(double, gap);
        QFETCH(QList<int>, drives);
        const QStringList paths{
            write("alwa_20240131_235930_F.avi", 30),  write("alwa_20240131_240000_F.avi", 30),
            write("alwa_20240201_000100_F.avi", 60),  write("alwa_20240201_000200_F.avi", 60),
            write("event_20240201_000230_F.avi", 10), write("clip.avi", 5)};
        QVERIFY(!paths.contains(QString()));
        TripPlan::Options options;
        options.gapSeconds = gap;
        std::vector<std::string> bytes;
        for (const QString& path : paths)
            bytes.push_back(path.toStdString());
        const TripPlan plan = TripPlan::make(bytes, options);
        QVERIFY(plan.problems().empty());
        QList<int> got;
        QStringList order;
        for (const TripPlan::Recording& recording : plan.recordings()) {
            got << recording.drive;
            order << QString::fromStdString(recording.media.fileName());
        }
        QCOMPARE(order.first(), QString("clip.avi"));
        QCOMPARE(got, drives);
        QCOMPARE(plan.recordings()[3].seconds, 60.0);
        QCOMPARE(qsizetype(plan.drives().size()), qsizetype(drives.last()));
    }
};

QTEST_GUILESS_MAIN(TestTripPlan)
#include "tst_tripplan.moc"
