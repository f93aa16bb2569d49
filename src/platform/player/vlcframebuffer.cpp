#include "vlcframebuffer.h"

#include "playerlog.h"

#include <QMutexLocker>

#include <vlc/vlc.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace kavro {

namespace {

constexpr unsigned kAlignment = 32; // libVLC wants planes, pitches and line counts on 32

constexpr quint64 roundUp(quint64 value)
{
    return (value + kAlignment - 1) / kAlignment * kAlignment;
}

void* pictureId(int index)
{
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(index + 1));
}

int pictureIndex(void* picture)
{
    return static_cast<int>(reinterpret_cast<std::intptr_t>(picture)) - 1;
}

} // namespace

VLCFrameBuffer::VLCFrameBuffer(QObject* parent) : QObject(parent) {}

VLCFrameBuffer::~VLCFrameBuffer()
{
    setMedia(nullptr);
}

void VLCFrameBuffer::attachTo(libvlc_media_player_t* player)
{
    libvlc_video_set_callbacks(player, lockCallback, nullptr, displayCallback, this);
    libvlc_video_set_format_callbacks(player, formatCallback, cleanupCallback);
}

void VLCFrameBuffer::setMedia(libvlc_media_t* media)
{
    if (media)
        libvlc_media_retain(media);
    libvlc_media_t* previous = nullptr;
    {
        QMutexLocker locker(&m_mutex);
        previous = std::exchange(m_media, media);
    }
    if (previous)
        libvlc_media_release(previous);
}

bool VLCFrameBuffer::setSizeLimit(const QSize& limit)
{
    QMutexLocker locker(&m_mutex);
    m_sizeLimit = limit;
    if (m_size.isEmpty() || m_sourceSize.isEmpty())
        return false;
    // A pixel or two off is the rounding to even sizes, not worth a restart.
    const QSize wanted = fittedSize(m_sourceSize, limit);
    return std::abs(wanted.width() - m_size.width()) > 2 ||
           std::abs(wanted.height() - m_size.height()) > 2;
}

QSize VLCFrameBuffer::fittedSize(const QSize& source, const QSize& limit)
{
    if (limit.width() <= 1 || limit.height() <= 1)
        return source;
    // Larger than the video too: libVLC scales while it converts the colours, in one pass, and
    // the picture is painted without scaling.
    QSize size = source.scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(2, 2));
    size = size.boundedTo(QSize(int(kMaxSide), int(kMaxSide)));
    return QSize(size.width() & ~1, size.height() & ~1);
}

void VLCFrameBuffer::clearPicture()
{
    {
        QMutexLocker locker(&m_mutex);
        m_front = -1;
        m_held = -1;
    }
    m_lastFrame = QImage();
    m_keepPicture = false;
    emit frameReady();
}

QImage VLCFrameBuffer::copyFrontFrame() const
{
    QMutexLocker locker(&m_mutex);
    if (m_front < 0 || !m_planes[m_front])
        return {};
    // Wrap the padded buffer and copy out the visible part, so the result owns its pixels.
    const QImage wrapped(m_planes[m_front].get(), m_size.width(), m_size.height(), m_pitch,
                         QImage::Format_RGB32);
    return wrapped.copy();
}

QSize VLCFrameBuffer::frameSize() const
{
    QMutexLocker locker(&m_mutex);
    return m_size;
}

QSize VLCFrameBuffer::sourceSize() const
{
    QMutexLocker locker(&m_mutex);
    return m_size.isEmpty() ? QSize() : m_sourceSize;
}

QSize VLCFrameBuffer::pictureSize(QSize decoded)
{
    // The decoder offers its coded size, which decoders round up (90 lines become 96); the video
    // track tells the size meant for display, and its sample aspect ratio widens or narrows it.
    libvlc_media_t* media = nullptr;
    {
        QMutexLocker locker(&m_mutex);
        media = m_media;
        if (media)
            libvlc_media_retain(media);
    }
    if (!media)
        return decoded;
    QSize result = decoded;
    libvlc_media_track_t** tracks = nullptr;
    const unsigned count = libvlc_media_tracks_get(media, &tracks);
    for (unsigned i = 0; i < count; ++i) {
        const libvlc_media_track_t* track = tracks[i];
        if (track->i_type != libvlc_track_video || !track->video)
            continue;
        const libvlc_video_track_t& video = *track->video;
        if (video.i_width == 0 || video.i_height == 0 || video.i_width > kMaxSide ||
            video.i_height > kMaxSide)
            break;
        quint64 w = video.i_width;
        if (video.i_sar_num > 0 && video.i_sar_den > 0)
            w = (w * video.i_sar_num + video.i_sar_den / 2) / video.i_sar_den;
        result = QSize(int(std::clamp<quint64>(w, 1, kMaxSide)), int(video.i_height));
        break;
    }
    if (tracks)
        libvlc_media_tracks_release(tracks, count);
    libvlc_media_release(media);
    return result;
}

unsigned VLCFrameBuffer::format(char* chroma, unsigned* width, unsigned* height, unsigned* pitches,
                                unsigned* lines)
{
    if (*width == 0 || *height == 0 || *width > kMaxSide || *height > kMaxSide) {
        qCWarning(lcVlcPlayer, "refusing a video of %ux%u pixels", *width, *height);
        return 0;
    }
    const QSize source = pictureSize(QSize(int(*width), int(*height)));
    QSize size;
    {
        QMutexLocker locker(&m_mutex);
        size = fittedSize(source, m_sizeLimit);
    }
    const unsigned w = unsigned(size.width());
    const unsigned h = unsigned(size.height());
    if (quint64(w) * h > kMaxPixels) {
        qCWarning(lcVlcPlayer, "refusing a video of %ux%u pixels", w, h);
        return 0;
    }
    // RV32 is B, G, R, X in memory on little-endian machines: QImage's RGB32.
    std::memcpy(chroma, "RV32", 4);
    *width = w;
    *height = h;
    const quint64 pitch = roundUp(quint64(w) * 4);
    const quint64 bytes = pitch * roundUp(h);

    QMutexLocker locker(&m_mutex);
    for (Plane& plane : m_planes) {
        plane.reset(static_cast<uchar*>(std::aligned_alloc(kAlignment, bytes)), std::free);
        if (!plane) {
            qCWarning(lcVlcPlayer, "no memory for a video of %ux%u pixels", w, h);
            for (Plane& allocated : m_planes)
                allocated.reset();
            return 0;
        }
    }
    m_front = -1;
    m_held = -1;
    m_size = QSize(int(w), int(h));
    m_sourceSize = source;
    m_pitch = qsizetype(pitch);
    pitches[0] = unsigned(pitch);
    lines[0] = unsigned(roundUp(h));
    return 1;
}

void VLCFrameBuffer::cleanup()
{
    {
        QMutexLocker locker(&m_mutex);
        for (Plane& plane : m_planes)
            plane.reset();
        m_front = -1;
        m_held = -1;
        m_size = QSize();
        m_sourceSize = QSize();
        m_pitch = 0;
    }
    notifyMainThread();
}

void* VLCFrameBuffer::lock(void** planes)
{
    QMutexLocker locker(&m_mutex);
    int back = 0;
    while (back == m_front || back == m_held)
        ++back;
    // Only the video thread writes the back buffer and only it replaces the planes, so the
    // pointer stays valid after the mutex is released.
    planes[0] = m_planes[back].get();
    return pictureId(back);
}

void VLCFrameBuffer::display(void* picture)
{
    const int index = pictureIndex(picture);
    {
        QMutexLocker locker(&m_mutex);
        if (index < 0 || index > 2 || !m_planes[index])
            return;
        m_front = index;
    }
    notifyMainThread();
}

void VLCFrameBuffer::notifyMainThread()
{
    // One pending notice at a time: a busy main thread sees the newest frame, not a queue of them.
    if (m_notifyPending.exchange(true))
        return;
    QMetaObject::invokeMethod(this, &VLCFrameBuffer::takeLatestFrame, Qt::QueuedConnection);
}

void VLCFrameBuffer::takeLatestFrame()
{
    m_notifyPending = false;
    QMutexLocker locker(&m_mutex);
    m_held = m_front;
    if (m_front < 0 || !m_planes[m_front]) {
        m_held = -1;
        locker.unlock();
        // The image keeps its own plane alive after the output has gone.
        if (!m_keepPicture) {
            m_lastFrame = QImage();
            emit frameReady();
        }
        return;
    }
    m_keepPicture = false;
    // The image keeps its plane alive; the decoder leaves it alone while it is held.
    auto* keep = new Plane(m_planes[m_front]);
    const QImage frame(
        keep->get(), m_size.width(), m_size.height(), m_pitch, QImage::Format_RGB32,
        [](void* plane) { delete static_cast<Plane*>(plane); }, keep);
    locker.unlock();
    m_lastFrame = frame;
    emit frameReady();
}

unsigned VLCFrameBuffer::formatCallback(void** opaque, char* chroma, unsigned* width,
                                        unsigned* height, unsigned* pitches, unsigned* lines)
{
    return static_cast<VLCFrameBuffer*>(*opaque)->format(chroma, width, height, pitches, lines);
}

void VLCFrameBuffer::cleanupCallback(void* opaque)
{
    static_cast<VLCFrameBuffer*>(opaque)->cleanup();
}

void* VLCFrameBuffer::lockCallback(void* opaque, void** planes)
{
    return static_cast<VLCFrameBuffer*>(opaque)->lock(planes);
}

void VLCFrameBuffer::displayCallback(void* opaque, void* picture)
{
    static_cast<VLCFrameBuffer*>(opaque)->display(picture);
}

} // namespace kavro
