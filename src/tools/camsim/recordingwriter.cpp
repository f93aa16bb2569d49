#include "recordingwriter.h"

#include "telemetry/kvraviwriter.h"

#include <algorithm>
#include <cmath>

namespace kavro::camsim {

namespace {

template <typename Record> QByteArray bytesOf(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), sizeof record);
}

} // namespace

bool RecordingWriter::write(const QString& path, const RecordingStreams& streams, QString* error)
{
    KVRAviWriter::Layout layout;
    layout.video.fourcc = "H264";
    layout.video.width = static_cast<std::uint32_t>(streams.frameSize.width());
    layout.video.height = static_cast<std::uint32_t>(streams.frameSize.height());
    layout.video.fpsNumerator = static_cast<std::uint32_t>(streams.fps);
    layout.video.fpsDenominator = 1;
    if (streams.audio) {
        KVRAviWriter::AudioFormat audio;
        audio.sampleRate = static_cast<std::uint32_t>(streams.sampleRate);
        layout.audio = audio;
    }
    layout.telemetry = true;

    KVRAviWriter writer(layout);
    bool ok = writer.open(path);
    const TelemetryPlan& telemetry = streams.telemetry;
    const std::size_t frameCount = streams.frames.size();
    const auto audioChunk = static_cast<qsizetype>(std::lround(streams.sampleRate * Tick)) * 2;
    const qsizetype audioSize = streams.audio ? streams.audio->size() : 0;
    const auto videoTicks = static_cast<std::size_t>(
        std::ceil(static_cast<double>(frameCount) / (streams.fps * Tick) - 1e-9));
    const std::size_t ticks =
        std::max({videoTicks, telemetry.gsensor.size(),
                  static_cast<std::size_t>((audioSize + audioChunk - 1) / audioChunk)});
    std::size_t frame = 0;
    std::size_t gps = 0;
    for (std::size_t tick = 0; ok && tick < ticks; ++tick) {
        // Frames whose time falls before the end of this tick.
        while (ok && frame < frameCount &&
               static_cast<double>(frame) <
                   static_cast<double>(tick + 1) * streams.fps * Tick - 1e-9) {
            ok = writer.addVideoFrame(streams.frames[frame].data, streams.frames[frame].keyFrame);
            ++frame;
        }
        const qsizetype audioAt = static_cast<qsizetype>(tick) * audioChunk;
        if (ok && audioAt < audioSize)
            ok = writer.addAudioChunk(streams.audio->mid(audioAt, audioChunk));
        if (ok && tick < telemetry.gsensor.size())
            ok = writer.addTelemetryChunk(bytesOf(telemetry.gsensor[tick]));
        while (ok && gps < telemetry.gps.size() && telemetry.gpsAfter[gps] <= tick + 1) {
            ok = writer.addTelemetryChunk(bytesOf(telemetry.gps[gps]));
            ++gps;
        }
    }
    while (ok && gps < telemetry.gps.size())
        ok = writer.addTelemetryChunk(bytesOf(telemetry.gps[gps++]));
    while (ok && frame < frameCount) {
        ok = writer.addVideoFrame(streams.frames[frame].data, streams.frames[frame].keyFrame);
        ++frame;
    }
    ok = ok && writer.close();
    if (!ok && error)
        *error = writer.errorString();
    return ok;
}

} // namespace kavro::camsim
