#include "kvrmedia.h"

namespace kavro {

KVRMedia::KVRMedia(RecordingName name) : m_name(std::move(name)), m_path(pathText(m_name.path())) {}

std::shared_ptr<const KVRMedia> KVRMedia::mediaWithPath(const QString& path)
{
    return std::make_shared<const KVRMedia>(path);
}

void KVRMedia::parsePath(const QString& path)
{
    m_name = RecordingName(nativePath(path));
    m_path = pathText(m_name.path());
}

bool KVRMedia::_parseTimeByName(QStringView name, qsizetype startPos)
{
    if (startPos < 0) {
        m_name.clearTime();
        return false;
    }
    return m_name.parseTime(name.toUtf8().toStdString(), std::size_t(startPos));
}

KVRMediaDirection mediaDirectionForPath(const QString& path)
{
    if (path.size() < 6)
        return KVRMediaDirectionUnknown;
    QStringView tail = QStringView(path).right(6);
    if (tail.compare(QLatin1StringView("_R.avi"), Qt::CaseInsensitive) == 0)
        return KVRMediaDirectionRear;
    if (tail.compare(QLatin1StringView("_F.avi"), Qt::CaseInsensitive) == 0)
        return KVRMediaDirectionFront;
    return KVRMediaDirectionUnknown;
}

} // namespace kavro
