#pragma once

#include "kvrsettingcontrollerdelegate.h"

#include <array>

namespace kavro {

// The "setting.motion" page: motion sensitivity of both cameras and, for each, the twelve image
// blocks that take part in motion detection (a ticked box is watched).
class KVRSettingForMotionViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    explicit KVRSettingForMotionViewController(QWidget* parent = nullptr);

protected:
    void displayFileData() override;
    void collectFileData() override;

private:
    using BlockBoxes = std::array<QCheckBox*, 12>;
    QGroupBox* blockBox(const QString& title, const QString& prefix, BlockBoxes& boxes);

    BlockBoxes m_frontBlocks{};
    BlockBoxes m_rearBlocks{};
};

} // namespace kavro
