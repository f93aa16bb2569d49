#pragma once

#include <QObject>
#include <QRect>
#include <QSize>

#include <cstdint>

class QScreen;
class QWidget;

namespace kavro {

struct KVRMainWindowUI;

// The two arrangements of the main window's box tree, normal and full screen, and the right
// column's switch between the recording list and the map.
class KVRWindowLayout : public QObject
{
    Q_OBJECT

public:
    enum RightViewMode : std::int32_t
    {
        MediaListMode = 0,
        MapMode = 1,
    };

    // Fixed sizes of the boxes, in pixels.
    static constexpr int HeadHeight = 50;
    static constexpr int SideMargin = 10;
    static constexpr int ColumnGap = 10;
    static constexpr int RightColumnWidth = 334;
    static constexpr int BottomMargin = 8;
    static constexpr int FullScreenBottomMargin = 2;
    static constexpr int BoxGap = 4;
    static constexpr int GsensorHeight = 130;
    static constexpr int MediaControlHeight = 72;
    static constexpr int FullScreenBarHeight = 36;
    static constexpr int FullScreenBarRightInset = 2;
    static constexpr int SideButtonHeight = 32;
    static constexpr int SubVideoHeight = 250;
    static constexpr int MapBottomHeight = 57;

    explicit KVRWindowLayout(KVRMainWindowUI& ui, QObject* parent = nullptr);

    static QSize minWindowSize() { return {1020, 640}; }
    // The minimum size centred in the screen's usable area.
    static QRect minWindowFrame(const QScreen* screen);

    void layoutWindow();
    void layoutBodyBox();
    void layoutMapContainer();

    std::int32_t rightViewMode() const { return m_rightViewMode; }
    void setRightViewMode(std::int32_t mode) { m_rightViewMode = mode; }
    void updateSideViewButton();
    void clickMediaListViewButton();
    void clickMapViewButton();

    // The start-up fills of the boxes: clear, with a black small video area.
    void showFrameIfDebugging();
    // The exchange of the two pictures: each grows out of the corner towards the other's area
    // into its own, in 1.5 s.
    void animateSwap(QWidget* video1, QWidget* video2);

private:
    bool fullScreen() const;

    KVRMainWindowUI& m_ui;
    std::int32_t m_rightViewMode = MediaListMode;
};

} // namespace kavro
