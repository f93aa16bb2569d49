#include "kvrnmeasentenceparser.h"

#include "common/utf8text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <string>

namespace kavro {

namespace {

std::string_view field(const KVRNMEASentenceParser::Fields& fields, std::size_t index)
{
    return index < fields.size() ? fields[index] : std::string_view();
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t skipSpace(std::string_view text, std::size_t at = 0)
{
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])))
        ++at;
    return at;
}

// The leading decimal number of a field, read in single precision: white space, an optional
// sign, digits and a decimal part. Anything else, including a number too large for a float,
// reads 0.
double leadingFloat(std::string_view text)
{
    std::size_t at = skipSpace(text);
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        negative = text[at++] == '-';
    const std::size_t start = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    if (at < text.size() && text[at] == '.') {
        ++at;
        while (at < text.size() && isDigit(text[at]))
            ++at;
    }
    float value = 0;
    const auto result =
        std::from_chars(text.data() + start, text.data() + at, value, std::chars_format::fixed);
    if (result.ec != std::errc())
        return 0;
    return negative ? -value : value;
}

// The leading whole number of a field, as C's number reading gives it, saturated at the limits
// of a 32-bit int. maxDigits bounds the characters read, sign included, like a scan width.
int leadingInt(std::string_view text, bool* scanned = nullptr,
               std::size_t maxChars = std::numeric_limits<std::size_t>::max(),
               std::size_t* consumed = nullptr)
{
    std::size_t at = skipSpace(text);
    const std::size_t limit = at + std::min(maxChars, text.size() - at);
    bool negative = false;
    if (at < limit && (text[at] == '+' || text[at] == '-'))
        negative = text[at++] == '-';
    std::int64_t value = 0;
    bool any = false;
    for (; at < limit && isDigit(text[at]); ++at) {
        any = true;
        value = std::min<std::int64_t>(value * 10 + (text[at] - '0'), std::int64_t(1) << 32);
    }
    if (scanned)
        *scanned = any;
    if (consumed)
        *consumed = any ? at : 0;
    if (!any)
        return 0;
    if (negative)
        value = -value;
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

// Counts are unsigned: a negative count reads 0.
std::uint32_t leadingCount(std::string_view text)
{
    return static_cast<std::uint32_t>(std::max(0, leadingInt(text)));
}

// Scans two-digit (or three-digit) numbers one after another, with optional '.' separators, the
// way "%02d%02d%02d.%03d" does: the first part that doesn't scan ends the scan, and it and all
// later parts stay 0.
class FieldScanner
{
public:
    explicit FieldScanner(std::string_view text) : m_text(text) {}

    int number(std::size_t width)
    {
        if (m_failed)
            return 0;
        bool scanned = false;
        std::size_t end = 0;
        const int value = leadingInt(m_text.substr(m_at), &scanned, width, &end);
        if (!scanned) {
            m_failed = true;
            return 0;
        }
        m_at += end;
        return value;
    }
    void literal(char c)
    {
        if (!m_failed && m_at < m_text.size() && m_text[m_at] == c)
            ++m_at;
        else
            m_failed = true;
    }

private:
    std::string_view m_text;
    std::size_t m_at = 0;
    bool m_failed = false;
};

// The channel counter and last message number of satellites-in-view sentences.
struct GsvProgress
{
    std::mutex lock;
    int channel = 0;
    int lastMessage = 0;
};
GsvProgress& gsvProgress()
{
    static GsvProgress progress;
    return progress;
}

} // namespace

bool KVRNMEASentenceParser::parse(std::string_view sentence)
{
    const std::size_t star = sentence.find('*');
    if (star == std::string_view::npos || sentence.find('*', star + 1) != std::string_view::npos)
        return false;
    const std::string_view body = sentence.substr(0, star);
    const std::string_view id = body.substr(0, body.find(','));
    bool (KVRNMEASentenceParser::*handler)(const Fields&) = nullptr;
    if (id == "$GPRMC" || id == "$GNRMC")
        handler = &KVRNMEASentenceParser::parseGPRMC;
    else if (id == "$GPGGA" || id == "$GNGGA")
        handler = &KVRNMEASentenceParser::parseGPGGA;
    else if (id == "$GNGSA")
        handler = &KVRNMEASentenceParser::parseGNGSA;
    else if (id == "$GNGNS")
        handler = &KVRNMEASentenceParser::parseGNGNS;
    // Sentences the fix doesn't use (most of a receiver's output) are turned away before any
    // further work.
    if (!handler || !isValidUtf8(sentence))
        return false;

    // Fields are a few bytes long: one pass over the bytes costs less than a search per field.
    m_fields.clear();
    std::size_t start = 0;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (body[i] == ',') {
            m_fields.emplace_back(body.data() + start, i - start);
            start = i + 1;
        }
    }
    m_fields.emplace_back(body.data() + start, body.size() - start);
    return (this->*handler)(m_fields);
}

bool KVRNMEASentenceParser::parseGPRMC(const Fields& fields)
{
    m_Current.SpeedOverGround = leadingFloat(field(fields, 7));
    m_Current.CourseOverGround = leadingFloat(field(fields, 8));

    const std::string_view time = field(fields, 1);
    const std::string_view date = field(fields, 9);
    if (date.size() == 6 && time.size() == 10) {
        FieldScanner clock(time);
        const int hour = clock.number(2);
        const int minute = clock.number(2);
        const int second = clock.number(2);
        clock.literal('.');
        const int milliseconds = clock.number(3);
        FieldScanner calendar(date);
        const int day = calendar.number(2);
        const int month = calendar.number(2);
        const int year = calendar.number(2);

        _SYSTEMTIME& now = m_Current.Now;
        now.wYear = static_cast<std::uint16_t>(2000 + year);
        now.wMonth = static_cast<std::uint16_t>(month);
        now.wDayOfWeek = 0;
        now.wDay = static_cast<std::uint16_t>(day);
        now.wHour = static_cast<std::uint16_t>(hour);
        now.wMinute = static_cast<std::uint16_t>(minute);
        now.wSecond = static_cast<std::uint16_t>(second);
        now.wMilliseconds = static_cast<std::uint16_t>(milliseconds);
    }
    m_Current.Cnt_GNGSA = 0;
    return true;
}

bool KVRNMEASentenceParser::parseGPGGA(const Fields& fields)
{
    if (!field(fields, 2).empty())
        m_Current.Latitude = leadingFloat(field(fields, 2));
    if (!field(fields, 3).empty())
        m_Current.NS = field(fields, 3).front();
    if (!field(fields, 4).empty())
        m_Current.Longitude = leadingFloat(field(fields, 4));
    if (!field(fields, 5).empty())
        m_Current.EW = field(fields, 5).front();

    // With GNS or GNGSA around, the count they give is the better one.
    if (fields.front() == "$GPGGA" && !m_Current.Enable_GNGNS && !m_Current.Enable_GNGSA)
        m_Current.SatelliteUsedCount = leadingCount(field(fields, 7));
    if (!m_Current.Enable_GNGNS && !field(fields, 8).empty())
        m_Current.HDOP = leadingFloat(field(fields, 8));
    m_Current.Cnt_GNGSA = 0;
    return true;
}

bool KVRNMEASentenceParser::parseGNGNS(const Fields& fields)
{
    m_Current.Enable_GNGNS = 1;
    m_Current.SatelliteUsedCount = leadingCount(field(fields, 7));
    if (!field(fields, 8).empty())
        m_Current.HDOP = leadingFloat(field(fields, 8));
    return true;
}

bool KVRNMEASentenceParser::parseGNGSA(const Fields& fields)
{
    m_Current.Enable_GNGSA = 1;
    if (m_Current.Enable_GNGNS)
        return true;

    std::uint32_t used = 0;
    for (int i = 0; i < KVRGpsData::ChannelCount; ++i) {
        const std::string_view id = field(fields, 3 + std::size_t(i));
        const auto value = id.empty() ? std::uint8_t(0) : std::uint8_t(leadingInt(id) & 0xff);
        m_Current.SatelliteUsed[i] = value;
        if (value != 0)
            ++used;
    }

    // GPS ids are 1 to 64, GLONASS ids 65 and up; an empty list leaves the guess as it was.
    const std::uint8_t first = m_Current.SatelliteUsed[0];
    if (first >= 1 && first <= 64)
        m_Current.Cnt_GNGSA = 0;
    else if (first >= 65)
        m_Current.Cnt_GNGSA = 1;

    if (m_Current.Cnt_GNGSA == 1) {
        m_Current.SatelliteUsedCount_GLONASS = used;
        m_Current.Cnt_GNGSA = 0;
        m_Current.SatelliteUsedCount =
            m_Current.SatelliteUsedCount_GPS + m_Current.SatelliteUsedCount_GLONASS;
    } else {
        m_Current.SatelliteUsedCount_GPS = used;
        m_Current.Cnt_GNGSA = 1;
    }
    return true;
}

bool KVRNMEASentenceParser::parseGPGSV(const Fields& fields)
{
    m_Current.SatelliteCount = leadingCount(field(fields, 3));

    GsvProgress& progress = gsvProgress();
    std::lock_guard guard(progress.lock);
    if (m_Current.SatelliteCount != 0) {
        const int message = leadingInt(field(fields, 2));
        if (message == 1)
            progress.channel = 0;
        else if (progress.lastMessage == std::numeric_limits<int>::max() ||
                 message != progress.lastMessage + 1)
            return false;
        progress.lastMessage = message;
    }

    for (std::size_t group = 0; 8 + 4 * group <= fields.size(); ++group) {
        if (progress.channel >= KVRGpsData::ChannelCount)
            break;
        const auto id = std::uint8_t(FieldScanner(fields[4 + 4 * group]).number(2));
        const auto snr = std::uint8_t(FieldScanner(fields[7 + 4 * group]).number(2));
        m_Current.setSVonChannelWithFirst(id, snr, progress.channel++);
    }
    return true;
}

} // namespace kavro
