#include "recordingprobe.h"

#include "aviformat.h"
#include "kvrblackboxdata.h"
#include "recordingfile.h"

#include <algorithm>
#include <cstring>

namespace kavro {

namespace {

constexpr std::int64_t HeadBytes = avi::TotalFramesOffset + 4;

} // namespace

RecordingProbe RecordingProbe::probe(const std::string& path)
{
    RecordingProbe probe;
    RecordingFile file(path);
    if (!file.open()) {
        probe.m_openError = file.errorString();
        return probe;
    }
    char head[HeadBytes];
    const std::int64_t got = file.readAt(0, head, HeadBytes);
    if (got < 12 || std::memcmp(head, "RIFF", 4) != 0 || std::memcmp(head + 8, "AVI ", 4) != 0) {
        probe.m_status = Status::NotAvi;
        return probe;
    }
    probe.m_status = Status::Readable;
    if (got < HeadBytes || std::memcmp(head + avi::MainHeaderIdOffset, "avih", 4) != 0)
        return probe;
    const std::uint32_t microSecPerFrame = avi::u32At(head + avi::MicroSecPerFrameOffset);
    const std::uint32_t totalFrames = avi::u32At(head + avi::TotalFramesOffset);
    if (microSecPerFrame == 0 || totalFrames == 0 || !file.hasIndex())
        return probe;
    probe.m_headerSeconds = double(totalFrames) * microSecPerFrame / 1e6;
    return probe;
}

std::optional<double> RecordingProbe::telemetrySeconds(const KVRBlackBoxData& store)
{
    std::optional<std::uint32_t> first;
    std::uint32_t last = 0;
    auto take = [&](std::uint32_t time) {
        first = first ? std::min(*first, time) : time;
        last = std::max(last, time);
    };
    for (const KVRAviGSensorData& sample : store.vGSensorData())
        take(sample.data().timestamp);
    for (const KVRBlackBoxData::GpsRecordFix& entry : store.gpsRecords())
        take(entry.record->data().nTimestamp);
    if (!first)
        return std::nullopt;
    return (last - *first) / 1000.0;
}

} // namespace kavro
