#include "widgets/tkimagebutton.h"

#include "../widgetrender.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

using kavro::TKImageButton;

namespace {

// The dark window behind the controls.
const QColor windowColor(0x15, 0x17, 0x1a);

QImage look(QWidget& widget)
{
    return kavro::test::renderOn(widget, windowColor);
}

// What the button should show: the image centred on the window.
QImage expectedLook(const QString& name, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(windowColor);
    QPainter painter(&image);
    const QImage picture = kavro::test::imageAlone(name);
    painter.drawImage((size.width() - picture.width()) / 2, (size.height() - picture.height()) / 2,
                      picture);
    return image;
}

// The middle of the play triangle.
const QPoint playGlyph(20, 20);

} // namespace

class TestTKImageButton : public QObject
{
    Q_OBJECT

private slots:
    void takesItsSizeAndStateImagesFromTheNormalImage()
    {
        TKImageButton button;
        button.setImage(QStringLiteral("icon_play_n"));
        QCOMPARE(button.sizeHint(), QSize(40, 40));
        // A name with an extension finds the same image; one without "_n" brings no others.
        button.setImage(QStringLiteral("record_n.png"));
        QCOMPARE(button.images().normal.name(), QStringLiteral("record_n"));
        QCOMPARE(button.images().pressed.name(), QStringLiteral("record_p"));
        button.setImage(QStringLiteral("app_icon"));
        QVERIFY(button.images().pressed.isNull());
    }

    void showsRollOverPressedAndFadedLooks()
    {
        QWidget window;
        window.resize(120, 80);
        TKImageButton button(&window);
        button.setImage(QStringLiteral("icon_play_n"));
        button.move(40, 20);
        button.resize(button.sizeHint());
        QSignalSpy clicked(&button, &TKImageButton::clicked);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto showing = [&](const char* name) { return expectedLook(name, button.size()); };

        QCOMPARE(look(button), showing("icon_play_n"));
        QTest::mouseMove(&button, QPoint(20, 20));
        QTRY_COMPARE(look(button), showing("icon_play_h"));
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(20, 20));
        QCOMPARE(look(button), showing("icon_play_p"));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(20, 20));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(look(button), showing("icon_play_h"));
        QTest::mouseMove(&window, QPoint(5, 5));
        QTRY_COMPARE(look(button), showing("icon_play_n"));

        const int enabled = QColor(look(button).pixel(playGlyph)).lightness();
        button.setEnabled(false);
        const int disabled = QColor(look(button).pixel(playGlyph)).lightness();
        QVERIFY2(disabled < enabled - 60,
                 qPrintable(QStringLiteral("%1 vs %2").arg(disabled).arg(enabled)));
    }

    void toggleShowsTheOnImage()
    {
        QWidget window;
        TKImageButton button(&window);
        button.setImage(QStringLiteral("audio_front_n"));
        button.setOnImage(QStringLiteral("audio_rear_n"));
        button.resize(button.sizeHint());
        // Away from where the last test left the pointer, so no stale enter event hovers it.
        window.setGeometry(400, 300, 120, 80);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(button.isCheckable());
        QCOMPARE(look(button), expectedLook(QStringLiteral("audio_front_n"), button.size()));
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(14, 14));
        QVERIFY(button.isChecked());
        QTest::mouseMove(&window, QPoint(100, 60));
        QTRY_COMPARE(look(button), expectedLook(QStringLiteral("audio_rear_n"), button.size()));
        button.setChecked(false);
        QCOMPARE(look(button), expectedLook(QStringLiteral("audio_front_n"), button.size()));
    }

    void keyboardFocusDrawsARingAndSpacePresses()
    {
        QWidget window;
        TKImageButton first(&window);
        TKImageButton second(&window);
        for (TKImageButton* button : {&first, &second}) {
            button->setImage(QStringLiteral("swap_n"));
            button->resize(button->sizeHint());
        }
        second.move(40, 0);
        QSignalSpy clicked(&second, &TKImageButton::clicked);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        first.setFocus(Qt::MouseFocusReason);
        const QRgb edgeWithoutRing = look(first).pixel(1, 14);
        QTest::keyClick(&first, Qt::Key_Tab);
        QVERIFY(second.hasFocus());
        const QColor ring = QColor(look(second).pixel(1, 14));
        QVERIFY(ring.blue() > ring.red() + 60);
        QCOMPARE(look(first).pixel(1, 14), edgeWithoutRing);
        QTest::keyClick(&second, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
    }
};

QTEST_MAIN(TestTKImageButton)
#include "tst_tkimagebutton.moc"
