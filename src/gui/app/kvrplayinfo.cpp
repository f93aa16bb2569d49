#include "kvrplayinfo.h"

namespace kavro {

void KVRPlayInfo::setIsPlaying(bool playing)
{
    // Told at every time change of the player; the buttons change only when this does.
    if (playing == m_isPlaying)
        return;
    m_isPlaying = playing;
    emit isPlayingChanged(playing);
}

void KVRPlayInfo::setAudioMediaDirection(std::int32_t direction)
{
    m_audioMediaDirection = direction;
    emit audioMediaDirectionChanged(direction);
}

void KVRPlayInfo::setPosition(double position)
{
    m_position = position;
    emit positionChanged(position);
}

void KVRPlayInfo::setSpeed(double speed)
{
    m_speed = speed;
    emit speedChanged(speed);
}

void KVRPlayInfo::setScale(double scale)
{
    m_scale = scale;
    emit scaleChanged(scale);
}

} // namespace kavro
