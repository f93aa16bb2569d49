#pragma once

#include "kvrdisksource.h"
#include "kvrformatter.h"
#include "tkusbdiskentity.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace kavro {

// Formatting one card with the camera's layout while keeping its settings file: config.bin is
// copied to a fresh temporary folder, the volume unmounted, formatted, mounted again and
// config.bin put back (or the default record written when the card had none). Runs on a
// background thread; it cannot be stopped, and it owns what it uses, so that it ends properly
// when the window that started it is gone.
class KVRFormatJob
{
public:
    enum class Outcome
    {
        Completed,
        SaveFailed,    // config.bin could not be put aside: nothing was done to the card
        FormatFailed,  // the card was mounted again as it was
        RestoreFailed, // formatted, but config.bin could not be written to it
        DiskLost       // formatted, but not found again after mounting: nothing written
    };

    struct Result
    {
        Outcome outcome = Outcome::Completed;
        // The disk as it was when the job started.
        QString deviceFilePath;
        QString displayString;
        // FormatFailed: the formatter's code and message.
        ShellScriptResult format;
        // SaveFailed, RestoreFailed: why.
        QString error;
        // The copy of the card's config.bin, empty when the card had none.
        QString savedConfigPath;
        // The disks after the job, and the formatted one among them.
        QList<TKUSBDiskEntity> disks;
        std::optional<TKUSBDiskEntity> target;
    };

    // The texts of the steps, shown as they stand.
    static constexpr char UnmountText[] = "unmount disk...";
    static constexpr char FormatText[] = "formatting...";
    static constexpr char MountText[] = "try mount...";
    static constexpr char CompletedText[] = "Format completed!";
    static constexpr char SearchingText[] = "Disk searching...";

    KVRFormatJob(std::shared_ptr<KVRDiskSource> disks, std::shared_ptr<KVRFormatter> formatter,
                 TKUSBDiskEntity disk);

    // Runs every step; progress gets each step's text. The temporary folder defaults to the
    // system's.
    Result run(const std::function<void(const QString&)>& progress);
    void setTemporaryRoot(const QString& folder) { m_temporaryRoot = folder; }

private:
    std::optional<QString> saveConfigFile(QString& savedPath) const;
    void restoreConfigFile(Result& result) const;

    std::shared_ptr<KVRDiskSource> m_disks;
    std::shared_ptr<KVRFormatter> m_formatter;
    TKUSBDiskEntity m_disk;
    QString m_temporaryRoot;
};

} // namespace kavro
