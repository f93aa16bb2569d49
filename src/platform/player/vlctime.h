#pragma once

#include <QString>

#include <optional>

namespace kavro {

// A play time in milliseconds as the players report it, or no time at all (nothing playing, or a
// length not known yet). Remaining times are negative: the time still to play, counted down.
class VLCTime
{
public:
    VLCTime() = default;
    explicit VLCTime(qint64 milliseconds) : m_value(milliseconds) {}

    static VLCTime nullTime() { return VLCTime(); }
    static VLCTime timeWithInt(qint64 milliseconds) { return VLCTime(milliseconds); }

    bool isNull() const { return !m_value.has_value(); }
    // Milliseconds; a null time counts as the start, 0.
    qint64 intValue() const { return m_value.value_or(0); }

    // "mm:ss", or "h:mm:ss" from one hour on, with a leading "-" for a negative time. Whole seconds
    // are shown, so the last fraction of a second before the end reads "00:00"; "--:--" when null.
    QString stringValue() const;

    bool operator==(const VLCTime&) const = default;

private:
    std::optional<qint64> m_value;
};

} // namespace kavro
