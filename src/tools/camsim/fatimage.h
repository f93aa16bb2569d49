#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

namespace kavro::camsim {

// A FAT32 image file of a card folder, formatted the way the camera formats its card (label
// KAVRO, two FATs, backup boot sector at 6, 32 reserved sectors) and filled with mtools, so no
// root rights or mounting are needed. The image is built beside the target and replaces it only
// once it is complete and fsck.fat finds it clean.
class FatImage
{
public:
    static constexpr std::uint32_t MinimumClusters = 66000; // FAT32 needs at least 65525
    static constexpr qint64 MinimumSize = 40LL * 1024 * 1024;

    struct Geometry
    {
        qint64 bytes = 0;
        int sectorsPerCluster = 1;
    };

    // An image size with room for the content and the largest cluster size (up to 32 KB) that
    // still gives FAT32 enough clusters.
    static Geometry geometryFor(qint64 contentBytes);

    // volumeId: the serial number; formatted: the moment the card was formatted (the label's
    // date), also the date of anything whose own time is not kept.
    static bool create(const QString& imagePath, const QString& cardDir, std::uint32_t volumeId,
                       const QDateTime& formatted, QString* error);
};

} // namespace kavro::camsim
