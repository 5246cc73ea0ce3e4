// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tests/support/rawsymbols.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <vector>

/// Symbols as libzint itself draws them.
namespace BarcodeRasters {

/// A symbol encoded with the options of a new item. The bars of one with several rows are 50 modules high in
/// all.
[[nodiscard]] RawSymbols::Symbol encoded(int symbol, const QString &text);

/// A symbol in black on white with so many pixels to a module, without text and free space around it.
[[nodiscard]] QImage rasterOf(int symbol, const QString &text, int pixelsPerModule);

/// What a symbol looks like from top to bottom, from its first dark module to its last in both directions.
struct Bands
{
    struct Band
    {
        QByteArray modules; ///< from the left: 0 is dark
        double top; ///< from 0 at the top of the symbol to 1 at its bottom
    };

    std::vector<Band> bands;
    bool areDots = false; ///< round modules, of which only the middle is dark for certain
};

[[nodiscard]] Bands bandsOf(int symbol, const QString &text);

/// Nothing when the upright image of QImage::Format_Mono has the modules of the bands, each so many dots
/// wide; otherwise the first difference in words.
[[nodiscard]] QString difference(const QImage &image, const Bands &symbol, int dotsPerModule);

} // namespace BarcodeRasters
