#include "resources/translations/infoplistkeys.h"
#include "resources/translations/infoplisttranslator.h"

#include "common/preferences.h"
#include "testsupport.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

struct TableEntry
{
    QString source;
    QString translation;
    bool finished = false;
};

QString xmlText(QString text)
{
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&apos;", "'")
        .replace("&amp;", "&");
}

// The live entries of a translation table as written in the source tree, by key. The tables are
// lupdate's output, so a pattern over its layout is enough.
QHash<QString, TableEntry> readTable(const QString& language)
{
    static const QRegularExpression message(
        QStringLiteral("<message id=\"([^\"]+)\">\\s*<source>(.*?)</source>(?:(?!</message>).)*?"
                       "<translation(?: type=\"(\\w+)\")?>(.*?)</translation>"),
        QRegularExpression::DotMatchesEverythingOption);
    const QString table = QString::fromUtf8(kavro::test::readFile(
        QStringLiteral(KAVRO_TRANSLATIONS_DIR "/InfoPlist_%1.ts").arg(language)));
    QHash<QString, TableEntry> entries;
    for (const auto& match : message.globalMatch(table)) {
        const QString type = match.captured(3);
        if (type != QLatin1String("vanished") && type != QLatin1String("obsolete"))
            entries.insert(match.captured(1), {xmlText(match.captured(2)),
                                               xmlText(match.captured(4)), type.isEmpty()});
    }
    return entries;
}

QSet<QString> placeholders(const QString& text)
{
    QSet<QString> found;
    static const QRegularExpression pattern(QStringLiteral("%\\d+"));
    for (const auto& match : pattern.globalMatch(text))
        found.insert(match.captured());
    return found;
}

void setPreferredLanguages(const QStringList& languages)
{
    auto preferences = kavro::openPreferences();
    if (languages.isEmpty())
        preferences->remove(kavro::PrefLanguages);
    else
        preferences->setValue(kavro::PrefLanguages, languages);
    preferences->sync();
}

} // namespace

class TestInfoPlist : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { kavro::test::isolatedConfigHome(); }

    void languageFromPreferredLanguages_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<QString>("language");
        QTest::newRow("Korean") << QStringList{"ko"} << "ko";
        QTest::newRow("Korean with region") << QStringList{"ko-KR"} << "ko";
        QTest::newRow("locale spelling, upper case") << QStringList{"KO_kr"} << "ko";
        QTest::newRow("first choice decides") << QStringList{"en", "ko"} << "en";
        QTest::newRow("another language") << QStringList{"de-DE", "ko"} << "en";
        QTest::newRow("merely starts with ko") << QStringList{"kok"} << "en";
        QTest::newRow("nothing preferred") << QStringList{} << "en";
    }

    void languageFromPreferredLanguages()
    {
        QFETCH(QStringList, preferred);
        QFETCH(QString, language);
        QCOMPARE(kavro::infoPlistLanguage(preferred), language);
    }

    void preferenceChoosesTheInstalledTable()
    {
        setPreferredLanguages({"ko-KR"});
        QCOMPARE(kavro::installInfoPlistTranslator(), QStringLiteral("ko"));
        QCOMPARE(qtTrId("map.title"), QStringLiteral("지도"));
        // A table that cannot load leaves the texts as they were.
        QCOMPARE(kavro::installInfoPlistTranslator(QStringLiteral("xx")), QString());
        QCOMPARE(qtTrId("map.title"), QStringLiteral("지도"));

        setPreferredLanguages({"en"});
        QCOMPARE(kavro::installInfoPlistTranslator(), QStringLiteral("en"));
        QCOMPARE(qtTrId("map.title"), QStringLiteral("Map"));
    }

    // lrelease -idbased writes the //% text for an empty, unfinished entry; English relies on it.
    // Keys handed over as data must be there too, or they would show as keys.
    void englishShowsTheSourceTexts()
    {
        const auto english = readTable(QStringLiteral("en"));
        for (const QString& key : kavro::infoPlistDataKeys())
            QVERIFY2(english.contains(key), qPrintable(key));
        QCOMPARE(kavro::installInfoPlistTranslator(QStringLiteral("en")), QStringLiteral("en"));
        for (auto it = english.cbegin(); it != english.cend(); ++it) {
            QVERIFY2(!it->source.isEmpty(), qPrintable(it.key()));
            QCOMPARE(qtTrId(it.key().toLatin1().constData()), it->source);
        }
    }

    void koreanIsCompleteAndKeepsPlaceholders()
    {
        const auto english = readTable(QStringLiteral("en"));
        const auto korean = readTable(QStringLiteral("ko"));
        QCOMPARE(kavro::installInfoPlistTranslator(QStringLiteral("ko")), QStringLiteral("ko"));
        for (auto it = english.cbegin(); it != english.cend(); ++it) {
            const TableEntry entry = korean.value(it.key());
            QVERIFY2(entry.finished && !entry.translation.isEmpty(), qPrintable(it.key()));
            QCOMPARE(placeholders(entry.translation), placeholders(it->source));
            QCOMPARE(qtTrId(it.key().toLatin1().constData()), entry.translation);
        }
    }
};

QTEST_GUILESS_MAIN(TestInfoPlist)
#include "tst_infoplist.moc"
