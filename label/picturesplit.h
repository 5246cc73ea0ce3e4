// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/dither.h"
#include "label/vxlabelexport.h"

#include <QColor>
#include <QImage>
#include <QList>

/// What a picture puts on the plate of each ink, to be laid over what is there already: black prints, white
/// clears, and where nothing of the picture is, the image is transparent. What is translucent shows the
/// paper, not what lies below it: that would need dots of two items in one place. None for what
/// splitIntoInks() refuses, and when memory runs out.
[[nodiscard]] VX_LABEL_EXPORT QList<QImage> splitForPlates(
    const QImage &picture, const QList<QColor> &inks, const QColor &paper, Dither dither);
