#pragma once

#include <QProcess>
#include <QString>

namespace kavro::test {

// A card in a reader, played by a FAT image file mounted with fusefat, and pulled out for real:
// the mount goes away under whoever is reading it and the file system behind it stops answering.
class FuseCard
{
public:
    FuseCard() = default;
    ~FuseCard();
    FuseCard(const FuseCard&) = delete;
    FuseCard& operator=(const FuseCard&) = delete;

    // Makes an image of the given size in MiB holding the files of content (folders included)
    // and mounts it at mountPoint; false with the reason when a step fails.
    bool insert(const QString& image, const QString& content, int megabytes,
                const QString& mountPoint, QString* error);
    // Mounts an image made before (a card put back in), write-protected if asked.
    bool mount(const QString& image, const QString& mountPoint, QString* error,
               bool readOnly = false);
    // Takes the card's last free byte with a file of that name: loop recording filled it.
    bool fill(const QString& name);
    // Stops the card answering once its log shows the text ("readdir(/DCIM/03)"): whoever reads
    // it next waits, until the card is pulled. frozen() says when it has happened.
    void freezeWhen(const QByteArray& text);
    bool frozen() const { return m_frozen; }
    // Unmounts underneath every open file, then ends the file system's process.
    void pull();

private:
    QProcess m_fusefat;
    QString m_mountPoint;
    QByteArray m_log;
    bool m_frozen = false;
};

} // namespace kavro::test
