#pragma once

#include <array>
#include <cstdint>
#include <optional>

// The rules of the settings pages that go beyond one choice per field: impact thresholds and their
// presets, bit masks, the voice-language matrix and the card-share slider.
namespace kavro {

struct MatrixCell
{
    int row;
    int column;
    friend bool operator==(const MatrixCell&, const MatrixCell&) = default;
};

inline constexpr int ExternalPowerVoltageIndex = 2; // choosing it warns about 10 V
// 0 is read as the default 0.3 V, and the Basic page stores 4 in its place once it shows it.
std::uint32_t normalizedCableVoltCorr(std::uint32_t value);

// --- Impact thresholds, hundredths of g ---
struct GsensorThreshold
{
    std::int32_t x;
    std::int32_t y;
    std::int32_t z;
};
inline constexpr std::array<GsensorThreshold, 5> DrivingThresholdPresets = {
    {{70, 65, 65}, {60, 55, 55}, {50, 45, 45}, {40, 35, 35}, {30, 25, 25}}};
inline constexpr std::array<std::int32_t, 5> ParkingThresholdPresets = {25, 20, 15, 12, 8};
inline constexpr int CustomThresholdIndex = 5;
// Typed thresholds are accepted from 0.05 to 1.5 g; an empty field stores 0.
inline constexpr std::int32_t MinThresholdHundredths = 5;
inline constexpr std::int32_t MaxThresholdHundredths = 150;
bool isStorableThreshold(std::int64_t hundredths);
std::int32_t thresholdHundredths(double g);

int findDrivingGsensorThresholdIndexByX(std::int32_t x, std::int32_t y, std::int32_t z);
int findParkingGsensorThresholdIndexByX(std::int32_t x, std::int32_t y, std::int32_t z);
std::optional<GsensorThreshold> drivingThresholdPreset(int index);
std::optional<GsensorThreshold> parkingThresholdPreset(int index);

// --- External rear camera (external_rear_camera bits; the others are kept) ---
inline constexpr int RearCameraUseBit = 0;
inline constexpr int RearCameraLedOnEventBit = 1;
inline constexpr int RearCameraLedOnMotionBit = 2;
inline constexpr std::uint32_t RearCameraBitsMask = 0x7;
std::uint32_t GetRearCameraSetting(std::uint32_t value, int bit);
// The value with the bit set when nValue is 1, cleared for anything else.
std::uint32_t SetRearCameraSetting(std::uint32_t value, int bit, std::uint32_t nValue);

// --- Motion blocks (motionBlock, motionBlock_Rear): a set bit excludes the block ---
// Bit of each check box 01 to 12: the first row of boxes is the high nibble.
inline constexpr std::array<int, 12> MotionBlockBits = {8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3};
inline constexpr std::uint32_t MotionBlockMask = 0xFFF;
std::array<bool, 12> watchedMotionBlocks(std::uint32_t mask);
std::uint32_t motionBlockMaskFromWatched(const std::array<bool, 12>& watched);

// --- Voice-guidance language (Brightness1) ---
// clang-format off
inline constexpr std::array<const char*, 20> VoiceLanguageKeys = {
    "Korean", "English", "French", "Spanish.Europe", "Arabic",
    "Chinese", "Russian", "Japanese", "Thai", "BahasaIndonesia",
    "Vietnamese", "Mongolian", "Spanish.SouthAmerica", "German", "Turkish",
    "Italian", "Hindi", "Cantonese", "Czech", "Portuguese"};
// clang-format on
// Malaysia has its own radio button beside the matrix.
inline constexpr std::uint32_t MalaysiaLanguage = 20;
// Cells are numbered row by row; none for Malaysia or a value beyond the matrix.
std::optional<MatrixCell> voiceLanguageCell(std::uint32_t value, int columns);
std::optional<std::uint32_t> voiceLanguageByCell(MatrixCell cell, int columns);

// --- Card share (sd_mem_always_ratio / sd_mem_motion_ratio, percent) ---
// The slider moves in tenths of the card; the two shares always add up to 100.
struct CardShare
{
    std::uint32_t always;
    std::uint32_t motion;
};
inline constexpr int CardShareSliderMax = 10;
inline constexpr std::uint32_t CardShareStep = 10;
CardShare cardShareForSliderPosition(int position);
int sliderPositionForAlwaysRatio(std::uint32_t alwaysRatio);

} // namespace kavro
