#include "utf8text.h"

#include <cstdint>
#include <cstring>

namespace kavro {

bool isValidUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        // Telemetry text is plain ASCII: eight bytes at a time while no byte has its top bit.
        std::uint64_t eight = 0;
        if (text.size() - i >= sizeof eight) {
            std::memcpy(&eight, text.data() + i, sizeof eight);
            if ((eight & 0x8080808080808080u) == 0) {
                i += sizeof eight;
                continue;
            }
        }
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            ++i;
            continue;
        }
        std::size_t length = 0;
        std::uint32_t point = 0;
        if ((c & 0xe0) == 0xc0) {
            length = 2;
            point = c & 0x1f;
        } else if ((c & 0xf0) == 0xe0) {
            length = 3;
            point = c & 0x0f;
        } else if ((c & 0xf8) == 0xf0) {
            length = 4;
            point = c & 0x07;
        } else {
            return false;
        }
        if (text.size() - i < length)
            return false;
        for (std::size_t k = 1; k < length; ++k) {
            const unsigned char next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xc0) != 0x80)
                return false;
            point = (point << 6) | (next & 0x3f);
        }
        constexpr std::uint32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (point < Smallest[length] || point > 0x10ffff || (point >= 0xd800 && point < 0xe000))
            return false;
        i += length;
    }
    return true;
}

std::size_t utf16Length(std::string_view text)
{
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        // A lead byte starts a character; one of four bytes takes two units.
        if ((byte & 0xc0) != 0x80)
            units += byte >= 0xf0 ? 2 : 1;
    }
    return units;
}

} // namespace kavro
