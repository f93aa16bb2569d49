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
// thread; the main thread reads finished frames. Two buffers take turns: the decoder writes the
// back one while the front one holds the last displayed frame, and a mutex guards the swap and
// every read of the front buffer. The mutex guards only pointer swaps and copies, never a libVLC
// call that could wait, so stopping a player from the main thread cannot deadlock with a callback.
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

    // Main thread: the last displayed frame (null when no video runs). Cheap to call repeatedly.
    QImage lastFrame() const { return m_lastFrame; }
    // Any thread: a fresh copy of the last displayed frame.
    QImage copyFrontFrame() const;
    // The size chosen for the video output, empty when none runs.
    QSize frameSize() const;

    // Larger frames are refused (the output then fails) rather than allocated.
    static constexpr unsigned kMaxSide = 8192;
    static constexpr quint64 kMaxPixels = 8192ull * 4608ull;

signals:
    // A new frame has been displayed (or the video output went away); emitted on the main thread.
    void frameReady();

private:
    struct FreeAligned
    {
        void operator()(uchar* p) const { std::free(p); }
    };
    using Plane = std::unique_ptr<uchar, FreeAligned>;

    QSize pictureSize(QSize decoded);
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
    Plane m_planes[2];
    int m_front = -1; // index of the displayed buffer, -1 before the first frame
    QSize m_size;
    qsizetype m_pitch = 0;

    std::atomic<bool> m_notifyPending{false};
    QImage m_lastFrame; // main thread only
};

} // namespace kavro
