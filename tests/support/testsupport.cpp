#include "testsupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <cstring>
#include <sys/resource.h>

namespace kavro::test {

QString isolatedConfigHome()
{
    static QTemporaryDir* home = [] {
        auto* dir = new QTemporaryDir;
        qputenv("XDG_CONFIG_HOME", dir->path().toUtf8());
        return dir;
    }();
    return home->path();
}

ToolResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs,
                      const QProcessEnvironment& environment)
{
    ToolResult result;
    QProcess process;
    if (!environment.isEmpty())
        process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.closeWriteChannel();
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        result.crashed = true;
    }
    result.crashed = result.crashed || process.exitStatus() != QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

ToolResult runKavro(const QStringList& arguments, int timeoutMs)
{
    isolatedConfigHome(); // sets XDG_CONFIG_HOME, which the tool inherits
    return runProgram(QStringLiteral(KAVRO_TOOL_PATH), arguments, timeoutMs);
}

bool failedCleanly(const ToolResult& result, const QByteArray& prefix, int exitCode)
{
    const bool clean = !result.crashed && result.exitCode == exitCode && result.out.isEmpty() &&
                       result.err.startsWith(prefix) && result.err.count('\n') == 1 &&
                       result.err.endsWith('\n');
    if (!clean)
        qWarning("exit %d, stdout %s, stderr %s", result.exitCode, result.out.constData(),
                 result.err.constData());
    return clean;
}

QString nmeaLogPath(const QString& name)
{
    return QDir(QStringLiteral(KAVRO_NMEA_DIR)).filePath(name);
}

FileSizeLimit::FileSizeLimit(long long bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    m_previousSoft = limit.rlim_cur;
    m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    limit.rlim_cur = static_cast<rlim_t>(bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit()
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = static_cast<rlim_t>(m_previousSoft);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, m_previousHandler);
}

QString cardLayoutProblem(const QString& image, int sectorsPerCluster)
{
    const ToolResult fsck = runProgram(QStringLiteral("fsck.fat"), {"-n", image});
    if (fsck.exitCode != 0)
        return QStringLiteral("fsck.fat: ") + QString::fromLocal8Bit(fsck.out + fsck.err);
    const QByteArray info = runProgram(QStringLiteral("minfo"), {"-i", image, "::"}).out;
    const QByteArray cluster =
        "cluster size: " + QByteArray::number(sectorsPerCluster) + " sectors";
    for (const QByteArray& line :
         {QByteArray("disk label=\"KAVRO      \""), cluster,
          QByteArray("reserved (boot) sectors: 32"), QByteArray("fats: 2"),
          QByteArray("disk type=\"FAT32   \""), QByteArray("backup boot sector=6")}) {
        if (!info.contains(line))
            return QStringLiteral("minfo lacks '%1'").arg(QString::fromLatin1(line));
    }
    return QString();
}

_AVI_GPS_DATA_T gpsRecord(std::uint32_t time, const QByteArray& nmea, double latitude,
                          double longitude, float speed, char unit, std::uint32_t length)
{
    _AVI_GPS_DATA_T record{};
    record.header = 205;
    record.nTimestamp = time;
    record.nLen = length ? length : std::uint32_t(nmea.size());
    record.fLatitude = latitude;
    record.fLongitude = longitude;
    record.fSpeed = speed;
    record.KM = unit;
    std::memcpy(record.RawData, nmea.constData(),
                std::min<std::size_t>(std::size_t(nmea.size()), sizeof record.RawData));
    return record;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QMap<QString, QByteArray> folderContent(const QString& root)
{
    QMap<QString, QByteArray> content;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        content.insert(QDir(root).relativeFilePath(path),
                       it.fileInfo().isDir() ? QByteArray() : readFile(path));
    }
    return content;
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(content) == content.size();
}

bool makeFiles(const QString& root, const QStringList& relativePaths)
{
    for (const QString& relative : relativePaths) {
        const QString path = QDir(root).filePath(relative);
        if (!QDir().mkpath(QFileInfo(path).path()) || !writeFile(path, {}))
            return false;
    }
    return true;
}

QString manyFilesTemplate()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    const QString base =
        memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath();
    return base + QStringLiteral("/kavro-test-XXXXXX");
}

} // namespace kavro::test
