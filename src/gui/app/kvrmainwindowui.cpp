#include "kvrmainwindowui.h"

#include "customwindow.h"
#include "kvrcontrolrowfitter.h"
#include "kvrmedialisttableview.h"
#include "kvrpositionslider.h"
#include "kvrvideocontainerview.h"
#include "telemetry/graphview.h"
#include "widgets/artworknames.h"
#include "widgets/custombackgroundbox.h"
#include "widgets/pmprogressindicator.h"
#include "widgets/tkimagebutton.h"
#include "widgets/tkthreepartimageview.h"
#include "widgets/tkvideobackgroundimageview.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPalette>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kavro {

namespace {

// A calm dark look that keeps the eye on the video.
const QColor WindowColor(0x16, 0x18, 0x1c);
const QColor PanelColor(0x21, 0x24, 0x2a);
const QColor TextColor(0xd8, 0xdc, 0xe2);
const QColor DimTextColor(0x8a, 0x91, 0x9c);
const QColor AccentColor(0x3d, 0x8b, 0xd9);
const QColor NoteTextColor(0xe0, 0xa8, 0x3c);

QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, WindowColor);
    palette.setColor(QPalette::WindowText, TextColor);
    palette.setColor(QPalette::Base, PanelColor);
    palette.setColor(QPalette::AlternateBase, PanelColor.lighter(112));
    palette.setColor(QPalette::Text, TextColor);
    palette.setColor(QPalette::Button, PanelColor);
    palette.setColor(QPalette::ButtonText, TextColor);
    palette.setColor(QPalette::Highlight, AccentColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, PanelColor);
    palette.setColor(QPalette::ToolTipText, TextColor);
    palette.setColor(QPalette::PlaceholderText, DimTextColor);
    palette.setColor(QPalette::Disabled, QPalette::Text, DimTextColor);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, DimTextColor);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, DimTextColor);
    return palette;
}

// Every widget the window's code looks up carries its field's name.
template <typename Widget> Widget* named(QWidget* parent, const char* name)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QLatin1String(name));
    return widget;
}

CustomBackgroundBox* box(QWidget* parent, const char* name)
{
    return named<CustomBackgroundBox>(parent, name);
}

template <typename Button>
Button* labelledButton(QWidget* parent, const char* name, const QString& label)
{
    auto* button = named<Button>(parent, name);
    button->setAccessibleName(label);
    button->setToolTip(label);
    return button;
}

TKImageButton* imageButton(QWidget* parent, const char* name, const QString& image,
                           const QString& label)
{
    auto* button = labelledButton<TKImageButton>(parent, name, label);
    button->setImage(image);
    return button;
}

QToolButton* textButton(QWidget* parent, const char* name, const QString& text,
                        const QString& label)
{
    auto* button = labelledButton<QToolButton>(parent, name, label);
    button->setText(text);
    button->setAutoRaise(true);
    // The text given is the widest the button shows ("0.00x"); it must fit whatever the font.
    button->setFixedWidth(std::max(48, button->sizeHint().width()));
    return button;
}

QLabel* field(QWidget* parent, const char* name, const QString& text = QString())
{
    auto* label = named<QLabel>(parent, name);
    label->setText(text);
    QFont font = label->font();
    font.setStyleHint(QFont::Monospace);
    font.setFamily(QStringLiteral("monospace"));
    label->setFont(font);
    return label;
}

// Wide enough for "00:00 / 00:00" in the digits' font, so that the slider does not move.
QLabel* timeField(QWidget* parent, const char* name)
{
    QLabel* label = field(parent, name, QStringLiteral("00:00 / 00:00"));
    label->setMinimumWidth(label->sizeHint().width());
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QLabel* caption(QWidget* parent, const QString& text)
{
    auto* label = new QLabel(text, parent);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, DimTextColor);
    label->setPalette(palette);
    return label;
}

QHBoxLayout* row(QWidget* parent, int spacing)
{
    auto* layout = new QHBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    return layout;
}

// A video container filling its box edge to edge.
KVRVideoContainerView* filledWithVideoContainer(QWidget* box, const char* name)
{
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* container = named<KVRVideoContainerView>(box, name);
    layout->addWidget(container);
    return container;
}

} // namespace

void KVRMainWindowUI::setupUi(CustomWindow* mainWindow)
{
    window = mainWindow;
    window->setPalette(darkPalette());
    window->setAutoFillBackground(true);

    backgroundBox = box(window, "backgroundBox");
    window->setCentralWidget(backgroundBox);
    headBox = box(backgroundBox, "headBox");
    bodyBox = box(backgroundBox, "bodyBox");
    bodyLeftBox = box(bodyBox, "bodyLeftBox");
    bodyRightBox = box(bodyBox, "bodyRightBox");
    videoBox = box(bodyLeftBox, "videoBox");
    gsensorBox = box(bodyLeftBox, "gsensorBox");
    mediaControlBox = box(bodyLeftBox, "mediaControlBox");
    sideButtonBox = box(bodyRightBox, "sideButtonBox");
    mediaListBox = box(bodyRightBox, "mediaListBox");
    subVideoBox = box(bodyRightBox, "subVideoBox");

    setupHead();
    setupVideoBoxes();
    setupGsensorBox();
    setupMediaControlBox();
    setupFullScreenBar();
    setupRightColumn();
}

void KVRMainWindowUI::setupHead()
{
    auto* layout = row(headBox, 10);
    layout->setContentsMargins(12, 0, 12, 0);

    auto* icon = new QLabel(headBox);
    icon->setPixmap(TKImage::named(artwork::appIcon)
                        .pixmap(window->devicePixelRatioF())
                        .scaled(QSize(30, 30) * window->devicePixelRatioF(), Qt::KeepAspectRatio,
                                Qt::SmoothTransformation));
    layout->addWidget(icon);
    titleLabel = new QLabel(QStringLiteral("KAVRO"), headBox);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    QFont titleFont = titleLabel->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setBold(true);
    titleFont.setLetterSpacing(QFont::PercentageSpacing, 115);
    titleLabel->setFont(titleFont);
    layout->addWidget(titleLabel);
    layout->addSpacing(16);
    //% "Open a folder of recordings"
    openFolderButton =
        imageButton(headBox, "openFolderButton", artwork::openFolder, qtTrId("main.open_folder"));
    layout->addWidget(openFolderButton);
    statusField = caption(headBox, QString());
    statusField->setObjectName(QStringLiteral("statusField"));
    layout->addWidget(statusField, 1);

    // Laid over the head box rather than in it: the loading code centres it itself.
    progressIndicator = new PMProgressIndicator(backgroundBox);
    progressIndicator->setObjectName(QStringLiteral("progressIndicator"));
    progressIndicator->resize(progressIndicator->sizeHint().expandedTo(QSize(180, 10)));
    progressIndicator->move(0, (50 - progressIndicator->height()) / 2);
    progressIndicator->hide();
}

void KVRMainWindowUI::setupVideoBoxes()
{
    videoBox->setBackgroundColor(Qt::black);
    videoContainerView = filledWithVideoContainer(videoBox, "videoContainerView");
    player1BackgroundView =
        named<TKVideoBackgroundImageView>(videoContainerView, "player1BackgroundView");
    subVideoContainerView = filledWithVideoContainer(subVideoBox, "subVideoContainerView");
    player2BackgroundView =
        named<TKVideoBackgroundImageView>(subVideoContainerView, "player2BackgroundView");
}

void KVRMainWindowUI::setupGsensorBox()
{
    gsensorBox->setBackgroundColor(PanelColor);
    gsensorBox->setCornerRadius(6);
    auto* layout = row(gsensorBox, 12);
    layout->setContentsMargins(0, 0, 14, 0);
    graphView = new GraphView(gsensorBox);
    graphView->setObjectName(QStringLiteral("graphView"));
    layout->addWidget(graphView, 1);

    auto* values = new QFormLayout;
    values->setContentsMargins(0, 10, 0, 10);
    values->setHorizontalSpacing(10);
    values->setVerticalSpacing(2);
    gsensorXField = field(gsensorBox, "gsensorXField");
    gsensorYField = field(gsensorBox, "gsensorYField");
    gsensorZField = field(gsensorBox, "gsensorZField");
    speedField = field(gsensorBox, "speedField");
    hdopField = field(gsensorBox, "hdopField");
    sateliteField = field(gsensorBox, "sateliteField");
    //% "G-sensor"
    values->addRow(caption(gsensorBox, qtTrId("main.gsensor")), gsensorXField);
    values->addRow(QString(), gsensorYField);
    values->addRow(QString(), gsensorZField);
    //% "Speed"
    values->addRow(caption(gsensorBox, qtTrId("main.speed")), speedField);
    //% "HDOP"
    values->addRow(caption(gsensorBox, qtTrId("main.hdop")), hdopField);
    //% "Satellites"
    values->addRow(caption(gsensorBox, qtTrId("main.satellites")), sateliteField);
    // Over the graph's top right corner, where it is read with the curves it speaks of.
    telemetryNoteField = named<QLabel>(graphView, "telemetryNoteField");
    //% "Recovered from a recording cut short"
    telemetryNoteField->setText(qtTrId("main.telemetry_recovered"));
    telemetryNoteField->setContentsMargins(6, 1, 6, 1);
    telemetryNoteField->setAutoFillBackground(true);
    QPalette warm = telemetryNoteField->palette();
    warm.setColor(QPalette::WindowText, NoteTextColor);
    warm.setColor(QPalette::Window, PanelColor);
    telemetryNoteField->setPalette(warm);
    QFont small = telemetryNoteField->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    telemetryNoteField->setFont(small);
    telemetryNoteField->hide();
    auto* overlay = new QHBoxLayout(graphView);
    overlay->setContentsMargins(24, 4, 24, 0);
    overlay->addStretch(1);
    overlay->addWidget(telemetryNoteField, 0, Qt::AlignTop);
    auto* valuesBox = new QWidget(gsensorBox);
    valuesBox->setLayout(values);
    valuesBox->setFixedWidth(170);
    layout->addWidget(valuesBox);
}

void KVRMainWindowUI::setupMediaControlBox()
{
    auto* column = new QVBoxLayout(mediaControlBox);
    column->setContentsMargins(4, 2, 4, 2);
    column->setSpacing(0);
    videoPositionSlider = new KVRPositionSlider(mediaControlBox);
    videoPositionSlider->setObjectName(QStringLiteral("videoPositionSlider"));
    //% "Play position"
    videoPositionSlider->setAccessibleName(qtTrId("main.position"));
    playTimeField = timeField(mediaControlBox, "playTimeField");
    auto* sliderRow = new QHBoxLayout;
    sliderRow->setSpacing(8);
    sliderRow->addWidget(videoPositionSlider, 1);
    sliderRow->addWidget(playTimeField);
    column->addLayout(sliderRow);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    column->addLayout(buttons);
    QWidget* p = mediaControlBox;
    //% "Back 10 seconds"
    jumpBackwardButton =
        imageButton(p, "jumpBackwardButton", artwork::jumpBackward, qtTrId("main.jump_backward"));
    //% "Play or pause"
    playButton = imageButton(p, "playButton", artwork::play, qtTrId("main.play"));
    //% "Forward 10 seconds"
    jumpForwardButton =
        imageButton(p, "jumpForwardButton", artwork::jumpForward, qtTrId("main.jump_forward"));
    //% "Slower"
    speedDownButton =
        imageButton(p, "speedDownButton", artwork::speedDown, qtTrId("main.speed_down"));
    //% "Playback speed"
    speedTextButton =
        textButton(p, "speedTextButton", QStringLiteral("1.0x"), qtTrId("main.speed_text"));
    //% "Faster"
    speedUpButton = imageButton(p, "speedUpButton", artwork::speedUp, qtTrId("main.speed_up"));
    //% "Smaller"
    sizeDownButton = imageButton(p, "sizeDownButton", artwork::sizeDown, qtTrId("main.size_down"));
    //% "Video size"
    sizeTextButton =
        textButton(p, "sizeTextButton", QStringLiteral("0.00x"), qtTrId("main.size_text"));
    //% "Larger"
    sizeUpButton = imageButton(p, "sizeUpButton", artwork::sizeUp, qtTrId("main.size_up"));
    //% "Sound from the front or the rear camera"
    audioToggleButton =
        imageButton(p, "audioToggleButton", artwork::audioFront, qtTrId("main.audio_toggle"));
    audioToggleButton->setOnImage(artwork::audioRear);
    //% "Swap the pictures"
    swapButton = imageButton(p, "swapButton", artwork::swap, qtTrId("main.swap"));
    //% "Quieter"
    volumeDownButton =
        imageButton(p, "volumeDownButton", artwork::volumeDown, qtTrId("main.volume_down"));
    volumeSlider = new QSlider(Qt::Horizontal, p);
    volumeSlider->setObjectName(QStringLiteral("volumeSlider"));
    volumeSlider->setRange(0, 200);
    volumeSlider->setFixedWidth(90);
    volumeSlider->setFocusPolicy(Qt::NoFocus);
    //% "Volume"
    volumeSlider->setAccessibleName(qtTrId("main.volume"));
    //% "Louder"
    volumeUpButton = imageButton(p, "volumeUpButton", artwork::volumeUp, qtTrId("main.volume_up"));
    //% "Full screen"
    fullScreenButton =
        imageButton(p, "fullScreenButton", artwork::fullScreen, qtTrId("main.full_screen"));
    //% "Save the picture"
    captureButton = imageButton(p, "captureButton", artwork::capture, qtTrId("main.capture"));
    //% "Print the picture"
    printButton = imageButton(p, "printButton", artwork::print, qtTrId("main.print"));

    const auto addGroup = [buttons](std::initializer_list<QWidget*> group, int spacingAfter) {
        for (QWidget* widget : group)
            buttons->addWidget(widget);
        if (spacingAfter > 0)
            buttons->addSpacing(spacingAfter);
    };
    addGroup({jumpBackwardButton, playButton, jumpForwardButton}, 14);
    addGroup({speedDownButton, speedTextButton, speedUpButton}, 8);
    addGroup({sizeDownButton, sizeTextButton, sizeUpButton}, 0);
    buttons->addStretch(1);
    addGroup({captureButton, printButton}, 14);
    addGroup({audioToggleButton, swapButton}, 14);
    addGroup({volumeDownButton, volumeSlider, volumeUpButton}, 14);
    buttons->addWidget(fullScreenButton);
    // Print and capture have menu entries and keys; in a narrow window their buttons give way.
    new KVRControlRowFitter(mediaControlBox, buttons, {printButton, captureButton});
}

void KVRMainWindowUI::setupFullScreenBar()
{
    mediaControlBoxForFullScreen = new TKThreePartImageView(bodyLeftBox);
    mediaControlBoxForFullScreen->setObjectName(QStringLiteral("mediaControlBoxForFullScreen"));
    mediaControlBoxForFullScreen->hide();
    auto* layout = row(mediaControlBoxForFullScreen, 10);
    layout->setContentsMargins(12, 0, 12, 0);
    QWidget* bar = mediaControlBoxForFullScreen;
    playButtonForFullScreen =
        imageButton(bar, "playButtonForFullScreen", artwork::play, qtTrId("main.play"));
    // The bar is lower than the normal control box; the play button shrinks with it.
    playButtonForFullScreen->setFixedSize(32, 32);
    videoPositionSliderForFullScreen = new KVRPositionSlider(bar);
    videoPositionSliderForFullScreen->setObjectName(
        QStringLiteral("videoPositionSliderForFullScreen"));
    videoPositionSliderForFullScreen->setAccessibleName(qtTrId("main.position"));
    //% "Leave full screen"
    leaveFullScreenButton = imageButton(bar, "leaveFullScreenButton", artwork::leaveFullScreen,
                                        qtTrId("main.leave_full_screen"));
    playTimeFieldForFullScreen = timeField(bar, "playTimeFieldForFullScreen");
    layout->addWidget(playButtonForFullScreen);
    layout->addWidget(videoPositionSliderForFullScreen, 1);
    layout->addWidget(playTimeFieldForFullScreen);
    layout->addWidget(leaveFullScreenButton);
}

void KVRMainWindowUI::setupRightColumn()
{
    auto* sideLayout = row(sideButtonBox, 4);
    //% "Recordings"
    recordButtonImageView = imageButton(sideButtonBox, "recordButtonImageView", artwork::listShown,
                                        qtTrId("main.list_view"));
    //% "Map"
    informationButtonImageView = imageButton(sideButtonBox, "informationButtonImageView",
                                             artwork::mapHidden, qtTrId("main.map_view"));
    sideLayout->addWidget(recordButtonImageView);
    sideLayout->addWidget(informationButtonImageView);
    sideLayout->addStretch(1);

    mediaListTableView = new KVRMediaListTableView(mediaListBox);
    mediaListTableView->setObjectName(QStringLiteral("mediaListTableView"));

    mapContainerView = new QWidget(mediaListBox);
    mapContainerView->setObjectName(QStringLiteral("mapContainerView"));
    mapContainerTopView = new QWidget(mapContainerView);
    mapContainerTopView->setObjectName(QStringLiteral("mapContainerTopView"));
    mapContainerBottomView = new QWidget(mapContainerView);
    mapContainerBottomView->setObjectName(QStringLiteral("mapContainerBottomView"));
    positionField = named<QLabel>(mapContainerBottomView, "positionField");
    positionField->setAlignment(Qt::AlignCenter);
    positionField->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPalette dim = positionField->palette();
    dim.setColor(QPalette::WindowText, DimTextColor);
    positionField->setPalette(dim);
    auto* bottomLayout = new QVBoxLayout(mapContainerBottomView);
    bottomLayout->addWidget(positionField);
    mapContainerView->hide();
}

} // namespace kavro
