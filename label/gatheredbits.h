// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtEndian>

/// Eight bytes of 0 or 1 as the bits of one byte, the first one highest. Each set bit of the factor moves one
/// of the bytes to its place in the highest byte of the product; no two land on the same bit.
inline uchar gatheredBits(quint64 flags)
{
    constexpr quint64 gather = 0x8040201008040201U;
    return uchar((flags * gather) >> 56);
}

inline uchar gatheredBits(const uchar *flags)
{
    return gatheredBits(qFromLittleEndian<quint64>(flags));
}

/// A bit for each of eight numbers, the first one highest: whether it is this one. None is above 31.
inline uchar equalBits(const uchar *numbers, quint64 number)
{
    constexpr quint64 ones = 0x0101010101010101U;
    // 32 less the difference keeps its sixth bit only where there is none.
    return gatheredBits(((ones * 32 - (qFromLittleEndian<quint64>(numbers) ^ (ones * number))) >> 5) & ones);
}
