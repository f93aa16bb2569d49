#pragma once

#include <QByteArray>
#include <QDateTime>

#include <vector>

namespace kavro::camsim {

struct SatelliteInView
{
    int id = 0;
    int elevation = 0; // degrees
    int azimuth = 0;   // degrees
    int snr = 0;       // dB-Hz; 0 when the receiver sees it but does not track it
};

// What the receiver knows at one second.
struct GpsFix
{
    QDateTime utc;
    double latitude = 0;  // signed decimal degrees
    double longitude = 0; // signed decimal degrees
    double speedKnots = 0;
    double course = 0; // degrees true
    double altitude = 0;
    double geoidSeparation = 0;
    double pdop = 0;
    double hdop = 0;
    double vdop = 0;
    std::vector<int> gpsUsed;     // ids 1..32
    std::vector<int> glonassUsed; // ids 65..96
    std::vector<SatelliteInView> gpsInView;
    std::vector<SatelliteInView> glonassInView;
};

// Writes a fix as the sentences a multi-constellation receiver sends each second: RMC, GGA, a
// GNGSA pair (GPS, then GLONASS) and the satellites in view.
class NmeaComposer
{
public:
    // "$" + body + "*" + the two-digit XOR checksum.
    static QByteArray sentence(const QByteArray& body);

    // The position fields as written in a sentence: "3724.1234,N" and "12701.2345,E".
    static QByteArray latitudeField(double degrees);
    static QByteArray longitudeField(double degrees);
    // The NMEA form ddmm.mmmm (dddmm.mmmm) of the same value, without sign.
    static double nmeaForm(double degrees);

    static QByteArray rmc(const GpsFix& fix);
    static QByteArray gga(const GpsFix& fix);
    static QByteArray gsa(const GpsFix& fix, const std::vector<int>& ids);
    static std::vector<QByteArray> gsv(const char* talker, const std::vector<SatelliteInView>& sky);

    // The sentences of one second, each ended by CR LF, at most `limit` bytes: satellites in view
    // are left out, last ones first, where the record has no room for them.
    static QByteArray recordText(const GpsFix& fix, int limit);
};

} // namespace kavro::camsim
