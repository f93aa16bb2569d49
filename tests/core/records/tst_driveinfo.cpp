#include "records/kvrflashdata.h"
#include "testsupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <functional>

using namespace kavro;

namespace {

// The record of the viewer's example export line, as the camera writes it: sequence 17, Thursday,
// valid, 2026/03/05 07:04:09, 3724.5000 N 12701.2000 E, 57, 123.4, max 88, +5 -128 +256, 12.4 V.
_DRIVE_INFO_T fromBytes(const char* hex)
{
    QByteArray bytes = QByteArray::fromHex(hex);
    _DRIVE_INFO_T record;
    std::memcpy(&record, bytes.constData(), std::min<std::size_t>(bytes.size(), sizeof record));
    return record;
}
const _DRIVE_INFO_T Example =
    fromBytes("110004017e03050704098c0e88139d31d0073900d20400000000000058000000050080ff00017c00");

// count records numbered from 1, the header claiming `claimed`, followed by `extra` stray bytes.
QByteArray driveFile(int count, std::uint32_t claimed, int extra = 0)
{
    KVRFlashData data;
    std::vector<_DRIVE_INFO_T> records(std::size_t(count), Example);
    for (int i = 0; i < count; ++i)
        records[std::size_t(i)].seq = std::uint16_t(i + 1);
    data.setRecords(records);
    QByteArray bytes = data.fileBytes() + QByteArray(extra, '\x7f');
    qToLittleEndian(claimed, bytes.data());
    return bytes;
}

} // namespace

class TestDriveInfo : public QObject
{
    Q_OBJECT

private slots:
    void cellTexts()
    {
        QStringList cells;
        for (int column = 0; column < FlashDataColumnCount; ++column)
            cells.append(flashDataCellText(column, Example, 0));
        QCOMPARE(cells.join(','), "1,17,2026/03/05,07:04:09,THU,3724.5000,12701.2000,123.4,57,88,"
                                  "A,+0.02,-0.50,+1.00,12.4");

        const struct
        {
            int column;
            std::function<void(_DRIVE_INFO_T&)> change;
            const char* text;
        } cases[] = {
            {ColumnIndex, {}, "42"},
            {ColumnYoil, [](auto& r) { r.yoil = 6; }, "SAT"},
            {ColumnYoil, [](auto& r) { r.yoil = 7; }, "-"},
            {ColumnValue, [](auto& r) { r.value = 2; }, "V"},
            {ColumnBattery, [](auto& r) { r.battery = 98; }, " 9.8"},
            {ColumnBattery, [](auto& r) { r.battery = -5; }, " 0.-5"},
            {ColumnDate, [](auto& r) { r.year = 255; }, "2155/03/05"},
            {ColumnLat, [](auto& r) { r.latFrac = 5; }, "3724.0005"},
            {ColumnLat, [](auto& r) { r.latFrac = 65535; }, "3724.65535"},
            {FlashDataColumnCount, {}, ""},
        };
        for (const auto& c : cases) {
            _DRIVE_INFO_T r = Example;
            if (c.change)
                c.change(r);
            QCOMPARE(flashDataCellText(c.column, r, 41), QString::fromLatin1(c.text));
        }
    }

    // Made in integers so that no locale can put a comma in them, these texts must still equal the
    // C library's "%+.2f" and "%.1f" in the C locale, ties and "-0.00" included.
    void fractionalTextsMatchPrintf()
    {
        std::setlocale(LC_NUMERIC, "C");
        char expected[64];
        _DRIVE_INFO_T r = Example;
        for (int value = -32768; value <= 32767; ++value) {
            r.xAxis = std::int16_t(value);
            std::snprintf(expected, sizeof expected, "%+.2f", value * 0.00390625);
            QCOMPARE(flashDataCellText(ColumnX, r, 0), QString::fromLatin1(expected));
        }
        for (std::uint32_t tenths : {0u, 7u, 123456789u, 4294967295u}) {
            r.drivingDistance = tenths;
            std::snprintf(expected, sizeof expected, "%.1f", tenths / 10.0);
            QCOMPARE(flashDataCellText(ColumnDrivingDistance, r, 0), QString::fromLatin1(expected));
        }
    }

    void reader_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("expected");
        QTest::newRow("empty file") << QByteArray() << 0;
        QTest::newRow("11 bytes") << QByteArray(11, '\xff') << 0;
        QTest::newRow("count 0, records after") << driveFile(3, 0) << 0;
        QTest::newRow("fewer claimed than present") << driveFile(5, 2) << 2;
        QTest::newRow("100 claimed, 10 and a part") << driveFile(10, 100, 25) << 10;
        QTest::newRow("billions claimed") << driveFile(2, 0xffffffffu, 39) << 2;
    }

    void reader()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, expected);
        QTemporaryDir dir;
        QString path = dir.filePath("kavro_000.drv");
        QVERIFY(test::writeFile(path, bytes));
        KVRFlashData data;
        QVERIFY(data.doReadFlashDataFile(path));
        QCOMPARE(data.count(), qint64(expected));
        if (expected > 0)
            QCOMPARE(data.stringForColumnIndex(ColumnSeq, expected - 1), QString::number(expected));

        // A file that cannot be read leaves the records held.
        QString error;
        QVERIFY(!data.doReadFlashDataFile(dir.filePath("missing.drv"), &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!data.doReadFlashDataFile(dir.path()));
        QCOMPARE(data.count(), qint64(expected));

        // Through a pipe, whose size is unknown in advance, the same records come out.
        QProcess pipe;
        pipe.start("cat", {path});
        QVERIFY(pipe.waitForFinished() && pipe.isSequential());
        QCOMPARE(KVRFlashData::readRecords(pipe).size(), std::size_t(expected));
    }

    // The bytes of the export are checked through `kavro drv`; here what only the window does.
    void csvDocument()
    {
        KVRFlashData data;
        data.setRecords({Example, Example});
        QVERIFY(data.csvDocument(QStringList(15, "T"))
                    .startsWith("T,T,T,T,T,T,T,T,T,T,T,T,T,T,T\n1,17,2026/03/05,"));
        QTemporaryDir dir;
        QVERIFY(data.doWriteCSVFile(dir.filePath("kavro_000.csv")));
        QCOMPARE(test::readFile(dir.filePath("kavro_000.csv")).count('\n'), 3);
        QVERIFY(!data.doWriteCSVFile(dir.filePath("no/such/folder/out.csv")));
    }

    void mapPosition()
    {
        KVRFlashData data;
        _DRIVE_INFO_T noFix = Example;
        noFix.lat = noFix.latFrac = 0;
        data.setRecords({Example, noFix});

        std::optional<FlashDataPosition> position = data.positionForRow(0);
        QVERIFY(position && position->movesMap());
        QVERIFY(qAbs(position->latitude - (37 + 24.5 / 60)) < 1e-9);
        QVERIFY(qAbs(position->longitude - (127 + 1.2 / 60)) < 1e-9);
        QVERIFY(!data.positionForRow(1)->movesMap());
        QVERIFY(!data.positionForRow(-1) && !data.positionForRow(2));
    }
};

QTEST_GUILESS_MAIN(TestDriveInfo)
#include "tst_driveinfo.moc"
