#pragma once

#include <QImage>
#include <QMutex>
#include <QObject>
#include <QSize>

#include <atomic>
#include <cstdlib>
#include <memory>

struct libvlc_media_player_t;
struct libvlc_media_t;

namespace kavro {

// The memory a player's decoder renders into. libVLC calls the callbacks below on its video
// thread; the main thread reads finished frames. Three buffers take turns: the front one holds the
// last displayed frame, the main thread paints from the one it took last without copying it, and
// the decoder writes the third. A mutex guards the turns and every read of the front buffer. It
// guards only index changes and copies, never a libVLC call that could wait, so stopping a player
// from the main thread cannot deadlock with a callback.
class VLCFrameBuffer : public QObject
{
    Q_OBJECT

public:
    explicit VLCFrameBuffer(QObject* parent = nullptr);
    ~VLCFrameBuffer() override;

    // Points the player's video output at this buffer; call once, before playing.
    void attachTo(libvlc_media_player_t* player);
    // The media the player holds, whose video track gives the picture's real size.
    void setMedia(libvlc_media_t* media);

    // Main thread: forgets the displayed frame, for a player stopped or given another recording.
    void clearPicture();

    // Main thread: the last displayed frame (null when no video runs), valid until the event loop
    // runs again; copy it to keep it.
    const QImage& lastFrame() const { return m_lastFrame; }
    // Any thread: a fresh copy of the last displayed frame.
    QImage copyFrontFrame() const;
    // The size chosen for the video output, empty when none runs.
    QSize frameSize() const;
    // The video's own size as shown (sample aspect applied), empty when no video output runs.
    QSize sourceSize() const;
    // Pictures are rendered at the video's size fitted into this, aspect ratio kept; empty for the
    // video's own size. Read when the video output starts; true when a running output would now
    // choose another size, so that it is worth starting again.
    bool setSizeLimit(const QSize& limit);
    // Main thread: the picture shown stays until the next frame, over a restart of the output.
    void keepPictureUntilNextFrame() { m_keepPicture = true; }

    // Larger frames are refused (the output then fails) rather than allocated.
    static constexpr unsigned kMaxSide = 8192;
    static constexpr quint64 kMaxPixels = 8192ull * 4608ull;

signals:
    // A new frame has been displayed (or the video output went away); emitted on the main thread.
    void frameReady();

private:
    // Shared with the image the main thread holds, which may outlive a change of video size.
    using Plane = std::shared_ptr<uchar>;

    QSize pictureSize(QSize decoded);
    static QSize fittedSize(const QSize& source, const QSize& limit);
    unsigned format(char* chroma, unsigned* width, unsigned* height, unsigned* pitches,
                    unsigned* lines);
    void cleanup();
    void* lock(void** planes);
    void display(void* picture);
    void notifyMainThread();
    void takeLatestFrame();

    static unsigned formatCallback(void** opaque, char* chroma, unsigned* width, unsigned* height,
                                   unsigned* pitches, unsigned* lines);
    static void cleanupCallback(void* opaque);
    static void* lockCallback(void* opaque, void** planes);
    static void displayCallback(void* opaque, void* picture);

    mutable QMutex m_mutex;
    libvlc_media_t* m_media = nullptr; // retained
    Plane m_planes[3];
    int m_front = -1; // index of the displayed buffer, -1 before the first frame
    int m_held = -1;  // index of the buffer m_lastFrame shows, -1 for none
    QSize m_sizeLimit;
    QSize m_sourceSize;
    QSize m_size;
    qsizetype m_pitch = 0;

    std::atomic<bool> m_notifyPending{false};
    QImage m_lastFrame;         // main thread only
    bool m_keepPicture = false; // main thread only
};

} // namespace kavro
