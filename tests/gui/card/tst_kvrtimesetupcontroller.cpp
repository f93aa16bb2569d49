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
#include <QPointer>
#include <QPushButton>
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

    void typedDateAndTimeShow()
    {
        QCOMPARE(part<QLabel>(m_window.get(), "dateField")->text(), "Friday, 5 March 2027");
        QCOMPARE(part<TKClockPicker>(m_window.get(), "clockTimePicker")->time(), QTime(7, 4, 9));
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

    // "Today" sets the day and comes back unticked; the time stays.
    void todayUnticksItself()
    {
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

    void savedToTheChosenFile_data()
    {
        QTest::addColumn<QByteArray>("before"); // "-": no file
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("new file") << QByteArray("-") << false << QByteArray("2027/03/05 07:04:09");
        QTest::newRow("longer file keeps its tail")
            << QByteArray("2020/01/01 00:00:00 extra\n") << false
            << QByteArray("2027/03/05 07:04:09 extra\n");
        QTest::newRow("shorter file")
            << QByteArray("12345") << false << QByteArray("2027/03/05 07:04:09");
        QTest::newRow("cancelled") << QByteArray("old") << true << QByteArray("old");
    }

    void savedToTheChosenFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(bool, cancel);
        QFETCH(QByteArray, after);
        QTemporaryDir dir;
        const QString path = dir.filePath("timeset.cfg");
        if (before != "-")
            QVERIFY(test::writeFile(path, before));

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
        QCOMPARE(test::readFile(path), after);
    }

    // A full card still takes the clock file over the old one, where it needs no new room; a new
    // file finds none, and a write-protected card takes nothing. The confirmation comes all the
    // same, the reason goes to the log, and no empty file is left.
    void faultyCardStillConfirms_data()
    {
        QTest::addColumn<QByteArray>("before"); // "-": no file
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<QByteArray>("after"); // "-": no file
        QTest::newRow("full card, new file") << QByteArray("-") << false << QByteArray("-");
        QTest::newRow("full card, file there") << QByteArray("2020/01/01 00:00:00 extra\n") << false
                                               << QByteArray("2027/03/05 07:04:09 extra\n");
        QTest::newRow("write-protected card")
            << QByteArray("2020/01/01 00:00:00") << true << QByteArray("2020/01/01 00:00:00");
    }

    void faultyCardStillConfirms()
    {
        QFETCH(QByteArray, before);
        QFETCH(bool, readOnly);
        QFETCH(QByteArray, after);
        QTemporaryDir dir;
        const QString stage = dir.filePath("stage"), mount = dir.filePath("mnt");
        const QString image = dir.filePath("card.img"), path = mount + "/timeset.cfg";
        QVERIFY(QDir().mkpath(stage));
        if (before != "-")
            QVERIFY(test::writeFile(stage + "/timeset.cfg", before));
        test::FuseCard card;
        QString error;
        QVERIFY2(card.insert(image, stage, 1, mount, &error), qPrintable(error));
        if (readOnly) {
            card.pull();
            QVERIFY2(card.mount(image, mount, &error, true), qPrintable(error));
        } else {
            QVERIFY(card.fill("fill"));
        }
        const QRegularExpression logged("^clock file not written to " +
                                        QRegularExpression::escape(path) + ": .+");
        // Expected and not seen fails the test, as does seen and not expected.
        if (after == "-" || after == before)
            QTest::ignoreMessage(QtWarningMsg, logged);
        else
            QTest::failOnWarning(logged);

        QTest::keyClick(m_window.get(), Qt::Key_S, Qt::ControlModifier);
        auto* panel = qobject_cast<QFileDialog*>(visibleChild(m_window.get(), "QFileDialog"));
        QVERIFY(panel);
        saveThroughPanel(panel, path, before != "-");
        QCOMPARE(QFileInfo::exists(path), after != "-");
        if (after != "-")
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
