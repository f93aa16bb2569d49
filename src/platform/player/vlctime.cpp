#include "vlctime.h"

namespace kavro {

QString VLCTime::stringValue() const
{
    if (!m_value)
        return QStringLiteral("--:--");
    // Work on the magnitude in unsigned arithmetic so that even the most negative value is safe.
    const qint64 value = *m_value;
    const quint64 magnitude = value < 0 ? 0 - static_cast<quint64>(value) : value;
    const quint64 totalSeconds = magnitude / 1000;
    const quint64 hours = totalSeconds / 3600;
    const quint64 minutes = totalSeconds / 60 % 60;
    const quint64 seconds = totalSeconds % 60;
    // A sign in front of "00:00" would hide the end from those who compare the text.
    const QString sign = value < 0 && totalSeconds > 0 ? QStringLiteral("-") : QString();
    if (hours > 0)
        return QStringLiteral("%1%2:%3:%4")
            .arg(sign)
            .arg(hours)
            .arg(minutes, 2, 10, QLatin1Char('0'))
            .arg(seconds, 2, 10, QLatin1Char('0'));
    return QStringLiteral("%1%2:%3")
        .arg(sign)
        .arg(minutes, 2, 10, QLatin1Char('0'))
        .arg(seconds, 2, 10, QLatin1Char('0'));
}

} // namespace kavro
