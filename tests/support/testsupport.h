#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QtEndian>

#include "telemetry/aviformat.h"

#include <cstdint>

namespace kavro::test {

struct ToolResult
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    bool crashed = false;
};

// Runs a program to its end (a program that outlives the timeout is killed and counts as
// crashed). The default environment is this process's own.
ToolResult runProgram(const QString& program, const QStringList& arguments, int timeoutMs = 60000,
                      const QProcessEnvironment& environment = {});

// Runs the built `kavro` tool with the arguments and returns its exit status and output. The
// tool runs with a preferences folder of its own (see isolatedConfigHome) so that tests never
// see or change the developer's preferences.
ToolResult runKavro(const QStringList& arguments, int timeoutMs = 60000);

// How the command-line tools fail: the exit status, nothing on stdout and exactly one line on
// stderr that starts with the prefix ("kavro: list", say).
bool failedCleanly(const ToolResult& result, const QByteArray& prefix, int exitCode = 2);

// A folder for the preferences of this test process and the tools it starts; XDG_CONFIG_HOME is
// pointed at it the first time this is called.
QString isolatedConfigHome();

// A real receiver log from the shared NMEA corpus.
QString nmeaLogPath(const QString& name);

// While it lives, files this process writes cannot grow beyond the given size: writes past it fail
// with EFBIG as on a full card, also for root (who ignores folder permissions).
class FileSizeLimit
{
public:
    explicit FileSizeLimit(long long bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    unsigned long long m_previousSoft;
    void (*m_previousHandler)(int);
};

// What is wrong with the camera's layout on a FAT image (fsck.fat -n, then minfo): label KAVRO,
// 2 FATs, 32 reserved sectors, backup boot sector 6 and the given sectors per cluster. Empty when
// nothing is.
QString cardLayoutProblem(const QString& image, int sectorsPerCluster);

QByteArray readFile(const QString& path);
// Every file and folder below root (folders with empty content), by relative path.
QMap<QString, QByteArray> folderContent(const QString& root);
bool writeFile(const QString& path, const QByteArray& content);

// Creates empty files, and the folders they need, below root; false when one cannot be made.
bool makeFiles(const QString& root, const QStringList& relativePaths);

// A GPS record as the camera stores it: the stored position, speed and unit ('9' km/h, '1' mi/h)
// and the NMEA text, cut to the record's room; nLen is the text's length unless given.
_AVI_GPS_DATA_T gpsRecord(std::uint32_t time, const QByteArray& nmea, double latitude = 0,
                          double longitude = 0, float speed = 0, char unit = '9',
                          std::uint32_t length = 0);

// Little-endian words inside file images.
inline std::uint32_t u32At(const QByteArray& bytes, qsizetype offset)
{
    return qFromLittleEndian<std::uint32_t>(bytes.constData() + offset);
}
inline void setU32(QByteArray& bytes, qsizetype offset, std::uint32_t value)
{
    qToLittleEndian(value, bytes.data() + offset);
}

// A QTemporaryDir template for tests that make thousands of files: in memory where the system
// offers it, as making them on a disk takes seconds.
QString manyFilesTemplate();

} // namespace kavro::test
