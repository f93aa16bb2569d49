#pragma once

#include "tkusbdiskentity.h"

#include <QList>
#include <QUrl>

#include <optional>

namespace kavro {

// Where the card windows learn about mounted USB volumes. The platform layer implements it over
// the system's disk service; tests give a list of folders. Every call asks afresh: nothing is
// cached, since cards come and go.
class KVRDiskSource
{
public:
    virtual ~KVRDiskSource();

    // The mounted volumes on USB-attached media, in the platform's order; card slots built into
    // the computer are not among them. Each listed volume's path goes to the debug log.
    QList<TKUSBDiskEntity> usbDiskEntities() const;

    // The root of the first USB volume on which the relative path exists, none when no volume
    // holds it. The clock window asks for "timeset.cfg".
    std::optional<QUrl> usbVolumeContainingFile(const QString& relativePath) const;

    // The camera's card by the card rule, none when there is no USB volume.
    std::optional<TKUSBDiskEntity> findCardDisk() const;

    // Gives the volume a new name. A FAT volume is unmounted for it and mounted again, possibly
    // at another path: look the disk up afresh afterwards. Without user interaction the system
    // asks for no password and refuses what would need one. Returns why it failed, or none.
    virtual std::optional<QString> setVolumeName(const TKUSBDiskEntity& disk, const QString& name,
                                                 bool allowUserInteraction);

    // Unmounts the volume, or mounts it again (where the system chooses; look the disk up afresh
    // afterwards). With user interaction the system may ask for a password. Returns why it
    // failed, or none.
    virtual std::optional<QString> unmountVolume(const TKUSBDiskEntity& disk,
                                                 bool allowUserInteraction);
    virtual std::optional<QString> mountVolume(const TKUSBDiskEntity& disk,
                                               bool allowUserInteraction);

protected:
    // Implementations list the volumes; the public calls add the logging and the rules.
    virtual QList<TKUSBDiskEntity> listUsbDiskEntities() const = 0;
};

} // namespace kavro
