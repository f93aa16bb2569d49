#include "qtcommandline.h"

namespace kavro::cli {

QtCommandLine::QtCommandLine(const QString& command, const QStringList& arguments)
    : m_line(command.toStdString(), bytes(arguments))
{
}

bool QtCommandLine::parse(const QStringList& valueOptions, const QStringList& flags)
{
    const bool parsed = m_line.parse(bytes(valueOptions), bytes(flags));
    m_positional = texts(m_line.positional());
    return parsed;
}

std::optional<QString> QtCommandLine::value(const QString& name) const
{
    if (std::optional<std::string> given = m_line.value(name.toStdString()))
        return pathText(*given);
    return std::nullopt;
}

std::optional<QString> QtCommandLine::format(const QStringList& allowed)
{
    if (std::optional<std::string> chosen = m_line.format(bytes(allowed)))
        return pathText(*chosen);
    return std::nullopt;
}

Arguments QtCommandLine::bytes(const QStringList& texts)
{
    Arguments list;
    list.reserve(std::size_t(texts.size()));
    for (const QString& item : texts)
        list.push_back(nativePath(item));
    return list;
}

QStringList QtCommandLine::texts(const Arguments& bytes)
{
    QStringList list;
    list.reserve(qsizetype(bytes.size()));
    for (const std::string& item : bytes)
        list.append(pathText(item));
    return list;
}

} // namespace kavro::cli
