#pragma once

#include "card/kvrdisksource.h"

#include <QDBusConnection>
#include <QObject>

namespace kavro {

// The mounted USB volumes as the system's disk service (UDisks2) reports them over D-Bus. Each
// call asks the service afresh with a short timeout: without the service (a container, a minimal
// install) there are simply no removable devices. The service's own notices of disks added,
// removed, mounted or unmounted come out as disksChanged.
class UDisks2DiskSource : public QObject, public KVRDiskSource
{
    Q_OBJECT

public:
    static constexpr int CallTimeoutMs = 3000;
    // Unmounting, relabelling and mounting a large card takes longer than a query.
    static constexpr int ChangeTimeoutMs = 30000;

    // The system bus unless told otherwise; the tests pass a private bus.
    explicit UDisks2DiskSource(QObject* parent = nullptr);
    explicit UDisks2DiskSource(const QDBusConnection& bus, QObject* parent = nullptr);

    // Unmounts the volume, sets its label and mounts it again.
    std::optional<QString> setVolumeName(const TKUSBDiskEntity& disk, const QString& name,
                                         bool allowUserInteraction) override;
    std::optional<QString> unmountVolume(const TKUSBDiskEntity& disk,
                                         bool allowUserInteraction) override;
    std::optional<QString> mountVolume(const TKUSBDiskEntity& disk,
                                       bool allowUserInteraction) override;

signals:
    void disksChanged();

protected:
    QList<TKUSBDiskEntity> listUsbDiskEntities() const override;

private:
    void watchService();
    // Calls a method of the volume's Filesystem interface; the reply, or an error reply.
    QDBusMessage callFilesystem(const TKUSBDiskEntity& disk, const QString& method,
                                const QVariantList& arguments, bool allowUserInteraction);

    QDBusConnection m_bus;
};

} // namespace kavro
