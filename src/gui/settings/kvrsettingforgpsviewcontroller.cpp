#include "kvrsettingforgpsviewcontroller.h"

#include "kvrsegmentedcontrol.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace kavro {

namespace {

QLabel* guide(const QString& text)
{
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

} // namespace

KVRSettingForGpsViewController::KVRSettingForGpsViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    auto* speed = new QVBoxLayout;
    speed->addWidget(segments("speed_disp_unit"));
    //% "The unit of the speed in the overlay and in this program."
    speed->addWidget(guide(qtTrId("setting.gps.gps_speed_guide1")));

    auto* time = new QVBoxLayout;
    auto* zoneRow = new QHBoxLayout;
    zoneRow->addWidget(list("time_gmt"));
    //% "Summer time"
    zoneRow->addWidget(checkBox("summer_time", qtTrId("summerTime")));
    zoneRow->addStretch(1);
    time->addLayout(zoneRow);
    //% "The camera sets its clock from GPS in this time zone."
    time->addWidget(guide(qtTrId("setting.gps.gps_time_guide1")));

    auto* grid = new QGridLayout(this);
    //% "Weekly no-driving alarm"
    grid->addWidget(groupBox(qtTrId("setting.gps.weekly_alarm"), segments("nodriving_day")), 0, 0,
                    1, 2);
    //% "Speed display"
    grid->addWidget(groupBox(qtTrId("setting.gps.speed_display"), speed), 1, 0);
    //% "Time zone"
    grid->addWidget(groupBox(qtTrId("setting.gps.timezone_setting"), time), 1, 1);
    //% "Speed in the video"
    grid->addWidget(groupBox(qtTrId("setting.gps.osd_speed_display"), segments("osd_speed_flag")),
                    2, 0);
    //% "GPS in parking mode"
    grid->addWidget(groupBox(qtTrId("setting.gps.gps_on_parking_mode"), segments("NightTime")), 2,
                    1);
    //% "Driving route saving interval"
    grid->addWidget(groupBox(qtTrId("setting.gps.driving_route_info_saving_interval"),
                             segments("SaveDuration")),
                    3, 0, 1, 2);
    //% "GPS needs a clear view of the sky; the first fix can take a few minutes."
    grid->addWidget(guide(qtTrId("setting.gps.gps_guide1")), 4, 0, 1, 2);
    //% "Without a GPS fix the overlay shows no speed and the route is not saved."
    grid->addWidget(guide(qtTrId("setting.gps.gps_guide2")), 5, 0, 1, 2);
    grid->setRowStretch(6, 1);
}

} // namespace kavro
