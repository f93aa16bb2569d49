#pragma once

#include "commandline.h"

#include "qtbridge/qtbridge.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace kavro::cli {

// The command line as the Qt-linked commands read it: the same parser, its texts as QString.
class QtCommandLine
{
public:
    QtCommandLine(const QString& command, const QStringList& arguments);

    bool parse(const QStringList& valueOptions, const QStringList& flags = {});

    QString command() const { return pathText(m_line.command()); }
    QString error() const { return pathText(m_line.error()); }
    const QStringList& positional() const { return m_positional; }
    bool helpRequested() const { return m_line.helpRequested(); }
    bool has(const QString& name) const { return m_line.has(name.toStdString()); }
    std::optional<QString> value(const QString& name) const;
    std::optional<QString> format(const QStringList& allowed);
    void setError(const QString& message) { m_line.setError(message.toStdString()); }

    const CommandLine& line() const { return m_line; }

    static Arguments bytes(const QStringList& texts);
    static QStringList texts(const Arguments& bytes);

private:
    CommandLine m_line;
    QStringList m_positional;
};

inline int fail(const QString& message)
{
    return fail(std::string_view(message.toUtf8().toStdString()));
}
inline void note(const QString& message)
{
    note(std::string_view(message.toUtf8().toStdString()));
}
inline int fail(const char* message)
{
    return fail(std::string_view(message));
}
inline int printHelp(const QString& text)
{
    return printHelp(std::string_view(text.toUtf8().toStdString()));
}
inline int printHelp(const char* text)
{
    return printHelp(std::string_view(text));
}
inline int writeOutput(const QtCommandLine& line, const QByteArray& output)
{
    return writeOutput(line.line(),
                       std::string_view(output.constData(), std::size_t(output.size())));
}

} // namespace kavro::cli
