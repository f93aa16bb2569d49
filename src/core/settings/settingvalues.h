#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

// What the settings pages can store in the record and how a stored value maps to a control. The
// pages and the command line share these tables, so a value one accepts the other can show.
namespace kavro {

// A list item's text: a localisation key, or a literal shown as it is.
struct ChoiceLabel
{
    QString text;
    bool isKey;
};

struct MatrixCell
{
    int row;
    int column;
    friend bool operator==(const MatrixCell&, const MatrixCell&) = default;
};

// A stored index as a control's selection; values beyond the control fall back to its first
// choice, so saving never writes an index the control does not have.
int choiceIndexByValue(std::uint32_t value, int choiceCount);

// --- Automatic parking-mode waiting time (always_mode_timeout, seconds) ---
inline constexpr std::array<std::uint32_t, 9> AlwaysModeTimeoutValues = {0,   10,  30,  60, 120,
                                                                         180, 300, 420, 600};
// Unknown values show as 30 s.
int findAlwaysModeTimeoutIndexByValue(std::uint32_t value);

// --- Cut-off voltage (sd_mem_always_reserved, mV of a 12 V system) ---
inline constexpr std::array<std::uint32_t, 13> PowerVoltageValues = {
    0, 1, 10000, 11500, 11600, 11700, 11800, 11900, 12000, 12100, 12200, 12300, 12400};
inline constexpr int ExternalPowerVoltageIndex = 2; // choosing it warns about 10 V
// Unknown values show as "12.0v / 24.0v".
int findPowerVoltageIndexByValue(std::uint32_t value);
std::optional<ChoiceLabel> powerVoltageLabel(int index);

// --- Power timer (sd_mem_motion_reserved, hours; 0 = not used) ---
inline constexpr std::array<std::uint32_t, 8> PowerTimeValues = {0, 3, 6, 9, 12, 24, 36, 48};
// Unknown values show as "unuse".
int findPowerTimeIndexByValue(std::uint32_t value);

// --- Voltage lost in the power cable (CableVoltCorr = list index + 1) ---
inline constexpr int CableLossChoiceCount = 7;
// 0 is read as the default 0.3 V, and the Basic page stores 4 in its place once it shows it.
std::uint32_t normalizedCableVoltCorr(std::uint32_t value);
int cableLossIndexByValue(std::uint32_t value);
std::uint32_t cableLossValueByIndex(int index);
std::optional<ChoiceLabel> cableLossLabel(int index);

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

// --- Picture-in-picture position (pip_position) in the 2 x 2 matrix ---
MatrixCell pipCellForPosition(std::uint32_t position);
std::uint32_t pipPositionForCell(MatrixCell cell);

// --- Screen protection (lcd_screensaver): the first choice stores 1, the second 0 ---
inline constexpr int LcdScreenSaverChoiceCount = 3;
int lcdScreenSaverIndexByValue(std::uint32_t value);
std::uint32_t lcdScreenSaverValueByIndex(int index);

// --- Rear camera while parked (parking_rear_off): "unuse" stores 1 (off), "use" 0 ---
int parkingRearOffIndexByValue(std::uint32_t value);
std::uint32_t parkingRearOffValueByIndex(int index);

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
