#pragma once

#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>

class QLabel;
struct _AVI_GPS_DATA_T;

namespace kavro {

class GraphView;
class KVRBlackBoxData;
class KVRMapView;
class KVRPlayInfo;

// Shows the telemetry of the play position beside the video: the G-sensor values and the graph
// cursor, the map marker, the speed, HDOP and satellites used. The store's lists carry no video
// time, so the position (0..1) picks an entry of each list by fraction of its length.
class KVRTelemetryDisplay : public QObject
{
    Q_OBJECT

public:
    struct Outputs
    {
        GraphView* graphView = nullptr;
        KVRMapView* mapWebView = nullptr; // none: the map calls are skipped
        QLabel* gsensorXField = nullptr;
        QLabel* gsensorYField = nullptr;
        QLabel* gsensorZField = nullptr;
        QLabel* speedField = nullptr;
        QLabel* hdopField = nullptr;
        QLabel* sateliteField = nullptr;
        QLabel* positionField = nullptr;
    };

    // Follows every set of the play state's position, G-sensor first.
    KVRTelemetryDisplay(const Outputs& outputs, const KVRPlayInfo* playInfo,
                        QObject* parent = nullptr);

    // The main player's own position, which the graph cursor follows.
    void setPlayerPositionSource(std::function<double()> source);

    // The store is being refilled: nothing of it is read until recordingOpened.
    void detachStore();
    // A recording's telemetry is complete: the hemispheres start over and the map gets its route.
    void recordingOpened(const KVRBlackBoxData* store);
    const KVRBlackBoxData* store() const { return m_store; }
    // No recording: empty fields and graph, no route and no mark on the map, as at start-up.
    void clear();

    void updateGsensorUIByPlayPositon();
    void updateGpsUIByPlayPosition();

    // The hemispheres in force: negate the latitude (longitude) sent to the map.
    bool south() const { return m_south; }
    bool west() const { return m_west; }

    // The entry a position shows of a list of count entries (count > 0): position × count
    // truncated toward zero, the last entry for anything out of range or not a number.
    static std::size_t indexForPosition(double position, std::size_t count);
    // "X=+0.04", "X=-1.50", "X=0.00".
    static QString gsensorText(char axis, float value);
    // "57 Km/h" when the record's unit byte is '9', else "57 Mi/h"; the number as stored.
    static QString speedText(const _AVI_GPS_DATA_T& record);
    // One decimal of the value as read, in single precision.
    static QString hdopText(double hdop);
    static QString satelliteText(std::uint32_t count);
    // "37.558333° N   126.990000° W": decimal degrees with the hemispheres as letters.
    static QString positionText(double latitude, double longitude);

private:
    void showGpsRecord(std::size_t index);

    Outputs m_outputs;
    const KVRPlayInfo* m_playInfo;
    std::function<double()> m_playerPosition;
    const KVRBlackBoxData* m_store = nullptr;
    bool m_south = false;
    bool m_west = false;
};

} // namespace kavro
