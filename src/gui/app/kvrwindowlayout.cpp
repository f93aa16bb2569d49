#include "kvrwindowlayout.h"

#include "customwindow.h"
#include "kvrmainwindowui.h"
#include "kvrmedialisttableview.h"
#include "kvrvideocontainerview.h"
#include "widgets/artworknames.h"
#include "widgets/custombackgroundbox.h"
#include "widgets/tkimagebutton.h"
#include "widgets/tkthreepartimageview.h"

#include <QBoxLayout>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QScreen>

namespace kavro {

namespace {

constexpr int SwapAnimationMs = 1500;

// Replaces the box's layout by a fresh one; the widgets stay children of the box.
QBoxLayout* freshLayout(QWidget* box, QBoxLayout::Direction direction, const QMargins& margins,
                        int spacing)
{
    delete box->layout();
    auto* layout = new QBoxLayout(direction, box);
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    return layout;
}

void place(QBoxLayout* layout, QWidget* widget, int stretch = 0)
{
    layout->addWidget(widget, stretch);
    widget->show();
}

} // namespace

KVRWindowLayout::KVRWindowLayout(KVRMainWindowUI& ui, QObject* parent) : QObject(parent), m_ui(ui)
{
    m_ui.headBox->setFixedHeight(HeadHeight);
    m_ui.gsensorBox->setFixedHeight(GsensorHeight);
    m_ui.mediaControlBox->setFixedHeight(MediaControlHeight);
    m_ui.mediaControlBoxForFullScreen->setFixedHeight(FullScreenBarHeight);
    m_ui.bodyRightBox->setFixedWidth(RightColumnWidth);
    m_ui.sideButtonBox->setFixedHeight(SideButtonHeight);
    m_ui.subVideoBox->setFixedHeight(SubVideoHeight);
    m_ui.mapContainerBottomView->setFixedHeight(MapBottomHeight);
}

QRect KVRWindowLayout::minWindowFrame(const QScreen* screen)
{
    const QSize size = minWindowSize();
    if (!screen)
        return QRect(QPoint(0, 0), size);
    const QRect visible = screen->availableGeometry();
    const QPoint origin(visible.x() + (visible.width() - size.width()) / 2,
                        visible.y() + (visible.height() - size.height()) / 2);
    return QRect(origin, size);
}

bool KVRWindowLayout::fullScreen() const
{
    return m_ui.window && m_ui.window->isFullScreen();
}

void KVRWindowLayout::layoutWindow()
{
    QBoxLayout* layout = freshLayout(m_ui.backgroundBox, QBoxLayout::TopToBottom, QMargins(), 0);
    if (fullScreen()) {
        m_ui.headBox->hide();
    } else {
        place(layout, m_ui.headBox);
    }
    place(layout, m_ui.bodyBox, 1);
    layoutBodyBox();
    if (!fullScreen())
        layoutMapContainer();
}

void KVRWindowLayout::layoutBodyBox()
{
    if (fullScreen()) {
        QBoxLayout* body = freshLayout(m_ui.bodyBox, QBoxLayout::LeftToRight,
                                       QMargins(0, 0, 0, FullScreenBottomMargin), 0);
        m_ui.bodyRightBox->hide();
        place(body, m_ui.bodyLeftBox, 1);

        QBoxLayout* left = freshLayout(m_ui.bodyLeftBox, QBoxLayout::TopToBottom, QMargins(), 0);
        m_ui.gsensorBox->hide();
        m_ui.mediaControlBox->hide();
        place(left, m_ui.videoBox, 1);
        auto* barRow = new QHBoxLayout;
        barRow->setContentsMargins(0, 0, FullScreenBarRightInset, 0);
        left->addLayout(barRow);
        place(barRow, m_ui.mediaControlBoxForFullScreen, 1);
        return;
    }

    QBoxLayout* body = freshLayout(m_ui.bodyBox, QBoxLayout::LeftToRight,
                                   QMargins(SideMargin, 0, SideMargin, BottomMargin), ColumnGap);
    place(body, m_ui.bodyLeftBox, 1);
    place(body, m_ui.bodyRightBox);

    QBoxLayout* left = freshLayout(m_ui.bodyLeftBox, QBoxLayout::TopToBottom, QMargins(), BoxGap);
    m_ui.mediaControlBoxForFullScreen->hide();
    place(left, m_ui.videoBox, 1);
    place(left, m_ui.gsensorBox);
    place(left, m_ui.mediaControlBox);

    QBoxLayout* right = freshLayout(m_ui.bodyRightBox, QBoxLayout::TopToBottom, QMargins(), 0);
    place(right, m_ui.sideButtonBox);
    place(right, m_ui.mediaListBox, 1);
    place(right, m_ui.subVideoBox);
}

void KVRWindowLayout::layoutMapContainer()
{
    QBoxLayout* list = freshLayout(m_ui.mediaListBox, QBoxLayout::TopToBottom, QMargins(), 0);
    if (m_rightViewMode == MapMode) {
        list->addWidget(m_ui.mapContainerView);
        QBoxLayout* map =
            freshLayout(m_ui.mapContainerView, QBoxLayout::TopToBottom, QMargins(), 0);
        map->addWidget(m_ui.mapContainerTopView, 1);
        map->addWidget(m_ui.mapContainerBottomView);
        // The map page is given its size at once, not at the next layout pass.
        list->activate();
        map->activate();
    } else {
        list->addWidget(m_ui.mediaListTableView);
    }
}

void KVRWindowLayout::updateSideViewButton()
{
    const bool map = m_rightViewMode == MapMode;
    m_ui.recordButtonImageView->setImage(map ? artwork::listHidden : artwork::listShown);
    m_ui.informationButtonImageView->setImage(map ? artwork::mapShown : artwork::mapHidden);
    m_ui.mapContainerView->setVisible(map);
    m_ui.mediaListTableView->setVisible(!map);
    layoutMapContainer();
}

void KVRWindowLayout::clickMediaListViewButton()
{
    if (m_rightViewMode == MediaListMode)
        return;
    m_rightViewMode = MediaListMode;
    updateSideViewButton();
}

void KVRWindowLayout::clickMapViewButton()
{
    if (m_rightViewMode == MapMode)
        return;
    m_rightViewMode = MapMode;
    updateSideViewButton();
}

void KVRWindowLayout::showFrameIfDebugging()
{
    for (CustomBackgroundBox* box :
         {m_ui.backgroundBox, m_ui.headBox, m_ui.bodyBox, m_ui.bodyLeftBox, m_ui.bodyRightBox,
          m_ui.mediaControlBox, m_ui.sideButtonBox, m_ui.mediaListBox})
        box->setBackgroundColor(Qt::transparent);
    m_ui.subVideoBox->setBackgroundColor(Qt::black);
}

void KVRWindowLayout::animateSwap(QWidget* video1, QWidget* video2)
{
    KVRVideoContainerView* mainArea = m_ui.videoContainerView;
    KVRVideoContainerView* smallArea = m_ui.subVideoContainerView;
    mainArea->setChildHeld(video1, true);
    smallArea->setChildHeld(video2, true);

    // The large picture grows out of the corner towards the small area, the small one out of
    // the corner towards the large area.
    auto* group = new QParallelAnimationGroup(this);
    const auto grow = [group](QWidget* view, const QRect& from, const QRect& to) {
        auto* animation = new QPropertyAnimation(view, "geometry", group);
        animation->setDuration(SwapAnimationMs);
        animation->setEasingCurve(QEasingCurve::OutCubic);
        animation->setStartValue(from);
        animation->setEndValue(to);
        group->addAnimation(animation);
    };
    grow(video1, QRect(mainArea->width(), mainArea->height(), 0, 0), mainArea->rect());
    grow(video2, QRect(0, 0, 0, 0), smallArea->rect());
    connect(group, &QAbstractAnimation::finished, this, [mainArea, smallArea, video1, video2] {
        mainArea->setChildHeld(video1, false);
        smallArea->setChildHeld(video2, false);
    });
    group->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace kavro
