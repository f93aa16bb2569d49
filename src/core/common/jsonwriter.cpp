#include "jsonwriter.h"

#include "numbertext.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kavro {

void JsonWriter::newline(int depth)
{
    if (!m_pretty)
        return;
    // The indentation from a constant in one append, rather than a fresh string per line.
    static constexpr std::string_view Spaces = "                                ";
    m_out += '\n';
    for (std::size_t left = std::size_t(std::max(depth, 0)) * 2; left > 0;) {
        const std::size_t step = std::min(left, Spaces.size());
        append(Spaces.substr(0, step));
        left -= step;
    }
}

void JsonWriter::beforeValue()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_stack.empty())
        return;
    Frame& frame = m_stack.back();
    if (!frame.empty)
        m_out += ',';
    if (frame.inlineLayout) {
        if (!frame.empty && m_pretty)
            m_out += ' ';
    } else {
        newline(static_cast<int>(m_stack.size()));
    }
    frame.empty = false;
}

void JsonWriter::open(char bracket, bool isObject, Layout layout)
{
    beforeValue();
    m_out += bracket;
    bool inlineLayout =
        layout == Layout::Inline || (!m_stack.empty() && m_stack.back().inlineLayout);
    m_stack.push_back({isObject, inlineLayout});
}

void JsonWriter::close(char bracket)
{
    if (m_stack.empty())
        return;
    Frame frame = m_stack.back();
    m_stack.pop_back();
    if (!frame.empty && !frame.inlineLayout)
        newline(static_cast<int>(m_stack.size()));
    m_out += bracket;
}

void JsonWriter::beginObject(Layout layout)
{
    open('{', true, layout);
}
void JsonWriter::endObject()
{
    close('}');
}
void JsonWriter::beginArray(Layout layout)
{
    open('[', false, layout);
}
void JsonWriter::endArray()
{
    close(']');
}

void JsonWriter::key(std::string_view name)
{
    value(name);
    m_out.append(m_pretty ? ": " : ":");
    m_afterKey = true;
}

void JsonWriter::raw(std::string_view text)
{
    beforeValue();
    m_out.append(text);
}

namespace {

// Where the first byte that JSON must escape (a control character, '"' or '\\') lies at or after
// from, a block of bytes at a time: a list of a full card is megabytes of paths with nothing to
// escape.
std::size_t nextEscape(std::string_view text, std::size_t from)
{
    constexpr std::uint64_t Ones = 0x0101010101010101ULL;
    constexpr std::uint64_t Highs = 0x8080808080808080ULL;
    auto hasZeroByte = [](std::uint64_t v) { return (v - Ones) & ~v & Highs; };
    std::size_t i = from;
#ifdef __SSE2__
    // Sixteen at a time where the processor has the instructions for it (every x86-64 does).
    const __m128i space = _mm_set1_epi8(0x20);
    const __m128i quote = _mm_set1_epi8('"');
    const __m128i backslash = _mm_set1_epi8('\\');
    for (; i + 16 <= text.size(); i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
        // A byte is at least 0x20 (unsigned) when it is the larger of itself and 0x20.
        const __m128i printable = _mm_cmpeq_epi8(_mm_max_epu8(bytes, space), bytes);
        const __m128i special =
            _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash));
        if (_mm_movemask_epi8(_mm_andnot_si128(printable, _mm_set1_epi8(-1))) |
            _mm_movemask_epi8(special))
            break;
    }
#endif
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, text.data() + i, 8);
        // Bytes below 0x20 (high bits of bytes at 0x80 and above are masked out), quotes and
        // backslashes.
        const std::uint64_t below = (word - 0x20 * Ones) & ~word & Highs;
        if (below | hasZeroByte(word ^ ('"' * Ones)) | hasZeroByte(word ^ ('\\' * Ones)))
            break;
    }
    for (; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c < 0x20 || c == '"' || c == '\\')
            return i;
    }
    return i;
}

} // namespace

void JsonWriter::value(std::string_view text)
{
    beforeValue();
    std::size_t i = nextEscape(text, 0);
    if (i == text.size()) {
        // Nothing to escape, as in nearly every text: quotes and text in one step.
        const std::size_t at = m_out.size();
        m_out.resize(at + text.size() + 2);
        char* out = m_out.data() + at;
        out[0] = '"';
        std::memcpy(out + 1, text.data(), text.size());
        out[text.size() + 1] = '"';
        return;
    }
    m_out += '"';
    std::size_t runStart = 0;
    for (; i < text.size(); i = nextEscape(text, runStart)) {
        append(text.substr(runStart, i - runStart));
        runStart = i + 1;
        const unsigned char c = static_cast<unsigned char>(text[i]);
        switch (c) {
        case '"':
            append("\\\"");
            break;
        case '\\':
            append("\\\\");
            break;
        case '\n':
            append("\\n");
            break;
        case '\r':
            append("\\r");
            break;
        case '\t':
            append("\\t");
            break;
        default: {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            append(escape);
        }
        }
    }
    append(text.substr(runStart));
    m_out += '"';
}

void JsonWriter::value(bool flag)
{
    raw(flag ? "true" : "false");
}

void JsonWriter::value(std::int64_t number)
{
    char buffer[32];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    raw(std::string_view(buffer, static_cast<size_t>(end - buffer)));
}

void JsonWriter::value(std::uint64_t number)
{
    char buffer[32];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    raw(std::string_view(buffer, static_cast<size_t>(end - buffer)));
}

void JsonWriter::value(float number)
{
    std::string text = shortestText(number);
    raw(text.empty() ? "null" : text);
}

void JsonWriter::value(double number)
{
    std::string text = shortestText(number);
    raw(text.empty() ? "null" : text);
}

void JsonWriter::null()
{
    raw("null");
}

std::string JsonWriter::takePending()
{
    return std::exchange(m_out, std::string());
}

std::string JsonWriter::take()
{
    if (m_stack.empty())
        m_out += '\n';
    m_stack.clear();
    m_afterKey = false;
    return std::exchange(m_out, std::string());
}

} // namespace kavro
