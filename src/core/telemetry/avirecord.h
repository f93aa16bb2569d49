#pragma once

#include "aviformat.h"

#include <cstring>

namespace kavro {

// One record of a recording held by value, as the store keeps it; all zero when made empty.
template <typename Record> class AviRecord
{
public:
    AviRecord() { std::memset(&m_data, 0, sizeof m_data); }
    explicit AviRecord(const Record* record) : AviRecord()
    {
        if (record)
            std::memcpy(&m_data, record, sizeof m_data);
    }

    const Record& data() const { return m_data; }
    void setData(const Record& data) { m_data = data; }

private:
    Record m_data;
};

using KVRAviGpsData = AviRecord<_AVI_GPS_DATA_T>;
using KVRAviGSensorData = AviRecord<_AVI_GSENSOR_DATA_T>;

inline KVRAviGpsData aviGpsDataWithData(const _AVI_GPS_DATA_T* record)
{
    return KVRAviGpsData(record);
}

inline KVRAviGSensorData aviGSensorDataWithData(const _AVI_GSENSOR_DATA_T* record)
{
    return KVRAviGSensorData(record);
}

} // namespace kavro
