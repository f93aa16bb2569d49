#pragma once

#include "aviformat.h"

#include <array>
#include <cstdint>
#include <utility>

namespace kavro {

// The running GPS fix that NMEA parsing accumulates. Every field keeps its value until a later
// sentence replaces it; positions stay in the receiver's NMEA form (ddmm.mmmm, no sign) with the
// hemisphere in NS/EW. A plain value: copies are the snapshots the telemetry store keeps.
class KVRGpsData
{
public:
    static constexpr int ChannelCount = 12;
    using Channel = std::pair<std::uint8_t, std::uint8_t>; // satellite id, signal-to-noise

    KVRGpsData() = default;

    void clear() { *this = KVRGpsData(); }
    KVRGpsData duplicate() const { return *this; }
    void updateFromObject(const KVRGpsData& other) { *this = other; }

    // Element access, index 0 to 11; reads outside give an empty slot, writes outside are ignored.
    Channel SVonChannelAtIndex(int index) const;
    void setSVonChannel(Channel channel, int index);
    void setSVonChannelWithFirst(std::uint8_t first, std::uint8_t second, int index);
    void setSVonChannelWithFirst(std::uint8_t first, int index);
    void setSVonChannelWithSecond(std::uint8_t second, int index);
    std::uint8_t SatelliteUsedAtIndex(int index) const;
    void setSatelliteUsed(std::uint8_t id, int index);

    std::array<Channel, ChannelCount> SVonChannel{};
    std::array<std::uint8_t, ChannelCount> SatelliteUsed{};
    char NS = 'N';
    char EW = 'E';
    std::uint8_t Enable_GNGNS = 0;
    std::uint8_t Enable_GNGSA = 0;
    std::uint8_t Cnt_GNGSA = 0; // constellation of the next GSA: 0 GPS, 1 GLONASS
    std::uint32_t SatelliteCount = 0;
    std::uint32_t SatelliteUsedCount = 0;
    std::uint32_t SatelliteUsedCount_GPS = 0;
    std::uint32_t SatelliteUsedCount_GLONASS = 0;
    double PDOP = 0;
    double HDOP = 0;
    double VDOP = 0;
    double Latitude = 0;
    double Longitude = 0;
    double SpeedOverGround = 0;  // knots, as written
    double CourseOverGround = 0; // degrees
    _SYSTEMTIME Now;             // UTC of the last RMC with date and time
};

} // namespace kavro
