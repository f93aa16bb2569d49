#include "appfixture.h"
#include "map/kvrmapview.h"

#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>

using namespace kavro;
using kavro::test::Viewer;

namespace {

// A widget's rectangle in its parent box.
QRect in(const QWidget* widget)
{
    return widget->geometry();
}

void sendMouse(QWidget* window, QEvent::Type type, const QPoint& global)
{
    const Qt::MouseButtons buttons =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, window->mapFromGlobal(global), global, Qt::LeftButton, buttons, {});
    QCoreApplication::sendEvent(window, &event);
}

} // namespace

class TestKVRWindowLayout : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    std::unique_ptr<Viewer> m_viewer;

private slots:
    void init()
    {
        m_viewer = std::make_unique<Viewer>();
        QVERIFY(QTest::qWaitForWindowExposed(m_viewer->window()));
        QTRY_COMPARE(m_viewer->window()->frameGeometry().size(), KVRWindowLayout::minWindowSize());
    }

    void cleanup() { m_viewer.reset(); }

    void normalArrangementHasTheFixedSizes()
    {
        const KVRMainWindowUI& ui = m_viewer->ui();
        const QRect background = in(ui.backgroundBox);
        QCOMPARE(in(ui.headBox), QRect(0, 0, background.width(), 50));
        QCOMPARE(in(ui.bodyBox), QRect(0, 50, background.width(), background.height() - 50));

        const QRect body = ui.bodyBox->rect();
        const QRect left = in(ui.bodyLeftBox);
        const QRect right = in(ui.bodyRightBox);
        QCOMPARE(left.left(), 10);
        QCOMPARE(right.width(), 334);
        QCOMPARE(right.left() - left.right() - 1, 10);
        QCOMPARE(body.right() - right.right(), 10);
        for (const QRect& column : {left, right}) {
            QCOMPARE(column.top(), 0);
            QCOMPARE(body.bottom() - column.bottom(), 8);
        }

        const QRect video = in(ui.videoBox);
        const QRect gsensor = in(ui.gsensorBox);
        const QRect controls = in(ui.mediaControlBox);
        QCOMPARE(video.top(), 0);
        QCOMPARE(gsensor.height(), 130);
        QCOMPARE(controls.height(), 72);
        QCOMPARE(gsensor.top() - video.bottom() - 1, 4);
        QCOMPARE(controls.top() - gsensor.bottom() - 1, 4);
        QCOMPARE(controls.bottom(), left.height() - 1);
        for (const QRect& box : {video, gsensor, controls})
            QCOMPARE(box.width(), left.width());
        QVERIFY(!ui.mediaControlBoxForFullScreen->isVisible());

        QCOMPARE(in(ui.sideButtonBox), QRect(0, 0, 334, 32));
        QCOMPARE(in(ui.subVideoBox), QRect(0, right.height() - 250, 334, 250));
        QCOMPARE(in(ui.mediaListBox), QRect(0, 32, 334, right.height() - 32 - 250));
        QCOMPARE(in(ui.mediaListTableView), ui.mediaListBox->rect());
        QCOMPARE(ui.subVideoContainerView->geometry(), ui.subVideoBox->rect());
        QVERIFY(ui.player1BackgroundView->isVisible());
        QCOMPARE(ui.player1BackgroundView->logoImageName(), QString("v1_front_logo"));
        QCOMPARE(ui.player2BackgroundView->logoImageName(), QString("v2_rear_logo"));
    }

    void fullScreenCoversTheScreenAndEscapeLeavesIt()
    {
        CustomWindow* window = m_viewer->window();
        const KVRMainWindowUI& ui = m_viewer->ui();
        const QRect start = window->frameGeometry();
        QCOMPARE(window->initialFrame(), start);
        // Resized by hand before: leaving still returns to the start-up frame.
        window->resize(1200, 800);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::keyClick(ui.mediaListTableView, Qt::Key_F);
        QVERIFY(window->isFullScreen());

        QCOMPARE(window->frameGeometry(), window->screen()->geometry());
        QVERIFY(!window->menuBar()->isVisible());
        const std::initializer_list<QWidget*> gone{ui.headBox, ui.bodyRightBox, ui.gsensorBox,
                                                   ui.mediaControlBox};
        for (QWidget* box : gone)
            QVERIFY2(!box->isVisible(), qPrintable(box->objectName()));
        QCOMPARE(in(ui.bodyBox), ui.backgroundBox->rect());
        const QRect left = in(ui.bodyLeftBox);
        QCOMPARE(left, QRect(0, 0, ui.bodyBox->width(), ui.bodyBox->height() - 2));
        const QRect bar = in(ui.mediaControlBoxForFullScreen);
        QVERIFY(ui.mediaControlBoxForFullScreen->isVisible());
        QCOMPARE(bar, QRect(0, left.height() - 36, left.width() - 2, 36));
        QCOMPARE(in(ui.videoBox), QRect(0, 0, left.width(), left.height() - 36));

        QTest::keyClick(ui.mediaListTableView, Qt::Key_Escape);
        QVERIFY(!window->isFullScreen());
        QTRY_COMPARE(window->frameGeometry(), start);
        QVERIFY(ui.headBox->isVisible() && ui.bodyRightBox->isVisible());
        QVERIFY(ui.gsensorBox->isVisible() && ui.mediaControlBox->isVisible());
        QVERIFY(!ui.mediaControlBoxForFullScreen->isVisible());
        QVERIFY(window->menuBar()->isVisible());

        // Escape in the normal arrangement changes nothing.
        QTest::keyClick(ui.mediaListTableView, Qt::Key_Escape);
        QCOMPARE(window->frameGeometry(), start);
    }

    void theSideButtonsSwitchBetweenListAndMap()
    {
        const KVRMainWindowUI& ui = m_viewer->ui();
        QCOMPARE(ui.recordButtonImageView->images().normal.name(), QString("record_p"));
        QCOMPARE(ui.informationButtonImageView->images().normal.name(), QString("information_n"));
        QTest::mouseClick(ui.informationButtonImageView, Qt::LeftButton);
        QCOMPARE(m_viewer->delegate->layout()->rightViewMode(), KVRWindowLayout::MapMode);
        QVERIFY(ui.mapContainerView->isVisible());
        QVERIFY(!ui.mediaListTableView->isVisible());
        QCOMPARE(m_viewer->delegate->mapWebView()->parentWidget(), ui.mapContainerTopView);
        QVERIFY(m_viewer->delegate->mapWebView()->isVisible());
        QCOMPARE(in(ui.mapContainerView), ui.mediaListBox->rect());
        QCOMPARE(in(ui.mapContainerBottomView).height(), 57);
        QCOMPARE(in(ui.mapContainerBottomView).bottom(), ui.mapContainerView->height() - 1);
        QCOMPARE(in(ui.mapContainerTopView).height(), ui.mapContainerView->height() - 57);
        QCOMPARE(ui.recordButtonImageView->images().normal.name(), QString("record_n"));
        QCOMPARE(ui.informationButtonImageView->images().normal.name(), QString("information_p"));

        // Ctrl+1 and Ctrl+2 press the same buttons.
        QTest::keyClick(ui.mapContainerView, Qt::Key_1, Qt::ControlModifier);
        QVERIFY(ui.mediaListTableView->isVisible());
        QTest::keyClick(ui.mediaListTableView, Qt::Key_2, Qt::ControlModifier);
        QVERIFY(ui.mapContainerView->isVisible());
        // A newly read folder brings the list back.
        QTemporaryDir empty;
        QVERIFY(m_viewer->openFolder(empty.path()));
        QVERIFY(ui.mediaListTableView->isVisible());
        QVERIFY(!ui.mapContainerView->isVisible());
        QCOMPARE(ui.recordButtonImageView->images().normal.name(), QString("record_p"));
    }

    void draggingMovesTheWindowButNotAboveTheScreen()
    {
        CustomWindow* window = m_viewer->window();
        const QPoint origin = window->frameGeometry().topLeft();
        const QPoint press = m_viewer->ui().headBox->mapToGlobal(QPoint(600, 25));
        sendMouse(window, QEvent::MouseButtonPress, press);
        sendMouse(window, QEvent::MouseMove, press + QPoint(-40, 30));
        QCOMPARE(window->frameGeometry().topLeft(), origin + QPoint(-40, 30));
        sendMouse(window, QEvent::MouseMove, press + QPoint(15, -origin.y() - 300));
        QCOMPARE(window->frameGeometry().topLeft(),
                 QPoint(origin.x() + 15, window->screen()->availableGeometry().top()));
        sendMouse(window, QEvent::MouseButtonRelease, press);
    }

    void theLoadingIndicatorShowsOverTheHeadUntilHidden()
    {
        const KVRMainWindowUI& ui = m_viewer->ui();
        KVRLoadingController* loading = m_viewer->delegate->loading();
        loading->showLoading("Loading...");
        QVERIFY(ui.progressIndicator->isVisible());
        QCOMPARE(ui.progressIndicator->geometry().center().x(),
                 ui.headBox->geometry().center().x());
        QTRY_VERIFY(loading->progress() > 0);
        QVERIFY(ui.progressIndicator->isVisible());
        loading->hideLoading();
        QTRY_VERIFY_WITH_TIMEOUT(!ui.progressIndicator->isVisible(), 1000);

        // Never hidden: it goes by itself, full, after its longest time.
        loading->setLongestDisplayTime(1.5);
        loading->showLoading("Loading...");
        QTRY_VERIFY_WITH_TIMEOUT(!ui.progressIndicator->isVisible(), 3000);
        QCOMPARE(loading->progress(), 100.0);
    }
};

QTEST_MAIN(TestKVRWindowLayout)
#include "tst_kvrwindowlayout.moc"
