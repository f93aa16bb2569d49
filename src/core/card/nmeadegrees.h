#pragma once

namespace kavro {

// NMEA coordinates (degrees x 100 + minutes) to decimal degrees. Either output may be null; that
// conversion is then skipped. The sign carries through: a negative input gives a negative result.
void nmeaToDegrees(double* latitudeOut, double* longitudeOut, double latitude, double longitude);

// One value of the same conversion.
double nmeaToDegrees(double value);

} // namespace kavro
