#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
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

ToolResult runKavro(const QStringList& arguments, int timeoutMs)
{
    ToolResult result;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", isolatedConfigHome());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KAVRO_TOOL_PATH), arguments);
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

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(content) == content.size();
}

} // namespace kavro::test
