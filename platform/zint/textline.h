// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace Zint {

struct BarcodeStyle;
struct EncodedSymbol;

/// The human-readable line of a symbol: one line along the upper or lower edge of the symbol's rectangle.
class TextLine
{
public:
    /// The tallest font in units. Glyphs of any size are clipped by what they are painted on, but not their
    /// outlines.
    static constexpr int MaxPixelSize = 10'000;

    /// Lays the line out, in a smaller font if it would be wider than the rectangle. It is empty when the
    /// symbol has no text or it is to be hidden, when the font has no size, and when it would leave no room
    /// for the symbol.
    TextLine(const EncodedSymbol &symbol, const BarcodeStyle &style, const QRectF &rect);

    /// Gives the letters hard edges.
    void sharpen() { m_font.setStyleStrategy(QFont::NoAntialias); }

    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    /// What the line leaves of the rectangle.
    [[nodiscard]] QRectF rest() const { return m_rest; }
    /// Draws the line in the painter's pen.
    void paint(QPainter &painter) const;

private:
    QString m_text;
    QFont m_font;
    QPointF m_baseline; ///< its left end
    QRectF m_rest;
};

} // namespace Zint
