#include "kvrsettingformotionviewcontroller.h"

#include "kvrsegmentedcontrol.h"
#include "settings/settingvalues.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>

namespace kavro {

namespace {

std::array<bool, 12> watched(const std::array<QCheckBox*, 12>& boxes)
{
    std::array<bool, 12> ticked{};
    for (std::size_t box = 0; box < boxes.size(); ++box)
        ticked[box] = boxes[box]->isChecked();
    return ticked;
}

void showWatched(const std::array<QCheckBox*, 12>& boxes, std::uint32_t mask)
{
    const std::array<bool, 12> ticked = watchedMotionBlocks(mask);
    for (std::size_t box = 0; box < boxes.size(); ++box)
        boxes[box]->setChecked(ticked[box]);
}

} // namespace

KVRSettingForMotionViewController::KVRSettingForMotionViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    auto* sensitivity = new QFormLayout;
    //% "Front camera"
    sensitivity->addRow(qtTrId("setting.aux.front_sensitivity"), segments("motion720pCValue"));
    //% "Rear camera"
    sensitivity->addRow(qtTrId("setting.aux.rear_sensitivity"), segments("motion1080pCValue"));

    auto* blocks = new QHBoxLayout;
    //% "Front"
    blocks->addWidget(
        blockBox(qtTrId("setting.motion.block_front"), QStringLiteral("front"), m_frontBlocks));
    //% "Rear"
    blocks->addWidget(
        blockBox(qtTrId("setting.motion.block_rear"), QStringLiteral("rear"), m_rearBlocks));

    auto* layout = new QVBoxLayout(this);
    //% "Motion detection sensitivity"
    layout->addWidget(groupBox(qtTrId("setting.motion.sensitivity"), sensitivity));
    //% "Watched image blocks"
    layout->addWidget(groupBox(qtTrId("setting.motion.block"), blocks));
    layout->addStretch(1);
}

// Boxes 01 to 12 in a 4 x 3 grid over the picture, row by row.
QGroupBox* KVRSettingForMotionViewController::blockBox(const QString& title, const QString& prefix,
                                                       BlockBoxes& boxes)
{
    auto* grid = new QGridLayout;
    for (int box = 0; box < 12; ++box) {
        auto* check = new QCheckBox(QStringLiteral("%1").arg(box + 1, 2, 10, QChar(u'0')), this);
        check->setObjectName(
            QStringLiteral("%1MotionBlock%2Chk").arg(prefix).arg(box + 1, 2, 10, QChar(u'0')));
        boxes[static_cast<std::size_t>(box)] = check;
        grid->addWidget(check, box / 4, box % 4);
    }
    return groupBox(title, grid);
}

void KVRSettingForMotionViewController::displayFileData()
{
    KVRSettingControllerDelegate::displayFileData();
    showWatched(m_frontBlocks, fileData()->motionBlock);
    showWatched(m_rearBlocks, fileData()->motionBlock_Rear);
}

void KVRSettingForMotionViewController::collectFileData()
{
    KVRSettingControllerDelegate::collectFileData();
    fileData()->motionBlock = motionBlockMaskFromWatched(watched(m_frontBlocks));
    fileData()->motionBlock_Rear = motionBlockMaskFromWatched(watched(m_rearBlocks));
}

} // namespace kavro
