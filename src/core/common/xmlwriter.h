#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavro {

// A small streaming XML writer for the route documents: elements indented by two spaces per
// level, text elements on one line, an element without content closed as "<name/>". Text is
// UTF-8; the five characters XML reserves are escaped, and control characters that XML 1.0
// cannot carry, and U+FFFE and U+FFFF, are left out (callers that care replace them first).
class XmlWriter
{
public:
    // The declaration; call first.
    void startDocument();
    void startElement(std::string_view name);
    // An attribute of the element just started; namespace declarations are attributes too.
    void attribute(std::string_view name, std::string_view value);
    void textElement(std::string_view name, std::string_view text);
    void endElement();
    // Closes every open element and ends the document with a newline.
    void endDocument();
    // Text already laid out as markup, taken as it is; the writer's state does not change.
    void raw(std::string_view markup) { m_out.append(markup); }
    // The current depth of open elements.
    int depth() const { return int(m_open.size()); }

    // The text written since the last call, taken out.
    std::string takePending();

private:
    void closeStartTag();
    void indent(std::size_t level);
    void escaped(std::string_view text, bool inAttribute);

    std::string m_out;
    std::vector<std::string> m_open;
    bool m_inStartTag = false;
    bool m_wroteText = false;
};

} // namespace kavro
