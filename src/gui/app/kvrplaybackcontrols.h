#pragma once

#include "kvrplaybackengine.h"

#include <QObject>

namespace kavro {

class KVRPlayInfo;
struct KVRMainWindowUI;

// The controls under the main video: play/pause, the position sliders, ten-second jumps, speed,
// window size, volume and the front/rear audio choice. They act on both players and follow the
// play state through KVRPlayInfo.
class KVRPlaybackControls : public QObject
{
    Q_OBJECT

public:
    static constexpr double MinSpeed = 1.0;
    static constexpr double MaxSpeed = 2.0;
    static constexpr quint64 MaxVolume = 200;
    static constexpr quint64 VolumeStep = 10;
    static constexpr quint64 InitialVolume = 70;
    static constexpr int JumpSeconds = 10;
    static constexpr double SizeStep = 0.2; // of the minimum window size

    KVRPlaybackControls(KVRMainWindowUI& ui, const KVRPlaybackEngine::Players& players,
                        KVRPlayInfo* playInfo, KVRPlaybackEngine* engine,
                        QObject* parent = nullptr);

    quint64 volume() const { return m_volume; }
    void setVolume(quint64 volume);

    void clickPlayButton();
    void videoPositionSliderMoved(double value);
    void jumpForward();
    void jumpBackward();
    void increaseSpeed();
    void decreaseSpeed();
    void sizeUp();
    void sizeDown();
    void volumeUp();
    void volumeDown();
    void volumeSliderMoved(int value);
    void toggleAudioChoice(bool rear);

    // -1 smaller, 0 keep (leaving full screen), +1 larger or full screen.
    void setVideoScaleIndex(int step);
    void updatePlayInfoScale();
    void updateAudioUI();

signals:
    void volumeChanged(quint64 volume);

private:
    void observePlayInfo();
    void setBothPlayersToTheirEnd();
    double sliderValue() const;

    KVRMainWindowUI& m_ui;
    KVRPlaybackEngine::Players m_players;
    KVRPlayInfo* m_playInfo;
    KVRPlaybackEngine* m_engine;
    quint64 m_volume = InitialVolume;
};

} // namespace kavro
