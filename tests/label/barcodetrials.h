// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <QImage>
#include <QList>
#include <QString>

/// Barcodes on the plates of a label, in every way in which they are tried.
namespace BarcodeTrials {

/// What is printed.
struct Subject
{
    int symbol;
    QString text;
    bool hideText = false;
    double growth = 1.0; ///< of all sizes
};

/// How it is printed.
struct Trial
{
    double dpi;
    double units; ///< a module in units of 1/300 inch, before it grows
    int rotation; ///< in degrees
    bool mirrored;

    [[nodiscard]] QString name() const;
};

/// Every combination of resolution, size, rotation and mirror.
[[nodiscard]] QList<Trial> all();

/// The symbol as it comes out in one ink.
struct Print
{
    int rotation; ///< of the image, which is that of the item unless that is mirrored
    QImage image; ///< QImage::Format_Mono, with bare paper around the symbol; never mirrored
    PrintedBarcode barcode;
    QString warnings; ///< of the label; empty if there are none
    QString name; ///< for messages
};

/// Prints a label with the symbol in two inks side by side. Each print is its half of the ink's plate; that
/// the other half is bare is checked.
[[nodiscard]] QList<Print> printed(const Subject &subject, const Trial &trial);

/// The image turned by a multiple of 90 degrees.
[[nodiscard]] QImage turned(const QImage &image, int degrees);

} // namespace BarcodeTrials
