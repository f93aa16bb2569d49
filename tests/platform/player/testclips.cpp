#include "testclips.h"
#include "testsupport.h"

#include <QDir>

namespace kavro::test {

namespace {

bool runFfmpeg(const QStringList& arguments, QString* error)
{
    const ToolResult ffmpeg =
        runProgram("ffmpeg", QStringList{"-hide_banner", "-loglevel", "error", "-y"} + arguments);
    if (!ffmpeg.crashed && ffmpeg.exitCode == 0)
        return true;
    *error = "ffmpeg failed: " + QString::fromLocal8Bit(ffmpeg.err);
    return false;
}

} // namespace

bool TestClips::make(const QString& folder, QString* error)
{
    const QDir dir(folder);
    front = dir.filePath("alwa_20240131_120000_F.avi");
    rear = dir.filePath("alwa_20240131_120000_R.avi");
    const QStringList video{"-c:v", "mjpeg", "-q:v", "2"};
    return runFfmpeg(QStringList{"-f", "lavfi", "-i", "testsrc=size=160x90:rate=30:duration=3",
                                 "-f", "lavfi", "-i", "sine=frequency=440:sample_rate=22050",
                                 "-shortest", "-c:a", "pcm_s16le"} +
                         video + QStringList{front},
                     error) &&
           runFfmpeg(QStringList{"-f", "lavfi", "-i",
                                 "color=c=0xff0000:size=160x90:rate=30:duration=3", "-an"} +
                         video + QStringList{rear},
                     error);
}

} // namespace kavro::test
