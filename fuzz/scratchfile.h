#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

namespace kavro::fuzz {

// The readers under test take a path, as the program hands them one: each input is written to
// one file of this process (in /dev/shm where there is one), removed when the process ends.
class ScratchFile
{
public:
    // The file holding exactly these bytes; an empty path when it cannot be written, which the
    // targets treat as nothing to do rather than as a finding.
    static QString write(const std::uint8_t* data, std::size_t size);
};

} // namespace kavro::fuzz
