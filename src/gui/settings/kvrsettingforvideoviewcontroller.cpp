#include "kvrsettingforvideoviewcontroller.h"

#include "kvrsegmentedcontrol.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

namespace kavro {

namespace {

QLayout* labelled(const QString& label, QWidget* control)
{
    auto* row = new QHBoxLayout;
    auto* text = new QLabel(label);
    text->setMinimumWidth(90);
    row->addWidget(text);
    row->addWidget(control, 1);
    return row;
}

} // namespace

KVRSettingForVideoViewController::KVRSettingForVideoViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    //% "Brightness"
    const QString brightness = qtTrId("brightness");
    auto* frontSetting = new QVBoxLayout;
    frontSetting->addLayout(labelled(brightness, segments("vid_brightness")));
    auto* rearSetting = new QVBoxLayout;
    rearSetting->addLayout(labelled(brightness, segments("vid_brightness_R")));
    m_rearfpsSeg = segments("rear_fps");

    auto* grid = new QGridLayout(this);
    //% "Front video quality"
    grid->addWidget(groupBox(qtTrId("setting.video.front_quality"), segments("vid_enc_bitrate")), 0,
                    0);
    //% "Rear video quality"
    grid->addWidget(groupBox(qtTrId("setting.video.rear_quality"), segments("vid_enc_bitrate_R")),
                    0, 1);
    //% "Front camera"
    grid->addWidget(groupBox(qtTrId("setting.video.front_setting"), frontSetting), 1, 0);
    //% "Rear camera"
    grid->addWidget(groupBox(qtTrId("setting.video.rear_setting"), rearSetting), 1, 1);
    //% "Rear image reversal"
    grid->addWidget(groupBox(qtTrId("setting.video.rear_reversal"), segments("flip_video")), 2, 0);
    //% "Rear frame rate"
    grid->addWidget(groupBox(qtTrId("setting.video.rear_fps"), m_rearfpsSeg), 2, 1);
    //% "Front lens filter"
    grid->addWidget(groupBox(qtTrId("setting.video.front_tinting"), segments("front_cpl_use")), 3,
                    0);
    //% "Rear window tinting"
    grid->addWidget(groupBox(qtTrId("setting.video.rear_tinting"), segments("rear_cpl_use")), 3, 1);
    //% "Use the CPL filter when the windscreen reflects the dashboard."
    auto* guide = new QLabel(qtTrId("setting.video.cpl_filter_use"));
    guide->setWordWrap(true);
    grid->addWidget(guide, 4, 0, 1, 2);
    grid->setRowStretch(5, 1);
}

void KVRSettingForVideoViewController::displayFileData()
{
    // The rear frame rates follow the mains frequency as it was when the page was made.
    if (fileData()->Gamma != 0)
        //% "25 fps"
        m_rearfpsSeg->setLabel(0, qtTrId("25fps"));
    else
        //% "30 fps"
        m_rearfpsSeg->setLabel(0, qtTrId("30fps"));
    KVRSettingControllerDelegate::displayFileData();
}

} // namespace kavro
