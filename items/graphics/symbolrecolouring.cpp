// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/itemcolors.h"
#include "items/graphics/symbolcolors.h"
#include "items/graphics/symbolitem.h"

void SymbolItem::setOriginal(const QByteArray &svg)
{
    m_original = SymbolColors::withCapitalWhite(SymbolColors::withNormalRoots(svg));
    m_fillBoundingRectangle = SymbolColors::hasBackground(m_original);
}

void SymbolItem::replacePenFillColors(QByteArray &svg, const QColor &pen, const QColor &fill) const
{
    const SymbolColors::Inks inks = SymbolColors::inksOf(pen, fill);
    if (m_fillBoundingRectangle)
        svg = inks.hasFill ? SymbolColors::withOpaqueBackground(svg) : SymbolColors::withoutBackground(svg);
    svg = SymbolColors::colored(svg, inks);
}

void SymbolItem::replacePenFillColors(const QColor &pen, const QColor &fill, bool normaliseRoot)
{
    if (normaliseRoot) {
        m_original = SymbolColors::withNormalRoots(m_original);
        m_contents = m_original;
        replacePenFillColors(m_contents, pen, fill);
        m_shownWithFill.reset();
        return;
    }
    if (m_original.isEmpty() && m_contents.isEmpty())
        return;
    recolor(pen, fill);
    update();
}

void SymbolItem::recolor(const QColor &pen, const QColor &fill)
{
    m_contents = m_original;
    replacePenFillColors(m_contents, pen, fill);
    const bool hasFill = fill != ItemColors::transparent;
    if (canWait(hasFill))
        m_drawing.loadWhenSeen(m_contents, boundingRect());
    else
        showRecolored(hasFill);
}

bool SymbolItem::canWait(bool hasFill) const
{
    // The same drawing in other colours is as large, and as sound, as the last one: except that colours look
    // like references to parts of a drawing, and that a text may show their letters.
    return m_shownWithFill == hasFill && !m_original.contains("href") && !m_original.contains("<!ENTITY")
        && !m_original.contains("text");
}

void SymbolItem::showRecolored(bool hasFill)
{
    const QRectF before = boundingRect();
    const QSizeF frame = getItemSize();
    m_shownWithFill = hasFill;
    const bool shown = m_drawing.load(m_contents);
    if (!shown)
        showEmpty();
    if (!shown || boundingRect() != before)
        setItemSizeOnUpdate(frame);
}

void SymbolItem::restorePenFillColorsAndOpaque(const QColor &pen, const QColor &fill, bool hasFill)
{
    SymbolColors::Inks inks = SymbolColors::inksOf(pen, fill);
    inks.hasFill = hasFill;
    m_original = SymbolColors::uncolored(m_contents, inks);
    m_shownWithFill.reset();
}

void SymbolItem::fixTransparentStops(QByteArray &svg)
{
    svg = SymbolColors::withFixedStops(svg);
}

void SymbolItem::setItemPenColor(const QColor &color)
{
    if (color == getItemPenColor())
        return;
    setColors(color, m_fillColor);
}

void SymbolItem::setItemFillColor(const QColor &color)
{
    if (color == m_fillColor)
        return;
    setColors(getItemPenColor(), color);
}

void SymbolItem::setItemPenFillColorPrePrint(QColor pen, QColor fill)
{
    if (pen == getItemPenColor() && fill == m_fillColor)
        return;
    setColors(pen, fill);
}

void SymbolItem::setItemPenColorString(const QString &newPenColor)
{
    setItemPenColor(QColor::fromString(newPenColor));
}

void SymbolItem::setItemFillColorString(const QString &newFillColor)
{
    setItemFillColor(newFillColor == ItemColors::transparentName ? ItemColors::transparent
                                                                 : QColor::fromString(newFillColor));
}

void SymbolItem::setColors(const QColor &pen, const QColor &fill)
{
    storePenColor(pen);
    m_fillColor = fill;
    // A map holds the drawing too, and its geometry is for that.
    if (!m_loadingMap)
        replacePenFillColors(pen, fill, false);
}

bool SymbolItem::reduce(const Reduction &reduction)
{
    setColors(reduction.pen, reduction.fill);
    setItemFlags(MobraTypes::FlagVisibleInPrint, reduction.printed);
    return reduction.printed;
}

bool SymbolItem::resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers)
{
    using namespace ItemColors;
    const QColor pen = getItemPenColor();
    const QColor fill = m_fillColor;
    const bool penHasInk = pen == printColor;
    const bool fillHasInk = fill == printColor;
    const bool keep = keepBlack && (penHasInk || keepOthers || fillHasInk);
    const bool penPrints = penHasInk || (keep && pen == black);
    const bool fillPrints = fillHasInk || (keep && fill == black);
    if (penPrints && fill == transparent)
        return reduce({ black, transparent, true });
    if (penPrints)
        return reduce({ black, fillPrints ? black : white, true });
    if (fillPrints)
        return reduce({ white, black, true });
    return reduce({ white, fill == black || fill == transparent ? transparent : white, false });
}

bool SymbolItem::resetItemColorsNegative(const QColor &printColor)
{
    using namespace ItemColors;
    const bool penHasInk = getItemPenColor() == printColor;
    const QColor pen = penHasInk ? white : black;
    if (m_fillColor == transparent)
        return reduce({ pen, transparent, !penHasInk });
    if (m_fillColor == printColor)
        return reduce({ pen, white, !penHasInk });
    return reduce({ pen, black, true });
}
