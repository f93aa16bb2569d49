#include "settings/kvrvalidator.h"

#include <QtTest>

using namespace kavro;

class TestKVRValidator : public QObject
{
    Q_OBJECT

private slots:
    void gsensorThreshold_data();
    void gsensorThreshold();
    void cardShare();
    void carNumber();
};

void TestKVRValidator::gsensorThreshold_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("key");   // empty: accepted
    QTest::addColumn<double>("number"); // what the page stores, / 100, when accepted
    const QString range = "msg.gsensor_outofrange_fmt";
    const QString format = "msg.input_value_invalid_format";
    QTest::newRow("empty") << ""
                           << "" << 0.0;
    QTest::newRow("lower bound") << "0.05"
                                 << "" << 0.05;
    QTest::newRow("upper bound") << "1.5"
                                 << "" << 1.5;
    QTest::newRow("trailing letters") << "0.29abc"
                                      << "" << 0.29;
    QTest::newRow("leading blanks") << " \t+0.7"
                                    << "" << 0.7;
    QTest::newRow("bare fraction") << ".5"
                                   << "" << 0.5;
    QTest::newRow("exponent") << "25E-2"
                              << "" << 0.25;
    QTest::newRow("dangling exponent") << "1e"
                                       << "" << 1.0;
    QTest::newRow("just below") << "0.049" << range << 0.0;
    QTest::newRow("just above") << "1.51" << range << 0.0;
    QTest::newRow("negative") << "-0.5" << range << 0.0;
    QTest::newRow("huge exponent") << "1e999" << range << 0.0;
    QTest::newRow("tiny exponent") << "1e-999" << range << 0.0;
    QTest::newRow("comma stops the number") << "0,5" << range << 0.0;
    QTest::newRow("leading letter") << "a0.5" << format << 0.0;
    QTest::newRow("only blanks") << "   " << format << 0.0;
    QTest::newRow("lone point") << "." << format << 0.0;
    QTest::newRow("lone sign") << "-" << format << 0.0;
    QTest::newRow("inf is not a number") << "inf" << format << 0.0;
}

void TestKVRValidator::gsensorThreshold()
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

void TestKVRValidator::cardShare()
{
    QVERIFY(KVRValidator::validateSDCardSizeRatio(19));
    QVERIFY(!KVRValidator::validateSDCardSizeRatio(20));
    QCOMPARE(KVRValidator::validateSDCardSizeRatio(-20)->key, QString("msg.sdcard_ratio_too_low"));
    // Both shares must keep 20 percent: slider positions 2 to 8 only.
    for (int position = -1; position <= 11; ++position)
        QCOMPARE(!KVRValidator::validateCardShare(position), position >= 2 && position <= 8);
}

void TestKVRValidator::carNumber()
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

QTEST_GUILESS_MAIN(TestKVRValidator)
#include "tst_kvrvalidator.moc"
