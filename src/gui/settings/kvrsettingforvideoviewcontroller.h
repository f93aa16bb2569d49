#pragma once

#include "kvrsettingcontrollerdelegate.h"

namespace kavro {

// The "setting.video" page: quality, brightness and tinting of both cameras, the rear image
// reversal and frame rate. Every field stores its segment index.
class KVRSettingForVideoViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    explicit KVRSettingForVideoViewController(QWidget* parent = nullptr);

protected:
    void displayFileData() override;

private:
    KVRSegmentedControl* m_rearfpsSeg;
};

} // namespace kavro
