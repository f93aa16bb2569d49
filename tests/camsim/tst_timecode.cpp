#include "timecode.h"

#include <QBuffer>
#include <QPainter>
#include <QTest>

using kavro::camsim::TimeCode;

class TestTimeCode : public QObject
{
    Q_OBJECT

private:
    static QImage frameWith(const QSize& size, int frame)
    {
        // A busy background, so that reading depends on the blocks and not on a blank frame.
        QImage image(size, QImage::Format_RGB32);
        QPainter painter(&image);
        for (int x = 0; x < size.width(); x += 7)
            painter.fillRect(x, 0, 7, size.height(),
                             QColor::fromHsv((x * 5) % 360, 120, 40 + x % 200));
        TimeCode::paint(painter, size, frame);
        return image;
    }

    static QImage throughJpeg(const QImage& image, int quality)
    {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPG", quality);
        return QImage::fromData(bytes, "JPG");
    }

private slots:
    void readsWhatWasPainted_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("frame");
        for (const QSize& size : {QSize(128, 72), QSize(192, 108), QSize(640, 360),
                                  QSize(1280, 720), QSize(1920, 1080)}) {
            for (int frame : {0, 1, 2, 29, 1800, 0x5555, 0xAAAA, TimeCode::MaximumFrame})
                QTest::addRow("%dx%d frame %d", size.width(), size.height(), frame)
                    << size << frame;
        }
    }

    void readsWhatWasPainted()
    {
        QFETCH(QSize, size);
        QFETCH(int, frame);
        const QImage image = frameWith(size, frame);
        QCOMPARE(TimeCode::read(image), std::optional<int>(frame));
        // Lossy compression at a poor quality must not change the number.
        QCOMPARE(TimeCode::read(throughJpeg(image, 25)), std::optional<int>(frame));
    }

    void refusesWhatIsNotATimeCode()
    {
        QImage grey(QSize(320, 180), QImage::Format_RGB32);
        grey.fill(QColor(128, 128, 128));
        QCOMPARE(TimeCode::read(grey), std::nullopt);
        QCOMPARE(TimeCode::read(QImage()), std::nullopt);
        QCOMPARE(TimeCode::read(frameWith(QSize(1280, 720), 77).scaled(100, 60)), std::nullopt);

        // One data block turned over: the parity block no longer agrees.
        QImage image = frameWith(QSize(320, 180), 1234);
        const QRect strip = TimeCode::stripRect(image.size());
        const int cell = strip.width() / TimeCode::Cells;
        const QRect lastDataBit(strip.left() + (TimeCode::Cells - 3) * cell, strip.top(), cell,
                                strip.height());
        QPainter painter(&image);
        painter.fillRect(lastDataBit, image.pixelColor(lastDataBit.center()) == QColor(Qt::white)
                                          ? Qt::black
                                          : Qt::white);
        painter.end();
        QCOMPARE(TimeCode::read(image), std::nullopt);
    }
};

QTEST_MAIN(TestTimeCode)
#include "tst_timecode.moc"
