// kavro-camsim: writes a card as the camera would, for demos, tests and benchmarks.

#include "cardgenerator.h"
#include "timecode.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>

using kavro::camsim::CardGenerator;
using kavro::camsim::CardOptions;

namespace {

constexpr int ExitFailed = 1;
constexpr int ExitUsage = 2;

int failWith(int code, const QString& message)
{
    std::fprintf(stderr, "kavro-camsim: %s\n", qUtf8Printable(message));
    return code;
}

std::optional<QSize> parseSize(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^([0-9]{2,4})x([0-9]{2,4})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    // H.264 with 4:2:0 chroma wants even sizes; the time code wants a minimum.
    const QSize minimum = kavro::camsim::TimeCode::MinimumFrameSize;
    if (size.width() % 2 != 0 || size.height() % 2 != 0 || size.width() < minimum.width() ||
        size.height() < minimum.height() || size.width() > 1920 || size.height() > 1080)
        return std::nullopt;
    return size;
}

// A whole number within bounds, or nothing.
std::optional<qulonglong> parseNumber(const QString& text, qulonglong low, qulonglong high)
{
    bool ok = false;
    const qulonglong value = text.toULongLong(&ok);
    if (!ok || value < low || value > high)
        return std::nullopt;
    return value;
}

} // namespace

int main(int argc, char** argv)
{
    // Without --verbose a failure is one line, not a trail of diagnostics or Qt's remarks about
    // the missing display; so the handler goes in before the application starts.
    const bool verboseRequested = std::any_of(argv + 1, argv + argc, [](const char* argument) {
        return std::strcmp(argument, "--verbose") == 0;
    });
    if (!verboseRequested) {
        qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext&, const QString& message) {
                if (type == QtFatalMsg)
                    std::fprintf(stderr, "kavro-camsim: %s\n", qUtf8Printable(message));
            });
    }
    // Frames are drawn into images: no screen is needed, whatever the session offers.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("kavro-camsim"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Writes a camera card: front and rear recordings with sound and telemetry over several "
        "drives, config.bin, timeset.cfg and the drive records; optionally a FAT32 image of it."));
    parser.addHelpOption();
    const QCommandLineOption out("out", "Folder of the card (new or empty).", "DIR");
    const QCommandLineOption seed("seed", "Seed of everything random (default 1).", "N");
    const QCommandLineOption minutes(
        "minutes", "About how long all recordings last together (default 6).", "M");
    const QCommandLineOption image("image", "Also write the card as a FAT32 image file.", "FILE");
    const QCommandLineOption seconds("seconds-per-recording",
                                     "Length of an always recording (default 60).", "S");
    const QCommandLineOption front("front-size", "Front frame size (default 1280x720).", "WxH");
    const QCommandLineOption rear("rear-size", "Rear frame size (default 640x360).", "WxH");
    const QCommandLineOption fps("fps", "Frames per second of both cameras (default 30).", "N");
    const QCommandLineOption quick("quick",
                                   "A tiny card for tests: 4-second recordings, small frames.");
    const QCommandLineOption verbose("verbose", "Say what is being written, on stderr.");
    parser.addOptions({out, seed, minutes, image, seconds, front, rear, fps, quick, verbose});
    if (!parser.parse(QGuiApplication::arguments()))
        return failWith(ExitUsage, parser.errorText());
    if (parser.isSet("help") || parser.isSet("help-all")) {
        std::fputs(qUtf8Printable(parser.helpText()), stdout);
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return failWith(
            ExitUsage,
            QStringLiteral("unexpected argument %1").arg(parser.positionalArguments().first()));
    if (!parser.isSet(out) || parser.value(out).isEmpty())
        return failWith(ExitUsage, QStringLiteral("--out DIR is required"));

    CardOptions options = parser.isSet(quick) ? CardOptions::quick() : CardOptions();
    options.outDir = parser.value(out);
    options.imagePath = parser.value(image);
    // The image is made of the folder; inside it, it would take itself in.
    const QString cardRoot = QDir(options.outDir).absolutePath() + QLatin1Char('/');
    if (!options.imagePath.isEmpty() &&
        QFileInfo(options.imagePath).absoluteFilePath().startsWith(cardRoot))
        return failWith(ExitUsage, QStringLiteral("--image cannot be inside the --out folder"));
    if (parser.isSet(seed)) {
        const auto value = parseNumber(parser.value(seed), 0, ~0ULL);
        if (!value)
            return failWith(ExitUsage, QStringLiteral("--seed takes a whole number"));
        options.seed = *value;
    }
    if (parser.isSet(minutes)) {
        bool ok = false;
        const double value = parser.value(minutes).toDouble(&ok);
        if (!ok || !(value > 0 && value <= 600))
            return failWith(ExitUsage,
                            QStringLiteral("--minutes takes a number above 0, at most 600"));
        options.minutes = value;
    }
    if (parser.isSet(seconds)) {
        const auto value = parseNumber(parser.value(seconds), 2, 600);
        if (!value)
            return failWith(ExitUsage, QStringLiteral("--seconds-per-recording takes 2 to 600"));
        options.secondsPerRecording = static_cast<int>(*value);
    }
    if (parser.isSet(fps)) {
        const auto value = parseNumber(parser.value(fps), 1, 60);
        if (!value)
            return failWith(ExitUsage, QStringLiteral("--fps takes 1 to 60"));
        options.fps = static_cast<int>(*value);
    }
    for (const auto& [option, size] :
         {std::pair{&front, &options.frontSize}, std::pair{&rear, &options.rearSize}}) {
        if (!parser.isSet(*option))
            continue;
        const auto value = parseSize(parser.value(*option));
        if (!value)
            return failWith(ExitUsage,
                            QStringLiteral("--%1 takes an even WxH from 128x72 to 1920x1080")
                                .arg(option->names().first()));
        *size = *value;
    }

    CardGenerator generator(options);
    QString error;
    if (!generator.generate(&error))
        return failWith(ExitFailed, error);
    const auto& summary = generator.summary();
    std::printf("%d recordings and %d other files, %.1f MB, in %s\n", summary.recordingFiles,
                summary.otherFiles, summary.bytes / 1e6, qUtf8Printable(options.outDir));
    return 0;
}
