#include "scratchfile.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace kavro::fuzz {

namespace {

std::string& scratchPath()
{
    static std::string path = [] {
        // Memory-backed when the system has it: a disk-backed file costs milliseconds a run.
        const QString folder = QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                                   ? QStringLiteral("/dev/shm")
                                   : QDir::tempPath();
        std::string made =
            folder.toStdString() + "/kavro-fuzz-" + std::to_string(getpid()) + ".avi";
        std::atexit([] { std::remove(scratchPath().c_str()); });
        return made;
    }();
    return path;
}

} // namespace

QString ScratchFile::write(const std::uint8_t* data, std::size_t size)
{
    const std::string& path = scratchPath();
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return {};
    const bool whole = size == 0 || std::fwrite(data, 1, size, file) == size;
    if (std::fclose(file) != 0 || !whole)
        return {};
    return QString::fromStdString(path);
}

} // namespace kavro::fuzz
