#pragma once

#include <QByteArray>
#include <QString>

namespace kavro {

// Writes the whole content to a temporary file beside the target and renames it over the target
// only when everything was written, so a failed write leaves the old file as it was.
bool writeFileAtomically(const QString& path, const QByteArray& content, QString* error = nullptr);

} // namespace kavro
