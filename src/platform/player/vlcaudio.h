#pragma once

struct libvlc_media_player_t;

namespace kavro {

// The sound controls of one player. Owned by its VLCMediaPlayer.
//
// The getters answer what was last asked for: libVLC reads its audio output's level back late,
// and not at all from outputs without a mixer (as on machines without sound).
class VLCAudio
{
public:
    explicit VLCAudio(libvlc_media_player_t* player) : m_player(player) {}

    static constexpr int kMaxVolume = 200;
    static constexpr int kNormalVolume = 100; // the file's own level

    void setMute(bool mute);
    bool isMuted() const { return m_muted; }
    // 0 .. 200; values outside are clamped.
    void setVolume(int volume);
    int volume() const { return m_volume; }

private:
    libvlc_media_player_t* m_player;
    bool m_muted = false;
    int m_volume = kNormalVolume;
};

} // namespace kavro
