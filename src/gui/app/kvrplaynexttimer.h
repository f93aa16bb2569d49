#pragma once

#include "recording/recordingfilecheck.h"

#include <QObject>
#include <QTimer>

#include <utility>

namespace kavro {

class VLCMediaPlayer;

// Looks at the large player once a second while a recording plays: a file that can no longer be
// read (a card pulled out, a file cut short underneath) or a player in error is reported at once,
// and a player that still rests at its end a second after it came there asks for the next row.
// The small picture's file is looked at too; losing it only takes the small picture.
class KVRPlayNextTimer : public QObject
{
    Q_OBJECT

public:
    explicit KVRPlayNextTimer(const VLCMediaPlayer* player, QObject* parent = nullptr);

    // The files of the large and the small picture whose loss counts; an empty path for none.
    void watchFiles(const QString& large, const QString& small);
    void watchPartner(const QString& small);
    // The pictures traded players.
    void swapFiles() { std::swap(m_file, m_partnerFile); }
    void start();
    // Also drops a next row already asked for but not yet told.
    void stop();
    bool isActive() const { return m_timer.isActive(); }
    // The player reported a time: the second at the end starts again once it rests there.
    void playerMoved() { m_preparing = false; }

signals:
    void recordingLost();
    // Told every second until the partner is no longer watched.
    void partnerLost();
    void endReached();

private:
    void look();

    const VLCMediaPlayer* m_player;
    QTimer m_timer;
    RecordingFileCheck m_file;
    RecordingFileCheck m_partnerFile;
    quint64 m_round = 0; // bumped by start and stop, so that an older second at the end is dropped
    bool m_preparing = false;
};

} // namespace kavro
