// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QImage>

#include <vector>

/// A rendering of one ink: opaque black where it prints, fully transparent where nothing is.
struct InkLayer
{
    QImage image; ///< Format_ARGB32_Premultiplied
    QRgb ink;
};

/// Fills out, of Format_ARGB32_Premultiplied, with the layers in their inks; all images are of the same size.
/// A later layer covers an earlier one where it prints. Where the first layer holds anything but black, the
/// paper shows; what no layer covers is transparent.
VX_EXPORT void recombineInkLayers(QImage &out, const std::vector<InkLayer> &layers, QRgb paper);
