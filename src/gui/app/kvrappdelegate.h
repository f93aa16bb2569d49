#pragma once

#include "kvrmainwindowui.h"
#include "recording/kvrmedialist.h"
#include "recording/kvrmedialistdelegate.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace kavro {

class CustomWindow;
class KVRCaptureCommands;
class KVRHelpCommands;
class KVRLoadingController;
class KVRMapView;
class KVRMediaListTableModel;
class KVRPlayInfo;
class KVRPlaybackControls;
class KVRPlaybackEngine;
class KVRSettingCommands;
class KVRTelemetryDisplay;
class KVRWindowLayout;
class VLCMediaPlayer;
class VLCVideoView;

// The controller of the main window. It makes the window, the two players, the play state, the
// recording list and the telemetry store, wires them together, and receives every command of
// the window. Playback, the controls and the layout are parts of their own that it owns.
class KVRAppDelegate : public QObject, public KVRMediaListDelegate
{
    Q_OBJECT

public:
    explicit KVRAppDelegate(QObject* parent = nullptr);
    ~KVRAppDelegate() override;

    // The rest of the start-up, once the window exists: preferred language, the initial frame
    // and the list's double-click.
    void applicationDidFinishLaunching();

    // Commands of the window.
    void openMediaDirectoryDialog();
    // The folder chosen in the dialog, dropped on the list or named on the command line.
    void openMediaDirectory(const QString& path);
    // What the command line names: a folder opens; a recording opens its folder and plays once
    // the list is read; anything else is told to the person in an alert on the window.
    void openPathFromCommandLine(const QString& path);
    void changeAndPlay();
    void toggleFullScreen();
    void closeWindow();

    // KVRMediaListDelegate; called on the scanning thread.
    void mediaListChanged(KVRMediaList* list) override;

    // Stops playback and releases the players, in the order the window was built.
    void die();

    CustomWindow* window() const { return m_window.get(); }
    const KVRMainWindowUI& ui() const { return m_ui; }
    KVRPlayInfo* playInfo() const { return m_playInfo; }
    KVRMediaList* mediaList() const { return m_mediaList.get(); }
    KVRMediaListTableModel* mediaListModel() const { return m_model; }
    KVRPlaybackEngine* engine() const { return m_engine; }
    KVRPlaybackControls* controls() const { return m_controls; }
    KVRWindowLayout* layout() const { return m_layout; }
    KVRLoadingController* loading() const { return m_loading; }
    KVRMapView* mapWebView() const { return m_mapWebView; }
    KVRTelemetryDisplay* telemetryDisplay() const { return m_telemetryDisplay; }
    // The settings and clock windows, and the camera's speed unit read at start-up.
    KVRSettingCommands* settingCommands() const { return m_settingCommands; }
    // Saving, printing and exporting the main picture.
    KVRCaptureCommands* captureCommands() const { return m_captureCommands; }
    KVRHelpCommands* helpCommands() const { return m_helpCommands; }
    // The camera's speed unit as read from the card at start-up: true for miles.
    bool mileDisplay() const;
    VLCMediaPlayer* player1() const { return m_player1.get(); }
    VLCMediaPlayer* player2() const { return m_player2.get(); }
    VLCVideoView* video1View() const { return m_video1View; }
    VLCVideoView* video2View() const { return m_video2View; }
    const QStringList& columnNames() const { return m_columnNames; }

signals:
    // The table shows a newly scanned folder.
    void mediaListReloaded();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void awakeFromNib();
    void setupInitialValues();
    void initMediaListTableView();
    void connectControls();
    void setupMenus();
    void storePreferredLanguage();
    void setupTelemetryDisplay();

    std::unique_ptr<CustomWindow> m_window;
    KVRMainWindowUI m_ui;
    std::unique_ptr<VLCMediaPlayer> m_player1;
    std::unique_ptr<VLCMediaPlayer> m_player2;
    VLCVideoView* m_video1View = nullptr;
    VLCVideoView* m_video2View = nullptr;
    KVRPlayInfo* m_playInfo = nullptr;
    std::unique_ptr<KVRMediaList> m_mediaList;
    KVRMediaListTableModel* m_model = nullptr;
    KVRWindowLayout* m_layout = nullptr;
    KVRLoadingController* m_loading = nullptr;
    KVRPlaybackEngine* m_engine = nullptr;
    KVRPlaybackControls* m_controls = nullptr;
    KVRMapView* m_mapWebView = nullptr;
    KVRTelemetryDisplay* m_telemetryDisplay = nullptr;
    KVRSettingCommands* m_settingCommands = nullptr;
    KVRCaptureCommands* m_captureCommands = nullptr;
    KVRHelpCommands* m_helpCommands = nullptr;
    QStringList m_columnNames;
    bool m_died = false;
    bool m_windowPainted = false;
};

} // namespace kavro
