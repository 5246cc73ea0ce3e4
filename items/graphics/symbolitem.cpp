// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/symbolitem.h"

#include "items/core/basicconversions.h"
#include "items/core/itemcolors.h"
#include "items/graphics/emptysvg.h"
#include "items/graphics/scaledcontent.h"
#include "items/graphics/symbolcolors.h"

#include <QPainterPath>

SymbolItem::SymbolItem()
    : m_drawing(*this)
{
    setItemShape(MobraTypes::SymbolShape);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemClipsToShape | ItemStacksBehindParent);
    m_fillColor = ItemColors::transparent;
}

SymbolItem::~SymbolItem() = default;

QString SymbolItem::toDescriptionString() const
{
    return QStringLiteral("Symbol %1\n").arg(itemId());
}

QPainterPath SymbolItem::opaqueArea() const
{
    QPainterPath path;
    if (isFilled())
        path.addRect(boundingRect());
    return path;
}

void SymbolItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    m_drawing.paint(*this, painter, option, widget);
    paintSelectionFrame(painter, option, boundingRect());
}

bool SymbolItem::applySize(const QSizeF &size)
{
    ColoredItem::applySize(size);
    ScaledContent::followSize(*this);
    prepareGeometryChange();
    return true;
}

bool SymbolItem::setItemSizeOnUpdate(const QSizeF &size)
{
    const bool changed = ScaledContent::fit(*this, size);
    prepareGeometryChange();
    return changed;
}

void SymbolItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    ScaledContent::followRotation(*this);
    prepareGeometryChange();
}

void SymbolItem::resetTransform()
{
    setPositionChangeOnX(0.0);
    setPositionChangeOnY(0.0);
    setOldTransformCoefficientM31(0.0);
    setOldTransformCoefficientM32(0.0);
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    setTransform(QTransform());
    prepareGeometryChange();
}

bool SymbolItem::loadItemFromData(
    const QByteArray &svg, bool hasFill, const QByteArray &penColor, const QByteArray &fillColor)
{
    setOriginal(svg);
    const QByteArray filled = hasFill ? SymbolColors::withOpaqueBackground(m_original) : m_original;
    m_contents = SymbolColors::colored(filled, { penColor, fillColor, hasFill });
    m_shownWithFill.reset();
    const bool shown = m_drawing.replace(m_contents);
    storeItemSize(boundingRect().size());
    return shown;
}

bool SymbolItem::reloadItemFromData(
    const QByteArray &svg, bool hasFill, const QByteArray &penColor, const QByteArray &fillColor)
{
    const QSizeF frame = getItemSize();
    const bool shown = loadItemFromData(svg, hasFill, penColor, fillColor);
    if (!shown)
        fixInvalidSymbol(penColor);
    setItemSizeOnUpdate(frame);
    return shown;
}

bool SymbolItem::loadItemFromData(const QByteArray &svg)
{
    return loadItemFromData(
        svg, isFilled(), getItemPenColor().name().toLatin1(), m_fillColor.name().toLatin1());
}

bool SymbolItem::reloadItemFromData(const QByteArray &svg)
{
    return reloadItemFromData(
        svg, isFilled(), getItemPenColor().name().toLatin1(), m_fillColor.name().toLatin1());
}

bool SymbolItem::loadItemFromFile(const QByteArray &path)
{
    const std::optional<QByteArray> svg = SvgDrawing::read(path);
    return svg && loadItemFromData(*svg);
}

bool SymbolItem::reloadItemFromFile(const QByteArray &path)
{
    reloadItemFromData(SvgDrawing::read(path).value_or(QByteArray()));
    return true;
}

void SymbolItem::setItemData(const QVariant &data)
{
    const QByteArray bytes = data.toByteArray();
    if (SvgDrawing::isDrawing(data))
        reloadItemFromData(bytes);
    else
        reloadItemFromFile(bytes);
}

void SymbolItem::fixInvalidSymbol(const QByteArray &penColor)
{
    storePenColor(QColor::fromString(QString::fromLatin1(penColor)));
    showEmpty();
}

void SymbolItem::showEmpty()
{
    m_contents = EmptySvg::getEmptySvg();
    m_fillColor = ItemColors::transparent;
    m_shownWithFill.reset();
    m_drawing.replace(m_contents);
    storeItemSize(boundingRect().size());
}

QVariant SymbolItem::getSvgContentsOriginal() const
{
    return QString::fromLatin1(m_original.toBase64());
}

void SymbolItem::setSvgContentsOriginal(const QVariant &svgContentsOriginal)
{
    m_original = QByteArray::fromBase64(svgContentsOriginal.toByteArray());
    m_shownWithFill.reset();
}

Item *SymbolItem::createItemCopy()
{
    auto copy = copyAs<SymbolItem>();
    copy->takeState(m_contents, m_original, getItemSize(), getOldTransformCoefficientM31(),
        getOldTransformCoefficientM32(), getFirstResizeAfterAddedToGroup(), getItemPenColor(), m_fillColor,
        m_singleColor, m_fillBoundingRectangle);
    // Most copies are printed in other colours: only those need to be loaded.
    if (!m_drawing.holds(m_contents))
        copy->m_drawing.load(m_contents);
    else if (!m_contents.isEmpty())
        copy->m_drawing.loadWhenSeen(m_contents, boundingRect());
    copy->m_shownWithFill = m_shownWithFill;
    return copy.release();
}

void SymbolItem::copyPrivatePropeties(const QByteArray &contents, const QByteArray &original,
    const QSizeF &size, double m31, double m32, bool firstResize, const QColor &pen, const QColor &fill,
    bool singleColor, bool fillBoundingRectangle)
{
    takeState(contents, original, size, m31, m32, firstResize, pen, fill, singleColor, fillBoundingRectangle);
    m_drawing.load(m_contents);
}

void SymbolItem::takeState(const QByteArray &contents, const QByteArray &original, const QSizeF &size,
    double m31, double m32, bool firstResize, const QColor &pen, const QColor &fill, bool singleColor,
    bool fillBoundingRectangle)
{
    m_contents = contents;
    m_original = original;
    storeItemSize(size);
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    setFirstResizeAfterAddedToGroup(firstResize);
    storePenColor(pen);
    m_fillColor = fill;
    m_singleColor = singleColor;
    m_fillBoundingRectangle = fillBoundingRectangle;
    m_shownWithFill.reset();
}
