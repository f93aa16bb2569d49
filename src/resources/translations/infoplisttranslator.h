#pragma once

#include <QString>
#include <QStringList>

namespace kavro {

// The language of the table "InfoPlist" for a list of preferred languages, first choice first:
// "ko" when the first one is Korean, "en" otherwise.
QString infoPlistLanguage(const QStringList& preferredLanguages);

// The user's preferred languages: the preference "AppleLanguages" when it is set, else the
// system's user-interface languages.
QStringList preferredLanguages();

// Loads the table of the preferred language and installs it in the application, replacing one
// that an earlier call installed. Returns the language installed, or an empty text when its
// table could not be loaded (qtTrId then shows keys). Call after the application object exists.
QString installInfoPlistTranslator();
// The same for a given language, "en" or "ko".
QString installInfoPlistTranslator(const QString& language);

} // namespace kavro
