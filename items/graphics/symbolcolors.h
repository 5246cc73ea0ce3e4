// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>
#include <QColor>

/// The two colours of a symbol, exchanged in the text of its drawing. A symbol is drawn with #000000 for ink
/// and \#FFFFFF for paper, as attributes or in styles, in capitals; no other writing of a colour is touched.
///
/// Everything here takes time proportional to the text, whatever it holds.
namespace SymbolColors {

/// What takes the place of black and, with a fill, of white. Without a fill white becomes "none".
struct Inks
{
    QByteArray pen;
    QByteArray fill;
    bool hasFill = false;
};

/// "#RRGGBB" in capitals; the alpha is dropped, and an invalid colour is black.
[[nodiscard]] VX_EXPORT QByteArray textOf(const QColor &color);
/// The inks of two colours. Qt::transparent alone is no fill: what else does not show is a colour too.
[[nodiscard]] VX_EXPORT Inks inksOf(const QColor &pen, const QColor &fill);

/// Lets every root begin with fill black and stroke none, whichever of the known pairs it began with.
[[nodiscard]] VX_EXPORT QByteArray withNormalRoots(const QByteArray &svg);
/// Writes white in small letters in capitals.
[[nodiscard]] VX_EXPORT QByteArray withCapitalWhite(const QByteArray &svg);

/// Whether the drawing carries a rectangle of its own for the background.
[[nodiscard]] VX_EXPORT bool hasBackground(const QByteArray &svg);
/// Makes the first fill of opacity 0 opaque: that of the background. The reverse does the opposite.
[[nodiscard]] VX_EXPORT QByteArray withOpaqueBackground(const QByteArray &svg);
[[nodiscard]] VX_EXPORT QByteArray withClearBackground(const QByteArray &svg);
/// Takes the background rectangle out, except for its last ">", which remains as text that nothing shows. A
/// rectangle that does not begin, or does not end, stays.
[[nodiscard]] VX_EXPORT QByteArray withoutBackground(const QByteArray &svg);

/// Gives gradient stops of the colour "none", which no gradient may have, white with opacity 0. An opacity
/// of another length than one digit is overwritten as if it had one.
[[nodiscard]] VX_EXPORT QByteArray withFixedStops(const QByteArray &svg);

/// Exchanges black and white for the inks, at once: a white pen and a black fill swap them. What the text
/// holds of the placeholder \#MMMMMM takes the pen. Empty if the result were larger than a drawing may be.
[[nodiscard]] VX_EXPORT QByteArray colored(const QByteArray &svg, const Inks &inks);
/// Turns the inks back into black and white. Where both inks are the same, all of it becomes black.
[[nodiscard]] VX_EXPORT QByteArray uncolored(const QByteArray &svg, const Inks &inks);

} // namespace SymbolColors
