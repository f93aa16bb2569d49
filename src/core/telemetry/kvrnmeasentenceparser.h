#pragma once

#include "kvrgpsdata.h"

#include <string_view>
#include <vector>

namespace kavro {

// Reads NMEA 0183 sentences one at a time into a running fix. Position and hemisphere come from
// GGA, speed, course and time from RMC, HDOP from GGA or GNS, and the used-satellite count from
// GGA, GNS or a GNGSA pair (GPS then GLONASS).
//
// A sentence with fewer fields than its handler reads is taken with the missing fields empty, so
// the usual empty-field rules apply: position, hemisphere and HDOP keep their values, speed,
// course and counts read 0.
class KVRNMEASentenceParser
{
public:
    using Fields = std::vector<std::string_view>;

    // One sentence without its line end; true when it was recognised and handled.
    bool parse(std::string_view sentence);

    bool parseGPRMC(const Fields& fields);
    bool parseGPGGA(const Fields& fields);
    bool parseGNGSA(const Fields& fields);
    bool parseGNGNS(const Fields& fields);
    // Satellites in view. Not reached from parse(); its channel counter and last message number
    // are shared by every parser in the process.
    bool parseGPGSV(const Fields& fields);

    void clear() { m_Current.clear(); }
    const KVRGpsData& current() const { return m_Current; }

private:
    KVRGpsData m_Current;
    // Reused for every sentence: a card holds hundreds of thousands of them, and a fresh list
    // for each was most of the cost of reading one.
    Fields m_fields;
};

} // namespace kavro
