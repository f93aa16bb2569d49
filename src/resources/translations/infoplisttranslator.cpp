#include "resources/translations/infoplisttranslator.h"

#include "common/preferences.h"

#include <QCoreApplication>
#include <QLocale>
#include <QLoggingCategory>
#include <QPointer>
#include <QTranslator>

Q_LOGGING_CATEGORY(lcTranslations, "kavro.translations", QtInfoMsg)

namespace kavro {

namespace {

// Where the build puts the compiled tables (see CMakeLists.txt).
constexpr char TableFolder[] = ":/translations";
constexpr char TableName[] = "InfoPlist";

QPointer<QTranslator>& installedTranslator()
{
    static QPointer<QTranslator> translator;
    return translator;
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

QStringList preferredLanguages()
{
    const QStringList stored = openPreferences()->value(PrefLanguages).toStringList();
    return stored.isEmpty() ? QLocale::system().uiLanguages() : stored;
}

QString installInfoPlistTranslator()
{
    return installInfoPlistTranslator(infoPlistLanguage(preferredLanguages()));
}

QString installInfoPlistTranslator(const QString& language)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    const QString file = QStringLiteral("%1_%2").arg(QLatin1String(TableName), language);
    if (!translator->load(file, QLatin1String(TableFolder))) {
        qCWarning(lcTranslations) << "no translation table" << file;
        delete translator;
        return {};
    }
    // Replace only after the new table loaded, so a failure keeps the texts the user had.
    if (QTranslator* previous = installedTranslator()) {
        QCoreApplication::removeTranslator(previous);
        delete previous;
    }
    QCoreApplication::installTranslator(translator);
    installedTranslator() = translator;
    qCInfo(lcTranslations) << "texts in" << language;
    return language;
}

} // namespace kavro
