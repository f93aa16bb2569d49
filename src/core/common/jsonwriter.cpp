#include "jsonwriter.h"

#include "numbertext.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace kavro {

void JsonWriter::newline(int depth)
{
    if (!m_pretty)
        return;
    // The indentation from a constant in one append, rather than a fresh QByteArray per line.
    static constexpr std::string_view Spaces = "                                ";
    m_out.append('\n');
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
        m_out.append(',');
    if (frame.inlineLayout) {
        if (!frame.empty && m_pretty)
            m_out.append(' ');
    } else {
        newline(static_cast<int>(m_stack.size()));
    }
    frame.empty = false;
}

void JsonWriter::open(char bracket, bool isObject, Layout layout)
{
    beforeValue();
    m_out.append(bracket);
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
    m_out.append(bracket);
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
    m_out.append(text.data(), static_cast<qsizetype>(text.size()));
}

void JsonWriter::value(std::string_view text)
{
    beforeValue();
    m_out.append('"');
    // Runs of characters that need no escape go in with one append each: a list of a full card
    // is megabytes of paths, and appending them byte by byte was most of its cost.
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        append(text.substr(runStart, i - runStart));
        runStart = i + 1;
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
    m_out.append('"');
}

void JsonWriter::value(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    value(std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())));
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

QByteArray JsonWriter::takePending()
{
    QByteArray pending = std::move(m_out);
    m_out.clear();
    return pending;
}

QByteArray JsonWriter::take()
{
    QByteArray result = std::move(m_out);
    if (m_stack.empty())
        result.append('\n');
    m_out.clear();
    m_stack.clear();
    m_afterKey = false;
    return result;
}

} // namespace kavro
