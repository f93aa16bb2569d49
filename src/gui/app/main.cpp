// kavro-viewer: the main window of the viewer.

#include "customwindow.h"
#include "kvrappdelegate.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrplaybackengine.h"
#include "kvrsettingcommands.h"
#include "resources/kavroresources.h"
#include "resources/translations/infoplisttranslator.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QLocale>
#include <QStyleFactory>

#include <cstdio>
#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr int ExitUsage = 2;

int failWith(const QString& message)
{
    std::fprintf(stderr, "kavro-viewer: %s\n", qUtf8Printable(message));
    return ExitUsage;
}

struct Options
{
    QString folder;
    std::optional<qint64> playRow;
    bool fullScreen = false;
    QString settingsFolder;
    // --lang: a language for this run only; empty for the stored choice.
    QString language;
};

// Reads the command line; an error text when it cannot be used.
QString parseOptions(const QStringList& arguments, Options* options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays the front and rear recordings of a dash camera card side by side."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("path"),
        QStringLiteral("Folder of recordings to open at start, or a recording to play."));
    const QCommandLineOption play(QStringLiteral("play"),
                                  QStringLiteral("Play this row of the list once it is read."),
                                  QStringLiteral("row"));
    const QCommandLineOption fullScreen(QStringLiteral("full-screen"),
                                        QStringLiteral("Go full screen once playback starts."));
    const QCommandLineOption settings(
        QStringLiteral("settings"),
        QStringLiteral("Open the settings window on this folder as if it were the card's root."),
        QStringLiteral("dir"));
    const QCommandLineOption language(
        QStringLiteral("lang"),
        QStringLiteral("Texts in this language for this run: en, ko or system (the system's)."),
        QStringLiteral("language"));
    parser.addOptions({play, fullScreen, settings, language});
    if (!parser.parse(arguments))
        return parser.errorText();
    if (parser.isSet(QStringLiteral("help"))) {
        // Read before the application object exists, which would name the program.
        QString help = parser.helpText();
        help.replace(QStringLiteral("<executable_name>"), QStringLiteral("kavro-viewer"));
        std::fputs(qUtf8Printable(help), stdout);
        std::exit(0);
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("kavro-viewer %s\n", KAVRO_VERSION);
        std::exit(0);
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1)
        return QStringLiteral("only one folder or recording can be opened");
    // A path that is not there is told in the window, where a desktop user sees it.
    if (!positional.isEmpty())
        options->folder = positional.first();
    if (parser.isSet(play)) {
        bool ok = false;
        const qint64 row = parser.value(play).toLongLong(&ok);
        if (!ok || row < 0)
            return QStringLiteral("--play takes a row number from 0");
        if (!QFileInfo(options->folder).isDir())
            return QStringLiteral("--play needs a folder");
        options->playRow = row;
    }
    options->fullScreen = parser.isSet(fullScreen);
    if (parser.isSet(settings)) {
        options->settingsFolder = parser.value(settings);
        if (!QFileInfo(options->settingsFolder).isDir())
            return QStringLiteral("%1 is not a folder").arg(options->settingsFolder);
    }
    if (parser.isSet(language)) {
        options->language = parser.value(language);
        if (!kavro::isLanguageChoice(options->language))
            return QStringLiteral("--lang takes en, ko or system");
    }
    return QString();
}

// libVLC starts its decoder and output threads afresh for every recording, and glibc gives new
// threads arenas of their own (up to eight per core) that keep what was freed in them: playing
// on through a card, the viewer grew by some 70 MB before it levelled off. Two arenas keep it
// flat. A limit the user set in the environment is left to glibc.
void limitMallocArenas()
{
#ifdef __GLIBC__
    if (qEnvironmentVariableIsEmpty("MALLOC_ARENA_MAX") &&
        qEnvironmentVariableIsEmpty("GLIBC_TUNABLES"))
        mallopt(M_ARENA_MAX, 2);
#endif
}

} // namespace

int main(int argc, char** argv)
{
    // Before any thread exists.
    limitMallocArenas();
    // The command line is read before the application object exists: --help, --version and a
    // malformed command line answer without a display.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    Options options;
    const QString error = parseOptions(arguments, &options);
    if (!error.isEmpty())
        return failWith(error);

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kavro-viewer"));
    QApplication::setApplicationDisplayName(QStringLiteral("KAVRO Viewer"));
    QApplication::setDesktopFileName(QStringLiteral("kavro-viewer"));

    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    kavro::initImageResources();
    if (options.language.isEmpty())
        kavro::installInfoPlistTranslator();
    else
        kavro::installInfoPlistTranslator(
            kavro::infoPlistLanguageForChoice(options.language, QLocale::system().uiLanguages()));

    kavro::KVRAppDelegate delegate;
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &delegate, &kavro::KVRAppDelegate::die);
    delegate.applicationDidFinishLaunching();
    delegate.window()->setWindowIcon(QIcon(QStringLiteral(":/images/app_icon.svg")));
    delegate.window()->show();

    if (options.playRow) {
        const qint64 row = *options.playRow;
        QObject::connect(
            &delegate, &kavro::KVRAppDelegate::mediaListReloaded, &delegate,
            [&delegate, row] {
                delegate.ui().mediaListTableView->selectOnlyRow(row);
                delegate.changeAndPlay();
            },
            Qt::SingleShotConnection);
    }
    if (options.fullScreen) {
        QObject::connect(
            delegate.engine(), &kavro::KVRPlaybackEngine::playbackStarted, &delegate,
            [&delegate] { delegate.window()->enterFullscreen(); }, Qt::SingleShotConnection);
    }
    if (!options.folder.isEmpty())
        delegate.openPathFromCommandLine(options.folder);
    if (!options.settingsFolder.isEmpty())
        delegate.settingCommands()->showSettingPanelForFolder(options.settingsFolder);
    return app.exec();
}
