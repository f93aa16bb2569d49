#include "commandline.h"

#include "common/outputfile.h"

#include <algorithm>
#include <cstdio>

namespace kavro::cli {

namespace {

bool contains(const Arguments& list, const std::string& item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

} // namespace

CommandLine::CommandLine(std::string command, Arguments arguments)
    : m_command(std::move(command)), m_arguments(std::move(arguments))
{
}

bool CommandLine::parse(const Arguments& valueOptions, const Arguments& flags)
{
    bool onlyPositional = false;
    for (std::size_t i = 0; i < m_arguments.size(); ++i) {
        const std::string& argument = m_arguments[i];
        if (onlyPositional || argument == "-" || !argument.starts_with('-')) {
            m_positional.push_back(argument);
            continue;
        }
        if (argument == "--") {
            onlyPositional = true;
            continue;
        }
        if (argument == "-h" || argument == "--help") {
            m_options["--help"] = std::string();
            continue;
        }
        std::string name = argument;
        std::optional<std::string> inlineValue;
        const std::size_t equals = argument.find('=');
        if (argument.starts_with("--") && equals != std::string::npos && equals > 0) {
            name = argument.substr(0, equals);
            inlineValue = argument.substr(equals + 1);
        }
        if (contains(valueOptions, name)) {
            if (!inlineValue) {
                if (i + 1 >= m_arguments.size()) {
                    m_error = m_command + ": option " + name + " needs a value";
                    return false;
                }
                inlineValue = m_arguments[++i];
            }
            m_options[name] = *inlineValue;
        } else if (contains(flags, name) && !inlineValue) {
            m_options[name] = std::string();
        } else {
            m_error = m_command + ": unknown option " + argument;
            return false;
        }
    }
    return true;
}

std::optional<std::string> CommandLine::value(const std::string& name) const
{
    auto it = m_options.find(name);
    if (it == m_options.end())
        return std::nullopt;
    return it->second;
}

bool CommandLine::writesFile() const
{
    const std::optional<std::string> path = value("-o");
    return path && *path != "-";
}

std::optional<std::string> CommandLine::format(const Arguments& allowed)
{
    std::optional<std::string> chosen = value("--format");
    if (!chosen)
        return allowed.empty() ? std::string() : allowed.front();
    if (!contains(allowed, *chosen)) {
        std::string names;
        for (const std::string& name : allowed)
            names += (names.empty() ? "" : "|") + name;
        m_error = m_command + ": unknown format '" + *chosen + "' (use " + names + ")";
        return std::nullopt;
    }
    return chosen;
}

void note(std::string_view message)
{
    // One line whatever the message holds: runs of blanks become one space, none at the ends.
    std::string line = "kavro: ";
    bool blank = false;
    for (const char c : message) {
        if (isBlank(c)) {
            blank = true;
            continue;
        }
        if (blank && line.size() > 7)
            line += ' ';
        blank = false;
        line += c;
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

int fail(std::string_view message)
{
    note(message);
    return ExitUsage;
}

int printHelp(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    if (!text.ends_with('\n'))
        std::fputc('\n', stdout);
    return ExitOk;
}

int writeOutput(const CommandLine& line, std::string_view output)
{
    if (line.writesFile()) {
        const std::string path = *line.value("-o");
        std::string error;
        if (!writeFile(path, output, &error))
            return fail(line.command() + ": cannot write " + path + ": " + error);
        return ExitOk;
    }
    if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
        std::fflush(stdout) != 0)
        return fail(line.command() + ": cannot write to standard output");
    return ExitOk;
}

} // namespace kavro::cli
