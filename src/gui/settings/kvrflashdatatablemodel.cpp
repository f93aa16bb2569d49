#include "kvrflashdatatablemodel.h"

#include <cstring>

namespace kavro {

KVRFlashDataTableModel::KVRFlashDataTableModel(QObject* parent)
    : QAbstractTableModel(parent), m_columnNames(columnNames())
{
}

QStringList KVRFlashDataTableModel::columnNames()
{
    QStringList names;
    for (const FlashDataColumnInfo& column : flashDataColumns()) {
        // The axis columns are titled by their letter, which is its own key.
        names.append(std::strcmp(column.key, column.title) == 0 ? QString::fromLatin1(column.title)
                                                                : qtTrId(column.key));
    }
    return names;
}

QFont KVRFlashDataTableModel::cellFont()
{
    QFont font;
    font.setPointSize(CellPointSize);
    return font;
}

void KVRFlashDataTableModel::setFlashData(KVRFlashData data)
{
    beginResetModel();
    m_data = std::move(data);
    endResetModel();
}

int KVRFlashDataTableModel::rowCount(const QModelIndex& parent) const
{
    // A model row is an int: a file of more records than that shows the first ones.
    return parent.isValid() ? 0 : int(std::min<qint64>(m_data.count(), INT_MAX));
}

int KVRFlashDataTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : FlashDataColumnCount;
}

QVariant KVRFlashDataTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return m_data.stringForColumnIndex(index.column(), index.row());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::FontRole:
        return cellFont();
    default:
        return {};
    }
}

QVariant KVRFlashDataTableModel::headerData(int section, Qt::Orientation orientation,
                                            int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columnNames.size())
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return m_columnNames.at(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignCenter);
    return {};
}

} // namespace kavro
