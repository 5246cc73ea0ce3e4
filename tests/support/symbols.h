// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/graphics/symbolitem.h"

#include <QByteArray>

/// Drawings of symbols.
namespace Symbols {

/// The root with which every loaded symbol begins.
inline const QByteArray root = "<svg fill=\"#000000\" stroke=\"none\" ";

/// 40 × 20: ink on the left half, paper on the right.
inline const QByteArray halves = root
    + "width=\"40\" height=\"20\"><rect width=\"20\" height=\"20\" fill=\"#000000\"/>"
      "<rect x=\"20\" width=\"20\" height=\"20\" style=\"fill:#FFFFFF\"/></svg>";

/// 40 × 20: the background, and ink on the left half.
inline const QByteArray onBackground = root
    + "width=\"40\" height=\"20\"><rect id=\"background_fix\" fill=\"#FFFFFF\" fill-opacity=\"0\" "
      "width=\"40\" "
      "height=\"20\"/><rect width=\"20\" height=\"20\"/></svg>";

/// 40 × 20: a gradient from ink to paper that breaks without a fill, because its opacity has two digits.
inline const QByteArray breakable = root
    + "width=\"40\" height=\"20\"><linearGradient id=\"a\"><stop offset=\"0\" stop-color=\"#FFFFFF\" "
      "stop-opacity=\"0.5\"/></linearGradient><rect width=\"40\" height=\"20\" fill=\"url(#a)\"/></svg>";

} // namespace Symbols
