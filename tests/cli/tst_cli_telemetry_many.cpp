#include "telemetry/kvraviwriter.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QXmlStreamReader>
#include <QtTest>

using namespace kavro;
using test::runKavro;
using test::ToolResult;

namespace {

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

class TestCliTelemetryMany : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (int i = 0; i < int(std::size(Card)); ++i)
            QVERIFY(writeRecording(m_card.filePath(Card[i].path), Card[i], i));
        QVERIFY(writeRecording(m_card.filePath(Partner.path), Partner, 99));
        QVERIFY(test::writeFile(m_card.filePath("notes.avi"), "not a recording"));
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
            const QByteArray document = run(arguments, 0);
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
        const QByteArray geoText = run({"telemetry", m_card.path(), "--format", "geojson"}, 0);
        QVERIFY(pythonReadsJson(geoText));
        const QJsonArray features = QJsonDocument::fromJson(geoText, &error)["features"].toArray();
        QCOMPARE(features.size(), qsizetype(std::size(Card)));
        const QByteArray jsonText = run({"telemetry", m_card.path()}, 0);
        QVERIFY(pythonReadsJson(jsonText));
        const QJsonArray objects = QJsonDocument::fromJson(jsonText, &error).array();
        QCOMPARE(objects.size(), features.size());
        const QList<QByteArray> csv =
            run({"telemetry", m_card.path(), "--format=csv"}, 0).split('\n');
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
        QCOMPARE(result.out, run({"telemetry", m_card.path(), "--format", "gpx"}, 0));
    }

private:
    QByteArray run(const QStringList& arguments, int exitCode)
    {
        const ToolResult result = runKavro(arguments);
        if (result.exitCode != exitCode || !result.err.isEmpty())
            qWarning() << arguments << "exit" << result.exitCode << result.err;
        return result.exitCode == exitCode ? result.out : QByteArray("(failed)");
    }

    QByteArray single(int index, const QString& format)
    {
        return run({"telemetry", m_card.filePath(Card[index].path), "--format", format}, 0);
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
};

QTEST_GUILESS_MAIN(TestCliTelemetryMany)
#include "tst_cli_telemetry_many.moc"
