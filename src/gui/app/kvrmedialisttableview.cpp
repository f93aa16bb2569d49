#include "kvrmedialisttableview.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

namespace kavro {

KVRMediaListTableView::KVRMediaListTableView(QWidget* parent) : QTableView(parent)
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setIconSize(QSize(32, 18));
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(24);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
}

qint64 KVRMediaListTableView::selectedRow() const
{
    if (!selectionModel())
        return -1;
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void KVRMediaListTableView::selectOnlyRow(qint64 row)
{
    if (!model() || row < 0 || row >= model()->rowCount())
        return;
    const QModelIndex index = model()->index(int(row), 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                 QItemSelectionModel::Rows);
    scrollTo(index);
}

QString KVRMediaListTableView::directoryForUrls(const QList<QUrl>& urls)
{
    for (const QUrl& url : urls) {
        if (!url.isLocalFile())
            continue;
        const QFileInfo info(url.toLocalFile());
        if (info.isDir())
            return info.absoluteFilePath();
        if (info.isFile())
            return info.absolutePath();
    }
    return QString();
}

void KVRMediaListTableView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit returnPressed();
        return;
    }
    QTableView::keyPressEvent(event);
}

void KVRMediaListTableView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        event->ignore();
}

void KVRMediaListTableView::dragMoveEvent(QDragMoveEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
    else
        event->ignore();
}

void KVRMediaListTableView::dropEvent(QDropEvent* event)
{
    const QString directory = directoryForUrls(event->mimeData()->urls());
    if (directory.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    emit directoryDropped(directory);
}

void KVRMediaListTableView::setEmptyText(const QString& text)
{
    m_emptyText = text;
    viewport()->update();
}

void KVRMediaListTableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (m_emptyText.isEmpty() || (model() && model()->rowCount() > 0))
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(viewport()->rect().adjusted(12, 0, -12, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     m_emptyText);
}

} // namespace kavro
