#include "cardrules.h"

#include <QDir>
#include <QFileInfo>

#include <functional>

namespace kavro {

namespace {

bool holdsSettingFile(const TKUSBDiskEntity& disk)
{
    QString root = disk.mountedPath();
    return !root.isEmpty() && QFileInfo(QDir(root).filePath(SettingFileName)).isFile();
}

bool isLabelled(const TKUSBDiskEntity& disk)
{
    return disk.volumeName() == QLatin1String(CardVolumeLabel);
}

} // namespace

std::optional<TKUSBDiskEntity> findCardDisk(const QList<TKUSBDiskEntity>& disks)
{
    using Test = std::function<bool(const TKUSBDiskEntity&)>;
    const Test passes[] = {
        [](const TKUSBDiskEntity& d) {
            return isLabelled(d) && d.writable() && holdsSettingFile(d);
        },
        [](const TKUSBDiskEntity& d) { return isLabelled(d) && d.writable(); },
        [](const TKUSBDiskEntity& d) { return isLabelled(d); },
        [](const TKUSBDiskEntity& d) { return d.writable(); },
        [](const TKUSBDiskEntity&) { return true; },
    };
    for (const Test& test : passes) {
        for (const TKUSBDiskEntity& disk : disks) {
            if (test(disk))
                return disk;
        }
    }
    return std::nullopt;
}

} // namespace kavro
