#include "random.h"

#include <cmath>
#include <numbers>

namespace kavro::camsim {

Random::Random(std::uint64_t seed) : m_state(seed ^ 0x4b4156524f53494dULL) {}

Random Random::fork(std::uint64_t salt) const
{
    Random copy(m_state + salt * 0x9e3779b97f4a7c15ULL);
    copy.next();
    return copy;
}

// splitmix64: tiny, fast and good enough for scenery and sensor noise.
std::uint64_t Random::next()
{
    std::uint64_t z = (m_state += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
}

double Random::uniform()
{
    return static_cast<double>(next() >> 11) * 0x1.0p-53;
}

double Random::uniform(double low, double high)
{
    return low + (high - low) * uniform();
}

int Random::integer(int low, int high)
{
    if (high <= low)
        return low;
    const auto span = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<int>(next() % span);
}

double Random::normal()
{
    // Box-Muller; the second value is dropped to keep the generator stateless beyond m_state.
    const double u1 = 1.0 - uniform();
    const double u2 = uniform();
    return std::sqrt(-2.0 * std::log(u1)) * std::cos(2.0 * std::numbers::pi * u2);
}

bool Random::chance(double probability)
{
    return uniform() < probability;
}

double Random::hashed(std::uint64_t seed, std::int64_t index)
{
    Random random(seed ^ (static_cast<std::uint64_t>(index) * 0xd1b54a32d192ed03ULL));
    return random.uniform(-1, 1);
}

double Random::smooth(std::uint64_t seed, double position, std::int64_t period)
{
    const double floor = std::floor(position);
    const double f = position - floor;
    const double ease = f * f * (3 - 2 * f);
    auto knot = [&](std::int64_t index) {
        if (period > 0)
            index = ((index % period) + period) % period;
        return hashed(seed, index);
    };
    const auto index = static_cast<std::int64_t>(floor);
    const double a = knot(index);
    return a + (knot(index + 1) - a) * ease;
}

} // namespace kavro::camsim
