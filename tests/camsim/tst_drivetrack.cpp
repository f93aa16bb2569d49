#include "drivetrack.h"
#include "random.h"

#include <QTest>

#include <cmath>
#include <numbers>

using kavro::camsim::DriveSample;
using kavro::camsim::DriveTrack;
using kavro::camsim::Random;
using kavro::camsim::RouteSettings;

class TestDriveTrack : public QObject
{
    Q_OBJECT

private slots:
    void aDriverCouldDriveIt_data()
    {
        QTest::addColumn<quint64>("seed");
        QTest::addColumn<double>("duration");
        QTest::addColumn<double>("cruise");
        QTest::addColumn<double>("lightStopAt");
        QTest::newRow("town, with a red light") << quint64(1) << 240.0 << 55.0 << 0.55;
        QTest::newRow("country road") << quint64(7) << 600.0 << 80.0 << -1.0;
        QTest::newRow("a few seconds") << quint64(3) << 6.0 << 45.0 << -1.0;
        QTest::newRow("short, with a red light") << quint64(11) << 12.0 << 55.0 << 0.55;
    }

    void aDriverCouldDriveIt()
    {
        QFETCH(quint64, seed);
        QFETCH(double, duration);
        QFETCH(double, cruise);
        QFETCH(double, lightStopAt);
        RouteSettings settings;
        settings.originLatitude = -34.6;
        settings.originLongitude = -58.4;
        settings.initialHeading = 75;
        settings.duration = duration;
        settings.cruiseSpeed = cruise;
        settings.lightStopAt = lightStopAt;
        settings.lightStopDwell = 8;
        Random random(seed);
        const DriveTrack track = DriveTrack::simulate(settings, random);
        const std::vector<DriveSample>& samples = track.samples();

        QVERIFY(samples.size() > 10);
        QCOMPARE(samples.front().speed, 0.0);
        QVERIFY(samples.back().speed < 0.5);
        QVERIFY2(std::abs(track.duration() - duration) < std::max(4.0, duration * 0.1),
                 qPrintable(QString::number(track.duration())));

        double longest = 0;
        for (std::size_t k = 1; k < samples.size(); ++k) {
            const DriveSample& a = samples[k - 1];
            const DriveSample& b = samples[k];
            QCOMPARE(b.time - a.time, DriveTrack::SampleInterval);
            QVERIFY(b.speed * 3.6 <= cruise + 10);
            QVERIFY(std::abs(b.longitudinalAcceleration) < 3.0);
            QVERIFY(std::abs(b.lateralAcceleration) < 2.5);
            // The distance grows by what the speed covers, and the position moves by as much.
            const double step = b.distance - a.distance;
            QVERIFY(step >= 0);
            QVERIFY(std::abs(step - (a.speed + b.speed) / 2 * DriveTrack::SampleInterval) < 0.05);
            const double moved = std::hypot(b.east - a.east, b.north - a.north);
            QVERIFY(std::abs(moved - step) < 0.05);
            // Moving in the direction the car points.
            if (step > 0.3) {
                const double bearing =
                    std::atan2(b.east - a.east, b.north - a.north) * 180 / std::numbers::pi;
                const double off = std::remainder(bearing - a.heading, 360.0);
                QVERIFY2(std::abs(off) < 10, qPrintable(QString::number(off)));
            }
            longest = std::max(longest, b.distance);
        }
        // Degrees follow the metres: a kilometre north is about 0.009 degrees.
        const DriveSample& last = samples.back();
        QVERIFY(std::abs((last.latitude - settings.originLatitude) * 111195 - last.north) < 1);
        QVERIFY(longest > (duration > 60 ? 500 : 1));

        if (lightStopAt >= 0) {
            QVERIFY(track.lightStop().has_value());
            const auto light = *track.lightStop();
            QCOMPARE(light.departure - light.arrival, 8.0);
            for (double t = light.arrival + 0.1; t <= light.departure - 0.1; t += 0.5)
                QCOMPARE(track.at(t).speed, 0.0);
            QVERIFY(std::abs(track.at(light.arrival).distance - light.position) < 0.01);
        }
    }
};

QTEST_MAIN(TestDriveTrack)
#include "tst_drivetrack.moc"
