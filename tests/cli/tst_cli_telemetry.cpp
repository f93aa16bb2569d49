#include "telemetry/kvraviwriter.h"
#include "testsupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointF>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <limits>

namespace test = kavro::test;
using test::runKavro;

namespace {

// The two positions of the recording below in signed decimal degrees.
constexpr double SouthLatitude = -(33 + 46.1 / 60), WestLongitude = -(58 + 12.5 / 60);
constexpr double NorthLatitude = 37 + 33.5 / 60, EastLongitude = 126 + 59.4 / 60;

bool closeTo(double a, double b)
{
    return std::fabs(a - b) < 1e-9;
}

// Namespace of the root, then per element of that name its text or, for "lat lon", its two
// attributes. An empty list when the document is not well-formed XML.
QStringList xmlValues(const QByteArray& document, const QString& element)
{
    QXmlStreamReader xml(document);
    QStringList values;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (values.isEmpty())
            values.append(xml.namespaceUri().toString());
        if (xml.name() == element && xml.attributes().hasAttribute("lat"))
            values.append(xml.attributes().value("lat").toString() + u' ' +
                          xml.attributes().value("lon").toString());
        else if (xml.name() == element)
            values.append(xml.readElementText());
    }
    return xml.hasError() ? QStringList() : values;
}

} // namespace

class TestCliTelemetry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Five samples, a southern-western record at 250 ms and a northern-eastern one at 450 ms.
        m_recording = m_dir.filePath("rec & <drive>.avi");
        kavro::KVRAviWriter writer({});
        QVERIFY(writer.open(m_recording));
        const QByteArray south = "$GPRMC,010203.450,A,,,,,10.5,270.25,311224,,*00\r\n"
                                 "$GPGGA,1,3346.1,S,05812.5,W,1,08,0.95,5,M,4,M,,*00\r\n";
        const QByteArray north = "$GPGGA,2,3733.5,N,12659.4,E,1,09,1.2,5,M,4,M,,*00\r\n";
        for (int k = 0; k < 5; ++k) {
            QVERIFY(writer.addVideoFrame(QByteArray(100, 'v')));
            QVERIFY(writer.addTelemetryRecord(
                _AVI_GSENSOR_DATA_T{171, std::uint32_t(100 * k + 100), 256 * k, -128, 3, 0}));
            if (k == 0)
                QVERIFY(
                    writer.addTelemetryRecord(test::gpsRecord(250, south, -3346.1, 5812.5, 57)));
            if (k == 2)
                QVERIFY(writer.addTelemetryRecord(
                    test::gpsRecord(450, north, 3733.5, 12659.4, 57, '1')));
        }
        QVERIFY(writer.close());
    }

    void json()
    {
        QJsonParseError error;
        const QJsonObject root = QJsonDocument::fromJson(run("json"), &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        const QJsonArray samples = root["gsensor"].toArray();
        QCOMPARE(samples.size(), 5);
        QCOMPARE(samples[3].toArray(), (QJsonArray{3.0, -0.5, 0.01171875}));

        // Samples 100 and 200 take the first record, 300 and 400 the second, 500 none.
        const QJsonArray records = root["gps"].toArray();
        QCOMPARE(records.size(), 4);
        QCOMPARE(records[1].toObject(), (QJsonObject{{"timestamp", 250},
                                                     {"lat", -3346.1},
                                                     {"lon", 5812.5},
                                                     {"speed", 57},
                                                     {"unit", "km/h"}}));
        QCOMPARE(records[2]["unit"].toString(), QString("mi/h"));

        const QJsonArray fixes = root["nmea"].toArray();
        QCOMPARE(fixes.size(), 3);
        const QJsonObject south = fixes[1].toObject();
        QCOMPARE(south.keys(),
                 (QStringList{"course", "ew", "hdop", "lat", "lon", "ns", "sats", "speed", "utc"}));
        QCOMPARE(float(south["lat"].toDouble()), 3346.1f);
        QCOMPARE(south["ns"].toString() + south["ew"].toString(), QString("SW"));
        QCOMPARE(float(south["hdop"].toDouble()), 0.95f);
        QCOMPARE(south["sats"].toInt(), 8);
        QCOMPARE(float(south["speed"].toDouble()), 10.5f);
        QCOMPARE(float(south["course"].toDouble()), 270.25f);
        QCOMPARE(south["utc"].toString(), QString("2024-12-31T01:02:03.450"));
        QCOMPARE(fixes[2]["ns"].toString(), QString("N"));
        QCOMPARE(fixes[2]["utc"].toString(), QString("2024-12-31T01:02:03.450")); // carried on
    }

    void csv()
    {
        const QList<QByteArray> lines = run("csv").split('\n');
        QCOMPARE(lines.size(), 7); // header, five samples, final newline
        QCOMPARE(lines[0], QByteArray("index,x,y,z,latitude,longitude,speed,unit"));
        const QList<QByteArray> first = lines[1].split(',');
        QCOMPARE(first.size(), 8);
        QCOMPARE(first[2].toFloat(), -0.5f);
        QVERIFY(closeTo(first[4].toDouble(), SouthLatitude));
        QVERIFY(closeTo(first[5].toDouble(), WestLongitude));
        QCOMPARE(first.mid(6), (QList<QByteArray>{"57", "km/h"}));
        const QList<QByteArray> third = lines[3].split(',');
        QVERIFY(closeTo(third[4].toDouble(), NorthLatitude));
        QVERIFY(closeTo(third[5].toDouble(), EastLongitude));
        QCOMPARE(lines[5], QByteArray("4,4,-0.5,0.01171875,,,,"));
    }

    // What routeEdges leaves out: the namespaces, the times and an escaped name. The points and
    // their signs are checked per format there and in the CSV, which share one position source.
    void routes()
    {
        const QByteArray gpx = run("gpx");
        const QStringList points = xmlValues(gpx, "trkpt");
        QCOMPARE(points.value(0), QString("http://www.topografix.com/GPX/1/1"));
        QCOMPARE(points.size(), 3);
        QVERIFY(!points.join(' ').contains('e')); // xsd:decimal has no exponent
        QCOMPARE(xmlValues(gpx, "time").mid(1), QStringList(2, "2024-12-31T01:02:03.450Z"));
        QCOMPARE(xmlValues(gpx, "name").mid(1), QStringList{"rec & <drive>.avi"});
        QCOMPARE(xmlValues(run("kml"), "coordinates").value(0),
                 QString("http://www.opengis.net/kml/2.2"));
        QCOMPARE(QJsonDocument::fromJson(run("geojson"))["type"].toString(),
                 QString("FeatureCollection"));
    }

    // Positions as stored (NMEA form, northern and eastern without sentences), the points that
    // must survive in signed degrees, and the geometry a route of them is.
    void routeEdges_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name"); // of the track and placemark
        QTest::addColumn<QList<QPointF>>("stored");
        QTest::addColumn<QList<QPointF>>("kept");
        QTest::addColumn<QString>("geometry");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        QTest::newRow("no place on earth dropped")
            << "edges.avi"
            << "edges.avi" << QList<QPointF>{{nan, 2015},   {1030, inf},  {9000.6, 2015},
                                             {1030, 18000}, {1030, 2015}, {9000, 17959.4}}
            << QList<QPointF>{{10.5, 20.25}, {90, 179.99}} << "LineString";
        QTest::newRow("single fix") << "one.avi"
                                    << "one.avi" << QList<QPointF>{{1030, 2015}}
                                    << QList<QPointF>{{10.5, 20.25}} << "Point";
        QTest::newRow("no fix") << "none.avi"
                                << "none.avi" << QList<QPointF>{{nan, nan}} << QList<QPointF>{}
                                << "";
        QTest::newRow("control characters in the name")
            << "one\x01two\x1f.avi"
            << "one\uFFFDtwo\uFFFD.avi" << QList<QPointF>{{1030, 2015}}
            << QList<QPointF>{{10.5, 20.25}} << "Point";
    }

    void routeEdges()
    {
        QFETCH(QString, file);
        QFETCH(QString, name);
        QFETCH(QList<QPointF>, stored);
        QFETCH(QList<QPointF>, kept);
        QFETCH(QString, geometry);
        const QString path = m_dir.filePath(file);
        kavro::KVRAviWriter writer({});
        QVERIFY(writer.open(path));
        QVERIFY(writer.addVideoFrame("frame"));
        for (const QPointF& position : stored)
            QVERIFY(
                writer.addTelemetryRecord(test::gpsRecord(100, {}, position.x(), position.y())));
        QVERIFY(writer.close());
        auto run = [&path](const char* format) {
            const auto result = runKavro({"telemetry", path, "--format", format});
            return result.exitCode == 0 && result.err.isEmpty() ? result.out : QByteArray();
        };
        auto near = [](const QPointF& a, const QPointF& b) {
            return closeTo(a.x(), b.x()) && closeTo(a.y(), b.y());
        };
        const QByteArray gpx = run("gpx");
        const QStringList points = xmlValues(gpx, "trkpt");
        QCOMPARE(points.size(), kept.size() + 1); // well-formed, namespace first
        for (qsizetype i = 0; i < kept.size(); ++i)
            QVERIFY(near({points[i + 1].section(' ', 0, 0).toDouble(),
                          points[i + 1].section(' ', 1, 1).toDouble()},
                         kept[i]));
        QCOMPARE(xmlValues(gpx, "name").mid(1), QStringList{name});

        const QByteArray kml = run("kml");
        const QStringList names(kept.isEmpty() ? 1 : 2, name); // the document's, the placemark's
        QCOMPARE(xmlValues(kml, "name").mid(1), names);
        QCOMPARE(kml.count("<Placemark>"), geometry.isEmpty() ? 0 : 1);
        QCOMPARE(kml.count("<" + geometry.toUtf8() + ">"), geometry.isEmpty() ? 0 : 1);
        const QStringList tuples = xmlValues(kml, "coordinates").value(1).split(' ');
        for (qsizetype i = 0; i < kept.size(); ++i)
            QVERIFY(near({tuples.value(i).section(',', 1, 1).toDouble(),
                          tuples.value(i).section(',', 0, 0).toDouble()},
                         kept[i]));

        QJsonParseError error;
        const QJsonObject geo = QJsonDocument::fromJson(run("geojson"), &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        const QJsonArray features = geo["features"].toArray();
        QCOMPARE(features.size(), kept.isEmpty() ? 0 : 1);
        if (kept.isEmpty())
            return;
        const QJsonObject shape = features[0]["geometry"].toObject();
        QCOMPARE(shape["type"].toString(), geometry);
        QJsonArray coordinates = shape["coordinates"].toArray();
        if (geometry == "Point")
            coordinates = QJsonArray{coordinates};
        QCOMPARE(coordinates.size(), kept.size());
        for (qsizetype i = 0; i < kept.size(); ++i)
            QVERIFY(near({coordinates[i][1].toDouble(), coordinates[i][0].toDouble()}, kept[i]));
    }

    // Without its index the file's telemetry is found only with --recover, which says so.
    void recoverCutShort()
    {
        const QByteArray whole = kavro::test::readFile(m_recording);
        const QString cut = m_dir.filePath("cut.avi");
        QVERIFY(kavro::test::writeFile(cut, whole.left(14140 + kavro::test::u32At(whole, 14136))));
        const auto plain = runKavro({"telemetry", cut, "--format", "csv"});
        QCOMPARE(plain.exitCode, 0);
        QCOMPARE(plain.out, QByteArray("index,x,y,z,latitude,longitude,speed,unit\n"));
        QVERIFY(plain.err.isEmpty());
        const auto recovered = runKavro({"telemetry", cut, "--format", "csv", "--recover"});
        QCOMPARE(recovered.exitCode, 0);
        QCOMPARE(recovered.out, run("csv"));
        QVERIFY(recovered.err.startsWith("kavro: telemetry: ") && recovered.err.count('\n') == 1);
        const auto indexed = runKavro({"telemetry", m_recording, "--format", "csv", "--recover"});
        QCOMPARE(indexed.out, run("csv"));
        QVERIFY(indexed.err.isEmpty());
    }

private:
    QByteArray run(const QString& format)
    {
        const kavro::test::ToolResult result =
            runKavro({"telemetry", m_recording, "--format", format});
        if (result.exitCode != 0 || !result.err.isEmpty())
            qWarning() << "exit" << result.exitCode << result.err;
        return result.exitCode == 0 ? result.out : QByteArray();
    }

    QTemporaryDir m_dir;
    QString m_recording;
};

QTEST_GUILESS_MAIN(TestCliTelemetry)
#include "tst_cli_telemetry.moc"
