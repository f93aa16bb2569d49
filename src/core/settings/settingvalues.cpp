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

int choiceIndexByValue(std::uint32_t value, int choiceCount)
{
    return value < static_cast<std::uint32_t>(std::max(choiceCount, 0)) ? static_cast<int>(value)
                                                                        : 0;
}

int findAlwaysModeTimeoutIndexByValue(std::uint32_t value)
{
    return indexIn(AlwaysModeTimeoutValues, value, 2);
}

int findPowerVoltageIndexByValue(std::uint32_t value)
{
    return indexIn(PowerVoltageValues, value, 8);
}

std::optional<ChoiceLabel> powerVoltageLabel(int index)
{
    static constexpr std::array<const char*, 3> Keys = {"unuse", "auto", "externpower"};
    if (inTable(Keys, index))
        return ChoiceLabel{QString::fromLatin1(Keys[static_cast<std::size_t>(index)]), true};
    if (!inTable(PowerVoltageValues, index))
        return std::nullopt;
    // Each item also names the 24 V equivalent, twice the 12 V value.
    double volts = PowerVoltageValues[static_cast<std::size_t>(index)] / 1000.0;
    return ChoiceLabel{QStringLiteral("%1v / %2v").arg(volts, 0, 'f', 1).arg(volts * 2, 0, 'f', 1),
                       false};
}

int findPowerTimeIndexByValue(std::uint32_t value)
{
    return indexIn(PowerTimeValues, value, 0);
}

std::uint32_t normalizedCableVoltCorr(std::uint32_t value)
{
    return value == 0 ? 4 : value;
}

int cableLossIndexByValue(std::uint32_t value)
{
    value = normalizedCableVoltCorr(value);
    return value <= CableLossChoiceCount ? static_cast<int>(value) - 1 : 3;
}

std::uint32_t cableLossValueByIndex(int index)
{
    return index >= 0 && index < CableLossChoiceCount ? static_cast<std::uint32_t>(index) + 1 : 4;
}

std::optional<ChoiceLabel> cableLossLabel(int index)
{
    if (index == 0)
        return ChoiceLabel{QStringLiteral("none"), true};
    if (index < 0 || index >= CableLossChoiceCount)
        return std::nullopt;
    return ChoiceLabel{QStringLiteral("0.%1v").arg(index), false};
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

namespace {
// Cell of each stored position 0 to 3.
constexpr std::array<MatrixCell, 4> PipCells = {{{1, 1}, {0, 1}, {0, 0}, {1, 0}}};
} // namespace

MatrixCell pipCellForPosition(std::uint32_t position)
{
    return position < PipCells.size() ? PipCells[position] : PipCells[0];
}

std::uint32_t pipPositionForCell(MatrixCell cell)
{
    return static_cast<std::uint32_t>(indexIn(PipCells, cell, 0));
}

int lcdScreenSaverIndexByValue(std::uint32_t value)
{
    switch (value) {
    case 0:
        return 1;
    case 1:
        return 0;
    case 2:
        return 2;
    default:
        return 1; // unknown: the camera's default protection
    }
}

std::uint32_t lcdScreenSaverValueByIndex(int index)
{
    switch (index) {
    case 0:
        return 1;
    case 2:
        return 2;
    default:
        return 0;
    }
}

int parkingRearOffIndexByValue(std::uint32_t value)
{
    return value != 0 ? 0 : 1;
}

std::uint32_t parkingRearOffValueByIndex(int index)
{
    return index == 1 ? 0 : 1;
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
