#include "appfixture.h"

#include "common/preferences.h"
#include "kvrlanguagemenu.h"

#include <QMessageBox>
#include <QProcess>
#include <QScopeGuard>
#include <QScreen>

using namespace kavro;
using kavro::test::Viewer;

class TestKVRAppDelegate : public QObject
{
    Q_OBJECT

public:
    static void initMain() { test::prepareViewerEnvironment(); }

private:
    test::TinyCard m_card;

    static QStringList storedLanguages()
    {
        return openPreferences()->value(PrefLanguages).toStringList();
    }

private slots:
    void initTestCase() { m_card.makeInTest(); }

    void startsEmptyInACentredWindowAndStoresEnglish()
    {
        openPreferences()->setValue(PrefLanguages, QStringList{"ko", "en"});
        QTest::ignoreMessage(QtInfoMsg, "SUPPORT_LANGUAGE=ko");
        QTest::ignoreMessage(QtInfoMsg, "SUPPORT_LANGUAGE=en");
        Viewer viewer;
        QCOMPARE(storedLanguages(), QStringList{"en"});

        const QRect usable = viewer.window()->screen()->availableGeometry();
        const QRect expected(usable.x() + (usable.width() - 1020) / 2,
                             usable.y() + (usable.height() - 640) / 2, 1020, 640);
        QTRY_COMPARE(viewer.window()->frameGeometry(), expected);
        QCOMPARE(viewer.window()->initialFrame(), expected);
        QCOMPARE(viewer.model()->rowCount(), 0);
        QCOMPARE(viewer.engine()->mediaIndex(), qint64(-1));
        QVERIFY(viewer.player1()->media().isNull() && viewer.player2()->media().isNull());
        QVERIFY(!viewer.delegate->video1View()->isVisible());
        QVERIFY(!viewer.delegate->video2View()->isVisible());
        QCOMPARE(viewer.delegate->controls()->volume(), quint64(70));
        QCOMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_play_n"));

        // The next launch finds English and says so.
        QTest::ignoreMessage(QtInfoMsg, "SUPPORT_LANGUAGE=en");
        Viewer second;
        QCOMPARE(storedLanguages(), QStringList{"en"});
    }

    // What the command line names: a path that is not there is named in an alert on the window,
    // an empty folder says so in the list, a recording plays in its folder's list. Then keys
    // drive the playback until the window closes.
    void commandLinePathsThenKeysUntilTheWindowCloses()
    {
        Viewer viewer;
        QTemporaryDir empty;
        QSignalSpy reloaded(viewer.delegate.get(), &KVRAppDelegate::mediaListReloaded);
        viewer.delegate->openPathFromCommandLine(empty.path());
        QVERIFY(reloaded.wait(test::StartWaitMs));
        QCOMPARE(viewer.ui().mediaListTableView->emptyText(),
                 QString("No recordings in this folder"));
        const QString missing = empty.filePath("card-that-was-pulled");
        viewer.delegate->openPathFromCommandLine(missing);
        QMessageBox* alert = nullptr;
        QTRY_VERIFY((alert = viewer.window()->findChild<QMessageBox*>()) && alert->isVisible());
        QVERIFY(alert->informativeText().contains(missing));
        alert->close();

        const QString rear = m_card.path(*m_card.longestPair(), true);
        viewer.delegate->openPathFromCommandLine(rear);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.playing() && viewer.player1()->media().path() == rear,
                                 test::StartWaitMs);
        const int row = viewer.rowOf(QFileInfo(rear).fileName());
        QCOMPARE(viewer.ui().mediaListTableView->selectedRow(), row);

        viewer.window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(viewer.window()));
        QWidget* focus = viewer.ui().mediaListTableView;
        QTest::keyClick(focus, Qt::Key_Space);
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStatePaused);
        QTRY_COMPARE(viewer.ui().playButton->images().normal.name(), QString("icon_play_n"));
        QTest::keyClick(focus, Qt::Key_Space);
        QTRY_VERIFY(viewer.player1()->isPlaying());
        // Return on the list plays the selected row.
        const int other = (row + 1) % viewer.model()->rowCount();
        viewer.ui().mediaListTableView->selectOnlyRow(other);
        QTest::keyClick(focus, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.engine()->mediaIndex() == other && viewer.playing(),
                                 test::StartWaitMs);

        // Closing the window stops both players.
        QVERIFY(viewer.window()->close());
        QVERIFY(viewer.player1()->media().isNull());
        QVERIFY(viewer.player2()->media().isNull());
        QVERIFY(!viewer.player1()->isPlaying() && !viewer.player2()->isPlaying());
        QTRY_COMPARE(viewer.player1()->state(), VLCMediaPlayerStateStopped);
    }

    // --help and --version answer without a display; a malformed command line is one line on
    // stderr and exit 2, before any window.
    void commandLineOfTheProgram_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("out");
        QTest::newRow("--version") << QStringList{"--version"} << 0 << QByteArray("kavro-viewer ");
        QTest::newRow("--help") << QStringList{"--help"} << 0 << QByteArray("Usage: ");
        QTest::newRow("unknown option") << QStringList{"--help", "--fast"} << 2 << QByteArray();
        QTest::newRow("--play not a number") << QStringList{"--play", "x"} << 2 << QByteArray();
        QTest::newRow("--play without a folder") << QStringList{"--play", "0"} << 2 << QByteArray();
        QTest::newRow("--play below 0") << QStringList{"--play=-1", "/tmp"} << 2 << QByteArray();
        QTest::newRow("two folders") << QStringList{"/tmp", "/var"} << 2 << QByteArray();
        QTest::newRow("--lang unknown") << QStringList{"--lang", "de"} << 2 << QByteArray();
    }

    void commandLineOfTheProgram()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, out);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        const test::ToolResult result =
            test::runProgram(QStringLiteral(KAVRO_VIEWER_PATH), arguments, 30000, environment);
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY(!result.crashed);
        if (exitCode == 0)
            QVERIFY2(result.out.startsWith(out), result.out.constData());
        else
            QVERIFY(result.err.startsWith("kavro-viewer: ") && result.err.count('\n') == 1);
    }

    // The program started on the card plays the row --play names, in full screen once it plays;
    // a row past the last opens nothing. What it does is read from its log.
    void theProgramPlaysTheRowItIsTold_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QByteArray>("opened"); // empty: nothing
        QTest::newRow("row 1") << "1" << QByteArray("opening row 1: ");
        QTest::newRow("past the last") << "99" << QByteArray();
    }

    void theProgramPlaysTheRowItIsTold()
    {
        QFETCH(QString, row);
        QFETCH(QByteArray, opened);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_LOGGING_RULES", "kavro.app*=true");
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(KAVRO_VIEWER_PATH),
                      {m_card.root, "--play", row, "--full-screen"});
        const auto kill = qScopeGuard([&program] {
            program.kill();
            program.waitForFinished();
        });
        QByteArray log;
        const auto logged = [&](const QByteArray& line) {
            log += program.readAllStandardError();
            return log.contains(line);
        };
        // Once the list is read, the row is chosen and opened in one go.
        QTRY_VERIFY2_WITH_TIMEOUT(logged("selectedRow="), log.constData(), test::StartWaitMs);
        if (opened.isEmpty()) {
            QTest::qWait(300);
            QVERIFY2(!logged("opening row") && !logged("fullScreen"), log.constData());
        } else {
            QTRY_VERIFY2_WITH_TIMEOUT(logged(opened), log.constData(), test::StartWaitMs);
            QTRY_VERIFY2_WITH_TIMEOUT(logged("fullScreen=1"), log.constData(), test::StartWaitMs);
        }
        QCOMPARE(program.state(), QProcess::Running);
    }

    // The choice is kept for the next start and wins over "AppleLanguages"; the window says
    // so, in both languages, only when the texts will change.
    void languageChoiceKeptForTheNextStart_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QString>("told");
        QTest::newRow("Korean") << "ko"
                                << "다음에 KAVRO Viewer를 시작하면 선택한 언어로 바뀝니다.";
        // The tests run in the C locale, so the system's language is English.
        QTest::newRow("system") << "system" << QString();
        QTest::newRow("English") << "en" << QString();
    }

    void languageChoiceKeptForTheNextStart()
    {
        QFETCH(QString, choice);
        QFETCH(QString, told);
        openPreferences()->remove(PrefViewerLanguage);
        Viewer viewer;
        auto* languages = viewer.delegate->findChild<KVRLanguageMenu*>();
        QVERIFY(languages && languages->action("en")->isChecked());
        languages->action(choice)->trigger();
        QCOMPARE(storedLanguageChoice(), choice);
        QVERIFY(languages->action(choice)->isChecked());
        QApplication::processEvents();
        QMessageBox* alert = nullptr;
        for (QMessageBox* box : viewer.window()->findChildren<QMessageBox*>())
            alert = box->isVisible() ? box : alert;
        QCOMPARE(alert != nullptr, !told.isEmpty());
        if (alert) {
            QCOMPARE(alert->text(), qtTrId("main.language_at_restart"));
            QCOMPARE(alert->informativeText(), told);
            alert->close();
        }
        QCOMPARE(installInfoPlistTranslator(), choice == "ko" ? "ko" : "en");
        installInfoPlistTranslator("en");
    }
};

QTEST_MAIN(TestKVRAppDelegate)
#include "tst_kvrappdelegate.moc"
