#pragma once

#include <QString>
#include <QStringList>

namespace kavro {

// The choices of View > Language and of --lang.
inline constexpr char LanguageEnglish[] = "en";
inline constexpr char LanguageKorean[] = "ko";
inline constexpr char LanguageSystem[] = "system";

// The language of the table "InfoPlist" for a list of preferred languages, first choice first:
// "ko" when the first one is Korean, "en" otherwise.
QString infoPlistLanguage(const QStringList& preferredLanguages);

// True for "en", "ko" and "system".
bool isLanguageChoice(const QString& choice);

// The table's language for a choice: "en" and "ko" as they are, "system" by the system's
// languages, anything else (no choice made) English.
QString infoPlistLanguageForChoice(const QString& choice, const QStringList& systemLanguages);

// The choice kept in the preferences, empty when the person never made one.
QString storedLanguageChoice();
// Keeps a choice for the next starts; false when the preferences could not be written.
bool storeLanguageChoice(const QString& choice);

// Installs the table of the stored choice (English without one). Call after the application
// object exists. Returns the language installed, or an empty text when no table could be loaded.
QString installInfoPlistTranslator();
// The same for a given language, "en" or "ko". English is always installed underneath, so a key
// the chosen table lacks shows its English text rather than the key. A table that cannot be
// loaded leaves the installed ones as they were and returns an empty text.
QString installInfoPlistTranslator(const QString& language);

// The text of a key in a language's own table, whichever language is installed; the English text
// when that table lacks it.
QString infoPlistText(const QString& language, const char* key);

// The language installed last, empty before the first installation.
QString installedInfoPlistLanguage();

} // namespace kavro
