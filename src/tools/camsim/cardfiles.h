#pragma once

#include "records/driveinfoformat.h"
#include "settings/filedata.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace kavro::camsim {

class CardPlan;

// The camera's own files in the card's root: its settings, the clock file it was set from, and
// the drive records it logged along the drives of the plan.
class CardFiles
{
public:
    static constexpr int DriveRecordsBeforeFix = 5; // s from power-on to the first fix
    static constexpr char SettingsFile[] = "config.bin";
    static constexpr char ClockFile[] = "timeset.cfg";

    // The default settings with the plan's car number, prepared as every save prepares them.
    static _FILEDATA settings();
    static QByteArray clockText(const CardPlan& plan);
    // One record a second of every drive (the default saving interval), with void records
    // from power-on until the receiver has its first fix.
    static std::vector<_DRIVE_INFO_T> driveRecords(const CardPlan& plan);

    // Each writes its file under the card's root, replacing it only once it is complete.
    static bool writeSettings(const QString& root, QString* error);
    static bool writeClock(const QString& root, const CardPlan& plan, QString* error);
    static bool writeDriveRecords(const QString& root, const CardPlan& plan, QString* error);
};

} // namespace kavro::camsim
