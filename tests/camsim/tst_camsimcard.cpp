#include "cardgenerator.h"
#include "testsupport.h"
#include "timecode.h"
#include "videoencoder.h"

#include "qtbridge/qtbridge.h"
#include "telemetry/kvrblackboxdata.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>

using namespace kavro::camsim;
using kavro::KVRBlackBoxData;
Q_DECLARE_METATYPE(CardOptions)

namespace {

using kavro::test::readFile;

QString tool(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin", "/sbin"}) : found;
}

kavro::test::ToolResult run(const QString& program, const QStringList& arguments)
{
    return kavro::test::runProgram(tool(program), arguments, 120000);
}

} // namespace

class TestCamsimCard : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_work;
    std::unique_ptr<CardGenerator> m_card;

    const CardPlan& plan() const { return m_card->plan(); }
    QString cardPath(const QString& relative = {}) const
    {
        return QDir(m_work.filePath("card")).filePath(relative);
    }
    QString imagePath() const { return m_work.filePath("card.img"); }
    QString recordingPath(const RecordingPlan& recording, bool rear) const
    {
        return cardPath(plan().relativePath(recording, rear));
    }
    static CardOptions testOptions(const QString& out)
    {
        CardOptions options = CardOptions::quick();
        options.seed = 7;
        options.outDir = out;
        return options;
    }

private slots:
    void initTestCase()
    {
        kavro::test::isolatedConfigHome();
        if (VideoEncoder::ffmpegProgram().isEmpty())
            QSKIP("ffmpeg is not installed");
        CardOptions options = testOptions(cardPath());
        if (!tool("mkfs.fat").isEmpty() && !tool("mcopy").isEmpty())
            options.imagePath = imagePath();
        m_card = std::make_unique<CardGenerator>(options);
        QString error;
        QVERIFY2(m_card->generate(&error), qPrintable(error));
    }

    // The plans the tests use (the quick card with its default seed, the one above) and the demo.
    void planHasWhatTheViewerNeeds_data()
    {
        QTest::addColumn<CardOptions>("options");
        QTest::newRow("quick") << CardOptions::quick();
        QTest::newRow("quick, seed 7") << testOptions({});
        QTest::newRow("demo") << CardOptions();
    }

    void planHasWhatTheViewerNeeds()
    {
        QFETCH(CardOptions, options);
        const CardPlan card(options);
        // Both days, all three modes, a front file without a partner, each sound choice, and a
        // drive in the southern and western hemispheres.
        QSet<QDate> days;
        QSet<int> modes;
        QSet<QString> names;
        bool unpaired = false, frontOnly = false, rearOnly = false, silent = false;
        std::map<int, double> driveTime;
        for (const RecordingPlan& recording : card.recordings()) {
            days.insert(card.cameraStart(recording).date());
            modes.insert(int(recording.mode));
            names.insert(card.baseName(recording, false));
            unpaired |= !recording.hasRear;
            frontOnly |= recording.frontAudio && !recording.rearAudio;
            rearOnly |= !recording.frontAudio && recording.rearAudio;
            silent |= !recording.frontAudio && !recording.rearAudio;
            // A drive's recordings follow one another without overlapping.
            QVERIFY(recording.duration >= 1);
            QVERIFY(recording.start >= driveTime[recording.drive]);
            driveTime[recording.drive] = recording.start + recording.duration;
            if (recording.impact) {
                QCOMPARE(recording.mode, RecordingMode::Event);
                QVERIFY(*recording.impact > recording.start);
                QVERIFY(*recording.impact < recording.start + recording.duration - 0.3);
            }
        }
        QVERIFY(days.size() >= 2);
        QCOMPARE(modes.size(), 3);
        QCOMPARE(names.size(), int(card.recordings().size()));
        QVERIFY(unpaired && frontOnly && rearOnly && silent);
        QVERIFY(std::any_of(card.drives().begin(), card.drives().end(), [](const DrivePlan& d) {
            return d.route.originLatitude < 0 && d.route.originLongitude < 0;
        }));
    }

    void telemetryReadsBackAsWritten()
    {
        for (const RecordingPlan& recording : plan().recordings()) {
            const TelemetryPlan expected = plan().telemetry(recording).recording(
                recording.start, recording.duration, recording.impact);
            for (const bool rear : {false, true}) {
                if (rear && !recording.hasRear)
                    continue;
                KVRBlackBoxData store;
                QVERIFY(store.ExtractStreamInformation(
                    kavro::nativePath(recordingPath(recording, rear))));
                QCOMPARE(store.vGSensorData().size(), expected.gsensor.size());
                for (std::size_t k = 0; k < expected.gsensor.size(); ++k) {
                    QCOMPARE(std::memcmp(&store.vGSensorData()[k].data(), &expected.gsensor[k],
                                         sizeof(_AVI_GSENSOR_DATA_T)),
                             0);
                    QCOMPARE(store.GSensors()[k].x, float(expected.gsensor[k].xAxis) / 256);
                }
                QCOMPARE(store.gpsRecords().size(), expected.gps.size());
                for (std::size_t j = 0; j < expected.gps.size(); ++j) {
                    const auto& [record, fix] = store.gpsRecords()[j];
                    // The reader cuts the text into lines with NULs where the line ends were.
                    QCOMPARE(std::memcmp(&record->data(), &expected.gps[j],
                                         offsetof(_AVI_GPS_DATA_T, RawData)),
                             0);
                    QByteArray text(expected.gps[j].RawData, sizeof expected.gps[j].RawData);
                    text.replace('\r', '\0').replace('\n', '\0');
                    QCOMPARE(QByteArray(record->data().RawData, sizeof record->data().RawData),
                             text);
                    // The text's fields are read back in the composer's test; here the record's
                    // own fields agree with the text: the same position, the speed in km/h.
                    QCOMPARE(float(fix.Latitude), float(record->data().fLatitude));
                    QCOMPARE(float(fix.Longitude), float(record->data().fLongitude));
                    QVERIFY(std::abs(record->data().fSpeed - fix.SpeedOverGround * 1.852) <= 0.51);
                }
            }
        }
    }

    // The camera's clock runs on across the recordings of a drive, and only an event recording
    // crosses the default 0.5 g driving threshold.
    void clockRunsOnAndOnlyEventsHoldTheImpact()
    {
        std::map<int, std::uint32_t> lastSample;
        for (const RecordingPlan& recording : plan().recordings()) {
            KVRBlackBoxData store;
            QVERIFY(
                store.ExtractStreamInformation(kavro::nativePath(recordingPath(recording, false))));
            const auto& samples = store.vGSensorData();
            QVERIFY(!samples.empty());
            for (std::size_t k = 1; k < samples.size(); ++k)
                QCOMPARE(samples[k].data().timestamp - samples[k - 1].data().timestamp, 100u);
            const auto previous = lastSample.find(recording.drive);
            if (previous != lastSample.end() && recording.mode != RecordingMode::Motion)
                QCOMPARE(samples.front().data().timestamp, previous->second + 100);
            lastSample[recording.drive] = samples.back().data().timestamp;

            float peak = 0;
            for (const auto& g : store.GSensors())
                peak = std::max({peak, std::abs(g.x), std::abs(g.y), std::abs(g.z - 1)});
            QVERIFY2(recording.mode == RecordingMode::Event ? peak >= 1.5f && peak <= 3.0f
                                                            : peak < 0.5f,
                     qPrintable(plan().baseName(recording, false)));
        }
    }

    void cameraFilesSayWhatWasWritten()
    {
        const auto config = kavro::test::runKavro({"config", "show", cardPath("config.bin")});
        QCOMPARE(config.exitCode, 0);
        const QJsonObject settings = QJsonDocument::fromJson(config.out).object();
        QCOMPARE(settings["szPlateNumber"].toString(), QString(CardPlan::PlateNumber));
        QCOMPARE(settings["osd_plate_flag"].toInt(), 1);
        QCOMPARE(settings["checksum_valid"].toBool(), true);
        QCOMPARE(settings["time_gmt"].toInt(), 28); // +09:00, the zone of the recordings' names

        // The drive records are read back against the plan in the records window's test.
        const QByteArray clock = readFile(cardPath("timeset.cfg"));
        QCOMPARE(clock, plan().clockSetting().toString("yyyy/MM/dd HH:mm:ss").toLatin1());
        QVERIFY(plan().clockSetting() < plan().drives().front().cameraStart);
    }

    void imageIsACleanCameraCard()
    {
        if (!QFile::exists(imagePath()))
            QSKIP("mkfs.fat or mtools are not installed");
        const auto check = run("fsck.fat", {"-n", imagePath()});
        QVERIFY2(check.exitCode == 0, check.out.constData());
        const auto info = run("minfo", {"-i", imagePath()});
        for (const char* line : {"disk label=\"KAVRO", "fats: 2", "reserved (boot) sectors: 32",
                                 "backup boot sector=6", "disk type=\"FAT32"})
            QVERIFY2(info.out.contains(line), line);
        const auto listing = run("mdir", {"-i", imagePath(), "-/", "-b", "::/"});
        QCOMPARE(listing.exitCode, 0);
        const QMap<QString, QByteArray> files = kavro::test::folderContent(cardPath());
        for (auto it = files.begin(); it != files.end(); ++it)
            QVERIFY2(listing.out.contains(("::/" + it.key()).toUtf8()), qPrintable(it.key()));
        const QString copied = m_work.filePath("copied.avi");
        const QString sample = plan().relativePath(plan().recordings().front(), true);
        QCOMPARE(run("mcopy", {"-i", imagePath(), "::/" + sample, copied}).exitCode, 0);
        QCOMPARE(readFile(copied), files[sample]);
    }

    void frontAndRearShowTheSameFrame()
    {
        const int fps = plan().options().fps;
        for (const RecordingPlan& recording : plan().recordings()) {
            if (!recording.hasRear)
                continue;
            const int frame = int(recording.duration * fps) / 2 + 1;
            std::optional<int> seen[2];
            for (const bool rear : {false, true}) {
                const QString still = m_work.filePath(rear ? "rear.png" : "front.png");
                const auto grab =
                    run("ffmpeg",
                        {"-v", "error", "-i", recordingPath(recording, rear), "-vf",
                         QString("select=eq(n\\,%1)").arg(frame), "-frames:v", "1", "-y", still});
                QCOMPARE(grab.exitCode, 0);
                const QImage image(still);
                QCOMPARE(image.size(),
                         rear ? plan().options().rearSize : plan().options().frontSize);
                seen[rear] = TimeCode::read(image);
            }
            QCOMPARE(seen[0], std::optional<int>(frame));
            QCOMPARE(seen[1], std::optional<int>(frame));
        }
    }
};

QTEST_MAIN(TestCamsimCard)
#include "tst_camsimcard.moc"
