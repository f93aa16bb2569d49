#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace kavro {

// Where the formatting helper learns about disks; tests point it at fixture folders.
struct FormatTargetFiles
{
    QString sysRoot = QStringLiteral("/sys");
    QString mountInfo = QStringLiteral("/proc/self/mountinfo");
};

// What the helper decided about a device node.
struct FormatTargetCheck
{
    // Why it must not be formatted; empty when it may.
    QString refusal;
    // A whole medium (no partition of one): mkfs.fat then needs -I.
    bool wholeDisk = false;
};

// A device may be formatted only when it is the block device of a removable USB disk, or a
// partition of one, that nothing has mounted, and that holds none of /, /boot and /home. Regular
// files, loop and other virtual devices and internal disks are refused. Everything is read from
// the device node itself, sysfs and the mount table.
FormatTargetCheck checkFormatTarget(const QString& device, const FormatTargetFiles& files = {});

// The camera's card: sectors per cluster for a medium of this size, 32 below 7 GiB, else 128.
// The formatting window shows the same number with "KB".
int clusterSizeByVolumeSizeInKB(std::uint64_t volumeBytes);

// The camera's layout for mkfs.fat: FAT32 labelled KAVRO, 2 FATs, backup boot sector 6, 32
// reserved sectors kept exactly, the given sectors per cluster; -I for a whole medium; a fixed
// volume id when one is given (the simulator's cards are the same every time).
QStringList mkfsFatArguments(const QString& target, int sectorsPerCluster, bool wholeDisk,
                             std::optional<std::uint32_t> volumeId = std::nullopt);

} // namespace kavro
