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
        <translation>숫자를 입력하십시오.</translation>
    </message>
    <message id="msg.gsensor_outofrange_fmt">
        <source>Please enter a value between %1 and %2.</source>
        <translation>%1에서 %2 사이의 값을 입력하십시오.</translation>
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
        <translation>G센서</translation>
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
    <message id="main.menu.settings">
        <source>&amp;Settings...</source>
        <translation>설정(&amp;S)...</translation>
    </message>
    <message id="main.menu.open_card_folder">
        <source>Open Card &amp;Folder...</source>
        <translation>카드 폴더 열기(&amp;F)...</translation>
    </message>
    <message id="main.menu.clock">
        <source>&amp;Clock...</source>
        <translation>시계(&amp;C)...</translation>
    </message>
    <message id="main.open_card_folder">
        <source>Open Card Folder</source>
        <translation>카드 폴더 열기</translation>
    </message>
    <message id="setting.video">
        <source>Video</source>
        <translation>영상</translation>
    </message>
    <message id="setting.basic">
        <source>Basic</source>
        <translation>기본</translation>
    </message>
    <message id="setting.gps">
        <source>GPS</source>
        <translation>GPS</translation>
    </message>
    <message id="setting.aux">
        <source>Aux</source>
        <translation>부가 기능</translation>
    </message>
    <message id="setting.motion">
        <source>Motion</source>
        <translation>모션</translation>
    </message>
    <message id="setting.audio">
        <source>Audio</source>
        <translation>오디오</translation>
    </message>
    <message id="setting.driveinfoview">
        <source>Drive records</source>
        <translation>주행 기록</translation>
    </message>
    <message id="setting.sdcardformat">
        <source>Format Card</source>
        <translation>카드 포맷</translation>
    </message>
    <message id="setting.disk_utility">
        <source>Disk Utility</source>
        <translation>디스크 유틸리티</translation>
    </message>
    <message id="setting.initialize">
        <source>Initialise</source>
        <translation>초기화</translation>
    </message>
    <message id="cancel">
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message id="save">
        <source>Save</source>
        <translation>저장</translation>
    </message>
    <message id="setting.window_title">
        <source>KAVRO Settings</source>
        <translation>KAVRO 설정</translation>
    </message>
    <message id="setting.information">
        <source>Drive Records</source>
        <translation>주행 기록</translation>
    </message>
    <message id="msg.write_protected_disk">
        <source>The card could not be written. It may be write-protected, full or removed.</source>
        <translation>카드에 쓸 수 없습니다. 쓰기 방지되었거나 가득 찼거나 분리되었을 수 있습니다.</translation>
    </message>
    <message id="msg.saved">
        <source>The file was saved.</source>
        <translation>파일을 저장했습니다.</translation>
    </message>
    <message id="msg.format_not_available">
        <source>Formatting the card is not available in this version yet.</source>
        <translation type="vanished">이 버전에서는 아직 카드 포맷을 사용할 수 없습니다.</translation>
    </message>
    <message id="msg.no_disk_utility">
        <source>No disk utility is installed. Install GNOME Disks or KDE Partition Manager.</source>
        <translation>디스크 유틸리티가 설치되어 있지 않습니다. GNOME 디스크나 KDE 파티션 관리자를 설치하십시오.</translation>
    </message>
    <message id="setting.aux.mic_volume">
        <source>Microphone volume</source>
        <translation>마이크 음량</translation>
    </message>
    <message id="setting.aux.speaker_volume">
        <source>Speaker volume</source>
        <translation>스피커 음량</translation>
    </message>
    <message id="setting.aux.enable_hourly_alarm">
        <source>Hourly chime</source>
        <translation>정시 알림</translation>
    </message>
    <message id="setting.aux.enable_voice_guidance">
        <source>Voice guidance language</source>
        <translation>음성 안내 언어</translation>
    </message>
    <message id="msg.memconfig_warning">
        <source>The camera applies a new share only after the card is formatted.</source>
        <translation>새 비율은 카드를 포맷한 뒤에 적용됩니다.</translation>
    </message>
    <message id="setting.aux.always">
        <source>Continuous</source>
        <translation>상시</translation>
    </message>
    <message id="setting.aux.motion">
        <source>Motion</source>
        <translation>모션</translation>
    </message>
    <message id="setting.aux.sdcard_capacity">
        <source>Card share</source>
        <translation>메모리 할당</translation>
    </message>
    <message id="setting.aux.night_ae_setting">
        <source>Night exposure</source>
        <translation>야간 노출</translation>
    </message>
    <message id="setting.aux.lcd_auto_off">
        <source>Screen off after</source>
        <translation>화면 자동 꺼짐</translation>
    </message>
    <message id="setting.aux.country_ac_power_setting">
        <source>Mains frequency</source>
        <translation>전원 주파수</translation>
    </message>
    <message id="setting.aux.lcd_brightness">
        <source>Screen brightness</source>
        <translation>화면 밝기</translation>
    </message>
    <message id="setting.aux.lcd_brightness_night">
        <source>Dimmed screen at night</source>
        <translation>야간 화면 어둡게</translation>
    </message>
    <message id="setting.aux.parking_rear_setting">
        <source>Rear camera in parking mode</source>
        <translation>주차 모드 후방 카메라</translation>
    </message>
    <message id="setting.aux.lcd_screensaver">
        <source>Screen protection</source>
        <translation>화면 보호</translation>
    </message>
    <message id="setting.aux.parking_monitor_notice">
        <source>Parking monitor notice</source>
        <translation>주차 감시 알림</translation>
    </message>
    <message id="setting.aux.recording_length">
        <source>Length of one recording</source>
        <translation>녹화 파일 길이</translation>
    </message>
    <message id="setting.aux.pip_position">
        <source>Small picture position</source>
        <translation>작은 화면 위치</translation>
    </message>
    <message id="setting.aux.auto_format_alarm">
        <source>Format reminder</source>
        <translation>포맷 알림</translation>
    </message>
    <message id="setting.basic.enable_gsensor">
        <source>Impact detection</source>
        <translation>충격 감지</translation>
    </message>
    <message id="setting.basic.use_external_power">
        <source>Use external power</source>
        <translation>외부 전원 사용</translation>
    </message>
    <message id="setting.basic.external_rear_camera_use">
        <source>Use the external rear camera</source>
        <translation>외장 후방 카메라 사용</translation>
    </message>
    <message id="setting.basic.external_rear_camera_led_use_event">
        <source>Its LED lights on events</source>
        <translation>이벤트 시 LED 켜기</translation>
    </message>
    <message id="setting.basic.external_rear_camera_led_use_motion">
        <source>Its LED lights on motion</source>
        <translation>모션 시 LED 켜기</translation>
    </message>
    <message id="setting.basic.enable_front_security_led">
        <source>Front security LED</source>
        <translation>전방 보안 LED</translation>
    </message>
    <message id="setting.basic.enable_rear_security_led">
        <source>Rear security LED</source>
        <translation>후방 보안 LED</translation>
    </message>
    <message id="setting.basic.car_number_input">
        <source>Car number</source>
        <translation>차량 번호</translation>
    </message>
    <message id="setting.basic.set_voltage">
        <source>Cut-off voltage</source>
        <translation>차단 전압</translation>
    </message>
    <message id="setting.basic.set_timer">
        <source>Timer</source>
        <translation>타이머</translation>
    </message>
    <message id="setting.basic.power_guide">
        <source>The camera stops recording in parking mode below this battery voltage or after this time.</source>
        <translation>배터리 전압이 이 값보다 낮아지거나 이 시간이 지나면 주차 모드 녹화를 멈춥니다.</translation>
    </message>
    <message id="setting.basic.auto_parking_waiting_time">
        <source>Automatic parking mode after</source>
        <translation>자동 주차 모드 전환 시간</translation>
    </message>
    <message id="setting.basic.driving_impact_sensitivity">
        <source>Driving impact sensitivity</source>
        <translation>주행 충격 감도</translation>
    </message>
    <message id="setting.basic.parking_impact_sensitivity">
        <source>Parking impact sensitivity</source>
        <translation>주차 충격 감도</translation>
    </message>
    <message id="setting.basic.others">
        <source>Others</source>
        <translation>기타</translation>
    </message>
    <message id="setting.basic.cable_voltage_loss">
        <source>Cable voltage loss</source>
        <translation>케이블 전압 손실</translation>
    </message>
    <message id="setting.basic.cutoff_voltage_setting">
        <source>Cut-off voltage setting</source>
        <translation>차단 전압 설정</translation>
    </message>
    <message id="setting.basic.external_rear_camera_settings">
        <source>External rear camera</source>
        <translation>외장 후방 카메라</translation>
    </message>
    <message id="insensitive">
        <source>least</source>
        <translation>둔감</translation>
    </message>
    <message id="sensitive">
        <source>most</source>
        <translation>민감</translation>
    </message>
    <message id="setting.basic.customize">
        <source>Customise</source>
        <translation>사용자 지정</translation>
    </message>
    <message id="msg.use_external_power_10v">
        <source>With external power the camera cuts off at 10 V. Check the power unit.</source>
        <translation>외부 전원을 쓰면 10V에서 차단됩니다. 전원 장치를 확인하십시오.</translation>
    </message>
    <message id="setting.gps.gps_speed_guide1">
        <source>The unit of the speed in the overlay and in this program.</source>
        <translation>영상과 이 프로그램에 표시되는 속도 단위입니다.</translation>
    </message>
    <message id="summerTime">
        <source>Summer time</source>
        <translation>서머타임</translation>
    </message>
    <message id="setting.gps.gps_time_guide1">
        <source>The camera sets its clock from GPS in this time zone.</source>
        <translation>카메라는 이 시간대로 GPS 시각을 맞춥니다.</translation>
    </message>
    <message id="setting.gps.weekly_alarm">
        <source>Weekly no-driving alarm</source>
        <translation>요일 운행 제한 알림</translation>
    </message>
    <message id="setting.gps.speed_display">
        <source>Speed display</source>
        <translation>속도 표시</translation>
    </message>
    <message id="setting.gps.timezone_setting">
        <source>Time zone</source>
        <translation>시간대</translation>
    </message>
    <message id="setting.gps.osd_speed_display">
        <source>Speed in the video</source>
        <translation>영상 속도 표시</translation>
    </message>
    <message id="setting.gps.gps_on_parking_mode">
        <source>GPS in parking mode</source>
        <translation>주차 모드 GPS</translation>
    </message>
    <message id="setting.gps.driving_route_info_saving_interval">
        <source>Driving route saving interval</source>
        <translation>주행 경로 저장 간격</translation>
    </message>
    <message id="setting.gps.gps_guide1">
        <source>GPS needs a clear view of the sky; the first fix can take a few minutes.</source>
        <translation>GPS는 하늘이 트인 곳에서 잡히며, 처음에는 몇 분 걸릴 수 있습니다.</translation>
    </message>
    <message id="setting.gps.gps_guide2">
        <source>Without a GPS fix the overlay shows no speed and the route is not saved.</source>
        <translation>GPS 수신이 없으면 영상에 속도가 표시되지 않고 경로도 저장되지 않습니다.</translation>
    </message>
    <message id="setting.aux.front_sensitivity">
        <source>Front camera</source>
        <translation>전방 카메라</translation>
    </message>
    <message id="setting.aux.rear_sensitivity">
        <source>Rear camera</source>
        <translation>후방 카메라</translation>
    </message>
    <message id="setting.motion.block_front">
        <source>Front</source>
        <translation>전방</translation>
    </message>
    <message id="setting.motion.block_rear">
        <source>Rear</source>
        <translation>후방</translation>
    </message>
    <message id="setting.motion.sensitivity">
        <source>Motion detection sensitivity</source>
        <translation>모션 감지 감도</translation>
    </message>
    <message id="setting.motion.block">
        <source>Watched image blocks</source>
        <translation>감시 영역</translation>
    </message>
    <message id="brightness">
        <source>Brightness</source>
        <translation>밝기</translation>
    </message>
    <message id="setting.video.front_quality">
        <source>Front video quality</source>
        <translation>전방 화질</translation>
    </message>
    <message id="setting.video.rear_quality">
        <source>Rear video quality</source>
        <translation>후방 화질</translation>
    </message>
    <message id="setting.video.front_setting">
        <source>Front camera</source>
        <translation>전방 카메라</translation>
    </message>
    <message id="setting.video.rear_setting">
        <source>Rear camera</source>
        <translation>후방 카메라</translation>
    </message>
    <message id="setting.video.rear_reversal">
        <source>Rear image reversal</source>
        <translation>후방 영상 반전</translation>
    </message>
    <message id="setting.video.rear_fps">
        <source>Rear frame rate</source>
        <translation>후방 프레임 수</translation>
    </message>
    <message id="setting.video.front_tinting">
        <source>Front lens filter</source>
        <translation>전방 렌즈 필터</translation>
    </message>
    <message id="setting.video.rear_tinting">
        <source>Rear window tinting</source>
        <translation>후방 선팅</translation>
    </message>
    <message id="setting.video.cpl_filter_use">
        <source>Use the CPL filter when the windscreen reflects the dashboard.</source>
        <translation>앞유리에 대시보드가 비치면 CPL 필터를 사용하십시오.</translation>
    </message>
    <message id="25fps">
        <source>25 fps</source>
        <translation>25 fps</translation>
    </message>
    <message id="30fps">
        <source>30 fps</source>
        <translation>30 fps</translation>
    </message>
    <message id="unuse">
        <source>Off</source>
        <translation>사용 안 함</translation>
    </message>
    <message id="use">
        <source>On</source>
        <translation>사용</translation>
    </message>
    <message id="off">
        <source>Off</source>
        <translation>끔</translation>
    </message>
    <message id="on">
        <source>On</source>
        <translation>켬</translation>
    </message>
    <message id="none">
        <source>None</source>
        <translation>없음</translation>
    </message>
    <message id="default">
        <source>Default</source>
        <translation>기본</translation>
    </message>
    <message id="auto">
        <source>Auto</source>
        <translation>자동</translation>
    </message>
    <message id="externpower">
        <source>External power</source>
        <translation>외부 전원</translation>
    </message>
    <message id="customize">
        <source>Custom</source>
        <translation>사용자 지정</translation>
    </message>
    <message id="setting.video.quality_normal">
        <source>Normal</source>
        <translation>보통</translation>
    </message>
    <message id="setting.video.quality_high">
        <source>High</source>
        <translation>높음</translation>
    </message>
    <message id="setting.video.quality_highest">
        <source>Highest</source>
        <translation>최고</translation>
    </message>
    <message id="15fps">
        <source>15 fps</source>
        <translation>15 fps</translation>
    </message>
    <message id="cpl_unuse">
        <source>No filter</source>
        <translation>필터 없음</translation>
    </message>
    <message id="cpl_use">
        <source>CPL filter</source>
        <translation>CPL 필터</translation>
    </message>
    <message id="light_tinting">
        <source>Light tint</source>
        <translation>옅은 선팅</translation>
    </message>
    <message id="dark_tinting">
        <source>Dark tint</source>
        <translation>짙은 선팅</translation>
    </message>
    <message id="nSecond_fmt">
        <source>%1 s</source>
        <translation>%1초</translation>
    </message>
    <message id="nMinute_fmt">
        <source>%1 min</source>
        <translation>%1분</translation>
    </message>
    <message id="nHour_fmt">
        <source>%1 h</source>
        <translation>%1시간</translation>
    </message>
    <message id="mon">
        <source>Mon</source>
        <translation>월</translation>
    </message>
    <message id="tue">
        <source>Tue</source>
        <translation>화</translation>
    </message>
    <message id="wed">
        <source>Wed</source>
        <translation>수</translation>
    </message>
    <message id="thu">
        <source>Thu</source>
        <translation>목</translation>
    </message>
    <message id="fri">
        <source>Fri</source>
        <translation>금</translation>
    </message>
    <message id="sat">
        <source>Sat</source>
        <translation>토</translation>
    </message>
    <message id="sun">
        <source>Sun</source>
        <translation>일</translation>
    </message>
    <message id="setting.aux.low">
        <source>Low</source>
        <translation>낮음</translation>
    </message>
    <message id="setting.aux.medium_sedan">
        <source>Medium (sedan)</source>
        <translation>중간 (세단)</translation>
    </message>
    <message id="setting.aux.high_suv">
        <source>High (SUV)</source>
        <translation>높음 (SUV)</translation>
    </message>
    <message id="setting.aux.volume_low">
        <source>low</source>
        <translation>작게</translation>
    </message>
    <message id="setting.aux.volume_up">
        <source>high</source>
        <translation>크게</translation>
    </message>
    <message id="5min">
        <source>5 min</source>
        <translation>5분</translation>
    </message>
    <message id="3min">
        <source>3 min</source>
        <translation>3분</translation>
    </message>
    <message id="setting.aux.pip_top_left">
        <source>Top left</source>
        <translation>왼쪽 위</translation>
    </message>
    <message id="setting.aux.pip_top_right">
        <source>Top right</source>
        <translation>오른쪽 위</translation>
    </message>
    <message id="setting.aux.pip_bottom_left">
        <source>Bottom left</source>
        <translation>왼쪽 아래</translation>
    </message>
    <message id="setting.aux.pip_bottom_right">
        <source>Bottom right</source>
        <translation>오른쪽 아래</translation>
    </message>
    <message id="setting.aux.auto_format_notuse">
        <source>Off</source>
        <translation>사용 안 함</translation>
    </message>
    <message id="setting.aux.auto_format_4week">
        <source>4 weeks</source>
        <translation>4주</translation>
    </message>
    <message id="setting.aux.auto_format_8week">
        <source>8 weeks</source>
        <translation>8주</translation>
    </message>
    <message id="setting.aux.auto_format_16week">
        <source>16 weeks</source>
        <translation>16주</translation>
    </message>
    <message id="setting.aux.auto_format_32week">
        <source>32 weeks</source>
        <translation>32주</translation>
    </message>
    <message id="Korean">
        <source>Korean</source>
        <translation>한국어</translation>
    </message>
    <message id="English">
        <source>English</source>
        <translation>영어</translation>
    </message>
    <message id="French">
        <source>French</source>
        <translation>프랑스어</translation>
    </message>
    <message id="Spanish.Europe">
        <source>Spanish (Europe)</source>
        <translation>스페인어 (유럽)</translation>
    </message>
    <message id="Arabic">
        <source>Arabic</source>
        <translation>아랍어</translation>
    </message>
    <message id="Chinese">
        <source>Chinese</source>
        <translation>중국어</translation>
    </message>
    <message id="Russian">
        <source>Russian</source>
        <translation>러시아어</translation>
    </message>
    <message id="Japanese">
        <source>Japanese</source>
        <translation>일본어</translation>
    </message>
    <message id="Thai">
        <source>Thai</source>
        <translation>태국어</translation>
    </message>
    <message id="BahasaIndonesia">
        <source>Bahasa Indonesia</source>
        <translation>인도네시아어</translation>
    </message>
    <message id="Vietnamese">
        <source>Vietnamese</source>
        <translation>베트남어</translation>
    </message>
    <message id="Mongolian">
        <source>Mongolian</source>
        <translation>몽골어</translation>
    </message>
    <message id="Spanish.SouthAmerica">
        <source>Spanish (South America)</source>
        <translation>스페인어 (남미)</translation>
    </message>
    <message id="German">
        <source>German</source>
        <translation>독일어</translation>
    </message>
    <message id="Turkish">
        <source>Turkish</source>
        <translation>터키어</translation>
    </message>
    <message id="Italian">
        <source>Italian</source>
        <translation>이탈리아어</translation>
    </message>
    <message id="Hindi">
        <source>Hindi</source>
        <translation>힌디어</translation>
    </message>
    <message id="Cantonese">
        <source>Cantonese</source>
        <translation>광둥어</translation>
    </message>
    <message id="Czech">
        <source>Czech</source>
        <translation>체코어</translation>
    </message>
    <message id="Portuguese">
        <source>Portuguese</source>
        <translation>포르투갈어</translation>
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
    <message id="time.window_title">
        <source>Camera Clock</source>
        <translation>카메라 시계</translation>
    </message>
    <message id="today">
        <source>Today</source>
        <translation>오늘</translation>
    </message>
    <message id="time.filesave">
        <source>The clock file was saved. Put the card into the camera to set its clock.</source>
        <translation>시간 설정 파일을 저장했습니다. 카드를 카메라에 넣으면 카메라 시계가 맞춰집니다.</translation>
    </message>
    <message id="main.menu.language">
        <source>&amp;Language</source>
        <translation>언어(&amp;L)</translation>
    </message>
    <message id="main.menu.language_system">
        <source>System</source>
        <translation>시스템 설정</translation>
    </message>
    <message id="main.language_not_stored">
        <source>The language could not be kept: the program&apos;s settings cannot be written.</source>
        <translation>언어 선택을 저장하지 못했습니다. 프로그램 설정 파일에 쓸 수 없습니다.</translation>
    </message>
    <message id="main.language_at_restart">
        <source>The texts change to the chosen language the next time KAVRO Viewer starts.</source>
        <translation>다음에 KAVRO Viewer를 시작하면 선택한 언어로 바뀝니다.</translation>
    </message>
    <message id="setting.format.allocation_unit_size">
        <source>Allocation unit size</source>
        <translation>할당 단위 크기</translation>
    </message>
    <message id="setting.format.filesystem">
        <source>File system</source>
        <translation>파일 시스템</translation>
    </message>
    <message id="setting.format.format">
        <source>Format</source>
        <translation>포맷</translation>
    </message>
    <message id="msg.no_usb_drive">
        <source>There is no USB drive.</source>
        <translation>연결된 USB 드라이브가 없습니다.</translation>
    </message>
    <message id="msg.select_usb_drive">
        <source>Please select USB drive.</source>
        <translation>USB 드라이브를 선택하세요.</translation>
    </message>
    <message id="msg.cannot_format">
        <source>The card cannot be formatted.</source>
        <translation>카드를 포맷할 수 없습니다.</translation>
    </message>
    <message id="msg.format_complete">
        <source>The card was formatted.</source>
        <translation>카드 포맷이 완료되었습니다.</translation>
    </message>
    <message id="msg.format_config_not_saved">
        <source>Its settings file could not be put aside, so the card was left as it was.</source>
        <translation>설정 파일을 따로 보관할 수 없어 카드를 포맷하지 않았습니다.</translation>
    </message>
    <message id="msg.format_auth_dismissed">
        <source>The request for administrator rights was dismissed.</source>
        <translation>관리자 권한 요청이 취소되었습니다.</translation>
    </message>
    <message id="msg.format_not_authorised">
        <source>Administrator rights were not granted.</source>
        <translation>관리자 권한을 얻지 못했습니다.</translation>
    </message>
    <message id="msg.format_card_lost">
        <source>The card was formatted but not found again, so no settings file was written to it.</source>
        <translation>카드를 포맷했지만 다시 찾지 못해 설정 파일을 쓰지 못했습니다.</translation>
    </message>
    <message id="msg.format_copy_kept">
        <source>Its former settings file is kept in %1.</source>
        <translation>이전 설정 파일은 %1에 보관되어 있습니다.</translation>
    </message>
    <message id="main.menu.capture">
        <source>Save Picture...</source>
        <translation>화면 저장...</translation>
    </message>
    <message id="main.menu.print">
        <source>&amp;Print Picture...</source>
        <translation>화면 인쇄(&amp;P)...</translation>
    </message>
    <message id="main.menu.export_pdf">
        <source>Export Frame as PDF...</source>
        <translation>PDF로 화면 내보내기...</translation>
    </message>
    <message id="main.pdf.file">
        <source>File</source>
        <translation>파일</translation>
    </message>
    <message id="main.pdf.date">
        <source>Date</source>
        <translation>날짜</translation>
    </message>
    <message id="main.pdf.time">
        <source>Time</source>
        <translation>시간</translation>
    </message>
    <message id="main.pdf.position">
        <source>Position</source>
        <translation>위치</translation>
    </message>
    <message id="main.export_pdf.title">
        <source>Export Frame as PDF</source>
        <translation>PDF로 화면 내보내기</translation>
    </message>
    <message id="msg.export_pdf_failed">
        <source>The PDF could not be written to %1: %2</source>
        <translation>PDF 파일을 %1에 저장하지 못했습니다: %2</translation>
    </message>
    <message id="main.menu.help">
        <source>&amp;Help</source>
        <translation>도움말(&amp;H)</translation>
    </message>
    <message id="main.menu.shortcuts">
        <source>Keyboard Shortcuts</source>
        <translation>단축키</translation>
    </message>
    <message id="main.menu.about">
        <source>About KAVRO Viewer</source>
        <translation>KAVRO Viewer 정보</translation>
    </message>
    <message id="main.shortcuts.command">
        <source>Command</source>
        <translation>기능</translation>
    </message>
    <message id="main.shortcuts.key">
        <source>Key</source>
        <translation>키</translation>
    </message>
    <message id="main.about.version">
        <source>KAVRO Viewer %1</source>
        <translation>KAVRO Viewer %1</translation>
    </message>
    <message id="main.about.licences">
        <source>A viewer and card manager for the KAVRO dash camera.&lt;br&gt;&lt;br&gt;The map page uses %1, under the BSD 2-Clause licence (see Show Details).&lt;br&gt;Map data &amp;copy; OpenStreetMap contributors, under the Open Database License (ODbL).</source>
        <translation>KAVRO 블랙박스의 영상 재생 및 SD 카드 관리 프로그램입니다.&lt;br&gt;&lt;br&gt;지도 화면에는 %1이(가) 쓰이며 BSD 2-Clause 라이선스를 따릅니다(자세한 내용 참조).&lt;br&gt;지도 데이터 &amp;copy; OpenStreetMap 기여자, ODbL(Open Database License) 라이선스.</translation>
    </message>
    <message id="main.capture">
        <source>Save the picture</source>
        <translation>화면 저장</translation>
    </message>
    <message id="main.print">
        <source>Print the picture</source>
        <translation>화면 인쇄</translation>
    </message>
    <message id="open">
        <source>Open</source>
        <translation>열기</translation>
    </message>
    <message id="export">
        <source>Export</source>
        <translation>내보내기</translation>
    </message>
    <message id="setting.flashdata.warning">
        <source>The card holds no drive records (DrvInfo/kavro_000.drv). Open a .drv file instead.</source>
        <translation>카드에 주행 기록이 없습니다(DrvInfo/kavro_000.drv). 다른 .drv 파일을 열어 주세요.</translation>
    </message>
    <message id="setting.flashdata.open_title">
        <source>Open Drive Records</source>
        <translation>주행 기록 열기</translation>
    </message>
    <message id="msg.flashdata_read_fail">
        <source>The drive records could not be read from %1.</source>
        <translation>%1에서 주행 기록을 읽을 수 없습니다.</translation>
    </message>
    <message id="setting.flashdata.export_title">
        <source>Export Drive Records</source>
        <translation>주행 기록 내보내기</translation>
    </message>
    <message id="msg.flashdata_write_fail">
        <source>The file could not be written: %1</source>
        <translation>파일을 저장할 수 없습니다: %1</translation>
    </message>
</context>
</TS>
