#include "timezonetable.h"

#include <QDateTime>
#include <QTimeZone>

#include <array>

namespace kavro {

namespace {

constexpr std::array<TimeZoneEntry, TimeZoneCount> TimeZones = {{
    {-1200, "-12:00"}, {-1100, "-11:00"}, {-1000, "-10:00"}, {-900, "-09:00"}, {-800, "-08:00"},
    {-700, "-07:00"},  {-600, "-06:00"},  {-500, "-05:00"},  {-430, "-04:30"}, {-400, "-04:00"},
    {-330, "-03:30"},  {-300, "-03:00"},  {-200, "-02:00"},  {-100, "-01:00"}, {0, "00:00"},
    {100, "+01:00"},   {200, "+02:00"},   {300, "+03:00"},   {330, "+03:30"},  {400, "+04:00"},
    {430, "+04:30"},   {500, "+05:00"},   {530, "+05:30"},   {545, "+05:45"},  {600, "+06:00"},
    {630, "+06:30"},   {700, "+07:00"},   {800, "+08:00"},   {900, "+09:00"},  {930, "+09:30"},
    {1000, "+10:00"},  {1100, "+11:00"},  {1200, "+12:00"},  {1300, "+13:00"},
}};

} // namespace

std::span<const TimeZoneEntry> timeZoneTable()
{
    return TimeZones;
}

std::optional<QString> timeZoneLabel(std::int32_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= TimeZones.size())
        return std::nullopt;
    return QString::fromLatin1(TimeZones[static_cast<std::size_t>(index)].label);
}

std::int32_t findTimeZoneIndexByOffset(int offsetSeconds)
{
    // Both parts truncate toward zero, so both carry the sign: -04:30 is -4 h and -30 min.
    int hours = offsetSeconds / 3600;
    int minutes = (offsetSeconds - hours * 3600) / 60;
    int wanted = hours * 100 + minutes;
    for (std::size_t i = 0; i < TimeZones.size(); ++i) {
        if (TimeZones[i].offset == wanted)
            return static_cast<std::int32_t>(i);
    }
    return -1;
}

std::int32_t findSystemTimeZoneIndex()
{
    QDateTime now = QDateTime::currentDateTime();
    return findTimeZoneIndexByOffset(QTimeZone::systemTimeZone().offsetFromUtc(now));
}

} // namespace kavro
