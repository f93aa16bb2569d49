#pragma once

#include "recording/kvrmedialist.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QList>

#include <optional>

namespace kavro {

// The four columns of the recording list over one published state of a KVRMediaList. The rows
// and pairs are a snapshot taken at reloadData(), so the table and the players never see a list
// that a background scan is half-way through replacing.
class KVRMediaListTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        SaveModeColumn = 0,
        DateColumn = 1,
        TimeColumn = 2,
        FileColumn = 3,
        ColumnCount
    };

    explicit KVRMediaListTableModel(QObject* parent = nullptr);

    // Takes the list's current rows and pairs.
    void reloadData(const KVRMediaList& list);

    qsizetype count() const { return m_medias.size(); }
    // Null for an index outside the rows.
    KVRMediaPtr mediaAtIndex(qint64 index) const;
    std::optional<KVRMediaPair> findMediaPairWithFileName(const QString& name) const;

    // The column's identifier ("saveMode", "date", "time", "file") and localised title.
    static QString identifier(int column);
    static QString title(int column);

    // The texts and picture name of one recording's cells.
    static QString modeText(const KVRMedia& media);
    static QString modeImageName(const KVRMedia& media);
    static QString dateText(const KVRMedia& media);
    static QString timeText(const KVRMedia& media);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    QList<KVRMediaPtr> m_medias;
    QHash<QString, KVRMediaPair> m_pairs;
};

} // namespace kavro
