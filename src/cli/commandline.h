#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <string_view>

namespace kavro::cli {

// Exit codes of the command-line contract.
constexpr int ExitOk = 0;
constexpr int ExitUsage = 2;

// The arguments of one subcommand: options that take a value ("-o FILE", "--format json",
// also "--format=json"), flags ("--help") and the positional rest. Each subcommand says which
// options it knows, so an unknown option is an error rather than a silent positional.
class CommandLine
{
public:
    CommandLine(QString command, QStringList arguments);

    // valueOptions: names such as "-o", "--format", "--at"; flags: names such as "--help".
    // "-h" is always taken as "--help". Returns false with a message on an unknown option or a
    // missing value.
    bool parse(const QStringList& valueOptions, const QStringList& flags = {});

    const QString& command() const { return m_command; }
    const QString& error() const { return m_error; }
    const QStringList& positional() const { return m_positional; }
    bool helpRequested() const { return has("--help"); }
    bool has(const QString& name) const { return m_options.count(name) != 0; }
    std::optional<QString> value(const QString& name) const;

    // The --format value checked against the allowed names; the first allowed one by default.
    // Returns an empty optional (and sets error()) when the value is not allowed.
    std::optional<QString> format(const QStringList& allowed);

    void setError(const QString& message) { m_error = message; }

private:
    QString m_command;
    QStringList m_arguments;
    QStringList m_positional;
    std::map<QString, QString> m_options;
    QString m_error;
};

// Prints "kavro: <message>" as one line on stderr and returns ExitUsage.
int fail(const QString& message);

// Prints "kavro: <message>" as one line on stderr, for what a script may want to know.
void note(const QString& message);

// Prints the help text on stdout and returns ExitOk.
int printHelp(const QString& text);

// Sends the output to the file named by -o (written atomically) or to stdout.
int writeOutput(const CommandLine& line, std::string_view output);
inline int writeOutput(const CommandLine& line, const QByteArray& output)
{
    return writeOutput(line, std::string_view(output.constData(), std::size_t(output.size())));
}

} // namespace kavro::cli
