// The main window and every page of the settings window, in Korean at their smallest size: each
// text fits the room its control got, none shows as its key, and no control lies over another.

#include "appfixture.h"

#include "settings/kvrsettingcontroller.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QRegularExpression>

using namespace kavro;
using kavro::test::Viewer;

namespace {

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
            bad << QStringLiteral("%1 needs %2x%3, has %4x%5")
                       .arg(text)
                       .arg(need.width())
                       .arg(need.height())
                       .arg(widget->width())
                       .arg(widget->height());
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

class TestKoreanLayout : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    std::unique_ptr<Viewer> m_viewer;
    std::unique_ptr<KVRSettingController> m_settings;
    QTemporaryDir m_card;

private slots:
    void initTestCase()
    {
        m_viewer = std::make_unique<Viewer>(QStringLiteral("ko"));
        m_viewer->window()->resize(1, 1);
        m_settings = std::make_unique<KVRSettingController>(
            KVRSettingController::Options{nullptr, m_card.path(), true});
        m_settings->showWindow();
        QTRY_VERIFY_WITH_TIMEOUT(!m_settings->isLoading(), 10000);
        m_settings->resize(1, 1);
    }

    void cleanupTestCase() { installInfoPlistTranslator(QStringLiteral("en")); }

    void textsFitTheirRoom_data()
    {
        QTest::addColumn<int>("tab");
        QTest::newRow("main window") << -1;
        const char* const pages[] = {"video", "basic", "gps", "aux", "motion", "audio", "drive"};
        for (int tab = 0; tab < KVRSettingController::TabCount; ++tab)
            QTest::addRow("settings: %s", pages[tab]) << tab;
    }

    void textsFitTheirRoom()
    {
        QFETCH(int, tab);
        QWidget* root = m_viewer->window();
        if (tab >= 0) {
            m_settings->changeViewController(tab);
            QCOMPARE(m_settings->lastSelectedTabIndex(), tab);
            root = m_settings.get();
        }
        QTRY_VERIFY(root->isVisible());
        QApplication::processEvents();
        const QStringList bad = badTexts(root);
        QVERIFY2(bad.isEmpty(), qPrintable(bad.join(QStringLiteral("; "))));
    }
};

QTEST_MAIN(TestKoreanLayout)
#include "tst_koreanlayout.moc"
