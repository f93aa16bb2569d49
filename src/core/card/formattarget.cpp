#include "formattarget.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace kavro {

namespace {

QString readLine(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLatin1(file.readLine(256)).trimmed();
}

// The mount table writes blanks and backslashes in paths as octal escapes.
QString unescapeMountPath(const QByteArray& field)
{
    QByteArray path;
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size()) {
            bool ok = false;
            const int code = field.mid(i + 1, 3).toInt(&ok, 8);
            if (ok) {
                path.append(char(code));
                i += 3;
                continue;
            }
        }
        path.append(field[i]);
    }
    return QFile::decodeName(path);
}

} // namespace

FormatTargetCheck checkFormatTarget(const QString& device, const FormatTargetFiles& files)
{
    FormatTargetCheck check;
    const auto refuse = [&check](const QString& reason) {
        check.refusal = reason;
        return check;
    };
    struct stat node = {};
    if (::stat(QFile::encodeName(device).constData(), &node) != 0)
        return refuse(QStringLiteral("cannot read %1: %2")
                          .arg(device, QString::fromLocal8Bit(std::strerror(errno))));
    if (!S_ISBLK(node.st_mode))
        return refuse(QStringLiteral("%1 is not a block device").arg(device));

    const QString number =
        QStringLiteral("%1:%2").arg(major(node.st_rdev)).arg(minor(node.st_rdev));
    const QString sysRoot = QFileInfo(files.sysRoot).canonicalFilePath();
    const QString deviceDir =
        QFileInfo(files.sysRoot + QStringLiteral("/dev/block/") + number).canonicalFilePath();
    if (sysRoot.isEmpty() || deviceDir.isEmpty() || !deviceDir.startsWith(sysRoot + '/'))
        return refuse(QStringLiteral("%1 (%2) is not a disk the system knows").arg(device, number));
    const bool partition = QFileInfo::exists(deviceDir + QStringLiteral("/partition"));
    check.wholeDisk = !partition;
    const QString diskDir = partition ? QFileInfo(deviceDir).absolutePath() : deviceDir;
    const QString where = diskDir.mid(sysRoot.size());
    if (where.startsWith(QStringLiteral("/devices/virtual/")))
        return refuse(QStringLiteral("%1 is a virtual disk").arg(device));
    if (!where.contains(QStringLiteral("/usb")))
        return refuse(QStringLiteral("%1 is not on a USB disk").arg(device));
    if (readLine(diskDir + QStringLiteral("/removable")) != QStringLiteral("1"))
        return refuse(QStringLiteral("%1 is not a removable disk").arg(device));

    // The disk and each of its partitions, by device number.
    QSet<QString> numbers{readLine(diskDir + QStringLiteral("/dev"))};
    for (const QFileInfo& entry : QDir(diskDir).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (QFileInfo::exists(entry.filePath() + QStringLiteral("/partition")))
            numbers.insert(readLine(entry.filePath() + QStringLiteral("/dev")));
    }
    numbers.insert(number);

    QFile table(files.mountInfo);
    if (!table.open(QIODevice::ReadOnly))
        return refuse(QStringLiteral("cannot read the mount table %1").arg(files.mountInfo));
    const QStringList systemMounts{"/", "/boot", "/home"};
    while (!table.atEnd()) {
        const QList<QByteArray> fields = table.readLine(64 * 1024).split(' ');
        if (fields.size() < 5 || !numbers.contains(QString::fromLatin1(fields[2])))
            continue;
        const QString mountPoint = unescapeMountPath(fields[4]);
        if (systemMounts.contains(mountPoint))
            return refuse(QStringLiteral("%1 holds the system's %2").arg(device, mountPoint));
        return refuse(QStringLiteral("%1 is mounted at %2").arg(device, mountPoint));
    }
    return check;
}

int clusterSizeByVolumeSizeInKB(std::uint64_t volumeBytes)
{
    return (volumeBytes >> 30) < 7 ? 32 : 128;
}

QStringList mkfsFatArguments(const QString& target, int sectorsPerCluster, bool wholeDisk,
                             std::optional<std::uint32_t> volumeId)
{
    QStringList arguments{"-F", "32", "-n", "KAVRO", "-f", "2",
                          "-b", "6",  "-R", "32",    "-s", QString::number(sectorsPerCluster),
                          "-a"};
    if (wholeDisk)
        arguments << QStringLiteral("-I");
    if (volumeId)
        arguments << QStringLiteral("-i")
                  << QStringLiteral("%1").arg(*volumeId, 8, 16, QLatin1Char('0')).toUpper();
    arguments << target;
    return arguments;
}

} // namespace kavro
