#include "kvrblackboxdata.h"

#include "common/corelog.h"
#include "recordingfile.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

namespace kavro {

namespace {

// The index is read in blocks rather than entry by entry; the walk over it is the same.
constexpr std::int64_t IndexBlockSize = 64 * 1024;

// Whether any of eight bytes ends a sentence or starts one ('\r', '\n', '\0', '$'): most of a
// GPS record's text is neither, and is passed over eight bytes at a time.
bool anySentenceMark(const char* bytes)
{
    constexpr std::uint64_t Ones = 0x0101010101010101u;
    constexpr std::uint64_t Highs = 0x8080808080808080u;
    std::uint64_t v = 0;
    std::memcpy(&v, bytes, sizeof v);
    auto hasZeroByte = [](std::uint64_t x) { return (x - Ones) & ~x & Highs; };
    return (hasZeroByte(v) | hasZeroByte(v ^ (Ones * '\r')) | hasZeroByte(v ^ (Ones * '\n')) |
            hasZeroByte(v ^ (Ones * '$'))) != 0;
}

} // namespace

bool KVRBlackBoxData::ExtractStreamInformation(const std::string& path)
{
    CoreLog::print(LogTelemetry, CoreLog::Level::Debug, "#############################   START");
    clear();

    RecordingFile file(path);
    char head[12];
    if (!file.open() || file.readAt(0, head, sizeof head) != sizeof head ||
        std::memcmp(head, "RIFF", 4) != 0 || std::memcmp(head + 8, "AVI ", 4) != 0)
        return false;
    const std::uint64_t riffEnd = std::uint64_t(avi::u32At(head + 4)) + 8;

    char sizeField[4];
    std::uint64_t next = file.size(); // too short to hold an index
    if (file.readAt(avi::MoviListSizeOffset, sizeField, 4) == 4) {
        const std::uint32_t listSize = avi::u32At(sizeField);
        next = std::uint64_t(avi::IndexStartOffset) + listSize;
        CoreLog::print(LogTelemetry, CoreLog::Level::Debug, "Listmovsize=0x%x IdxAddr=0x%llx",
                       listSize, static_cast<unsigned long long>(next));
    }

    if (m_recoverCutShort && !file.hasIndex()) {
        m_recovered = true;
        CoreLog::print(LogTelemetry, CoreLog::Level::Debug,
                       "%s has no index: recovering from the movi chunks", path.c_str());
        walkMoviChunks(file, path);
    } else {
        walkIndex(file, next, riffEnd, path);
    }

    if (m_waitAfterReading)
        std::this_thread::sleep_for(std::chrono::seconds(1));
    mergeGpsIntoSamples();
    CoreLog::print(LogTelemetry, CoreLog::Level::Debug, "#############################  FINISH");
    return true;
}

void KVRBlackBoxData::walkIndex(RecordingFile& file, std::uint64_t next, std::uint64_t riffEnd,
                                const std::string& path)
{
    // Each pass consumes one 16-byte entry, so the walk ends at the file's end at the latest.
    bool first = true;
    for (;;) {
        const char* entry = nullptr;
        if (file.bytesAt(next, avi::IndexEntrySize, IndexBlockSize, &entry) <
            std::int64_t(avi::IndexEntrySize))
            break; // the last entry is cut off by the end of the file
        std::int64_t lastRead = 4;
        const bool telemetry = std::memcmp(entry, avi::TelemetryChunkId, 4) == 0;
        if (telemetry)
            lastRead = readTelemetryChunk(
                file, std::uint64_t(avi::ChunkDataOffset) + avi::u32At(entry + 8),
                avi::u32At(entry + 12));
        next += avi::IndexEntrySize;
        // Only a telemetry chunk adds records, so the limits are looked at after one (and once
        // at the start, for limits already reached); most entries are video frames.
        const bool mayBeAtLimit = telemetry || first;
        first = false;
        if (next > riffEnd || lastRead < 1 || file.size() <= next ||
            (mayBeAtLimit && stopAtLimit(path)))
            break;
    }
}

void KVRBlackBoxData::walkMoviChunks(RecordingFile& file, const std::string& path)
{
    file.walkMoviChunks([&](const char* id, std::uint64_t data, std::uint32_t size) {
        if (std::memcmp(id, avi::TelemetryChunkId, 4) == 0)
            readTelemetryChunk(file, data, size);
        return !stopAtLimit(path);
    });
}

std::int64_t KVRBlackBoxData::readTelemetryChunk(RecordingFile& file, std::uint64_t data,
                                                 std::uint32_t size)
{
    if (size > avi::GSensorChunkMaxSize) {
        _AVI_GPS_DATA_T record;
        std::memset(&record, 0, sizeof record);
        const std::int64_t read = file.readAt(data, &record, sizeof record);
        readGpsRecord(record);
        return read;
    }
    _AVI_GSENSOR_DATA_T record;
    std::memset(&record, 0, sizeof record);
    const std::int64_t read = file.readAt(data, &record, sizeof record);
    if (read == sizeof record)
        readGSensorRecord(record);
    return read;
}

bool KVRBlackBoxData::stopAtLimit(const std::string& path)
{
    if (!atLimit())
        return false;
    m_limitReached = true;
    CoreLog::print(LogTelemetry, CoreLog::Level::Warning,
                   "%s: more telemetry than a recording can hold; read stopped", path.c_str());
    return true;
}

bool KVRBlackBoxData::atLimit()
{
    return m_GSensors.size() >= m_limits.gsensorRecords ||
           m_gpsRecords.size() >= m_limits.gpsRecords || m_NMEAs.size() >= m_limits.nmeaFixes;
}

// Records with another tag are not the camera's and are left out, so that they neither show as
// samples nor move the merge. A short GPS read keeps zeros where nothing was read; its text is
// still worth parsing.
void KVRBlackBoxData::readGpsRecord(const _AVI_GPS_DATA_T& record)
{
    if (record.header != avi::GpsRecordTag)
        return;
    _AVI_GPS_DATA_T copy = record;
    ParseNMEA(copy.RawData, std::min<std::uint32_t>(copy.nLen, avi::GpsRawDataSize));
    m_gpsRecords.push_back(
        {std::make_shared<const KVRAviGpsData>(aviGpsDataWithData(&copy)), m_NMEAParser.current()});
}

// Only whole records are taken: a record cut short by the end of the file would show made-up
// axes.
void KVRBlackBoxData::readGSensorRecord(const _AVI_GSENSOR_DATA_T& record)
{
    if (record.header != avi::GSensorRecordTag)
        return;
    m_vGSensorData.push_back(aviGSensorDataWithData(&record));
    ParseGSensor(&record, sizeof record);
}

// Each GPS record takes the samples from the first one without a record up to and including
// the first sample at or after its own time, in tenths of a second.
void KVRBlackBoxData::mergeGpsIntoSamples()
{
    const std::size_t samples = m_vGSensorData.size();
    std::size_t j = 0;
    for (std::size_t g = 0; g < m_gpsRecords.size(); ++g) {
        const std::uint32_t gpsTenths = m_gpsRecords[g].record->data().nTimestamp / 100;
        bool stopped = false;
        while (j < samples) {
            m_vGpsData.push_back(m_gpsRecords[g].record);
            m_vGpsRecordIndex.push_back(static_cast<std::uint32_t>(g));
            const std::uint32_t sampleTenths = m_vGSensorData[j++].data().timestamp / 100;
            if (sampleTenths >= gpsTenths) {
                stopped = true;
                break;
            }
        }
        if (!stopped)
            break; // every sample has its record
    }
}

bool KVRBlackBoxData::ParseNMEA(char* text, std::uint32_t bufferSize)
{
    if (!text)
        return false;
    std::uint32_t start = 0;
    for (std::uint32_t i = 0; i < bufferSize; ++i) {
        if (bufferSize - i >= 8 && !anySentenceMark(text + i)) {
            i += 7;
            continue;
        }
        const char c = text[i];
        if (c == '\r' || c == '\n' || c == '\0') {
            text[i] = '\0';
            const std::string_view line(text + start, i - start);
            if (line.size() >= 2 && line[0] == '$' && line[1] == 'G' &&
                m_NMEAs.size() < m_limits.nmeaFixes) {
                m_NMEAParser.parse(line);
                m_NMEAs.push_back(m_NMEAParser.current().duplicate());
            }
            start = i + 1;
        } else if (c == '$') {
            start = i; // text before a '$' on the same line is noise
        }
    }
    return true;
}

bool KVRBlackBoxData::ParseGSensor(const _AVI_GSENSOR_DATA_T* data, std::uint32_t bufferSize)
{
    if (!data || bufferSize < sizeof(_AVI_GSENSOR_DATA_T))
        return false;
    constexpr float Scale = 0.00390625f; // 1/256 g per count
    m_GSensors.emplace_back(static_cast<float>(data->xAxis) * Scale,
                            static_cast<float>(data->yAxis) * Scale,
                            static_cast<float>(data->zAxis) * Scale);
    return true;
}

void KVRBlackBoxData::clear()
{
    m_NMEAParser.clear();
    m_NMEAs.clear();
    m_GSensors.clear();
    m_vGSensorData.clear();
    m_vGpsData.clear();
    m_vGpsRecordIndex.clear();
    m_gpsRecords.clear();
    m_limitReached = false;
    m_recovered = false;
}

std::uint64_t KVRBlackBoxData::frameCount() const
{
    return m_GSensors.size() <= 1 ? 1 : m_GSensors.size() - 1;
}

} // namespace kavro
