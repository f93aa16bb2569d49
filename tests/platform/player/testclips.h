#pragma once

#include <QString>

namespace kavro::test {

// Short recordings made with ffmpeg for the player tests: 160x90 pixels, 30 frames a second,
// MJPEG in AVI, named like the camera's files.
struct TestClips
{
    QString front; // test pattern with a 440 Hz PCM sound track, 3 s
    QString rear;  // solid red without sound, 3 s

    // Writes the clips into the folder; false with the reason when ffmpeg fails or is missing.
    bool make(const QString& folder, QString* error);
};

} // namespace kavro::test
