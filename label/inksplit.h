// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/dither.h"
#include "label/vxlabelexport.h"

#include <QColor>
#include <QImage>
#include <QList>

#include <vector>

/// Splits a picture into the dots of up to eight inks: an image of QImage::Format_Mono for each, 1 (black)
/// prints. A dot belongs to one ink or to the paper. Translucent pixels show the paper through; colours that
/// no mixture of the inks makes become the nearest that one makes. Areas of exactly the colour of an ink, or
/// of the paper, are solid. Of equal inks only the first prints, and none of the paper's colour does.
///
/// The same picture gives the same dots on every machine. Besides the result, it takes memory for a few rows,
/// and for the whole picture in 32 bits unless it has a format of these. Nothing, if the picture is
/// null or beyond the limits of an image, if there are no inks or more than eight, or when memory runs out.
[[nodiscard]] VX_LABEL_EXPORT std::vector<QImage> splitIntoInks(
    const QImage &picture, const QList<QColor> &inks, const QColor &paper, Dither dither);
