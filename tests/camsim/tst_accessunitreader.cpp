#include "accessunitreader.h"

#include <QBuffer>
#include <QTest>

using kavro::camsim::AccessUnitReader;
using kavro::camsim::EncodedFrame;

namespace {

const QByteArray Long("\0\0\0\1", 4);
const QByteArray Short("\0\0\1", 3);
const QByteArray Delimiter = QByteArray::fromHex("09f0");
const QByteArray Sps = QByteArray::fromHex("6764001facd9");
const QByteArray Pps = QByteArray::fromHex("68ebe3cb");
const QByteArray Banner = QByteArray::fromHex("0605ff") + "x264 banner";

QByteArray slice(int type, int length, char fill)
{
    return QByteArray(1, static_cast<char>(0x60 | type)) + QByteArray(length, fill);
}

std::vector<EncodedFrame> readAll(const QByteArray& stream)
{
    QByteArray copy = stream;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    AccessUnitReader reader(buffer);
    std::vector<EncodedFrame> frames;
    EncodedFrame frame;
    while (reader.next(frame))
        frames.push_back(frame);
    return frames;
}

} // namespace

class TestAccessUnitReader : public QObject
{
    Q_OBJECT

private slots:
    void splitsAtDelimitersAndDropsWhatACameraDoesNotWrite()
    {
        const QByteArray idr = slice(5, 40, 'I');
        const QByteArray p1 = slice(1, 30, 'P');
        const QByteArray p2 = slice(1, 20, 'Q');
        // Start codes of both lengths, trailing zero padding after a slice.
        const QByteArray stream = Long + Delimiter + Long + Sps + Long + Pps + Short + Banner +
                                  Long + idr + Long + Delimiter + Short + p1 + QByteArray(3, '\0') +
                                  Long + Delimiter + Long + p2;
        const std::vector<EncodedFrame> frames = readAll(stream);
        QCOMPARE(frames.size(), std::size_t(3));
        QCOMPARE(frames[0].data, Long + Sps + Long + Pps + Long + idr);
        QVERIFY(frames[0].keyFrame);
        QCOMPARE(frames[1].data, Long + p1);
        QVERIFY(!frames[1].keyFrame);
        QCOMPARE(frames[2].data, Long + p2);
    }

    void nalUnitsLargerThanOneReadBlock()
    {
        // The first slice ends two bytes before the reader's 1 MiB block does, so the next
        // start code straddles the boundary; the second slice is larger than a block.
        const QByteArray big = slice(5, (1 << 20) - 13, 'B');
        const QByteArray other = slice(1, (1 << 20) + 5, 'C');
        const QByteArray stream = Long + Delimiter + Long + big + Long + Delimiter + Long + other;
        const std::vector<EncodedFrame> frames = readAll(stream);
        QCOMPARE(frames.size(), std::size_t(2));
        QCOMPARE(frames[0].data, Long + big);
        QCOMPARE(frames[1].data, Long + other);
    }

    void emptyAndHeaderlessStreams()
    {
        QVERIFY(readAll(QByteArray()).empty());
        QVERIFY(readAll(QByteArray("no start code here")).empty());
        // Units before the first delimiter belong to no frame.
        QVERIFY(readAll(Long + slice(1, 10, 'x')).empty());
        QVERIFY(readAll(Long + Delimiter + Long + Delimiter).empty());
    }
};

QTEST_MAIN(TestAccessUnitReader)
#include "tst_accessunitreader.moc"
