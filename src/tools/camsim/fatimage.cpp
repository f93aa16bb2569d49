#include "fatimage.h"

#include "card/formattarget.h"

#include "camsimlog.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QtEndian>

#include <cstdio>

namespace kavro::camsim {

namespace {

constexpr qint64 Sector = 512;
constexpr int ToolTimeoutMs = 10 * 60 * 1000;

bool fail(QString* error, const QString& message)
{
    qCWarning(lcCamsim, "%s", qUtf8Printable(message));
    if (error)
        *error = message;
    return false;
}

// mkfs.fat dates the volume label with the time it runs; the camera's card gets the time it was
// formatted, so that the same card makes the same image.
bool dateVolumeLabel(const QString& image, const QDateTime& formatted, QString* error)
{
    QFile file(image);
    if (!file.open(QIODevice::ReadWrite))
        return fail(error, QStringLiteral("cannot open %1: %2").arg(image, file.errorString()));
    const QByteArray boot = file.read(Sector);
    if (boot.size() != Sector)
        return fail(error, QStringLiteral("%1 has no boot sector").arg(image));
    auto u16 = [&](int at) { return qFromLittleEndian<quint16>(boot.constData() + at); };
    auto u32 = [&](int at) { return qFromLittleEndian<quint32>(boot.constData() + at); };
    const qint64 sectorSize = u16(11);
    const qint64 perCluster = static_cast<unsigned char>(boot.at(13));
    const qint64 rootSector = u16(14) + static_cast<unsigned char>(boot.at(16)) * qint64(u32(36)) +
                              (qint64(u32(44)) - 2) * perCluster;
    if (!file.seek(rootSector * sectorSize))
        return fail(error, QStringLiteral("%1 has no root folder").arg(image));
    QByteArray root = file.read(sectorSize * perCluster);
    const QDate day = formatted.date();
    const QTime time = formatted.time();
    const auto dosDate =
        static_cast<quint16>(((day.year() - 1980) << 9) | (day.month() << 5) | day.day());
    const auto dosTime =
        static_cast<quint16>((time.hour() << 11) | (time.minute() << 5) | (time.second() / 2));
    for (qsizetype entry = 0; entry + 32 <= root.size(); entry += 32) {
        char* bytes = root.data() + entry;
        if (bytes[0] == 0)
            break;
        if ((bytes[11] & 0x3f) != 0x08) // the volume label
            continue;
        bytes[13] = 0;
        qToLittleEndian(dosTime, bytes + 14);
        qToLittleEndian(dosDate, bytes + 16);
        qToLittleEndian(dosDate, bytes + 18);
        qToLittleEndian(dosTime, bytes + 22);
        qToLittleEndian(dosDate, bytes + 24);
        if (!file.seek(rootSector * sectorSize + entry) || file.write(bytes, 32) != 32)
            return fail(error,
                        QStringLiteral("cannot write %1: %2").arg(image, file.errorString()));
        return true;
    }
    return fail(error, QStringLiteral("%1 has no volume label").arg(image));
}

bool run(const QString& tool, const QStringList& arguments, QString* error)
{
    // mkfs.fat and fsck.fat live in sbin, which a user's PATH often leaves out.
    QString found = QStandardPaths::findExecutable(tool);
    if (found.isEmpty())
        found = QStandardPaths::findExecutable(tool, {"/usr/sbin", "/sbin"});
    if (found.isEmpty())
        return fail(error, QStringLiteral("%1 is not installed").arg(tool));
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // mtools must not stop to ask about anything.
    environment.insert("MTOOLS_SKIP_CHECK", "1");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(found, arguments);
    if (!process.waitForStarted())
        return fail(error, QStringLiteral("cannot start %1: %2").arg(tool, process.errorString()));
    if (!process.waitForFinished(ToolTimeoutMs)) {
        process.kill();
        process.waitForFinished();
        return fail(error, QStringLiteral("%1 did not finish").arg(tool));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString output = QString::fromLocal8Bit(process.readAll()).simplified();
        return fail(error, QStringLiteral("%1 failed: %2").arg(tool, output));
    }
    return true;
}

} // namespace

FatImage::Geometry FatImage::geometryFor(qint64 contentBytes)
{
    Geometry geometry;
    // Room for the content, cluster slack, directories and the FATs themselves.
    const qint64 wanted = contentBytes + contentBytes / 8 + 16LL * 1024 * 1024;
    const qint64 mebibyte = 1024 * 1024;
    geometry.bytes = std::max(MinimumSize, (wanted + mebibyte - 1) / mebibyte * mebibyte);
    const qint64 sectors = geometry.bytes / Sector;
    for (int perCluster = 64; perCluster >= 1; perCluster /= 2) {
        // Each cluster also costs 4 bytes in each of the two FATs.
        const qint64 clusters = sectors * Sector / (perCluster * Sector + 8);
        if (clusters >= MinimumClusters) {
            geometry.sectorsPerCluster = perCluster;
            break;
        }
    }
    return geometry;
}

bool FatImage::create(const QString& imagePath, const QString& cardDir, std::uint32_t volumeId,
                      const QDateTime& formatted, QString* error)
{
    qint64 content = 0;
    QDirIterator files(cardDir, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        content += files.fileInfo().size();
    }
    const Geometry geometry = geometryFor(content);

    // An image named through a link replaces the link's target, and never a device or folder.
    const QFileInfo named(imagePath);
    if (named.isSymLink() && !named.exists())
        return fail(error, QStringLiteral("%1 is a link to nothing").arg(imagePath));
    if (named.exists() && !named.isFile())
        return fail(error, QStringLiteral("%1 is not a regular file").arg(imagePath));
    const QFileInfo target(named.isSymLink() ? named.canonicalFilePath() : imagePath);
    if (!QDir().mkpath(target.absolutePath()))
        return fail(error, QStringLiteral("cannot make the folder of %1").arg(imagePath));
    QTemporaryFile image(target.absolutePath() + QStringLiteral("/.") + target.fileName() +
                         QStringLiteral(".XXXXXX"));
    if (!image.open() || !image.resize(geometry.bytes))
        return fail(error,
                    QStringLiteral("cannot make %1: %2").arg(imagePath, image.errorString()));
    image.close();
    const QString work = image.fileName();

    if (!run("mkfs.fat", mkfsFatArguments(work, geometry.sectorsPerCluster, false, volumeId),
             error) ||
        !dateVolumeLabel(work, formatted, error))
        return false;

    const QStringList top =
        QDir(cardDir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    if (!top.isEmpty()) {
        QStringList arguments = {"-i", work, "-s", "-m", "-Q"};
        for (const QString& entry : top)
            arguments << QDir(cardDir).filePath(entry);
        arguments << "::/";
        if (!run("mcopy", arguments, error))
            return false;
    }
    if (!run("fsck.fat", {"-n", work}, error))
        return false;

    if (std::rename(QFile::encodeName(work).constData(),
                    QFile::encodeName(target.filePath()).constData()) != 0)
        return fail(error, QStringLiteral("cannot replace %1").arg(imagePath));
    image.setAutoRemove(false);
    QFile::setPermissions(target.filePath(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                 QFileDevice::ReadGroup | QFileDevice::ReadOther);
    return true;
}

} // namespace kavro::camsim
