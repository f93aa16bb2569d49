#pragma once

#include "accessunitreader.h"
#include "telemetrysynth.h"

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

namespace kavro::camsim {

// Everything that goes into one recording file.
struct RecordingStreams
{
    QSize frameSize;
    int fps = 30;
    std::vector<EncodedFrame> frames;
    std::optional<QByteArray> audio; // 16-bit mono PCM; no audio stream when absent
    int sampleRate = 16000;
    TelemetryPlan telemetry;
};

// Muxes a recording into the camera's AVI layout with the project's AVI writer, interleaved the
// way the camera does it: every 100 ms the video frames of that time, a block of sound, the
// G-sensor record and, once a second, the GPS record.
class RecordingWriter
{
public:
    static constexpr double Tick = 0.1; // s

    static bool write(const QString& path, const RecordingStreams& streams, QString* error);
};

} // namespace kavro::camsim
