#pragma once

#include <QObject>

#include <cstdint>

namespace kavro {

// The play state the controls show. Every setter emits its signal, also when the value does not
// change: the reactions re-apply the audio and redraw the telemetry on each set.
class KVRPlayInfo : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isPlaying READ isPlaying WRITE setIsPlaying NOTIFY isPlayingChanged)
    Q_PROPERTY(std::int32_t audioMediaDirection READ audioMediaDirection WRITE
                   setAudioMediaDirection NOTIFY audioMediaDirectionChanged)
    Q_PROPERTY(double position READ position WRITE setPosition NOTIFY positionChanged)
    Q_PROPERTY(double speed READ speed WRITE setSpeed NOTIFY speedChanged)
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)

public:
    // The audio directions: the same codes as a recording's channel, 2 meaning no sound.
    static constexpr std::int32_t AudioFront = 0;
    static constexpr std::int32_t AudioRear = 1;
    static constexpr std::int32_t AudioNone = 2;

    explicit KVRPlayInfo(QObject* parent = nullptr) : QObject(parent) {}

    bool isPlaying() const { return m_isPlaying; }
    std::int32_t audioMediaDirection() const { return m_audioMediaDirection; }
    double position() const { return m_position; }
    double speed() const { return m_speed; }
    double scale() const { return m_scale; }

public slots:
    void setIsPlaying(bool playing);
    void setAudioMediaDirection(std::int32_t direction);
    void setPosition(double position);
    void setSpeed(double speed);
    void setScale(double scale);

signals:
    void isPlayingChanged(bool playing);
    void audioMediaDirectionChanged(std::int32_t direction);
    void positionChanged(double position);
    void speedChanged(double speed);
    void scaleChanged(double scale);

private:
    bool m_isPlaying = false;
    std::int32_t m_audioMediaDirection = AudioNone;
    double m_position = 0;
    double m_speed = 1.0;
    double m_scale = 0;
};

} // namespace kavro
