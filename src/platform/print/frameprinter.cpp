#include "frameprinter.h"

#include "printlog.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

namespace kavro {

bool FramePrinter::isPrinter(const QPrinter& printer)
{
    return printer.outputFormat() == QPrinter::NativeFormat && !printer.printerName().isEmpty() &&
           printer.outputFileName().isEmpty();
}

bool FramePrinter::printImage(QPrinter* printer, const QImage& image, const QStringList& caption)
{
    if (image.isNull())
        return false;
    QPainter painter;
    if (!painter.begin(printer)) {
        qCWarning(lcPrint, "cannot start a job on %s", qUtf8Printable(printer->printerName()));
        return false;
    }
    paintPage(&painter, printer->pageLayout().paintRectPixels(printer->resolution()), image,
              caption);
    // The job reaches the queue when the painter ends; false means it did not.
    return painter.end();
}

QByteArray FramePrinter::pdfDocument(const QImage& image, const QStringList& caption,
                                     const QString& title)
{
    if (image.isNull())
        return {};
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("KAVRO Viewer"));
        writer.setResolution(300);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                         QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter));
        QPainter painter;
        if (!painter.begin(&writer))
            return {};
        paintPage(&painter, writer.pageLayout().paintRectPixels(writer.resolution()), image,
                  caption);
        if (!painter.end())
            return {};
    }
    return pdf;
}

void FramePrinter::paintPage(QPainter* painter, const QRectF& page, const QImage& image,
                             const QStringList& caption)
{
    // Drawn in the page's own coordinates: the paint rectangle's origin is the margin corner.
    const QRectF area(QPointF(0, 0), page.size());
    QRectF pictureArea = area;
    QFont font = painter->font();
    font.setPointSizeF(10);
    painter->setFont(font);
    const qreal lineHeight = painter->fontMetrics().lineSpacing();
    const qreal captionHeight = caption.isEmpty() ? 0 : lineHeight * (caption.size() + 1);
    pictureArea.setHeight(qMax<qreal>(1, area.height() - captionHeight));

    const QSizeF fitted = QSizeF(image.size()).scaled(pictureArea.size(), Qt::KeepAspectRatio);
    const QRectF target(
        QPointF(pictureArea.left() + (pictureArea.width() - fitted.width()) / 2,
                caption.isEmpty() ? pictureArea.top() + (pictureArea.height() - fitted.height()) / 2
                                  : pictureArea.top()),
        fitted);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(target, image);

    qreal y = target.bottom() + lineHeight;
    for (const QString& line : caption) {
        painter->drawText(QRectF(area.left(), y, area.width(), lineHeight),
                          Qt::AlignLeft | Qt::AlignVCenter, line);
        y += lineHeight;
    }
}

} // namespace kavro
