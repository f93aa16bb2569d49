<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="map.offline">
        <source>Map offline</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="map.title">
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.index">
        <source>No.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.seq">
        <source>Seq</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.date">
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.time">
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.yoil">
        <source>Day</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.lat">
        <source>Latitude</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.lon">
        <source>Longitude</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.driving_distance">
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.cur_speed">
        <source>Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.max_speed">
        <source>Max Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.value">
        <source>Valid</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.battery">
        <source>Battery</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.file_open_fail">
        <source>The file could not be opened for writing. The card may be write-protected or removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.input_value_invalid_format">
        <source>Please enter a number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.gsensor_outofrange_fmt">
        <source>Please enter a value between %1 and %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.sdcard_ratio_too_low">
        <source>Each recording area needs at least 20% of the card.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.file">
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.open">
        <source>&amp;Open Folder...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.close">
        <source>&amp;Close Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.playback">
        <source>&amp;Playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.play">
        <source>Play / Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.play_selected">
        <source>Play Selected Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.jump_backward">
        <source>Back 10 Seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.jump_forward">
        <source>Forward 10 Seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.speed_down">
        <source>Slower</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.speed_up">
        <source>Faster</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.volume_down">
        <source>Quieter</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.volume_up">
        <source>Louder</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.audio_toggle">
        <source>Sound from Front / Rear</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.swap">
        <source>Swap Pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.view">
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.size_up">
        <source>Larger</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.size_down">
        <source>Smaller</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.full_screen">
        <source>Full Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.list_view">
        <source>Recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.map_view">
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.open_folder">
        <source>Open a folder of recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.gsensor">
        <source>G-sensor</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.speed">
        <source>Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.hdop">
        <source>HDOP</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.satellites">
        <source>Satellites</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.position">
        <source>Play position</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.jump_backward">
        <source>Back 10 seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.play">
        <source>Play or pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.jump_forward">
        <source>Forward 10 seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.speed_down">
        <source>Slower</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.speed_text">
        <source>Playback speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.speed_up">
        <source>Faster</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.size_down">
        <source>Smaller</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.size_text">
        <source>Video size</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.size_up">
        <source>Larger</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.audio_toggle">
        <source>Sound from the front or the rear camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.swap">
        <source>Swap the pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.volume_down">
        <source>Quieter</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.volume">
        <source>Volume</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.volume_up">
        <source>Louder</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.full_screen">
        <source>Full screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.leave_full_screen">
        <source>Leave full screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.list_view">
        <source>Recordings</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.map_view">
        <source>Map</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="filelist.mode">
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="filelist.date">
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="filelist.time">
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="filelist.file">
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="media.always">
        <source>Always</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="media.motion">
        <source>Motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="media.event">
        <source>Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="media.unknown">
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.cannot_play">
        <source>This recording could not be played:</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.map.no_gps">
        <source>This recording has no GPS data</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.settings">
        <source>&amp;Settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.open_card_folder">
        <source>Open Card &amp;Folder...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.clock">
        <source>&amp;Clock...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.open_card_folder">
        <source>Open Card Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video">
        <source>Video</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic">
        <source>Basic</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps">
        <source>GPS</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux">
        <source>Aux</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.motion">
        <source>Motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.audio">
        <source>Audio</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.driveinfoview">
        <source>Drive records</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.sdcardformat">
        <source>Format Card</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.disk_utility">
        <source>Disk Utility</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.initialize">
        <source>Initialise</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="cancel">
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="save">
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.window_title">
        <source>KAVRO Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.information">
        <source>Drive Records</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.write_protected_disk">
        <source>The card could not be written. It may be write-protected, full or removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.saved">
        <source>The file was saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.no_disk_utility">
        <source>No disk utility is installed. Install GNOME Disks or KDE Partition Manager.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.mic_volume">
        <source>Microphone volume</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.speaker_volume">
        <source>Speaker volume</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.enable_hourly_alarm">
        <source>Hourly chime</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.enable_voice_guidance">
        <source>Voice guidance language</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.memconfig_warning">
        <source>The camera applies a new share only after the card is formatted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.always">
        <source>Continuous</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.motion">
        <source>Motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.sdcard_capacity">
        <source>Card share</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.night_ae_setting">
        <source>Night exposure</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.lcd_auto_off">
        <source>Screen off after</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.country_ac_power_setting">
        <source>Mains frequency</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.lcd_brightness">
        <source>Screen brightness</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.lcd_brightness_night">
        <source>Dimmed screen at night</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.parking_rear_setting">
        <source>Rear camera in parking mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.lcd_screensaver">
        <source>Screen protection</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.parking_monitor_notice">
        <source>Parking monitor notice</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.recording_length">
        <source>Length of one recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.pip_position">
        <source>Small picture position</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_alarm">
        <source>Format reminder</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.enable_gsensor">
        <source>Impact detection</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.use_external_power">
        <source>Use external power</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.external_rear_camera_use">
        <source>Use the external rear camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.external_rear_camera_led_use_event">
        <source>Its LED lights on events</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.external_rear_camera_led_use_motion">
        <source>Its LED lights on motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.enable_front_security_led">
        <source>Front security LED</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.enable_rear_security_led">
        <source>Rear security LED</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.car_number_input">
        <source>Car number</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.set_voltage">
        <source>Cut-off voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.set_timer">
        <source>Timer</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.power_guide">
        <source>The camera stops recording in parking mode below this battery voltage or after this time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.auto_parking_waiting_time">
        <source>Automatic parking mode after</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.driving_impact_sensitivity">
        <source>Driving impact sensitivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.parking_impact_sensitivity">
        <source>Parking impact sensitivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.others">
        <source>Others</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.cable_voltage_loss">
        <source>Cable voltage loss</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.cutoff_voltage_setting">
        <source>Cut-off voltage setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.external_rear_camera_settings">
        <source>External rear camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="insensitive">
        <source>least</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="sensitive">
        <source>most</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.basic.customize">
        <source>Customise</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.use_external_power_10v">
        <source>With external power the camera cuts off at 10 V. Check the power unit.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.gps_speed_guide1">
        <source>The unit of the speed in the overlay and in this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="summerTime">
        <source>Summer time</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.gps_time_guide1">
        <source>The camera sets its clock from GPS in this time zone.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.weekly_alarm">
        <source>Weekly no-driving alarm</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.speed_display">
        <source>Speed display</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.timezone_setting">
        <source>Time zone</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.osd_speed_display">
        <source>Speed in the video</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.gps_on_parking_mode">
        <source>GPS in parking mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.driving_route_info_saving_interval">
        <source>Driving route saving interval</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.gps_guide1">
        <source>GPS needs a clear view of the sky; the first fix can take a few minutes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.gps.gps_guide2">
        <source>Without a GPS fix the overlay shows no speed and the route is not saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.front_sensitivity">
        <source>Front camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.rear_sensitivity">
        <source>Rear camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.motion.block_front">
        <source>Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.motion.block_rear">
        <source>Rear</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.motion.sensitivity">
        <source>Motion detection sensitivity</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.motion.block">
        <source>Watched image blocks</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="brightness">
        <source>Brightness</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.front_quality">
        <source>Front video quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.rear_quality">
        <source>Rear video quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.front_setting">
        <source>Front camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.rear_setting">
        <source>Rear camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.rear_reversal">
        <source>Rear image reversal</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.rear_fps">
        <source>Rear frame rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.front_tinting">
        <source>Front lens filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.rear_tinting">
        <source>Rear window tinting</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.cpl_filter_use">
        <source>Use the CPL filter when the windscreen reflects the dashboard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="25fps">
        <source>25 fps</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="30fps">
        <source>30 fps</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="unuse">
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="use">
        <source>On</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="off">
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="on">
        <source>On</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="none">
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="default">
        <source>Default</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="auto">
        <source>Auto</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="externpower">
        <source>External power</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="customize">
        <source>Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.quality_normal">
        <source>Normal</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.quality_high">
        <source>High</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.video.quality_highest">
        <source>Highest</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="15fps">
        <source>15 fps</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="cpl_unuse">
        <source>No filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="cpl_use">
        <source>CPL filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="light_tinting">
        <source>Light tint</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="dark_tinting">
        <source>Dark tint</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="nSecond_fmt">
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="nMinute_fmt">
        <source>%1 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="nHour_fmt">
        <source>%1 h</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="mon">
        <source>Mon</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="tue">
        <source>Tue</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="wed">
        <source>Wed</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="thu">
        <source>Thu</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="fri">
        <source>Fri</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="sat">
        <source>Sat</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="sun">
        <source>Sun</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.low">
        <source>Low</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.medium_sedan">
        <source>Medium (sedan)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.high_suv">
        <source>High (SUV)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.volume_low">
        <source>low</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.volume_up">
        <source>high</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="5min">
        <source>5 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="3min">
        <source>3 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.pip_top_left">
        <source>Top left</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.pip_top_right">
        <source>Top right</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.pip_bottom_left">
        <source>Bottom left</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.pip_bottom_right">
        <source>Bottom right</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_notuse">
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_4week">
        <source>4 weeks</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_8week">
        <source>8 weeks</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_16week">
        <source>16 weeks</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.aux.auto_format_32week">
        <source>32 weeks</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Korean">
        <source>Korean</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="English">
        <source>English</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="French">
        <source>French</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Spanish.Europe">
        <source>Spanish (Europe)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Arabic">
        <source>Arabic</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Chinese">
        <source>Chinese</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Russian">
        <source>Russian</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Japanese">
        <source>Japanese</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Thai">
        <source>Thai</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="BahasaIndonesia">
        <source>Bahasa Indonesia</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Vietnamese">
        <source>Vietnamese</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Mongolian">
        <source>Mongolian</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Spanish.SouthAmerica">
        <source>Spanish (South America)</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="German">
        <source>German</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Turkish">
        <source>Turkish</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Italian">
        <source>Italian</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Hindi">
        <source>Hindi</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Cantonese">
        <source>Cantonese</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Czech">
        <source>Czech</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="Portuguese">
        <source>Portuguese</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.path_missing">
        <source>There is no file or folder at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.not_a_recording">
        <source>%1 is not a recording of the camera.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.no_recordings">
        <source>No recordings in this folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.telemetry_recovered">
        <source>Recovered from a recording cut short</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="time.window_title">
        <source>Camera Clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="today">
        <source>Today</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="time.filesave">
        <source>The clock file was saved. Put the card into the camera to set its clock.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.language">
        <source>&amp;Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.language_system">
        <source>System</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.language_not_stored">
        <source>The language could not be kept: the program&apos;s settings cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.language_at_restart">
        <source>The texts change to the chosen language the next time KAVRO Viewer starts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.format.allocation_unit_size">
        <source>Allocation unit size</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.format.filesystem">
        <source>File system</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.format.format">
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.no_usb_drive">
        <source>There is no USB drive.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.select_usb_drive">
        <source>Please select USB drive.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.cannot_format">
        <source>The card cannot be formatted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_complete">
        <source>The card was formatted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_config_not_saved">
        <source>Its settings file could not be put aside, so the card was left as it was.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_auth_dismissed">
        <source>The request for administrator rights was dismissed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_not_authorised">
        <source>Administrator rights were not granted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_card_lost">
        <source>The card was formatted but not found again, so no settings file was written to it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.format_copy_kept">
        <source>Its former settings file is kept in %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.capture">
        <source>Save Picture...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.print">
        <source>&amp;Print Picture...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.export_pdf">
        <source>Export Frame as PDF...</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.pdf.file">
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.pdf.date">
        <source>Date</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.pdf.time">
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.pdf.position">
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.export_pdf.title">
        <source>Export Frame as PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.export_pdf_failed">
        <source>The PDF could not be written to %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.help">
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.shortcuts">
        <source>Keyboard Shortcuts</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.menu.about">
        <source>About KAVRO Viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.shortcuts.command">
        <source>Command</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.shortcuts.key">
        <source>Key</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.about.version">
        <source>KAVRO Viewer %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.about.licences">
        <source>A viewer and card manager for the KAVRO dash camera.&lt;br&gt;&lt;br&gt;The map page uses %1, under the BSD 2-Clause licence (see Show Details).&lt;br&gt;Map data &amp;copy; OpenStreetMap contributors, under the Open Database License (ODbL).</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.capture">
        <source>Save the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="main.print">
        <source>Print the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="open">
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="export">
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.warning">
        <source>The card holds no drive records (DrvInfo/kavro_000.drv). Open a .drv file instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.open_title">
        <source>Open Drive Records</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.flashdata_read_fail">
        <source>The drive records could not be read from %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="setting.flashdata.export_title">
        <source>Export Drive Records</source>
        <translation type="unfinished"></translation>
    </message>
    <message id="msg.flashdata_write_fail">
        <source>The file could not be written: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
