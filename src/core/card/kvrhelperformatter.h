#pragma once

#include "kvrformatter.h"

namespace kavro {

// Formats through kavro-format-helper, which checks the device and runs mkfs.fat: through pkexec,
// whose policy for the helper asks for an administrator's password, or directly when this
// process already runs as root.
class KVRHelperFormatter : public KVRFormatter
{
public:
    // The installed helper, or the one built beside a program run from its build folder.
    KVRHelperFormatter();
    explicit KVRHelperFormatter(QString helperPath, ShellScriptOptions options = {});

    ShellScriptResult format(const TKUSBDiskEntity& disk, int sectorsPerCluster) override;

    const QString& helperPath() const { return m_helperPath; }

private:
    QString m_helperPath;
    ShellScriptOptions m_options;
};

} // namespace kavro
