// The main window without video: its arrangement, its list of recordings, what it takes by
// drag and drop, the loading indicator, and in Korean the room its texts and the settings
// window's get.

#include "appfixture.h"
#include "map/kvrmapview.h"
#include "settings/kvrsettingcontroller.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QIcon>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScreen>

using namespace kavro;
using kavro::test::Viewer;

namespace {

void sendMouse(QWidget* window, QEvent::Type type, const QPoint& global)
{
    const Qt::MouseButtons buttons =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, window->mapFromGlobal(global), global, Qt::LeftButton, buttons, {});
    QCoreApplication::sendEvent(window, &event);
}

QString rectText(const QRect& r)
{
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

// Each box's rectangle in its parent, all compared at once.
template <std::size_t N> void compareArrangement(const std::pair<QWidget*, QRect> (&boxes)[N])
{
    QStringList shown, wanted;
    for (const auto& [box, rect] : boxes) {
        shown << box->objectName() + ' ' + rectText(box->geometry());
        wanted << box->objectName() + ' ' + rectText(rect);
    }
    QCOMPARE(shown, wanted);
}

// URLs dragged onto the list and dropped there: whether it took them.
bool dropOnTheList(const Viewer& viewer, const QList<QUrl>& urls)
{
    QWidget* target = viewer.ui().mediaListTableView->viewport();
    QMimeData data;
    data.setUrls(urls);
    const QPoint at = target->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(target, &drop);
    return enter.isAccepted() && drop.isAccepted();
}

// "setting.basic.enable_gsensor", "nSecond_fmt": what a text looks like when its key shows.
bool looksLikeKey(const QString& text)
{
    static const QRegularExpression key(
        QStringLiteral("^[A-Za-z]\\w*([.][A-Za-z]\\w*)+$|^[A-Za-z]+_\\w*$"));
    return key.match(text).hasMatch();
}

// The texts of root's visible labels and buttons that are cut off or show a key.
QStringList badTexts(QWidget* root)
{
    QStringList bad;
    const auto check = [&bad](QWidget* widget, const QString& text, QSize need) {
        if (!widget->isVisible() || text.isEmpty())
            return;
        if (looksLikeKey(text))
            bad << QStringLiteral("key shown: ") + text;
        else if (widget->width() < need.width() || widget->height() < need.height())
            bad << text + " needs " + rectText({{}, need}) + ", has " + rectText(widget->rect());
    };
    for (QLabel* label : root->findChildren<QLabel*>()) {
        // A wrapping label trades width for height: only the height tells.
        const QSize need =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        check(label, label->text(), need);
    }
    for (QAbstractButton* button : root->findChildren<QAbstractButton*>())
        check(button, button->text(), button->sizeHint());
    // Controls of fixed size in a row too short for them are laid over each other.
    for (QBoxLayout* row : root->findChildren<QBoxLayout*>()) {
        QList<QWidget*> shown;
        for (int i = 0; i < row->count(); ++i) {
            QWidget* widget = row->itemAt(i)->widget();
            if (widget && widget->isVisible())
                shown << widget;
        }
        for (qsizetype i = 1; i < shown.size(); ++i) {
            if (shown[i - 1]->geometry().intersects(shown[i]->geometry()))
                bad << QStringLiteral("%1 overlaps %2")
                           .arg(shown[i - 1]->objectName(), shown[i]->objectName());
        }
    }
    return bad;
}

} // namespace

class TestKVRMainWindow : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    std::unique_ptr<Viewer> m_viewer;
    QTemporaryDir m_dir;

    QString makeFolder(const QString& name, const QStringList& files)
    {
        const QString folder = m_dir.filePath(name);
        return test::makeFiles(folder, files) ? folder : QString();
    }

private slots:
    void init()
    {
        m_viewer = std::make_unique<Viewer>();
        QVERIFY(QTest::qWaitForWindowExposed(m_viewer->window()));
        QTRY_COMPARE(m_viewer->window()->frameGeometry().size(), KVRWindowLayout::minWindowSize());
    }

    void cleanup() { m_viewer.reset(); }

    void showsOneRowPerRecordingWithItsCells()
    {
        const QString folder = makeFolder(
            "card", {"DCIM/A/alwa_20240131_120000_F.avi", "DCIM/A/alwa_20240131_120000_R.avi",
                     "DCIM/E/event_20240131_120000_F.avi", "DCIM/M/motion_20240201_080910_R.AVI",
                     "ALWA_20240131_120000_F.avi"});
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.openFolder(folder));
        KVRMediaListTableModel* model = viewer.model();
        QCOMPARE(model->rowCount(), 5);
        QCOMPARE(viewer.ui().mediaListTableView->model(), model);

        // In the list's order, which the recording-list tests pin down.
        const char* const expected[] = {
            "ALWA_20240131_120000_F.avi media.always car_front_alwa - -",
            "event_20240131_120000_F.avi media.event car_front_event 2024-01-31 12:00:00",
            "alwa_20240131_120000_F.avi media.always car_front_alwa 2024-01-31 12:00:00",
            "alwa_20240131_120000_R.avi media.always car_rear_alwa 2024-01-31 12:00:00",
            "motion_20240201_080910_R.AVI media.motion car_rear_motion 2024-02-01 08:09:10",
        };
        using Model = KVRMediaListTableModel;
        for (int row = 0; row < 5; ++row) {
            QStringList want = QString(expected[row]).split(' '); // "-" for an empty cell
            want.replaceInStrings(QRegularExpression("^-$"), QString());
            want[1] = qtTrId(qPrintable(want[1]));
            const QStringList shown = {
                viewer.cell(row, Model::FileColumn), viewer.cell(row, Model::SaveModeColumn),
                Model::modeImageName(*model->mediaAtIndex(row)),
                viewer.cell(row, Model::DateColumn), viewer.cell(row, Model::TimeColumn)};
            QCOMPARE(shown, want);
            const QModelIndex mode = model->index(row, Model::SaveModeColumn);
            QVERIFY(!mode.data(Qt::DecorationRole).value<QIcon>().isNull());
            QVERIFY(!mode.siblingAtColumn(Model::DateColumn).data(Qt::DecorationRole).isValid());
        }

        const QStringList keys{"filelist.mode", "filelist.date", "filelist.time", "filelist.file"};
        for (int column = 0; column < 4; ++column) {
            QCOMPARE(model->headerData(column, Qt::Horizontal).toString(),
                     qtTrId(qPrintable(keys[column])));
            const auto alignment = model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole)
                                       .value<Qt::Alignment>();
            QCOMPARE(bool(alignment & Qt::AlignLeft), column == KVRMediaListTableModel::FileColumn);
        }
        QVERIFY(!model->index(5, 0).data().isValid());
        QVERIFY(!model->mediaAtIndex(-1));
        QVERIFY(!model->mediaAtIndex(5));
        // The pair of a rear row is found from its name alone.
        const auto pair = model->findMediaPairWithFileName("alwa_20240131_120000_R");
        QVERIFY(pair && pair->frontMedia() && pair->rearMedia());
    }

    // A drop offers the first local folder, or the folder of the first file, and the list shows
    // what it holds; anything else is refused.
    void aDropOnTheListOpensAFolder_data()
    {
        QTest::addColumn<QList<QUrl>>("urls");
        QTest::addColumn<QString>("folder");
        const QString card = makeFolder("dropped", {"DCIM/alwa_20240131_120000_F.avi"});
        const QString file = QDir(card).filePath("DCIM/alwa_20240131_120000_F.avi");
        QTest::newRow("folder") << QList<QUrl>{QUrl::fromLocalFile(card)} << card;
        QTest::newRow("file: its folder")
            << QList<QUrl>{QUrl::fromLocalFile(file)} << QFileInfo(file).absolutePath();
        QTest::newRow("web address first")
            << QList<QUrl>{QUrl("https://example.com/x"), QUrl::fromLocalFile(card)} << card;
        QTest::newRow("missing path")
            << QList<QUrl>{QUrl::fromLocalFile(m_dir.filePath("gone"))} << QString();
        QTest::newRow("nothing") << QList<QUrl>{} << QString();
    }

    void aDropOnTheListOpensAFolder()
    {
        QFETCH(QList<QUrl>, urls);
        QFETCH(QString, folder);
        QSignalSpy offered(m_viewer->ui().mediaListTableView,
                           &KVRMediaListTableView::directoryDropped);
        QCOMPARE(dropOnTheList(*m_viewer, urls), !folder.isEmpty());
        QCOMPARE(offered.size(), folder.isEmpty() ? 0 : 1);
        QCOMPARE(offered.value(0).value(0).toString(), folder);
        QTRY_COMPARE_WITH_TIMEOUT(m_viewer->model()->rowCount(), folder.isEmpty() ? 0 : 1,
                                  test::StartWaitMs);
    }

    // The boxes in their parents, from the fixed sizes and gaps: a 50 head, 10 margins and gap,
    // a 334 right column, 8 below, 4 between the left boxes.
    void normalArrangementHasTheFixedSizes()
    {
        const KVRMainWindowUI& ui = m_viewer->ui();
        const int w = ui.backgroundBox->width(), column = ui.backgroundBox->height() - 58;
        const std::pair<QWidget*, QRect> boxes[] = {
            {ui.headBox, {0, 0, w, 50}},
            {ui.bodyBox, {0, 50, w, column + 8}},
            {ui.bodyLeftBox, {10, 0, w - 364, column}},
            {ui.bodyRightBox, {w - 344, 0, 334, column}},
            {ui.videoBox, {0, 0, w - 364, column - 210}},
            {ui.gsensorBox, {0, column - 206, w - 364, 130}},
            {ui.mediaControlBox, {0, column - 72, w - 364, 72}},
            {ui.sideButtonBox, {0, 0, 334, 32}},
            {ui.mediaListBox, {0, 32, 334, column - 282}},
            {ui.mediaListTableView, {0, 0, 334, column - 282}},
            {ui.subVideoBox, {0, column - 250, 334, 250}},
            {ui.subVideoContainerView, {0, 0, 334, 250}}};
        compareArrangement(boxes);
        QVERIFY(!ui.mediaControlBoxForFullScreen->isVisible());
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
        QCOMPARE(window->frameGeometry(), QRect(0, 0, 1600, 1000));
        QVERIFY(!window->menuBar()->isVisible());
        // The body over the whole background, the video on all of it but 2 below, and the 36
        // high bar over the video's foot.
        const int w = ui.backgroundBox->width(), h = ui.backgroundBox->height();
        const std::pair<QWidget*, QRect> boxes[] = {
            {ui.bodyBox, {0, 0, w, h}},
            {ui.bodyLeftBox, {0, 0, w, h - 2}},
            {ui.mediaControlBoxForFullScreen, {0, h - 38, w - 2, 36}},
            {ui.videoBox, {0, 0, w, h - 38}}};
        compareArrangement(boxes);
        // Shown only in full screen, the rest only outside it.
        QWidget* const boxesOfOneMode[] = {ui.mediaControlBoxForFullScreen,
                                           ui.headBox,
                                           ui.bodyRightBox,
                                           ui.gsensorBox,
                                           ui.mediaControlBox,
                                           window->menuBar()};
        for (QWidget* box : boxesOfOneMode)
            QCOMPARE(box->isVisible(), box == ui.mediaControlBoxForFullScreen);

        QTest::keyClick(ui.mediaListTableView, Qt::Key_Escape);
        QVERIFY(!window->isFullScreen());
        QTRY_COMPARE(window->frameGeometry(), start);
        for (QWidget* box : boxesOfOneMode)
            QCOMPARE(box->isVisible(), box != ui.mediaControlBoxForFullScreen);
        // Escape in the normal arrangement changes nothing.
        QTest::keyClick(ui.mediaListTableView, Qt::Key_Escape);
        QCOMPARE(window->frameGeometry(), start);
    }

    void theSideButtonsSwitchBetweenListAndMap()
    {
        const KVRMainWindowUI& ui = m_viewer->ui();
        // The pressed look of each button, and which of list and map shows.
        const auto state = [&ui] {
            return QStringList{ui.recordButtonImageView->images().normal.name(),
                               ui.informationButtonImageView->images().normal.name(),
                               ui.mediaListTableView->isVisible() ? "list" : "",
                               ui.mapContainerView->isVisible() ? "map" : ""};
        };
        const QStringList list{"record_p", "information_n", "list", ""};
        const QStringList map{"record_n", "information_p", "", "map"};
        QCOMPARE(state(), list);
        QTest::mouseClick(ui.informationButtonImageView, Qt::LeftButton);
        QCOMPARE(state(), map);
        QCOMPARE(m_viewer->delegate->layout()->rightViewMode(), KVRWindowLayout::MapMode);
        QCOMPARE(m_viewer->delegate->mapWebView()->parentWidget(), ui.mapContainerTopView);
        QVERIFY(m_viewer->delegate->mapWebView()->isVisible());
        const int height = ui.mediaListBox->height();
        QCOMPARE(ui.mapContainerView->geometry(), QRect(0, 0, 334, height));
        QCOMPARE(ui.mapContainerTopView->geometry(), QRect(0, 0, 334, height - 57));
        QCOMPARE(ui.mapContainerBottomView->geometry(), QRect(0, height - 57, 334, 57));

        // Ctrl+1 and Ctrl+2 press the same buttons.
        QTest::keyClick(ui.mapContainerView, Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(state(), list);
        QTest::keyClick(ui.mediaListTableView, Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(state(), map);
        // A newly read folder brings the list back.
        QTemporaryDir empty;
        QVERIFY(m_viewer->openFolder(empty.path()));
        QCOMPARE(state(), list);
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

    // The main window and every page of the settings window, in Korean at their smallest size:
    // each text fits the room its control got, none shows as its key, and no control lies over
    // another.
    void koreanTextsFitTheirRoom()
    {
        const auto english = qScopeGuard([] { installInfoPlistTranslator(QStringLiteral("en")); });
        Viewer korean(QStringLiteral("ko"));
        korean.window()->resize(1, 1);
        QTemporaryDir card;
        KVRSettingController settings(KVRSettingController::Options{nullptr, card.path(), true});
        settings.showWindow();
        QTRY_VERIFY_WITH_TIMEOUT(!settings.isLoading(), 10000);
        settings.resize(1, 1);
        QTRY_VERIFY(korean.window()->isVisible() && settings.isVisible());
        QApplication::processEvents();
        QStringList bad = badTexts(korean.window());
        const char* const pages[] = {"video", "basic", "gps", "aux", "motion", "audio", "drive"};
        for (int tab = 0; tab < KVRSettingController::TabCount; ++tab) {
            settings.changeViewController(tab);
            QCOMPARE(settings.lastSelectedTabIndex(), tab);
            QApplication::processEvents();
            for (const QString& text : badTexts(&settings))
                bad << pages[tab] + QStringLiteral(": ") + text;
        }
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join(QStringLiteral("; "))));
    }
};

QTEST_MAIN(TestKVRMainWindow)
#include "tst_kvrmainwindow.moc"
