#include "telemetry/aviformat.h"
#include "telemetry/kvraviwriter.h"
#include "testsupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using kavro::KVRAviWriter;
using kavro::test::u32At;

namespace {

struct Chunk
{
    QByteArray id;
    QByteArray data;
};

// A short recording: every stream the layout has, odd-sized chunks included so that padding is
// exercised.
QList<Chunk> writeSample(const QString& path, const KVRAviWriter::Layout& layout)
{
    QList<Chunk> written;
    KVRAviWriter writer(layout);
    if (!writer.open(path))
        return {};
    for (int i = 0; i < 20; ++i) {
        const QByteArray video(1001 + i, char('a' + i));
        writer.addVideoFrame(video, i % 5 == 0);
        written.append({"00dc", video});
        if (layout.audio) {
            const QByteArray audio(1600, char(i));
            writer.addAudioChunk(audio);
            written.append({"01wb", audio});
        }
        if (layout.telemetry) {
            const QByteArray record(i % 10 == 3 ? 552 : 24, char(0x40 + i));
            writer.addTelemetryChunk(record);
            written.append({"02sb", record});
        }
    }
    return writer.close() ? written : QList<Chunk>{};
}

KVRAviWriter::Layout layoutWith(bool audio, bool telemetry)
{
    KVRAviWriter::Layout layout;
    layout.video.width = 64;
    layout.video.height = 36;
    layout.video.fpsNumerator = 10;
    if (audio)
        layout.audio = KVRAviWriter::AudioFormat{};
    layout.telemetry = telemetry;
    return layout;
}

} // namespace

class TestKVRAviWriter : public QObject
{
    Q_OBJECT

private slots:
    void layoutAndIndex_data()
    {
        QTest::addColumn<bool>("audio");
        QTest::addColumn<bool>("telemetry");
        QTest::addColumn<std::uint32_t>("streams");
        QTest::newRow("video, audio, telemetry") << true << true << 3u;
        QTest::newRow("no audio keeps telemetry at 2") << false << true << 3u;
        QTest::newRow("video and audio") << true << false << 2u;
        QTest::newRow("video only") << false << false << 1u;
    }

    void layoutAndIndex()
    {
        QFETCH(bool, audio);
        QFETCH(bool, telemetry);
        QFETCH(std::uint32_t, streams);
        const QString path = m_dir.filePath("layout.avi");
        const QList<Chunk> written = writeSample(path, layoutWith(audio, telemetry));
        QVERIFY(!written.isEmpty());
        const QByteArray file = kavro::test::readFile(path);

        QCOMPARE(file.left(4) + file.mid(8, 8) + file.mid(20, 4), QByteArray("RIFFAVI LISThdrl"));
        QCOMPARE(qsizetype(u32At(file, 4)) + 8, file.size());
        // The header list plus the JUNK padding end exactly where the stream data begins.
        const qsizetype junkAt = 20 + qsizetype(u32At(file, 16));
        QCOMPARE(file.mid(junkAt, 4), QByteArray("JUNK"));
        QCOMPARE(junkAt + 8 + qsizetype(u32At(file, junkAt + 4)), qsizetype(14132));
        QCOMPARE(u32At(file, 32 + 24), streams); // avih dwStreams
        QCOMPARE(u32At(file, 32 + 16), 20u);     // avih dwTotalFrames

        QCOMPARE(file.mid(kavro::avi::MoviListOffset, 4) + file.mid(kavro::avi::MoviTypeOffset, 4),
                 QByteArray("LISTmovi"));
        const qsizetype indexAt = kavro::avi::MoviTypeOffset + u32At(file, 14136);
        QCOMPARE(file.mid(indexAt, 4), QByteArray("idx1"));
        QCOMPARE(qsizetype(u32At(file, indexAt + 4)), written.size() * 16);
        QCOMPARE(indexAt + 8 + written.size() * 16, file.size());

        // Every entry points at its chunk's header, in writing order, with the data unchanged.
        qsizetype expectedOffset = 4;
        for (qsizetype i = 0; i < written.size(); ++i) {
            const qsizetype entry = indexAt + 8 + i * 16;
            QCOMPARE(file.mid(entry, 4), written[i].id);
            const std::uint32_t offset = u32At(file, entry + 8);
            const std::uint32_t size = u32At(file, entry + 12);
            QCOMPARE(offset, std::uint32_t(expectedOffset));
            QCOMPARE(qsizetype(size), written[i].data.size());
            const qsizetype header = kavro::avi::MoviTypeOffset + offset;
            QCOMPARE(file.mid(header, 4), written[i].id);
            QCOMPARE(u32At(file, header + 4), size);
            QCOMPARE(file.mid(header + 8, size), written[i].data);
            if (written[i].id == "00dc")
                QCOMPARE(u32At(file, entry + 4) == 0x10, (i / (audio + telemetry + 1)) % 5 == 0);
            expectedOffset += 8 + size + size % 2;
        }
    }

    void failuresKeepOldFile()
    {
        const QString path = m_dir.filePath("keep.avi");
        QVERIFY(kavro::test::writeFile(path, "old content"));
        {
            KVRAviWriter writer(layoutWith(false, false));
            QVERIFY(writer.open(path));
            QVERIFY(writer.addVideoFrame("frame"));
            QVERIFY(!writer.addAudioChunk("no audio stream"));
            QVERIFY(!writer.addTelemetryChunk("no telemetry stream"));
            QVERIFY(!writer.errorString().isEmpty());
            // Destroyed without close: the recording was abandoned.
        }
        QCOMPARE(kavro::test::readFile(path), QByteArray("old content"));
        QCOMPARE(QDir(m_dir.path()).entryList({"keep.avi*"}), QStringList{"keep.avi"});

        KVRAviWriter writer(layoutWith(true, true));
        QVERIFY(!writer.open(m_dir.filePath("missing/folder/x.avi")));
        QVERIFY(!writer.errorString().isEmpty());
        QVERIFY(!writer.addVideoFrame("frame"));
        QVERIFY(!writer.close());
        // The same writer goes on with another file.
        QVERIFY(writer.open(path) && writer.addVideoFrame("frame") && writer.close());
        QVERIFY(kavro::test::readFile(path).startsWith("RIFF"));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestKVRAviWriter)
#include "tst_kvraviwriter.moc"
