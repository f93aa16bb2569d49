#include "nmeacomposer.h"
#include "telemetry/aviformat.h"
#include "telemetry/kvrnmeasentenceparser.h"

#include <QTest>

using kavro::KVRNMEASentenceParser;
using kavro::camsim::GpsFix;
using kavro::camsim::NmeaComposer;
using kavro::camsim::SatelliteInView;

namespace {

GpsFix busyFix(double latitude, double longitude, int gpsInView, int glonassInView)
{
    GpsFix fix;
    fix.utc = QDateTime(QDate(2025, 5, 16), QTime(23, 59, 58, 0), Qt::UTC);
    fix.latitude = latitude;
    fix.longitude = longitude;
    fix.speedKnots = 31.57;
    fix.course = 301.29;
    fix.altitude = 45.3;
    fix.geoidSeparation = 18.9;
    fix.hdop = 0.87;
    fix.pdop = 1.41;
    fix.vdop = 1.11;
    for (int i = 0; i < gpsInView; ++i) {
        fix.gpsInView.push_back({i + 2, 10 + 6 * i, 25 * i, i % 4 == 3 ? 0 : 30 + i});
        if (i < 12 && i % 4 != 3)
            fix.gpsUsed.push_back(i + 2);
    }
    for (int i = 0; i < glonassInView; ++i) {
        fix.glonassInView.push_back({65 + i, 20 + 5 * i, 40 * i, 28 + i});
        fix.glonassUsed.push_back(65 + i);
    }
    return fix;
}

} // namespace

class TestNmeaComposer : public QObject
{
    Q_OBJECT

private slots:
    // The viewer ignores checksums; this keeps the simulator's sentences true to a receiver's.
    void checksumOfAPublishedSentence()
    {
        QCOMPARE(
            NmeaComposer::sentence("GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,"),
            QByteArray("$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47"));
    }

    void positionFields_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QByteArray>("latitudeText");
        QTest::addColumn<QByteArray>("longitudeText");
        QTest::newRow("north east")
            << 37.4 << 127.0505 << QByteArray("3724.0000,N") << QByteArray("12703.0300,E");
        QTest::newRow("south west")
            << -34.5 << -58.25 << QByteArray("3430.0000,S") << QByteArray("05815.0000,W");
        QTest::newRow("minutes round up to a whole degree")
            << 37.99999999 << -0.000000001 << QByteArray("3800.0000,N")
            << QByteArray("00000.0000,W");
        QTest::newRow("small degrees keep their digits")
            << 5.5 << 9.75 << QByteArray("0530.0000,N") << QByteArray("00945.0000,E");
    }

    void positionFields()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(QByteArray, latitudeText);
        QFETCH(QByteArray, longitudeText);
        QCOMPARE(NmeaComposer::latitudeField(latitude), latitudeText);
        QCOMPARE(NmeaComposer::longitudeField(longitude), longitudeText);
        QCOMPARE(NmeaComposer::nmeaForm(latitude),
                 latitudeText.left(latitudeText.indexOf(',')).toDouble());
    }

    void recordTextFitsAndReadsBack_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<int>("gpsInView");
        QTest::addColumn<int>("glonassInView");
        QTest::newRow("typical") << 37.39051 << 127.05102 << 11 << 6;
        QTest::newRow("southern western") << -34.59213 << -58.43121 << 10 << 3;
        QTest::newRow("crowded sky") << 37.39051 << 127.05102 << 16 << 9;
        QTest::newRow("few satellites") << 0.5 << -0.5 << 4 << 0;
    }

    void recordTextFitsAndReadsBack()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(int, gpsInView);
        QFETCH(int, glonassInView);
        const GpsFix fix = busyFix(latitude, longitude, gpsInView, glonassInView);
        const QByteArray text = NmeaComposer::recordText(fix, int(kavro::avi::GpsRawDataSize));
        QVERIFY(text.size() <= int(kavro::avi::GpsRawDataSize));
        QVERIFY(text.endsWith("\r\n"));

        QList<QByteArray> lines = text.split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QStringList ids;
        int gsvMessages = 0;
        int gsvDeclared = 0;
        KVRNMEASentenceParser parser;
        for (QByteArray line : lines) {
            QVERIFY2(line.endsWith('\r'), line.constData());
            line.chop(1);
            ids << QString::fromLatin1(line.left(6));
            if (line.startsWith("$GPGSV")) {
                ++gsvMessages;
                gsvDeclared = line.split(',').at(1).toInt();
            }
            parser.parse(std::string_view(line.constData(), std::size_t(line.size())));
        }
        QCOMPARE(ids.mid(0, 4), QStringList({"$GNRMC", "$GNGGA", "$GNGSA", "$GNGSA"}));
        // The satellites in view come as a whole series, never cut.
        QVERIFY(gsvMessages > 0);
        QCOMPARE(gsvMessages, gsvDeclared);

        const kavro::KVRGpsData& read = parser.current();
        QCOMPARE(read.NS, latitude < 0 ? 'S' : 'N');
        QCOMPARE(read.EW, longitude < 0 ? 'W' : 'E');
        QCOMPARE(float(read.Latitude), float(NmeaComposer::nmeaForm(latitude)));
        QCOMPARE(float(read.Longitude), float(NmeaComposer::nmeaForm(longitude)));
        QCOMPARE(float(read.HDOP), 0.87f);
        QCOMPARE(float(read.SpeedOverGround), 31.57f);
        QCOMPARE(float(read.CourseOverGround), 301.29f);
        QCOMPARE(read.SatelliteUsedCount,
                 std::uint32_t(fix.gpsUsed.size() + fix.glonassUsed.size()));
        const _SYSTEMTIME& t = read.Now;
        QCOMPARE(QDateTime(QDate(t.wYear, t.wMonth, t.wDay), QTime(t.wHour, t.wMinute, t.wSecond),
                           Qt::UTC),
                 fix.utc);
    }
};

QTEST_MAIN(TestNmeaComposer)
#include "tst_nmeacomposer.moc"
