// NMEA text as it arrives in a GPS record: split into sentences, each read into the running fix.
#include "telemetry/kvrblackboxdata.h"
#include "telemetry/telemetryexport.h"

#include <cstdint>
#include <vector>

using namespace kavro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The reader writes its separators into the text, so it gets a copy of its own; no
    // terminating zero, as in a record whose text fills it.
    std::vector<char> text(data, data + size);
    KVRBlackBoxData store;
    store.ParseNMEA(text.data(), static_cast<std::uint32_t>(text.size()));
    telemetryJson(store); // every fix as `kavro telemetry` prints it
    return 0;
}
