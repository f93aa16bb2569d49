// The telemetry of a recording as the viewer and `kavro telemetry` read it, with and without the
// recovery of a recording cut short, and the cut-short recording as the player is fed it.
#include "scratchfile.h"

#include "qtbridge/qtbridge.h"
#include "telemetry/cutshortavi.h"
#include "telemetry/kvrblackboxdata.h"
#include "telemetry/recordingprobe.h"
#include "telemetry/telemetryexport.h"

#include <QFile>

#include <cstdint>
#include <cstdlib>

using namespace kavro;

namespace {

void extract(const QString& path, bool recover)
{
    KVRBlackBoxData store;
    store.setRecoverCutShort(recover);
    if (!store.ExtractStreamInformation(nativePath(path)))
        return;
    RecordingProbe::telemetrySeconds(store);
    telemetryJson(store);
    telemetryCsv(store);
    routeGpx(routePoints(store), "fuzz");
}

// Reads the whole file as shown, in pieces of uneven size, and checks that every byte promised
// by size() is delivered.
void readCutShort(const QString& path)
{
    const std::shared_ptr<const CutShortAvi> avi = CutShortAvi::open(path);
    if (!avi)
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    char buffer[7001];
    std::uint64_t offset = 0;
    while (offset < avi->size()) {
        const qint64 got = avi->read(file, offset, buffer, sizeof buffer);
        if (got <= 0)
            std::abort(); // the shown size promised more
        offset += std::uint64_t(got);
    }
    if (avi->read(file, offset, buffer, sizeof buffer) != 0)
        std::abort();
    avi->read(file, avi->size() / 3, buffer, 13);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString path = fuzz::ScratchFile::write(data, size);
    if (path.isEmpty())
        return 0;
    RecordingProbe::probe(nativePath(path));
    extract(path, false);
    extract(path, true);
    readCutShort(path);
    return 0;
}
