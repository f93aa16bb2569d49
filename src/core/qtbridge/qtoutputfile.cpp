// The text forms of the file writer, for the Qt programs.
#include "common/outputfile.h"

#include <QByteArray>
#include <QString>

namespace kavro {

bool OutputFile::open(const QString& path, Rule rule)
{
    return open(path.toLocal8Bit().toStdString(), rule);
}

bool OutputFile::write(const QByteArray& bytes)
{
    return write(bytes.constData(), bytes.size());
}

QString OutputFile::errorString() const
{
    return QString::fromLocal8Bit(m_error);
}

QByteArray OutputFile::targetPath() const
{
    return QByteArray::fromStdString(m_target);
}

bool writeFile(const QString& path, const QByteArray& content, QString* error,
               OutputFile::Rule rule)
{
    std::string reason;
    const bool written = writeFile(
        path.toLocal8Bit().toStdString(),
        std::string_view(content.constData(), std::size_t(content.size())), &reason, rule);
    if (!written && error)
        *error = QString::fromLocal8Bit(reason);
    return written;
}

} // namespace kavro
