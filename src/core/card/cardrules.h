#pragma once

#include "tkusbdiskentity.h"

#include <QList>

#include <optional>

namespace kavro {

// The camera formats its card with this label and keeps its settings in this file in the root.
inline constexpr char CardVolumeLabel[] = "KAVRO";
inline constexpr char SettingFileName[] = "config.bin";
inline constexpr char TimeSetFileName[] = "timeset.cfg";

// Picks the camera's card among the USB volumes, in five passes over the list, each from its
// start: labelled KAVRO, writable and holding config.bin; labelled and writable; labelled;
// writable; any. A disk that passes an earlier test wins over one listed before it that passes
// only a later one. The config.bin test looks at the real file system below mountedURL.
std::optional<TKUSBDiskEntity> findCardDisk(const QList<TKUSBDiskEntity>& disks);

} // namespace kavro
