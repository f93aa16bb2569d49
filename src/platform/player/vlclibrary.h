#pragma once

struct libvlc_instance_t;

namespace kavro {

// The one libVLC instance of the process, shared by every player and media object. It is made
// on first use and lives until the process ends.
//
// Extra libVLC options come from the environment variable KAVRO_VLC_ARGS (split like a shell
// command line), which tests and CI use for "--aout=dummy".
class VLCLibrary
{
public:
    static VLCLibrary* sharedLibrary();

    // Null when libVLC could not start (no plugins found, for example); players then stay empty.
    libvlc_instance_t* instance() const { return m_instance; }

    VLCLibrary(const VLCLibrary&) = delete;
    VLCLibrary& operator=(const VLCLibrary&) = delete;

private:
    VLCLibrary();

    libvlc_instance_t* m_instance = nullptr;
};

} // namespace kavro
