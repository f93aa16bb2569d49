#pragma once

#include <QByteArray>

class QIODevice;

namespace kavro::camsim {

struct EncodedFrame
{
    QByteArray data; // one access unit, NAL units with four-byte start codes
    bool keyFrame = false;
};

// Reads an H.264 Annex B stream whose access units each begin with a delimiter, one access unit
// at a time, holding no more of the stream than it needs. The delimiters and the encoder's
// banner (a user-data SEI) are dropped: a camera writes neither.
class AccessUnitReader
{
public:
    explicit AccessUnitReader(QIODevice& device);

    // The next access unit; false at the end of the stream.
    bool next(EncodedFrame& frame);

private:
    bool nextNal(QByteArray& nal);
    qsizetype findStartCode(qsizetype from) const; // index of the first 00 00 01, or -1
    bool fill();

    QIODevice& m_device;
    QByteArray m_buffer;
    qsizetype m_position = 0;
    bool m_atEnd = false;
    EncodedFrame m_current;
    bool m_inFrame = false;
};

} // namespace kavro::camsim
