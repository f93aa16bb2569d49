#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kavro::test {

struct ToolResult
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    bool crashed = false;
};

// Runs the built `kavro` tool with the arguments and returns its exit status and output. The
// tool runs with a preferences folder of its own (see isolatedConfigHome) so that tests never
// see or change the developer's preferences.
ToolResult runKavro(const QStringList& arguments, int timeoutMs = 60000);

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

QByteArray readFile(const QString& path);
bool writeFile(const QString& path, const QByteArray& content);

} // namespace kavro::test
