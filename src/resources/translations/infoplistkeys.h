#pragma once

#include <QStringList>

namespace kavro {

// The keys that reach qtTrId as data rather than as literals: the drive-record column titles and
// the messages of the settings checks and the choices of the settings pages, which the core
// hands over by key.
QStringList infoPlistDataKeys();

} // namespace kavro
