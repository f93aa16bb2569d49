#pragma once

#include <QTableView>

namespace kavro {

// The recording list: whole rows, one at a time. A folder (or a file inside one) dropped on it
// is offered as the folder to open.
class KVRMediaListTableView : public QTableView
{
    Q_OBJECT

public:
    explicit KVRMediaListTableView(QWidget* parent = nullptr);

    // The only selected row, or -1.
    qint64 selectedRow() const;
    void selectOnlyRow(qint64 row);

    // The folder a drop of these URLs opens: the first local folder, or the folder of the first
    // local file; empty when there is none.
    static QString directoryForUrls(const QList<QUrl>& urls);

    // Shown in the middle of the list while it has no rows; empty shows nothing.
    void setEmptyText(const QString& text);
    const QString& emptyText() const { return m_emptyText; }

signals:
    void directoryDropped(const QString& path);
    // Return or Enter on the list: play the selected row, as a double-click does.
    void returnPressed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_emptyText;
};

} // namespace kavro
