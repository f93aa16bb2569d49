#include "kvrdisksource.h"

#include "cardlog.h"
#include "cardrules.h"

#include <QDir>
#include <QFileInfo>

namespace kavro {

KVRDiskSource::~KVRDiskSource() = default;

QList<TKUSBDiskEntity> KVRDiskSource::usbDiskEntities() const
{
    QList<TKUSBDiskEntity> disks = listUsbDiskEntities();
    for (const TKUSBDiskEntity& disk : disks)
        qCDebug(lcCard) << "USB volume" << disk.mountedPath() << disk.deviceFilePath();
    return disks;
}

std::optional<QUrl> KVRDiskSource::usbVolumeContainingFile(const QString& relativePath) const
{
    for (const TKUSBDiskEntity& disk : usbDiskEntities()) {
        QString root = disk.mountedPath();
        if (!root.isEmpty() && QFileInfo::exists(QDir(root).filePath(relativePath)))
            return disk.mountedURL();
    }
    return std::nullopt;
}

std::optional<TKUSBDiskEntity> KVRDiskSource::findCardDisk() const
{
    return kavro::findCardDisk(usbDiskEntities());
}

std::optional<QString> KVRDiskSource::setVolumeName(const TKUSBDiskEntity&, const QString&, bool)
{
    return QStringLiteral("volumes cannot be renamed here");
}

std::optional<QString> KVRDiskSource::unmountVolume(const TKUSBDiskEntity&, bool)
{
    return QStringLiteral("volumes cannot be unmounted here");
}

std::optional<QString> KVRDiskSource::mountVolume(const TKUSBDiskEntity&, bool)
{
    return QStringLiteral("volumes cannot be mounted here");
}

} // namespace kavro
