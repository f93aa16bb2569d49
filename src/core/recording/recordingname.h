#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kavro {

// Recording mode, from the file-name prefix.
enum KVRMediaDivision : std::int32_t
{
    KVRMediaDivisionAlways = 0,
    KVRMediaDivisionMotion = 1,
    KVRMediaDivisionEvent = 2,
};

// Camera channel, from the file-name suffix.
enum KVRMediaDirection : std::int32_t
{
    KVRMediaDirectionFront = 0,
    KVRMediaDirectionRear = 1,
    KVRMediaDirectionUnknown = 2,
};

// The six time fields of a recording name, read at a given start position.
struct KVRMediaTime
{
    std::int32_t year = 0;
    std::int32_t month = 0;
    std::int32_t day = 0;
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;

    // Reads "yyyymmdd?hhmiss" at startPos. A name too short to hold the whole field reads nothing
    // and leaves *longEnough false.
    static KVRMediaTime readFromName(std::string_view name, std::size_t startPos, bool* longEnough);

    // The camera's range test; 24 o'clock and 60 minutes or seconds are accepted, and days are
    // not checked against the month.
    bool isValid() const;
};

// The camera's grammar of a recording's file name, read from its path as the file system has it
// (bytes). Everything is taken from the name; the file itself is never opened.
class RecordingName
{
public:
    RecordingName() = default;
    // A relative path is taken from the current folder; trailing slashes are dropped.
    explicit RecordingName(std::string path);

    // The record of a name the folder scan admits, or nothing: a recording-name length and a
    // channel suffix. A folder's path (ending in '/') has no name.
    static std::optional<RecordingName> admitted(std::string path);

    // Stores the six fields read at startPos even when they fail the test; the caller resets.
    bool parseTime(std::string_view name, std::size_t startPos);
    void clearTime();

    const std::string& path() const { return m_path; }
    // The last component without its extension.
    std::string_view name() const
    {
        return std::string_view(m_path).substr(m_nameStart, m_nameLength);
    }
    std::string fileName() const;
    // The name the front and rear file of one moment share; empty for names under two bytes.
    std::string_view groupName() const;
    std::string extension() const;
    std::string dir() const;
    std::string yyyymmddhhmiss() const;
    // Earlier time first, then event, motion, always, then front, rear, unknown: -1, 0 or 1.
    int compare(const RecordingName& other) const;

    const KVRMediaTime& time() const { return m_time; }
    // True when the name carried a start time that passed the range test.
    bool hasTime() const { return m_time.isValid(); }
    std::int32_t division() const { return m_division; }
    std::int32_t direction() const { return m_direction; }
    bool hasChannel() const
    {
        return m_direction == KVRMediaDirectionFront || m_direction == KVRMediaDirectionRear;
    }

    // Length of the name without extension for each mode: "alwa_yyyymmdd_hhmiss_F" and the like.
    static bool hasRecordingNameLength(std::string_view name);
    // The mode whose prefix the name starts with (case-sensitive) and where its time field
    // starts; false when the name has none of the three prefixes.
    static bool divisionForName(std::string_view name, std::int32_t* division,
                                std::size_t* timeStart);
    // Splits the last component of a path into its name and extension; a leading dot is part of
    // the name, so ".avi" has no extension.
    static void splitFileName(std::string_view component, std::string_view* name,
                              std::string_view* extension);
    // The key of the pair table for a file name or path: without folder, extension and
    // "_F"/"_R" suffix.
    static std::string_view pairKey(std::string_view nameOrPath);

private:
    void setTime(const KVRMediaTime& time);

    KVRMediaTime m_time;
    std::int32_t m_division = KVRMediaDivisionAlways;
    std::int32_t m_direction = KVRMediaDirectionFront;
    // The name parts are kept as places in the path: a full card makes 15000 records at once.
    std::string m_path;
    std::size_t m_nameStart = 0;
    std::size_t m_nameLength = 0;
    bool m_hasExtension = false;
    // The time as one number when every field prints at its fixed width, which makes sorting a
    // full card cheap; -1 otherwise.
    std::int64_t m_timeKey = 0;
};

} // namespace kavro
