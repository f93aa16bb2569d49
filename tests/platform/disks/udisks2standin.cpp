// A stand-in for the UDisks2 daemon on a private bus, for the tests of the disk discovery. It
// serves FAT image files as USB card readers, mounted with fusefat, with the daemon's object
// layout, property types and errors, and only the calls the program makes. A control interface
// lets the test plug and pull cards. Each call on a file system is written to stdout as a line.
//
//   udisks2standin BUS-ADDRESS MOUNT-BASE

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <memory>

using InterfaceMap = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, InterfaceMap>;

namespace {

const QString Root = QStringLiteral("/org/freedesktop/UDisks2");
const QString BlockPrefix = Root + QStringLiteral("/block_devices/");
const QString DrivePrefix = Root + QStringLiteral("/drives/");
const QString Filesystem = QStringLiteral("org.freedesktop.UDisks2.Filesystem");
const QString Control = QStringLiteral("org.kavro.StandIn");

void note(const QString& line)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

bool run(const QString& program, const QStringList& arguments, QString* output = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    bool ok = process.waitForFinished(20000) && process.exitStatus() == QProcess::NormalExit &&
              process.exitCode() == 0;
    if (output)
        *output = QString::fromLocal8Bit(process.readAllStandardOutput());
    return ok;
}

struct Card
{
    QString name; // the block device's name, "sdk1"
    QString image;
    QString label;
    QString bus;
    bool readOnly = false;
    bool partition = true;
    QString mountPoint;
    // fusefat in the foreground: unmounting waits for it to have written everything and ended,
    // as the daemon's Unmount returns only once the file system is gone.
    std::shared_ptr<QProcess> fuse;
};

bool isMounted(const QString& dir)
{
    QFile table(QStringLiteral("/proc/self/mounts"));
    if (!table.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray& line : table.readAll().split('\n')) {
        if (line.split(' ').value(1) == QFile::encodeName(dir))
            return true;
    }
    return false;
}

class StandIn : public QDBusVirtualObject
{
public:
    StandIn(QDBusConnection bus, QString base) : m_bus(std::move(bus)), m_base(std::move(base)) {}

    QString introspect(const QString&) const override { return QString(); }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const QString member = message.member();
        QDBusMessage reply;
        if (message.path() == Root && member == QLatin1String("GetManagedObjects")) {
            reply = message.createReply(QVariant::fromValue(objects()));
        } else if (message.interface() == Control) {
            reply = control(message);
        } else if (message.interface() == Filesystem && message.path().startsWith(BlockPrefix)) {
            reply = filesystem(message, message.path().mid(BlockPrefix.size()));
        } else {
            reply =
                message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
                                         QStringLiteral("not served: %1").arg(member));
        }
        connection.send(reply);
        return true;
    }

private:
    InterfaceMap interfacesOf(const Card& card) const
    {
        QByteArray device = "/dev/" + card.name.toLatin1() + '\0';
        QList<QByteArray> points;
        if (!card.mountPoint.isEmpty())
            points.append(card.mountPoint.toLocal8Bit() + '\0');
        InterfaceMap interfaces;
        interfaces.insert(
            QStringLiteral("org.freedesktop.UDisks2.Block"),
            {{"PreferredDevice", device},
             {"IdLabel", card.label},
             {"Size", quint64(QFileInfo(card.image).size())},
             {"ReadOnly", card.readOnly},
             {"Drive", QVariant::fromValue(QDBusObjectPath(DrivePrefix + card.name))}});
        interfaces.insert(Filesystem, {{"MountPoints", QVariant::fromValue(points)}});
        if (card.partition)
            interfaces.insert(QStringLiteral("org.freedesktop.UDisks2.Partition"),
                              {{"Number", 1u}});
        return interfaces;
    }

    InterfaceMap driveOf(const Card& card) const
    {
        return {{QStringLiteral("org.freedesktop.UDisks2.Drive"),
                 {{"ConnectionBus", card.bus},
                  {"Removable", true},
                  {"Vendor", QStringLiteral("Generic")},
                  {"Model", QStringLiteral("Card Reader")}}}};
    }

    ManagedObjects objects() const
    {
        ManagedObjects all;
        for (const Card& card : m_cards) {
            all.insert(QDBusObjectPath(BlockPrefix + card.name), interfacesOf(card));
            all.insert(QDBusObjectPath(DrivePrefix + card.name), driveOf(card));
        }
        return all;
    }

    void signal(const QString& member, const QVariantList& arguments)
    {
        QDBusMessage out = QDBusMessage::createSignal(
            Root, QStringLiteral("org.freedesktop.DBus.ObjectManager"), member);
        out.setArguments(arguments);
        m_bus.send(out);
    }

    Card* find(const QString& name)
    {
        for (Card& card : m_cards) {
            if (card.name == name)
                return &card;
        }
        return nullptr;
    }

    // Mounted under the label, as desktops do, so a new label gives a new path. The label is
    // read afresh, as the daemon probes a file system again after it changed (a format).
    QString mount(Card& card)
    {
        QString label;
        if (run(QStringLiteral("fatlabel"), {card.image}, &label))
            card.label = label.trimmed();
        QString dir = QDir(m_base).filePath(card.label.isEmpty() ? card.name : card.label);
        QDir().mkpath(dir);
        auto fuse = std::make_shared<QProcess>();
        fuse->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        fuse->start(QStringLiteral("fusefat"),
                    {"-f", "-o", card.readOnly ? "ro" : "rw+", card.image, dir});
        if (!fuse->waitForStarted(20000))
            return QString();
        QElapsedTimer clock;
        clock.start();
        while (!isMounted(dir)) {
            if (fuse->state() == QProcess::NotRunning || clock.elapsed() > 20000) {
                fuse->kill();
                fuse->waitForFinished(5000);
                return QString();
            }
            QThread::msleep(20);
        }
        card.fuse = std::move(fuse);
        card.mountPoint = dir;
        return dir;
    }

    bool unmount(Card& card)
    {
        if (!run(QStringLiteral("fusermount"), {"-u", card.mountPoint}))
            return false;
        if (card.fuse && !card.fuse->waitForFinished(20000))
            return false;
        card.fuse.reset();
        QDir().rmdir(card.mountPoint);
        card.mountPoint.clear();
        return true;
    }

    QDBusMessage control(const QDBusMessage& message)
    {
        const QVariantList args = message.arguments();
        if (message.member() == QLatin1String("AddCard") && args.size() == 5) {
            Card& card = m_cards.emplaceBack();
            card.name = args[0].toString();
            card.image = args[1].toString();
            card.bus = args[2].toString();
            card.readOnly = args[3].toBool();
            card.partition = args[4].toBool();
            if (mount(card).isEmpty())
                return message.createErrorReply(QStringLiteral("org.kavro.Error"), "mount failed");
            signal(QStringLiteral("InterfacesAdded"),
                   {QVariant::fromValue(QDBusObjectPath(BlockPrefix + card.name)),
                    QVariant::fromValue(interfacesOf(card))});
            return message.createReply(card.mountPoint);
        }
        if (message.member() == QLatin1String("RemoveCard") && args.size() == 1) {
            const QString name = args[0].toString();
            // Pulling a card that is not there is no error: the test pulls its cards in any case.
            if (Card* card = find(name); card && !card->mountPoint.isEmpty())
                unmount(*card);
            if (m_cards.removeIf([&](const Card& c) { return c.name == name; }) > 0)
                signal(QStringLiteral("InterfacesRemoved"),
                       {QVariant::fromValue(QDBusObjectPath(BlockPrefix + name)),
                        QStringList{Filesystem}});
            return message.createReply();
        }
        return message.createErrorReply(QStringLiteral("org.kavro.Error"), "bad control call");
    }

    // An error of the daemon's own kind, "org.freedesktop.UDisks2.Error.NAME".
    static QDBusMessage failed(const QDBusMessage& message, const char* name, const QString& text)
    {
        return message.createErrorReply(
            QStringLiteral("org.freedesktop.UDisks2.Error.") + QLatin1String(name), text);
    }

    QDBusMessage filesystem(const QDBusMessage& message, const QString& name)
    {
        Card* card = find(name);
        if (!card)
            return message.createErrorReply(
                QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"), name);
        const QVariantList args = message.arguments();
        const QVariantMap options =
            args.isEmpty() ? QVariantMap() : qdbus_cast<QVariantMap>(args.last());
        const QString member = message.member();
        note(QStringLiteral("%1 %2 no_user_interaction=%3")
                 .arg(member, name,
                      options.value("auth.no_user_interaction").toBool() ? "true" : "false"));
        const QString device = QStringLiteral("/dev/") + name;
        if (member == QLatin1String("Unmount")) {
            if (card->mountPoint.isEmpty() || !unmount(*card))
                return failed(message, "DeviceBusy", device + ": target is busy");
            return message.createReply();
        }
        if (member == QLatin1String("Mount")) {
            const QString dir = card->mountPoint.isEmpty() ? mount(*card) : QString();
            if (dir.isEmpty())
                return failed(message, "Failed", "Error mounting " + device);
            return message.createReply(dir);
        }
        if (member == QLatin1String("SetLabel") && args.size() == 2) {
            if (!card->mountPoint.isEmpty() ||
                !run(QStringLiteral("fatlabel"), {card->image, args[0].toString()}))
                return failed(message, "Failed", "Cannot change the label of " + device);
            card->label = args[0].toString();
            return message.createReply();
        }
        return message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
                                        member);
    }

    QDBusConnection m_bus;
    QString m_base;
    QList<Card> m_cards;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: udisks2standin BUS-ADDRESS MOUNT-BASE\n");
        return 2;
    }
    qDBusRegisterMetaType<QList<QByteArray>>();
    qDBusRegisterMetaType<InterfaceMap>();
    qDBusRegisterMetaType<ManagedObjects>();
    QDBusConnection bus =
        QDBusConnection::connectToBus(QString::fromLocal8Bit(argv[1]), QStringLiteral("standin"));
    StandIn standIn(bus, QString::fromLocal8Bit(argv[2]));
    if (!bus.isConnected() ||
        !bus.registerVirtualObject(Root, &standIn, QDBusConnection::SubPath) ||
        !bus.registerService(QStringLiteral("org.freedesktop.UDisks2"))) {
        std::fprintf(stderr, "udisks2standin: cannot serve on %s\n", argv[1]);
        return 1;
    }
    note(QStringLiteral("ready"));
    return app.exec();
}
