#include "telemetry/kvraviwriter.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointF>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QXmlStreamReader>
#include <QtTest>

#include <limits>

using namespace kavro;
using test::runKavro;
using test::ToolResult;

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

// One recording of the card below. Video runs at one frame a second, so frames are seconds by
// the header; telemetry has a G-sensor sample every second over spanSeconds and a fix every
// second for the first fixes seconds.
struct Recording
{
    const char* path;
    int frames;
    int spanSeconds;
    int fixes;
    bool cutShort = false; // the index cut off, as a power loss leaves a file
};

// 10:00 to 10:03 without a pause but for 30 s before the event; at 11:00 a lone rear file, a file
// whose header has no frames but whose telemetry spans 200 s (to 11:04:20), and one 80 s after
// that; at 12:00 a file cut short.
const Recording Card[] = {
    {"DCIM/A/alwa_20240301_100000_F.avi", 60, 60, 3},
    {"DCIM/A/alwa_20240301_100100_F.avi", 60, 60, 2},
    {"DCIM/E/event_20240301_100230_F.avi", 30, 30, 1},
    {"DCIM/A/alwa_20240301_110000_R.avi", 60, 60, 1},
    {"DCIM/A/alwa_20240301_110100_F.avi", 0, 200, 2},
    {"DCIM/A/alwa_20240301_110540_F.avi", 60, 60, 2},
    {"DCIM/A/alwa_20240301_120000_F.avi", 60, 60, 2, true},
};
// The partner of the first recording: its telemetry differs, and the first recording's part must
// still equal the front file's own document.
const Recording Partner = {"DCIM/A/alwa_20240301_100000_R.avi", 60, 60, 1};

QByteArray nmea(int recording, int second)
{
    const QByteArray time = QString::asprintf("1%05d.000", second).toLatin1();
    return "$GPRMC," + time + ",A,,,,,10.5,90.0,010324,,*00\r\n$GPGGA,1," +
           QByteArray::number(3700 + recording + second / 100.0, 'f', 4) +
           ",N,12700.5,E,1,08,0.9,5,M,4,M,,*00\r\n";
}

bool writeRecording(const QString& path, const Recording& recording, int number)
{
    KVRAviWriter::Layout layout;
    layout.video.fpsNumerator = 1;
    KVRAviWriter writer(layout);
    if (!QDir().mkpath(QFileInfo(path).path()) || !writer.open(path))
        return false;
    const std::uint32_t clock = 5000000 + 1000000 * std::uint32_t(number);
    for (int s = 0; s < std::max(recording.frames, recording.spanSeconds + 1); ++s) {
        if (s < recording.frames && !writer.addVideoFrame("frame"))
            return false;
        if (s <= recording.spanSeconds &&
            !writer.addTelemetryRecord(_AVI_GSENSOR_DATA_T{171, clock + 1000 * s, s, 0, 256, 0}))
            return false;
        if (s < recording.fixes &&
            !writer.addTelemetryRecord(test::gpsRecord(clock + 1000 * s + 1, nmea(number, s),
                                                       3700 + number + s / 100.0, 12700.5)))
            return false;
    }
    if (!writer.close())
        return false;
    if (!recording.cutShort)
        return true;
    QFile file(path);
    const QByteArray head = test::readFile(path).left(14140);
    return file.resize(14140 + test::u32At(head, 14136));
}

// The parts of an XML document: per element named part (trk or Folder), its name, its
// description and the point lists of its children named piece (trkseg or Placemark).
struct XmlPart
{
    QString name;
    QString description;
    QList<QStringList> pieces;
};

QList<XmlPart> xmlParts(const QByteArray& document, const QString& part, const QString& piece)
{
    QList<XmlPart> parts;
    QXmlStreamReader xml(document);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = xml.name();
        if (name == part)
            parts.append(XmlPart());
        else if (parts.isEmpty())
            continue;
        else if (name == piece)
            parts.last().pieces.append(QStringList());
        else if (name == u"trkpt")
            parts.last().pieces.last().append(xml.attributes().value("lat").toString() + ' ' +
                                              xml.attributes().value("lon").toString());
        else if (name == u"coordinates")
            parts.last().pieces.last().append(xml.readElementText().split(' '));
        else if (name == u"time" &&
                 !parts.last().pieces.value(parts.last().pieces.size() - 1).isEmpty())
            parts.last().pieces.last().last() += ' ' + xml.readElementText();
        else if (name == u"name" && parts.last().pieces.isEmpty())
            parts.last().name = xml.readElementText();
        else if (name == u"desc" || name == u"description")
            parts.last().description = xml.readElementText();
    }
    return xml.hasError() ? QList<XmlPart>{} : parts;
}

QString fileName(int index)
{
    return QFileInfo(Card[index].path).fileName();
}

// "2024-03-01 10:00:00" of "alwa_20240301_100000_F.avi".
QString startOf(const QString& name, char separator)
{
    const QString t = name.mid(name.indexOf('_') + 1, 15);
    return t.left(4) + '-' + t.mid(4, 2) + '-' + t.mid(6, 2) + separator + t.mid(9, 2) + ':' +
           t.mid(11, 2) + ':' + t.mid(13, 2);
}

} // namespace

// `kavro telemetry` on one recording (the fields, formats and edge cases of its documents) and on
// a card of several (drives, and per recording what it alone would give).
class TestCliTelemetry : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (int i = 0; i < int(std::size(Card)); ++i)
            QVERIFY(writeRecording(m_card.filePath(Card[i].path), Card[i], i));
        QVERIFY(writeRecording(m_card.filePath(Partner.path), Partner, 99));
        QVERIFY(test::writeFile(m_card.filePath("notes.avi"), "not a recording"));

        // Five samples, a southern-western record at 250 ms and a northern-eastern one at 450 ms.
        m_recording = m_dir.filePath("rec & <drive>.avi");
        KVRAviWriter writer({});
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
        const QJsonObject root = QJsonDocument::fromJson(one("json"), &error).object();
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
        const QList<QByteArray> lines = one("csv").split('\n');
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

    // What routeEdges leaves out: the times, and points that keep no exponent. The points and
    // their signs are checked per format there and in the CSV, which share one position source.
    void routeTimes()
    {
        const QByteArray gpx = one("gpx");
        const QStringList points = xmlValues(gpx, "trkpt");
        QCOMPARE(points.size(), 3);
        QVERIFY(!points.join(' ').contains('e')); // xsd:decimal has no exponent
        QCOMPARE(xmlValues(gpx, "time").mid(1), QStringList(2, "2024-12-31T01:02:03.450Z"));
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
        QTest::newRow("control characters and markup in the name")
            << "one\x01two\x1f & <drive>.avi"
            << "one\uFFFDtwo\uFFFD & <drive>.avi" << QList<QPointF>{{1030, 2015}}
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
        KVRAviWriter writer({});
        QVERIFY(writer.open(path));
        QVERIFY(writer.addVideoFrame("frame"));
        for (const QPointF& position : stored)
            QVERIFY(
                writer.addTelemetryRecord(test::gpsRecord(100, {}, position.x(), position.y())));
        QVERIFY(writer.close());
        auto exported = [&](const char* format) {
            return this->run(QStringList{"telemetry", path, "--format", format});
        };
        auto near = [](const QPointF& a, const QPointF& b) {
            return closeTo(a.x(), b.x()) && closeTo(a.y(), b.y());
        };
        const QByteArray gpx = exported("gpx");
        const QStringList points = xmlValues(gpx, "trkpt");
        QCOMPARE(points.size(), kept.size() + 1); // well-formed, namespace first
        QCOMPARE(points[0], QString("http://www.topografix.com/GPX/1/1"));
        for (qsizetype i = 0; i < kept.size(); ++i)
            QVERIFY(near({points[i + 1].section(' ', 0, 0).toDouble(),
                          points[i + 1].section(' ', 1, 1).toDouble()},
                         kept[i]));
        QCOMPARE(xmlValues(gpx, "name").mid(1), QStringList{name});

        const QByteArray kml = exported("kml");
        const QStringList names(kept.isEmpty() ? 1 : 2, name); // the document's, the placemark's
        QCOMPARE(xmlValues(kml, "name"), QStringList{"http://www.opengis.net/kml/2.2"} + names);
        QCOMPARE(kml.count("<Placemark>"), geometry.isEmpty() ? 0 : 1);
        QCOMPARE(kml.count("<" + geometry.toUtf8() + ">"), geometry.isEmpty() ? 0 : 1);
        const QStringList tuples = xmlValues(kml, "coordinates").value(1).split(' ');
        for (qsizetype i = 0; i < kept.size(); ++i)
            QVERIFY(near({tuples.value(i).section(',', 1, 1).toDouble(),
                          tuples.value(i).section(',', 0, 0).toDouble()},
                         kept[i]));

        QJsonParseError error;
        const QJsonObject geo = QJsonDocument::fromJson(exported("geojson"), &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(geo["type"].toString(), QString("FeatureCollection"));
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
        const QByteArray whole = test::readFile(m_recording);
        const QString cut = m_dir.filePath("cut.avi");
        QVERIFY(test::writeFile(cut, whole.left(14140 + test::u32At(whole, 14136))));
        const auto plain = runKavro({"telemetry", cut, "--format", "csv"});
        QCOMPARE(plain.exitCode, 0);
        QCOMPARE(plain.out, QByteArray("index,x,y,z,latitude,longitude,speed,unit\n"));
        QVERIFY(plain.err.isEmpty());
        const auto recovered = runKavro({"telemetry", cut, "--format", "csv", "--recover"});
        QCOMPARE(recovered.exitCode, 0);
        QCOMPARE(recovered.out, one("csv"));
        QVERIFY(recovered.err.startsWith("kavro: telemetry: ") && recovered.err.count('\n') == 1);
        const auto indexed = runKavro({"telemetry", m_recording, "--format", "csv", "--recover"});
        QCOMPARE(indexed.out, one("csv"));
        QVERIFY(indexed.err.isEmpty());
    }

    void drives_data()
    {
        QTest::addColumn<QString>("gap");
        QTest::addColumn<QList<QList<int>>>("drives");
        QTest::newRow("default 120 s") << QString() << QList<QList<int>>{{0, 1, 2}, {3, 4, 5}, {6}};
        QTest::newRow("30 s") << "30" << QList<QList<int>>{{0, 1, 2}, {3, 4}, {5}, {6}};
        QTest::newRow("29 s") << "29" << QList<QList<int>>{{0, 1}, {2}, {3, 4}, {5}, {6}};
        QTest::newRow("an hour") << "3600" << QList<QList<int>>{{0, 1, 2, 3, 4, 5, 6}};
    }

    // Tracks and folders follow the drives; each segment and placemark holds exactly the points of
    // its recording's own document.
    void drives()
    {
        QFETCH(QString, gap);
        QFETCH(QList<QList<int>>, drives);
        for (const auto& [format, part, piece] :
             {std::tuple{"gpx", "trk", "trkseg"}, std::tuple{"kml", "Folder", "Placemark"}}) {
            QStringList arguments{"telemetry", m_card.path(), "--format", format};
            if (!gap.isEmpty())
                arguments << "--gap" << gap;
            const QByteArray document = run(arguments);
            QVERIFY(wellFormed(document));
            const QList<XmlPart> parts = xmlParts(document, part, piece);
            QCOMPARE(parts.size(), drives.size());
            for (qsizetype d = 0; d < drives.size(); ++d) {
                const QList<int>& files = drives[d];
                QStringList names;
                for (int i : files)
                    names << fileName(i);
                QCOMPARE(parts[d].name, startOf(names[0], ' '));
                QCOMPARE(parts[d].description, names.join(", "));
                QCOMPARE(parts[d].pieces.size(), files.size());
                for (qsizetype k = 0; k < files.size(); ++k) {
                    const QList<XmlPart> own =
                        xmlParts(single(files[k], format),
                                 QString(part == QString("trk") ? "trk" : "Document"), piece);
                    QCOMPARE(parts[d].pieces[k], own.value(0).pieces.value(0));
                    QCOMPARE(parts[d].pieces[k].size(),
                             qsizetype(Card[files[k]].cutShort ? 0 : Card[files[k]].fixes));
                }
            }
        }
    }

    // GeoJSON, CSV and JSON carry per recording its single-file content and its file name.
    void recordsPerFile()
    {
        QJsonParseError error;
        const QByteArray geoText = run({"telemetry", m_card.path(), "--format", "geojson"});
        QVERIFY(pythonReadsJson(geoText));
        const QJsonArray features = QJsonDocument::fromJson(geoText, &error)["features"].toArray();
        QCOMPARE(features.size(), qsizetype(std::size(Card)));
        const QByteArray jsonText = run({"telemetry", m_card.path()});
        QVERIFY(pythonReadsJson(jsonText));
        const QJsonArray objects = QJsonDocument::fromJson(jsonText, &error).array();
        QCOMPARE(objects.size(), features.size());
        const QList<QByteArray> csv = run({"telemetry", m_card.path(), "--format=csv"}).split('\n');
        QCOMPARE(csv[0], QByteArray("file,index,x,y,z,latitude,longitude,speed,unit"));
        qsizetype line = 1;

        const int drives[] = {1, 1, 1, 2, 2, 2, 3};
        for (int i = 0; i < int(std::size(Card)); ++i) {
            const QJsonObject feature = features[i].toObject();
            const QString name = fileName(i);
            QCOMPARE(feature["properties"]["file"].toString(), name);
            QCOMPARE(feature["properties"]["mode"].toString(),
                     name.startsWith("event") ? "event" : "always");
            QCOMPARE(feature["properties"]["start"].toString(), startOf(name, 'T'));
            QCOMPARE(feature["properties"]["drive"].toInt(), drives[i]);
            const QJsonArray own =
                QJsonDocument::fromJson(single(i, "geojson"))["features"].toArray();
            QCOMPARE(feature["geometry"], own.isEmpty() ? QJsonValue() : own[0]["geometry"]);
            QCOMPARE(feature["geometry"]["type"].toString(), Card[i].cutShort     ? QString()
                                                             : Card[i].fixes == 1 ? "Point"
                                                                                  : "LineString");

            QJsonObject object = objects[i].toObject();
            QCOMPARE(object.take("file").toString(), name);
            QCOMPARE(object, QJsonDocument::fromJson(single(i, "json")).object());

            const QList<QByteArray> ownLines = single(i, "csv").split('\n');
            for (qsizetype k = 1; k + 1 < ownLines.size(); ++k)
                QCOMPARE(csv.value(line++), name.toUtf8() + ',' + ownLines[k]);
        }
        QCOMPARE(csv.size(), line + 1);
    }

    void exitStatus_data()
    {
        QTest::addColumn<QStringList>("paths"); // "@" stands for the card
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("skipped");
        QTest::newRow("all read") << QStringList{"@/DCIM/A", "@/DCIM/E/event_20240301_100230_F.avi"}
                                  << 0 << QStringList{};
        QTest::newRow("not AVI") << QStringList{"@/notes.avi", "@/DCIM/E"} << 1
                                 << QStringList{"@/notes.avi is not a RIFF/AVI file"};
        QTest::newRow("an empty folder")
            << QStringList{"@/empty", "@/DCIM/E"} << 1 << QStringList{"no recordings in @/empty"};
        QTest::newRow("none readable")
            << QStringList{"@/notes.avi", "@/gone.avi"} << 2
            << QStringList{"@/notes.avi is not a RIFF/AVI file", "cannot open @/gone.avi: "};
    }

    // One stderr line per file skipped; a document only when something was read.
    void exitStatus()
    {
        QFETCH(QStringList, paths);
        QFETCH(int, exitCode);
        QFETCH(QStringList, skipped);
        QVERIFY(QDir().mkpath(m_card.filePath("empty")));
        paths.replaceInStrings("@", m_card.path());
        skipped.replaceInStrings("@", m_card.path());
        const ToolResult result = runKavro(QStringList{"telemetry", "--format", "gpx"} + paths);
        QCOMPARE(result.exitCode, exitCode);
        const QStringList lines = QString::fromUtf8(result.err).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), skipped.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            QVERIFY2(lines[i].startsWith("kavro: telemetry: " + skipped[i]), qPrintable(lines[i]));
        QCOMPARE(result.out.isEmpty(), exitCode == 2);
        if (exitCode != 2)
            QVERIFY(wellFormed(result.out));
    }

    // Progress goes to stderr and leaves the output as it is.
    void progress()
    {
        const ToolResult result =
            runKavro({"telemetry", m_card.path(), "--format", "gpx", "--progress"});
        QCOMPARE(result.exitCode, 0);
        QVERIFY(result.err.endsWith("kavro: telemetry: 7/7 recordings\n"));
        QCOMPARE(result.out, run({"telemetry", m_card.path(), "--format", "gpx"}));
    }

private:
    // The output of a run that must succeed without a word on stderr.
    QByteArray run(const QStringList& arguments)
    {
        const ToolResult result = runKavro(arguments);
        if (result.exitCode != 0 || !result.err.isEmpty())
            qWarning() << arguments << "exit" << result.exitCode << result.err;
        return result.exitCode == 0 ? result.out : QByteArray("(failed)");
    }

    QByteArray one(const QString& format)
    {
        return run({"telemetry", m_recording, "--format", format});
    }

    QByteArray single(int index, const QString& format)
    {
        return run({"telemetry", m_card.filePath(Card[index].path), "--format", format});
    }

    // Other tools' parsers: xmllint for GPX and KML, python's json for GeoJSON and JSON.
    static bool wellFormed(const QByteArray& xml)
    {
        const QString xmllint = QStandardPaths::findExecutable("xmllint");
        if (xmllint.isEmpty()) {
            qWarning("xmllint is missing; scripts/setup.sh installs it");
            return false;
        }
        QTemporaryFile file;
        if (!file.open() || file.write(xml) != xml.size() || !file.flush())
            return false;
        const ToolResult lint = test::runProgram(xmllint, {"--noout", file.fileName()});
        return lint.exitCode == 0 && lint.err.isEmpty();
    }

    static bool pythonReadsJson(const QByteArray& json)
    {
        QTemporaryFile file;
        if (!file.open() || file.write(json) != json.size() || !file.flush())
            return false;
        return test::runProgram("python3", {"-c", "import json,sys; json.load(open(sys.argv[1]))",
                                            file.fileName()})
                   .exitCode == 0;
    }

    QTemporaryDir m_card;
    QTemporaryDir m_dir;
    QString m_recording;
};

QTEST_GUILESS_MAIN(TestCliTelemetry)
#include "tst_cli_telemetry.moc"
