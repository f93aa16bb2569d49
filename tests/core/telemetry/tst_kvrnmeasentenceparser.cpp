#include "telemetry/kvrnmeasentenceparser.h"
#include "testsupport.h"

#include <QtTest>

#include <list>

using kavro::KVRGpsData;
using kavro::KVRNMEASentenceParser;

namespace {

// Fields of a sentence for the handler that parse() does not reach.
KVRNMEASentenceParser::Fields fieldsOf(const char* sentence)
{
    static std::list<std::string> storage; // the views must stay valid
    const std::string& stored = storage.emplace_back(sentence);
    const std::string_view body = std::string_view(stored).substr(0, stored.find('*'));
    KVRNMEASentenceParser::Fields fields;
    for (std::size_t start = 0, comma = 0; comma != std::string_view::npos; start = comma + 1) {
        comma = body.find(',', start);
        fields.push_back(body.substr(start, comma - start));
    }
    return fields;
}

// The fields that "name=value" words name, read from a fix in the same form; decimals at the
// precision a float keeps for them.
QString facts(const KVRGpsData& fix, const QString& expected)
{
    const _SYSTEMTIME& t = fix.Now;
    const QMap<QString, QString> all{
        {"lat", QString::number(fix.Latitude, 'f', 3)},
        {"lon", QString::number(fix.Longitude, 'f', 3)},
        {"ns", QChar(fix.NS)},
        {"ew", QChar(fix.EW)},
        {"hdop", QString::number(fix.HDOP, 'f', 2)},
        {"speed", QString::number(fix.SpeedOverGround, 'f', 2)},
        {"course", QString::number(fix.CourseOverGround, 'f', 2)},
        {"sats", QString::number(fix.SatelliteUsedCount)},
        {"gps", QString::number(fix.SatelliteUsedCount_GPS)},
        {"glonass", QString::number(fix.SatelliteUsedCount_GLONASS)},
        {"cnt", QString::number(fix.Cnt_GNGSA)},
        {"utc", QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d.%03d", t.wYear, t.wMonth, t.wDay,
                                  t.wHour, t.wMinute, t.wSecond, t.wMilliseconds)}};
    QStringList words;
    for (const QString& word : expected.split(' '))
        words.append(word.section('=', 0, 0) + '=' + all.value(word.section('=', 0, 0)));
    return words.join(' ');
}

const char* const Gga = "$GPGGA,123519,4807.038,S,01131.000,W,1,08,0.9,545.4,M,46.9,M,,*47";
const char* const Rmc = "$GPRMC,123519.000,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A";
const char* const GsaPair[] = {"$GNGSA,A,3,03,07,12,,,,,,,,,,1.8,0.9,1.5*00",
                               "$GNGSA,A,3,68,70,,,,,,,,,,,1.8,0.9,1.5*00"};

} // namespace

class TestKVRNMEASentenceParser : public QObject
{
    Q_OBJECT

private slots:
    void recognition_data()
    {
        QTest::addColumn<QByteArray>("sentence");
        QTest::addColumn<bool>("recognised");
        QTest::newRow("wrong checksum") << QByteArray("$GPRMC,1,A,,,,,1.5,2,010101*00") << true;
        QTest::newRow("no star") << QByteArray("$GPRMC,1,A,,,,,1.5,2,010101") << false;
        QTest::newRow("two stars") << QByteArray("$GPRMC,1,A*,,,,,1.5,2,010101*6A") << false;
        QTest::newRow("GPGSA") << QByteArray("$GPGSA,A,3,01,1.5*00") << false;
        QTest::newRow("GPGSV") << QByteArray("$GPGSV,1,1,01,1.5,10,100,30*00") << false;
        QTest::newRow("lower case id") << QByteArray("$gprmc,1,A,,,,,1.5*00") << false;
        QTest::newRow("invalid UTF-8") << QByteArray("$GPRMC,\xff\xfe,A,,,,,1.5*00") << false;
        QTest::newRow("few fields taken as empty") << QByteArray("$GPRMC,123519*00") << true;
        QTest::newRow("empty") << QByteArray("") << false;
    }

    void recognition()
    {
        QFETCH(QByteArray, sentence);
        QFETCH(bool, recognised);
        KVRNMEASentenceParser parser;
        parser.parse("$GPRMC,000000.000,A,,,,,9.5,7.5,010120*00");
        QCOMPARE(parser.parse(std::string_view(sentence.constData(), sentence.size())), recognised);
        // An unrecognised sentence changes nothing; the rows carry a speed that would show.
        QCOMPARE(parser.current().SpeedOverGround != 9.5, recognised);
    }

    void sentences_data()
    {
        QTest::addColumn<QStringList>("fed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("GGA") << QStringList{Gga}
                             << "lat=4807.038 ns=S lon=1131.000 ew=W sats=8 hdop=0.90";
        QTest::newRow("GN talker keeps the count, empty fields keep the fix")
            << QStringList{Gga, "$GNGGA,123520,,,,,1,11,,545.4,M,46.9,M,,*47"}
            << "lat=4807.038 ns=S sats=8 hdop=0.90";
        QTest::newRow("RMC") << QStringList{Rmc}
                             << "speed=22.40 course=84.40 utc=2094-03-23T12:35:19.000 lat=0.000";
        QTest::newRow("RMC time without milliseconds keeps the clock")
            << QStringList{Rmc, "$GPRMC,123600,A,,,,,,,240394,,*00"}
            << "utc=2094-03-23T12:35:19.000 speed=0.00";
        QTest::newRow("RMC scan stops at the first bad part")
            << QStringList{"$GNRMC,0102x3.456,A,,,,,1,2,0506ab*00"}
            << "utc=2000-06-05T01:02:00.000";
        QTest::newRow("GSA pair") << QStringList{GsaPair[0], GsaPair[1]}
                                  << "gps=3 glonass=2 sats=5";
        // RMC and GGA reset the guess, so a lone GSA counts as GPS every second and the shown
        // count stays at the last whole pair; GGA no longer sets it once a GSA was seen.
        const QStringList second{"$GPRMC,0,A,,,,,0,0,010120*00",
                                 "$GPGGA,0,4807.038,N,01131.000,E,1,09,0.9,5,M,4,M,,*00",
                                 "$GNGSA,A,3,01,02,03,04,,,,,,,,,1.8,0.9,1.5*00"};
        QTest::newRow("lone GSA every second")
            << QStringList{GsaPair[0], GsaPair[1]} + second + second << "gps=4 sats=5 cnt=1";
        QTest::newRow("RMC resets the guess for an empty GSA")
            << QStringList{GsaPair[0], GsaPair[1], second[2], second[0],
                           "$GNGSA,A,1,,,,,,,,,,,,,,,*00"}
            << "gps=0 glonass=2 sats=5";
        QTest::newRow("ids modulo 256, an empty list keeps the guess")
            << QStringList{"$GNGSA,A,3,300,,,,,,,,,,,,1,1,1*00", "$GNGSA,A,1,,,,,,,,,,,,,,,*00"}
            << "gps=1 glonass=0 sats=1";
        QTest::newRow("GNS takes over HDOP and count")
            << QStringList{"$GNGNS,1,5957.0062,N,01100.6429,E,NDD,11,1.3,168.9,39.5,,,V*57",
                           "$GPGGA,1,5957.0062,N,01100.6429,E,2,04,2.5,168.9,M,39.5,M,,*00",
                           GsaPair[1]}
            << "sats=11 hdop=1.30 glonass=0 lat=5957.006";
        QTest::newRow("numbers too long for their type")
            << QStringList{"$GNGGA,1,1e99999,N," + QString(5000, '9') + ",E,1,1,1,1*00"}
            << "lat=1.000 lon=0.000";
    }

    void sentences()
    {
        QFETCH(QStringList, fed);
        QFETCH(QString, expected);
        KVRNMEASentenceParser parser;
        for (const QString& sentence : fed)
            QVERIFY(parser.parse(sentence.toStdString()));
        QCOMPARE(facts(parser.current(), expected), expected);
        parser.clear();
        const QString initial = "lat=0.000 ns=N ew=E sats=0 utc=0000-00-00T00:00:00.000";
        QCOMPARE(facts(parser.current(), initial), initial);
    }

    void gsvChannelsAreShared()
    {
        KVRNMEASentenceParser first;
        KVRNMEASentenceParser second;
        QVERIFY(first.parseGPGSV(fieldsOf("$GPGSV,3,1,13,01,53,280,36,03,29,301,24,04,55,223,37,"
                                          "08,38,166,16*7C")));
        QCOMPARE(first.current().SatelliteCount, 13u);
        QVERIFY(!second.parseGPGSV(fieldsOf("$GPGSV,3,3,13,22,24,112,25*7A"))); // 3 after 1
        // Message 2 continues the other parser's channel counter.
        QVERIFY(second.parseGPGSV(
            fieldsOf("$GPGSV,3,2,13,11,40,245,29,12,05,034,,14,43,055,30,17,06,324,*74")));
        const KVRGpsData& fix = second.current();
        QCOMPARE(fix.SVonChannelAtIndex(4), KVRGpsData::Channel(11, 29));
        QCOMPARE(fix.SVonChannelAtIndex(5), KVRGpsData::Channel(12, 0));
        QCOMPARE(fix.SVonChannelAtIndex(0), KVRGpsData::Channel(0, 0));
        QCOMPARE(first.current().SVonChannelAtIndex(3), KVRGpsData::Channel(8, 16));
        // Ids read two digits; channels stop at twelve; a trailing partial group is not stored.
        QVERIFY(second.parseGPGSV(
            fieldsOf("$GPGSV,3,3,13,22,24,112,25,193,1,2,3,71,5,6,4,99,1,2,3,55,1,2,8,1*7A")));
        QCOMPARE(fix.SVonChannelAtIndex(9), KVRGpsData::Channel(19, 3));
        QCOMPARE(fix.SVonChannelAtIndex(11), KVRGpsData::Channel(99, 3));
        QCOMPARE(fix.SVonChannelAtIndex(12), KVRGpsData::Channel(0, 0));
    }

    void realReceiverLogs_data()
    {
        QTest::addColumn<QString>("log");
        QTest::addColumn<QString>("expected");
        // The last non-empty GGA position and HDOP (GNS's where sent), the last GSA pair's or
        // GNS's count, and the last RMC with a full time field.
        QTest::newRow("SiRF-III, fix lost at the end")
            << "bu353-glonass.log"
            << "lat=5541.197 lon=3737.293 ns=N ew=E hdop=4.54 sats=0 utc=2014-05-26T08:14:29.000";
        QTest::newRow("GNS receiver")
            << "furuno_gl_ga.log"
            << "lat=5957.006 lon=1100.643 ns=N ew=E hdop=1.30 sats=11 utc=2022-07-31T12:02:28.000";
        QTest::newRow("NEO-M8N, west, no full RMC time")
            << "neo-m8n.log"
            << "lat=4404.139 lon=12118.854 ns=N ew=W hdop=1.05 sats=13 utc=0000-00-00T00:00:00.000";
        QTest::newRow("EG25-G, GNS") << "quectel-eg25-g.log"
                                     << "lat=3645.828 lon=3124.653 ns=N ew=E hdop=3.10 sats=8";
        QTest::newRow("SiRFstarV, GSA pairs")
            << "sirfstarv-nmea.log"
            << "lat=4404.136 lon=12118.855 ns=N ew=W hdop=0.60 sats=16 utc=2019-02-05T02:10:33.000";
        QTest::newRow("NEO-M9N, four GSAs")
            << "ublox-neo-m9n-nmea.log"
            << "lat=3806.630 lon=12237.615 ns=N ew=W hdop=0.56 sats=15";
    }

    void realReceiverLogs()
    {
        QFETCH(QString, log);
        QFETCH(QString, expected);
        const QByteArray text = kavro::test::readFile(kavro::test::nmeaLogPath(log));
        QVERIFY2(!text.isEmpty(), qPrintable(log + " is missing"));
        KVRNMEASentenceParser parser;
        int recognised = 0;
        for (const QByteArray& line : text.split('\n')) {
            const QByteArray sentence = line.trimmed();
            recognised += parser.parse(std::string_view(sentence.constData(), sentence.size()));
        }
        QVERIFY(recognised > 10);
        const KVRGpsData& fix = parser.current();
        QCOMPARE(facts(fix, expected), expected);
        // Decimals are read in single precision.
        QCOMPARE(fix.Latitude, double(float(fix.Latitude)));
        QCOMPARE(fix.HDOP, double(float(fix.HDOP)));
    }
};

QTEST_GUILESS_MAIN(TestKVRNMEASentenceParser)
#include "tst_kvrnmeasentenceparser.moc"
