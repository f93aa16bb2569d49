#include "settingvalues.h"

#include <algorithm>
#include <cmath>

namespace kavro {

namespace {

template <typename Table, typename Value> int indexIn(const Table& table, Value value, int fallback)
{
    auto it = std::find(table.begin(), table.end(), value);
    return it == table.end() ? fallback : static_cast<int>(it - table.begin());
}

template <typename Table> bool inTable(const Table& table, int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < table.size();
}

bool validBit(int bit)
{
    return bit >= 0 && bit < 32;
}

} // namespace

std::uint32_t normalizedCableVoltCorr(std::uint32_t value)
{
    return value == 0 ? 4 : value;
}

bool isStorableThreshold(std::int64_t hundredths)
{
    return hundredths == 0 ||
           (hundredths >= MinThresholdHundredths && hundredths <= MaxThresholdHundredths);
}

std::int32_t thresholdHundredths(double g)
{
    double hundredths = std::round(g * 100.0);
    // Validation keeps typed values within 5..150; the clamp only guards the conversion.
    return static_cast<std::int32_t>(std::clamp(hundredths, -1e9, 1e9));
}

int findDrivingGsensorThresholdIndexByX(std::int32_t x, std::int32_t y, std::int32_t z)
{
    for (std::size_t i = 0; i < DrivingThresholdPresets.size(); ++i) {
        const GsensorThreshold& preset = DrivingThresholdPresets[i];
        if (preset.x == x && preset.y == y && preset.z == z)
            return static_cast<int>(i);
    }
    return CustomThresholdIndex;
}

int findParkingGsensorThresholdIndexByX(std::int32_t x, std::int32_t y, std::int32_t z)
{
    if (x != y || x != z)
        return CustomThresholdIndex;
    return indexIn(ParkingThresholdPresets, x, CustomThresholdIndex);
}

std::optional<GsensorThreshold> drivingThresholdPreset(int index)
{
    if (!inTable(DrivingThresholdPresets, index))
        return std::nullopt;
    return DrivingThresholdPresets[static_cast<std::size_t>(index)];
}

std::optional<GsensorThreshold> parkingThresholdPreset(int index)
{
    if (!inTable(ParkingThresholdPresets, index))
        return std::nullopt;
    std::int32_t value = ParkingThresholdPresets[static_cast<std::size_t>(index)];
    return GsensorThreshold{value, value, value};
}

std::uint32_t GetRearCameraSetting(std::uint32_t value, int bit)
{
    return validBit(bit) ? (value >> bit) & 1u : 0;
}

std::uint32_t SetRearCameraSetting(std::uint32_t value, int bit, std::uint32_t nValue)
{
    if (!validBit(bit))
        return value;
    return nValue == 1 ? value | (1u << bit) : value & ~(1u << bit);
}

std::array<bool, 12> watchedMotionBlocks(std::uint32_t mask)
{
    std::array<bool, 12> watched{};
    for (std::size_t box = 0; box < MotionBlockBits.size(); ++box)
        watched[box] = (mask & (1u << MotionBlockBits[box])) == 0;
    return watched;
}

std::uint32_t motionBlockMaskFromWatched(const std::array<bool, 12>& watched)
{
    std::uint32_t mask = 0;
    for (std::size_t box = 0; box < MotionBlockBits.size(); ++box) {
        if (!watched[box])
            mask |= 1u << MotionBlockBits[box];
    }
    return mask;
}

std::optional<MatrixCell> voiceLanguageCell(std::uint32_t value, int columns)
{
    if (columns <= 0 || value >= VoiceLanguageKeys.size())
        return std::nullopt;
    int language = static_cast<int>(value);
    return MatrixCell{language / columns, language % columns};
}

std::optional<std::uint32_t> voiceLanguageByCell(MatrixCell cell, int columns)
{
    if (columns <= 0 || cell.row < 0 || cell.column < 0 || cell.column >= columns)
        return std::nullopt;
    long long language = static_cast<long long>(cell.row) * columns + cell.column;
    if (language >= static_cast<long long>(VoiceLanguageKeys.size()))
        return std::nullopt;
    return static_cast<std::uint32_t>(language);
}

CardShare cardShareForSliderPosition(int position)
{
    position = std::clamp(position, 0, CardShareSliderMax);
    std::uint32_t always = static_cast<std::uint32_t>(position) * CardShareStep;
    return {always, 100 - always};
}

int sliderPositionForAlwaysRatio(std::uint32_t alwaysRatio)
{
    return static_cast<int>(
        std::min<std::uint32_t>(alwaysRatio / CardShareStep, CardShareSliderMax));
}

} // namespace kavro
