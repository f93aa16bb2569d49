#pragma once

#include <cstdint>

namespace kavro::camsim {

// A small seeded generator whose sequence is the same on every compiler and library: the
// standard distributions are not, and the simulator promises the same bytes for the same seed.
class Random
{
public:
    explicit Random(std::uint64_t seed);

    // An independent generator for one part of the card, so that adding draws in one part does
    // not shift the values of another.
    Random fork(std::uint64_t salt) const;

    std::uint64_t next();
    double uniform();                        // [0, 1)
    double uniform(double low, double high); // [low, high)
    int integer(int low, int high);          // [low, high], both inclusive
    double normal();                         // mean 0, deviation 1
    bool chance(double probability);

    // Values that depend only on their arguments, so that a quantity sampled by several
    // recordings of one drive agrees where they meet.
    static double hashed(std::uint64_t seed, std::int64_t index); // [-1, 1)
    // Smooth noise in [-1, 1]: hashed values at whole steps of `position`, eased between. With a
    // period, the noise repeats after that many steps (a panorama that closes on itself).
    static double smooth(std::uint64_t seed, double position, std::int64_t period = 0);

private:
    std::uint64_t m_state;
};

} // namespace kavro::camsim
