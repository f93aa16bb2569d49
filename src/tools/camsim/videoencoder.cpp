#include "videoencoder.h"

#include "camsimlog.h"

#include <QStandardPaths>

namespace kavro::camsim {

namespace {

constexpr qint64 PipeBacklog = 16 * 1024 * 1024;
constexpr int FinishTimeoutMs = 30 * 60 * 1000;

// BT.709 studio range in 8-bit integer steps, chroma from the mean of each 2 x 2 block. Done here
// rather than by ffmpeg: it is quicker, and a third of the bytes go through the pipe.
void toI420(const QImage& frame, QByteArray& out)
{
    const int width = frame.width();
    const int height = frame.height();
    const qsizetype lumaSize = qsizetype(width) * height;
    out.resize(lumaSize + 2 * (lumaSize / 4));
    auto* luma = reinterpret_cast<unsigned char*>(out.data());
    unsigned char* blue = luma + lumaSize;
    unsigned char* red = blue + lumaSize / 4;
    for (int y = 0; y < height; y += 2) {
        const auto* top = reinterpret_cast<const QRgb*>(frame.constScanLine(y));
        const auto* bottom = reinterpret_cast<const QRgb*>(frame.constScanLine(y + 1));
        unsigned char* lumaTop = luma + qsizetype(y) * width;
        unsigned char* lumaBottom = lumaTop + width;
        for (int x = 0; x < width; x += 2) {
            int r = 0, g = 0, b = 0;
            for (const QRgb pixel : {top[x], top[x + 1], bottom[x], bottom[x + 1]}) {
                r += qRed(pixel);
                g += qGreen(pixel);
                b += qBlue(pixel);
            }
            auto y709 = [](QRgb p) {
                return static_cast<unsigned char>(
                    ((47 * qRed(p) + 157 * qGreen(p) + 16 * qBlue(p) + 128) >> 8) + 16);
            };
            lumaTop[x] = y709(top[x]);
            lumaTop[x + 1] = y709(top[x + 1]);
            lumaBottom[x] = y709(bottom[x]);
            lumaBottom[x + 1] = y709(bottom[x + 1]);
            const qsizetype at = qsizetype(y / 2) * (width / 2) + x / 2;
            // Sums of four pixels: shift by two more.
            blue[at] = static_cast<unsigned char>(((-26 * r - 87 * g + 112 * b + 512) >> 10) + 128);
            red[at] = static_cast<unsigned char>(((112 * r - 102 * g - 10 * b + 512) >> 10) + 128);
        }
    }
}

} // namespace

VideoEncoder::VideoEncoder(EncoderSettings settings) : m_settings(settings) {}

VideoEncoder::~VideoEncoder()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QString VideoEncoder::ffmpegProgram()
{
    return QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
}

bool VideoEncoder::fail(const QString& message)
{
    m_error = message;
    qCWarning(lcCamsim, "%s", qUtf8Printable(message));
    return false;
}

bool VideoEncoder::start(const QString& outputFile)
{
    const QString program = ffmpegProgram();
    if (program.isEmpty())
        return fail(QStringLiteral("ffmpeg is not installed"));
    const QSize size = m_settings.size;
    const QString fps = QString::number(m_settings.fps);
    QStringList arguments = {"-nostats", "-hide_banner", "-loglevel", "error"};
    arguments << "-f"
              << "rawvideo"
              << "-pix_fmt"
              << "yuv420p"
              << "-s" << QStringLiteral("%1x%2").arg(size.width()).arg(size.height()) << "-r" << fps
              << "-i"
              << "-";
    arguments << "-an"
              << "-c:v"
              << "libx264"
              << "-preset"
              << "veryfast"
              << "-crf" << QString::number(m_settings.quality) << "-bf"
              << "0"
              << "-g" << fps << "-keyint_min" << fps << "-sc_threshold"
              << "0"
              << "-threads"
              << "2"
              << "-x264-params"
              << "aud=1:repeat-headers=1";
    // Tell players which colours the samples mean, as toI420() made them.
    arguments << "-colorspace"
              << "bt709"
              << "-color_primaries"
              << "bt709"
              << "-color_trc"
              << "bt709"
              << "-color_range"
              << "tv";
    arguments << "-f"
              << "h264"
              << "-y" << outputFile;
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.start(program, arguments);
    if (!m_process.waitForStarted())
        return fail(QStringLiteral("cannot start ffmpeg: %1").arg(m_process.errorString()));
    return true;
}

bool VideoEncoder::addFrame(const QImage& frame)
{
    if (frame.size() != m_settings.size || frame.format() != QImage::Format_RGB32)
        return fail(QStringLiteral("frame of the wrong size or format"));
    if (m_process.state() != QProcess::Running)
        return fail(QStringLiteral("ffmpeg stopped: %1")
                        .arg(QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed()));
    toI420(frame, m_planes);
    if (m_process.write(m_planes) != m_planes.size())
        return fail(QStringLiteral("cannot feed ffmpeg: %1").arg(m_process.errorString()));
    // Keep the pipe's backlog bounded; ffmpeg takes frames as fast as it encodes them.
    while (m_process.bytesToWrite() > PipeBacklog) {
        if (!m_process.waitForBytesWritten(FinishTimeoutMs))
            return fail(
                QStringLiteral("ffmpeg does not take frames: %1").arg(m_process.errorString()));
    }
    ++m_framesIn;
    return true;
}

bool VideoEncoder::finish()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(FinishTimeoutMs))
        return fail(QStringLiteral("ffmpeg did not finish"));
    const QString messages = QString::fromLocal8Bit(m_process.readAllStandardError()).simplified();
    if (m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() != 0)
        return fail(QStringLiteral("ffmpeg failed: %1").arg(messages));
    return true;
}

} // namespace kavro::camsim
