#include "kvrgpsdata.h"

namespace kavro {

namespace {
bool inRange(int index)
{
    return index >= 0 && index < KVRGpsData::ChannelCount;
}
} // namespace

KVRGpsData::Channel KVRGpsData::SVonChannelAtIndex(int index) const
{
    return inRange(index) ? SVonChannel[index] : Channel{};
}

void KVRGpsData::setSVonChannel(Channel channel, int index)
{
    if (inRange(index))
        SVonChannel[index] = channel;
}

void KVRGpsData::setSVonChannelWithFirst(std::uint8_t first, std::uint8_t second, int index)
{
    setSVonChannel({first, second}, index);
}

void KVRGpsData::setSVonChannelWithFirst(std::uint8_t first, int index)
{
    if (inRange(index))
        SVonChannel[index].first = first;
}

void KVRGpsData::setSVonChannelWithSecond(std::uint8_t second, int index)
{
    if (inRange(index))
        SVonChannel[index].second = second;
}

std::uint8_t KVRGpsData::SatelliteUsedAtIndex(int index) const
{
    return inRange(index) ? SatelliteUsed[index] : 0;
}

void KVRGpsData::setSatelliteUsed(std::uint8_t id, int index)
{
    if (inRange(index))
        SatelliteUsed[index] = id;
}

} // namespace kavro
