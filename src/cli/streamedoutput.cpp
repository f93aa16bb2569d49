#include "streamedoutput.h"

#include <cstdio>

namespace kavro::cli {

StreamedOutput::StreamedOutput(const CommandLine& line) : m_line(line), m_gather(line.has("-o")) {}

bool StreamedOutput::write(std::string_view piece)
{
    if (m_failed)
        return false;
    if (m_gather) {
        m_gathered.append(piece);
        return true;
    }
    m_failed = std::fwrite(piece.data(), 1, piece.size(), stdout) != piece.size();
    return !m_failed;
}

int StreamedOutput::finish()
{
    if (m_gather)
        return writeOutput(m_line, m_gathered);
    if (m_failed || std::fflush(stdout) != 0)
        return fail(m_line.command() + ": cannot write to standard output");
    return ExitOk;
}

} // namespace kavro::cli
