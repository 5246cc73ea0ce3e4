// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/contoureditem.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "items/core/record.h"

#include <QRectF>

#include <algorithm>
#include <cmath>

namespace {

constexpr double penMiterLimit = 4.0;

/// Half the smaller side plus one, as a whole number.
unsigned short penWidthLimit(const QSizeF &size)
{
    const double limit = std::min(size.width() * 0.5 + 1.0, size.height() * 0.5 + 1.0);
    return static_cast<unsigned short>(std::min(Limits::toInt(std::trunc(limit)), 0xFFFF));
}

} // namespace

ContouredItem::ContouredItem() = default;
ContouredItem::~ContouredItem() = default;

void ContouredItem::setItemPenColor(const QColor &color)
{
    if (color == getItemPenColor())
        return;
    ColoredItem::setItemPenColor(color);
    m_pen.setColor(color);
}

void ContouredItem::setItemPenWidth(unsigned short width)
{
    if (width == m_penWidth)
        return;
    m_penWidth = std::min(width, maxPenWidth);
    updateItemPen();
}

void ContouredItem::setItemPenStyle(Qt::PenStyle style)
{
    if (style == m_penStyle || m_penStyle == Qt::CustomDashLine)
        return;
    m_penStyle = style;
    updateItemPen();
}

void ContouredItem::setItemPenCapStyle(Qt::PenCapStyle style)
{
    if (style == m_penCapStyle || m_penCapStyle == Qt::MPenCapStyle)
        return;
    m_penCapStyle = style == Qt::RoundCap ? Qt::RoundCap : Qt::FlatCap;
    m_pen.setCapStyle(getItemPenCapStyle());
}

void ContouredItem::setItemPenJoinStyle(Qt::PenJoinStyle style)
{
    if (style == m_penJoinStyle || m_penJoinStyle == Qt::MPenJoinStyle)
        return;
    m_penJoinStyle = style;
    m_pen.setJoinStyle(paintedPenJoinStyle());
    penJoinChanged();
}

void ContouredItem::updateItemPen()
{
    replacePen(penOfWidth(std::min(m_penWidth, penWidthLimit(getItemSize()))));
}

void ContouredItem::takeFirstPen()
{
    static const QPen first = penOfWidth(m_penWidth);
    m_pen = first;
}

void ContouredItem::replacePen(const QPen &pen)
{
    const bool another = pen != m_pen;
    m_pen = pen;
    if (another)
        penChanged();
}

void ContouredItem::penChanged() { }

void ContouredItem::penJoinChanged() { }

Qt::PenStyle ContouredItem::paintedPenStyle() const
{
    return m_penStyle >= Qt::NoPen && m_penStyle <= Qt::CustomDashLine ? static_cast<Qt::PenStyle>(m_penStyle)
                                                                       : Qt::NoPen;
}

Qt::PenJoinStyle ContouredItem::paintedPenJoinStyle() const
{
    switch (m_penJoinStyle) {
    case Qt::MiterJoin:
    case Qt::BevelJoin:
    case Qt::SvgMiterJoin:
        return static_cast<Qt::PenJoinStyle>(m_penJoinStyle);
    default:
        return Qt::RoundJoin;
    }
}

QPen ContouredItem::penOfWidth(unsigned short width) const
{
    const Qt::PenStyle style = paintedPenStyle();
    if (m_penWidth == 0 || style == Qt::NoPen) {
        QPen none(Qt::NoPen);
        none.setWidth(0);
        return none;
    }
    return sharedPen(
        getItemPenColor(), width, style, getItemPenCapStyle(), paintedPenJoinStyle(), penMiterLimit);
}

QPen ContouredItem::sharedPen(const QColor &color, int width, Qt::PenStyle style, Qt::PenCapStyle cap,
    Qt::PenJoinStyle join, double miterLimit)
{
    static QPen last;
    const bool same = last.width() == width && last.style() == style && last.capStyle() == cap
        && last.joinStyle() == join && last.color() == color && last.miterLimit() == miterLimit;
    if (!same) {
        last = QPen(QBrush(color, Qt::SolidPattern), width, style, cap, join);
        last.setMiterLimit(miterLimit);
    }
    return last;
}

QRectF ContouredItem::insideOutline(const QSizeF &size, double penWidth)
{
    return QRectF(penWidth / 2, penWidth / 2, Limits::geometry(size.width()) - penWidth,
        Limits::geometry(size.height()) - penWidth);
}

void ContouredItem::itemSizeChanged()
{
    ColoredItem::itemSizeChanged();
    updateItemPen();
}

bool ContouredItem::reducePen(bool prints)
{
    setItemPenColor(prints ? ItemColors::black : ItemColors::white);
    updateItemPen();
    return prints;
}

bool ContouredItem::notePrinted(bool printed)
{
    setItemFlags(MobraTypes::FlagVisibleInPrint, printed);
    return printed;
}

bool ContouredItem::resetItemPenColors(const QColor &printColor, bool keepBlack)
{
    const bool inPrintColor = getItemPenColor() == printColor;
    const bool keptBlack = keepBlack && getItemPenColor() == ItemColors::black && m_penStyle == Qt::SolidLine;
    return reducePen(penIsVisible() && (inPrintColor || keptBlack));
}

bool ContouredItem::resetItemPenColorsNegative(const QColor &printColor)
{
    return reducePen(penIsVisible() && getItemPenColor() != printColor);
}

bool ContouredItem::resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers)
{
    const bool inPrintColor = penIsVisible() && getItemPenColor() == printColor;
    return notePrinted(resetItemPenColors(printColor, keepBlack && (inPrintColor || keepOthers)));
}

bool ContouredItem::resetItemColorsNegative(const QColor &printColor)
{
    return notePrinted(resetItemPenColorsNegative(printColor));
}

void ContouredItem::copyItemProperties(Item *target, bool copySize)
{
    ColoredItem::copyItemProperties(target, copySize);
    auto *contoured = dynamic_cast<ContouredItem *>(target);
    if (!contoured)
        return;
    contoured->setItemPenWidth(m_penWidth);
    contoured->applyPenCapStyle(m_penCapStyle);
    contoured->applyPenJoinStyle(m_penJoinStyle);
    contoured->applyPenStyle(m_penStyle);
    contoured->updateItemPen();
}

void ContouredItem::saveItemToData(QDataStream &stream)
{
    ColoredItem::saveItemToData(stream);
    Record::write(
        stream, qint16(m_penWidth), qint32(m_penStyle), qint32(m_penCapStyle), qint32(m_penJoinStyle));
}

void ContouredItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    ColoredItem::loadItemFromData(stream, version);
    qint16 width;
    qint32 style;
    qint32 cap;
    qint32 join;
    Record::read(stream, std::tie(width, style, cap, join));
    setItemPenWidth(static_cast<unsigned short>(width));
    applyPenStyle(style);
    applyPenCapStyle(cap);
    applyPenJoinStyle(join);
    updateItemPen();
}
