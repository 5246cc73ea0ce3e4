// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/dither.h"
#include "label/labeldocument.h"

#include <QImage>
#include <QRectF>
#include <QStringList>

#include <optional>
#include <vector>

/// How a document is separated.
struct SeparationOptions
{
    /// Output resolution in dots per inch.
    double dpi = 300.0;
    /// White on black: on the plate of an ink everything prints except what has the ink's colour.
    bool negative = false;
    /// Lets inks print over each other: what does not print in an ink, and allows overprint, no longer clears
    /// the dots below it on that ink's plate.
    bool overprint = false;
    /// How pictures become dots; as the document says if not given.
    std::optional<Dither> dither = {};
    /// The names or numbers of the layers whose items are printed, and nothing else; everything if empty.
    QStringList layers = {};
};

/// The dots of one ink.
struct Plate
{
    Ink ink;
    QImage image; ///< QImage::Format_Mono; 1 (black) prints; dots per metre set
    qint64 dots = 0; ///< how many print
    [[nodiscard]] VX_LABEL_EXPORT double coverage() const; ///< percent of the page
    [[nodiscard]] VX_LABEL_EXPORT double area() const; ///< square millimetres
    double dpi = 300.0;
};

/// How a barcode comes out on the plates.
struct PrintedBarcode
{
    qsizetype item = 0; ///< its place among all items that are printed, those of groups and layers included
    QString where; ///< its JSON pointer
    QString name; ///< for people
    QString symbology; ///< "QR Code"; empty for a number of none
    int error = 0; ///< the encoder's; up to 4 it is a warning
    QString message; ///< the encoder's own words about that, if it has any
    QRectF place; ///< of the symbol in the item, in its units, with white space; empty if none is printed
    QSizeF modules; ///< how many the symbol is wide and high, with white space; empty if none is printed
    QSizeF dots; ///< how many dots each is wide and high
    bool squareModules = false; ///< of bars, only the width counts
    bool sharp = false; ///< whether all modules have the same whole number of dots
    double lowestBar = 0.0; ///< in dots; of several rows, that of the lowest
    double moduleWidth = 0.0; ///< the X dimension in millimetres

    /// Whether the encoder leaves no symbol.
    [[nodiscard]] bool isRefused() const { return error >= 5; }
};

/// A document split into one plate per ink, in the order of its inks. Without overprint a dot belongs to at
/// most one plate.
struct Separation
{
    std::vector<Plate> plates;
    QColor paper;
    /// Colours that no ink prints, item by item: a person should know before the label is printed.
    /// So are barcodes that will not scan.
    Problems warnings;
    std::vector<PrintedBarcode> barcodes; ///< of the visible items, in their order
};

/// Renders copies of the visible items, each reduced to one ink at a time, without antialiasing; the document
/// stays as it is. Nothing, with the reasons in problems, when the document has problems() or the page has
/// too many dots at this resolution (the problem names the highest resolution that fits).
[[nodiscard]] VX_LABEL_EXPORT std::optional<Separation> separate(
    const LabelDocument &document, const SeparationOptions &options, Problems &problems);
