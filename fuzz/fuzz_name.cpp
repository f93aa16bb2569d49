// Recording names as a folder scan meets them: one path a line, each admitted or refused, read
// into its mode, time and channel, paired with its partner and put in the list's order.
#include "recording/kvrmedia.h"
#include "recording/kvrmedialist.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace kavro;

namespace {

void readName(const KVRMedia& media)
{
    media.hasTime();
    media.fileName();
    media.mediaGroupName();
    media.yyyymmddhhmiss();
    media.extension();
    media.dir();
    KVRMediaList::mediaPairKey(media.fileName());
    mediaDirectionForPath(media.path());
}

// The list is sorted with this order, so it must be one: a sort given an inconsistent order may
// read outside the list.
void checkOrder(const QList<KVRMediaPtr>& medias)
{
    const qsizetype n = std::min<qsizetype>(medias.size(), 8);
    for (qsizetype a = 0; a < n; ++a) {
        const KVRMedia& x = *medias[a];
        if (x.compareDate(x) != 0)
            std::abort();
        for (qsizetype b = 0; b < n; ++b) {
            const KVRMedia& y = *medias[b];
            const int xy = x.compareDate(y);
            if (xy != -y.compareDate(x))
                std::abort();
            for (qsizetype c = 0; c < n; ++c) {
                const KVRMedia& z = *medias[c];
                if (xy < 0 && y.compareDate(z) < 0 && x.compareDate(z) >= 0)
                    std::abort();
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QList<QByteArray> lines =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)).split('\n');
    KVRMediaList list;
    QList<KVRMediaPtr> admitted;
    for (const QByteArray& line : lines) {
        const QString path = QString::fromUtf8(line);
        readName(KVRMedia(path));
        if (KVRMediaPtr media = KVRMediaList::createMediaByPath(path)) {
            readName(*media);
            admitted.append(media);
            list.addMedia(media);
        }
    }
    checkOrder(admitted);
    std::stable_sort(
        admitted.begin(), admitted.end(),
        [](const KVRMediaPtr& a, const KVRMediaPtr& b) { return a->compareDate(*b) < 0; });
    for (const KVRMediaPtr& media : std::as_const(admitted))
        list.findMediaPairWithFileName(media->fileName());
    return 0;
}
