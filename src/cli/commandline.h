#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavro::cli {

// Exit codes of the command-line contract.
constexpr int ExitOk = 0;
constexpr int ExitUsage = 2;

using Arguments = std::vector<std::string>;

// The arguments of one subcommand: options that take a value ("-o FILE", "--format json",
// also "--format=json"), flags ("--help") and the positional rest. Each subcommand says which
// options it knows, so an unknown option is an error rather than a silent positional.
// Arguments are the bytes the program was given.
class CommandLine
{
public:
    CommandLine(std::string command, Arguments arguments);

    // valueOptions: names such as "-o", "--format", "--at"; flags: names such as "--help".
    // "-h" is always taken as "--help". Returns false with a message on an unknown option or a
    // missing value.
    bool parse(const Arguments& valueOptions, const Arguments& flags = {});

    const std::string& command() const { return m_command; }
    const std::string& error() const { return m_error; }
    const Arguments& positional() const { return m_positional; }
    bool helpRequested() const { return has("--help"); }
    bool has(const std::string& name) const { return m_options.count(name) != 0; }
    std::optional<std::string> value(const std::string& name) const;
    // -o names a file rather than standard output.
    bool writesFile() const;

    // The --format value checked against the allowed names; the first allowed one by default.
    // Returns an empty optional (and sets error()) when the value is not allowed.
    std::optional<std::string> format(const Arguments& allowed);

    void setError(std::string message) { m_error = std::move(message); }

private:
    std::string m_command;
    Arguments m_arguments;
    Arguments m_positional;
    std::map<std::string, std::string> m_options;
    std::string m_error;
};

// Prints "kavro: <message>" as one line on stderr and returns ExitUsage.
int fail(std::string_view message);

// Prints "kavro: <message>" as one line on stderr, for what a script may want to know.
void note(std::string_view message);

// Prints the help text on stdout and returns ExitOk.
int printHelp(std::string_view text);

// Sends the output to the file named by -o (written atomically) or to stdout.
int writeOutput(const CommandLine& line, std::string_view output);

} // namespace kavro::cli
