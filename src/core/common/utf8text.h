#pragma once

#include <cstddef>
#include <string_view>

namespace kavro {

// Well-formed UTF-8: no stray continuation bytes, overlong forms, surrogates or code points past
// U+10FFFF. Text that is mostly ASCII passes quickly.
bool isValidUtf8(std::string_view text);

// The length of well-formed UTF-8 text in UTF-16 units, as text columns have been counted.
std::size_t utf16Length(std::string_view text);

} // namespace kavro
