#pragma once

#include "aviformat.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace kavro {

// Writes AVI files in the camera's layout: a header padded so that the stream-data list starts at
// byte 14132, interleaved chunks of up to three streams (00dc video, 01wb audio, 02sb telemetry),
// and an idx1 index. Used by the tests and by the camera simulator.
//
// The telemetry stream is a "dats" data stream that players ignore. Its chunks are always "02sb",
// so without audio stream 1 is an empty data stream, not a silent audio track. The file is
// written beside the target and replaces it only at a successful close(); a writer destroyed
// before that leaves any old file untouched. Sizes stay within AVI 1.0's 4 GB: a chunk that would
// go past it is refused and the file written so far can still be closed.
class KVRAviWriter
{
public:
    struct VideoFormat
    {
        QByteArray fourcc = "MJPG"; // compression handler and biCompression
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        std::uint32_t fpsNumerator = 30;
        std::uint32_t fpsDenominator = 1;
    };
    struct AudioFormat
    {
        std::uint16_t formatTag = 1; // WAVE_FORMAT_PCM
        std::uint16_t channels = 1;
        std::uint32_t sampleRate = 16000;
        std::uint16_t bitsPerSample = 16;
    };
    struct Layout
    {
        VideoFormat video;
        std::optional<AudioFormat> audio; // no audio stream when absent
        bool telemetry = true;            // the "02sb" stream
    };

    explicit KVRAviWriter(Layout layout);
    ~KVRAviWriter();
    KVRAviWriter(const KVRAviWriter&) = delete;
    KVRAviWriter& operator=(const KVRAviWriter&) = delete;

    bool open(const QString& path);
    // Each add returns false when the layout has no such stream, a write failed or the chunk would
    // pass 4 GB; errorString() says which.
    bool addVideoFrame(const QByteArray& data, bool keyFrame = true);
    bool addAudioChunk(const QByteArray& data);
    bool addTelemetryChunk(const QByteArray& data); // one whole record: 552 or 24 bytes
    bool addTelemetryRecord(const _AVI_GPS_DATA_T& record);
    bool addTelemetryRecord(const _AVI_GSENSOR_DATA_T& record);
    // Writes the index and the final sizes and closes the file; false when any write failed.
    bool close();

    QString errorString() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace kavro
