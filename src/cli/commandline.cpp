#include "commandline.h"

#include "common/outputfile.h"

#include <cstdio>

namespace kavro::cli {

CommandLine::CommandLine(QString command, QStringList arguments)
    : m_command(std::move(command)), m_arguments(std::move(arguments))
{
}

bool CommandLine::parse(const QStringList& valueOptions, const QStringList& flags)
{
    bool onlyPositional = false;
    for (qsizetype i = 0; i < m_arguments.size(); ++i) {
        const QString& argument = m_arguments.at(i);
        if (onlyPositional || argument == "-" || !argument.startsWith('-')) {
            m_positional.append(argument);
            continue;
        }
        if (argument == "--") {
            onlyPositional = true;
            continue;
        }
        if (argument == "-h" || argument == "--help") {
            m_options["--help"] = QString();
            continue;
        }
        QString name = argument;
        std::optional<QString> inlineValue;
        qsizetype equals = argument.indexOf('=');
        if (argument.startsWith("--") && equals > 0) {
            name = argument.left(equals);
            inlineValue = argument.mid(equals + 1);
        }
        if (valueOptions.contains(name)) {
            if (!inlineValue) {
                if (i + 1 >= m_arguments.size()) {
                    m_error = QStringLiteral("%1: option %2 needs a value").arg(m_command, name);
                    return false;
                }
                inlineValue = m_arguments.at(++i);
            }
            m_options[name] = *inlineValue;
        } else if (flags.contains(name) && !inlineValue) {
            m_options[name] = QString();
        } else {
            m_error = QStringLiteral("%1: unknown option %2").arg(m_command, argument);
            return false;
        }
    }
    return true;
}

std::optional<QString> CommandLine::value(const QString& name) const
{
    auto it = m_options.find(name);
    if (it == m_options.end())
        return std::nullopt;
    return it->second;
}

std::optional<QString> CommandLine::format(const QStringList& allowed)
{
    std::optional<QString> chosen = value("--format");
    if (!chosen)
        return allowed.value(0);
    if (!allowed.contains(*chosen)) {
        m_error = QStringLiteral("%1: unknown format '%2' (use %3)")
                      .arg(m_command, *chosen, allowed.join('|'));
        return std::nullopt;
    }
    return chosen;
}

void note(const QString& message)
{
    const QByteArray line = "kavro: " + message.simplified().toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
}

int fail(const QString& message)
{
    note(message);
    return ExitUsage;
}

int printHelp(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    if (!utf8.endsWith('\n'))
        utf8.append('\n');
    std::fwrite(utf8.constData(), 1, static_cast<size_t>(utf8.size()), stdout);
    return ExitOk;
}

int writeOutput(const CommandLine& line, std::string_view output)
{
    if (std::optional<QString> path = line.value("-o")) {
        QString error;
        if (!writeFile(*path, QByteArray::fromRawData(output.data(), qsizetype(output.size())),
                       &error))
            return fail(
                QStringLiteral("%1: cannot write %2: %3").arg(line.command(), *path, error));
        return ExitOk;
    }
    if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
        std::fflush(stdout) != 0)
        return fail(QStringLiteral("%1: cannot write to standard output").arg(line.command()));
    return ExitOk;
}

} // namespace kavro::cli
