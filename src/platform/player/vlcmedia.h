#pragma once

#include <QString>
#include <QUrl>

#include <cstdint>
#include <memory>

struct libvlc_media_t;

namespace kavro {

class VLCTime;

// A recording file opened for the players. Copies share one libVLC media object, so the two
// players can exchange their recordings. A null media stands for "no recording".
class VLCMedia
{
public:
    VLCMedia() = default;

    // Opens a local file (a relative path is taken from the current folder). Null when libVLC is
    // not available. The media rests paused on its last frame when played to the end.
    static VLCMedia mediaWithPath(const QString& path);
    // The same, starting at the given time from the recording's start.
    static VLCMedia mediaWithPath(const QString& path, qint64 startMilliseconds);

    bool isNull() const { return !d; }
    QUrl url() const;
    QString path() const;
    // Known once the file has been opened by a player; null before.
    VLCTime length() const;

    // The channel from the path alone: 0 front, 1 rear, 2 unknown (also for a null media).
    std::int32_t mediaDirection() const;
    bool isFrontMedia() const { return mediaDirection() == 0; }
    bool isRearMedia() const { return mediaDirection() == 1; }

    libvlc_media_t* handle() const;

    friend bool operator==(const VLCMedia& a, const VLCMedia& b) { return a.d == b.d; }

private:
    struct Data;
    std::shared_ptr<const Data> d;
};

} // namespace kavro
