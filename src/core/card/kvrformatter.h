#pragma once

#include "shellscript.h"
#include "tkusbdiskentity.h"

namespace kavro {

// The one privileged step of formatting a card: a FAT32 file system with the camera's layout
// (mkfsFatArguments) on the unmounted disk. The result's code stands for what went wrong: 1 is
// the formatter's own failure (a write-protected card, mostly), the runner's negative codes a
// refused or dismissed request for rights, anything else a refusal with its message.
class KVRFormatter
{
public:
    virtual ~KVRFormatter();

    // Blocks until done; never on the main thread.
    virtual ShellScriptResult format(const TKUSBDiskEntity& disk, int sectorsPerCluster) = 0;
};

} // namespace kavro
