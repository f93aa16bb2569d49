#pragma once

#include "qtbridge/qtbridge.h"
#include "recordingname.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <memory>

namespace kavro {

// One recording file as the viewer holds it: its name read by RecordingName, its path also as
// text. Everything is taken from the file name; the file itself is never opened.
class KVRMedia
{
public:
    KVRMedia() = default;
    explicit KVRMedia(const QString& path) { parsePath(path); }
    explicit KVRMedia(RecordingName name);

    static std::shared_ptr<const KVRMedia> mediaWithPath(const QString& path);

    void parsePath(const QString& path);
    // Stores the six fields read at startPos even when they fail the test; the caller resets.
    bool _parseTimeByName(QStringView name, qsizetype startPos);
    void _updateToUknown() { m_name.clearTime(); }

    bool isFrontMedia() const { return m_name.direction() == KVRMediaDirectionFront; }
    bool isRearMedia() const { return m_name.direction() == KVRMediaDirectionRear; }
    bool isAlwaysMedia() const { return m_name.division() == KVRMediaDivisionAlways; }
    bool isMotionMedia() const { return m_name.division() == KVRMediaDivisionMotion; }
    bool isEventMedia() const { return m_name.division() == KVRMediaDivisionEvent; }
    // True when the name carried a start time that passed the range test.
    bool hasTime() const { return m_name.hasTime(); }

    QString fileName() const { return pathText(m_name.fileName()); }
    // The name the front and rear file of one moment share; empty for names under two bytes.
    QString mediaGroupName() const { return pathText(m_name.groupName()); }
    QString yyyymmddhhmiss() const { return QString::fromLatin1(m_name.yyyymmddhhmiss()); }
    // Earlier time first, then event, motion, always, then front, rear, unknown: -1, 0 or 1.
    int compareDate(const KVRMedia& other) const { return m_name.compare(other.m_name); }

    std::int32_t year() const { return m_name.time().year; }
    std::int32_t month() const { return m_name.time().month; }
    std::int32_t day() const { return m_name.time().day; }
    std::int32_t hour() const { return m_name.time().hour; }
    std::int32_t minute() const { return m_name.time().minute; }
    std::int32_t second() const { return m_name.time().second; }
    const KVRMediaTime& time() const { return m_name.time(); }
    std::int32_t mediaDivision() const { return m_name.division(); }
    std::int32_t mediaDirection() const { return m_name.direction(); }
    const QString& path() const { return m_path; }
    QString mediaName() const { return pathText(m_name.name()); }
    QString extension() const { return pathText(m_name.extension()); }
    QString dir() const { return pathText(m_name.dir()); }
    const RecordingName& recordingName() const { return m_name; }

private:
    RecordingName m_name;
    QString m_path;
};

using KVRMediaPtr = std::shared_ptr<const KVRMedia>;

// The channel of a file that a player holds, from its path alone: the last six characters,
// compared without regard to case, "_F.avi" for front and "_R.avi" for rear.
KVRMediaDirection mediaDirectionForPath(const QString& path);

} // namespace kavro
