#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Records and fixed offsets of the camera's AVI recordings. The records are stored little-endian
// at natural alignment and are read and written whole.

static_assert(std::endian::native == std::endian::little,
              "the records are read and written as they lie in memory");

// NOLINTBEGIN(bugprone-reserved-identifier): the camera's own record names
struct _SYSTEMTIME
{
    std::uint16_t wYear = 0;
    std::uint16_t wMonth = 0;
    std::uint16_t wDayOfWeek = 0;
    std::uint16_t wDay = 0;
    std::uint16_t wHour = 0;
    std::uint16_t wMinute = 0;
    std::uint16_t wSecond = 0;
    std::uint16_t wMilliseconds = 0;
};
static_assert(sizeof(_SYSTEMTIME) == 16);

struct _AVI_GPS_DATA_T
{
    std::int32_t header;      // 205 for a GPS record
    std::uint32_t nTimestamp; // camera clock, ms; non-zero when valid
    std::uint32_t nLen;       // bytes of NMEA text in RawData
    std::uint32_t sig;
    double fLatitude;  // NMEA form ddmm.mmmm
    double fLongitude; // NMEA form dddmm.mmmm
    std::uint32_t fSpeed;
    std::uint32_t distance;
    char NS;
    char EW;
    char KM; // '9': km/h, anything else: mi/h
    char dummy;
    char RawData[508];
};
static_assert(sizeof(_AVI_GPS_DATA_T) == 552);
static_assert(offsetof(_AVI_GPS_DATA_T, fLatitude) == 16);
static_assert(offsetof(_AVI_GPS_DATA_T, RawData) == 44);

struct _AVI_GSENSOR_DATA_T
{
    std::int32_t header;     // 171 for a G-sensor record
    std::uint32_t timestamp; // camera clock, ms; non-zero when valid
    std::int32_t xAxis;      // 1/256 g
    std::int32_t yAxis;
    std::int32_t zAxis;
    std::int32_t nTemprature;
};
static_assert(sizeof(_AVI_GSENSOR_DATA_T) == 24);
// NOLINTEND(bugprone-reserved-identifier)

namespace kavro::avi {

constexpr std::int32_t GpsRecordTag = 205;
constexpr std::int32_t GSensorRecordTag = 171;
constexpr std::size_t GpsRawDataSize = 508;

// The camera's header always ends where the stream-data list begins.
constexpr std::uint32_t MoviListOffset = 14132;     // "LIST"
constexpr std::uint32_t MoviListSizeOffset = 14136; // size of the list (L)
constexpr std::uint32_t MoviTypeOffset = 14140;     // "movi"; index offsets count from here
constexpr std::uint32_t IndexStartOffset = MoviTypeOffset + 8; // plus L: first idx1 entry
constexpr std::uint32_t ChunkDataOffset = MoviTypeOffset + 8;  // plus an entry's offset
constexpr std::uint32_t IndexEntrySize = 16;
// "RIFF" size "AVI " "LIST" size "hdrl" "avih" size, then the main header with its frame count.
constexpr std::uint32_t MainHeaderIdOffset = 24;
constexpr std::uint32_t MicroSecPerFrameOffset = 32;
constexpr std::uint32_t TotalFramesOffset = 48;
constexpr char TelemetryChunkId[4] = {'0', '2', 's', 'b'};
// An "02sb" chunk larger than this holds a GPS record; otherwise a G-sensor record.
constexpr std::uint32_t GSensorChunkMaxSize = 32;

// A little-endian word of the file, which on this byte order is the word as it lies.
inline std::uint32_t u32At(const char* bytes)
{
    std::uint32_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace kavro::avi
