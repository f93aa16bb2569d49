#pragma once

#include "kvrsettingcontrollerdelegate.h"

namespace kavro {

// The "setting.gps" page: weekly alarm day, speed unit, time zone and summer time, the speed in
// the video overlay, the route saving interval and GPS while parked. Every control stores its
// index.
class KVRSettingForGpsViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    explicit KVRSettingForGpsViewController(QWidget* parent = nullptr);
};

} // namespace kavro
