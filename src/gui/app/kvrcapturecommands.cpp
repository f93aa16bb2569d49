#include "kvrcapturecommands.h"

#include "applog.h"
#include "card/alertsheet.h"
#include "card/filepanel.h"
#include "common/outputfile.h"
#include "customwindow.h"
#include "kvrmainwindowui.h"
#include "player/vlcmediaplayer.h"
#include "print/frameprinter.h"
#include "recording/kvrmedia.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageWriter>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>

namespace kavro {

namespace {

QString captionLine(const QString& label, const QString& value)
{
    return QStringLiteral("%1: %2").arg(label, value.isEmpty() ? QStringLiteral("-") : value);
}

} // namespace

KVRCaptureCommands::KVRCaptureCommands(const KVRMainWindowUI& ui, VLCMediaPlayer* player1,
                                       QObject* parent)
    : QObject(parent), m_ui(ui), m_player1(player1)
{
    // The desktop's image viewer, not waited for.
    m_imageOpener = [](const QString& path) {
        if (!QProcess::startDetached(QStringLiteral("xdg-open"), {path}))
            qCWarning(lcApp, "cannot start xdg-open for %s", qUtf8Printable(path));
    };
}

KVRCaptureCommands::~KVRCaptureCommands() = default;

bool KVRCaptureCommands::writeSnapshot()
{
    m_snapshotBytes = m_player1->videoSnapshot("jpeg", 0, 0);
    if (m_snapshotBytes.isEmpty())
        return false; // nothing shown: nothing to do
    QString error;
    if (!writeFile(m_snapshotPath, m_snapshotBytes, &error, OutputFile::Rule::FreshPrivate)) {
        qCWarning(lcApp, "snapshot not written to %s: %s", qUtf8Printable(m_snapshotPath),
                  qUtf8Printable(error));
        m_snapshotBytes.clear();
        return false;
    }
    return true;
}

QString KVRCaptureCommands::proposedFolder() const
{
    for (const auto location :
         {QStandardPaths::DocumentsLocation, QStandardPaths::PicturesLocation}) {
        const QString folder = QStandardPaths::writableLocation(location);
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

void KVRCaptureCommands::captureVideo()
{
    if (!m_player1->isPlaying() || !writeSnapshot())
        return;
    QFileDialog* panel =
        openFilePanel(m_ui.window, QFileDialog::AcceptSave, QStringLiteral("Save Settings"), {},
                      QStringLiteral("kavro_capture.png"), proposedFolder());
    panel->setObjectName(QStringLiteral("captureSavePanel"));
    panel->setFilter(panel->filter() | QDir::Hidden);
    // The copy never replaces a file, so there is nothing to confirm.
    panel->setOption(QFileDialog::DontConfirmOverwrite);
    connect(panel, &QFileDialog::fileSelected, this, &KVRCaptureCommands::saveCaptureCopy);
}

void KVRCaptureCommands::saveCaptureCopy(const QString& path)
{
    // The copy is encoded as its name says; the snapshot's own bytes where Qt can't.
    QByteArray bytes = m_snapshotBytes;
    const QByteArray format = VLCMediaPlayer::imageFormatForPath(path);
    const QImage image = QImage::fromData(m_snapshotBytes, "JPEG");
    if (format != "jpeg" && !image.isNull()) {
        QByteArray encoded;
        QBuffer buffer(&encoded);
        buffer.open(QIODevice::WriteOnly);
        if (QImageWriter(&buffer, format).write(image))
            bytes = encoded;
    }
    QString error;
    if (!writeFile(path, bytes, &error, OutputFile::Rule::CreateNew))
        qCInfo(lcApp, "capture not copied to %s: %s", qUtf8Printable(path), qUtf8Printable(error));
    m_imageOpener(m_snapshotPath);
}

QPrinter* KVRCaptureCommands::loadPrintInfo()
{
    if (!m_printInfo)
        m_printInfo = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return m_printInfo.get();
}

void KVRCaptureCommands::print()
{
    if (m_player1->media().isNull() || !writeSnapshot())
        return;
    auto* panel = new QPrintDialog(loadPrintInfo(), m_ui.window);
    panel->setObjectName(QStringLiteral("printPanel"));
    panel->setWindowModality(Qt::WindowModal);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    connect(panel, &QDialog::finished, this, &KVRCaptureCommands::printPanelDidEnd);
    panel->open();
}

void KVRCaptureCommands::printPanelDidEnd(int returnCode)
{
    if (returnCode != QDialog::Accepted)
        return;
    QPrinter* printer = loadPrintInfo();
    // Only a real queue gets the frame; "print to file" is not one.
    if (!FramePrinter::isPrinter(*printer)) {
        qCWarning(lcApp, "Either got an error from PMSessionGetDestinationType or the print "
                         "destination wasn't kPMDestinationPrinter");
        return;
    }
    if (QPrinterInfo::printerInfo(printer->printerName()).isNull()) {
        qCWarning(lcApp, "printer %s is gone", qUtf8Printable(printer->printerName()));
        return;
    }
    const QImage image = QImage::fromData(m_snapshotBytes, "JPEG");
    printer->setDocName(QFileInfo(m_snapshotPath).completeBaseName());
    if (!FramePrinter::printImage(printer, image))
        qCWarning(lcApp, "the frame did not reach printer %s",
                  qUtf8Printable(printer->printerName()));
}

QStringList KVRCaptureCommands::frameCaption() const
{
    const QString path = m_player1->media().path();
    const KVRMedia media(path);
    QString date;
    QString time;
    if (media.hasTime()) {
        // The camera's clock at this frame: the recording's start plus the play time.
        const QDateTime start(QDate(media.year(), media.month(), media.day()), QTime(0, 0));
        const QDateTime at =
            start.addSecs(media.hour() * 3600 + media.minute() * 60 + media.second())
                .addMSecs(m_player1->time().intValue());
        date = at.toString(QStringLiteral("yyyy/MM/dd"));
        time = at.toString(QStringLiteral("HH:mm:ss"));
    }
    const QString gsensor = QStringList{m_ui.gsensorXField->text(), m_ui.gsensorYField->text(),
                                        m_ui.gsensorZField->text()}
                                .join(QStringLiteral("  "))
                                .trimmed();
    //% "File"
    return {captionLine(qtTrId("main.pdf.file"), QFileInfo(path).fileName()),
            //% "Date"
            captionLine(qtTrId("main.pdf.date"), date),
            //% "Time"
            captionLine(qtTrId("main.pdf.time"), time),
            captionLine(qtTrId("main.speed"), m_ui.speedField->text()),
            captionLine(qtTrId("main.gsensor"), gsensor),
            //% "Position"
            captionLine(qtTrId("main.pdf.position"), m_ui.positionField->text())};
}

void KVRCaptureCommands::exportFramePdf()
{
    if (m_player1->media().isNull())
        return;
    // The frame and its telemetry as they are now; playback goes on while the dialog is open.
    const QImage frame = m_player1->frameAtVideoSize();
    if (frame.isNull())
        return;
    const QStringList caption = frameCaption();
    const QString name = QFileInfo(m_player1->media().path()).completeBaseName();
    //% "Export Frame as PDF"
    QFileDialog* panel =
        openFilePanel(m_ui.window, QFileDialog::AcceptSave, qtTrId("main.export_pdf.title"),
                      QStringLiteral("pdf"), name + QStringLiteral(".pdf"), proposedFolder());
    panel->setObjectName(QStringLiteral("exportPdfPanel"));
    const QString title = QFileInfo(m_player1->media().path()).fileName();
    connect(panel, &QFileDialog::fileSelected, this,
            [this, frame, caption, title](const QString& path) {
                writeFramePdf(path, frame, caption, title);
            });
}

void KVRCaptureCommands::writeFramePdf(const QString& path, const QImage& frame,
                                       const QStringList& caption, const QString& title)
{
    const QByteArray pdf = FramePrinter::pdfDocument(frame, caption, title);
    QString error = QStringLiteral("no PDF made");
    if (!pdf.isEmpty() && writeFile(path, pdf, &error))
        return;
    qCWarning(lcApp, "PDF not written to %s: %s", qUtf8Printable(path), qUtf8Printable(error));
    //% "The PDF could not be written to %1: %2"
    showAlert(m_ui.window, QStringLiteral("KAVRO"),
              qtTrId("msg.export_pdf_failed").arg(QDir::toNativeSeparators(path), error));
}

} // namespace kavro
