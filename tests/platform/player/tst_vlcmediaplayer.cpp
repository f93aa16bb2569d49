#include "player/vlcmediaplayer.h"
#include "player/vlcvideoview.h"
#include "testsupport.h"

#include <QApplication>
#include <QDir>
#include <QImageReader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using namespace kavro;

namespace {

constexpr int kWaitMs = 10000; // generous: the machine is shared and may be slow

// Short recordings named like the camera's: 160x90, 30 frames a second, MJPEG in AVI, 3 s.
struct TestClips
{
    QString front; // test pattern with a 440 Hz PCM sound track
    QString rear;  // solid red without sound
};

bool runFfmpeg(const QStringList& arguments, QString* error)
{
    const test::ToolResult ffmpeg = test::runProgram(
        "ffmpeg", QStringList{"-hide_banner", "-loglevel", "error", "-y"} + arguments);
    if (!ffmpeg.crashed && ffmpeg.exitCode == 0)
        return true;
    *error = "ffmpeg failed: " + QString::fromLocal8Bit(ffmpeg.err);
    return false;
}

bool makeClips(const QDir& dir, TestClips& clips, QString* error)
{
    clips = {dir.filePath("alwa_20240131_120000_F.avi"),
             dir.filePath("alwa_20240131_120000_R.avi")};
    const QStringList video{"-c:v", "mjpeg", "-q:v", "2"};
    return runFfmpeg(QStringList{"-f", "lavfi", "-i", "testsrc=size=160x90:rate=30:duration=3",
                                 "-f", "lavfi", "-i", "sine=frequency=440:sample_rate=22050",
                                 "-shortest", "-c:a", "pcm_s16le"} +
                         video + QStringList{clips.front},
                     error) &&
           runFfmpeg(QStringList{"-f", "lavfi", "-i",
                                 "color=c=0xff0000:size=160x90:rate=30:duration=3", "-an"} +
                         video + QStringList{clips.rear},
                     error);
}

bool isRed(QColor colour)
{
    return colour.red() > 200 && colour.green() < 50 && colour.blue() < 50;
}

// The part of the picture that is red: all of it for the rear clip, little for the test pattern.
double redShare(const QImage& image)
{
    qsizetype red = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            red += isRed(image.pixelColor(x, y));
    return image.isNull() ? 0.0 : double(red) / (qsizetype(image.width()) * image.height());
}

} // namespace

class TestVLCMediaPlayer : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    TestClips m_clips;

    std::unique_ptr<VLCMediaPlayer> startPlayer(const QString& path, VLCVideoView* view = nullptr)
    {
        auto player = std::make_unique<VLCMediaPlayer>(view);
        player->setMedia(VLCMedia::mediaWithPath(path));
        player->play();
        return player;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QString error;
        QVERIFY2(makeClips(QDir(m_dir.path()), m_clips, &error), qPrintable(error));
    }

    void playReportsStateAndTimeOnTheMainThread()
    {
        VLCMediaPlayer player;
        QCOMPARE(player.state(), VLCMediaPlayerStateStopped);
        QVERIFY(player.time().isNull());
        QVERIFY(player.remainingTime().isNull());

        int stateEvents = 0;
        int timeEvents = 0;
        bool allOnMainThread = true;
        bool allFromPlayer = true;
        auto check = [&](VLCMediaPlayer* sender, int* counter) {
            allOnMainThread &= QThread::currentThread() == qApp->thread();
            allFromPlayer &= sender == &player;
            ++*counter;
        };
        connect(&player, &VLCMediaPlayer::mediaPlayerStateChanged, this,
                [&](VLCMediaPlayer* p) { check(p, &stateEvents); });
        connect(&player, &VLCMediaPlayer::mediaPlayerTimeChanged, this,
                [&](VLCMediaPlayer* p) { check(p, &timeEvents); });

        player.setMedia(VLCMedia::mediaWithPath(m_clips.front));
        player.play();
        QTRY_COMPARE_WITH_TIMEOUT(player.state(), VLCMediaPlayerStatePlaying, kWaitMs);
        QVERIFY(player.isPlaying());
        QTRY_VERIFY_WITH_TIMEOUT(timeEvents >= 3, kWaitMs);
        QVERIFY(stateEvents >= 1);
        QVERIFY(allOnMainThread);
        QVERIFY(allFromPlayer);

        QVERIFY(player.time().intValue() > 0);
        QCOMPARE(player.media().length().intValue(), 3000);
        const qint64 remaining = player.remainingTime().intValue();
        QVERIFY2(remaining < 0 && remaining > -3000, qPrintable(QString::number(remaining)));

        player.pause();
        QTRY_COMPARE_WITH_TIMEOUT(player.state(), VLCMediaPlayerStatePaused, kWaitMs);
        QVERIFY(!player.isPlaying());
        player.pause(); // a second pause must not resume
        QTest::qWait(200);
        QCOMPARE(player.state(), VLCMediaPlayerStatePaused);
        // Paused by the user, so not taken for the end.
        QVERIFY(player.position() < 0.9f);
        QVERIFY(player.remainingTime().stringValue() != QStringLiteral("00:00"));

        player.stop();
        QCOMPARE(player.state(), VLCMediaPlayerStateStopped);
    }

    void rendersThePictureIntoTheView()
    {
        VLCVideoView view;
        view.resize(320, 240);
        auto player = startPlayer(m_clips.rear, &view);
        QTRY_VERIFY_WITH_TIMEOUT(!view.lastFrame().isNull(), kWaitMs);

        const QImage frame = view.lastFrame();
        QCOMPARE(frame.size(), QSize(160, 90));
        QCOMPARE(player->videoSize(), QSize(160, 90));
        QVERIFY(player->hasVideoOut());
        QCOMPARE(redShare(frame), 1.0); // every pixel: no padding lines of the decoder

        // 16:9 in a 4:3 view: full width, bars of 30 pixels above and below.
        QCOMPARE(view.pictureRect(), QRect(0, 30, 320, 180));
        const QImage shown = view.grab().toImage();
        QVERIFY(isRed(shown.pixelColor(160, 120)));
        QCOMPARE(shown.pixelColor(160, 10), QColor(Qt::black));
        QCOMPARE(shown.pixelColor(160, 230), QColor(Qt::black));

        // The picture goes when the recording is taken away.
        player->setMedia(VLCMedia());
        QCOMPARE(player->state(), VLCMediaPlayerStateStopped);
        QTRY_VERIFY_WITH_TIMEOUT(view.lastFrame().isNull(), kWaitMs);
        QVERIFY(!player->hasVideoOut());
        QCOMPARE(view.grab().toImage().pixelColor(160, 120), QColor(Qt::black));
    }

    // A player already showing its picture is told another size: the output starts again at it.
    void rendersAtTheSizeItIsShown_data()
    {
        QTest::addColumn<QSize>("shown");
        QTest::addColumn<QSize>("rendered");
        QTest::addColumn<bool>("paused");
        QTest::newRow("smaller, rounded to even") << QSize(80, 80) << QSize(80, 44) << false;
        QTest::newRow("larger than the video") << QSize(640, 480) << QSize(640, 360) << false;
        QTest::newRow("paused") << QSize(320, 320) << QSize(320, 180) << true;
    }

    void rendersAtTheSizeItIsShown()
    {
        QFETCH(QSize, shown);
        QFETCH(QSize, rendered);
        QFETCH(bool, paused);
        VLCVideoView view;
        auto player = startPlayer(m_clips.rear, &view);
        QTRY_VERIFY_WITH_TIMEOUT(!view.lastFrame().isNull(), kWaitMs);
        QCOMPARE(player->renderedSize(), QSize(160, 90));
        if (paused) {
            player->pause();
            QTRY_COMPARE_WITH_TIMEOUT(player->state(), VLCMediaPlayerStatePaused, kWaitMs);
        }

        player->setRenderSizeLimit(shown);
        QTRY_COMPARE_WITH_TIMEOUT(player->renderedSize(), rendered, kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(player->shownFrame().size(), rendered, kWaitMs);
        QCOMPARE(redShare(player->shownFrame()), 1.0);
        // Callers still get the video's own size.
        const QList<QSize> callers = {player->videoSize(), player->lastFrame().size(),
                                      player->frameAtVideoSize().size()};
        QCOMPARE(callers, QList<QSize>(3, QSize(160, 90)));
    }

    // Seeking by position to the end is what the window's slider does, and its tests show it.
    void restsPausedOnTheLastFrame()
    {
        auto player = startPlayer(m_clips.rear);
        QTRY_VERIFY_WITH_TIMEOUT(player->isPlaying() && !player->lastFrame().isNull(), kWaitMs);
        player->setTime(player->media().length());

        QTRY_COMPARE_WITH_TIMEOUT(player->state(), VLCMediaPlayerStatePaused, kWaitMs);
        QVERIFY2(player->position() >= 0.998f, qPrintable(QString::number(player->position())));
        QCOMPARE(player->remainingTime().stringValue(), QStringLiteral("00:00"));
        QCOMPARE(player->time(), player->media().length());
        QVERIFY(!player->isPlaying());
        // The last frame stays on show.
        QVERIFY(isRed(player->lastFrame().pixelColor(80, 45)));

        // Pausing at the end changes nothing; seeking back leaves the end; playing returns to it.
        player->pause();
        QCOMPARE(player->position(), 1.0f);
        player->setPosition(0.8f);
        QTRY_VERIFY_WITH_TIMEOUT(player->position() < 0.9f, kWaitMs);
        player->play();
        QTRY_VERIFY_WITH_TIMEOUT(player->isPlaying(), kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(player->position(), 1.0f, kWaitMs);
        QCOMPARE(player->state(), VLCMediaPlayerStatePaused);
    }

    void snapshotWritesTheShownFrame()
    {
        VLCMediaPlayer idle;
        const QString path = m_dir.filePath("kavro_capture.jpg");
        QVERIFY(!idle.saveVideoSnapshotAt(path, 0, 0)); // nothing shown yet
        QVERIFY(!QFile::exists(path));

        auto player = startPlayer(m_clips.rear);
        QTRY_VERIFY_WITH_TIMEOUT(!player->lastFrame().isNull(), kWaitMs);
        player->pause();
        QTRY_COMPARE_WITH_TIMEOUT(player->state(), VLCMediaPlayerStatePaused, kWaitMs);

        QVERIFY(player->saveVideoSnapshotAt(path, 0, 0));
        QImageReader reader(path);
        QCOMPARE(reader.format(), QByteArray("jpeg"));
        const QImage saved = reader.read();
        QCOMPARE(saved.size(), QSize(160, 90));
        QVERIFY(isRed(saved.pixelColor(80, 45)));

        const QString png = m_dir.filePath("kavro_capture.png");
        QVERIFY(player->saveVideoSnapshotAt(png, 80, 0));
        QCOMPARE(QImageReader(png).format(), QByteArray("png"));
        QCOMPARE(QImageReader(png).size(), QSize(80, 45));

        // A full disk leaves the previous capture as it was.
        const QByteArray before = test::readFile(path);
        {
            test::FileSizeLimit fullDisk(100);
            QVERIFY(!player->saveVideoSnapshotAt(path, 0, 0));
        }
        QCOMPARE(test::readFile(path), before);
    }

    void brokenRecordingsStopWithoutHarm_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("exists");
        QTest::newRow("missing") << QByteArray() << false;
        QTest::newRow("empty") << QByteArray() << true;
        QByteArray noise(65536, Qt::Uninitialized);
        quint32 seed = 12345;
        for (char& byte : noise)
            byte = char((seed = seed * 1103515245u + 12345u) >> 24);
        QTest::newRow("noise") << noise << true;
        QTest::newRow("truncated") << test::readFile(m_clips.front).left(20000) << true;
        QTest::newRow("cut in the index") << test::readFile(m_clips.rear).chopped(200) << true;
    }

    void brokenRecordingsStopWithoutHarm()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, exists);
        const QString path =
            m_dir.filePath(QStringLiteral("broken_%1_F.avi").arg(QTest::currentDataTag()));
        if (exists)
            QVERIFY(test::writeFile(path, content));
        auto player = startPlayer(path);
        player->setRate(8.0f); // a recording without index plays through to its end
        QTRY_VERIFY_WITH_TIMEOUT(player->state() == VLCMediaPlayerStateEnded ||
                                     player->state() == VLCMediaPlayerStateError ||
                                     player->state() == VLCMediaPlayerStatePaused,
                                 kWaitMs);
        QVERIFY(!player->isPlaying());

        // The same player still plays a good recording afterwards.
        player->setMedia(VLCMedia::mediaWithPath(m_clips.rear));
        player->play();
        QTRY_VERIFY_WITH_TIMEOUT(!player->lastFrame().isNull() && player->isPlaying(), kWaitMs);
    }

    void destroyingWhilePlayingIsClean()
    {
        // A view outliving its player goes black; a player outliving its view plays on.
        VLCVideoView view;
        view.resize(160, 90);
        auto player = startPlayer(m_clips.rear, &view);
        QTRY_VERIFY_WITH_TIMEOUT(!view.lastFrame().isNull(), kWaitMs);
        player.reset();
        QVERIFY(view.mediaPlayer() == nullptr);
        QCOMPARE(view.grab().toImage().pixelColor(80, 45), QColor(Qt::black));

        auto survivor = std::make_unique<VLCMediaPlayer>();
        {
            VLCVideoView shortLived;
            shortLived.setMediaPlayer(survivor.get());
            survivor->setMedia(VLCMedia::mediaWithPath(m_clips.front));
            survivor->play();
            QTRY_VERIFY_WITH_TIMEOUT(!shortLived.lastFrame().isNull(), kWaitMs);
        }
        QSignalSpy frames(survivor.get(), &VLCMediaPlayer::frameReady);
        QTRY_VERIFY_WITH_TIMEOUT(frames.count() > 2, kWaitMs);

        // Players torn down at every stage of opening, with their events still queued.
        for (int delayMs : {0, 5, 20, 60, 150}) {
            auto p = startPlayer(m_clips.front, &view);
            QTest::qWait(delayMs);
        }
        // Their late events leave the view unbound and black.
        QTest::qWait(100);
        QVERIFY(view.mediaPlayer() == nullptr);
        QCOMPARE(view.grab().toImage().pixelColor(80, 45), QColor(Qt::black));
    }
};

QTEST_MAIN(TestVLCMediaPlayer)
#include "tst_vlcmediaplayer.moc"
