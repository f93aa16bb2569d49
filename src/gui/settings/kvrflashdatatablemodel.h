#pragma once

#include "records/kvrflashdata.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QStringList>

namespace kavro {

// The drive records as the page's table shows them: fifteen columns titled in the user's
// language, centred headers, right-aligned cells in an 11 pt font.
class KVRFlashDataTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int CellPointSize = 11;

    explicit KVRFlashDataTableModel(QObject* parent = nullptr);

    // The column titles as the headers show them: the localised texts, "X", "Y", "Z" as they are.
    static QStringList columnNames();
    static QFont cellFont();

    // Replaces the records shown.
    void setFlashData(KVRFlashData data);
    const KVRFlashData& flashData() const { return m_data; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    KVRFlashData m_data;
    QStringList m_columnNames;
};

} // namespace kavro
