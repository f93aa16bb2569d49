#include "xmlwriter.h"

#include <utility>

namespace kavro {

void XmlWriter::startDocument()
{
    m_out.append(R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void XmlWriter::startElement(std::string_view name)
{
    closeStartTag();
    indent(m_open.size());
    m_out += '<';
    m_out.append(name);
    m_open.emplace_back(name);
    m_inStartTag = true;
    m_wroteText = false;
}

void XmlWriter::attribute(std::string_view name, std::string_view value)
{
    if (!m_inStartTag)
        return;
    m_out += ' ';
    m_out.append(name);
    m_out.append("=\"");
    escaped(value, true);
    m_out += '"';
}

void XmlWriter::textElement(std::string_view name, std::string_view text)
{
    startElement(name);
    closeStartTag();
    escaped(text, false);
    m_wroteText = true;
    endElement();
}

void XmlWriter::endElement()
{
    if (m_open.empty())
        return;
    if (m_inStartTag) {
        m_out.append("/>");
        m_inStartTag = false;
    } else {
        // A closing tag after child elements goes on a line of its own; after text it follows
        // the text.
        if (!m_wroteText)
            indent(m_open.size() - 1);
        m_out.append("</");
        m_out.append(m_open.back());
        m_out += '>';
    }
    m_open.pop_back();
    m_wroteText = false;
}

void XmlWriter::endDocument()
{
    while (!m_open.empty())
        endElement();
    m_out += '\n';
}

std::string XmlWriter::takePending()
{
    return std::exchange(m_out, std::string());
}

void XmlWriter::closeStartTag()
{
    if (m_inStartTag)
        m_out += '>';
    m_inStartTag = false;
}

void XmlWriter::indent(std::size_t level)
{
    m_out += '\n';
    m_out.append(level * 2, ' ');
}

void XmlWriter::escaped(std::string_view text, bool inAttribute)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        // U+FFFE and U+FFFF are no characters of XML: left out like the controls.
        if (c == '\xef' && text.substr(i + 1, 2).size() == 2 && text[i + 1] == '\xbf' &&
            (text[i + 2] == '\xbe' || text[i + 2] == '\xbf')) {
            i += 2;
            continue;
        }
        switch (c) {
        case '<':
            m_out.append("&lt;");
            break;
        case '>':
            m_out.append("&gt;");
            break;
        case '&':
            m_out.append("&amp;");
            break;
        case '"':
            m_out.append("&quot;");
            break;
        case '\t':
            inAttribute ? m_out.append("&#9;") : m_out.append(1, c);
            break;
        case '\n':
            inAttribute ? m_out.append("&#10;") : m_out.append(1, c);
            break;
        case '\r':
            inAttribute ? m_out.append("&#13;") : m_out.append(1, c);
            break;
        default:
            if (static_cast<unsigned char>(c) >= 0x20)
                m_out += c;
        }
    }
}

} // namespace kavro
