#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kavro::cli {

// A progress line on stderr for long runs: redrawn in place on a terminal, a new line every
// second elsewhere. Shown from the start when asked for; when stderr is a terminal, also
// unasked once a run has lasted a second.
class ProgressLine
{
public:
    ProgressLine(bool requested, std::size_t total, std::string label);

    void update(std::size_t done);
    // Clears the line on a terminal, so that another message starts at the left margin.
    void interrupt();
    // The last count on a line of its own, when the line was shown at all.
    void finish();

private:
    void show(std::size_t done, bool last);

    bool m_requested;
    bool m_terminal;
    std::size_t m_total;
    std::size_t m_done = 0;
    std::string m_label;
    std::chrono::steady_clock::time_point m_started = std::chrono::steady_clock::now();
    std::int64_t m_shownAt = -1; // milliseconds after the start
    std::size_t m_shownDone = 0;
    bool m_onLine = false; // a line without its newline is on the terminal
};

} // namespace kavro::cli
