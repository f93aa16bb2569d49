#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavro {

// A small streaming JSON writer that keeps keys in the order they are written (the command-line
// contract lists fields in record order, which a map-based document would sort away).
class JsonWriter
{
public:
    enum class Layout
    {
        Block,
        Inline
    };

    explicit JsonWriter(bool pretty = true) : m_pretty(pretty) {}

    void beginObject(Layout layout = Layout::Block);
    void endObject();
    void beginArray(Layout layout = Layout::Block);
    void endArray();

    void key(std::string_view name);

    void value(std::string_view text);
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(const char* text) { value(std::string_view(text)); }
    void value(bool flag);
    void value(int number) { value(static_cast<std::int64_t>(number)); }
    void value(unsigned number) { value(static_cast<std::uint64_t>(number)); }
    void value(std::int64_t number);
    void value(std::uint64_t number);
    void value(float number);
    void value(double number);
    void null();

    // The document so far, with a final newline once every container is closed.
    std::string take();
    // The text written since the last call, taken out; the writer goes on where it stands, so a
    // long document can be sent out piece by piece.
    std::string takePending();
    std::size_t pendingSize() const { return m_out.size(); }

private:
    struct Frame
    {
        bool isObject;
        bool inlineLayout;
        bool empty = true;
    };

    void beforeValue();
    void raw(std::string_view text);
    void append(std::string_view text) { m_out.append(text); }
    void newline(int depth);
    void open(char bracket, bool isObject, Layout layout);
    void close(char bracket);

    // Its appends are inline, and a document is hundreds of thousands of small ones.
    std::string m_out;
    std::vector<Frame> m_stack;
    bool m_pretty;
    bool m_afterKey = false;
};

} // namespace kavro
