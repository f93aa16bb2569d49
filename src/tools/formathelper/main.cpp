// kavro-format-helper DEVICE SECTORS_PER_CLUSTER
//
// The one step of formatting a card that needs administrator rights, run through pkexec. It
// formats nothing but an unmounted removable USB disk, with the camera's layout, and takes no
// other argument: nothing a person types reaches a shell. Exit status: mkfs.fat's own, or 2 with
// one line on stderr when the device or the arguments are refused.

#include "card/formattarget.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace {

constexpr int ExitRefused = 2;

int refuse(const QString& reason)
{
    std::fprintf(stderr, "kavro-format-helper: %s\n", qUtf8Printable(reason));
    return ExitRefused;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3)
        return refuse(QStringLiteral("usage: kavro-format-helper DEVICE SECTORS_PER_CLUSTER"));
    const QString device = QFile::decodeName(argv[1]);
    const QByteArray sectorsText(argv[2]);
    bool ok = false;
    const int sectors = sectorsText.toInt(&ok);
    if (!ok || sectorsText.startsWith('+') || sectors < 1 || sectors > 128 ||
        (sectors & (sectors - 1)) != 0)
        return refuse(QStringLiteral("sectors per cluster must be a power of two up to 128, not "
                                     "'%1'")
                          .arg(QString::fromLocal8Bit(sectorsText)));
    if (!device.startsWith(QLatin1Char('/')))
        return refuse(QStringLiteral("the device must be named by its absolute path"));

    const kavro::FormatTargetCheck check = kavro::checkFormatTarget(device);
    if (!check.refusal.isEmpty())
        return refuse(check.refusal);

    const QStringList arguments = kavro::mkfsFatArguments(device, sectors, check.wholeDisk);
    std::vector<QByteArray> bytes{QByteArray("mkfs.fat")};
    for (const QString& argument : arguments)
        bytes.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    for (QByteArray& argument : bytes)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    ::execvp("mkfs.fat", pointers.data());
    return refuse(QStringLiteral("cannot run mkfs.fat: %1")
                      .arg(QString::fromLocal8Bit(std::strerror(errno))));
}
