#include "bytesize.h"

#include <cstdio>
#include <cstring>

namespace kavro {

namespace {

constexpr char UnitLetters[] = "kMGTPEZY";
constexpr int MaxDivisions = 8;

// Roomy: the rule's longest text is "1023 kB", but the compiler cannot know that.
using WideBuffer = char[32];

void formatWide(WideBuffer& out, std::uint64_t bytes)
{
    auto print = [&out](const char* format, auto... values) {
        std::snprintf(out, sizeof out, format, values...);
    };
    if (bytes < 1024) {
        print("%llu B", static_cast<unsigned long long>(bytes));
        return;
    }

    // Divide until the quotient is below 1024. The sticky flag remembers whether anything was
    // lost before the last division, so that an exact half of the last step is not taken for a
    // tie when the value really lies above it.
    std::uint64_t quotient = bytes;
    std::uint64_t remainder = 0;
    bool sticky = false;
    int divisions = 0;
    std::uint64_t dividend = 0;
    do {
        sticky = sticky || remainder != 0;
        dividend = quotient;
        remainder = quotient % 1024;
        quotient /= 1024;
        ++divisions;
    } while (dividend >= 1024 * 1024 && divisions < MaxDivisions);

    unsigned long long q = quotient;
    char unit = UnitLetters[divisions - 1];
    if (q >= 10) {
        if (remainder > 512 || (remainder == 512 && (q % 2 != 0 || sticky)))
            ++q;
        if (q == 1024 && divisions < MaxDivisions)
            print("1.0 %cB", UnitLetters[divisions]);
        else
            print("%llu %cB", q, unit);
        return;
    }
    if (remainder >= 950) {
        print("%llu %cB", q + 1, unit);
        return;
    }
    // One decimal, by hundreds of the remainder (not tenths of a unit), as the camera's tools do.
    unsigned long long digit = remainder / 100;
    std::uint64_t rest = remainder % 100;
    if (rest > 50 || (rest == 50 && (digit % 2 != 0 || sticky)))
        ++digit;
    print("%llu.%llu %cB", q, digit, unit);
}

} // namespace

void formatByteSize(char (&buffer)[ByteSizeBufferSize], std::uint64_t bytes)
{
    WideBuffer wide;
    formatWide(wide, bytes);
    std::size_t length = strnlen(wide, ByteSizeBufferSize - 1);
    std::memcpy(buffer, wide, length);
    buffer[length] = '\0';
}

QString byteSizeString(std::uint64_t bytes)
{
    WideBuffer wide;
    formatWide(wide, bytes);
    return QString::fromLatin1(wide);
}

} // namespace kavro
