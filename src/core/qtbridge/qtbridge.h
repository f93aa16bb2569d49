#pragma once

#include <QFile>
#include <QString>

#include <string>
#include <string_view>

namespace kavro {

// The core takes paths as the file system has them (bytes); the viewer holds them as text.
// These are the one place where the two meet.
inline std::string nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

inline QString pathText(std::string_view path)
{
    return QFile::decodeName(QByteArray(path.data(), qsizetype(path.size())));
}

} // namespace kavro
