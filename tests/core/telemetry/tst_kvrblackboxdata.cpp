#include "qtbridge/qtbridge.h"
#include "telemetry/cutshortavi.h"
#include "telemetry/kvraviwriter.h"
#include "telemetry/kvrblackboxdata.h"
#include "testsupport.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using kavro::KVRAviWriter;
using kavro::KVRBlackBoxData;
using kavro::test::setU32;
using kavro::test::u32At;
using Times = QList<std::uint32_t>;

namespace {

template <typename Record> QByteArray bytesOf(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof record);
}

QByteArray gsensor(std::uint32_t time, std::int32_t x = 0, std::int32_t tag = 171)
{
    return bytesOf(_AVI_GSENSOR_DATA_T{tag, time, x, -128, 0, 25});
}

QByteArray gps(std::uint32_t time, const QByteArray& nmea = {}, std::uint32_t length = 0)
{
    return bytesOf(kavro::test::gpsRecord(time, nmea, 0, 0, 0, '\0', length));
}

// The telemetry chunks in the given order; between them video and audio chunks whose bytes
// look like G-sensor records, which the reader must never take.
bool writeRecording(const QString& path, const QList<QByteArray>& telemetry, bool media = true)
{
    KVRAviWriter::Layout layout;
    layout.audio = KVRAviWriter::AudioFormat{};
    KVRAviWriter writer(layout);
    bool ok = writer.open(path);
    for (const QByteArray& chunk : telemetry) {
        if (media)
            ok = ok && writer.addVideoFrame(gsensor(999, 1)) && writer.addAudioChunk(gsensor(999));
        ok = ok && writer.addTelemetryChunk(chunk);
    }
    return writer.close() && ok;
}

qsizetype indexStart(const QByteArray& file)
{
    return 14148 + qsizetype(u32At(file, 14136));
}

// Sample times, a marker, then GPS record times: what a walk took from the file.
Times walked(const KVRBlackBoxData& store)
{
    Times times;
    for (const auto& raw : store.vGSensorData())
        times.append(raw.data().timestamp);
    times.append(0xffffffff);
    for (const auto& entry : store.gpsRecords())
        times.append(entry.record->data().nTimestamp);
    return times;
}

// The walk written as plainly as possible over the whole file in memory; the store reads the
// index in blocks and must take exactly the same records.
Times plainWalk(const QByteArray& file)
{
    if (!file.startsWith("RIFF") || file.mid(8, 4) != "AVI ")
        return {};
    Times gsensorTimes, gpsTimes;
    const std::uint64_t size = file.size(), riffEnd = u32At(file, 4) + 8ull;
    for (std::uint64_t next = size >= 14140 ? 14148ull + u32At(file, 14136) : size;
         next + 16 <= size;) {
        std::uint64_t got = 4;
        if (file.mid(qsizetype(next), 4) == "02sb") {
            const std::uint64_t data = 14148ull + u32At(file, qsizetype(next) + 8);
            const bool isGps = u32At(file, qsizetype(next) + 12) > 32;
            got = data < size ? std::min<std::uint64_t>(size - data, isGps ? 552 : 24) : 0;
            const QByteArray head = file.mid(qsizetype(data), 8).leftJustified(8, '\0');
            if (isGps && u32At(head, 0) == 205)
                gpsTimes.append(u32At(head, 4));
            else if (!isGps && u32At(head, 0) == 171 && got == 24)
                gsensorTimes.append(u32At(head, 4));
        }
        next += 16;
        if (next > riffEnd || got < 1 || size <= next)
            break;
    }
    return gsensorTimes + Times{0xffffffff} + gpsTimes;
}

} // namespace

class TestKVRBlackBoxData : public QObject
{
    Q_OBJECT

private slots:
    void merge_data()
    {
        QTest::addColumn<Times>("samples");
        QTest::addColumn<Times>("records");
        QTest::addColumn<Times>("expected"); // GPS record number per sample
        const Times ten{0, 100, 200, 300, 400, 500, 600, 700, 800, 900};
        QTest::newRow("two records, samples left")
            << ten << Times{250, 650} << Times{0, 0, 0, 1, 1, 1, 1};
        QTest::newRow("records after the last sample") << ten << Times{5000, 6000} << Times(10, 0);
        QTest::newRow("tenths, not milliseconds")
            << Times{100, 249, 300} << Times{250, 2000} << Times{0, 0, 1};
        QTest::newRow("early records take one sample each")
            << Times{100, 200, 300} << Times{50, 60, 5000, 6000} << Times{0, 1, 2};
        QTest::newRow("no GPS") << ten << Times{} << Times{};
        QTest::newRow("no samples") << Times{} << Times{100} << Times{};
    }

    void merge()
    {
        QFETCH(Times, samples);
        QFETCH(Times, records);
        QFETCH(Times, expected);
        QList<QByteArray> chunks; // in time order, a GPS record after the samples of its moment
        qsizetype g = 0;
        for (std::uint32_t time : samples) {
            for (; g < records.size() && records[g] < time; ++g)
                chunks.append(gps(records[g]));
            chunks.append(gsensor(time));
        }
        for (; g < records.size(); ++g)
            chunks.append(gps(records[g]));
        QVERIFY(writeRecording(path("merge.avi"), chunks));

        KVRBlackBoxData store;
        QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("merge.avi"))));
        QCOMPARE(walked(store), samples + Times{0xffffffff} + records);
        Times merged;
        for (qsizetype k = 0; k < qsizetype(store.vGpsData().size()); ++k) {
            merged.append(store.vGpsRecordIndex()[k]);
            QCOMPARE(store.vGpsData()[k], store.gpsRecords()[merged.last()].record);
        }
        QCOMPARE(merged, expected);
    }

    void nmeaSplitting()
    {
        // Noise before '$' is dropped, CR, LF and NUL separate and become NULs; other talkers and a
        // last line without an end don't count. Each entry is the fix after its own line.
        KVRBlackBoxData store;
        static const char noisy[] =
            "xx$GNGNS,1,,,,,N,07,1.5,,*00\r\n$PERD,1*00\0$GPGSV,1*00\n$GNRMC*";
        QByteArray text(noisy, sizeof noisy - 1);
        QVERIFY(store.ParseNMEA(text.data(), std::uint32_t(text.size())));
        QCOMPARE(store.NMEAs().size(), std::size_t(2));
        QCOMPARE(store.NMEAs()[0].SatelliteUsedCount, 7u);
        QCOMPARE(text.count('\0'), 4);

        // nLen bounds the text, and never reaches past the 508 bytes of a record.
        const QByteArray rmc = "$GNRMC,1,A,,,,,5,6,010120*00\n";
        QVERIFY(writeRecording(path("nlen.avi"),
                               {gps(100, rmc + rmc, std::uint32_t(rmc.size())),
                                gps(200, QByteArray(508 - rmc.size(), '\n') + rmc, 100000),
                                gps(300, QByteArray(508, '$'), 508)}));
        QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("nlen.avi"))));
        QCOMPARE(store.NMEAs().size(), std::size_t(2));
        QCOMPARE(store.gpsRecords().size(), std::size_t(3));
    }

    void skipRules()
    {
        QByteArray badGps = gps(300);
        badGps[0] = char(204);
        QVERIFY(writeRecording(path("skip.avi"),
                               {gsensor(100, INT32_MIN), gsensor(200, 0, 172), badGps,
                                gps(700).left(33), gsensor(800, 512) + QByteArray(8, 'x'),
                                gsensor(850, 256), gsensor(900).left(20)}));
        QByteArray file = kavro::test::readFile(path("skip.avi"));
        QCOMPARE(file.right(16).left(4), QByteArray("02sb"));
        file.replace(file.size() - 16, 4, "02SB"); // another stream's chunk
        QVERIFY(kavro::test::writeFile(path("skip.avi"), file));

        // Wrong tags are dropped; 33 bytes make a GPS record, 32 a G-sensor one.
        KVRBlackBoxData store;
        QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("skip.avi"))));
        QCOMPARE(walked(store), (Times{100, 800, 850, 0xffffffff, 700}));
        // Counts of 256 make 1 g; y is -128 in every sample.
        const kavro::KVRGSensor& first = store.GSensors()[0];
        QCOMPARE(std::vector<float>({first.x, first.y, first.z}),
                 std::vector<float>({-8388608, -0.5, 0}));
        QCOMPARE(store.GSensors()[1].x, 2.0f);
        QCOMPARE(store.GSensors()[2].x, 1.0f);
        // One frame fewer than samples, never none.
        QCOMPARE(store.frameCount(), std::uint64_t(2));
        store.clear();
        QCOMPARE(store.frameCount(), std::uint64_t(1));
    }

    void stopConditions_data()
    {
        QTest::addColumn<QString>("cut");
        QTest::addColumn<int>("samples");
        QTest::newRow("complete") << "none" << 10;
        QTest::newRow("RIFF ends inside the index") << "riff" << 5;
        QTest::newRow("entry points past the file's end") << "offset" << 6;
        QTest::newRow("file ends inside an entry") << "truncate" << 3;
        QTest::newRow("last record cut short") << "short" << 9;
    }

    void stopConditions()
    {
        QFETCH(QString, cut);
        QFETCH(int, samples);
        QList<QByteArray> chunks;
        for (std::uint32_t time = 100; time <= 1000; time += 100)
            chunks.append(gsensor(time));
        QVERIFY(writeRecording(path("stop.avi"), chunks, false));
        QByteArray file = kavro::test::readFile(path("stop.avi"));
        const qsizetype index = indexStart(file);
        QCOMPARE(file.size(), index + 10 * 16);
        if (cut == "riff") { // the entry that starts at the RIFF end is still read
            setU32(file, 4, std::uint32_t(index + 4 * 16 - 8));
        } else if (cut == "offset") {
            setU32(file, index + 6 * 16 + 8, 0xfffffff0);
        } else if (cut == "truncate") {
            file.truncate(index + 3 * 16 + 15);
        } else if (cut == "short") { // tag, time and x of the last record, then the file ends
            setU32(file, index + 9 * 16 + 8, std::uint32_t(file.size() - 14148));
            file += gsensor(1000).left(12);
        }
        QVERIFY(kavro::test::writeFile(path("stop.avi"), file));

        KVRBlackBoxData store;
        QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("stop.avi"))));
        QCOMPARE(int(store.GSensors().size()), samples);
        QCOMPARE(store.vGSensorData().back().data().timestamp, std::uint32_t(samples * 100));
    }

    void limitsStopAmplification()
    {
        // One GPS chunk full of sentences, referenced by thousands of index entries.
        QByteArray sentences;
        while (sentences.size() < 500)
            sentences += "$GP,*\n";
        QVERIFY(writeRecording(path("amplify.avi"), {gps(100, sentences)}, false));
        QByteArray file = kavro::test::readFile(path("amplify.avi"));
        file += file.right(16).repeated(5000);
        setU32(file, 4, std::uint32_t(file.size() - 8));
        QVERIFY(kavro::test::writeFile(path("amplify.avi"), file));

        KVRBlackBoxData store;
        KVRBlackBoxData::Limits limits;
        limits.nmeaFixes = 20000;
        store.setLimits(limits);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("read stopped"));
        QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("amplify.avi"))));
        QVERIFY(store.limitReached());
        QCOMPARE(store.NMEAs().size(), std::size_t(20000));
        QCOMPARE(store.gpsRecords().size(), std::size_t(20000 / 84 + 1));
    }

    // Damaged copies of a recording and files made to mislead: the store must neither crash nor
    // part from the plain walk. Whether the players can read such a file to its end is fuzz_avi's.
    void hostileFilesMatchPlainWalk()
    {
        QList<QByteArray> chunks;
        for (std::uint32_t time = 100; time < 3000; time += 100) {
            chunks.append(gsensor(time, int(time)));
            if (time % 1000 == 0)
                chunks.append(gps(time, "$GPGGA,1,3733.5,N,12659.4,E,1,8,0.9,,,,,,*00\r\n"));
        }
        QVERIFY(writeRecording(path("valid.avi"), chunks));
        const QByteArray valid = kavro::test::readFile(path("valid.avi"));
        const QByteArray riff = valid.left(12), movi = valid.left(14136);
        QByteArray selfReferring = movi + QByteArray(4, '\0') + "movi";
        for (int i = 0; i < 4000; ++i) // "02sb" entries pointing into the index itself
            selfReferring += QByteArray("02sb\0\0\0\0\x20\0\0\0\x30\0\0\0", 16);
        QList<QByteArray> files{
            {}, "RIFF", "RIFF\4\0\0\0WAVE", riff, movi + "\xff\xff\xff\xffmovi", selfReferring};

        QRandomGenerator random(5);
        for (int round = 0; round < 300; ++round) {
            QByteArray file = valid;
            for (int edits = 1 + random.bounded(8); edits > 0; --edits) { // mostly in the index
                const int at = random.bounded(2) ? int(indexStart(valid)) + random.bounded(200)
                                                 : random.bounded(int(valid.size()) - 4);
                setU32(file, std::min<qsizetype>(at, file.size() - 4), random.generate());
            }
            if (random.bounded(4) == 0)
                file.truncate(random.bounded(int(file.size())));
            files.append(file);
        }
        KVRBlackBoxData store;
        for (const QByteArray& file : files) {
            QVERIFY(kavro::test::writeFile(path("hostile.avi"), file));
            const bool isAvi =
                store.ExtractStreamInformation(kavro::nativePath(path("hostile.avi")));
            QCOMPARE(isAvi ? walked(store) : Times{}, plainWalk(file));
            QCOMPARE(isAvi,
                     file.size() >= 12 && file.startsWith("RIFF") && file.mid(8, 4) == "AVI ");
            QVERIFY(store.vGpsData().size() <= store.GSensors().size());
        }
        QVERIFY(!store.ExtractStreamInformation(kavro::nativePath(path("absent.avi"))));
    }

    // A power loss leaves the index out (the camera writes it last), and sometimes a placeholder
    // movi size. Recovery must take exactly the records the index would have named, up to the
    // last chunk that is wholly in the file.
    void recoversRecordingsCutShort()
    {
        QList<QByteArray> chunks;
        for (std::uint32_t time = 100; time <= 4000; time += 100) {
            chunks.append(gsensor(time, int(time)));
            if (time % 500 == 0)
                chunks.append(gps(time, QString::asprintf("$GPRMC,0123%02u.00,A,3733.5,N,"
                                                          "12659.4,E,42.0,90.0,241126,,*00\r\n",
                                                          time / 100)
                                            .toLatin1()));
        }
        QVERIFY(writeRecording(path("whole.avi"), chunks));
        const QByteArray whole = kavro::test::readFile(path("whole.avi"));
        KVRBlackBoxData reference;
        reference.setRecoverCutShort(true);
        QVERIFY(reference.ExtractStreamInformation(kavro::nativePath(path("whole.avi"))));
        QVERIFY(!reference.recovered()); // an index is always walked when there is one
        QCOMPARE(reference.GSensors().size(), std::size_t(40));

        // The chunk end of every telemetry record, in index order.
        QList<qsizetype> ends;
        for (qsizetype entry = indexStart(whole); entry + 16 <= whole.size(); entry += 16)
            if (whole.mid(entry, 4) == "02sb")
                ends.append(14148 + qsizetype(u32At(whole, entry + 8) + u32At(whole, entry + 12)));
        QCOMPARE(ends.size(), chunks.size());

        KVRBlackBoxData plain, store;
        store.setRecoverCutShort(true);
        for (qsizetype cut = 14100; cut < indexStart(whole); cut += 997) {
            for (const std::uint32_t placeholder : {0u, 0xffffffffu, std::uint32_t(-1) / 2}) {
                QByteArray file = whole.left(cut);
                if (placeholder && file.size() >= 14140)
                    setU32(file, 14136, placeholder);
                QVERIFY(kavro::test::writeFile(path("cut.avi"), file));
                QVERIFY(plain.ExtractStreamInformation(kavro::nativePath(path("cut.avi"))));
                QVERIFY(plain.GSensors().empty() && plain.NMEAs().empty());
                QVERIFY(store.ExtractStreamInformation(kavro::nativePath(path("cut.avi"))));
                QVERIFY(store.recovered());

                const qsizetype present = std::count_if(ends.cbegin(), ends.cend(),
                                                        [&](qsizetype end) { return end <= cut; });
                Times expected;
                for (qsizetype i = 0; i < present; ++i)
                    if (chunks[i].size() == 24)
                        expected.append(u32At(chunks[i], 4));
                expected.append(0xffffffff);
                for (qsizetype i = 0; i < present; ++i)
                    if (chunks[i].size() == 552)
                        expected.append(u32At(chunks[i], 4));
                QCOMPARE(walked(store), expected);
                QCOMPARE(store.NMEAs().size(), store.gpsRecords().size()); // each text read

                // What the players are given: the same chunks with the index they would have had,
                // which the plain index walk reads as the recovery does.
                const auto shown = kavro::CutShortAvi::open(path("cut.avi"));
                QCOMPARE(bool(shown), present > 0);
                if (!shown)
                    continue;
                QFile cutFile(path("cut.avi"));
                QVERIFY(cutFile.open(QIODevice::ReadOnly));
                QByteArray whole(qsizetype(shown->size()), '\0');
                QCOMPARE(shown->read(cutFile, 0, whole.data(), whole.size()), whole.size());
                QVERIFY(kavro::test::writeFile(path("shown.avi"), whole));
                QVERIFY(plain.ExtractStreamInformation(kavro::nativePath(path("shown.avi"))));
                QCOMPARE(walked(plain), expected);
                QVERIFY(!kavro::CutShortAvi::open(path("shown.avi"))); // it has its index now
            }
        }
    }

private:
    QString path(const char* name) { return m_dir.filePath(name); }
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestKVRBlackBoxData)
#include "tst_kvrblackboxdata.moc"
