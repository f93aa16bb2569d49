// A settings file as the settings window and `kavro config show` read it: the record, every field
// shown through its page's table, and the values the pages work out from the stored ones.
#include "scratchfile.h"

#include "settings/filedata.h"
#include "settings/settingfields.h"
#include "settings/settingfile.h"
#include "settings/settingvalues.h"

#include <cstdint>
#include <cstdlib>

using namespace kavro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    _FILEDATA record;
    fileDataFromBytes(QByteArrayView(data, qsizetype(size)), record);
    const QString path = fuzz::ScratchFile::write(data, size);
    if (path.isEmpty() || !readSettingFile(path, record))
        return 0;

    for (const FileDataField& field : fileDataFields()) {
        fieldInteger(record, field);
        fieldText(record, field);
        for (std::size_t i = 0; i < field.size / sizeof(std::uint32_t) + 1; ++i)
            fieldArrayElement(record, field, i);
    }
    hasValidChecksum(record);
    plateNumber(record);

    // Showing a record never changes it, and collecting what was shown keeps it.
    const QByteArray before = fileDataBytes(record);
    for (const SettingField& field : settingFields()) {
        if (field.kind != SettingKind::Choice)
            continue;
        const int index = choiceIndexInRecord(record, field);
        if (fileDataBytes(record) != before)
            std::abort();
        _FILEDATA collected = record;
        storeChoiceIndex(collected, field, index);
        if (const FileDataField* stored = findFileDataField(field.name))
            isStorableValue(record, field, fieldInteger(collected, *stored));
    }

    normalizedCableVoltCorr(record.CableVoltCorr);
    findDrivingGsensorThresholdIndexByX(record.gsen_x_threshold, record.gsen_y_threshold,
                                        record.gsen_z_threshold);
    findParkingGsensorThresholdIndexByX(record.parkmode_x_threshold, record.parkmode_y_threshold,
                                        record.parkmode_z_threshold);
    for (int bit = 0; bit < 32; ++bit)
        GetRearCameraSetting(record.external_rear_camera, bit);
    motionBlockMaskFromWatched(watchedMotionBlocks(record.motionBlock));
    sliderPositionForAlwaysRatio(record.sd_mem_always_ratio);
    return 0;
}
