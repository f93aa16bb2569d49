#include "accessunitreader.h"

#include <QIODevice>

#include <algorithm>
#include <utility>

namespace kavro::camsim {

namespace {

constexpr qint64 ReadBlock = 1 << 20;

enum NalType
{
    NalIdr = 5,
    NalSei = 6,
    NalAccessUnitDelimiter = 9,
};

const QByteArray StartCode("\0\0\0\1", 4);

} // namespace

AccessUnitReader::AccessUnitReader(QIODevice& device) : m_device(device) {}

bool AccessUnitReader::fill()
{
    if (m_atEnd)
        return false;
    // Drop what has been consumed before growing the buffer.
    m_buffer.remove(0, m_position);
    m_position = 0;
    const QByteArray more = m_device.read(ReadBlock);
    if (more.isEmpty()) {
        m_atEnd = true;
        return false;
    }
    m_buffer += more;
    return true;
}

qsizetype AccessUnitReader::findStartCode(qsizetype from) const
{
    return m_buffer.indexOf(QByteArrayView("\0\0\1", 3), from);
}

bool AccessUnitReader::nextNal(QByteArray& nal)
{
    qsizetype begin = -1;
    while ((begin = findStartCode(m_position)) < 0) {
        // Keep the last two bytes: they may be the start of a start code.
        m_position = std::max(m_position, m_buffer.size() - 2);
        if (!fill())
            return false;
    }
    begin += 3;
    qsizetype end = -1;
    while ((end = findStartCode(begin)) < 0) {
        // fill() moves the unread bytes to the front of the buffer.
        const qsizetype offset = begin - m_position;
        const bool more = fill();
        begin = m_position + offset;
        if (!more) {
            end = m_buffer.size();
            break;
        }
    }
    m_position = end;
    // Zeros before the next start code belong to it (four-byte form) or are padding.
    while (end > begin && m_buffer.at(end - 1) == '\0')
        --end;
    nal = m_buffer.mid(begin, end - begin);
    return true;
}

bool AccessUnitReader::next(EncodedFrame& frame)
{
    QByteArray nal;
    while (nextNal(nal)) {
        if (nal.isEmpty())
            continue;
        const int type = static_cast<unsigned char>(nal.at(0)) & 0x1f;
        if (type == NalAccessUnitDelimiter) {
            const bool complete = m_inFrame && !m_current.data.isEmpty();
            if (complete)
                frame = std::exchange(m_current, EncodedFrame());
            m_inFrame = true;
            if (complete)
                return true;
            continue;
        }
        if (type == NalSei || !m_inFrame)
            continue;
        m_current.data += StartCode + nal;
        if (type == NalIdr)
            m_current.keyFrame = true;
    }
    if (m_inFrame && !m_current.data.isEmpty()) {
        frame = std::exchange(m_current, EncodedFrame());
        m_inFrame = false;
        return true;
    }
    return false;
}

} // namespace kavro::camsim
