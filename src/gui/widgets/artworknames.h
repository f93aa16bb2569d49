#pragma once

#include <QLatin1String>

// The images the main window draws with, in one place so the artwork test walks the same names
// the window asks for: a name here without its image fails that test instead of leaving an empty
// button. Controls name their normal look; the button finds the "_p" and "_h" looks beside it.
namespace kavro::artwork {

inline constexpr QLatin1String appIcon("app_icon");
inline constexpr QLatin1String fullScreenBar("bottom-background");

inline constexpr QLatin1String openFolder("open_folder_n");
inline constexpr QLatin1String play("icon_play_n");
inline constexpr QLatin1String pause("icon_pause_n");
inline constexpr QLatin1String jumpBackward("jump_backward_n");
inline constexpr QLatin1String jumpForward("jump_forward_n");
inline constexpr QLatin1String speedDown("speed_down_n");
inline constexpr QLatin1String speedUp("speed_up_n");
inline constexpr QLatin1String sizeDown("size_down_n");
inline constexpr QLatin1String sizeUp("size_up_n");
inline constexpr QLatin1String audioFront("audio_front_n");
inline constexpr QLatin1String audioRear("audio_rear_n");
inline constexpr QLatin1String swap("swap_n");
inline constexpr QLatin1String volumeDown("volume_down_n");
inline constexpr QLatin1String volumeUp("volume_up_n");
inline constexpr QLatin1String fullScreen("fullscreen_n");
inline constexpr QLatin1String leaveFullScreen("fullscreen_exit_n");
inline constexpr QLatin1String capture("capture_n");
inline constexpr QLatin1String print("print_n");

inline constexpr QLatin1String controls[] = {
    openFolder, play,     pause,      jumpBackward,    jumpForward, speedDown,
    speedUp,    sizeDown, sizeUp,     audioFront,      audioRear,   swap,
    volumeDown, volumeUp, fullScreen, leaveFullScreen, capture,     print,
};

// The side buttons show their pressed look while their view is up.
inline constexpr QLatin1String listShown("record_p");
inline constexpr QLatin1String listHidden("record_n");
inline constexpr QLatin1String mapShown("information_p");
inline constexpr QLatin1String mapHidden("information_n");

inline constexpr QLatin1String sideButtons[] = {listShown, listHidden, mapShown, mapHidden};

// The large picture's frame and logos are set "v1", the small one's "v2".
inline constexpr QLatin1String frameSets[] = {QLatin1String("v1"), QLatin1String("v2")};
inline constexpr QLatin1String largeFrontLogo("v1_front_logo");
inline constexpr QLatin1String largeRearLogo("v1_rear_logo");
inline constexpr QLatin1String smallFrontLogo("v2_front_logo");
inline constexpr QLatin1String smallRearLogo("v2_rear_logo");

inline constexpr QLatin1String logos[] = {largeFrontLogo, largeRearLogo, smallFrontLogo,
                                          smallRearLogo};

// The recording list's camera-and-mode icons: [rear][mode], mode 0 always, 1 motion, 2 event.
inline constexpr QLatin1String carIcons[2][3] = {
    {QLatin1String("car_front_alwa"), QLatin1String("car_front_motion"),
     QLatin1String("car_front_event")},
    {QLatin1String("car_rear_alwa"), QLatin1String("car_rear_motion"),
     QLatin1String("car_rear_event")},
};

} // namespace kavro::artwork
