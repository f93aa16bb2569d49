#include "kvrhelperformatter.h"

#include "cardlog.h"

#include <QFileInfo>

namespace kavro {

namespace {

QString findHelper()
{
    for (const char* candidate : {KAVRO_FORMAT_HELPER_INSTALLED, KAVRO_FORMAT_HELPER_BUILT}) {
        const QString path = QString::fromLocal8Bit(candidate);
        if (QFileInfo(path).isExecutable())
            return path;
    }
    // Named all the same, so that the failure says what is missing.
    return QString::fromLocal8Bit(KAVRO_FORMAT_HELPER_INSTALLED);
}

} // namespace

KVRHelperFormatter::KVRHelperFormatter() : KVRHelperFormatter(findHelper()) {}

KVRHelperFormatter::KVRHelperFormatter(QString helperPath, ShellScriptOptions options)
    : m_helperPath(std::move(helperPath)), m_options(std::move(options))
{
}

ShellScriptResult KVRHelperFormatter::format(const TKUSBDiskEntity& disk, int sectorsPerCluster)
{
    qCInfo(lcCard) << "formatting" << disk.deviceFilePath() << "with" << sectorsPerCluster
                   << "sectors per cluster through" << m_helperPath;
    return runProgramWithRights(
        m_helperPath, {disk.deviceFilePath(), QString::number(sectorsPerCluster)}, true, m_options);
}

} // namespace kavro
