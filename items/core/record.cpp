// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/record.h"

#include <QIODevice>
#include <QRgba64>

#include <cstring>

namespace Record {

namespace {

/// The stream's number for an RGB colour.
constexpr char rgbSpec = 1;

} // namespace

void Codec<QColor>::put(char *to, const QColor &value)
{
    const QRgba64 rgba = value.rgba64();
    if (value == QColor(rgba)) { // not so for any other kind of colour
        *to = rgbSpec;
        qToBigEndian(rgba.alpha(), to + 1);
        qToBigEndian(rgba.red(), to + 3);
        qToBigEndian(rgba.green(), to + 5);
        qToBigEndian(rgba.blue(), to + 7);
        qToBigEndian(quint16(0), to + 9);
        return;
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    std::memcpy(to, bytes.constData(), width);
}

bool Codec<QColor>::get(const char *from, QColor &value)
{
    const auto part = [from](int at) { return qFromBigEndian<quint16>(from + at); };
    if (*from != rgbSpec || part(9) != 0)
        return false;
    value = QColor(QRgba64::fromRgba64(part(3), part(5), part(7), part(1)));
    return true;
}

void readField(QDataStream &stream, QColor &value)
{
    if (stream.version() < QDataStream::Qt_4_0) {
        stream >> value;
        return;
    }
    qint8 spec;
    std::array<quint16, 5> parts;
    stream >> spec;
    for (quint16 &part : parts)
        stream >> part;
    value = QColor();
    if (spec < QColor::Invalid || spec > QColor::ExtendedRgb)
        return;
    QByteArray bytes;
    QDataStream known(&bytes, QIODevice::ReadWrite);
    known << spec;
    for (const quint16 part : parts)
        known << part;
    known.device()->seek(0);
    known >> value;
}

} // namespace Record
