#include "widgets/artworknames.h"
#include "widgets/ninepartlayer.h"
#include "widgets/tkimage.h"

#include "../widgetrender.h"

#include <QTest>

using kavro::NinePartLayer;
using kavro::TKImage;

namespace {

QStringList namesUsedByTheMainWindow()
{
    namespace art = kavro::artwork;
    QStringList names = {art::appIcon, art::fullScreenBar};
    for (QLatin1String control : art::controls) {
        const QString stem = QString(control).chopped(2);
        names << control << stem + "_p" << stem + "_h";
    }
    for (QLatin1String name : art::sideButtons)
        names << name;
    for (QLatin1String name : art::logos)
        names << name;
    for (const auto& direction : art::carIcons) {
        for (QLatin1String name : direction)
            names << name;
    }
    for (QLatin1String set : art::frameSets) {
        for (int part = 0; part < NinePartLayer::PartCount; ++part)
            names << NinePartLayer::partName(set, NinePartLayer::Part(part));
    }
    return names;
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
        const QImage premultiplied = single.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QVERIFY(!kavro::test::paintedArea(premultiplied, 0, single.rect()).isEmpty());
        // The looks of one control or side button share one size.
        const QString stem = image.name().chopped(2);
        if (image.name().endsWith("_p") || image.name().endsWith("_h"))
            QCOMPARE(image.size(), TKImage::named(stem + "_n").size());
    }

    void nineSetsFitTogether()
    {
        // Corners of one size, edges as thick as the corners, so the frame joins up.
        for (QLatin1String set : kavro::artwork::frameSets) {
            const NinePartLayer layer = NinePartLayer::fromImageSet(set);
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
