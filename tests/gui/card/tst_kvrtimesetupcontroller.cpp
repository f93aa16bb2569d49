// The clock window driven by hand: the two time pickers follow each other, "today" springs back,
// and the save panel's file gets the 19 bytes without losing what followed them.

#include "card/kvrtimesetupcontroller.h"
#include "fusecard.h"
#include "resources/translations/infoplisttranslator.h"
#include "testsupport.h"
#include "widgets/tkclockpicker.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeEdit>
#include <QTimer>

using namespace kavro;

namespace {

constexpr int WaitMs = 10000;

template <typename T> T* part(QWidget* window, const char* name)
{
    return window->findChild<T*>(QString::fromLatin1(name));
}

QWidget* visibleChild(QWidget* window, const QString& type)
{
    for (QWidget* child : window->findChildren<QWidget*>()) {
        if (child->isVisible() && child->inherits(qPrintable(type)))
            return child;
    }
    return nullptr;
}

// 5 March 2027 on the calendar, then 07:04:09 typed into the time field.
void chooseMarchFifth(QWidget* window)
{
    part<QCalendarWidget>(window, "datePicker")->setSelectedDate(QDate(2027, 3, 5));
    auto* time = part<QTimeEdit>(window, "timePicker");
    time->setFocus();
    time->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClicks(time, "070409");
}

} // namespace

class TestKVRTimeSetupController : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        test::isolatedConfigHome();
        QLocale::setDefault(QLocale::c());
        installInfoPlistTranslator(QStringLiteral("en"));
    }

    void init()
    {
        m_window = std::make_unique<KVRTimeSetupController>(nullptr);
        m_window->windowDidLoad();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        chooseMarchFifth(m_window.get());
    }

    void timePickersKeptEqual_data()
    {
        QTest::addColumn<QPoint>("click"); // on the clock face, 0,0 the centre
        QTest::addColumn<QTime>("shown");
        // The face is a circle of the widget's smaller side less 4; the rim is ~70 out.
        QTest::newRow("rim at three: minute 15") << QPoint(60, 0) << QTime(7, 15, 9);
        QTest::newRow("rim at six: minute 30") << QPoint(0, 60) << QTime(7, 30, 9);
        QTest::newRow("centre at nine: hour 9") << QPoint(-25, 0) << QTime(9, 4, 9);
        QTest::newRow("centre at twelve: hour 0") << QPoint(0, -25) << QTime(0, 4, 9);
    }

    void timePickersKeptEqual()
    {
        QFETCH(QPoint, click);
        QFETCH(QTime, shown);
        auto* clock = part<TKClockPicker>(m_window.get(), "clockTimePicker");
        clock->resize(150, 150);
        QTest::mouseClick(clock, Qt::LeftButton, {}, QPoint(75, 75) + click);
        QCOMPARE(clock->time(), shown);
        QCOMPARE(part<QTimeEdit>(m_window.get(), "timePicker")->time(), shown);

        // And back: a minute up in the time field moves the clock's hands.
        auto* field = part<QTimeEdit>(m_window.get(), "timePicker");
        field->setFocus();
        field->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(field, Qt::Key_Up);
        QCOMPARE(clock->time(), shown.addSecs(60));
    }

    // The typed day shows in words; "Today" sets the day and comes back unticked; the time stays.
    // The typed time reaching the clock is the pickers' test.
    void todayUnticksItself()
    {
        QCOMPARE(part<QLabel>(m_window.get(), "dateField")->text(), "Friday, 5 March 2027");
        auto* today = part<QCheckBox>(m_window.get(), "nowDaySettingChk");
        // It names the day it picks, not the one on the calendar.
        const QString title =
            "Today(" + QLocale::c().toString(QDate::currentDate(), QLocale::ShortFormat) + ")";
        QCOMPARE(today->text(), title);
        QTest::mouseClick(today, Qt::LeftButton);
        QVERIFY(today->isChecked());
        QCOMPARE(part<QCalendarWidget>(m_window.get(), "datePicker")->selectedDate(),
                 QDate::currentDate());
        QCOMPARE(today->text(), title);
        QTRY_VERIFY_WITH_TIMEOUT(!today->isChecked(), WaitMs);
        QCOMPARE(m_window->selectedTime().time(), QTime(7, 4, 9));
    }

    // A full card still takes the clock file over the old one, keeping its tail, where it needs no
    // new room; a new file finds none, and a write-protected card takes nothing. The confirmation
    // comes all the same and the reason goes to the log. Shorter and longer files on a disk are
    // the writer's own test.
    void savedToTheChosenFile_data()
    {
        QTest::addColumn<QByteArray>("before"); // "-": no file
        QTest::addColumn<QString>("card");      // empty: a folder on disk
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<QByteArray>("after"); // empty: no file
        QTest::addColumn<bool>("logged");
        const QByteArray old = "2020/01/01 00:00:00 extra\n", fresh = "2027/03/05 07:04:09";
        QTest::newRow("new file") << QByteArray("-") << "" << false << fresh << false;
        QTest::newRow("cancelled") << old << "" << true << old << false;
        QTest::newRow("full card, file there") << old << "full" << false << fresh + " extra\n"
                                               << false;
        QTest::newRow("full card, new file")
            << QByteArray("-") << "full" << false << QByteArray() << true;
        QTest::newRow("write-protected card") << old << "ro" << false << old << true;
    }

    void savedToTheChosenFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, card);
        QFETCH(bool, cancel);
        QFETCH(QByteArray, after);
        QFETCH(bool, logged);
        QTemporaryDir dir;
        QString folder = dir.filePath("stage");
        QVERIFY(QDir().mkpath(folder));
        if (before != "-")
            QVERIFY(test::writeFile(folder + "/timeset.cfg", before));
        test::FuseCard fuseCard;
        if (!card.isEmpty()) {
            const QString image = dir.filePath("card.img"), mount = dir.filePath("mnt");
            QString error;
            bool ready = fuseCard.insert(image, folder, 1, mount, &error);
            if (ready && card == "full") {
                ready = fuseCard.fill("fill");
            } else if (ready) {
                fuseCard.pull();
                ready = fuseCard.mount(image, mount, &error, true);
            }
            QVERIFY2(ready, qPrintable(error));
            folder = mount;
        }
        const QString path = folder + "/timeset.cfg";
        // Expected and not seen fails the test, as does seen and not expected.
        const QRegularExpression warning("^clock file not written to " +
                                         QRegularExpression::escape(path) + ": .+");
        logged ? QTest::ignoreMessage(QtWarningMsg, warning) : QTest::failOnWarning(warning);

        QTest::keyClick(m_window.get(), Qt::Key_S, Qt::ControlModifier);
        auto* panel = qobject_cast<QFileDialog*>(visibleChild(m_window.get(), "QFileDialog"));
        QVERIFY(panel);
        QCOMPARE(panel->acceptMode(), QFileDialog::AcceptSave);
        if (cancel) {
            panel->reject();
            QTRY_VERIFY_WITH_TIMEOUT(!visibleChild(m_window.get(), "QFileDialog"), WaitMs);
            QVERIFY(!visibleChild(m_window.get(), "QMessageBox"));
            QVERIFY(m_window->isVisible());
        } else {
            saveThroughPanel(panel, path, before != "-");
        }
        QCOMPARE(QFileInfo::exists(path), !after.isEmpty());
        QCOMPARE(test::readFile(path), after);
    }

private:
    // Chooses the file, answers the panel's question about replacing it, and dismisses the
    // confirmation, which closes the window.
    void saveThroughPanel(QFileDialog* panel, const QString& path, bool exists)
    {
        panel->selectFile(path);
        bool asked = false;
        QTimer::singleShot(0, panel, [&asked] {
            if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                asked = true;
                question->button(QMessageBox::Yes)->click();
            }
        });
        static_cast<QDialog*>(panel)->accept();
        QCOMPARE(asked, exists);
        QTRY_VERIFY_WITH_TIMEOUT(visibleChild(m_window.get(), "QMessageBox"), WaitMs);
        auto* alert = static_cast<QMessageBox*>(visibleChild(m_window.get(), "QMessageBox"));
        QCOMPARE(alert->text(), "KAVRO");
        QCOMPARE(alert->informativeText(), "The clock file was saved. Put the card into the "
                                           "camera to set its clock.");
        QTest::keyClick(alert, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->isVisible(), WaitMs);
    }

    std::unique_ptr<KVRTimeSetupController> m_window;
};

QTEST_MAIN(TestKVRTimeSetupController)
#include "tst_kvrtimesetupcontroller.moc"
