#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kavro::camsim {

class DriveTrack;

// What a recording's microphone hears.
struct SoundEvents
{
    std::optional<double> impact;   // drive time of a bump
    std::optional<double> passerBy; // drive time at which another car is nearest
};

// The cabin sound of a drive as 16-bit mono PCM: the engine's hum following the speed, tyre and
// wind noise, and the thump of an impact. The rear camera's microphone hears more road than
// engine.
class AudioSynth
{
public:
    static constexpr int SampleRate = 16000;

    AudioSynth(const DriveTrack& track, std::uint64_t seed, bool rear);

    // Little-endian samples from drive time `start` for `duration` seconds.
    QByteArray pcm(double start, double duration, const SoundEvents& events) const;

private:
    const DriveTrack& m_track;
    std::uint64_t m_seed;
    bool m_rear;
};

} // namespace kavro::camsim
