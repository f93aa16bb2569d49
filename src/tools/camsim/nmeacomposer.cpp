#include "nmeacomposer.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kavro::camsim {

namespace {

// Ten-thousandths of a minute, rounded once so that degrees and minutes never disagree.
QByteArray angleText(double degrees, int degreeDigits)
{
    const long long units = std::llround(std::abs(degrees) * 60.0 * 10000.0);
    const long long whole = units / 600000;
    const long long minutes = units % 600000;
    char text[32];
    std::snprintf(text, sizeof text, "%0*lld%02lld.%04lld", degreeDigits, whole, minutes / 10000,
                  minutes % 10000);
    return text;
}

QByteArray fixed(double value, int decimals)
{
    return QByteArray::number(value, 'f', decimals);
}

QByteArray twoDigits(int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%02d", value);
    return text;
}

QByteArray utcTime(const QDateTime& utc)
{
    return utc.toString(QStringLiteral("HHmmss.zzz")).toLatin1();
}

QByteArray satelliteCount(const GpsFix& fix)
{
    return twoDigits(static_cast<int>(fix.gpsUsed.size() + fix.glonassUsed.size()));
}

} // namespace

QByteArray NmeaComposer::sentence(const QByteArray& body)
{
    unsigned char sum = 0;
    for (char c : body)
        sum ^= static_cast<unsigned char>(c);
    char tail[8];
    std::snprintf(tail, sizeof tail, "*%02X", sum);
    return '$' + body + tail;
}

QByteArray NmeaComposer::latitudeField(double degrees)
{
    return angleText(degrees, 2) + (degrees < 0 ? ",S" : ",N");
}

QByteArray NmeaComposer::longitudeField(double degrees)
{
    return angleText(degrees, 3) + (degrees < 0 ? ",W" : ",E");
}

double NmeaComposer::nmeaForm(double degrees)
{
    return angleText(degrees, 2).toDouble();
}

QByteArray NmeaComposer::rmc(const GpsFix& fix)
{
    return sentence("GNRMC," + utcTime(fix.utc) + ",A," + latitudeField(fix.latitude) + ',' +
                    longitudeField(fix.longitude) + ',' + fixed(fix.speedKnots, 2) + ',' +
                    fixed(fix.course, 2) + ',' +
                    fix.utc.toString(QStringLiteral("ddMMyy")).toLatin1() + ",,,A");
}

QByteArray NmeaComposer::gga(const GpsFix& fix)
{
    return sentence("GNGGA," + utcTime(fix.utc) + ',' + latitudeField(fix.latitude) + ',' +
                    longitudeField(fix.longitude) + ",1," + satelliteCount(fix) + ',' +
                    fixed(fix.hdop, 2) + ',' + fixed(fix.altitude, 1) + ",M," +
                    fixed(fix.geoidSeparation, 1) + ",M,,");
}

QByteArray NmeaComposer::gsa(const GpsFix& fix, const std::vector<int>& ids)
{
    QByteArray body = "GNGSA,A,3,";
    for (std::size_t slot = 0; slot < 12; ++slot) {
        if (slot < ids.size())
            body += twoDigits(ids[slot]);
        body += ',';
    }
    body += fixed(fix.pdop, 2) + ',' + fixed(fix.hdop, 2) + ',' + fixed(fix.vdop, 2);
    return sentence(body);
}

std::vector<QByteArray> NmeaComposer::gsv(const char* talker,
                                          const std::vector<SatelliteInView>& sky)
{
    std::vector<QByteArray> out;
    const int total = static_cast<int>(sky.size());
    const int messages = (total + 3) / 4;
    for (int message = 0; message < messages; ++message) {
        QByteArray body = QByteArray(talker) + "GSV," + QByteArray::number(messages) + ',' +
                          QByteArray::number(message + 1) + ',' + twoDigits(total);
        for (int i = message * 4; i < std::min(total, message * 4 + 4); ++i) {
            const SatelliteInView& s = sky[static_cast<std::size_t>(i)];
            char group[32];
            std::snprintf(group, sizeof group, ",%02d,%02d,%03d,", s.id, s.elevation, s.azimuth);
            body += group;
            if (s.snr > 0)
                body += twoDigits(s.snr);
        }
        out.push_back(sentence(body));
    }
    return out;
}

QByteArray NmeaComposer::recordText(const GpsFix& fix, int limit)
{
    const QByteArray lineEnd = "\r\n";
    const QByteArray core = rmc(fix) + lineEnd + gga(fix) + lineEnd + gsa(fix, fix.gpsUsed) +
                            lineEnd + gsa(fix, fix.glonassUsed) + lineEnd;
    auto skyText = [&](const char* talker, std::vector<SatelliteInView> sky, int room) {
        QByteArray text;
        for (; !sky.empty(); sky.pop_back()) {
            text.clear();
            for (const QByteArray& line : gsv(talker, sky))
                text += line + lineEnd;
            if (text.size() <= room)
                return text;
        }
        return QByteArray();
    };
    QByteArray text = core + skyText("GP", fix.gpsInView, limit - static_cast<int>(core.size()));
    // Only a whole GLONASS list: a cut one would look like a receiver fault.
    QByteArray glonass;
    for (const QByteArray& line : gsv("GL", fix.glonassInView))
        glonass += line + lineEnd;
    if (text.size() + glonass.size() <= limit)
        text += glonass;
    return text.left(limit);
}

} // namespace kavro::camsim
