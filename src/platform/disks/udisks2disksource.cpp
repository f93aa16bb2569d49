#include "udisks2disksource.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QLoggingCategory>
#include <QUrl>

namespace kavro {

namespace {

Q_LOGGING_CATEGORY(lcDisks, "kavro.platform.disks", QtInfoMsg)

using InterfaceMap = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, InterfaceMap>;

const QString Service = QStringLiteral("org.freedesktop.UDisks2");
const QString ManagerPath = QStringLiteral("/org/freedesktop/UDisks2");
const QString ObjectManager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
const QString BlockInterface = QStringLiteral("org.freedesktop.UDisks2.Block");
const QString FilesystemInterface = QStringLiteral("org.freedesktop.UDisks2.Filesystem");
const QString PartitionInterface = QStringLiteral("org.freedesktop.UDisks2.Partition");
const QString DriveInterface = QStringLiteral("org.freedesktop.UDisks2.Drive");

void registerTypes()
{
    static const bool registered = [] {
        qDBusRegisterMetaType<InterfaceMap>();
        qDBusRegisterMetaType<ManagedObjects>();
        return true;
    }();
    Q_UNUSED(registered);
}

// Byte-string properties ("ay") end with a zero byte.
QString byteString(const QVariant& value)
{
    QByteArray bytes = value.toByteArray();
    if (bytes.endsWith('\0'))
        bytes.chop(1);
    return QString::fromLocal8Bit(bytes);
}

QStringList mountPoints(const QVariant& value)
{
    QList<QByteArray> points;
    if (value.canConvert<QDBusArgument>())
        value.value<QDBusArgument>() >> points;
    else
        points = value.value<QList<QByteArray>>();
    QStringList paths;
    for (const QByteArray& point : points)
        paths.append(byteString(point));
    return paths;
}

QDBusObjectPath objectPath(const QVariant& value)
{
    if (value.canConvert<QDBusArgument>()) {
        QDBusObjectPath path;
        value.value<QDBusArgument>() >> path;
        return path;
    }
    return value.value<QDBusObjectPath>();
}

QVariantMap authOptions(bool allowUserInteraction)
{
    return {{QStringLiteral("auth.no_user_interaction"), !allowUserInteraction}};
}

} // namespace

UDisks2DiskSource::UDisks2DiskSource(QObject* parent)
    : UDisks2DiskSource(QDBusConnection::systemBus(), parent)
{
}

UDisks2DiskSource::UDisks2DiskSource(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), m_bus(bus)
{
    registerTypes();
    watchService();
}

void UDisks2DiskSource::watchService()
{
    if (!m_bus.isConnected())
        return;
    for (const char* signal : {"InterfacesAdded", "InterfacesRemoved"})
        m_bus.connect(Service, ManagerPath, ObjectManager, QString::fromLatin1(signal), this,
                      SIGNAL(disksChanged()));
    // Mounting and unmounting change a filesystem's properties, on any object.
    m_bus.connect(Service, QString(), QStringLiteral("org.freedesktop.DBus.Properties"),
                  QStringLiteral("PropertiesChanged"), this, SIGNAL(disksChanged()));
}

QList<TKUSBDiskEntity> UDisks2DiskSource::listUsbDiskEntities() const
{
    if (!m_bus.isConnected()) {
        qCDebug(lcDisks) << "no system bus";
        return {};
    }
    QDBusMessage call = QDBusMessage::createMethodCall(Service, ManagerPath, ObjectManager,
                                                       QStringLiteral("GetManagedObjects"));
    QDBusMessage reply = m_bus.call(call, QDBus::Block, CallTimeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        qCDebug(lcDisks) << "UDisks2 not available:" << reply.errorName() << reply.errorMessage();
        return {};
    }
    const ManagedObjects objects =
        qdbus_cast<ManagedObjects>(reply.arguments().first().value<QDBusArgument>());

    QList<TKUSBDiskEntity> disks;
    for (auto it = objects.cbegin(); it != objects.cend(); ++it) {
        const InterfaceMap& interfaces = it.value();
        const QVariantMap block = interfaces.value(BlockInterface);
        if (block.isEmpty() || !interfaces.contains(FilesystemInterface))
            continue;
        if (block.value(QStringLiteral("HintIgnore")).toBool() ||
            block.value(QStringLiteral("HintSystem")).toBool())
            continue;
        const QStringList mounted =
            mountPoints(interfaces.value(FilesystemInterface).value(QStringLiteral("MountPoints")));
        if (mounted.isEmpty())
            continue;
        const QVariantMap drive =
            objects.value(objectPath(block.value(QStringLiteral("Drive")))).value(DriveInterface);
        // Card slots built into the computer report another bus.
        if (drive.value(QStringLiteral("ConnectionBus")).toString() != QLatin1String("usb"))
            continue;
        if (!drive.value(QStringLiteral("Removable")).toBool() &&
            !drive.value(QStringLiteral("MediaRemovable")).toBool())
            continue;
        QString device = byteString(block.value(QStringLiteral("PreferredDevice")));
        if (device.isEmpty())
            device = byteString(block.value(QStringLiteral("Device")));
        if (device.isEmpty())
            continue;
        QString model = QStringLiteral("%1 %2")
                            .arg(drive.value(QStringLiteral("Vendor")).toString(),
                                 drive.value(QStringLiteral("Model")).toString())
                            .trimmed();
        disks.append(TKUSBDiskEntity(block.value(QStringLiteral("IdLabel")).toString(),
                                     QUrl::fromLocalFile(mounted.first()), device, model,
                                     block.value(QStringLiteral("Size")).toULongLong(),
                                     !block.value(QStringLiteral("ReadOnly")).toBool(),
                                     !interfaces.contains(PartitionInterface), it.key().path()));
    }
    return disks;
}

QDBusMessage UDisks2DiskSource::callFilesystem(const TKUSBDiskEntity& disk, const QString& method,
                                               const QVariantList& arguments,
                                               bool allowUserInteraction)
{
    if (!m_bus.isConnected())
        return QDBusMessage::createError(QStringLiteral("org.kavro.Error.NoBus"),
                                         QStringLiteral("no system bus"));
    QDBusMessage message =
        QDBusMessage::createMethodCall(Service, disk.key(), FilesystemInterface, method);
    message.setArguments(arguments + QVariantList{authOptions(allowUserInteraction)});
    message.setInteractiveAuthorizationAllowed(allowUserInteraction);
    return m_bus.call(message, QDBus::Block, ChangeTimeoutMs);
}

namespace {

std::optional<QString> failure(const QDBusMessage& reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage)
        return std::nullopt;
    return QStringLiteral("%1: %2").arg(reply.errorName(), reply.errorMessage());
}

} // namespace

std::optional<QString> UDisks2DiskSource::unmountVolume(const TKUSBDiskEntity& disk,
                                                        bool allowUserInteraction)
{
    return failure(callFilesystem(disk, QStringLiteral("Unmount"), {}, allowUserInteraction));
}

std::optional<QString> UDisks2DiskSource::mountVolume(const TKUSBDiskEntity& disk,
                                                      bool allowUserInteraction)
{
    QDBusMessage reply = callFilesystem(disk, QStringLiteral("Mount"), {}, allowUserInteraction);
    if (std::optional<QString> why = failure(reply))
        return why;
    qCInfo(lcDisks) << "mounted" << disk.deviceFilePath() << "at"
                    << reply.arguments().value(0).toString();
    return std::nullopt;
}

std::optional<QString> UDisks2DiskSource::setVolumeName(const TKUSBDiskEntity& disk,
                                                        const QString& name,
                                                        bool allowUserInteraction)
{
    // A FAT label is written to the boot sector, which the mounted file system owns.
    if (std::optional<QString> why = unmountVolume(disk, allowUserInteraction))
        return why;
    std::optional<QString> labelled =
        failure(callFilesystem(disk, QStringLiteral("SetLabel"), {name}, allowUserInteraction));
    // Mounted again whatever became of the label, so that the card stays usable.
    std::optional<QString> mounted = mountVolume(disk, allowUserInteraction);
    if (labelled)
        return labelled;
    if (mounted)
        return mounted;
    qCInfo(lcDisks) << "renamed" << disk.deviceFilePath() << "to" << name;
    return std::nullopt;
}

} // namespace kavro
