#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>

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
    static KVRMediaTime readFromName(QStringView name, qsizetype startPos, bool* longEnough);

    // The camera's range test; 24 o'clock and 60 minutes or seconds are accepted, and days are
    // not checked against the month.
    bool isValid() const;
};

// One recording file. Everything is taken from the file name; the file itself is never opened.
class KVRMedia
{
public:
    KVRMedia() = default;
    explicit KVRMedia(const QString& path) { parsePath(path); }

    static std::shared_ptr<const KVRMedia> mediaWithPath(const QString& path);

    void parsePath(const QString& path);
    // Stores the six fields read at startPos even when they fail the test; the caller resets.
    bool _parseTimeByName(QStringView name, qsizetype startPos);
    void _updateToUknown();

    bool isFrontMedia() const { return m_mediaDirection == KVRMediaDirectionFront; }
    bool isRearMedia() const { return m_mediaDirection == KVRMediaDirectionRear; }
    bool isAlwaysMedia() const { return m_mediaDivision == KVRMediaDivisionAlways; }
    bool isMotionMedia() const { return m_mediaDivision == KVRMediaDivisionMotion; }
    bool isEventMedia() const { return m_mediaDivision == KVRMediaDivisionEvent; }
    // True when the name carried a start time that passed the range test.
    bool hasTime() const { return time().isValid(); }

    QString fileName() const;
    // The name the front and rear file of one moment share; empty for names under two characters.
    QString mediaGroupName() const;
    QString yyyymmddhhmiss() const;
    // Earlier time first, then event, motion, always, then front, rear, unknown: -1, 0 or 1.
    int compareDate(const KVRMedia& other) const;

    std::int32_t year() const { return m_time.year; }
    std::int32_t month() const { return m_time.month; }
    std::int32_t day() const { return m_time.day; }
    std::int32_t hour() const { return m_time.hour; }
    std::int32_t minute() const { return m_time.minute; }
    std::int32_t second() const { return m_time.second; }
    const KVRMediaTime& time() const { return m_time; }
    std::int32_t mediaDivision() const { return m_mediaDivision; }
    std::int32_t mediaDirection() const { return m_mediaDirection; }
    const QString& path() const { return m_path; }
    QString mediaName() const { return mediaNameView().toString(); }
    QStringView mediaNameView() const { return QStringView(m_path).mid(m_nameStart, m_nameLength); }
    QString extension() const;
    QString dir() const;

    // Length of the name without extension for each mode: "alwa_yyyymmdd_hhmiss_F" and the like.
    static bool hasRecordingNameLength(QStringView name);
    // The mode whose prefix the name starts with (case-sensitive) and where its time field
    // starts; false when the name has none of the three prefixes.
    static bool divisionForName(QStringView name, std::int32_t* division, qsizetype* timeStart);
    // Splits the last component of a path into its name and extension; a leading dot is part of
    // the name, so ".avi" has no extension.
    static void splitFileName(QStringView component, QStringView* name, QStringView* extension);

private:
    void setTime(const KVRMediaTime& time);

    KVRMediaTime m_time;
    std::int32_t m_mediaDivision = KVRMediaDivisionAlways;
    std::int32_t m_mediaDirection = KVRMediaDirectionFront;
    // The name parts are kept as places in the path: a full card makes 15000 records at once.
    QString m_path;
    qsizetype m_nameStart = 0;
    qsizetype m_nameLength = 0;
    bool m_hasExtension = false;
    // The time as one number when every field prints at its fixed width, which makes sorting a
    // full card cheap; -1 otherwise.
    std::int64_t m_timeKey = 0;
};

using KVRMediaPtr = std::shared_ptr<const KVRMedia>;

// The channel of a file that a player holds, from its path alone: the last six characters,
// compared without regard to case, "_F.avi" for front and "_R.avi" for rear.
KVRMediaDirection mediaDirectionForPath(const QString& path);

} // namespace kavro
