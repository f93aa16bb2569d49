#pragma once

#include <QSize>
#include <QString>

#include <cstdint>

namespace kavro::camsim {

// What kind of card to make.
struct CardOptions
{
    QString outDir;
    QString imagePath; // a FAT32 image of the card as well, when set
    std::uint64_t seed = 1;
    double minutes = 6;           // total length of the recordings, all drives together
    int secondsPerRecording = 60; // length of an always recording; the others are half as long
    QSize frontSize{1280, 720};
    QSize rearSize{640, 360};
    int fps = 30;
    int frontQuality = 23; // x264 rate factors: the rear camera is the softer one
    int rearQuality = 27;

    // A card of a few seconds per recording and small frames, for tests.
    static CardOptions quick()
    {
        CardOptions options;
        options.minutes = 0.4;
        options.secondsPerRecording = 4;
        options.frontSize = QSize(192, 108);
        options.rearSize = QSize(128, 72);
        return options;
    }
};

} // namespace kavro::camsim
