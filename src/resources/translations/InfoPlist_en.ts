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
</context>
</TS>
