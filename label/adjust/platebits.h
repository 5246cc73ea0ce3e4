// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QImage>
#include <QPoint>

/// Plates (QImage::Format_Mono, of which 1 prints), changed dot by dot. Each result is a null image when
/// memory runs out, or for one.
namespace PlateBits {

/// Turned clockwise by a number of right angles.
[[nodiscard]] VX_LABEL_EXPORT QImage turned(const QImage &plate, int rightAngles);
/// With left and right exchanged.
[[nodiscard]] VX_LABEL_EXPORT QImage mirrored(const QImage &plate);
/// On a plate of another size, with its top left at a dot that may lie beyond it. Where there was no dot,
/// those of the new one print if fill is set.
[[nodiscard]] VX_LABEL_EXPORT QImage placed(const QImage &plate, QSize size, QPoint topLeft, bool fill);

/// Lets a plate print what another one of its size prints, too.
VX_LABEL_EXPORT void add(QImage &plate, const QImage &other);
/// Lets a plate print nothing where another one of its size does.
VX_LABEL_EXPORT void clear(QImage &plate, const QImage &other);

} // namespace PlateBits
