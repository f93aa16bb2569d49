#include "handover.h"
#include "commandline.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <string>

#include <unistd.h>

namespace kavro::cli {

namespace {

int g_argc = 0;
char** g_argv = nullptr;

// Beside this program (the build folder), else where the package installs it, as seen from
// this program's folder.
std::string companionPath()
{
    char self[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0)
        return "/usr/libexec/kavro/" KAVRO_COMPANION_NAME;
    std::string folder(self, std::size_t(length));
    folder.resize(folder.rfind('/') + 1);
    const std::string beside = folder + KAVRO_COMPANION_NAME;
    return ::access(beside.c_str(), X_OK) == 0 ? beside : folder + KAVRO_COMPANION_INSTALLED;
}

} // namespace

void HandOver::setArguments(int argc, char** argv)
{
    g_argc = argc;
    g_argv = argv;
}

std::string HandOver::toCompanion()
{
    const std::string path = companionPath();
    if (g_argc > 0)
        ::execv(path.c_str(), g_argv);
    return "cannot start " + path + ": " + std::strerror(g_argc > 0 ? errno : EINVAL);
}

} // namespace kavro::cli
