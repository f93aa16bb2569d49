#include "nmeadegrees.h"

#include <cmath>

namespace kavro {

double nmeaToDegrees(double value)
{
    double d = value / 100.0;
    double whole = std::trunc(d);
    return (d - whole) * 100.0 / 60.0 + whole;
}

void nmeaToDegrees(double* latitudeOut, double* longitudeOut, double latitude, double longitude)
{
    if (latitudeOut)
        *latitudeOut = nmeaToDegrees(latitude);
    if (longitudeOut)
        *longitudeOut = nmeaToDegrees(longitude);
}

} // namespace kavro
