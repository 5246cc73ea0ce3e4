// SPDX-License-Identifier: BSD-3-Clause
#include "label/proof.h"

#include "items/core/safeimage.h"
#include "label/labellimits.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

/// Eight pixels of one byte each, in the order of memory.
using EightPixels = std::array<uchar, 8>;

/// For each byte of a plate, its eight dots as pixels of 0 or 1.
const std::array<quint64, 256> &spreadBytes()
{
    static const auto table = [] {
        std::array<quint64, 256> spread;
        for (unsigned int byte = 0; byte < spread.size(); ++byte) {
            EightPixels pixels;
            for (unsigned int dot = 0; dot < pixels.size(); ++dot)
                pixels[dot] = byte >> (7 - dot) & 1;
            std::memcpy(&spread[byte], pixels.data(), sizeof(pixels));
        }
        return spread;
    }();
    return table;
}

int multiplied(int left, int right)
{
    return (left * right + 127) / 255;
}

QRgb multiplied(QRgb left, QRgb right)
{
    return qRgb(multiplied(qRed(left), qRed(right)), multiplied(qGreen(left), qGreen(right)),
        multiplied(qBlue(left), qBlue(right)));
}

/// The colour of each set of inks: bit i stands for ink i.
QList<QRgb> colorsOf(const Separation &separation)
{
    QList<QRgb> colors { qRgb(255, 255, 255) };
    for (const Plate &plate : separation.plates) {
        const qsizetype without = colors.size();
        for (qsizetype set = 0; set < without; ++set)
            colors.append(multiplied(colors[set], plate.ink.color.rgb()));
    }
    colors[0] = separation.paper.rgb();
    return colors;
}

/// Adds a row of a plate to the pixels, eight at a time.
void addRow(std::vector<quint64> &pixels, const uchar *dots, unsigned int ink)
{
    const std::array<quint64, 256> &spread = spreadBytes();
    for (quint64 &eight : pixels)
        eight |= spread[*dots++] << ink;
}

} // namespace

QImage proofOf(const Separation &separation)
{
    const std::vector<Plate> &plates = separation.plates;
    if (plates.empty() || plates.size() > LabelLimits::MaxInks)
        return {};
    const QImage &first = plates.front().image;
    QImage proof = SafeImage::create(first.size(), QImage::Format_Indexed8);
    proof.setColorTable(colorsOf(separation));
    proof.setDotsPerMeterX(first.dotsPerMeterX());
    proof.setDotsPerMeterY(first.dotsPerMeterY());
    std::vector<quint64> pixels((std::size_t(proof.width()) + 7) / 8);
    for (int y = 0; y < proof.height(); ++y) {
        std::fill(pixels.begin(), pixels.end(), 0);
        for (std::size_t ink = 0; ink < plates.size(); ++ink)
            addRow(pixels, plates[ink].image.constScanLine(y), unsigned(ink));
        std::memcpy(proof.scanLine(y), pixels.data(), std::size_t(proof.width()));
    }
    return proof;
}
