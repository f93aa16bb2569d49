#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <span>

namespace kavro {

// One row of the camera's time-zone list; time_gmt stores the row's index.
struct TimeZoneEntry
{
    int offset; // hours x 100 + minutes, with the sign of the offset
    const char* label;
};

inline constexpr int TimeZoneCount = 34;
std::span<const TimeZoneEntry> timeZoneTable();
std::optional<QString> timeZoneLabel(std::int32_t index);

// The row of an offset from GMT in seconds, or -1 when the camera does not know it
// (+14:00, +12:45, ...).
std::int32_t findTimeZoneIndexByOffset(int offsetSeconds);

// The row of this computer's zone at this moment, daylight saving included, or -1.
std::int32_t findSystemTimeZoneIndex();

} // namespace kavro
