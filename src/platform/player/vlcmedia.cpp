#include "vlcmedia.h"

#include "playerlog.h"
#include "recording/kvrmedia.h"
#include "vlclibrary.h"
#include "vlctime.h"

#include <QFileInfo>

#include <vlc/vlc.h>

namespace kavro {

struct VLCMedia::Data
{
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
    libvlc_media_t* media = libvlc_media_new_path(instance, absolute.toUtf8().constData());
    if (!media) {
        qCWarning(lcVlcPlayer) << "cannot open" << absolute;
        return {};
    }
    // The end-of-recording rule of the player window waits for a player paused on the last
    // frame; without this libVLC would end and drop the picture.
    libvlc_media_add_option(media, ":play-and-pause");
    auto data = std::make_shared<Data>();
    data->media = media;
    data->path = absolute;
    data->url = QUrl::fromLocalFile(absolute);
    VLCMedia result;
    result.d = std::move(data);
    return result;
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
