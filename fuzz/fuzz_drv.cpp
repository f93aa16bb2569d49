// A drive-record file as the drive-record page and `kavro drv` read it: the records, every cell
// of the table, each row's map position and the CSV export.
#include "scratchfile.h"

#include "records/kvrflashdata.h"

#include <cstdint>
#include <cstdlib>

using namespace kavro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString path = fuzz::ScratchFile::write(data, size);
    KVRFlashData records;
    if (path.isEmpty() || !records.doReadFlashDataFile(path))
        return 0;
    // Never more records than the bytes hold.
    if (std::uint64_t(records.count()) * drv::RecordSize > size)
        std::abort();
    for (qint64 row = -1; row <= records.count(); ++row) {
        for (int column = -1; column <= FlashDataColumnCount; ++column)
            records.stringForColumnIndex(column, row);
        records.positionForRow(row);
    }
    records.csvDocument();
    return 0;
}
