#pragma once

// Shared fixtures of the main-window tests: a tiny simulated card, a large offscreen screen, a
// started viewer window driven as a person drives it, and the time code read from a picture.

#include "cardgenerator.h"
#include "customwindow.h"
#include "kvrappdelegate.h"
#include "kvrloadingcontroller.h"
#include "kvrmedialisttablemodel.h"
#include "kvrmedialisttableview.h"
#include "kvrplaybackcontrols.h"
#include "kvrplaybackengine.h"
#include "kvrplayinfo.h"
#include "kvrpositionslider.h"
#include "kvrvideocontainerview.h"
#include "kvrwindowlayout.h"
#include "player/vlcmediaplayer.h"
#include "player/vlcvideoview.h"
#include "resources/kavroresources.h"
#include "resources/translations/infoplisttranslator.h"
#include "telemetry/graphview.h"
#include "telemetry/kvraviwriter.h"
#include "testsupport.h"
#include "timecode.h"
#include "widgets/custombackgroundbox.h"
#include "widgets/pmprogressindicator.h"
#include "widgets/tkimagebutton.h"
#include "widgets/tkthreepartimageview.h"
#include "widgets/tkvideobackgroundimageview.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <functional>
#include <memory>
#include <optional>

namespace kavro::test {

// Generous: the machine is shared and may be slow.
constexpr int StartWaitMs = 15000;

// Before the application object exists: one 1600x1000 offscreen screen, preferences of the
// test's own, and silent libVLC.
inline void prepareViewerEnvironment()
{
    const QString config = QDir::temp().filePath(
        QStringLiteral("kavro-app-screen-%1.json").arg(QCoreApplication::applicationPid()));
    QFile file(config);
    if (file.open(QIODevice::WriteOnly))
        file.write(R"({"screens":[{"name":"test","x":0,"y":0,"width":1600,"height":1000,)"
                   R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("KAVRO_VLC_ARGS"))
        qputenv("KAVRO_VLC_ARGS", "--aout=dummy");
    isolatedConfigHome();
}

// The simulator's quick card, made once per test program: recordings of two to five seconds
// with time codes in their pixels, front/rear pairs, a lone front file, files the list refuses.
struct TinyCard
{
    QTemporaryDir dir;
    QString root;
    std::unique_ptr<camsim::CardPlan> plan;
    camsim::CardOptions options = camsim::CardOptions::quick();

    // For initTestCase, which fails when the card cannot be made.
    void makeInTest()
    {
        root = dir.filePath(QStringLiteral("card"));
        options.outDir = root;
        plan = std::make_unique<camsim::CardPlan>(options);
        QString error;
        QVERIFY2(dir.isValid() && camsim::CardGenerator(options).generate(&error),
                 qPrintable(error));
    }

    // The first recording that passes the test.
    template <typename Test> const camsim::RecordingPlan* first(Test test) const
    {
        for (const camsim::RecordingPlan& recording : plan->recordings()) {
            if (test(recording))
                return &recording;
        }
        return nullptr;
    }

    // The longest front/rear pair: time enough to act on it while it plays.
    const camsim::RecordingPlan* longestPair() const
    {
        const camsim::RecordingPlan* longest = nullptr;
        for (const camsim::RecordingPlan& recording : plan->recordings()) {
            if (recording.hasRear && (!longest || recording.duration > longest->duration))
                longest = &recording;
        }
        return longest;
    }

    QString path(const camsim::RecordingPlan& recording, bool rear) const
    {
        return QDir(root).filePath(plan->relativePath(recording, rear));
    }

    // The name the list shows for the file.
    QString fileName(const camsim::RecordingPlan& recording, bool rear) const
    {
        return QFileInfo(path(recording, rear)).fileName();
    }
};

// A front recording of plain MJPG frames at 10 frames a second, each frame coloured by colour and
// followed by the telemetry records addRecords writes for it.
inline bool writePlainRecording(const QString& path, QSize size, int frames,
                                const std::function<QColor(int frame)>& colour,
                                const std::function<bool(KVRAviWriter&, int frame)>& addRecords)
{
    KVRAviWriter::Layout layout;
    layout.video.width = std::uint32_t(size.width());
    layout.video.height = std::uint32_t(size.height());
    layout.video.fpsNumerator = 10;
    KVRAviWriter writer(layout);
    bool ok = writer.open(path);
    for (int frame = 0; ok && frame < frames; ++frame) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour(frame));
        QByteArray jpeg;
        QBuffer buffer(&jpeg);
        ok = image.save(&buffer, "JPG") && writer.addVideoFrame(jpeg) && addRecords(writer, frame);
    }
    return writer.close() && ok;
}

// The frame number a picture carries, or nothing when it has no readable time code.
inline std::optional<int> frameNumber(const QImage& image)
{
    return image.isNull() ? std::nullopt : camsim::TimeCode::read(image);
}

// The viewer as it is after start-up, on screen.
class Viewer
{
public:
    // The person sees the texts of the language, English unless told, not the keys.
    explicit Viewer(const QString& language = QStringLiteral("en"))
    {
        initImageResources();
        installInfoPlistTranslator(language);
        delegate = std::make_unique<KVRAppDelegate>();
        delegate->applicationDidFinishLaunching();
        window()->show();
    }

    CustomWindow* window() const { return delegate->window(); }
    const KVRMainWindowUI& ui() const { return delegate->ui(); }
    KVRPlaybackEngine* engine() const { return delegate->engine(); }
    KVRMediaListTableModel* model() const { return delegate->mediaListModel(); }
    VLCMediaPlayer* player1() const { return delegate->player1(); }
    VLCMediaPlayer* player2() const { return delegate->player2(); }

    bool openFolder(const QString& path)
    {
        QSignalSpy reloaded(delegate.get(), &KVRAppDelegate::mediaListReloaded);
        delegate->openMediaDirectory(path);
        return reloaded.wait(StartWaitMs);
    }

    // The row whose file column shows the name, or -1.
    int rowOf(const QString& fileName) const
    {
        for (int row = 0; row < model()->rowCount(); ++row) {
            if (cell(row, KVRMediaListTableModel::FileColumn) == fileName)
                return row;
        }
        return -1;
    }

    QString cell(int row, int column) const
    {
        return model()->index(row, column).data().toString();
    }

    void doubleClickRow(int row)
    {
        KVRMediaListTableView* table = ui().mediaListTableView;
        const QModelIndex index = model()->index(row, KVRMediaListTableModel::FileColumn);
        table->scrollTo(index);
        const QPoint center = table->visualRect(index).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, center);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, center);
    }

    // A person's click at a fraction of the position slider's length.
    void clickSlider(double fraction)
    {
        KVRPositionSlider* slider = ui().videoPositionSlider;
        QTest::mouseClick(slider, Qt::LeftButton, {},
                          QPoint(int(fraction * slider->width()), slider->height() / 2));
    }

    // Both pictures of an opened row are on screen (one when the row has no partner).
    bool playing() const
    {
        const bool partner = !player2()->media().isNull();
        return !engine()->waitingForPlayStart() && player1()->isPlaying() &&
               !delegate->video1View()->lastFrame().isNull() &&
               delegate->video1View()->isVisible() &&
               (!partner ||
                (player2()->isPlaying() && !delegate->video2View()->lastFrame().isNull() &&
                 delegate->video2View()->isVisible()));
    }

    bool playRow(int row)
    {
        doubleClickRow(row);
        return QTest::qWaitFor([this, row] { return engine()->mediaIndex() == row && playing(); },
                               StartWaitMs);
    }

    std::unique_ptr<KVRAppDelegate> delegate;
};

} // namespace kavro::test
