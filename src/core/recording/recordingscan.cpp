#include "recordingscan.h"

#include "common/corelog.h"
#include "common/utf8text.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <set>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavro {

namespace {

// The folder walk talks to the file system directly: readdir's entry types spare a stat per file,
// which is what lets a full card list in about the time `find` takes.
struct FolderWalk
{
    std::vector<RecordingName>& records;
    const RecordingScan::StopCheck& stop;
    // Every folder is listed once, however many links lead to it; this also ends link loops.
    std::set<std::pair<dev_t, ino_t>> visited;
};

// One folder's entries, their names kept in one buffer rather than one allocation each.
struct FolderEntries
{
    struct Entry
    {
        std::size_t offset;
        std::size_t length;
        unsigned char type;
    };

    std::string names;
    std::vector<Entry> entries;

    const char* name(const Entry& entry) const { return names.data() + entry.offset; }
    std::string_view view(const Entry& entry) const { return {name(entry), entry.length}; }
};

// ".avi" in any case after a non-empty name, as the extension test of the scan reads it.
bool hasAviExtension(std::string_view name)
{
    return name.size() > 4 && ::strncasecmp(name.data() + name.size() - 4, ".avi", 4) == 0;
}

bool isFolder(int folderFd, const char* name, unsigned char type)
{
    if (type == DT_DIR)
        return true;
    if (type != DT_LNK && type != DT_UNKNOWN)
        return false;
    // Links are followed, as an existence test follows them; a dangling one counts as a file.
    struct stat status;
    return ::fstatat(folderFd, name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

FolderEntries readEntries(DIR* folder)
{
    FolderEntries result;
    while (const dirent* entry = ::readdir(folder)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
            continue;
        std::size_t length = std::strlen(entry->d_name);
        result.entries.push_back({result.names.size(), length, entry->d_type});
        result.names.append(entry->d_name, length + 1);
    }
    // Name order rather than the file system's, so that the list, the record that wins a pair
    // slot and the cut at MaxRecordings are the same on every machine.
    std::sort(result.entries.begin(), result.entries.end(),
              [&result](const FolderEntries::Entry& a, const FolderEntries::Entry& b) {
                  return result.view(a) < result.view(b);
              });
    return result;
}

// Lists the folder open at fd (and takes ownership of fd). Folders whose path would not fit
// PATH_MAX are left out, which also bounds the recursion.
void walkFolder(FolderWalk& walk, int fd, const std::string& path)
{
    struct stat status;
    if (::fstat(fd, &status) != 0 || !walk.visited.insert({status.st_dev, status.st_ino}).second) {
        ::close(fd);
        return;
    }
    DIR* folder = ::fdopendir(fd);
    if (!folder) {
        CoreLog::print(LogRecording, CoreLog::Level::Debug, "cannot list %s: %s", path.c_str(),
                       std::strerror(errno));
        ::close(fd);
        return;
    }
    const FolderEntries listing = readEntries(folder);
    const int folderFd = ::dirfd(folder);
    for (const FolderEntries::Entry& entry : listing.entries) {
        if (walk.stop && walk.stop())
            break;
        const char* name = listing.name(entry);
        const bool folderEntry = isFolder(folderFd, name, entry.type);
        if (!folderEntry && !hasAviExtension(listing.view(entry)))
            continue;
        // Names are text to the viewer, which opens files by text paths: a name that is no
        // UTF-8 could not be opened again, so it is passed over here for every caller alike.
        if (!isValidUtf8(listing.view(entry))) {
            CoreLog::print(LogRecording, CoreLog::Level::Debug,
                           "passing over an undecodable name in %s", path.c_str());
            continue;
        }
        std::string entryPath = path;
        if (!entryPath.ends_with('/'))
            entryPath += '/';
        entryPath.append(listing.view(entry));
        if (folderEntry) {
            if (path.size() + 1 + entry.length >= PATH_MAX)
                continue;
            int subFd = ::openat(folderFd, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            if (subFd < 0) {
                CoreLog::print(LogRecording, CoreLog::Level::Debug, "cannot open %s: %s",
                               entryPath.c_str(), std::strerror(errno));
                continue;
            }
            walkFolder(walk, subFd, entryPath);
            continue;
        }
        if (std::optional<RecordingName> record = RecordingName::admitted(std::move(entryPath))) {
            walk.records.push_back(std::move(*record));
            // Ends only this folder's listing: a containing folder goes on with its next entry
            // and stops again after its next addition.
            if (walk.records.size() >= RecordingScan::MaxRecordings)
                break;
        }
    }
    ::closedir(folder);
}

} // namespace

std::vector<RecordingName> RecordingScan::collect(const std::string& folder, const StopCheck& stop)
{
    // Records hold absolute paths; resolving the folder once spares a lookup per record.
    const std::string absolute = cleanAbsolute(folder);
    std::vector<RecordingName> records;
    int fd = ::open(absolute.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) {
        CoreLog::print(LogRecording, CoreLog::Level::Debug, "cannot open folder %s: %s",
                       absolute.c_str(), std::strerror(errno));
        return records;
    }
    FolderWalk walk{records, stop, {}};
    walkFolder(walk, fd, absolute);
    return records;
}

std::string RecordingScan::cleanAbsolute(std::string_view path)
{
    std::string joined;
    if (!path.starts_with('/')) {
        char current[PATH_MAX];
        if (::getcwd(current, sizeof current))
            joined = current;
        joined += '/';
    }
    joined.append(path);
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= joined.size();) {
        std::size_t end = joined.find('/', start);
        if (end == std::string::npos)
            end = joined.size();
        const std::string_view part = std::string_view(joined).substr(start, end - start);
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    std::string clean;
    for (const std::string_view part : parts) {
        clean += '/';
        clean.append(part);
    }
    return clean.empty() ? std::string("/") : clean;
}

void RecordingScan::sort(std::vector<RecordingName>& records)
{
    std::stable_sort(
        records.begin(), records.end(),
        [](const RecordingName& a, const RecordingName& b) { return a.compare(b) < 0; });
}

} // namespace kavro
