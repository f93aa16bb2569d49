#include "settings/filedata.h"
#include "settings/settingfile.h"
#include "settings/timezonetable.h"

#include "common/preferences.h"
#include "settingtestdata.h"
#include "testsupport.h"

#include <QTemporaryDir>
#include <QTimeZone>
#include <QtTest>

using namespace kavro;
using test::randomRecordBytes;

class TestFileData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        test::isolatedConfigHome();
        QVERIFY(m_dir.isValid());
    }

    void defaults()
    {
        openPreferences()->remove(PrefExternalRearCamera);
        // Every non-zero default of the camera, by offset.
        const QList<QPair<int, quint32>> words = {
            {0, 22310},  {4, 1},    {8, 70},    {12, 1},     {16, 30},  {20, 12100}, {32, 3},
            {40, 1},     {44, 1},   {48, 3},    {52, 2},     {60, 1},   {68, 2},     {72, 2},
            {76, 128},   {80, 2},   {84, 2},    {88, 50},    {92, 45},  {96, 45},    {100, 10},
            {104, 8},    {108, 8},  {112, 8},   {116, 3},    {120, 3},  {124, 96},   {128, 97},
            {132, 3600}, {136, 92}, {140, 60},  {152, 1},    {168, 28}, {180, 1},    {184, 1},
            {188, 1},    {196, 1},  {200, 1},   {204, 1},    {208, 1},  {212, 1},    {216, 60},
            {220, 20},   {224, 1},  {228, 176}, {232, 3000}, {236, 1},  {244, 1},    {264, 1},
            {268, 2},    {272, 2},  {276, 2},   {280, 1},    {292, 1},  {296, 98},   {300, 1},
            {308, 1},    {320, 96}, {328, 1},   {340, 1},    {388, 4},  {424, 1}};
        QByteArray expected(FileDataSize, '\0');
        for (const auto& [offset, value] : words)
            qToLittleEndian<quint32>(value, expected.data() + offset);
        expected.replace(256, 5, "Kavro");

        _FILEDATA record;
        QVERIFY(fileDataFromBytes(randomRecordBytes(1), record));
        makeDefaultFileData(record);
        QCOMPARE(fileDataBytes(record).toHex(' '), expected.toHex(' '));
        QString path = m_dir.filePath("defaults.bin");
        QVERIFY(!writeDefaultSettingFile(path));
        QCOMPARE(test::readFile(path), expected);

        // A reset card keeps the external camera bits last chosen on this computer.
        openPreferences()->setValue(PrefExternalRearCamera, 5);
        makeDefaultFileData(record);
        QCOMPARE(record.external_rear_camera, 5u);
        openPreferences()->remove(PrefExternalRearCamera);
    }

    void checksumAndSavePreparation()
    {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            QByteArray bytes = randomRecordBytes(seed);
            _FILEDATA record;
            QVERIFY(fileDataFromBytes(bytes, record));
            QCOMPARE(fileDataChecksum(record), test::byteWiseChecksum(bytes));
            record.cfg_ver ^= 0xFFFF; // the first word is outside the sum
            QCOMPARE(fileDataChecksum(record), test::byteWiseChecksum(bytes));
        }

        _FILEDATA record;
        QVERIFY(fileDataFromBytes(randomRecordBytes(99), record));
        QByteArray before = fileDataBytes(record);
        setPlateNumber(record, "AB12cd34");
        prepareFileDataForSave(record);
        QByteArray after = fileDataBytes(record);
        QCOMPARE(after.mid(256, 8), QByteArray("AB12cd34")); // the whole field, no terminating zero
        QCOMPARE(after.mid(264), before.mid(264));
        QCOMPARE(record.osd_plate_flag, 1);
        QVERIFY(test::checksumHolds(after));

        setPlateNumber(record, QString());
        prepareFileDataForSave(record);
        after = fileDataBytes(record);
        QCOMPARE(after.mid(256, 8), QByteArray(8, '\0'));
        QCOMPARE(record.osd_plate_flag, 0);
        QVERIFY(test::checksumHolds(after));
        QCOMPARE(after.mid(4, 152), before.mid(4, 152));
    }

    void roundTripKeepsEveryByte()
    {
        QString path = m_dir.filePath("roundtrip.bin");
        for (quint32 seed = 100; seed < 110; ++seed) {
            QByteArray bytes = randomRecordBytes(seed);
            _FILEDATA record;
            QVERIFY(fileDataFromBytes(bytes, record));
            QVERIFY(!writeSettingFile(record, path));
            QCOMPARE(test::readFile(path), bytes);
            _FILEDATA read;
            QVERIFY(readSettingFile(path, read));
            QCOMPARE(fileDataBytes(read), bytes);
        }
        _FILEDATA record;
        QVERIFY(!fileDataFromBytes(randomRecordBytes(1).left(427), record));
        QVERIFY(!fileDataFromBytes(randomRecordBytes(1) + 'x', record));
    }

    void readHonoursFileSize()
    {
        for (int size : {0, 427, 428, 100000}) {
            QByteArray content = randomRecordBytes(3).repeated(size / 428 + 1).left(size);
            QString path = m_dir.filePath(QStringLiteral("size%1.bin").arg(size));
            QVERIFY(test::writeFile(path, content));
            _FILEDATA record;
            makeDefaultFileData(record);
            QByteArray defaults = fileDataBytes(record);
            QCOMPARE(readSettingFile(path, record), size >= 428);
            // What the file holds is read, never more; the rest of the record is left alone.
            int read = qMin(size, 428);
            QCOMPARE(fileDataBytes(record), content.left(read) + defaults.mid(read));
        }
    }

    void failedWriteKeepsOldFile()
    {
        QString path = m_dir.filePath("config.bin");
        QByteArray old = randomRecordBytes(42);
        QVERIFY(test::writeFile(path, old));
        _FILEDATA record;
        makeDefaultFileData(record);
        {
            test::FileSizeLimit fullCard(100);
            QCOMPARE(writeSettingFile(record, path), QString("msg.file_open_fail"));
            QCOMPARE(writeDefaultSettingFile(path), QString("msg.file_open_fail"));
        }
        QCOMPARE(test::readFile(path), old);
        QCOMPARE(writeSettingFile(record, m_dir.filePath("missing/config.bin")),
                 QString("msg.file_open_fail"));
        QCOMPARE(writeSettingFile(record, m_dir.path()), QString("msg.file_open_fail"));

        QByteArray before = fileDataBytes(record);
        QVERIFY(!readSettingFile(m_dir.filePath("missing.bin"), record));
        QVERIFY(!readSettingFile(m_dir.path(), record));
        QCOMPARE(fileDataBytes(record), before);
    }

    void timeZoneIndex_data()
    {
        QTest::addColumn<int>("offsetSeconds");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("label");
        QTest::newRow("+05:30") << 19800 << 22 << "+05:30";
        QTest::newRow("-04:30") << -16200 << 8 << "-04:30";
        QTest::newRow("+14:00") << 50400 << -1 << "";
        QTest::newRow("+12:45") << 45900 << -1 << "";
        QTest::newRow("-00:30") << -1800 << -1 << "";
        QTest::newRow("GMT") << 0 << 14 << "00:00";
        QTest::newRow("first") << -43200 << 0 << "-12:00";
        QTest::newRow("last") << 46800 << 33 << "+13:00";
        QTest::newRow("seconds dropped") << 19800 + 59 << 22 << "+05:30";
    }

    void timeZoneIndex()
    {
        QFETCH(int, offsetSeconds);
        QFETCH(int, index);
        QFETCH(QString, label);
        QCOMPARE(findTimeZoneIndexByOffset(offsetSeconds), index);
        QCOMPARE(timeZoneLabel(index).value_or(QString()), label);
    }

    void systemTimeZone()
    {
        const QList<QPair<QByteArray, int>> zones = {
            {"Asia/Kolkata", 22}, {"Asia/Kathmandu", 23}, {"Pacific/Kiritimati", -1}, {"UTC", 14}};
        bool hadZone = qEnvironmentVariableIsSet("TZ");
        QByteArray old = qgetenv("TZ");
        auto restore = qScopeGuard([&] {
            if (hadZone)
                qputenv("TZ", old);
            else
                qunsetenv("TZ");
        });
        for (const auto& [zone, index] : zones) {
            if (!QTimeZone(zone).isValid())
                QSKIP("time-zone data not installed");
            qputenv("TZ", zone);
            QCOMPARE(findSystemTimeZoneIndex(), index);
        }
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestFileData)
#include "tst_filedata.moc"
