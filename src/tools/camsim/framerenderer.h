#pragma once

#include <QDateTime>
#include <QImage>
#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>

class QPainter;
class QPolygonF;

namespace kavro::camsim {

// What one camera sees at one moment.
struct FrameScene
{
    int frame = 0;                  // frame number, shown as the time code
    QDateTime cameraTime;           // the camera's clock, shown in the overlay
    double distance = 0;            // m along the route; the road scrolls with it
    double speedKmh = 0;            // shown in the overlay
    double curvature = 0;           // 1/m; bends the road ahead
    double heading = 0;             // degrees; pans the hills on the horizon
    double jolt = 0;                // -1..1, an impact shaking the camera
    std::optional<double> oncoming; // m ahead of us of a car in the other lane; behind: negative
    std::optional<double> follower; // m from our rear bumper to the car behind
    std::optional<double> signalAt; // m along the route of the nearest traffic light
    bool signalRed = false;
    QString plate; // shown when not empty
};

// Draws the view of the front or the rear camera: sky and hills, a two-lane road in
// perspective with lane marks, posts, trees and houses scrolling by with the distance driven, the
// car's bonnet or the rear window's frame, the camera's overlay (channel, date and time, speed,
// car number) and the time code.
class FrameRenderer
{
public:
    // sceneSeed picks the landscape of a drive: hills, trees, houses and their colours.
    FrameRenderer(QSize size, bool rear, std::uint64_t sceneSeed);

    QSize size() const { return m_size; }
    // Paints the whole frame; `target` must be of size() and Format_RGB32.
    void render(const FrameScene& scene, QImage& target) const;

private:
    struct Projection;

    void paintLandscape(QPainter& painter, const FrameScene& scene, double horizon) const;
    void paintRoad(QPainter& painter, const Projection& view) const;
    void paintRoadside(QPainter& painter, const Projection& view) const;
    void paintCar(QPainter& painter, const Projection& view, double lateral, double depth,
                  const QColor& colour, bool facing) const;
    void paintSignal(QPainter& painter, const Projection& view, double position, bool red) const;
    void paintBodywork(QPainter& painter) const;
    void paintOverlay(QPainter& painter, const FrameScene& scene) const;

    QSize m_size;
    bool m_rear;
    std::uint64_t m_seed;
    double m_buildingShare;
    QImage m_sky;   // gradient with clouds, drawn as it is
    QImage m_hills; // a 360-degree panorama strip, transparent above the ridge
};

} // namespace kavro::camsim
