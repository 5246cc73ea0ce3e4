// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

/// The colours with a meaning of their own. Comparisons with them are exact: a colour of another
/// specification (HSV, CMYK) never equals them, so print colours and item colours are RGB.
namespace ItemColors {

inline const QString transparentName = QStringLiteral("transparent");
inline const QColor transparent = Qt::transparent;
inline const QColor white = Qt::white;
inline const QColor black = Qt::black;
/// Looks white and is not the paper: a fill of this colour loses its brush in print.
inline const QColor nearWhite = QColor(0xFF, 0xFF, 0xFE);

inline constexpr QRgb transparentRgb = 0x00000000U;
inline constexpr QRgb whiteRgb = 0xFFFFFFFFU;
inline constexpr QRgb blackRgb = 0xFF000000U;

} // namespace ItemColors
