#pragma once

#include "recordingname.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavro {

// The recordings below a folder as the recording list finds them, on the file system's own
// names: the viewer's list and the command line's list and telemetry all scan through here.
class RecordingScan
{
public:
    // The scan stops collecting around this many recordings (see collect).
    static constexpr std::size_t MaxRecordings = 15000;
    // True when the scan should give up.
    using StopCheck = std::function<bool()>;

    // The admissible ".avi" files below folder (relative to the current folder unless it starts
    // with '/'), in name order inside each folder. Links are followed, every folder is listed
    // once, and folders whose path would not fit PATH_MAX are left out.
    static std::vector<RecordingName> collect(const std::string& folder,
                                              const StopCheck& stop = {});
    // The path from the root, from the current folder for a relative one, with no "." or ".."
    // components, doubled slashes or trailing slash.
    static std::string cleanAbsolute(std::string_view path);
    // The list's order: by RecordingName::compare, equal names keeping their scan order.
    static void sort(std::vector<RecordingName>& records);
};

// The categories of the recording scan's diagnostics.
inline constexpr char LogRecording[] = "kavro.recording";

} // namespace kavro
