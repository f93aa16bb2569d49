#include "framerenderer.h"

#include "random.h"
#include "timecode.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace kavro::camsim {

namespace {

constexpr double CameraHeight = 1.25;  // m above the road
constexpr double FocalPerWidth = 0.62; // focal length in frame widths: a wide 78 degrees across
constexpr double HorizonShare = 0.47;  // of the frame height, counted from the top
constexpr double HalfRoad = 3.6;       // m from the road's centre to its edge
constexpr double LaneOffset = 1.75;    // m from the road's centre to the middle of our lane
constexpr double Near = 1.2;           // m; nearer ground is below the frame
constexpr double Far = 420;            // m; the road fades into the horizon there
constexpr double DashPeriod = 12;      // m from one centre-line dash to the next
constexpr double DashLength = 3;
constexpr double ObjectSpacing = 17; // m between roadside places

QColor mix(const QColor& a, const QColor& b, double f)
{
    f = std::clamp(f, 0.0, 1.0);
    return QColor::fromRgbF(static_cast<float>(a.redF() + (b.redF() - a.redF()) * f),
                            static_cast<float>(a.greenF() + (b.greenF() - a.greenF()) * f),
                            static_cast<float>(a.blueF() + (b.blueF() - a.blueF()) * f));
}

// Far things fade into the sky's haze.
QColor hazed(const QColor& colour, double distance)
{
    return mix(colour, QColor(196, 211, 226), distance / 500.0);
}

int panoramaWidth(const QSize& size)
{
    const double fieldOfView = 2 * std::atan(0.5 / FocalPerWidth);
    return static_cast<int>(std::lround(size.width() * 2 * std::numbers::pi / fieldOfView));
}

} // namespace

struct FrameRenderer::Projection
{
    double centreX;
    double horizon;
    double focal;
    double curvature;
    double laneOffset; // road centre to camera, m, positive when the road's centre is to the left
    double travelled;  // m; what is at road position d lies at (d - travelled) ahead
    bool rear;

    // Ahead-distance of a road position, from this camera.
    double depthOf(double roadPosition) const
    {
        return rear ? travelled - roadPosition : roadPosition - travelled;
    }
    // Screen position of a point `lateral` m right of the road's centre, `depth` m away and
    // `height` m above the road.
    QPointF point(double lateral, double depth, double height = 0) const
    {
        // A bend swings the road aside; past about 30 degrees it has left the picture anyway.
        const double bend = std::clamp(0.5 * curvature * depth * depth, -0.6 * depth, 0.6 * depth);
        return {centreX + focal * (lateral - laneOffset + bend) / depth,
                horizon + focal * (CameraHeight - height) / depth};
    }
    double scale(double depth) const { return focal / depth; }
};

FrameRenderer::FrameRenderer(QSize size, bool rear, std::uint64_t sceneSeed)
    : m_size(size), m_rear(rear), m_seed(sceneSeed)
{
    Random random(sceneSeed);
    m_buildingShare = random.uniform(0.1, 0.5);
    const int width = panoramaWidth(size);
    const int height = size.height();
    const double horizon = height * HorizonShare;

    m_sky = QImage(width, height, QImage::Format_RGB32);
    {
        QPainter painter(&m_sky);
        QLinearGradient gradient(0, 0, 0, horizon);
        gradient.setColorAt(0, QColor(58, 104, 170).lighter(100 + random.integer(0, 15)));
        gradient.setColorAt(1, QColor(204, 221, 236));
        painter.fillRect(m_sky.rect(), gradient);
        painter.setPen(Qt::NoPen);
        painter.setRenderHint(QPainter::Antialiasing);
        const int clouds = random.integer(6, 12);
        for (int c = 0; c < clouds; ++c) {
            // Braced lists are evaluated in order; call arguments are not.
            const QPointF centre{random.uniform(0, width), random.uniform(0.05, 0.6) * horizon};
            const double radius = random.uniform(0.04, 0.12) * size.width();
            for (int puff = 0; puff < 5; ++puff) {
                const QPointF at = centre + QPointF{random.uniform(-1.5, 1.5) * radius,
                                                    random.uniform(-0.25, 0.25) * radius};
                QRadialGradient cloud(at, radius);
                cloud.setColorAt(0, QColor(255, 255, 255, 150));
                cloud.setColorAt(1, QColor(255, 255, 255, 0));
                painter.setBrush(cloud);
                // Drawn again one turn either way, so a cloud on the seam is not cut.
                for (int turn = -1; turn <= 1; ++turn)
                    painter.drawEllipse(at + QPointF(turn * width, 0), radius * 1.6, radius * 0.55);
            }
        }
    }

    // Two ridges of hills, the farther one paler; the profile wraps around at 360 degrees.
    m_hills = QImage(width, static_cast<int>(height * 0.16), QImage::Format_ARGB32_Premultiplied);
    m_hills.fill(Qt::transparent);
    {
        QPainter painter(&m_hills);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        const double stripHeight = m_hills.height();
        const QColor colours[3] = {QColor(150, 168, 180), QColor(86, 112, 84), QColor(58, 82, 52)};
        for (int ridge = 0; ridge < 3; ++ridge) {
            const std::uint64_t ridgeSeed =
                sceneSeed ^ (0x48494c4cULL + static_cast<unsigned>(ridge));
            // Far hills, near hills, then a line of trees along the fields.
            const double amplitudes[3] = {0.55, 0.4, 0.08};
            const double amplitude = stripHeight * amplitudes[ridge];
            const std::int64_t knots = ridge == 2 ? 600 : 24;
            QPolygonF outline;
            outline << QPointF(0, stripHeight);
            for (int x = 0; x <= width; x += 4) {
                const double turn = static_cast<double>(x) / width * static_cast<double>(knots);
                const double rise =
                    0.65 * (Random::smooth(ridgeSeed, turn, knots) + 1) / 2 +
                    0.35 * (Random::smooth(ridgeSeed + 7, turn * 3, knots * 3) + 1) / 2;
                outline << QPointF(x, stripHeight - amplitude * rise -
                                          (ridge == 1 ? 0.05 * stripHeight : 0));
            }
            outline << QPointF(width, stripHeight);
            painter.setBrush(colours[ridge]);
            painter.drawPolygon(outline);
        }
    }
}

void FrameRenderer::render(const FrameScene& scene, QImage& target) const
{
    QPainter painter(&target);
    painter.fillRect(target.rect(), QColor(58, 104, 170));
    const double horizon = m_size.height() * HorizonShare + scene.jolt * m_size.height() * 0.035;
    paintLandscape(painter, scene, horizon);

    painter.setRenderHint(QPainter::Antialiasing);
    const double focal = m_size.width() * FocalPerWidth;
    // Looking back, our lane is on the other side of the road's centre.
    const Projection view{
        m_size.width() / 2.0, horizon, focal, scene.curvature, m_rear ? -LaneOffset : LaneOffset,
        scene.distance,       m_rear};
    paintRoad(painter, view);
    paintRoadside(painter, view);
    if (scene.signalAt)
        paintSignal(painter, view, *scene.signalAt, scene.signalRed);
    // The other lane's car is seen coming by the front camera and going by the rear one.
    if (scene.oncoming) {
        const double depth = m_rear ? -*scene.oncoming : *scene.oncoming;
        if (depth > Near + 0.3)
            paintCar(painter, view, m_rear ? LaneOffset : -LaneOffset, depth, QColor(150, 24, 30),
                     !m_rear);
    }
    if (m_rear && scene.follower)
        paintCar(painter, view, -LaneOffset, *scene.follower + 1.2, QColor(210, 212, 216), true);
    paintBodywork(painter);
    paintOverlay(painter, scene);
    TimeCode::paint(painter, m_size, scene.frame);
}

void FrameRenderer::paintLandscape(QPainter& painter, const FrameScene& scene, double horizon) const
{
    const int width = m_sky.width();
    const double heading = scene.heading + (m_rear ? 180 : 0);
    const int pan = static_cast<int>(std::lround(std::fmod(heading, 360.0) / 360.0 * width));
    const int top = static_cast<int>(std::lround(horizon - m_size.height() * HorizonShare));
    auto blitPanorama = [&](const QImage& image, int y) {
        const int first = std::min(m_size.width(), width - pan);
        painter.drawImage(QPoint(0, y), image, QRect(pan, 0, first, image.height()));
        if (first < m_size.width())
            painter.drawImage(QPoint(first, y), image,
                              QRect(0, 0, m_size.width() - first, image.height()));
    };
    blitPanorama(m_sky, top);
    blitPanorama(m_hills, static_cast<int>(std::lround(horizon)) - m_hills.height() + 1);

    QLinearGradient ground(0, horizon, 0, m_size.height());
    ground.setColorAt(0, QColor(120, 134, 104));
    ground.setColorAt(0.15, QColor(98, 122, 70));
    ground.setColorAt(1, QColor(74, 96, 52));
    painter.fillRect(QRectF(0, horizon, m_size.width(), m_size.height() - horizon + 1), ground);
}

void FrameRenderer::paintRoad(QPainter& painter, const Projection& view) const
{
    std::vector<double> depths;
    for (double z = Near; z < Far; z *= 1.12)
        depths.push_back(z);
    depths.push_back(Far);

    auto band = [&](double from, double to) {
        QPolygonF shape;
        for (double z : depths)
            shape << view.point(from, z);
        for (auto z = depths.rbegin(); z != depths.rend(); ++z)
            shape << view.point(to, *z);
        return shape;
    };
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(150, 140, 118));
    painter.drawPolygon(band(-HalfRoad - 1.2, HalfRoad + 1.2));
    QLinearGradient asphalt(0, view.horizon, 0, m_size.height());
    asphalt.setColorAt(0, QColor(150, 154, 160));
    asphalt.setColorAt(0.2, QColor(98, 100, 104));
    asphalt.setColorAt(1, QColor(64, 65, 68));
    painter.setBrush(asphalt);
    painter.drawPolygon(band(-HalfRoad, HalfRoad));
    painter.setBrush(QColor(226, 226, 220));
    painter.drawPolygon(band(-HalfRoad + 0.15, -HalfRoad + 0.3));
    painter.drawPolygon(band(HalfRoad - 0.3, HalfRoad - 0.15));

    // Patches of repaired asphalt and the centre-line dashes, fixed to the road, so that they
    // stream past with the car's speed.
    auto quad = [&](double left, double right, double nearDepth, double farDepth) {
        QPolygonF shape;
        shape << view.point(left, nearDepth) << view.point(right, nearDepth)
              << view.point(right, farDepth) << view.point(left, farDepth);
        painter.drawPolygon(shape);
    };
    const double start = view.travelled - (view.rear ? 160 : 0);
    const auto first = static_cast<long long>(std::floor(start / DashPeriod));
    for (long long k = first; k < first + 160 / DashPeriod + 2; ++k) {
        const double position = static_cast<double>(k) * DashPeriod;
        const double a = view.depthOf(position);
        const double b = view.depthOf(position + DashLength);
        const double nearDepth = std::max(std::min(a, b), Near);
        const double farDepth = std::max(a, b);
        if (farDepth <= Near)
            continue;
        const double patch = Random::hashed(m_seed ^ 0x504154ULL, k);
        if (patch > 0.55) {
            painter.setBrush(hazed(QColor(52, 53, 56), nearDepth));
            const double side = patch > 0.8 ? -HalfRoad + 0.6 : 0.5;
            quad(side, side + 2.2, nearDepth, std::max(a, b) + 1.5);
        }
        painter.setBrush(hazed(QColor(236, 236, 228), nearDepth));
        quad(-0.07, 0.07, nearDepth, farDepth);
    }
}

void FrameRenderer::paintRoadside(QPainter& painter, const Projection& view) const
{
    struct Thing
    {
        double depth;
        long long index;
    };
    std::vector<Thing> things;
    const auto first = static_cast<long long>(std::floor((view.travelled - 260) / ObjectSpacing));
    for (long long i = first; i < first + 2 * 260 / static_cast<long long>(ObjectSpacing) + 2;
         ++i) {
        const double position =
            static_cast<double>(i) * ObjectSpacing + 4 * Random::hashed(m_seed ^ 0x4a4954ULL, i);
        const double depth = view.depthOf(position);
        if (depth > Near + 0.5 && depth < 260)
            things.push_back({depth, i});
    }
    std::sort(things.begin(), things.end(),
              [](const Thing& a, const Thing& b) { return a.depth > b.depth; });

    painter.setPen(Qt::NoPen);
    for (const Thing& thing : things) {
        Random random(m_seed ^ (static_cast<std::uint64_t>(thing.index) * 0x2545f4914f6cdd1dULL));
        const double z = thing.depth;
        const double side = random.chance(0.5) ? 1 : -1;
        if (thing.index % 3 == 0) {
            // A street lamp on the right-hand verge, its arm over the road.
            const double x = HalfRoad + 1.4;
            const QPointF foot = view.point(x, z);
            const QPointF head = view.point(x, z, 8);
            const QPointF lamp = view.point(x - 1.8, z, 8.2);
            painter.setPen(QPen(hazed(QColor(88, 92, 98), z), std::max(1.0, 0.18 * view.scale(z))));
            painter.drawLine(foot, head);
            painter.drawLine(head, lamp);
            painter.setPen(Qt::NoPen);
            continue;
        }
        if (random.uniform() < m_buildingShare) {
            // A house: the wall along the road, the gable end facing the camera and a dark roof.
            const double inner = side * random.uniform(9, 20);
            const double outer = inner + side * random.uniform(7, 11);
            const double length = random.uniform(8, 14);
            const double height = random.uniform(5, 11);
            const double farEdge = z + length;
            const QColor walls[] = {QColor(196, 184, 164), QColor(170, 160, 150),
                                    QColor(210, 202, 190), QColor(150, 120, 100)};
            const QColor wallColour = hazed(walls[random.integer(0, 3)], z);
            QPolygonF end;
            end << view.point(inner, z) << view.point(outer, z) << view.point(outer, z, height)
                << view.point(inner, z, height);
            painter.setBrush(wallColour.darker(115));
            painter.drawPolygon(end);
            QPolygonF wall;
            wall << view.point(inner, z) << view.point(inner, farEdge)
                 << view.point(inner, farEdge, height) << view.point(inner, z, height);
            painter.setBrush(wallColour);
            painter.drawPolygon(wall);
            // The roof: its slope towards the road and the gable's triangle.
            const double ridge = (inner + outer) / 2;
            QPolygonF slope;
            slope << view.point(inner, z, height) << view.point(inner, farEdge, height)
                  << view.point(ridge, farEdge, height + 2.2) << view.point(ridge, z, height + 2.2);
            painter.setBrush(hazed(QColor(92, 60, 52), z));
            painter.drawPolygon(slope);
            QPolygonF gable;
            gable << view.point(inner, z, height) << view.point(outer, z, height)
                  << view.point(ridge, z, height + 2.2);
            painter.setBrush(wallColour.darker(115));
            painter.drawPolygon(gable);
            painter.setBrush(hazed(QColor(60, 70, 84), z));
            for (double floor = 1.4; floor + 1.2 < height; floor += 3) {
                for (double along = 1.5; along + 1.2 < length; along += 3) {
                    QPolygonF window;
                    window << view.point(inner, z + along, floor)
                           << view.point(inner, z + along + 1.2, floor)
                           << view.point(inner, z + along + 1.2, floor + 1.2)
                           << view.point(inner, z + along, floor + 1.2);
                    painter.drawPolygon(window);
                }
            }
            continue;
        }
        // A tree: trunk and a crown of a few overlapping blobs.
        const double x = side * random.uniform(5.5, 22);
        const double height = random.uniform(4.5, 10);
        const double radius = random.uniform(1.4, 3.0);
        const double s = view.scale(z);
        painter.setBrush(hazed(QColor(84, 64, 46), z));
        const QPointF foot = view.point(x, z);
        const QPointF top = view.point(x, z, height - radius);
        painter.drawRect(QRectF(foot.x() - 0.15 * s, top.y(), 0.3 * s, foot.y() - top.y()));
        const int hue = random.integer(80, 115);
        const int saturation = random.integer(110, 180);
        const QColor leaves = QColor::fromHsv(hue, saturation, random.integer(70, 125));
        for (int blob = 0; blob < 3; ++blob) {
            const double across = random.uniform(-0.6, 0.6);
            const double up = random.uniform(-0.4, 0.6);
            const QPointF centre = view.point(x + across, z, height - radius + up);
            painter.setBrush(hazed(leaves.lighter(90 + 12 * blob), z));
            painter.drawEllipse(centre, radius * s * random.uniform(0.8, 1.05), radius * s * 0.9);
        }
    }
}

void FrameRenderer::paintCar(QPainter& painter, const Projection& view, double lateral,
                             double depth, const QColor& colour, bool facing) const
{
    const QRectF body =
        QRectF(view.point(lateral - 0.9, depth, 0.15), view.point(lateral + 0.9, depth, 1.45))
            .normalized();
    painter.setPen(Qt::NoPen);
    painter.setBrush(hazed(colour, depth));
    painter.drawRoundedRect(body, body.width() * 0.08, body.width() * 0.08);
    painter.setBrush(hazed(QColor(40, 48, 58), depth));
    painter.drawRect(QRectF(body.left() + body.width() * 0.1, body.top() + body.height() * 0.08,
                            body.width() * 0.8, body.height() * 0.35));
    // Head lamps towards the camera, tail lamps away from it.
    painter.setBrush(hazed(facing ? QColor(250, 246, 220) : QColor(210, 30, 30), depth));
    const double lamp = body.width() * 0.12;
    painter.drawEllipse(
        QRectF(body.left() + lamp * 0.4, body.top() + body.height() * 0.58, lamp, lamp * 0.6));
    painter.drawEllipse(
        QRectF(body.right() - lamp * 1.4, body.top() + body.height() * 0.58, lamp, lamp * 0.6));
    // Number plate and the shadow under the car.
    painter.setBrush(hazed(QColor(236, 236, 230), depth));
    painter.drawRect(
        QRectF(view.point(lateral - 0.26, depth, 0.48), view.point(lateral + 0.26, depth, 0.37))
            .normalized());
    painter.setBrush(QColor(20, 20, 22));
    painter.drawRect(QRectF(body.left(), body.bottom(), body.width(), body.height() * 0.12));
}

void FrameRenderer::paintSignal(QPainter& painter, const Projection& view, double position,
                                bool red) const
{
    // A stop line across our lane where the car stops, and the lights on a mast at the far
    // side of the junction; seen from behind (the rear camera) the lights are dark.
    const double lineDepth = view.depthOf(position + 1.5);
    const double depth = view.depthOf(position + 18);
    painter.setPen(Qt::NoPen);
    const double lane = LaneOffset;
    const double nearDepth = std::max(Near, std::min(lineDepth, lineDepth + 0.4));
    const double farDepth = std::max(lineDepth, lineDepth + 0.4);
    if (farDepth > Near && nearDepth < 200) {
        QPolygonF line;
        line << view.point(0.1, nearDepth) << view.point(HalfRoad - 0.3, nearDepth)
             << view.point(HalfRoad - 0.3, farDepth) << view.point(0.1, farDepth);
        painter.setBrush(hazed(QColor(236, 236, 228), nearDepth));
        painter.drawPolygon(line);
    }
    if (depth <= Near + 0.5 || depth > 200)
        return;
    const double side = view.rear ? -1 : 1;
    const double poleX = side * (HalfRoad + 0.8);
    const double s = view.scale(depth);
    painter.setPen(QPen(hazed(QColor(70, 74, 80), depth), std::max(1.0, 0.22 * s)));
    painter.drawLine(view.point(poleX, depth), view.point(poleX, depth, 5.8));
    painter.drawLine(view.point(poleX, depth, 5.6), view.point(side * (lane - 1.4), depth, 5.6));
    painter.setPen(Qt::NoPen);
    const QPointF headLeft = view.point(side * lane - 1.2, depth, 5.55);
    const QPointF headRight = view.point(side * lane + 1.2, depth, 4.95);
    const QRectF head = QRectF(headLeft, headRight).normalized();
    painter.setBrush(QColor(26, 28, 30));
    painter.drawRoundedRect(head, head.height() * 0.2, head.height() * 0.2);
    if (view.rear)
        return;
    const QColor lamps[3] = {red ? QColor(255, 40, 30) : QColor(70, 20, 18), QColor(70, 55, 15),
                             red ? QColor(15, 60, 40) : QColor(40, 230, 140)};
    const double diameter = head.height() * 0.72;
    for (int lamp = 0; lamp < 3; ++lamp) {
        const QPointF centre(head.left() + head.width() * (0.2 + 0.3 * lamp), head.center().y());
        painter.setBrush(lamps[lamp]);
        painter.drawEllipse(centre, diameter / 2, diameter / 2);
    }
}

void FrameRenderer::paintBodywork(QPainter& painter) const
{
    const double w = m_size.width();
    const double h = m_size.height();
    painter.setPen(Qt::NoPen);
    if (!m_rear) {
        // The bonnet at the bottom of the picture, catching a little of the sky.
        QPainterPath bonnet;
        bonnet.moveTo(0, h);
        bonnet.lineTo(0, h * 0.95);
        bonnet.quadTo(w / 2, h * 0.86, w, h * 0.95);
        bonnet.lineTo(w, h);
        bonnet.closeSubpath();
        QLinearGradient paint(0, h * 0.88, 0, h);
        paint.setColorAt(0, QColor(66, 72, 82));
        paint.setColorAt(0.3, QColor(30, 33, 38));
        paint.setColorAt(1, QColor(16, 17, 20));
        painter.setBrush(paint);
        painter.drawPath(bonnet);
        return;
    }
    // The rear window: tinted glass inside a dark frame.
    painter.fillRect(QRectF(0, 0, w, h), QColor(0, 0, 0, 40));
    QPainterPath frame;
    frame.addRect(QRectF(0, 0, w, h));
    QPainterPath glass;
    glass.addRoundedRect(QRectF(w * 0.03, h * 0.05, w * 0.94, h * 0.86), w * 0.05, w * 0.05);
    painter.setBrush(QColor(18, 19, 22));
    painter.drawPath(frame.subtracted(glass));
}

void FrameRenderer::paintOverlay(QPainter& painter, const FrameScene& scene) const
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setBold(true);
    font.setPixelSize(std::max(8, m_size.height() / 24));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const int margin = std::max(3, m_size.width() / 80);
    const int baselineBottom = TimeCode::stripRect(m_size).top() - metrics.descent() - 2;

    // White text with a dark rim, readable on sky and road alike.
    auto text = [&](const QString& words, int x, int baseline) {
        painter.setPen(QColor(0, 0, 0, 200));
        for (const QPoint& shift : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
            painter.drawText(QPoint(x, baseline) + shift, words);
        painter.setPen(QColor(250, 250, 250));
        painter.drawText(QPoint(x, baseline), words);
    };
    const int top = margin + metrics.ascent();
    text(m_rear ? QStringLiteral("REAR") : QStringLiteral("FRONT"), margin, top);
    const QString brand = QStringLiteral("KAVRO");
    text(brand, m_size.width() - margin - metrics.horizontalAdvance(brand), top);
    const QString when = scene.cameraTime.toString(QStringLiteral("yyyy/MM/dd HH:mm:ss"));
    text(when, margin, baselineBottom);

    // Speed and car number share the line with the time where there is room; a small frame
    // drops the car number first.
    const QString speed = QStringLiteral("%1km/h").arg(
        static_cast<int>(std::lround(scene.speedKmh)), 3, 10, QLatin1Char('0'));
    const int room = m_size.width() - 3 * margin - metrics.horizontalAdvance(when);
    for (const QString& right : {scene.plate + QStringLiteral("  ") + speed, speed}) {
        if (metrics.horizontalAdvance(right) <= room) {
            text(right, m_size.width() - margin - metrics.horizontalAdvance(right), baselineBottom);
            break;
        }
    }
}

} // namespace kavro::camsim
