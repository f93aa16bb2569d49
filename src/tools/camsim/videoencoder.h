#pragma once

#include <QByteArray>
#include <QImage>
#include <QProcess>
#include <QSize>
#include <QString>

namespace kavro::camsim {

struct EncoderSettings
{
    QSize size;
    int fps = 30;
    int quality = 23; // x264 constant rate factor: lower is sharper and larger
};

// H.264 through the ffmpeg command: frames are piped in raw, the stream goes to a file in
// Annex B form with a delimiter before every access unit (see AccessUnitReader). A key frame
// every second on the second, no B-frames (every chunk is shown in the order it is stored),
// parameter sets repeated at each key frame so that a player can start anywhere. One encoder
// takes all recordings of a channel: each recording lasts whole seconds, so each starts on a
// key frame and stands on its own, and ffmpeg starts once instead of once a file. A fixed thread
// count keeps the output the same from run to run.
class VideoEncoder
{
public:
    explicit VideoEncoder(EncoderSettings settings);
    ~VideoEncoder();
    VideoEncoder(const VideoEncoder&) = delete;
    VideoEncoder& operator=(const VideoEncoder&) = delete;

    bool start(const QString& outputFile);
    bool addFrame(const QImage& frame); // Format_RGB32, of the configured size
    // Waits until ffmpeg has written everything; false when it failed.
    bool finish();
    int frameCount() const { return m_framesIn; }
    QString errorString() const { return m_error; }

    static QString ffmpegProgram();

private:
    bool fail(const QString& message);

    EncoderSettings m_settings;
    QProcess m_process;
    QString m_error;
    QByteArray m_planes; // one frame in the encoder's pixel format, reused
    int m_framesIn = 0;
};

} // namespace kavro::camsim
