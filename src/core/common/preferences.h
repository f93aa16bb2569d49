#pragma once

#include <QSettings>

#include <memory>

namespace kavro {

// The user preferences store shared by the viewer and the command line. Keys keep the names the
// camera software has always used.
inline constexpr char OrganizationName[] = "KAVRO";
inline constexpr char ApplicationName[] = "KAVRO Viewer";
inline constexpr char PrefLanguages[] = "AppleLanguages";
inline constexpr char PrefExternalRearCamera[] = "3t40externalRearCamera";
// The viewer's own language choice (View > Language): "en", "ko" or "system". It is kept apart
// from "AppleLanguages", which start-up overwrites with ("en") every time.
inline constexpr char PrefViewerLanguage[] = "viewerLanguage";

inline std::unique_ptr<QSettings> openPreferences()
{
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                       OrganizationName, ApplicationName);
}

} // namespace kavro
