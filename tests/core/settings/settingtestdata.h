#pragma once

// Helpers shared by the tests of the settings record and of `kavro config`.

#include <QByteArray>
#include <QRandomGenerator>
#include <QtEndian>

namespace kavro::test {

// A settings record of random bytes: no field holds its default, so a test sees every byte that
// moves.
inline QByteArray randomRecordBytes(quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(428, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

// The checksum worked out byte by byte: the low byte of the XOR of the words after the first is
// the XOR of their first bytes, the high byte that of their second bytes.
inline quint16 byteWiseChecksum(const QByteArray& bytes)
{
    quint8 low = 0;
    quint8 high = 0;
    for (int offset = 4; offset + 1 < bytes.size(); offset += 4) {
        low ^= static_cast<quint8>(bytes[offset]);
        high ^= static_cast<quint8>(bytes[offset + 1]);
    }
    return static_cast<quint16>(low | high << 8);
}

inline bool checksumHolds(const QByteArray& bytes)
{
    return qFromLittleEndian<quint16>(bytes.constData() + 2) == byteWiseChecksum(bytes);
}

} // namespace kavro::test
