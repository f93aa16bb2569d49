<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name></name>
    <message id="map.offline">
        <source>Map offline</source>
        <translation>지도 오프라인</translation>
    </message>
    <message id="map.title">
        <source>Map</source>
        <translation>지도</translation>
    </message>
    <message id="setting.flashdata.index">
        <source>No.</source>
        <translation>번호</translation>
    </message>
    <message id="setting.flashdata.seq">
        <source>Seq</source>
        <translation>순번</translation>
    </message>
    <message id="setting.flashdata.date">
        <source>Date</source>
        <translation>날짜</translation>
    </message>
    <message id="setting.flashdata.time">
        <source>Time</source>
        <translation>시간</translation>
    </message>
    <message id="setting.flashdata.yoil">
        <source>Day</source>
        <translation>요일</translation>
    </message>
    <message id="setting.flashdata.lat">
        <source>Latitude</source>
        <translation>위도</translation>
    </message>
    <message id="setting.flashdata.lon">
        <source>Longitude</source>
        <translation>경도</translation>
    </message>
    <message id="setting.flashdata.driving_distance">
        <source>Distance</source>
        <translation>주행 거리</translation>
    </message>
    <message id="setting.flashdata.cur_speed">
        <source>Speed</source>
        <translation>속도</translation>
    </message>
    <message id="setting.flashdata.max_speed">
        <source>Max Speed</source>
        <translation>최고 속도</translation>
    </message>
    <message id="setting.flashdata.value">
        <source>Valid</source>
        <translation>유효</translation>
    </message>
    <message id="setting.flashdata.battery">
        <source>Battery</source>
        <translation>배터리</translation>
    </message>
    <message id="msg.file_open_fail">
        <source>The file could not be opened for writing. The card may be write-protected or removed.</source>
        <translation>파일을 쓰기용으로 열 수 없습니다. 카드가 쓰기 방지되어 있거나 분리되었을 수 있습니다.</translation>
    </message>
    <message id="msg.input_value_invalid_format">
        <source>Please enter a number.</source>
        <translation>숫자를 입력하세요.</translation>
    </message>
    <message id="msg.gsensor_outofrange_fmt">
        <source>Please enter a value between %1 and %2.</source>
        <translation>%1에서 %2 사이의 값을 입력하세요.</translation>
    </message>
    <message id="msg.sdcard_ratio_too_low">
        <source>Each recording area needs at least 20% of the card.</source>
        <translation>각 녹화 영역은 카드의 20% 이상이어야 합니다.</translation>
    </message>
    <message id="main.menu.file">
        <source>&amp;File</source>
        <translation>파일(&amp;F)</translation>
    </message>
    <message id="main.menu.open">
        <source>&amp;Open Folder...</source>
        <translation>폴더 열기(&amp;O)...</translation>
    </message>
    <message id="main.menu.close">
        <source>&amp;Close Window</source>
        <translation>창 닫기(&amp;C)</translation>
    </message>
    <message id="main.menu.playback">
        <source>&amp;Playback</source>
        <translation>재생(&amp;P)</translation>
    </message>
    <message id="main.menu.play">
        <source>Play / Pause</source>
        <translation>재생 / 일시 정지</translation>
    </message>
    <message id="main.menu.play_selected">
        <source>Play Selected Recording</source>
        <translation>선택한 영상 재생</translation>
    </message>
    <message id="main.menu.jump_backward">
        <source>Back 10 Seconds</source>
        <translation>10초 뒤로</translation>
    </message>
    <message id="main.menu.jump_forward">
        <source>Forward 10 Seconds</source>
        <translation>10초 앞으로</translation>
    </message>
    <message id="main.menu.speed_down">
        <source>Slower</source>
        <translation>느리게</translation>
    </message>
    <message id="main.menu.speed_up">
        <source>Faster</source>
        <translation>빠르게</translation>
    </message>
    <message id="main.menu.volume_down">
        <source>Quieter</source>
        <translation>소리 작게</translation>
    </message>
    <message id="main.menu.volume_up">
        <source>Louder</source>
        <translation>소리 크게</translation>
    </message>
    <message id="main.menu.audio_toggle">
        <source>Sound from Front / Rear</source>
        <translation>전방 / 후방 소리</translation>
    </message>
    <message id="main.menu.swap">
        <source>Swap Pictures</source>
        <translation>화면 바꾸기</translation>
    </message>
    <message id="main.menu.view">
        <source>&amp;View</source>
        <translation>보기(&amp;V)</translation>
    </message>
    <message id="main.menu.size_up">
        <source>Larger</source>
        <translation>크게</translation>
    </message>
    <message id="main.menu.size_down">
        <source>Smaller</source>
        <translation>작게</translation>
    </message>
    <message id="main.menu.full_screen">
        <source>Full Screen</source>
        <translation>전체 화면</translation>
    </message>
    <message id="main.menu.list_view">
        <source>Recordings</source>
        <translation>녹화 목록</translation>
    </message>
    <message id="main.menu.map_view">
        <source>Map</source>
        <translation>지도</translation>
    </message>
    <message id="main.open_folder">
        <source>Open a folder of recordings</source>
        <translation>녹화 폴더 열기</translation>
    </message>
    <message id="main.gsensor">
        <source>G-sensor</source>
        <translation>G-센서</translation>
    </message>
    <message id="main.speed">
        <source>Speed</source>
        <translation>속도</translation>
    </message>
    <message id="main.hdop">
        <source>HDOP</source>
        <translation>HDOP</translation>
    </message>
    <message id="main.satellites">
        <source>Satellites</source>
        <translation>위성</translation>
    </message>
    <message id="main.position">
        <source>Play position</source>
        <translation>재생 위치</translation>
    </message>
    <message id="main.jump_backward">
        <source>Back 10 seconds</source>
        <translation>10초 뒤로</translation>
    </message>
    <message id="main.play">
        <source>Play or pause</source>
        <translation>재생 또는 일시 정지</translation>
    </message>
    <message id="main.jump_forward">
        <source>Forward 10 seconds</source>
        <translation>10초 앞으로</translation>
    </message>
    <message id="main.speed_down">
        <source>Slower</source>
        <translation>느리게</translation>
    </message>
    <message id="main.speed_text">
        <source>Playback speed</source>
        <translation>재생 속도</translation>
    </message>
    <message id="main.speed_up">
        <source>Faster</source>
        <translation>빠르게</translation>
    </message>
    <message id="main.size_down">
        <source>Smaller</source>
        <translation>작게</translation>
    </message>
    <message id="main.size_text">
        <source>Video size</source>
        <translation>영상 크기</translation>
    </message>
    <message id="main.size_up">
        <source>Larger</source>
        <translation>크게</translation>
    </message>
    <message id="main.audio_toggle">
        <source>Sound from the front or the rear camera</source>
        <translation>전방 또는 후방 카메라 소리</translation>
    </message>
    <message id="main.swap">
        <source>Swap the pictures</source>
        <translation>화면 바꾸기</translation>
    </message>
    <message id="main.volume_down">
        <source>Quieter</source>
        <translation>소리 작게</translation>
    </message>
    <message id="main.volume">
        <source>Volume</source>
        <translation>음량</translation>
    </message>
    <message id="main.volume_up">
        <source>Louder</source>
        <translation>소리 크게</translation>
    </message>
    <message id="main.full_screen">
        <source>Full screen</source>
        <translation>전체 화면</translation>
    </message>
    <message id="main.leave_full_screen">
        <source>Leave full screen</source>
        <translation>전체 화면 끝내기</translation>
    </message>
    <message id="main.list_view">
        <source>Recordings</source>
        <translation>녹화 목록</translation>
    </message>
    <message id="main.map_view">
        <source>Map</source>
        <translation>지도</translation>
    </message>
    <message id="filelist.mode">
        <source>Mode</source>
        <translation>모드</translation>
    </message>
    <message id="filelist.date">
        <source>Date</source>
        <translation>날짜</translation>
    </message>
    <message id="filelist.time">
        <source>Time</source>
        <translation>시간</translation>
    </message>
    <message id="filelist.file">
        <source>File</source>
        <translation>파일</translation>
    </message>
    <message id="media.always">
        <source>Always</source>
        <translation>상시</translation>
    </message>
    <message id="media.motion">
        <source>Motion</source>
        <translation>동작 감지</translation>
    </message>
    <message id="media.event">
        <source>Event</source>
        <translation>이벤트</translation>
    </message>
    <message id="media.unknown">
        <source>Unknown</source>
        <translation>알 수 없음</translation>
    </message>
    <message id="main.cannot_play">
        <source>This recording could not be played:</source>
        <translation>이 녹화 파일을 재생할 수 없습니다:</translation>
    </message>
    <message id="main.map.no_gps">
        <source>This recording has no GPS data</source>
        <translation>이 녹화 파일에는 GPS 데이터가 없습니다</translation>
    </message>
    <message id="main.path_missing">
        <source>There is no file or folder at %1.</source>
        <translation>%1 위치에 파일이나 폴더가 없습니다.</translation>
    </message>
    <message id="main.not_a_recording">
        <source>%1 is not a recording of the camera.</source>
        <translation>%1 파일은 블랙박스 녹화 파일이 아닙니다.</translation>
    </message>
    <message id="main.no_recordings">
        <source>No recordings in this folder</source>
        <translation>이 폴더에는 녹화 파일이 없습니다</translation>
    </message>
    <message id="main.telemetry_recovered">
        <source>Recovered from a recording cut short</source>
        <translation>잘린 녹화 파일에서 복구한 데이터</translation>
    </message>
</context>
</TS>
