#include "widgets/tkimage.h"

#include "resources/kavroresources.h"
#include "widgets/widgetslog.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QSet>
#include <QSvgRenderer>

namespace kavro {

namespace {

// Names arrive with or without an extension ("record_p.png" from older layouts); the resources
// hold one file per name, SVG where it can be drawn as such.
QString baseName(const QString& name)
{
    const QString fileName = QFileInfo(name).fileName();
    for (const char* extension : {".png", ".svg"}) {
        if (fileName.endsWith(QLatin1String(extension), Qt::CaseInsensitive))
            return fileName.chopped(4);
    }
    return fileName;
}

QString resourcePath(const QString& base)
{
    initImageResources();
    for (const char* extension : {".svg", ".png"}) {
        QString path = QStringLiteral(":/images/") + base + QLatin1String(extension);
        if (QFile::exists(path))
            return path;
    }
    return {};
}

bool isSvg(const QString& path)
{
    return path.endsWith(QLatin1String(".svg"));
}

void warnMissingOnce(const QString& name)
{
    static QSet<QString> reported;
    if (!reported.contains(name)) {
        reported.insert(name);
        qCWarning(lcWidgets) << "no image named" << name;
    }
}

} // namespace

TKImage TKImage::named(const QString& name)
{
    TKImage image;
    image.m_name = baseName(name);
    if (image.m_name.isEmpty())
        return image;
    const QString path = resourcePath(image.m_name);
    if (path.isEmpty()) {
        warnMissingOnce(name);
        return image;
    }
    const QSize size = isSvg(path) ? QSvgRenderer(path).defaultSize() : QImageReader(path).size();
    if (size.isEmpty()) {
        qCWarning(lcWidgets) << "unreadable image" << path;
        return image;
    }
    image.m_path = path;
    image.m_size = size;
    return image;
}

bool TKImage::exists(const QString& name)
{
    return !resourcePath(baseName(name)).isEmpty();
}

QPixmap TKImage::pixmap(qreal devicePixelRatio) const
{
    if (isNull())
        return {};
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : 1.0;
    const QString key = QStringLiteral("kavro.image:%1@%2").arg(m_path).arg(ratio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    if (isSvg(m_path)) {
        pixmap = QPixmap(m_size * ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(m_path).render(&painter);
    } else {
        pixmap =
            QPixmap(m_path).scaled(m_size * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    pixmap.setDevicePixelRatio(ratio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void TKImage::draw(QPainter* painter, const QPointF& topLeft) const
{
    draw(painter, QRectF(topLeft, QSizeF(m_size)));
}

void TKImage::draw(QPainter* painter, const QRectF& target) const
{
    if (isNull() || target.isEmpty())
        return;
    const QPixmap image = pixmap(painter->device()->devicePixelRatioF());
    painter->drawPixmap(target, image, QRectF(image.rect()));
}

} // namespace kavro
