#include "kvrmedia.h"

#include <QDir>

#include <array>

namespace kavro {

namespace {

struct DivisionPattern
{
    QLatin1StringView prefix;
    std::int32_t division;
};

// Tested in this order; the time field starts right after the prefix.
constexpr std::array<DivisionPattern, 3> DivisionPatterns{{
    {QLatin1StringView("alwa_"), KVRMediaDivisionAlways},
    {QLatin1StringView("motion_"), KVRMediaDivisionMotion},
    {QLatin1StringView("event_"), KVRMediaDivisionEvent},
}};

// "yyyymmdd_hhmiss": the span the time field needs.
constexpr qsizetype TimeFieldLength = 15;

bool isAsciiSpace(QChar c)
{
    char16_t u = c.unicode();
    return u == ' ' || (u >= '\t' && u <= '\r');
}

// Leading decimal integer as the C library reads it: white space, an optional sign, then digits
// up to the first non-digit. No digits read 0. Fields are at most four characters, so no overflow.
std::int32_t leadingInteger(QStringView field)
{
    qsizetype i = 0;
    while (i < field.size() && isAsciiSpace(field[i]))
        ++i;
    bool negative = false;
    if (i < field.size() && (field[i] == u'+' || field[i] == u'-')) {
        negative = field[i] == u'-';
        ++i;
    }
    std::int32_t value = 0;
    for (; i < field.size() && field[i] >= u'0' && field[i] <= u'9'; ++i)
        value = value * 10 + (field[i].unicode() - u'0');
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

} // namespace

KVRMediaTime KVRMediaTime::readFromName(QStringView name, qsizetype startPos, bool* longEnough)
{
    KVRMediaTime t;
    *longEnough = startPos >= 0 && name.size() >= startPos + TimeFieldLength;
    if (!*longEnough)
        return t;
    QStringView field = name.mid(startPos, TimeFieldLength);
    // The camera's own names are plain digits; only other names need the C library's reading.
    auto digit = [&field](qsizetype i) { return field[i] >= u'0' && field[i] <= u'9'; };
    bool plain = true;
    for (qsizetype i = 0; i < TimeFieldLength && plain; ++i)
        plain = i == 8 || digit(i);
    if (plain) {
        auto number = [&field](qsizetype from, qsizetype count) {
            std::int32_t value = 0;
            for (qsizetype i = from; i < from + count; ++i)
                value = value * 10 + (field[i].unicode() - u'0');
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
    t.year = leadingInteger(field.mid(0, 4));
    t.month = leadingInteger(field.mid(4, 2));
    t.day = leadingInteger(field.mid(6, 2));
    // field[8] is the separator; the camera never checked it.
    t.hour = leadingInteger(field.mid(9, 2));
    t.minute = leadingInteger(field.mid(11, 2));
    t.second = leadingInteger(field.mid(13, 2));
    return t;
}

bool KVRMediaTime::isValid() const
{
    return year >= 1970 && year <= 2700 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
           hour >= 0 && hour <= 24 && minute >= 0 && minute <= 60 && second >= 0 && second <= 60;
}

std::shared_ptr<const KVRMedia> KVRMedia::mediaWithPath(const QString& path)
{
    return std::make_shared<const KVRMedia>(path);
}

bool KVRMedia::hasRecordingNameLength(QStringView name)
{
    return name.size() == 22 || name.size() == 24 || name.size() == 23;
}

bool KVRMedia::divisionForName(QStringView name, std::int32_t* division, qsizetype* timeStart)
{
    for (const DivisionPattern& pattern : DivisionPatterns) {
        if (name.startsWith(pattern.prefix)) {
            *division = pattern.division;
            *timeStart = pattern.prefix.size();
            return true;
        }
    }
    return false;
}

void KVRMedia::splitFileName(QStringView component, QStringView* name, QStringView* extension)
{
    qsizetype dot = component.lastIndexOf(u'.');
    if (dot <= 0) {
        *name = component;
        *extension = QStringView();
        return;
    }
    *name = component.left(dot);
    *extension = component.mid(dot + 1);
}

void KVRMedia::parsePath(const QString& path)
{
    // The scan hands in absolute paths; only others pay for the current-folder lookup.
    QString absolute = path.startsWith(u'/') || !QDir::isRelativePath(path)
                           ? path
                           : QDir::current().absoluteFilePath(path);
    while (absolute.size() > 1 && absolute.endsWith(u'/'))
        absolute.chop(1);
    m_path = absolute;

    m_nameStart = m_path.lastIndexOf(u'/') + 1;
    QStringView name;
    QStringView extension;
    splitFileName(QStringView(m_path).mid(m_nameStart), &name, &extension);
    m_nameLength = name.size();
    m_hasExtension = name.size() < m_path.size() - m_nameStart;

    if (!hasRecordingNameLength(name)) {
        _updateToUknown();
        return;
    }
    m_mediaDirection = KVRMediaDirectionUnknown;
    qsizetype timeStart = 0;
    if (divisionForName(name, &m_mediaDivision, &timeStart) && !_parseTimeByName(name, timeStart)) {
        _updateToUknown();
        return;
    }
    if (name.endsWith(QLatin1StringView("_F")))
        m_mediaDirection = KVRMediaDirectionFront;
    else if (name.endsWith(QLatin1StringView("_R")))
        m_mediaDirection = KVRMediaDirectionRear;
}

bool KVRMedia::_parseTimeByName(QStringView name, qsizetype startPos)
{
    bool longEnough = false;
    setTime(KVRMediaTime::readFromName(name, startPos, &longEnough));
    return longEnough && m_time.isValid();
}

void KVRMedia::_updateToUknown()
{
    setTime(KVRMediaTime());
}

void KVRMedia::setTime(const KVRMediaTime& time)
{
    m_time = time;
    m_timeKey = fixedWidthKey(time);
}

QString KVRMedia::extension() const
{
    return m_hasExtension ? m_path.mid(m_nameStart + m_nameLength + 1) : QString();
}

QString KVRMedia::dir() const
{
    if (m_nameStart > 1)
        return m_path.left(m_nameStart - 1);
    return m_nameStart == 1 ? QStringLiteral("/") : QString();
}

QString KVRMedia::fileName() const
{
    // With an extension the last component is already "name.extension".
    return m_hasExtension ? m_path.mid(m_nameStart) : mediaName() + u'.';
}

QString KVRMedia::mediaGroupName() const
{
    return m_nameLength >= 2 ? mediaNameView().chopped(2).toString() : QString();
}

QString KVRMedia::yyyymmddhhmiss() const
{
    return QString::asprintf("%04d%02d%02d%02d%02d%02d", m_time.year, m_time.month, m_time.day,
                             m_time.hour, m_time.minute, m_time.second);
}

int KVRMedia::compareDate(const KVRMedia& other) const
{
    int byTime = 0;
    if (m_timeKey >= 0 && other.m_timeKey >= 0) {
        byTime = threeWay(m_timeKey, other.m_timeKey);
    } else {
        byTime = threeWay(yyyymmddhhmiss().compare(other.yyyymmddhhmiss()), 0);
    }
    if (byTime != 0)
        return byTime;
    // Event before motion before always: the more urgent recording leads.
    if (m_mediaDivision != other.m_mediaDivision)
        return m_mediaDivision > other.m_mediaDivision ? -1 : 1;
    return threeWay(m_mediaDirection, other.m_mediaDirection);
}

KVRMediaDirection mediaDirectionForPath(const QString& path)
{
    if (path.size() < 6)
        return KVRMediaDirectionUnknown;
    QStringView tail = QStringView(path).right(6);
    if (tail.compare(QLatin1StringView("_R.avi"), Qt::CaseInsensitive) == 0)
        return KVRMediaDirectionRear;
    if (tail.compare(QLatin1StringView("_F.avi"), Qt::CaseInsensitive) == 0)
        return KVRMediaDirectionFront;
    return KVRMediaDirectionUnknown;
}

} // namespace kavro
