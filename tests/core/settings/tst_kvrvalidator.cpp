#include "settings/kvrvalidator.h"

#include <QtTest>

using namespace kavro;

class TestKVRValidator : public QObject
{
    Q_OBJECT

private slots:
    void gsensorThreshold_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("key");   // empty: accepted
        QTest::addColumn<double>("number"); // what the page stores, / 100, when accepted
        // Accepted, with the bounds, trailing letters, blanks, exponents and a dangling "e".
        const std::pair<const char*, double> accepted[] = {
            {"", 0},          {"0.05", 0.05}, {"1.5", 1.5},    {"0.29abc", 0.29},
            {" \t+0.7", 0.7}, {".5", 0.5},    {"25E-2", 0.25}, {"1e", 1.0}};
        for (const auto& [text, number] : accepted)
            QTest::newRow(*text ? text : "empty") << QString(text) << QString() << number;
        // A comma stops the number, so "0,5" is 0.
        for (const char* text : {"0.049", "1.51", "-0.5", "1e999", "1e-999", "0,5"})
            QTest::newRow(text) << QString(text) << "msg.gsensor_outofrange_fmt" << 0.0;
        for (const char* text : {"a0.5", "   ", ".", "-", "inf"})
            QTest::newRow(text) << QString(text) << "msg.input_value_invalid_format" << 0.0;
    }

    void gsensorThreshold()
    {
        QFETCH(QString, text);
        QFETCH(QString, key);
        QFETCH(double, number);
        std::optional<ValidationMessage> message = KVRValidator::validateGsensorThreshold(text);
        QCOMPARE(message ? message->key : QString(), key);
        if (key == "msg.gsensor_outofrange_fmt")
            QCOMPARE(message->args, (QVariantList{0.05, 1.5}));
        if (key.isEmpty() && !text.isEmpty())
            QCOMPARE(KVRValidator::scanNumber(text).value_or(-1), number);
    }

    void cardShare()
    {
        QVERIFY(KVRValidator::validateSDCardSizeRatio(19));
        QVERIFY(!KVRValidator::validateSDCardSizeRatio(20));
        QCOMPARE(KVRValidator::validateSDCardSizeRatio(-20)->key,
                 QString("msg.sdcard_ratio_too_low"));
        // Both shares must keep 20 percent: slider positions 2 to 8 only.
        for (int position = -1; position <= 11; ++position)
            QCOMPARE(!KVRValidator::validateCardShare(position), position >= 2 && position <= 8);
    }

    void carNumber()
    {
        const QList<QPair<const char*, QString>> cases = {
            {"12-34 56-78 90", "12345678"}, // stops after the eighth kept character
            {"abCD12", "abCD12"},
            {"Äbc Дé1!", "bc1"},
            {"ＡＢ12", "12"}, // full-width letters are not ASCII
            {"A😀B", "AB"},
            {"-- --", ""},
        };
        for (const auto& [typed, kept] : cases)
            QCOMPARE(KVRValidator::filterCarNumber(QString::fromUtf8(typed)), kept);
        QVERIFY(KVRValidator::isEmptyText(QString()));
        QVERIFY(!KVRValidator::isEmptyText(" "));
    }
};

QTEST_GUILESS_MAIN(TestKVRValidator)
#include "tst_kvrvalidator.moc"
