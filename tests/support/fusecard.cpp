#include "fusecard.h"

#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <csignal>

namespace kavro::test {

namespace {

bool isMountPoint(const QString& path)
{
    const QByteArray target = ' ' + QFile::encodeName(QDir(path).canonicalPath()) + ' ';
    return readFile(QStringLiteral("/proc/self/mountinfo")).contains(target);
}

} // namespace

FuseCard::~FuseCard()
{
    pull();
}

bool FuseCard::insert(const QString& image, const QString& content, int megabytes,
                      const QString& mountPoint, QString* error)
{
    const auto run = [error](const QString& tool, const QStringList& arguments) {
        const ToolResult result = runProgram(tool, arguments);
        if (result.exitCode == 0 && !result.crashed)
            return true;
        *error = tool + QLatin1String(": ") + QString::fromLocal8Bit(result.err);
        return false;
    };
    QFile file(image);
    if (!file.open(QIODevice::WriteOnly) || !file.resize(qint64(megabytes) << 20)) {
        *error = file.errorString();
        return false;
    }
    file.close();
    QStringList copy = {QStringLiteral("-s"), QStringLiteral("-i"), image};
    for (const QString& entry : QDir(content).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        copy.append(QDir(content).filePath(entry));
    copy.append(QStringLiteral("::"));
    if (!run(QStringLiteral("mkfs.fat"), {QStringLiteral("-n"), QStringLiteral("KAVRO"), image}) ||
        !run(QStringLiteral("mcopy"), copy))
        return false;
    return mount(image, mountPoint, error);
}

bool FuseCard::mount(const QString& image, const QString& mountPoint, QString* error, bool readOnly)
{
    if (!QDir().mkpath(mountPoint)) {
        *error = QStringLiteral("cannot make ") + mountPoint;
        return false;
    }
    // In the foreground, so that this process owns it and can end it.
    m_fusefat.start(QStringLiteral("fusefat"),
                    {QStringLiteral("-f"), QStringLiteral("-o"),
                     readOnly ? QStringLiteral("ro") : QStringLiteral("rw+"), image, mountPoint});
    m_mountPoint = mountPoint;
    m_log.clear();
    m_frozen = false;
    if (!QTest::qWaitFor([&] { return isMountPoint(mountPoint); }, 10000)) {
        *error = QStringLiteral("fusefat did not mount: ") +
                 QString::fromLocal8Bit(m_fusefat.readAllStandardError());
        pull();
        return false;
    }
    return true;
}

bool FuseCard::fill(const QString& name)
{
    QFile file(QDir(m_mountPoint).filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    // A sector at a time, so that the last free cluster is taken too.
    const QByteArray block(512, 'f');
    for (int count = 0; file.write(block) == block.size(); ++count) {
        // fusefat logs every write: its pipe is read now and then, or it would stop.
        if (count % 64 == 0)
            QCoreApplication::processEvents();
    }
    return file.error() != QFileDevice::NoError;
}

void FuseCard::freezeWhen(const QByteArray& text)
{
    QObject::connect(&m_fusefat, &QProcess::readyReadStandardError, [this, text] {
        m_log += m_fusefat.readAllStandardError();
        if (!m_frozen && m_log.contains(text))
            m_frozen = ::kill(pid_t(m_fusefat.processId()), SIGSTOP) == 0;
    });
}

void FuseCard::pull()
{
    if (m_mountPoint.isEmpty())
        return;
    runProgram(QStringLiteral("fusermount"),
               {QStringLiteral("-u"), QStringLiteral("-z"), m_mountPoint});
    m_fusefat.kill();
    m_fusefat.waitForFinished();
    m_mountPoint.clear();
}

} // namespace kavro::test
