#pragma once

namespace kavro {

// One G-sensor sample in g.
class KVRGSensor
{
public:
    KVRGSensor() = default;
    KVRGSensor(float x, float y, float z) : x(x), y(y), z(z) {}

    void updateFromObject(const KVRGSensor& other) { *this = other; }

    float x = 0;
    float y = 0;
    float z = 0;
};

} // namespace kavro
