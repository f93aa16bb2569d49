#include "audiosynth.h"

#include "drivetrack.h"
#include "random.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kavro::camsim {

namespace {

constexpr double TwoPi = 2 * std::numbers::pi;

// Engine speed for a car speed, with gear changes every 20 km/h or so.
double engineRpm(double speed)
{
    const double kmh = speed * 3.6;
    if (kmh < 3)
        return 780;
    const double gearTop = 22;
    const double inGear = std::fmod(kmh, gearTop) / gearTop;
    const int gear = std::min(5, static_cast<int>(kmh / gearTop));
    return 1300 + 1400 * inGear + 150 * gear;
}

} // namespace

AudioSynth::AudioSynth(const DriveTrack& track, std::uint64_t seed, bool rear)
    : m_track(track), m_seed(seed), m_rear(rear)
{
}

QByteArray AudioSynth::pcm(double start, double duration, const SoundEvents& events) const
{
    const auto count = static_cast<qsizetype>(std::llround(duration * SampleRate));
    QByteArray out(count * 2, Qt::Uninitialized);
    Random noise(m_seed ^ static_cast<std::uint64_t>(std::llround(start * 1000)) ^
                 (m_rear ? 0x52 : 0x46));
    const double engineLevel = m_rear ? 0.25 : 1.0;
    const double roadLevel = m_rear ? 1.6 : 1.0;
    double phase = 0;
    double low = 0;  // tyre rumble: white noise through a low-pass
    double band = 0; // wind: what the low-pass leaves out, a little smoothed
    double speed = 0;
    for (qsizetype n = 0; n < count; ++n) {
        const double time = start + static_cast<double>(n) / SampleRate;
        if (n % 160 == 0)
            speed = m_track.at(time).speed;
        const double rpm = engineRpm(speed);
        phase += TwoPi * rpm / 60 * 2 / SampleRate; // a four-cylinder fires twice a turn
        if (phase > TwoPi)
            phase -= TwoPi;
        const double load = 0.5 + 0.5 * std::min(1.0, rpm / 3000);
        double sample = engineLevel * load *
                        (0.09 * std::sin(phase) + 0.05 * std::sin(2 * phase + 0.4) +
                         0.025 * std::sin(3 * phase + 1.1) + 0.015 * std::sin(0.5 * phase));
        const double white = noise.uniform(-1, 1);
        low += 0.04 * (white - low);
        band += 0.3 * (white - low - band);
        sample += roadLevel * (0.004 + 0.018 * std::min(1.0, speed / 25)) * low * 6;
        sample += 0.03 * std::pow(std::min(1.0, speed / 30), 2) * band;
        sample += 0.002 * white; // the microphone's own hiss

        if (events.impact && time >= *events.impact && time < *events.impact + 1.2) {
            const double t = time - *events.impact;
            sample += 0.7 * std::exp(-t / 0.09) * std::sin(TwoPi * 55 * t) +
                      0.35 * std::exp(-t / 0.03) * white +
                      0.08 * std::exp(-t / 0.4) * std::sin(TwoPi * 170 * t);
        }
        if (events.passerBy) {
            const double t = time - *events.passerBy;
            const double near = 1 / (1 + t * t / 4);
            sample += 0.12 * near * low * 6 +
                      0.02 * near * std::sin(TwoPi * (62 - 8 * std::tanh(t)) * time);
        }
        const auto value =
            static_cast<std::int16_t>(std::lround(std::clamp(sample, -1.0, 1.0) * 32000));
        qToLittleEndian(value, out.data() + 2 * n);
    }
    return out;
}

} // namespace kavro::camsim
