// The application in the real window: its start-up, its command line (also of the built
// program), its languages, and keeping a frame: the saved copy, a print on a real CUPS queue that
// writes PDF, the exported incident page, and the Help sheets.

#include "appfixture.h"
#include "common/preferences.h"
#include "kvrcapturecommands.h"
#include "kvrhelpcommands.h"
#include "kvrlanguagemenu.h"

#include "../widgetrender.h"

#include <QComboBox>
#include <QFileDialog>
#include <QImageReader>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProcess>
#include <QScopeGuard>
#include <QTableWidget>

#include <pwd.h>
#include <unistd.h>

using namespace kavro;
using namespace kavro::test;

namespace {

constexpr char QueueName[] = "KavroTestPDF";
constexpr int PrintWaitMs = 60000;

// A queue of the local CUPS that writes each job as a PDF file, made when missing; the folder
// the files land in. Empty with the reason when there can be none.
QString pdfQueueFolder(QString* reason)
{
    const auto schedulerRuns = [] {
        return runProgram("lpstat", {"-r"}, 10000).out.contains("is running");
    };
    if (!schedulerRuns()) {
        if (!QProcess::startDetached("cupsd", {}))
            return *reason = "cupsd is not running and cannot be started", QString();
        if (!QTest::qWaitFor(schedulerRuns, 15000))
            return *reason = "cupsd did not come up (is the cups package installed?)", QString();
    }
    if (runProgram("lpstat", {"-v", QueueName}, 10000).exitCode != 0) {
        const ToolResult made = runProgram("lpadmin", {"-p", QueueName, "-v", "cups-pdf:/", "-E",
                                                       "-m", "lsb/usr/cups-pdf/CUPS-PDF_opt.ppd"});
        if (made.exitCode != 0)
            return *reason = "lpadmin cannot add a cups-pdf queue (printer-driver-cups-pdf "
                             "installed?): " +
                             QString::fromLocal8Bit(made.err),
                   QString();
    }
    // cups-pdf's own setting: ${HOME}/PDF of the job's owner unless the site says otherwise.
    const passwd* user = ::getpwuid(::geteuid());
    QString folder = QStringLiteral("${HOME}/PDF");
    for (const QByteArray& line : readFile("/etc/cups/cups-pdf.conf").split('\n')) {
        if (line.startsWith("Out "))
            folder = QString::fromLocal8Bit(line.mid(4).trimmed());
    }
    return folder.replace("${HOME}", QString::fromLocal8Bit(user->pw_dir))
        .replace("${USER}", QString::fromLocal8Bit(user->pw_name));
}

// A four-second front recording whose every record says the same: 57 km/h at 37°33.5' N
// 126°59.4' E, and 0.5 g, -0.25 g, 1 g.
bool writeSteadyRecording(const QString& path)
{
    const QByteArray nmea =
        "$GPRMC,081236.00,A,3733.5000,N,12659.4000,E,30.78,90.0,160525,,,A*6C\r\n"
        "$GPGGA,081236.00,3733.5000,N,12659.4000,E,1,08,0.9,50.0,M,0.0,M,,*6A\r\n";
    const auto records = [&nmea](KVRAviWriter& writer, int frame) {
        const auto stamp = std::uint32_t(100 * (frame + 1));
        if (!writer.addTelemetryRecord(_AVI_GSENSOR_DATA_T{171, stamp, 128, -64, 256, 25}))
            return false;
        return frame % 10 != 0 ||
               writer.addTelemetryRecord(gpsRecord(stamp, nmea, 3733.5, 12659.4, 57, '9'));
    };
    return writePlainRecording(
        path, QSize(320, 180), 40, [](int) { return QColor(40, 90, 160); }, records);
}

} // namespace

class TestKVRAppDelegate : public QObject
{
    Q_OBJECT

public:
    static void initMain() { prepareViewerEnvironment(); }

private:
    TinyCard m_card;
    std::optional<QTemporaryDir> m_folder; // of each test
    std::unique_ptr<Viewer> m_viewer;
    QStringList m_opened;

    // The viewer playing the card's longest pair, its snapshot in a folder of the test's own.
    Viewer& playLongestPair()
    {
        m_opened.clear();
        m_viewer = std::make_unique<Viewer>();
        if (!m_viewer->openFolder(m_card.root))
            return *m_viewer;
        KVRCaptureCommands* commands = m_viewer->delegate->captureCommands();
        commands->setSnapshotPath(m_folder->filePath("kavro_capture.jpg"));
        commands->setImageOpener([this](const QString& path) { m_opened << path; });
        const QString name = m_card.fileName(*m_card.longestPair(), false);
        m_viewer->playRow(m_viewer->rowOf(name));
        return *m_viewer;
    }

    template <typename Dialog> Dialog* openSheet(const char* name)
    {
        Dialog* dialog = m_viewer->window()->findChild<Dialog*>(name);
        if (dialog && (!dialog->isVisible() || dialog->windowModality() != Qt::WindowModal))
            return nullptr;
        return dialog;
    }

    static QStringList storedLanguages()
    {
        return openPreferences()->value(PrefLanguages).toStringList();
    }

private slots:
    void initTestCase() { m_card.makeInTest(); }
    void init() { QVERIFY(m_folder.emplace().isValid()); }
    void cleanup() { m_viewer.reset(); }

    void startsEmptyInACentredWindowAndStoresEnglish()
    {
        openPreferences()->setValue(PrefLanguages, QStringList{"ko", "en"});
        QTest::ignoreMessage(QtInfoMsg, "SUPPORT_LANGUAGE=ko");
        QTest::ignoreMessage(QtInfoMsg, "SUPPORT_LANGUAGE=en");
        Viewer viewer;
        QCOMPARE(storedLanguages(), QStringList{"en"});

        // Centred on the 1600x1000 screen.
        const QRect expected(290, 180, 1020, 640);
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
    void captureSavesACopyThatNeverReplaces_data()
    {
        QTest::addColumn<QString>("situation");
        QTest::newRow("new file") << "new";
        QTest::newRow("a file is there") << "existing";
        QTest::newRow("paused") << "paused";
        QTest::newRow("link planted at the snapshot path") << "link";
    }

    void captureSavesACopyThatNeverReplaces()
    {
        QFETCH(QString, situation);
        const QString copy = m_folder->filePath("incident.png");
        const QString victim = m_folder->filePath("victim");
        QVERIFY(writeFile(victim, "precious"));
        if (situation == "existing")
            QVERIFY(writeFile(copy, "older capture"));
        Viewer& viewer = playLongestPair();
        QVERIFY(viewer.playing());
        const QString snapshot = viewer.delegate->captureCommands()->snapshotPath();
        if (situation == "link")
            QVERIFY(QFile::link(victim, snapshot));
        if (situation == "paused") {
            viewer.delegate->controls()->clickPlayButton();
            QTRY_VERIFY(!viewer.player1()->isPlaying());
        }

        QTest::mouseClick(viewer.ui().captureButton, Qt::LeftButton);
        auto* panel = openSheet<QFileDialog>("captureSavePanel");
        QCOMPARE(readFile(victim), QByteArray("precious"));
        if (situation == "paused" || situation == "link") {
            QVERIFY(!panel);
            QCOMPARE(QFileInfo(snapshot).isSymLink(), situation == "link");
            QVERIFY(situation == "link" || !QFileInfo::exists(snapshot));
            return;
        }
        QVERIFY(panel);
        QCOMPARE(panel->windowTitle(), QString("Save Settings"));
        QCOMPARE(QFileInfo(panel->selectedFiles().value(0)).fileName(),
                 QString("kavro_capture.png"));
        panel->selectFile(copy);
        static_cast<QDialog*>(panel)->accept();

        // The snapshot: the video's own size, readable by the user alone; opened either way.
        const QSize videoSize = m_card.plan->options().frontSize;
        QCOMPARE(QImageReader(snapshot).size(), videoSize);
        QCOMPARE(QFileInfo(snapshot).permissions(),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
        QCOMPARE(m_opened, QStringList{snapshot});
        if (situation == "existing") {
            QCOMPARE(readFile(copy), QByteArray("older capture"));
        } else {
            QImageReader saved(copy);
            QCOMPARE(saved.format(), QByteArray("png"));
            QCOMPARE(saved.size(), videoSize);
        }
    }

    // A paused frame printed on a real queue: one page, the picture across it with its aspect
    // ratio. Print to a PDF file is no printer: the log says so and nothing is written.
    void printGoesToPrintersOnly_data()
    {
        QTest::addColumn<bool>("toQueue");
        QTest::newRow("CUPS queue") << true;
        QTest::newRow("print to PDF file") << false;
    }

    void printGoesToPrintersOnly()
    {
        QFETCH(bool, toQueue);
        QString reason;
        const QString output = toQueue ? pdfQueueFolder(&reason) : m_folder->filePath("file.pdf");
        QVERIFY2(!output.isEmpty(), qPrintable(reason));
        const QStringList before = QDir(output).entryList({"*.pdf"}, QDir::Files);

        Viewer& viewer = playLongestPair();
        QVERIFY(viewer.playing());
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        if (!toQueue)
            QTest::ignoreMessage(QtWarningMsg,
                                 "Either got an error from PMSessionGetDestinationType or the "
                                 "print destination wasn't kPMDestinationPrinter");
        viewer.window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(viewer.window()));
        QTest::keyClick(viewer.window(), Qt::Key_P, Qt::ControlModifier);
        auto* panel = openSheet<QPrintDialog>("printPanel");
        QVERIFY(panel);
        // As a person chooses: the queue, or Qt's own "Print to File (PDF)" at the list's end.
        auto* printers = panel->findChild<QComboBox*>("printers");
        QVERIFY(printers);
        printers->setCurrentIndex(toQueue ? printers->findText(QueueName) : printers->count() - 1);
        QVERIFY(printers->currentIndex() >= 0);
        if (!toQueue)
            panel->findChild<QLineEdit*>("filename")->setText(output);
        panel->accept();
        if (!toQueue) {
            QVERIFY(!QFileInfo::exists(output));
            return;
        }
        QString printed;
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                for (const QString& name : QDir(output).entryList({"*.pdf"}, QDir::Files)) {
                    if (!before.contains(name))
                        printed = QDir(output).filePath(name);
                }
                return !printed.isEmpty();
            }(),
            PrintWaitMs);
        // cups-pdf renames the file into place once it is whole.
        QTRY_VERIFY_WITH_TIMEOUT(
            runProgram("pdfinfo", {printed}).out.simplified().contains("Pages: 1 "), PrintWaitMs);
        // The first page as a picture, through poppler.
        const QString png = m_folder->filePath("page");
        QCOMPARE(runProgram("pdftoppm", {"-r", "40", "-singlefile", "-png", printed, png}).exitCode,
                 0);
        const QImage page(png + ".png");
        QVERIFY(!page.isNull());
        const QRect ink = paintedArea(page, qRgb(255, 255, 255), page.rect());
        const QSize video = m_card.plan->options().frontSize;
        QVERIFY2(ink.width() > page.width() * 8 / 10, "fits the width of the page");
        QVERIFY2(std::abs(double(ink.width()) / ink.height() -
                          double(video.width()) / video.height()) < 0.05,
                 qPrintable(QStringLiteral("%1x%2").arg(ink.width()).arg(ink.height())));
        QFile::remove(printed);
    }

    void exportedPdfCarriesTheTelemetry()
    {
        QTemporaryDir card;
        const QString name = QStringLiteral("event_20250516_081236_F.avi");
        QVERIFY(writeSteadyRecording(card.filePath(name)));
        m_viewer = std::make_unique<Viewer>();
        QVERIFY(m_viewer->openFolder(card.path()));
        Viewer& viewer = *m_viewer;
        QVERIFY(viewer.playRow(0));
        viewer.delegate->controls()->clickPlayButton();
        QTRY_VERIFY(!viewer.player1()->isPlaying());
        QTRY_VERIFY(!viewer.ui().speedField->text().isEmpty());

        viewer.delegate->captureCommands()->exportFramePdf();
        auto* panel = openSheet<QFileDialog>("exportPdfPanel");
        QVERIFY(panel);
        QCOMPARE(QFileInfo(panel->selectedFiles().value(0)).fileName(),
                 QString("event_20250516_081236_F.pdf"));
        const QString pdf = m_folder->filePath("incident.pdf");
        panel->selectFile(pdf);
        static_cast<QDialog*>(panel)->accept();

        const ToolResult text = runProgram("pdftotext", {"-layout", pdf, "-"});
        QCOMPARE(text.exitCode, 0);
        for (const char* expected :
             {"File: event_20250516_081236_F.avi", "Date: 2025/05/16", "Time: 08:12:3",
              "Speed: 57 Km/h", "X=+0.50", "Y=-0.25", "Z=+1.00", "37.558333", "126.990000"})
            QVERIFY2(text.out.contains(expected), qPrintable(expected + ("\n" + text.out)));
    }

    void helpSheets()
    {
        m_viewer = std::make_unique<Viewer>();
        QCoreApplication::setApplicationVersion("4.5.6");
        m_viewer->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_viewer->window()));
        QTest::keyClick(m_viewer->window(), Qt::Key_F1);
        auto* shortcuts = openSheet<QDialog>("keyboardShortcutsSheet");
        QVERIFY(shortcuts);
        auto* table = shortcuts->findChild<QTableWidget*>();
        QStringList rows;
        for (int row = 0; row < table->rowCount(); ++row)
            rows << table->item(row, 0)->text() + '=' + table->item(row, 1)->text();
        for (const char* expected : {"Save Picture=Ctrl+Shift+S", "Print Picture=Ctrl+P",
                                     "Play / Pause=Space", "Keyboard Shortcuts=F1"})
            QVERIFY2(rows.contains(expected), qPrintable(rows.join('\n')));
        int withKeys = 0;
        for (const QAction* action : m_viewer->window()->actions())
            withKeys += action->shortcut().isEmpty() ? 0 : 1;
        QCOMPARE(rows.size(), withKeys);
        shortcuts->reject();

        m_viewer->delegate->helpCommands()->showAbout();
        auto* about = openSheet<QMessageBox>("aboutSheet");
        QVERIFY(about);
        QVERIFY(about->text().contains("4.5.6"));
        QVERIFY(about->informativeText().contains("Leaflet 1.9.4"));
        QVERIFY(about->informativeText().contains("ODbL"));
        QVERIFY(about->detailedText().startsWith("BSD 2-Clause License"));
    }
};

QTEST_MAIN(TestKVRAppDelegate)
#include "tst_kvrappdelegate.moc"
