// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/platebits.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"

#include <QtEndian>

#include <algorithm>
#include <array>

namespace {

/// An empty plate of another size.
QImage blankOf(const QImage &plate, QSize size)
{
    QImage blank = plate.isNull() ? QImage() : SafeImage::create(size, QImage::Format_Mono);
    if (blank.isNull())
        return {};
    blank.setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    blank.setDotsPerMeterX(plate.dotsPerMeterX());
    blank.setDotsPerMeterY(plate.dotsPerMeterY());
    blank.fill(0);
    return blank;
}

/// The bits of a byte as eight bytes of 0 or 1, in the order of memory from the highest on.
quint64 spread(uchar bits)
{
    constexpr quint64 each = 0x0101010101010101U;
    constexpr quint64 oneOfEach = 0x0102040810204080U; // the highest in the first byte
    return (((bits * each & oneOfEach) + 0x7FU * each) >> 7) & each;
}

/// A square of 8 x 8 dots, one byte for each column from the left, whose highest bit is the top.
std::array<uchar, 8> columnsOf(const std::array<uchar, 8> &rows)
{
    quint64 columns = 0;
    for (int row = 0; row < 8; ++row)
        columns |= spread(rows[std::size_t(row)]) << (7 - row);
    std::array<uchar, 8> bytes;
    qToLittleEndian(columns, bytes.data());
    return bytes;
}

QImage turnedOnce(const QImage &plate)
{
    QImage turned = blankOf(plate, plate.size().transposed());
    if (turned.isNull())
        return {};
    // The lowest row becomes the first column.
    for (int from = plate.height() - 1; from >= 0; from -= 8) {
        const int byte = (plate.height() - 1 - from) / 8;
        for (int left = 0; left < plate.width(); left += 8) {
            std::array<uchar, 8> rows {};
            for (int i = 0; i < std::min(8, from + 1); ++i)
                rows[std::size_t(i)] = plate.constScanLine(from - i)[left / 8];
            const std::array<uchar, 8> columns = columnsOf(rows);
            for (int i = 0; i < std::min(8, plate.width() - left); ++i)
                turned.scanLine(left + i)[byte] = columns[std::size_t(i)];
        }
    }
    return turned;
}

/// A row of a plate without ends: beyond it, all dots are those of fill.
class EndlessRow
{
public:
    EndlessRow(const uchar *bits, int width, uchar fill)
        : m_bits(bits)
        , m_bytes(width / 8)
        , m_rest(uchar(0xFF << (8 - width % 8)))
        , m_fill(fill)
    {
    }

    /// Eight dots from one on.
    [[nodiscard]] uchar dotsFrom(int first) const
    {
        const int byte = first >> 3;
        const unsigned int two = unsigned(byteAt(byte)) << 8 | byteAt(byte + 1);
        return uchar(two >> (8 - (first & 7)));
    }

private:
    [[nodiscard]] uchar byteAt(int byte) const
    {
        if (byte < 0 || byte > m_bytes)
            return m_fill;
        if (byte < m_bytes)
            return m_bits[byte];
        return m_rest == 0 ? m_fill : uchar((m_bits[byte] & m_rest) | (m_fill & ~m_rest));
    }

    const uchar *m_bits;
    int m_bytes; ///< that are whole
    uchar m_rest; ///< the bits of the last one that are dots
    uchar m_fill;
};

template <typename Change> void changeBytes(QImage &plate, const QImage &other, Change &&change)
{
    const qsizetype bytes = std::min(plate.bytesPerLine(), other.bytesPerLine());
    for (int y = 0; y < std::min(plate.height(), other.height()); ++y) {
        uchar *to = plate.scanLine(y);
        const uchar *from = other.constScanLine(y);
        for (qsizetype i = 0; i < bytes; ++i)
            to[i] = change(to[i], from[i]);
    }
}

} // namespace

QImage PlateBits::turned(const QImage &plate, int rightAngles)
{
    const QImage half = rightAngles & 2 ? plate.mirrored(true, true) : plate;
    return rightAngles & 1 ? turnedOnce(half) : half;
}

QImage PlateBits::mirrored(const QImage &plate)
{
    return plate.mirrored(true, false);
}

QImage PlateBits::placed(const QImage &plate, QSize size, QPoint topLeft, bool fill)
{
    QImage placed = blankOf(plate, size);
    if (fill && !placed.isNull())
        placed.fill(1);
    const int first = std::max(0, topLeft.y());
    const int end = std::min(placed.height(), topLeft.y() + plate.height());
    for (int y = first; y < end; ++y) {
        const EndlessRow row(plate.constScanLine(y - topLeft.y()), plate.width(), fill ? 0xFF : 0x00);
        uchar *dots = placed.scanLine(y);
        for (int x = 0; x < placed.width(); x += 8)
            dots[x / 8] = row.dotsFrom(x - topLeft.x());
    }
    return placed;
}

void PlateBits::add(QImage &plate, const QImage &other)
{
    changeBytes(plate, other, [](uchar dots, uchar more) { return uchar(dots | more); });
}

void PlateBits::clear(QImage &plate, const QImage &other)
{
    changeBytes(plate, other, [](uchar dots, uchar fewer) { return uchar(dots & ~fewer); });
}
