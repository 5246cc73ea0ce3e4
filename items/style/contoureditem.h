// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/interfaces/penitem.h"
#include "items/style/coloreditem.h"

#include <QPen>

/// An item with an outline: builds the pen that it paints with, and reduces it to one ink for printing.
class VX_EXPORT ContouredItem : public ColoredItem, public PenItem
{
public:
    ContouredItem();
    ~ContouredItem() override;

    QPen getItemPen() const { return m_pen; }
    /// Replaces the painted pen until the next update; width, style, cap and join keep their values.
    void setItemPen(const QPen &pen) { m_pen = pen; }

    /// Widths above 72 become 72.
    void setItemPenWidth(unsigned short width) override;
    /// A custom dash pattern locks the style: once set, no other style replaces it.
    void setItemPenStyle(Qt::PenStyle style) override;
    /// Only flat and round caps exist; any other becomes flat, so that lines end where they were drawn to.
    void setItemPenCapStyle(Qt::PenCapStyle style) override;
    void setItemPenJoinStyle(Qt::PenJoinStyle style) override;
    /// Builds the pen from the stored values. It is never wider than half the smaller side plus one; the
    /// stored width stays, and comes back when the item grows.
    virtual void updateItemPen();

    /// Makes the outline black if it prints in printColor and white if not; with keepBlack a solid black
    /// outline stays black. Returns whether the outline prints.
    bool resetItemPenColors(const QColor &printColor, bool keepBlack);
    /// Makes a visible outline black unless it has the print colour. Returns whether the outline prints.
    virtual bool resetItemPenColorsNegative(const QColor &printColor);

    // ColoredItem
    void setItemPenColor(const QColor &color) override;

    // Item
    void copyItemProperties(Item *target, bool copySize) override;
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;

protected:
    void itemSizeChanged() override;

    /// The widest outline that an item stores.
    static constexpr unsigned short maxPenWidth = 72;

    /// Runs after an update has replaced the painted pen by a different one; colours and caps set into the
    /// present pen do not count.
    virtual void penChanged();
    /// Runs after another join has been stored and set into the painted pen.
    virtual void penJoinChanged();
    /// Gives a new item, of which nothing has been changed, the pen that the first updateItemPen() would
    /// build, ready-made: items are made by the thousand. No penChanged() follows.
    void takeFirstPen();
    /// Replaces the painted pen, and runs penChanged() if it is another one.
    void replacePen(const QPen &pen);

    /// The pen of the stored colour, style, cap and join in a width of its own; no pen for an invisible
    /// outline.
    QPen penOfWidth(unsigned short width) const;
    /// A solid-coloured pen, shared by items of one look: a pen of its own for each item would cost two
    /// allocations and, in a large scene, a cache miss at every painting.
    static QPen sharedPen(const QColor &color, int width, Qt::PenStyle style, Qt::PenCapStyle cap,
        Qt::PenJoinStyle join, double miterLimit);
    /// The rectangle whose outline of the given width lies inside the size.
    static QRectF insideOutline(const QSizeF &size, double penWidth);
    /// The pen to paint with, without a copy.
    const QPen &itemPen() const { return m_pen; }
    /// The stored style and join as Qt knows them; records and maps may hold any number.
    Qt::PenStyle paintedPenStyle() const;
    Qt::PenJoinStyle paintedPenJoinStyle() const;
    bool penIsVisible() const { return m_penWidth > 0 && m_penStyle != Qt::NoPen; }
    /// Makes the outline black if it prints, else white. Returns prints.
    bool reducePen(bool prints);
    /// Keeps in FlagVisibleInPrint whether the reduced item prints, and returns it.
    bool notePrinted(bool printed);

private:
    QPen m_pen;
};
