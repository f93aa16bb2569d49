#include "jsonwriter.h"

#include "numbertext.h"

#include <charconv>
#include <cstdio>

namespace kavro {

void JsonWriter::newline(int depth)
{
    if (!m_pretty)
        return;
    m_out.append('\n');
    m_out.append(QByteArray(depth * 2, ' '));
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
    bool inlineLayout = layout == Layout::Inline || (!m_stack.empty() && m_stack.back().inlineLayout);
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

void JsonWriter::beginObject(Layout layout) { open('{', true, layout); }
void JsonWriter::endObject() { close('}'); }
void JsonWriter::beginArray(Layout layout) { open('[', false, layout); }
void JsonWriter::endArray() { close(']'); }

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
    for (unsigned char c : text) {
        switch (c) {
        case '"': m_out.append("\\\""); break;
        case '\\': m_out.append("\\\\"); break;
        case '\n': m_out.append("\\n"); break;
        case '\r': m_out.append("\\r"); break;
        case '\t': m_out.append("\\t"); break;
        default:
            if (c < 0x20) {
                char escape[8];
                std::snprintf(escape, sizeof escape, "\\u%04x", c);
                m_out.append(escape);
            } else {
                m_out.append(static_cast<char>(c));
            }
        }
    }
    m_out.append('"');
}

void JsonWriter::value(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    value(std::string_view(utf8.constData(), static_cast<size_t>(utf8.size())));
}

void JsonWriter::value(bool flag) { raw(flag ? "true" : "false"); }

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

void JsonWriter::null() { raw("null"); }

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
