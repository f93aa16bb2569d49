#include "resources/translations/infoplisttranslator.h"

#include "common/preferences.h"

#include <QCoreApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QPointer>
#include <QTranslator>

#include <memory>

Q_LOGGING_CATEGORY(lcTranslations, "kavro.translations", QtInfoMsg)

namespace kavro {

namespace {

// Where the build puts the compiled tables (see CMakeLists.txt).
constexpr char TableFolder[] = ":/translations";
constexpr char TableName[] = "InfoPlist";

struct Installed
{
    QPointer<QTranslator> english;
    // The chosen table over English; none while English is chosen.
    QPointer<QTranslator> chosen;
    QString language;
};

Installed& installed()
{
    static Installed tables;
    return tables;
}

QTranslator* loadTable(const QString& language)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    const QString file = QStringLiteral("%1_%2").arg(QLatin1String(TableName), language);
    if (!translator->load(file, QLatin1String(TableFolder))) {
        qCWarning(lcTranslations) << "no translation table" << file;
        delete translator;
        return nullptr;
    }
    return translator;
}

void remove(QPointer<QTranslator>& translator)
{
    if (translator) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

} // namespace

QString infoPlistLanguage(const QStringList& preferredLanguages)
{
    const QString first = preferredLanguages.value(0).trimmed().toLower();
    // "ko", "ko-KR", "ko_KR": the language part is what counts.
    if (first == QLatin1String("ko") || first.startsWith(QLatin1String("ko-")) ||
        first.startsWith(QLatin1String("ko_")))
        return QStringLiteral("ko");
    return QStringLiteral("en");
}

bool isLanguageChoice(const QString& choice)
{
    return choice == QLatin1String(LanguageEnglish) || choice == QLatin1String(LanguageKorean) ||
           choice == QLatin1String(LanguageSystem);
}

QString infoPlistLanguageForChoice(const QString& choice, const QStringList& systemLanguages)
{
    if (choice == QLatin1String(LanguageKorean))
        return QStringLiteral("ko");
    if (choice == QLatin1String(LanguageSystem))
        return infoPlistLanguage(systemLanguages);
    return QStringLiteral("en");
}

QString storedLanguageChoice()
{
    const QString choice = openPreferences()->value(PrefViewerLanguage).toString();
    if (!choice.isEmpty() && !isLanguageChoice(choice))
        qCWarning(lcTranslations) << "ignoring the stored language" << choice;
    return isLanguageChoice(choice) ? choice : QString();
}

bool storeLanguageChoice(const QString& choice)
{
    const auto preferences = openPreferences();
    preferences->setValue(PrefViewerLanguage, choice);
    preferences->sync();
    if (preferences->status() != QSettings::NoError) {
        qCWarning(lcTranslations) << "cannot store the language in" << preferences->fileName();
        return false;
    }
    return true;
}

QString installInfoPlistTranslator()
{
    return installInfoPlistTranslator(
        infoPlistLanguageForChoice(storedLanguageChoice(), QLocale::system().uiLanguages()));
}

QString installInfoPlistTranslator(const QString& language)
{
    Installed& tables = installed();
    if (!tables.english) {
        tables.english = loadTable(QStringLiteral("en"));
        if (!tables.english)
            return {};
        QCoreApplication::installTranslator(tables.english);
    }
    if (language == QLatin1String("en")) {
        remove(tables.chosen);
    } else {
        // Replace only after the new table loaded, so a failure keeps the texts the user had.
        QTranslator* translator = loadTable(language);
        if (!translator)
            return {};
        remove(tables.chosen);
        // Installed last, so it is asked before English.
        QCoreApplication::installTranslator(translator);
        tables.chosen = translator;
    }
    tables.language = language;
    qCInfo(lcTranslations) << "texts in" << language;
    return language;
}

QString infoPlistText(const QString& language, const char* key)
{
    for (const QString& table : {language, QStringLiteral("en")}) {
        const std::unique_ptr<QTranslator> translator(loadTable(table));
        const QString text = translator ? translator->translate(nullptr, key) : QString();
        if (!text.isEmpty())
            return text;
    }
    return qtTrId(key);
}

QString installedInfoPlistLanguage()
{
    return installed().language;
}

} // namespace kavro
