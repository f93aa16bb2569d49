#pragma once

class QLabel;
class QSlider;
class QToolButton;
class QWidget;

namespace kavro {

class CustomBackgroundBox;
class CustomWindow;
class GraphView;
class KVRMediaListTableView;
class KVRPositionSlider;
class KVRVideoContainerView;
class PMProgressIndicator;
class TKImageButton;
class TKThreePartImageView;
class TKVideoBackgroundImageView;

// The main window's widgets: the box tree with the controls inside its leaf boxes. How the boxes
// themselves are arranged depends on the window's mode and is KVRWindowLayout's work.
struct KVRMainWindowUI
{
    void setupUi(CustomWindow* mainWindow);

    CustomWindow* window = nullptr;

    CustomBackgroundBox* backgroundBox = nullptr;
    CustomBackgroundBox* headBox = nullptr;
    CustomBackgroundBox* bodyBox = nullptr;
    CustomBackgroundBox* bodyLeftBox = nullptr;
    CustomBackgroundBox* bodyRightBox = nullptr;
    CustomBackgroundBox* videoBox = nullptr;
    CustomBackgroundBox* gsensorBox = nullptr;
    CustomBackgroundBox* mediaControlBox = nullptr;
    CustomBackgroundBox* sideButtonBox = nullptr;
    CustomBackgroundBox* mediaListBox = nullptr;
    CustomBackgroundBox* subVideoBox = nullptr;

    KVRVideoContainerView* videoContainerView = nullptr;
    KVRVideoContainerView* subVideoContainerView = nullptr;
    TKVideoBackgroundImageView* player1BackgroundView = nullptr;
    TKVideoBackgroundImageView* player2BackgroundView = nullptr;
    TKThreePartImageView* mediaControlBoxForFullScreen = nullptr;

    // The map pane shares the right column with the list; the map page goes into its top view.
    QWidget* mapContainerView = nullptr;
    QWidget* mapContainerTopView = nullptr;
    QWidget* mapContainerBottomView = nullptr;

    KVRMediaListTableView* mediaListTableView = nullptr;

    QLabel* titleLabel = nullptr;
    TKImageButton* openFolderButton = nullptr;
    QLabel* statusField = nullptr;
    PMProgressIndicator* progressIndicator = nullptr;

    TKImageButton* playButton = nullptr;
    TKImageButton* jumpBackwardButton = nullptr;
    TKImageButton* jumpForwardButton = nullptr;
    TKImageButton* speedDownButton = nullptr;
    QToolButton* speedTextButton = nullptr;
    TKImageButton* speedUpButton = nullptr;
    TKImageButton* sizeDownButton = nullptr;
    QToolButton* sizeTextButton = nullptr;
    TKImageButton* sizeUpButton = nullptr;
    TKImageButton* audioToggleButton = nullptr;
    TKImageButton* swapButton = nullptr;
    TKImageButton* volumeDownButton = nullptr;
    QSlider* volumeSlider = nullptr;
    TKImageButton* volumeUpButton = nullptr;
    TKImageButton* fullScreenButton = nullptr;
    TKImageButton* captureButton = nullptr;
    TKImageButton* printButton = nullptr;
    KVRPositionSlider* videoPositionSlider = nullptr;
    // "mm:ss / mm:ss": elapsed and total time of the recording.
    QLabel* playTimeField = nullptr;

    TKImageButton* playButtonForFullScreen = nullptr;
    KVRPositionSlider* videoPositionSliderForFullScreen = nullptr;
    QLabel* playTimeFieldForFullScreen = nullptr;
    TKImageButton* leaveFullScreenButton = nullptr;

    TKImageButton* recordButtonImageView = nullptr;
    TKImageButton* informationButtonImageView = nullptr;

    GraphView* graphView = nullptr;
    QLabel* gsensorXField = nullptr;
    QLabel* gsensorYField = nullptr;
    QLabel* gsensorZField = nullptr;
    QLabel* speedField = nullptr;
    QLabel* hdopField = nullptr;
    QLabel* sateliteField = nullptr;
    // Shown while the telemetry was recovered from a recording without its index.
    QLabel* telemetryNoteField = nullptr;
    // Under the map: the marker's coordinates, or why there is no marker.
    QLabel* positionField = nullptr;

private:
    void setupHead();
    void setupVideoBoxes();
    void setupGsensorBox();
    void setupMediaControlBox();
    void setupFullScreenBar();
    void setupRightColumn();
};

} // namespace kavro
