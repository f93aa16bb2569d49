#include "vlcmedia.h"

#include "playerlog.h"
#include "recording/kvrmedia.h"
#include "telemetry/cutshortavi.h"
#include "vlclibrary.h"
#include "vlctime.h"

#include <QFile>
#include <QFileInfo>

#include <vlc/vlc.h>

namespace kavro {

namespace {

// One opening of a recording cut short by libVLC: it reads the whole file as it is shown.
struct CutShortReader
{
    const CutShortAvi* avi;
    QFile file;
    std::uint64_t position = 0;
};

int openCutShort(void* opaque, void** data, std::uint64_t* size)
{
    const auto* avi = static_cast<const CutShortAvi*>(opaque);
    auto* reader = new CutShortReader{avi, QFile(avi->path())};
    if (!reader->file.open(QIODevice::ReadOnly)) {
        delete reader;
        return -1;
    }
    *data = reader;
    *size = avi->size();
    return 0;
}

ssize_t readCutShort(void* data, unsigned char* buffer, size_t length)
{
    auto* reader = static_cast<CutShortReader*>(data);
    const qint64 got = reader->avi->read(reader->file, reader->position,
                                         reinterpret_cast<char*>(buffer), qint64(length));
    if (got > 0)
        reader->position += std::uint64_t(got);
    return got;
}

int seekCutShort(void* data, std::uint64_t offset)
{
    static_cast<CutShortReader*>(data)->position = offset;
    return 0;
}

void closeCutShort(void* data)
{
    delete static_cast<CutShortReader*>(data);
}

} // namespace

struct VLCMedia::Data
{
    // Declared first, so that it outlives the media whose reads it serves.
    std::shared_ptr<const CutShortAvi> cutShort;
    libvlc_media_t* media = nullptr;
    QString path;
    QUrl url;

    ~Data()
    {
        if (media)
            libvlc_media_release(media);
    }
};

VLCMedia VLCMedia::mediaWithPath(const QString& path)
{
    libvlc_instance_t* instance = VLCLibrary::sharedLibrary()->instance();
    if (!instance || path.isEmpty())
        return {};
    const QString absolute = QFileInfo(path).absoluteFilePath();
    auto data = std::make_shared<Data>();
    // A recording cut short by a power loss has no index; libVLC would neither know its length
    // nor find its key frames. It gets the file with the index it would have had.
    data->cutShort = CutShortAvi::open(absolute);
    libvlc_media_t* media =
        data->cutShort ? libvlc_media_new_callbacks(instance, openCutShort, readCutShort,
                                                    seekCutShort, closeCutShort,
                                                    const_cast<CutShortAvi*>(data->cutShort.get()))
                       : libvlc_media_new_path(instance, absolute.toUtf8().constData());
    if (!media) {
        qCWarning(lcVlcPlayer) << "cannot open" << absolute;
        return {};
    }
    // The end-of-recording rule of the player window waits for a player paused on the last
    // frame; without this libVLC would end and drop the picture.
    libvlc_media_add_option(media, ":play-and-pause");
    data->media = media;
    data->path = absolute;
    data->url = QUrl::fromLocalFile(absolute);
    VLCMedia result;
    result.d = std::move(data);
    return result;
}

VLCMedia VLCMedia::mediaWithPath(const QString& path, qint64 startMilliseconds)
{
    VLCMedia media = mediaWithPath(path);
    if (media.isNull())
        return media;
    const QByteArray start =
        ":start-time=" + QByteArray::number(startMilliseconds / 1000.0, 'f', 3);
    libvlc_media_add_option(media.d->media, start.constData());
    return media;
}

QUrl VLCMedia::url() const
{
    return d ? d->url : QUrl();
}

QString VLCMedia::path() const
{
    return d ? d->path : QString();
}

VLCTime VLCMedia::length() const
{
    if (!d)
        return VLCTime::nullTime();
    const libvlc_time_t duration = libvlc_media_get_duration(d->media);
    return duration < 0 ? VLCTime::nullTime() : VLCTime(duration);
}

std::int32_t VLCMedia::mediaDirection() const
{
    if (!d || d->url.isEmpty())
        return KVRMediaDirectionUnknown;
    return mediaDirectionForPath(d->path);
}

libvlc_media_t* VLCMedia::handle() const
{
    return d ? d->media : nullptr;
}

} // namespace kavro
