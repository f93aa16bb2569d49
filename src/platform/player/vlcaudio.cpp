#include "vlcaudio.h"

#include <QtGlobal>

#include <vlc/vlc.h>

namespace kavro {

void VLCAudio::setMute(bool mute)
{
    m_muted = mute;
    if (m_player)
        libvlc_audio_set_mute(m_player, mute ? 1 : 0);
}

void VLCAudio::setVolume(int volume)
{
    m_volume = qBound(0, volume, kMaxVolume);
    if (m_player)
        libvlc_audio_set_volume(m_player, m_volume);
}

} // namespace kavro
