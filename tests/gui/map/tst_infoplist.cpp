#include "resources/translations/infoplistkeys.h"
#include "resources/translations/infoplisttranslator.h"

#include "common/preferences.h"
#include "testsupport.h"

#include <QDirIterator>
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

    // The system's languages count only when the person chose "system"; then the first decides.
    void languageForChoice_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QStringList>("system");
        QTest::addColumn<QString>("language");
        QTest::newRow("no choice is English") << "" << QStringList{"ko-KR"} << "en";
        QTest::newRow("English") << "en" << QStringList{"ko-KR"} << "en";
        QTest::newRow("Korean") << "ko" << QStringList{"de-DE"} << "ko";
        QTest::newRow("unknown choice") << "klingon" << QStringList{"ko"} << "en";
        QTest::newRow("system: Korean") << "system" << QStringList{"ko"} << "ko";
        QTest::newRow("system: with region") << "system" << QStringList{"ko-KR", "en"} << "ko";
        QTest::newRow("system: locale spelling") << "system" << QStringList{"KO_kr"} << "ko";
        QTest::newRow("system: first decides") << "system" << QStringList{"en", "ko"} << "en";
        QTest::newRow("system: another") << "system" << QStringList{"de-DE", "ko"} << "en";
        QTest::newRow("system: merely starts with ko") << "system" << QStringList{"kok"} << "en";
        QTest::newRow("system: nothing") << "system" << QStringList{} << "en";
    }

    void languageForChoice()
    {
        QFETCH(QString, choice);
        QFETCH(QStringList, system);
        QFETCH(QString, language);
        QCOMPARE(kavro::infoPlistLanguageForChoice(choice, system), language);
    }

    // The stored choice decides; "AppleLanguages", which start-up always sets to English, does not.
    void storedChoiceChoosesTheInstalledTable()
    {
        setPreferredLanguages({"ko-KR"});
        QCOMPARE(kavro::installInfoPlistTranslator(), QStringLiteral("en"));
        QCOMPARE(qtTrId("map.title"), QStringLiteral("Map"));

        setPreferredLanguages({"en"});
        QVERIFY(kavro::storeLanguageChoice(QStringLiteral("ko")));
        QCOMPARE(kavro::installInfoPlistTranslator(), QStringLiteral("ko"));
        QCOMPARE(qtTrId("map.title"), QStringLiteral("지도"));
        // A table that cannot load leaves the texts as they were.
        QCOMPARE(kavro::installInfoPlistTranslator(QStringLiteral("xx")), QString());
        QCOMPARE(qtTrId("map.title"), QStringLiteral("지도"));
        QCOMPARE(kavro::infoPlistText(QStringLiteral("en"), "map.title"), QStringLiteral("Map"));

        // A value written by something else counts as no choice.
        QVERIFY(kavro::storeLanguageChoice(QStringLiteral("ko; rm -rf")));
        QCOMPARE(kavro::storedLanguageChoice(), QString());
        QCOMPARE(kavro::installInfoPlistTranslator(), QStringLiteral("en"));
        QCOMPARE(qtTrId("map.title"), QStringLiteral("Map"));
    }

    // Every key the program asks for, in the sources or handed over as data, is in the English
    // table; lrelease -idbased writes the //% text for its empty, unfinished entry, which English
    // relies on. Korean is complete. So no key ever shows as itself.
    void bothTablesShowEveryKeysText()
    {
        static const QRegularExpression call(
            QStringLiteral("\\b(?:qtTrId|QT_TRID_NOOP)\\(\\s*\"([^\"]+)\"\\s*\\)"));
        const auto english = readTable(QStringLiteral("en"));
        const auto korean = readTable(QStringLiteral("ko"));
        QStringList keys = kavro::infoPlistDataKeys();
        QDirIterator files(QStringLiteral(KAVRO_TRANSLATIONS_DIR "/../.."),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString source = QString::fromUtf8(kavro::test::readFile(files.next()));
            for (const auto& match : call.globalMatch(source))
                keys.append(match.captured(1) + " in " + files.fileName());
        }
        QVERIFY(keys.size() > kavro::infoPlistDataKeys().size() + 200);
        for (const QString& key : keys)
            QVERIFY2(!english.value(key.section(' ', 0, 0)).source.isEmpty(), qPrintable(key));
        for (const QString language : {"en", "ko"}) {
            QCOMPARE(kavro::installInfoPlistTranslator(language), language);
            for (auto it = english.cbegin(); it != english.cend(); ++it) {
                const TableEntry entry = korean.value(it.key());
                QVERIFY2(entry.finished && !entry.translation.isEmpty(), qPrintable(it.key()));
                QCOMPARE(placeholders(entry.translation), placeholders(it->source));
                QCOMPARE(qtTrId(it.key().toLatin1().constData()),
                         language == "en" ? it->source : entry.translation);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestInfoPlist)
#include "tst_infoplist.moc"
