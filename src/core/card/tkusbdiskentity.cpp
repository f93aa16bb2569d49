#include "tkusbdiskentity.h"

#include "bytesize.h"

namespace kavro {

TKUSBDiskEntity::TKUSBDiskEntity(QString volumeName, QUrl mountedURL, QString deviceFilePath,
                                 QString deviceModel, std::uint64_t volumeSize, bool writable,
                                 bool mediaWhole, QString key)
    : m_volumeName(std::move(volumeName)), m_mountedURL(std::move(mountedURL)),
      m_deviceFilePath(std::move(deviceFilePath)), m_deviceModel(std::move(deviceModel)),
      m_volumeSize(volumeSize), m_writable(writable), m_mediaWhole(mediaWhole),
      m_key(std::move(key))
{
}

QString TKUSBDiskEntity::displayString() const
{
    QString name = m_volumeName.isEmpty() ? m_deviceFilePath : m_volumeName;
    QString model = m_deviceModel.isEmpty() ? QString() : '<' + m_deviceModel + '>';
    return QStringLiteral("[%1] %2 %3").arg(byteSizeString(m_volumeSize), name, model);
}

} // namespace kavro
