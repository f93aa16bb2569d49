#include "kvrformatjob.h"

#include "cardlog.h"
#include "cardrules.h"
#include "common/outputfile.h"
#include "formattarget.h"
#include "settings/settingfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace kavro {

namespace {

// A settings file is 428 bytes; anything far larger is not one worth keeping in memory.
constexpr qint64 MaxConfigBytes = 16 * 1024 * 1024;

} // namespace

KVRFormatJob::KVRFormatJob(std::shared_ptr<KVRDiskSource> disks,
                           std::shared_ptr<KVRFormatter> formatter, TKUSBDiskEntity disk)
    : m_disks(std::move(disks)), m_formatter(std::move(formatter)), m_disk(std::move(disk)),
      m_temporaryRoot(QDir::tempPath())
{
}

std::optional<QString> KVRFormatJob::saveConfigFile(QString& savedPath) const
{
    const QString root = m_disk.mountedPath();
    const QString source = QDir(root).filePath(QString::fromLatin1(SettingFileName));
    if (root.isEmpty() || !QFileInfo(source).isFile())
        return std::nullopt;
    // A fresh folder for each job, so that no earlier job's copy is taken for this card's.
    const QString folder =
        QDir(m_temporaryRoot).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (!QDir().mkpath(folder))
        return QStringLiteral("cannot make the folder %1").arg(folder);
    const QString target = QDir(folder).filePath(QString::fromLatin1(SettingFileName));
    QFile::remove(target);
    QFile file(source);
    if (file.size() > MaxConfigBytes)
        return QStringLiteral("%1 is too large for a settings file").arg(source);
    if (!file.copy(target))
        return QStringLiteral("cannot copy %1 to %2: %3").arg(source, target, file.errorString());
    savedPath = target;
    return std::nullopt;
}

void KVRFormatJob::restoreConfigFile(Result& result) const
{
    const QString path =
        QDir(result.target->mountedPath()).filePath(QString::fromLatin1(SettingFileName));
    if (result.savedConfigPath.isEmpty()) {
        if (std::optional<QString> key = writeDefaultSettingFile(path)) {
            result.outcome = Outcome::RestoreFailed;
            result.error = *key;
        }
        return;
    }
    QFile saved(result.savedConfigPath);
    QString error;
    if (!saved.open(QIODevice::ReadOnly)) {
        error = saved.errorString();
    } else {
        const QByteArray bytes = saved.read(MaxConfigBytes);
        writeFile(path, bytes, &error);
    }
    if (!error.isEmpty()) {
        result.outcome = Outcome::RestoreFailed;
        result.error = error;
    }
}

KVRFormatJob::Result KVRFormatJob::run(const std::function<void(const QString&)>& progress)
{
    Result result;
    result.deviceFilePath = m_disk.deviceFilePath();
    result.displayString = m_disk.displayString();
    const auto findAgain = [&] {
        progress(QString::fromLatin1(SearchingText));
        result.disks = m_disks->usbDiskEntities();
        for (const TKUSBDiskEntity& disk : result.disks) {
            if (disk.deviceFilePath() == result.deviceFilePath) {
                result.target = disk;
                break;
            }
        }
    };

    // Without its settings file put aside, a formatted card would lose it for good.
    if (std::optional<QString> why = saveConfigFile(result.savedConfigPath)) {
        qCWarning(lcCard) << "format not started:" << *why;
        result.outcome = Outcome::SaveFailed;
        result.error = *why;
        findAgain();
        return result;
    }

    progress(QString::fromLatin1(UnmountText));
    if (std::optional<QString> why = m_disks->unmountVolume(m_disk, true))
        qCWarning(lcCard) << "unmount" << result.deviceFilePath << "failed:" << *why;

    const int sectors = clusterSizeByVolumeSizeInKB(m_disk.volumeSize());
    progress(QString::fromLatin1(FormatText));
    result.format = m_formatter->format(m_disk, sectors);
    if (!result.format.ok()) {
        if (std::optional<QString> why = m_disks->mountVolume(m_disk, true))
            qCWarning(lcCard) << "mount" << result.deviceFilePath << "failed:" << *why;
        result.outcome = Outcome::FormatFailed;
        findAgain();
        return result;
    }

    progress(QString::fromLatin1(MountText));
    if (std::optional<QString> why = m_disks->mountVolume(m_disk, true))
        qCWarning(lcCard) << "mount" << result.deviceFilePath << "failed:" << *why;
    progress(QString::fromLatin1(CompletedText));
    findAgain();
    // Only on the disk just formatted, never on another one that took its place in the list.
    if (!result.target || result.target->mountedPath().isEmpty()) {
        result.outcome = Outcome::DiskLost;
        return result;
    }
    restoreConfigFile(result);
    if (result.outcome == Outcome::RestoreFailed)
        qCDebug(lcCard).noquote() << QStringLiteral("error=%1").arg(result.error);
    return result;
}

} // namespace kavro
