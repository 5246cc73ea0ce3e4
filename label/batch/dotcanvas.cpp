// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/dotcanvas.h"

#include "label/gatheredbits.h"
#include "label/onebit.h"
#include "label/platerenderer.h"
#include "label/printcopy.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// How many pixels are looked at together: nothing is painted in most of them.
constexpr std::size_t group = 64;

bool areClear(const QRgb *pixels)
{
    QRgb all = 0;
    for (std::size_t i = 0; i < group; ++i)
        all |= pixels[i];
    return all == 0;
}

/// A byte of 0 or 1 for each pixel of a group. The loops that fill them have no branches, so that compilers
/// do many pixels at a time.
using Flags = std::array<uchar, group>;

Flags lightOf(const QRgb *pixels)
{
    Flags light;
    for (std::size_t i = 0; i < group; ++i)
        light[i] = OneBit::isLight(pixels[i]);
    return light;
}

/// The highest bits of the channels of eight pixels: a byte for each channel, in which the first pixel has
/// the highest bit.
QRgb highBitsOf(const QRgb *eight)
{
    QRgb bits = 0;
    for (int i = 0; i < 8; ++i)
        bits |= (eight[i] & 0x80808080U) >> i;
    return bits;
}

/// A bit for each of eight pixels that is painted in a number.
uchar numberedBits(QRgb high, QRgb number)
{
    const QRgb wanted = (PrintCopy::numbered(number) & PrintCopy::numberBits) / 0x80 * 0xFF;
    const QRgb others = high ^ wanted;
    return uchar(qAlpha(high) & ~(qRed(others) | qGreen(others) | qBlue(others)));
}

/// Whether each pixel is clear or opaque.
bool arePlain(const QRgb *pixels)
{
    QRgb others = 0;
    // Of an alpha of 0 or 255 and one more, only the lowest bit is left.
    for (std::size_t i = 0; i < group; ++i)
        others |= (pixels[i] + 0x01000000U) & 0xFE000000U;
    return others == 0;
}

/// Whether each pixel is clear or has a number.
bool areNumbers(const QRgb *pixels)
{
    QRgb others = 0;
    for (std::size_t i = 0; i < group; ++i) {
        const QRgb opaque = QRgb(int(pixels[i]) >> 31);
        others |= (pixels[i] & ~PrintCopy::numberBits) ^ (opaque & PrintCopy::numbered(0));
    }
    return others == 0;
}

void putOn(uchar &bits, uchar covered, uchar black)
{
    bits = uchar((bits & ~covered) | black);
}

/// All dots that an item may paint on. Items are seldom outside their bounds, but only what clips itself is
/// never.
QRect dotsOf(const QGraphicsItem &item, double scaling, const QRect &page)
{
    if (!(item.flags() & QGraphicsItem::ItemClipsToShape))
        return page;
    const QRectF bounds = item.sceneTransform().mapRect(item.shape().boundingRect());
    const QRectF dots(bounds.topLeft() * scaling, bounds.size() * scaling);
    return dots.toAlignedRect().adjusted(-2, -2, 2, 2) & page;
}

} // namespace

DotCanvas::DotCanvas(QSize dots)
    : m_rowPixels((std::size_t(dots.width()) + group - 1) / group * group)
{
    m_pixels.resize(m_rowPixels * std::size_t(dots.height()));
    m_page = QImage(reinterpret_cast<uchar *>(m_pixels.data()), dots.width(), dots.height(),
        qsizetype(m_rowPixels * sizeof(QRgb)), QImage::Format_ARGB32_Premultiplied);
}

void DotCanvas::paint(QGraphicsScene &scene, double scaling)
{
    renderDots(m_page, 0, scene, scaling);
    const QRect page = m_page.rect();
    for (const QGraphicsItem *item : scene.items())
        m_painted.push_back(dotsOf(*item, scaling, page));
    if (std::ranges::find(m_painted, page) != m_painted.end())
        m_painted = { page };
}

/// Calls take(pixels of a group, place of its first byte among bits of that size, how many of its bytes there
/// are) for what may be painted, and clears it.
template <typename Take> void DotCanvas::takeGroups(QSize size, Take take)
{
    const std::size_t bytes = (std::size_t(size.width()) + 7) / 8;
    const std::size_t stride = (bytes + 3) / 4 * 4;
    for (const QRect &part : std::exchange(m_painted, {})) {
        const std::size_t left = std::size_t(part.left()) / group * group;
        const std::size_t right = std::size_t(part.right()) + 1;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            QRgb *row = &m_pixels[std::size_t(y) * m_rowPixels];
            std::size_t clearFrom = right;
            std::size_t clearTo = left;
            for (std::size_t x = left; x < right; x += group) {
                if (areClear(row + x))
                    continue;
                take(row + x, std::size_t(y) * stride + x / 8, std::min(group / 8, bytes - x / 8));
                clearFrom = std::min(clearFrom, x);
                clearTo = x + group;
            }
            if (clearFrom < clearTo)
                std::fill(row + clearFrom, row + clearTo, 0);
        }
    }
}

bool DotCanvas::moveTo(QImage &plate, const QImage &taken)
{
    uchar *bits = plate.bits();
    const uchar *takenBits = taken.constBits();
    bool isApart = true;
    takeGroups(plate.size(), [&](const QRgb *pixels, std::size_t at, std::size_t bytes) {
        const Flags light = lightOf(pixels);
        isApart = isApart && arePlain(pixels);
        for (std::size_t i = 0; i < bytes; ++i) {
            const auto cover = uchar(qAlpha(highBitsOf(pixels + i * 8)));
            isApart = isApart && (cover & takenBits[at + i]) == 0;
            putOn(bits[at + i], cover, cover & ~gatheredBits(&light[i * 8]));
        }
    });
    return isApart;
}

bool DotCanvas::moveNumbersTo(std::vector<Plate> &plates, const QImage &taken)
{
    std::vector<uchar *> bits;
    bits.reserve(plates.size());
    for (Plate &plate : plates)
        bits.push_back(plate.image.bits());
    const uchar *takenBits = taken.constBits();
    bool isApart = true;
    takeGroups(taken.size(), [&](const QRgb *pixels, std::size_t at, std::size_t bytes) {
        isApart = isApart && areNumbers(pixels);
        for (std::size_t i = 0; i < bytes; ++i) {
            const QRgb high = highBitsOf(pixels + i * 8);
            const auto cover = uchar(qAlpha(high));
            isApart = isApart && (cover & takenBits[at + i]) == 0;
            for (QRgb ink = 0; ink < bits.size(); ++ink)
                putOn(bits[ink][at + i], cover, numberedBits(high, ink + 1));
        }
    });
    return isApart;
}

void DotCanvas::moveCoverTo(QImage &bits)
{
    uchar *all = bits.bits();
    takeGroups(bits.size(), [&](const QRgb *pixels, std::size_t at, std::size_t bytes) {
        Flags touched;
        for (std::size_t i = 0; i < group; ++i)
            touched[i] = pixels[i] != 0;
        for (std::size_t i = 0; i < bytes; ++i)
            all[at + i] |= gatheredBits(&touched[i * 8]);
    });
}
