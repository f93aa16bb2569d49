#pragma once

#include "cardplan.h"
#include "framerenderer.h"

#include <QString>

namespace kavro::camsim {

struct CardSummary
{
    int recordingFiles = 0;
    int otherFiles = 0;
    qint64 bytes = 0;
};

// Writes the card of a plan: every recording (rendered, encoded, muxed with its sound and
// telemetry), the files the list must leave out, the camera's own files and, when asked for, the
// FAT32 image. The output folder must be new or empty, so that nothing of the user's is
// overwritten.
class CardGenerator
{
public:
    explicit CardGenerator(const CardOptions& options);

    const CardPlan& plan() const { return m_plan; }
    bool generate(QString* error);
    const CardSummary& summary() const { return m_summary; }

    // What the camera of one channel sees at a frame of a recording.
    FrameScene sceneAt(std::size_t recording, int frame) const;

private:
    int frameCount(const RecordingPlan& recording) const;
    bool encodeVideo(const QString& workDir, QString* error);
    bool writeRecordings(const QString& workDir, QString* error);
    bool writeStrays(QString* error);
    bool finishFile(const QString& relativePath, const QDateTime& cameraTime, QString* error);

    CardPlan m_plan;
    CardSummary m_summary;
};

} // namespace kavro::camsim
