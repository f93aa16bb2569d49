#include "card/alertsheet.h"

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <memory>

using kavro::showAlert;
using kavro::showAlertSheet;

// Counts the did-end calls in a counter that outlives it, and notes whether the alert still
// showed at the call.
class DidEndReceiver : public QObject
{
    Q_OBJECT

public:
    explicit DidEndReceiver(int* counter) : m_counter(counter) {}
    QPointer<QMessageBox> box;
    bool boxVisibleAtCall = false;

public slots:
    void alertDidEnd()
    {
        ++*m_counter;
        boxVisibleAtCall = box && box->isVisible();
    }

private:
    int* m_counter;
};

namespace {

QMessageBox* openWith(const QString& form, QWidget* window, DidEndReceiver* receiver)
{
    if (form == QLatin1String("slot"))
        return showAlertSheet(window, "KAVRO", "details", receiver, SLOT(alertDidEnd()));
    return showAlertSheet(window, "KAVRO", "details", receiver,
                          [receiver] { receiver->alertDidEnd(); });
}

} // namespace

class TestAlertSheet : public QObject
{
    Q_OBJECT

private slots:
    void alertIsAWindowModalWarningWithOneOKButton()
    {
        QWidget window;
        window.show();
        // open(), not exec(): with exec this call would not return until the alert closed.
        QPointer<QMessageBox> box = showAlert(&window, "KAVRO", "The card is write-protected.");
        QVERIFY(box && box->isVisible() && box->buttons().size() == 1);
        QCOMPARE(std::tuple(box->parentWidget(), box->windowModality(), box->icon()),
                 std::tuple(&window, Qt::WindowModal, QMessageBox::Warning));
        QCOMPARE(QStringList({box->text(), box->informativeText(), box->buttons().first()->text()}),
                 QStringList({"KAVRO", "The card is write-protected.", "OK"}));

        QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
        QTRY_VERIFY(box.isNull());
    }

    void didEndRunsOnceAfterTheAlertCloses_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("key"); // 0: the button is clicked
        QTest::addColumn<bool>("receiverGone");
        for (const char* form : {"slot", "callback"}) {
            QTest::addRow("%s, clicked", form) << form << 0 << false;
            QTest::addRow("%s, Return", form) << form << int(Qt::Key_Return) << false;
            QTest::addRow("%s, Escape", form) << form << int(Qt::Key_Escape) << false;
            QTest::addRow("%s, receiver gone", form) << form << 0 << true;
        }
    }

    void didEndRunsOnceAfterTheAlertCloses()
    {
        QFETCH(QString, form);
        QFETCH(int, key);
        QFETCH(bool, receiverGone);
        QWidget window;
        window.show();
        int calls = 0;
        auto receiver = std::make_unique<DidEndReceiver>(&calls);
        QPointer<QMessageBox> box = receiver->box = openWith(form, &window, receiver.get());
        QTest::qWait(50);
        QCOMPARE(calls, 0);
        if (receiverGone)
            receiver.reset();

        if (key == 0)
            QTest::mouseClick(box->buttons().first(), Qt::LeftButton);
        else
            QTest::keyClick(box, Qt::Key(key));
        QCOMPARE(calls, receiverGone ? 0 : 1);
        if (receiver)
            QVERIFY(!receiver->boxVisibleAtCall);
        QTRY_VERIFY(box.isNull());
        QCOMPARE(calls, receiverGone ? 0 : 1);
    }
};

QTEST_MAIN(TestAlertSheet)
#include "tst_alertsheet.moc"
