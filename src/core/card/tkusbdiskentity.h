#pragma once

#include <QString>
#include <QUrl>

#include <cstdint>

namespace kavro {

// One mounted USB volume as the card windows see it. Read-only once made.
//
// On Linux deviceFilePath is the device node ("/dev/sdb1"), which the formatting commands accept,
// and key is the disk service's object path of the block device.
class TKUSBDiskEntity
{
public:
    TKUSBDiskEntity() = default;
    TKUSBDiskEntity(QString volumeName, QUrl mountedURL, QString deviceFilePath,
                    QString deviceModel, std::uint64_t volumeSize, bool writable, bool mediaWhole,
                    QString key);

    // The line of the formatting window's disk list: "[7.4 GB] KAVRO <Card Reader>". A volume
    // without a label shows its device instead, so that two such disks can be told apart.
    QString displayString() const;

    const QString& volumeName() const { return m_volumeName; }
    const QUrl& mountedURL() const { return m_mountedURL; }
    const QString& deviceFilePath() const { return m_deviceFilePath; }
    // Empty when the reader reports no model.
    const QString& deviceModel() const { return m_deviceModel; }
    std::uint64_t volumeSize() const { return m_volumeSize; }
    bool writable() const { return m_writable; }
    bool mediaWhole() const { return m_mediaWhole; }
    const QString& key() const { return m_key; }

    // The volume's root folder, empty when it is not mounted.
    QString mountedPath() const { return m_mountedURL.toLocalFile(); }

private:
    QString m_volumeName;
    QUrl m_mountedURL;
    QString m_deviceFilePath;
    QString m_deviceModel;
    std::uint64_t m_volumeSize = 0;
    bool m_writable = false;
    bool m_mediaWhole = false;
    QString m_key;
};

} // namespace kavro
