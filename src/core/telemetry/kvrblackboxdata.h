#pragma once

#include "avirecord.h"
#include "kvrgpsdata.h"
#include "kvrgsensor.h"
#include "kvrnmeasentenceparser.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kavro {

class RecordingFile;

// The telemetry of one recording: G-sensor samples and GPS records read through the AVI index,
// the NMEA fix after every sentence, and per sample the GPS record in force at its time.
// Extraction is not thread-safe; nothing may read the lists while it runs.
class KVRBlackBoxData
{
public:
    using GpsRecordRef = std::shared_ptr<const KVRAviGpsData>;

    // A GPS record in file order with the fix as it stood after the record's sentences; the
    // route exports take their points and hemispheres from these.
    struct GpsRecordFix
    {
        GpsRecordRef record;
        KVRGpsData fix;
    };

    // Bounds on what one file may put in memory. A camera writes about ten samples and one GPS
    // record a second, so these hold a day of recording; a file that claims more is hostile and
    // its walk stops there.
    struct Limits
    {
        std::size_t gsensorRecords = std::size_t(1) << 20;
        std::size_t gpsRecords = std::size_t(1) << 17;
        std::size_t nmeaFixes = std::size_t(1) << 21;
    };

    // Clears the store and reads the file's telemetry into it. False when the file can't be
    // opened or isn't RIFF/AVI; true otherwise, also when it holds no telemetry.
    bool ExtractStreamInformation(const std::string& path);

    // Splits bufferSize bytes of NMEA text into lines, writing NULs at the separators, and
    // appends the fix after every line that starts with "$G".
    bool ParseNMEA(char* text, std::uint32_t bufferSize);
    // Appends the record's sample in g; false for a missing or short record.
    bool ParseGSensor(const _AVI_GSENSOR_DATA_T* data, std::uint32_t bufferSize);

    void clear();
    // Samples less one, at least 1.
    std::uint64_t frameCount() const;

    // A recording cut short by a power loss has no index (the camera writes it last). With
    // recovery on, such a file's telemetry is read by walking the chunks of its movi list in file
    // order instead, up to the last whole chunk present. A file with an index is always read
    // through it.
    void setRecoverCutShort(bool recover) { m_recoverCutShort = recover; }
    bool recoverCutShort() const { return m_recoverCutShort; }
    // True when the last extraction found no index and recovered the telemetry by the walk.
    bool recovered() const { return m_recovered; }

    // The player's opening sequence waits a second after reading; nobody else needs to.
    void setWaitAfterReading(bool wait) { m_waitAfterReading = wait; }
    bool waitAfterReading() const { return m_waitAfterReading; }
    void setLimits(const Limits& limits) { m_limits = limits; }
    const Limits& limits() const { return m_limits; }
    // True when the last extraction stopped at one of the limits.
    bool limitReached() const { return m_limitReached; }

    const KVRNMEASentenceParser& NMEAParser() const { return m_NMEAParser; }
    const std::vector<KVRGpsData>& NMEAs() const { return m_NMEAs; }
    const std::vector<KVRGSensor>& GSensors() const { return m_GSensors; }
    const std::vector<KVRAviGSensorData>& vGSensorData() const { return m_vGSensorData; }
    // Entry k is the GPS record in force at G-sensor sample k; may be shorter than the samples.
    const std::vector<GpsRecordRef>& vGpsData() const { return m_vGpsData; }
    // For each entry of vGpsData(), its position in gpsRecords().
    const std::vector<std::uint32_t>& vGpsRecordIndex() const { return m_vGpsRecordIndex; }
    const std::vector<GpsRecordFix>& gpsRecords() const { return m_gpsRecords; }

private:
    bool atLimit();
    bool stopAtLimit(const std::string& path);
    void walkIndex(RecordingFile& file, std::uint64_t next, std::uint64_t riffEnd,
                   const std::string& path);
    void walkMoviChunks(RecordingFile& file, const std::string& path);
    // Reads the record of one "02sb" chunk; returns the bytes read.
    std::int64_t readTelemetryChunk(RecordingFile& file, std::uint64_t data, std::uint32_t size);
    void readGpsRecord(const _AVI_GPS_DATA_T& record);
    void readGSensorRecord(const _AVI_GSENSOR_DATA_T& record);
    void mergeGpsIntoSamples();

    KVRNMEASentenceParser m_NMEAParser;
    std::vector<KVRGpsData> m_NMEAs;
    std::vector<KVRGSensor> m_GSensors;
    std::vector<KVRAviGSensorData> m_vGSensorData;
    std::vector<GpsRecordRef> m_vGpsData;
    std::vector<std::uint32_t> m_vGpsRecordIndex;
    std::vector<GpsRecordFix> m_gpsRecords;
    Limits m_limits;
    bool m_limitReached = false;
    bool m_waitAfterReading = false;
    bool m_recoverCutShort = false;
    bool m_recovered = false;
};

} // namespace kavro
