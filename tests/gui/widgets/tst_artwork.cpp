#include "widgets/ninepartlayer.h"
#include "widgets/tkimage.h"

#include <QTest>

using kavro::NinePartLayer;
using kavro::TKImage;

namespace {

const QStringList states = {QStringLiteral("n"), QStringLiteral("p"), QStringLiteral("h")};

// Every control of the main window, each with its normal, pressed and roll-over look.
const QStringList controls = {
    "icon_play", "icon_pause", "jump_backward", "jump_forward", "speed_down",      "speed_up",
    "size_down", "size_up",    "volume_down",   "volume_up",    "audio_front",     "audio_rear",
    "swap",      "capture",    "print",         "fullscreen",   "fullscreen_exit", "open_folder",
};

QStringList namesUsedByTheMainWindow()
{
    QStringList names;
    for (const char* direction : {"front", "rear"}) {
        for (const char* mode : {"alwa", "motion", "event"})
            names << QStringLiteral("car_%1_%2").arg(direction, mode);
    }
    // The side buttons are named with their extension where the window sets them.
    names << "record_n.png"
          << "record_p.png"
          << "information_n.png"
          << "information_p.png";
    names << "bottom-background"
          << "app_icon";
    for (const char* set : {"v1", "v2"}) {
        for (int part = 0; part < NinePartLayer::PartCount; ++part)
            names << NinePartLayer::partName(QLatin1String(set), NinePartLayer::Part(part));
        for (const char* channel : {"front", "rear"})
            names << QStringLiteral("%1_%2_logo").arg(set, channel);
    }
    for (const QString& control : controls) {
        for (const QString& state : states)
            names << control + '_' + state;
    }
    return names;
}

int visiblePixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 0;
    }
    return count;
}

} // namespace

class TestArtwork : public QObject
{
    Q_OBJECT

private slots:
    void everyImageTheWindowNamesExists_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : namesUsedByTheMainWindow())
            QTest::newRow(qPrintable(name)) << name;
    }

    void everyImageTheWindowNamesExists()
    {
        QFETCH(QString, name);
        const TKImage image = TKImage::named(name);
        QVERIFY(!image.isNull());
        QVERIFY(!image.size().isEmpty());
        const QImage single = image.pixmap(1).toImage();
        const QImage twice = image.pixmap(2).toImage();
        QCOMPARE(single.size(), image.size());
        QCOMPARE(twice.size(), image.size() * 2);
        QVERIFY(visiblePixels(single) > 0);
        // The looks of one control or side button share one size.
        const QString stem = image.name().chopped(2);
        if (image.name().endsWith("_p") || image.name().endsWith("_h"))
            QCOMPARE(image.size(), TKImage::named(stem + "_n").size());
    }

    void nineSetsFitTogether()
    {
        // Corners of one size, edges as thick as the corners, so the frame joins up.
        for (const char* set : {"v1", "v2"}) {
            const NinePartLayer layer = NinePartLayer::fromImageSet(QLatin1String(set));
            const QSize corner = layer.image(NinePartLayer::TopLeftCorner).size();
            for (auto part : {NinePartLayer::TopRightCorner, NinePartLayer::BottomLeftCorner,
                              NinePartLayer::BottomRightCorner})
                QCOMPARE(layer.image(part).size(), corner);
            QCOMPARE(layer.image(NinePartLayer::TopEdgeFill).size().height(), corner.height());
            QCOMPARE(layer.image(NinePartLayer::LeftEdgeFill).size().width(), corner.width());
        }
    }
};

QTEST_MAIN(TestArtwork)
#include "tst_artwork.moc"
