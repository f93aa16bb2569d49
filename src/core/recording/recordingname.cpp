#include "recordingname.h"

#include <array>
#include <climits>
#include <cstdio>

#include <unistd.h>

namespace kavro {

namespace {

struct DivisionPattern
{
    std::string_view prefix;
    std::int32_t division;
};

// Tested in this order; the time field starts right after the prefix.
constexpr std::array<DivisionPattern, 3> DivisionPatterns{{
    {"alwa_", KVRMediaDivisionAlways},
    {"motion_", KVRMediaDivisionMotion},
    {"event_", KVRMediaDivisionEvent},
}};

// "yyyymmdd_hhmiss": the span the time field needs.
constexpr std::size_t TimeFieldLength = 15;

bool isAsciiSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Leading decimal integer as the C library reads it: white space, an optional sign, then digits
// up to the first non-digit. No digits read 0. Fields are at most four characters, so no overflow.
std::int32_t leadingInteger(std::string_view field)
{
    std::size_t i = 0;
    while (i < field.size() && isAsciiSpace(field[i]))
        ++i;
    bool negative = false;
    if (i < field.size() && (field[i] == '+' || field[i] == '-')) {
        negative = field[i] == '-';
        ++i;
    }
    std::int32_t value = 0;
    for (; i < field.size() && isDigit(field[i]); ++i)
        value = value * 10 + (field[i] - '0');
    return negative ? -value : value;
}

// With every field inside its printed width, the fields read as one number order the same way
// as the printed 14-digit texts, without formatting them.
std::int64_t fixedWidthKey(const KVRMediaTime& t)
{
    auto twoDigits = [](std::int32_t v) { return v >= 0 && v <= 99; };
    if (t.year < 0 || t.year > 9999 || !twoDigits(t.month) || !twoDigits(t.day) ||
        !twoDigits(t.hour) || !twoDigits(t.minute) || !twoDigits(t.second))
        return -1;
    std::int64_t key = t.year;
    for (std::int32_t field : {t.month, t.day, t.hour, t.minute, t.second})
        key = key * 100 + field;
    return key;
}

template <typename T> int threeWay(const T& a, const T& b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

bool hasChannelSuffix(std::string_view name)
{
    return name.ends_with("_F") || name.ends_with("_R");
}

std::string_view lastComponent(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

} // namespace

KVRMediaTime KVRMediaTime::readFromName(std::string_view name, std::size_t startPos,
                                        bool* longEnough)
{
    KVRMediaTime t;
    *longEnough = name.size() >= startPos + TimeFieldLength;
    if (!*longEnough)
        return t;
    const std::string_view field = name.substr(startPos, TimeFieldLength);
    // The camera's own names are plain digits; only other names need the C library's reading.
    bool plain = true;
    for (std::size_t i = 0; i < TimeFieldLength && plain; ++i)
        plain = i == 8 || isDigit(field[i]);
    if (plain) {
        auto number = [&field](std::size_t from, std::size_t count) {
            std::int32_t value = 0;
            for (std::size_t i = from; i < from + count; ++i)
                value = value * 10 + (field[i] - '0');
            return value;
        };
        t.year = number(0, 4);
        t.month = number(4, 2);
        t.day = number(6, 2);
        t.hour = number(9, 2);
        t.minute = number(11, 2);
        t.second = number(13, 2);
        return t;
    }
    t.year = leadingInteger(field.substr(0, 4));
    t.month = leadingInteger(field.substr(4, 2));
    t.day = leadingInteger(field.substr(6, 2));
    // field[8] is the separator; the camera never checked it.
    t.hour = leadingInteger(field.substr(9, 2));
    t.minute = leadingInteger(field.substr(11, 2));
    t.second = leadingInteger(field.substr(13, 2));
    return t;
}

bool KVRMediaTime::isValid() const
{
    return year >= 1970 && year <= 2700 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
           hour >= 0 && hour <= 24 && minute >= 0 && minute <= 60 && second >= 0 && second <= 60;
}

RecordingName::RecordingName(std::string path)
{
    // The scan hands in absolute paths; only others pay for the current-folder lookup.
    if (!path.starts_with('/')) {
        char current[PATH_MAX];
        if (::getcwd(current, sizeof current)) {
            std::string folder = current;
            if (!folder.ends_with('/'))
                folder += '/';
            path.insert(0, folder);
        }
    }
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    m_path = std::move(path);

    const std::size_t slash = m_path.rfind('/');
    m_nameStart = slash == std::string::npos ? 0 : slash + 1;
    std::string_view stem;
    std::string_view extension;
    splitFileName(std::string_view(m_path).substr(m_nameStart), &stem, &extension);
    m_nameLength = stem.size();
    m_hasExtension = stem.size() < m_path.size() - m_nameStart;

    if (!hasRecordingNameLength(stem)) {
        clearTime();
        return;
    }
    m_direction = KVRMediaDirectionUnknown;
    std::size_t timeStart = 0;
    if (divisionForName(stem, &m_division, &timeStart) && !parseTime(stem, timeStart)) {
        clearTime();
        return;
    }
    if (stem.ends_with("_F"))
        m_direction = KVRMediaDirectionFront;
    else if (stem.ends_with("_R"))
        m_direction = KVRMediaDirectionRear;
}

std::optional<RecordingName> RecordingName::admitted(std::string path)
{
    // The record reads the name as the admission does: a recording-name length, then, for a known
    // prefix, a valid time, then a channel suffix; anything else leaves it without a channel (or,
    // for another length, unread). So one parse serves both.
    if (path.ends_with('/'))
        return std::nullopt; // a folder's path: its last component is empty
    RecordingName name(std::move(path));
    if (!hasRecordingNameLength(name.name()) || !name.hasChannel())
        return std::nullopt;
    return name;
}

bool RecordingName::hasRecordingNameLength(std::string_view name)
{
    return name.size() == 22 || name.size() == 24 || name.size() == 23;
}

bool RecordingName::divisionForName(std::string_view name, std::int32_t* division,
                                    std::size_t* timeStart)
{
    for (const DivisionPattern& pattern : DivisionPatterns) {
        if (name.starts_with(pattern.prefix)) {
            *division = pattern.division;
            *timeStart = pattern.prefix.size();
            return true;
        }
    }
    return false;
}

void RecordingName::splitFileName(std::string_view component, std::string_view* name,
                                  std::string_view* extension)
{
    const std::size_t dot = component.rfind('.');
    if (dot == std::string_view::npos || dot == 0) {
        *name = component;
        *extension = std::string_view();
        return;
    }
    *name = component.substr(0, dot);
    *extension = component.substr(dot + 1);
}

std::string_view RecordingName::pairKey(std::string_view nameOrPath)
{
    std::string_view stem;
    std::string_view extension;
    splitFileName(lastComponent(nameOrPath), &stem, &extension);
    return hasChannelSuffix(stem) ? stem.substr(0, stem.size() - 2) : stem;
}

bool RecordingName::parseTime(std::string_view name, std::size_t startPos)
{
    bool longEnough = false;
    setTime(KVRMediaTime::readFromName(name, startPos, &longEnough));
    return longEnough && m_time.isValid();
}

void RecordingName::clearTime()
{
    setTime(KVRMediaTime());
}

void RecordingName::setTime(const KVRMediaTime& time)
{
    m_time = time;
    m_timeKey = fixedWidthKey(time);
}

std::string RecordingName::extension() const
{
    return m_hasExtension ? m_path.substr(m_nameStart + m_nameLength + 1) : std::string();
}

std::string RecordingName::dir() const
{
    if (m_nameStart > 1)
        return m_path.substr(0, m_nameStart - 1);
    return m_nameStart == 1 ? std::string("/") : std::string();
}

std::string RecordingName::fileName() const
{
    // With an extension the last component is already "name.extension".
    return m_hasExtension ? m_path.substr(m_nameStart) : std::string(name()) + '.';
}

std::string_view RecordingName::groupName() const
{
    return m_nameLength >= 2 ? name().substr(0, m_nameLength - 2) : std::string_view();
}

std::string RecordingName::yyyymmddhhmiss() const
{
    char text[80];
    const int length =
        std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", m_time.year, m_time.month,
                      m_time.day, m_time.hour, m_time.minute, m_time.second);
    return std::string(text, std::size_t(std::max(length, 0)));
}

int RecordingName::compare(const RecordingName& other) const
{
    int byTime = 0;
    if (m_timeKey >= 0 && other.m_timeKey >= 0)
        byTime = threeWay(m_timeKey, other.m_timeKey);
    else
        byTime = threeWay(yyyymmddhhmiss().compare(other.yyyymmddhhmiss()), 0);
    if (byTime != 0)
        return byTime;
    // Event before motion before always: the more urgent recording leads.
    if (m_division != other.m_division)
        return m_division > other.m_division ? -1 : 1;
    return threeWay(m_direction, other.m_direction);
}

} // namespace kavro
