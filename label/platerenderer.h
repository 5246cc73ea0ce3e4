// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QImage>
#include <QSize>

class QGraphicsScene;

/// Renders a print scene of black and white items, whose (0, 0) is the page's top left, into a plate of
/// QImage::Format_Mono. A page without items is of the colour background. At most bandPixels, but at least
/// one row, are in 32-bit colour at a time. A null image when memory runs out.
///
/// At the joint of two bands a dot here and there may differ from a page of a single band, on edges that are
/// slanted, round or exactly in the middle of a dot, since Qt rounds coordinates above an image the other
/// way; and so may the phase of fill patterns at a scaling below 1.
[[nodiscard]] VX_LABEL_EXPORT QImage renderPlate(
    QGraphicsScene &scene, QSize dots, double scaling, QRgb background, qint64 bandPixels);

/// The same for the part of a page that lies in a picture of 32 bits, from row top on, over what it shows.
void renderDots(QImage &part, int top, QGraphicsScene &scene, double scaling);
