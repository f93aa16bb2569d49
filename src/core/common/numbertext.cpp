#include "numbertext.h"

#include <charconv>
#include <cmath>

namespace kavro {

namespace {
template <typename T> std::string toShortest(T value)
{
    if (!std::isfinite(value))
        return {};
    char buffer[64];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}
} // namespace

std::string shortestText(float value)
{
    return toShortest(value);
}
std::string shortestText(double value)
{
    return toShortest(value);
}

} // namespace kavro
