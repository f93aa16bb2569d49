#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

class QPagedPaintDevice;
class QPainter;
class QPrinter;

namespace kavro {

// One video frame on one page: the picture as large as the page allows with its own aspect
// ratio, centred, with an optional caption of lines under it. The same page goes to a printer
// or into a PDF document.
class FramePrinter
{
public:
    // Whether the printer sends its job to a real print queue. Qt's "print to file" and a
    // printer without a name are no printers.
    static bool isPrinter(const QPrinter& printer);

    // Sends the page to the printer. False when the job could not be started or finished.
    static bool printImage(QPrinter* printer, const QImage& image, const QStringList& caption = {});

    // The page as a PDF document of one A4 page with the given title; empty on failure.
    static QByteArray pdfDocument(const QImage& image, const QStringList& caption,
                                  const QString& title);

    // Draws the page into the painter's device whose page area is the rectangle given.
    static void paintPage(QPainter* painter, const QRectF& page, const QImage& image,
                          const QStringList& caption);
};

} // namespace kavro
