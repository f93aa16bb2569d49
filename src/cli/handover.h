#pragma once

#include <string>

namespace kavro::cli {

// kavro's own start-up stays free of the toolkit's libraries, whose loading alone took longer
// than reading a recording. What needs them runs in the companion program, which takes the
// same command line.
class HandOver
{
public:
    // The command line as kavro was started, to be passed on unchanged.
    static void setArguments(int argc, char** argv);
    // Replaces this process by the companion; returns only when it cannot be started, with
    // the reason.
    static std::string toCompanion();
};

} // namespace kavro::cli
