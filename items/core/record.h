// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>
#include <QColor>
#include <QDataStream>
#include <QtEndian>

#include <array>
#include <bit>
#include <concepts>
#include <tuple>
#include <type_traits>

/// Writing and reading the fixed-width fields of a record in one go. The bytes are those of the stream's own
/// operators, field by field; a stream of the usual kind (big-endian, double precision) gets them in one
/// write, which is several times faster.
namespace Record {

// One field: its width in the record, and its big-endian bytes.
template <typename Field> struct Codec;

/// A number, by its bits.
template <typename Field, std::unsigned_integral Bits> struct NumberCodec
{
    static constexpr int width = sizeof(Field);
    static void put(char *to, Field value) { qToBigEndian(std::bit_cast<Bits>(value), to); }
    static bool get(const char *from, Field &value)
    {
        value = std::bit_cast<Field>(qFromBigEndian<Bits>(from));
        return true;
    }
};

template <std::integral Field> struct Codec<Field> : NumberCodec<Field, std::make_unsigned_t<Field>>
{
};

template <> struct Codec<double> : NumberCodec<double, quint64>
{
};

template <> struct Codec<bool>
{
    static constexpr int width = 1;
    static void put(char *to, bool value) { *to = value ? 1 : 0; }
    static bool get(const char *from, bool &value)
    {
        value = *from != 0;
        return true;
    }
};

/// Only plain RGB colours have a short way; the others go through Qt's own operator.
template <> struct Codec<QColor>
{
    static constexpr int width = 11;
    VX_EXPORT static void put(char *to, const QColor &value);
    VX_EXPORT static bool get(const char *from, QColor &value);
};

template <typename... Fields> inline constexpr int width = (0 + ... + Codec<Fields>::width);

/// Whether the stream's operators would write exactly what the codecs do.
inline bool isPlain(const QDataStream &stream)
{
    return stream.byteOrder() == QDataStream::BigEndian
        && stream.floatingPointPrecision() == QDataStream::DoublePrecision
        && stream.version() >= QDataStream::Qt_4_6;
}

/// Appends the fields to the stream.
template <typename... Fields> void write(QDataStream &stream, const Fields &...fields)
{
    if (!isPlain(stream)) {
        (stream << ... << fields);
        return;
    }
    std::array<char, width<Fields...>> bytes;
    char *to = bytes.data();
    ((Codec<Fields>::put(to, fields), to += Codec<Fields>::width), ...);
    stream.writeRawData(bytes.data(), int(bytes.size()));
}

/// One field by the stream's own operator.
template <typename Field> void readField(QDataStream &stream, Field &value)
{
    stream >> value;
}

/// The same, except that a kind of colour that Qt does not know becomes an invalid colour: Qt keeps its
/// number, and asking such a colour for anything is undefined.
VX_EXPORT void readField(QDataStream &stream, QColor &value);

/// Reads the fields, a tuple of references, from the stream. Fields that a short or failed stream does not
/// hold become 0, false or an invalid colour, as with the operators.
template <typename... Fields> void read(QDataStream &stream, std::tuple<Fields &...> fields)
{
    const auto byOperators = [&fields](QDataStream &from) {
        std::apply([&from](Fields &...field) { (readField(from, field), ...); }, fields);
    };
    if (!isPlain(stream)) {
        byOperators(stream);
        return;
    }
    std::array<char, width<Fields...>> bytes;
    const int count = stream.readRawData(bytes.data(), int(bytes.size()));
    const char *from = bytes.data();
    const auto take = [&from]<typename Field>(Field &field) {
        const bool taken = Codec<Field>::get(from, field);
        from += Codec<Field>::width;
        return taken;
    };
    const auto takeAll = [&take](Fields &...field) { return (take(field) && ...); };
    if (count == int(bytes.size()) && std::apply(takeAll, fields))
        return;
    // A cut record or an unusual colour: the operators decide what each field becomes.
    QDataStream rest(QByteArray::fromRawData(bytes.data(), qMax(count, 0)));
    rest.setVersion(stream.version());
    byOperators(rest);
}

} // namespace Record
