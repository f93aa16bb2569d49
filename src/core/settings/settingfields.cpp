#include "settingfields.h"

#include "settingvalues.h"
#include "timezonetable.h"

#include <algorithm>
#include <array>

namespace kavro {

namespace {

using L = ChoiceLabel;

constexpr L key(const char* text)
{
    return {L::Key, text};
}
constexpr L literal(const char* text)
{
    return {L::Literal, text};
}
constexpr L keyNumber(const char* format, int number)
{
    return {L::KeyWithNumber, format, "", number};
}
constexpr L literalKey(const char* format, const char* word)
{
    return {L::LiteralWithKey, format, word};
}
constexpr L none()
{
    return {};
}

// --- Choices shared by several fields ---
constexpr SettingChoice UnuseUse[] = {{0, key("unuse")}, {1, key("use")}};
constexpr SettingChoice OffOn[] = {{0, key("off")}, {1, key("on")}};
// A check box: index 0 unticked, 1 ticked.
constexpr SettingChoice Ticked[] = {{0, none()}, {1, none()}};
// Security LEDs store 1 for "off": ticking the box stores 0.
constexpr SettingChoice LedTicked[] = {{1, none()}, {0, none()}};
constexpr SettingChoice Quality[] = {{0, key("setting.video.quality_normal")},
                                     {1, key("setting.video.quality_high")},
                                     {2, key("setting.video.quality_highest")}};
constexpr SettingChoice Brightness[] = {{0, literal("1")},
                                        {1, literal("2")},
                                        {2, literalKey("3(%1)", "default")},
                                        {3, literal("4")},
                                        {4, literal("5")}};
constexpr SettingChoice MotionSensitivity[] = {
    {0, key("unuse")}, {1, literalKey("1(%1)", "insensitive")},
    {2, literal("2")}, {3, literal("3")},
    {4, literal("4")}, {5, literalKey("5(%1)", "sensitive")}};
constexpr SettingChoice Volume[] = {{0, key("unuse")},
                                    {1, literalKey("1(%1)", "setting.aux.volume_low")},
                                    {2, literal("2")},
                                    {3, literalKey("3(%1)", "setting.aux.volume_up")}};

// --- Video ---
constexpr SettingChoice RearFps[] = {{0, key("30fps")}, {1, key("15fps")}};
constexpr SettingChoice FrontTinting[] = {{0, key("cpl_unuse")},
                                          {1, key("cpl_use")},
                                          {2, key("light_tinting")},
                                          {3, key("dark_tinting")}};
constexpr SettingChoice RearTinting[] = {
    {0, key("unuse")}, {1, key("light_tinting")}, {2, key("dark_tinting")}};

// --- Basic ---
constexpr SettingChoice AlwaysModeTimeout[] = {{0, key("unuse")},
                                               {10, keyNumber("nSecond_fmt", 10)},
                                               {30, keyNumber("nSecond_fmt", 30)},
                                               {60, keyNumber("nMinute_fmt", 1)},
                                               {120, keyNumber("nMinute_fmt", 2)},
                                               {180, keyNumber("nMinute_fmt", 3)},
                                               {300, keyNumber("nMinute_fmt", 5)},
                                               {420, keyNumber("nMinute_fmt", 7)},
                                               {600, keyNumber("nMinute_fmt", 10)}};
// Each voltage also names its 24 V equivalent.
constexpr SettingChoice PowerVoltage[] = {{0, key("unuse")},
                                          {1, key("auto")},
                                          {10000, key("externpower")},
                                          {11500, literal("11.5v / 23.0v")},
                                          {11600, literal("11.6v / 23.2v")},
                                          {11700, literal("11.7v / 23.4v")},
                                          {11800, literal("11.8v / 23.6v")},
                                          {11900, literal("11.9v / 23.8v")},
                                          {12000, literal("12.0v / 24.0v")},
                                          {12100, literal("12.1v / 24.2v")},
                                          {12200, literal("12.2v / 24.4v")},
                                          {12300, literal("12.3v / 24.6v")},
                                          {12400, literal("12.4v / 24.8v")}};
constexpr SettingChoice PowerTime[] = {{0, key("unuse")},
                                       {3, keyNumber("nHour_fmt", 3)},
                                       {6, keyNumber("nHour_fmt", 6)},
                                       {9, keyNumber("nHour_fmt", 9)},
                                       {12, keyNumber("nHour_fmt", 12)},
                                       {24, keyNumber("nHour_fmt", 24)},
                                       {36, keyNumber("nHour_fmt", 36)},
                                       {48, keyNumber("nHour_fmt", 48)}};
constexpr SettingChoice CableLoss[] = {
    {1, key("none")},     {2, literal("0.1v")}, {3, literal("0.2v")}, {4, literal("0.3v")},
    {5, literal("0.4v")}, {6, literal("0.5v")}, {7, literal("0.6v")}};

// --- GPS ---
constexpr SettingChoice WeekDay[] = {{0, key("none")}, {1, key("mon")}, {2, key("tue")},
                                     {3, key("wed")},  {4, key("thu")}, {5, key("fri")},
                                     {6, key("sat")},  {7, key("sun")}};
constexpr SettingChoice SpeedUnit[] = {{0, literal("Km/h")}, {1, literal("Mi/h")}};
constexpr std::array<SettingChoice, TimeZoneCount> makeTimeZones()
{
    // The labels are those of the time-zone table, kept here in the same order.
    constexpr const char* labels[TimeZoneCount] = {
        "-12:00", "-11:00", "-10:00", "-09:00", "-08:00", "-07:00", "-06:00", "-05:00", "-04:30",
        "-04:00", "-03:30", "-03:00", "-02:00", "-01:00", "00:00",  "+01:00", "+02:00", "+03:00",
        "+03:30", "+04:00", "+04:30", "+05:00", "+05:30", "+05:45", "+06:00", "+06:30", "+07:00",
        "+08:00", "+09:00", "+09:30", "+10:00", "+11:00", "+12:00", "+13:00"};
    std::array<SettingChoice, TimeZoneCount> zones{};
    for (int i = 0; i < TimeZoneCount; ++i)
        zones[static_cast<std::size_t>(i)] = {i, literal(labels[i])};
    return zones;
}
constexpr auto TimeZones = makeTimeZones();
constexpr SettingChoice SaveDuration[] = {{0, key("none")},
                                          {1, keyNumber("nSecond_fmt", 1)},
                                          {2, keyNumber("nSecond_fmt", 3)},
                                          {3, keyNumber("nSecond_fmt", 5)},
                                          {4, keyNumber("nSecond_fmt", 10)},
                                          {5, keyNumber("nSecond_fmt", 15)},
                                          {6, keyNumber("nSecond_fmt", 30)},
                                          {7, keyNumber("nSecond_fmt", 60)}};

// --- Aux ---
constexpr SettingChoice NightExposure[] = {{0, key("setting.aux.low")},
                                           {1, key("setting.aux.medium_sedan")},
                                           {2, key("setting.aux.high_suv")}};
constexpr SettingChoice LcdAutoOff[] = {{0, key("none")},
                                        {1, keyNumber("nSecond_fmt", 15)},
                                        {2, keyNumber("nSecond_fmt", 30)},
                                        {3, keyNumber("nSecond_fmt", 60)}};
constexpr SettingChoice MainsFrequency[] = {{0, literal("60Hz(30fps)")},
                                            {1, literal("50Hz(25fps)")}};
constexpr SettingChoice LcdBrightness[] = {{0, literal("1")}, {1, literal("2")}, {2, literal("3")}};
// The rear camera's "unuse" turns it off while parked, which the camera stores as 1.
constexpr SettingChoice ParkingRearOff[] = {{1, key("unuse")}, {0, key("use")}};
// The first choice stores 1 and the second 0: the camera's default protection is 0.
constexpr SettingChoice ScreenSaver[] = {
    {1, key("unuse")}, {0, key("default")}, {2, key("customize")}};
constexpr SettingChoice RecordingLength[] = {{0, key("5min")}, {1, key("3min")}};
// The 2 x 2 matrix row by row: top left stores 2, top right 1, bottom left 3, bottom right 0.
constexpr SettingChoice PipPosition[] = {{2, key("setting.aux.pip_top_left")},
                                         {1, key("setting.aux.pip_top_right")},
                                         {3, key("setting.aux.pip_bottom_left")},
                                         {0, key("setting.aux.pip_bottom_right")}};
constexpr SettingChoice AutoFormatAlarm[] = {{0, key("setting.aux.auto_format_notuse")},
                                             {1, key("setting.aux.auto_format_4week")},
                                             {2, key("setting.aux.auto_format_8week")},
                                             {3, key("setting.aux.auto_format_16week")},
                                             {4, key("setting.aux.auto_format_32week")}};

// --- Audio: the twenty matrix cells, then the Malaysia button ---
constexpr std::array<SettingChoice, 21> makeLanguages()
{
    std::array<SettingChoice, 21> languages{};
    for (std::size_t i = 0; i < VoiceLanguageKeys.size(); ++i)
        languages[i] = {static_cast<std::int64_t>(i), key(VoiceLanguageKeys[i])};
    languages[MalaysiaLanguage] = {MalaysiaLanguage, literal("Malaysia")};
    return languages;
}
constexpr auto Languages = makeLanguages();

constexpr SettingField choice(std::string_view name, SettingPage page,
                              std::span<const SettingChoice> choices, int fallback = 0)
{
    return {name, page, SettingKind::Choice, choices, fallback};
}
constexpr SettingField special(std::string_view name, SettingPage page, SettingKind kind)
{
    return {name, page, kind};
}

using P = SettingPage;
using K = SettingKind;

const SettingField Fields[] = {
    // Video
    choice("vid_enc_bitrate", P::Video, Quality),
    choice("vid_brightness", P::Video, Brightness),
    choice("vid_enc_bitrate_R", P::Video, Quality),
    choice("vid_brightness_R", P::Video, Brightness),
    choice("flip_video", P::Video, UnuseUse),
    choice("rear_fps", P::Video, RearFps),
    choice("front_cpl_use", P::Video, FrontTinting),
    choice("rear_cpl_use", P::Video, RearTinting),
    // Basic
    choice("always_mode_timeout", P::Basic, AlwaysModeTimeout, 2), // unknown: 30 s
    choice("g_sensor_enable", P::Basic, Ticked, 1),                // ticked unless 0
    special("gsen_x_threshold", P::Basic, K::Threshold),
    special("gsen_y_threshold", P::Basic, K::Threshold),
    special("gsen_z_threshold", P::Basic, K::Threshold),
    special("parkmode_x_threshold", P::Basic, K::Threshold),
    special("parkmode_y_threshold", P::Basic, K::Threshold),
    special("parkmode_z_threshold", P::Basic, K::Threshold),
    choice("ledoff", P::Basic, LedTicked),
    choice("ledoff_rear", P::Basic, LedTicked),
    special("szPlateNumber", P::Basic, K::PlateNumber),
    choice("sd_mem_always_reserved", P::Basic, PowerVoltage, 8), // unknown: 12.0 V
    choice("sd_mem_motion_reserved", P::Basic, PowerTime),
    choice("sd_mem_event_reserved", P::Basic, Ticked),
    choice("CableVoltCorr", P::Basic, CableLoss, 3), // 0 and unknown: 0.3 V
    {"external_rear_camera", P::Basic, K::KeptBits, {}, 0, RearCameraBitsMask},
    // GPS
    choice("nodriving_day", P::Gps, WeekDay),
    choice("speed_disp_unit", P::Gps, SpeedUnit),
    choice("time_gmt", P::Gps, TimeZones, -1),
    choice("summer_time", P::Gps, Ticked, 1),
    choice("osd_speed_flag", P::Gps, OffOn),
    choice("SaveDuration", P::Gps, SaveDuration),
    choice("NightTime", P::Gps, OffOn),
    // Aux
    special("sd_mem_always_ratio", P::Aux, K::CardShare),
    special("sd_mem_motion_ratio", P::Aux, K::CardShare),
    choice("DayTime", P::Aux, NightExposure),
    choice("lcd_autopoweroff", P::Aux, LcdAutoOff),
    choice("Gamma", P::Aux, MainsFrequency),
    choice("lcd_brightness", P::Aux, LcdBrightness),
    choice("lcd_brightness_night", P::Aux, UnuseUse),
    choice("parking_rear_off", P::Aux, ParkingRearOff), // any non-zero value: rear off
    choice("lcd_screensaver", P::Aux, ScreenSaver, 1),  // unknown: the default protection
    choice("parking_alarm", P::Aux, UnuseUse),
    choice("always_mode_recording_time", P::Aux, RecordingLength),
    choice("pip_position", P::Aux, PipPosition, 3), // unknown: bottom right, stored as 0
    choice("autoFormatAlarm", P::Aux, AutoFormatAlarm),
    // Motion: the front camera is the 720p value, the rear the 1080p one
    choice("motion720pCValue", P::Motion, MotionSensitivity),
    choice("motion1080pCValue", P::Motion, MotionSensitivity),
    special("motionBlock", P::Motion, K::MotionBlocks),
    special("motionBlock_Rear", P::Motion, K::MotionBlocks),
    // Audio
    choice("aud_input_vol", P::Audio, Volume),
    choice("aud_output_vol", P::Audio, Volume),
    choice("alarm_ontime_flag", P::Audio, Ticked, 1),
    choice("Brightness1", P::Audio, Languages, -1), // beyond Malaysia: nothing selected
};

} // namespace

std::span<const SettingField> settingFields()
{
    return Fields;
}

const SettingField* findSettingField(std::string_view name)
{
    auto it = std::find_if(std::begin(Fields), std::end(Fields),
                           [name](const SettingField& field) { return field.name == name; });
    return it == std::end(Fields) ? nullptr : &*it;
}

int choiceIndexForValue(const SettingField& field, std::int64_t value)
{
    auto it = std::find_if(field.choices.begin(), field.choices.end(),
                           [value](const SettingChoice& choice) { return choice.value == value; });
    return it == field.choices.end() ? field.fallbackIndex
                                     : static_cast<int>(it - field.choices.begin());
}

std::optional<std::int64_t> choiceValueAt(const SettingField& field, int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= field.choices.size())
        return std::nullopt;
    return field.choices[static_cast<std::size_t>(index)].value;
}

namespace {
const FileDataField& recordField(const SettingField& field)
{
    // Every name in the table is a field of the record; the settings test checks it.
    return *findFileDataField(field.name);
}
} // namespace

int choiceIndexInRecord(const _FILEDATA& record, const SettingField& field)
{
    return choiceIndexForValue(field, fieldInteger(record, recordField(field)));
}

void storeChoiceIndex(_FILEDATA& record, const SettingField& field, int index)
{
    if (std::optional<std::int64_t> value = choiceValueAt(field, index))
        setFieldInteger(record, recordField(field), *value);
}

bool isStorableValue(const _FILEDATA& record, const SettingField& field, std::int64_t value)
{
    switch (field.kind) {
    case SettingKind::Choice:
        return std::any_of(field.choices.begin(), field.choices.end(),
                           [value](const SettingChoice& choice) { return choice.value == value; });
    case SettingKind::Threshold:
        return isStorableThreshold(value);
    case SettingKind::CardShare:
        return value % CardShareStep == 0 && value >= 20 && value <= 80;
    case SettingKind::MotionBlocks:
        return value >= 0 && value <= MotionBlockMask;
    case SettingKind::KeptBits: {
        if (value < 0 || value > 0xFFFFFFFFLL)
            return false;
        std::int64_t stored = fieldInteger(record, recordField(field));
        return (value & ~std::int64_t(field.editedBits)) ==
               (stored & ~std::int64_t(field.editedBits));
    }
    case SettingKind::PlateNumber:
        return false; // text, not a number
    }
    return false;
}

} // namespace kavro
