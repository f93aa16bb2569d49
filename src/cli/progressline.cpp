#include "progressline.h"

#include <cstdio>

#include <unistd.h>

namespace kavro::cli {

namespace {

constexpr std::int64_t UnaskedAfterMs = 1000;
constexpr std::int64_t TerminalEveryMs = 100;
constexpr std::int64_t LineEveryMs = 1000;

void writeError(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

} // namespace

ProgressLine::ProgressLine(bool requested, std::size_t total, std::string label)
    : m_requested(requested), m_terminal(::isatty(STDERR_FILENO) == 1), m_total(total),
      m_label(std::move(label))
{
}

void ProgressLine::update(std::size_t done)
{
    m_done = done;
    const std::int64_t now = std::chrono::duration_cast<std::chrono::milliseconds>(
                                 std::chrono::steady_clock::now() - m_started)
                                 .count();
    if (!m_requested && (!m_terminal || now < UnaskedAfterMs))
        return;
    const std::int64_t every = m_terminal ? TerminalEveryMs : LineEveryMs;
    if (m_shownAt >= 0 && now - m_shownAt < every && done < m_total)
        return;
    m_shownAt = now;
    show(done, false);
}

void ProgressLine::interrupt()
{
    if (m_onLine)
        writeError("\r\x1b[K");
    m_onLine = false;
}

void ProgressLine::finish()
{
    if (m_shownAt < 0 || (!m_terminal && m_shownDone == m_done))
        return;
    show(m_done, true);
}

void ProgressLine::show(std::size_t done, bool last)
{
    std::string text = "kavro: " + m_label + ": " + std::to_string(done) + '/' +
                       std::to_string(m_total) + " recordings";
    m_shownDone = done;
    if (m_terminal) {
        // Redrawn from the left margin, the rest of the old line cleared.
        text = "\r" + text + "\x1b[K";
        m_onLine = !last;
        if (last)
            text += '\n';
    } else {
        text += '\n';
    }
    writeError(text);
}

} // namespace kavro::cli
