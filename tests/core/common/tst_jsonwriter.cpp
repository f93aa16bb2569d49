#include "common/jsonwriter.h"
#include "common/numbertext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>

using kavro::JsonWriter;

class TestJsonWriter : public QObject
{
    Q_OBJECT

private slots:
    // String escapes are the business of escapesAtEveryPosition.
    void keepsKeyOrderAndParses()
    {
        for (bool pretty : {true, false}) {
            JsonWriter json(pretty);
            json.beginObject();
            json.key("zeta");
            json.value(1);
            json.key("alpha");
            json.beginArray(JsonWriter::Layout::Inline);
            json.value(1.5f);
            json.null();
            json.value(true);
            json.endArray();
            json.key("empty");
            json.beginArray();
            json.endArray();
            json.key("nested");
            json.beginObject();
            json.key("s");
            json.value(std::string("text"));
            json.endObject();
            json.endObject();
            const QByteArray text = QByteArray::fromStdString(json.take());
            QVERIFY(text.endsWith('\n'));
            QVERIFY(text.indexOf("zeta") < text.indexOf("alpha"));
            QCOMPARE(QJsonDocument::fromJson(text).object(),
                     (QJsonObject{{"zeta", 1},
                                  {"alpha", QJsonArray{1.5, QJsonValue(), true}},
                                  {"empty", QJsonArray()},
                                  {"nested", QJsonObject{{"s", "text"}}}}));
        }
    }

    void topLevelArrayOfArrays()
    {
        JsonWriter json;
        json.beginArray();
        for (int i = 0; i < 3; ++i) {
            json.beginArray(JsonWriter::Layout::Inline);
            json.value(i);
            json.value(-i);
            json.endArray();
        }
        json.endArray();
        QByteArray text = QByteArray::fromStdString(json.take());
        QCOMPARE(text.count('\n'), 5); // one line per inline row plus the brackets
        QJsonArray rows = QJsonDocument::fromJson(text).array();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(2).toArray().at(1).toInt(), -2);
    }

    void floatsSurviveTheRoundTrip()
    {
        // Single-precision values must come back bit for bit after a trip through the text.
        const float samples[] = {4807.038f,     0.9f,  -0.00390625f, 1.0e-7f,
                                 3.4028235e38f, 22.4f, 12701.2f};
        for (float value : samples) {
            std::string text = kavro::shortestText(value);
            QCOMPARE(std::strtof(text.c_str(), nullptr), value);
        }
        QCOMPARE(kavro::shortestText(0.9f), std::string("0.9"));
        QCOMPARE(kavro::shortestText(37.408333333333331), std::string("37.40833333333333"));
        QVERIFY(kavro::shortestText(std::numeric_limits<double>::quiet_NaN()).empty());

        JsonWriter json;
        json.beginArray(JsonWriter::Layout::Inline);
        json.value(std::numeric_limits<float>::infinity());
        json.endArray();
        QCOMPARE(json.take(), std::string("[null]\n"));
    }

    // Text is scanned in blocks of sixteen and eight bytes: a character to escape is found
    // wherever it lies in or after a block, and bytes of multi-byte UTF-8 characters are never
    // taken for one.
    void escapesAtEveryPosition_data()
    {
        QTest::addColumn<QString>("special");
        QTest::addColumn<int>("writtenBytes"); // what the character takes in the document
        const QList<QPair<const char*, int>> rows = {
            {"\"", 2},   {"\\", 2},   {"\n", 2},     {"\x01", 6},
            {"\x1f", 6}, {"\x7f", 1}, {"\u00e9", 2}, {"\u20ac", 3},
        };
        for (const auto& [special, bytes] : rows)
            QTest::newRow(QByteArray(special).toHex().constData())
                << QString::fromUtf8(special) << bytes;
    }

    void escapesAtEveryPosition()
    {
        QFETCH(QString, special);
        QFETCH(int, writtenBytes);
        for (int at = 0; at < 40; ++at) {
            QString text(39, u'a');
            text.insert(at, special);
            JsonWriter json(false);
            json.beginArray();
            json.value(text.toStdString());
            json.endArray();
            const QByteArray written = QByteArray::fromStdString(json.take());
            QCOMPARE(QJsonDocument::fromJson(written).array().at(0).toString(), text);
            QCOMPARE(written.size(), qsizetype(strlen("[\"\"]\n") + 39 + writtenBytes));
        }
    }
};

QTEST_GUILESS_MAIN(TestJsonWriter)
#include "tst_jsonwriter.moc"
