// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/fillableitem.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "items/core/record.h"
#include "items/core/safeimage.h"
#include "items/style/inklayers.h"
#include "items/style/printimage.h"

#include <QGraphicsItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

/// The image at exactly the given size; what it lacks is transparent.
QImage asLayer(const QImage &image, QSize size)
{
    const QImage layer = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return layer.size() == size ? layer : layer.copy(QRect(QPoint(), size));
}

/// The brush of the given values, shared by items of one look as their pens are.
QBrush sharedBrush(const QColor &color, Qt::BrushStyle style)
{
    static QBrush last;
    if (last.style() != style || last.color() != color)
        last = QBrush(color, style);
    return last;
}

QGradient withStops(QGradient gradient, const QColor &first, double lastStop, const QColor &last)
{
    gradient.setStops({ { 0.0, first }, { lastStop, last } });
    return gradient;
}

} // namespace

FillableItem::FillableItem()
{
    m_fillColor = ItemColors::transparent;
}

FillableItem::~FillableItem() = default;

FillableItem::PrintState &FillableItem::print()
{
    if (!m_print)
        m_print = std::make_unique<PrintState>();
    return *m_print;
}

const FillableItem::PrintState &FillableItem::print() const
{
    static const PrintState unused;
    return m_print ? *m_print : unused;
}

void FillableItem::setItemFillColor(const QColor &color)
{
    if (color == m_fillColor)
        return;
    m_fillColor = color;
    updateItemBrush();
}

void FillableItem::setItemBrushStyle(MobraTypes::BrushStyle style)
{
    if (style == MobraTypes::BrushNoChange || style == m_brushStyle)
        return;
    m_brushStyle = style;
    updateItemBrush();
}

void FillableItem::setItemBrushStyleInt(int style)
{
    setItemBrushStyle(static_cast<MobraTypes::BrushStyle>(static_cast<qint16>(style)));
}

void FillableItem::setSceneBackgroundColor(const QColor &color)
{
    print().background = color;
    updateItemBrush();
}

bool FillableItem::fillIsGradient() const
{
    return m_brushStyle >= MobraTypes::BrushLinearGradient
        && m_brushStyle <= MobraTypes::BrushConicalGradient;
}

void FillableItem::setFillKind(bool opaque, bool gradient)
{
    m_opaque = opaque;
    m_partialColor = gradient;
    setItemFlags(MobraTypes::FlagGradient, gradient);
}

void FillableItem::updateItemBrush()
{
    if (m_fillColor == ItemColors::transparent) {
        setFillKind(false, false);
        m_brush = sharedBrush(m_fillColor, Qt::NoBrush);
    } else if (fillIsGradient()) {
        setFillKind(true, true);
        m_brush = gradientBrush();
    } else {
        // Numbers without a Qt style paint nothing, and are no value of Qt's enumeration.
        const bool known
            = m_brushStyle >= MobraTypes::BrushNone && m_brushStyle <= MobraTypes::BrushDiagonalCross;
        setFillKind(m_brushStyle == MobraTypes::BrushSolid, false);
        m_brush = sharedBrush(m_fillColor, known ? static_cast<Qt::BrushStyle>(m_brushStyle) : Qt::NoBrush);
    }
}

void FillableItem::takeFirstLook()
{
    static const QBrush unfilled(ItemColors::transparent, Qt::NoBrush);
    takeFirstPen();
    m_brush = unfilled;
    m_opaque = false;
}

QBrush FillableItem::gradientBrush() const
{
    QColor second = print().background;
    if (second == ItemColors::transparent)
        second = m_fillColor == ItemColors::white ? ItemColors::black : ItemColors::white;

    if (m_brushStyle == MobraTypes::BrushConicalGradient)
        return withStops(QConicalGradient(0.0, 0.0, 135.0), second, 1.0, m_fillColor);

    const double s = print().scaling;
    const QGraphicsItem *item = graphicsItem();
    const QRectF bounds = item ? item->boundingRect() : QRectF(QPointF(), getItemSize());
    const double x = s * bounds.x();
    const double y = s * bounds.y();
    const double w = s * (bounds.width() - (s - 1.0) * bounds.x());
    const double h = s * (bounds.height() - (s - 1.0) * bounds.y());
    if (m_brushStyle == MobraTypes::BrushLinearGradient)
        return withStops(QLinearGradient(x, y, x, y + h), second, 1.0, m_fillColor);
    QRadialGradient radial(QPointF(x + w / 2.0, y + h / 2.0), (w + h) * 0.7);
    radial.setSpread(QGradient::ReflectSpread);
    return withStops(radial, second, 0.5, m_fillColor);
}

void FillableItem::itemSizeChanged()
{
    ContouredItem::itemSizeChanged();
    updateItemBrush();
    layOut();
}

void FillableItem::layOut() { }

QSize FillableItem::getItemAbsSize() const
{
    const double s = print().scaling;
    return QSize(Limits::toInt(getItemWidth() * s), Limits::toInt(getItemHeight() * s));
}

QSize FillableItem::getItemAbsSize(double &x, double &y)
{
    x = 0.0;
    y = 0.0;
    return QSize(Limits::toInt(std::ceil(getItemWidth())), Limits::toInt(std::ceil(getItemHeight())));
}

bool FillableItem::resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers)
{
    const bool penInColor = penIsVisible() && getItemPenColor() == printColor;
    const bool fillInColor = m_brushStyle != MobraTypes::BrushNone && m_fillColor == printColor;
    const bool keep = keepBlack && (penInColor || fillInColor || keepOthers);
    bool printed = resetItemPenColors(printColor, keep);
    resetItemFillColors(printColor, printed, keep);
    return notePrinted(printed);
}

bool FillableItem::resetItemColorsNegative(const QColor &printColor)
{
    bool printed = resetItemPenColorsNegative(printColor);
    resetItemFillColorsNegative(printColor, printed);
    return notePrinted(printed);
}

void FillableItem::resetItemFillColors(const QColor &printColor, bool &printed, bool keepBlack)
{
    if (dropInvisibleFill())
        return;
    if (fillIsGradient()) {
        resetItemFillColorsForGradients(printColor, printed);
        return;
    }
    const bool keptBlack
        = keepBlack && m_fillColor == ItemColors::black && m_brushStyle == MobraTypes::BrushSolid;
    reducePlainFill(m_fillColor == printColor || keptBlack, printed);
}

void FillableItem::resetItemFillColorsForGradients(const QColor &printColor, bool &printed)
{
    reduceGradientFill(m_fillColor == printColor, printed);
}

void FillableItem::resetItemFillColorsNegative(const QColor &printColor, bool &printed)
{
    if (dropInvisibleFill())
        return;
    const bool prints = m_fillColor != printColor;
    if (fillIsGradient())
        reduceGradientFill(prints, printed);
    else
        reducePlainFill(prints, printed);
}

bool FillableItem::dropInvisibleFill()
{
    if (m_fillColor != ItemColors::transparent && m_fillColor != ItemColors::nearWhite)
        return false;
    m_brushStyle = MobraTypes::BrushNone;
    updateItemBrush();
    return true;
}

void FillableItem::reducePlainFill(bool prints, bool &printed)
{
    setItemFillColor(prints ? ItemColors::black : ItemColors::white);
    printed = printed || prints;
}

void FillableItem::reduceGradientFill(bool prints, bool &printed)
{
    setItemFillColor(prints ? ItemColors::black : ItemColors::white);
    if (!prints && !printed) {
        setItemBrushStyle(MobraTypes::BrushSolid);
        return;
    }
    print().throughImage = true;
    preparePrintImage();
    printed = true;
    setItemFlags(MobraTypes::FlagVisibleInPrint, true);
    setItemFlags(MobraTypes::FlagImagePrint, true);
}

void FillableItem::prepareShapeImage(const ScaledDrawing &draw, const ScaledDrawing &drawArea)
{
    const double scaling = getScaling();
    QPen pen = getItemPen();
    pen.setWidthF(Limits::penWidth(pen.widthF() * scaling));
    updateItemBrush();
    const auto scaled = [&](const ScaledDrawing &drawing) {
        return [&](QPainter &painter) { drawing(painter, scaling, pen.widthF()); };
    };
    setPreprintedImage(ditheredPrintImage(
        getItemSize() * scaling, pen, m_brush, getPrintDitherMethod(), scaled(draw), scaled(drawArea)));
}

QImage FillableItem::partialColorRender()
{
    if (!m_partialColor)
        return {};
    double x = 0.0;
    double y = 0.0;
    const QSize size = getItemAbsSize(x, y);
    QImage image = SafeImage::create(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    // Not cleared between inks: each layer also holds what earlier inks painted.
    image.fill(ItemColors::transparentRgb);
    const QList<QColor> palette = print().palette;
    const int inks = std::max(0, int(palette.size()) - 1);
    QList<QImage> layers;
    for (int ink = 0; ink < inks; ++ink)
        layers.append(inkLayer(palette[ink], image, QPointF(x, y)));
    recombineColorsOnImage(image, inks, layers, size);
    return image;
}

QImage FillableItem::inkLayer(const QColor &ink, QImage &canvas, const QPointF &offset)
{
    const std::unique_ptr<Item> copy(createItemCopy());
    auto *fillable = dynamic_cast<FillableItem *>(copy.get());
    auto *graphics = dynamic_cast<QGraphicsItem *>(copy.get());
    if (!fillable || !graphics || !fillable->resetItemColors(ink, false, false))
        return {};
    if (fillable->print().throughImage)
        return fillable->getPreprintedImage();
    const QStyleOptionGraphicsItem option;
    QPainter painter(&canvas);
    painter.translate(offset);
    graphics->paint(&painter, &option, nullptr);
    return canvas;
}

void FillableItem::recombineColorsOnImage(
    QImage &out, int count, const QList<QImage> &layers, QSize size) const
{
    const QList<QColor> &palette = print().palette;
    const QSize area = size.boundedTo(out.size());
    const qsizetype most = std::min({ qsizetype(count), layers.size(), palette.size() });
    std::vector<InkLayer> found;
    for (qsizetype i = 0; i < most; ++i) {
        const QImage layer = layers[i].isNull() ? QImage() : asLayer(layers[i], area);
        if (!layer.isNull())
            found.push_back({ layer, palette[i].rgb() });
    }
    if (found.empty() || area.isEmpty()) {
        out = QImage();
        return;
    }
    const QSize whole = out.size();
    // Every pixel is written: an image of the right kind is used as it is, since fresh memory is slower than
    // the merging.
    if (whole != area || out.format() != QImage::Format_ARGB32_Premultiplied)
        out = SafeImage::create(area, QImage::Format_ARGB32_Premultiplied);
    if (out.isNull())
        return;
    recombineInkLayers(out, found, qPremultiply(palette.last().rgba()));
    if (whole != area)
        out = asLayer(out, whole);
}

void FillableItem::copyItemProperties(Item *target, bool copySize)
{
    ContouredItem::copyItemProperties(target, copySize);
    auto *fillable = dynamic_cast<FillableItem *>(target);
    if (!fillable)
        return;
    if (m_print || fillable->m_print) {
        const PrintState &from = std::as_const(*this).print();
        PrintState &to = fillable->print();
        to.background = from.background;
        to.scaling = from.scaling;
        to.dither = from.dither;
    }
    fillable->updateItemBrush();
    fillable->setItemFillColor(m_fillColor);
    fillable->setItemBrushStyle(m_brushStyle);
}

bool FillableItem::addItemToPrintScene(QGraphicsScene *scene, double scale)
{
    const QGraphicsItem *item = graphicsItem();
    const PrintState &print = std::as_const(*this).print();
    if (!scene || !item || !print.throughImage || print.image.isNull())
        return ContouredItem::addItemToPrintScene(scene, scale);
    const QTransform t = item->transform();
    QGraphicsPixmapItem *picture = scene->addPixmap(QPixmap::fromImage(print.image));
    const QPointF translation = Limits::geometry(QPointF(t.m31(), t.m32()) * scale);
    picture->setTransform(QTransform(
        t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), translation.x(), translation.y(), t.m33()));
    picture->setPos(Limits::geometry(item->pos() * scale));
    picture->setZValue(item->zValue());
    picture->setFlag(QGraphicsItem::ItemStacksBehindParent);
    return true;
}

void FillableItem::saveItemToData(QDataStream &stream)
{
    ContouredItem::saveItemToData(stream);
    Record::write(stream, qint16(m_brushStyle), m_fillColor);
}

void FillableItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    ContouredItem::loadItemFromData(stream, version);
    qint16 style;
    QColor fill;
    Record::read(stream, std::tie(style, fill));
    m_brushStyle = static_cast<MobraTypes::BrushStyle>(style);
    setItemFillColor(fill);
    updateItemBrush(); // a fill equal to the present one has not rebuilt the brush with the new style
    layOut();
}

QVariantMap FillableItem::saveItemToJSON()
{
    return ContouredItem::saveItemToJSON();
}

void FillableItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    ContouredItem::loadItemFromJSON(map, version);
    // The keys came in alphabetical order: the pen may have been limited by the old width.
    updateItemPen();
    updateItemBrush();
    layOut();
}
