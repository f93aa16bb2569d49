#include "kvrmedialisttablemodel.h"

#include "widgets/artworknames.h"
#include "widgets/tkimage.h"

#include <QFont>
#include <QIcon>

namespace kavro {

namespace {

// Small enough for the four columns to share the narrow right column.
constexpr int CellFontPixelSize = 11;

Qt::Alignment columnAlignment(int column)
{
    return (column == KVRMediaListTableModel::FileColumn ? Qt::AlignLeft : Qt::AlignHCenter) |
           Qt::AlignVCenter;
}

// Index of the recording's mode in the icon table, or -1 when the name gives none.
int modeIndex(const KVRMedia& media)
{
    if (media.isAlwaysMedia())
        return 0;
    if (media.isMotionMedia())
        return 1;
    if (media.isEventMedia())
        return 2;
    return -1;
}

} // namespace

KVRMediaListTableModel::KVRMediaListTableModel(QObject* parent) : QAbstractTableModel(parent) {}

void KVRMediaListTableModel::reloadData(const KVRMediaList& list)
{
    beginResetModel();
    m_medias = list.medias();
    m_pairs = list.mediaPairDic();
    endResetModel();
}

KVRMediaPtr KVRMediaListTableModel::mediaAtIndex(qint64 index) const
{
    if (index < 0 || index >= m_medias.size())
        return nullptr;
    return m_medias.at(index);
}

std::optional<KVRMediaPair>
KVRMediaListTableModel::findMediaPairWithFileName(const QString& name) const
{
    const auto found = m_pairs.constFind(KVRMediaList::mediaPairKey(name));
    if (found == m_pairs.constEnd())
        return std::nullopt;
    return *found;
}

QString KVRMediaListTableModel::identifier(int column)
{
    switch (column) {
    case SaveModeColumn:
        return QStringLiteral("saveMode");
    case DateColumn:
        return QStringLiteral("date");
    case TimeColumn:
        return QStringLiteral("time");
    case FileColumn:
        return QStringLiteral("file");
    }
    return QString();
}

QString KVRMediaListTableModel::title(int column)
{
    switch (column) {
    case SaveModeColumn:
        //% "Mode"
        return qtTrId("filelist.mode");
    case DateColumn:
        //% "Date"
        return qtTrId("filelist.date");
    case TimeColumn:
        //% "Time"
        return qtTrId("filelist.time");
    case FileColumn:
        //% "File"
        return qtTrId("filelist.file");
    }
    return QString();
}

QString KVRMediaListTableModel::modeText(const KVRMedia& media)
{
    if (media.isAlwaysMedia())
        //% "Always"
        return qtTrId("media.always");
    if (media.isMotionMedia())
        //% "Motion"
        return qtTrId("media.motion");
    if (media.isEventMedia())
        //% "Event"
        return qtTrId("media.event");
    //% "Unknown"
    return qtTrId("media.unknown");
}

QString KVRMediaListTableModel::modeImageName(const KVRMedia& media)
{
    const int mode = modeIndex(media);
    if (mode < 0 || !(media.isFrontMedia() || media.isRearMedia()))
        return QString();
    return artwork::carIcons[media.isRearMedia()][mode];
}

QString KVRMediaListTableModel::dateText(const KVRMedia& media)
{
    if (media.year() < 1)
        return QString();
    return QString::asprintf("%04d-%02d-%02d", media.year(), media.month(), media.day());
}

QString KVRMediaListTableModel::timeText(const KVRMedia& media)
{
    if (media.year() < 1)
        return QString();
    return QString::asprintf("%02d:%02d:%02d", media.hour(), media.minute(), media.second());
}

int KVRMediaListTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_medias.size());
}

int KVRMediaListTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant KVRMediaListTableModel::data(const QModelIndex& index, int role) const
{
    const KVRMediaPtr media = mediaAtIndex(index.row());
    if (!media || !index.isValid())
        return QVariant();
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        switch (column) {
        case SaveModeColumn:
            return modeText(*media);
        case DateColumn:
            return dateText(*media);
        case TimeColumn:
            return timeText(*media);
        case FileColumn:
            return media->fileName();
        }
        return QVariant();
    case Qt::DecorationRole:
        if (column == SaveModeColumn) {
            const QString name = modeImageName(*media);
            const TKImage image = name.isEmpty() ? TKImage() : TKImage::named(name);
            if (!image.isNull())
                return QIcon(image.pixmap(2.0));
        }
        return QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(columnAlignment(column));
    case Qt::FontRole: {
        QFont font;
        font.setPixelSize(CellFontPixelSize);
        return font;
    }
    case Qt::ToolTipRole:
        return media->path();
    }
    return QVariant();
}

QVariant KVRMediaListTableModel::headerData(int section, Qt::Orientation orientation,
                                            int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return title(section);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(columnAlignment(section));
    if (role == Qt::UserRole)
        return identifier(section);
    return QVariant();
}

} // namespace kavro
