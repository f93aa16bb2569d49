#include "settings/filedata.h"
#include "settings/settingfile.h"

#include "../core/settings/settingtestdata.h"
#include "testsupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

using namespace kavro;
using test::checksumHolds;
using test::randomRecordBytes;
using test::runKavro;
using test::u32At;

namespace {

constexpr quint32 AcceptedSeed = 21;

// Words a set must change, by offset, with their new values.
using ChangedWords = QList<QPair<int, quint32>>;

} // namespace

class TestCliConfig : public QObject
{
    Q_OBJECT

private slots:
    void showJson()
    {
        QString file = path("show.bin");
        QCOMPARE(runKavro({"config", "defaults", file}).exitCode, 0);
        test::ToolResult shown = runKavro({"config", "show", file});
        QCOMPARE(shown.exitCode, 0);
        QVERIFY(shown.err.isEmpty());

        // Keys in record order, as the record names them, then the checksum verdict.
        QStringList keys;
        static const QRegularExpression Key(QStringLiteral("^\\s*\"(\\w+)\":"),
                                            QRegularExpression::MultilineOption);
        for (auto it = Key.globalMatch(QString::fromUtf8(shown.out)); it.hasNext();)
            keys.append(it.next().captured(1));
        QStringList expected;
        for (const FileDataField& field : fileDataFields())
            expected.append(QString::fromLatin1(field.name.data(), field.name.size()));
        expected.append("checksum_valid");
        QCOMPARE(keys, expected);

        QJsonParseError error;
        QJsonObject json = QJsonDocument::fromJson(shown.out, &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        // The values themselves are the core tests' business; here how kinds of field are written.
        QCOMPARE(json.value("dummy00").toArray(), (QJsonArray{0, 0, 0, 0}));
        // The default file has not been through the save preparation.
        QCOMPARE(json.value("checksum").toInt(), 0);
        QCOMPARE(json.value("checksum_valid").toBool(true), false);

        QCOMPARE(runKavro({"config", "set", file, "time_gmt=3"}).exitCode, 0);
        json = QJsonDocument::fromJson(runKavro({"config", "show", file}).out).object();
        QCOMPARE(json.value("checksum_valid").toBool(false), true);
        QCOMPARE(json.value("checksum").toInt(), int(u32At(test::readFile(file), 0) >> 16));

        QList<QByteArray> lines =
            runKavro({"config", "show", file, "--format", "text"}).out.split('\n');
        QCOMPARE(lines.size(), 100); // 99 lines and the final newline
        QCOMPARE(lines.at(65), QByteArray("szPlateNumber = \"Kavro\""));
        QCOMPARE(lines.at(96), QByteArray("dummy00 = 0 0 0 0"));
        QCOMPARE(lines.at(98), QByteArray("checksum_valid = true"));
    }

    void showHostileStrings()
    {
        QByteArray bytes = randomRecordBytes(5);
        bytes.replace(256, 8,
                      "\xff\xfe"
                      "AB\x01\"\\x");                    // invalid UTF-8, control, quote, no zero
        qToLittleEndian<qint32>(-1, bytes.data() + 168); // time_gmt
        qToLittleEndian<quint32>(0xFFFFFFFF, bytes.data() + 404);
        QString file = path("hostile.bin");
        QVERIFY(test::writeFile(file, bytes));
        test::ToolResult shown = runKavro({"config", "show", file});
        QCOMPARE(shown.exitCode, 0);
        QJsonParseError error;
        QJsonObject json = QJsonDocument::fromJson(shown.out, &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QString plate = json.value("szPlateNumber").toString();
        QVERIFY(plate.contains(QChar::ReplacementCharacter));
        QVERIFY(plate.endsWith(QString::fromUtf8("AB\x01\"\\x")));
        QCOMPARE(json.value("time_gmt").toInteger(), -1);
        QCOMPARE(json.value("external_rear_camera").toInteger(), 4294967295LL);
        QCOMPARE(json.value("checksum_valid").toBool(), checksumHolds(bytes));
    }

    void setAccepted_data()
    {
        QTest::addColumn<QStringList>("assignments");
        // Every byte but these words, the checksum and osd_plate_flag must stay.
        QTest::addColumn<ChangedWords>("changed");
        using Words = ChangedWords;
        QByteArray before = randomRecordBytes(AcceptedSeed);
        auto text = [](const char* four) { return qFromLittleEndian<quint32>(four); };
        QTest::newRow("time zone") << QStringList{"time_gmt=33"} << Words{{168, 33}};
        QTest::newRow("hex mask") << QStringList{"motionBlock_Rear=0XfFf"} << Words{{320, 0xFFF}};
        QTest::newRow("cut-off voltage")
            << QStringList{"sd_mem_always_reserved=10000"} << Words{{20, 10000}};
        QTest::newRow("thresholds") << QStringList{"gsen_x_threshold=0", "parkmode_y_threshold=5",
                                                   "parkmode_z_threshold=150"}
                                    << Words{{88, 0}, {108, 5}, {112, 150}};
        QTest::newRow("Malaysia") << QStringList{"Brightness1=20"} << Words{{244, 20}};
        QTest::newRow("several pages")
            << QStringList{"vid_brightness=4", "nodriving_day=7", "lcd_screensaver=2"}
            << Words{{68, 4}, {176, 7}, {284, 2}};
        QTest::newRow("camera bits") << QStringList{"external_rear_camera=5"}
                                     << Words{{404, (u32At(before, 404) & ~7u) | 5}};
        // The whole word as a page writes it: its bits above 2 are those stored.
        const quint32 wholeWord = (u32At(before, 404) & ~7u) | 2;
        QTest::newRow("camera word")
            << QStringList{"external_rear_camera=" + QString::number(wholeWord)}
            << Words{{404, wholeWord}};
        QTest::newRow("always share")
            << QStringList{"sd_mem_always_ratio=80"} << Words{{8, 80}, {16, 20}};
        QTest::newRow("motion share")
            << QStringList{"sd_mem_motion_ratio=40"} << Words{{8, 60}, {16, 40}};
        QTest::newRow("agreeing shares")
            << QStringList{"sd_mem_always_ratio=30", "sd_mem_motion_ratio=70"}
            << Words{{8, 30}, {16, 70}};
        QTest::newRow("plate") << QStringList{"szPlateNumber=AB12cd34"}
                               << Words{{256, text("AB12")}, {260, text("cd34")}};
        QTest::newRow("no plate") << QStringList{"szPlateNumber="} << Words{{256, 0}, {260, 0}};
        QTest::newRow("same value twice") << QStringList{"Gamma=1", "Gamma=1"} << Words{{252, 1}};
    }

    void setAccepted()
    {
        QFETCH(QStringList, assignments);
        QFETCH(ChangedWords, changed);
        QByteArray before = randomRecordBytes(AcceptedSeed);
        QString file = path("accepted.bin");
        QVERIFY(test::writeFile(file, before));

        test::ToolResult result = runKavro(QStringList{"config", "set", file} + assignments);
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.err.isEmpty());
        QByteArray after = test::readFile(file);
        QCOMPARE(after.size(), 428);
        QVERIFY(checksumHolds(after));
        QCOMPARE(u32At(after, 156), after[256] != 0 ? 1u : 0u); // osd_plate_flag

        QByteArray expected = before;
        for (const auto& [offset, value] : changed)
            qToLittleEndian<quint32>(value, expected.data() + offset);
        expected.replace(2, 2, after.mid(2, 2));
        expected.replace(156, 4, after.mid(156, 4));
        QCOMPARE(after.toHex(' '), expected.toHex(' '));
    }

private:
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestCliConfig)
#include "tst_cli_config.moc"
