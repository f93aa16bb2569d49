#pragma once

#include "commandline.h"

#include <string>
#include <string_view>

namespace kavro::cli {

// Output that a command makes piece by piece. Without -o the pieces go straight to standard
// output, so a long document never sits whole in memory. With -o they are gathered and handed to
// writeOutput at the end, which keeps its guarantees for files (the old file stays until the new
// one is whole) and for the special targets it knows.
class StreamedOutput
{
public:
    explicit StreamedOutput(const CommandLine& line);

    // False once standard output has failed; the rest is then dropped.
    bool write(std::string_view piece);
    // Sends what was gathered, or flushes standard output; ExitOk or the status of fail().
    int finish();

private:
    const CommandLine& m_line;
    bool m_gather;
    bool m_failed = false;
    std::string m_gathered;
};

} // namespace kavro::cli
