#include "progressline.h"

#include <cstdio>

#include <unistd.h>

namespace kavro::cli {

namespace {

constexpr qint64 UnaskedAfterMs = 1000;
constexpr qint64 TerminalEveryMs = 100;
constexpr qint64 LineEveryMs = 1000;

void writeError(const QByteArray& text)
{
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
    std::fflush(stderr);
}

} // namespace

ProgressLine::ProgressLine(bool requested, std::size_t total, QString label)
    : m_requested(requested), m_terminal(::isatty(STDERR_FILENO) == 1), m_total(total),
      m_label(std::move(label))
{
    m_clock.start();
}

void ProgressLine::update(std::size_t done)
{
    m_done = done;
    const qint64 now = m_clock.elapsed();
    if (!m_requested && (!m_terminal || now < UnaskedAfterMs))
        return;
    const qint64 every = m_terminal ? TerminalEveryMs : LineEveryMs;
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
    QByteArray text =
        QStringLiteral("kavro: %1: %2/%3 recordings").arg(m_label).arg(done).arg(m_total).toUtf8();
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
