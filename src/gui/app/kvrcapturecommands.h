#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

class QMenu;
class QPrinter;
class QWidget;

namespace kavro {

struct KVRMainWindowUI;
class VLCMediaPlayer;

// Keeping the frame of the main player: saved as a picture, printed, or exported as a PDF page
// with the recording's telemetry under it. Capture and print work from one fixed snapshot file.
class KVRCaptureCommands : public QObject
{
    Q_OBJECT

public:
    KVRCaptureCommands(const KVRMainWindowUI& ui, VLCMediaPlayer* player1,
                       QObject* parent = nullptr);
    ~KVRCaptureCommands() override;

    // The snapshot every capture and print writes; never deleted.
    static constexpr char DefaultSnapshotPath[] = "/tmp/kavro_capture.jpg";

    // While the main player plays: the snapshot, then a save dialog for a copy of it.
    void captureVideo();
    // While the main player holds a recording: the snapshot, then the print dialog.
    void print();
    // While the main player holds a recording: a save dialog for a PDF of the frame and its
    // telemetry.
    void exportFramePdf();

    // The print settings, made on the first print and kept for the life of the program.
    QPrinter* loadPrintInfo();
    // The print dialog closed with returnCode (1: the person confirmed).
    void printPanelDidEnd(int returnCode);

    // The lines under the picture in the exported PDF: file, date, time, speed, G-sensor values
    // and position as the window shows them now.
    QStringList frameCaption() const;

    // Another snapshot file (tests run side by side) and another way to open it.
    void setSnapshotPath(const QString& path) { m_snapshotPath = path; }
    const QString& snapshotPath() const { return m_snapshotPath; }
    void setImageOpener(std::function<void(const QString&)> opener)
    {
        m_imageOpener = std::move(opener);
    }

private:
    bool writeSnapshot();
    void saveCaptureCopy(const QString& path);
    void writeFramePdf(const QString& path, const QImage& frame, const QStringList& caption,
                       const QString& title);
    QString proposedFolder() const;

    const KVRMainWindowUI& m_ui;
    VLCMediaPlayer* m_player1;
    QString m_snapshotPath = QString::fromLatin1(DefaultSnapshotPath);
    // The snapshot last written, as it is in the file.
    QByteArray m_snapshotBytes;
    std::unique_ptr<QPrinter> m_printInfo;
    std::function<void(const QString&)> m_imageOpener;
};

} // namespace kavro
