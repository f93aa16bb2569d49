#pragma once

#include <cstddef>
#include <cstdint>

// Records of the camera's drive-record file "DrvInfo/kavro_000.drv": a 12-byte header followed by
// 40-byte records without padding. Stored little-endian at natural alignment, read whole.

// NOLINTBEGIN(bugprone-reserved-identifier): the camera's own record names
struct _DRIVE_INFO_HEADER_T
{
    std::uint32_t count = 0;       // records that follow, as the camera claims
    std::uint8_t reserved[8] = {}; // not used by the viewer
};
static_assert(sizeof(_DRIVE_INFO_HEADER_T) == 12);

struct _DRIVE_INFO_T
{
    std::uint16_t seq = 0;
    std::uint8_t yoil = 0;  // day of the week, 0 = Sunday ... 6 = Saturday
    std::uint8_t value = 0; // 1: valid fix ("A"), anything else: void ("V")
    std::uint8_t year = 0;  // years since 1900
    std::uint8_t month = 0; // 1-12
    std::uint8_t day = 0;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint16_t lat = 0;     // NMEA whole part, degrees x 100 + minutes
    std::uint16_t latFrac = 0; // four decimal digits of the minutes
    std::uint16_t lon = 0;
    std::uint16_t lonFrac = 0;
    std::uint16_t curSpeed = 0;
    std::uint32_t drivingDistance = 0; // tenths
    std::uint32_t reserved1 = 0;
    std::uint16_t maxSpeed = 0;
    std::uint16_t reserved2 = 0;
    std::int16_t xAxis = 0; // 1/256 units
    std::int16_t yAxis = 0;
    std::int16_t zAxis = 0;
    std::int16_t battery = 0; // tenths of a volt
};
static_assert(sizeof(_DRIVE_INFO_T) == 40);
static_assert(offsetof(_DRIVE_INFO_T, yoil) == 2);
static_assert(offsetof(_DRIVE_INFO_T, year) == 4);
static_assert(offsetof(_DRIVE_INFO_T, second) == 9);
static_assert(offsetof(_DRIVE_INFO_T, lat) == 10);
static_assert(offsetof(_DRIVE_INFO_T, lonFrac) == 16);
static_assert(offsetof(_DRIVE_INFO_T, curSpeed) == 18);
static_assert(offsetof(_DRIVE_INFO_T, drivingDistance) == 20);
static_assert(offsetof(_DRIVE_INFO_T, maxSpeed) == 28);
static_assert(offsetof(_DRIVE_INFO_T, xAxis) == 32);
static_assert(offsetof(_DRIVE_INFO_T, battery) == 38);
// NOLINTEND(bugprone-reserved-identifier)

namespace kavro::drv {

constexpr std::size_t HeaderSize = sizeof(_DRIVE_INFO_HEADER_T);
constexpr std::size_t RecordSize = sizeof(_DRIVE_INFO_T);
// Where the camera keeps the file, relative to the card's root.
constexpr char CardFilePath[] = "DrvInfo/kavro_000.drv";

} // namespace kavro::drv
