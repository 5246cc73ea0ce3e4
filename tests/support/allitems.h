// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/barcode/barcodeitem.h"
#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/core/mobratypes.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/interfaces/itextgenericitem.h"
#include "items/style/fillableitem.h"

#include <QGraphicsItem>
#include <QList>
#include <QMetaObject>
#include <QMetaProperty>
#include <QObject>
#include <QPixmap>
#include <QStringList>
#include <QTest>

#include <memory>

/// The items of all classes that the factory makes, so that a new class is tested from its first day.
namespace AllItems {

[[nodiscard]] inline std::unique_ptr<Item> made(MobraTypes::ShapeType shape)
{
    return std::unique_ptr<Item>(ClassFactory().create(shape));
}

/// The codes for which the factory makes an item.
[[nodiscard]] inline QList<MobraTypes::ShapeType> shapesAndContainers()
{
    QList<MobraTypes::ShapeType> made;
    for (unsigned int code = 0x10001; code <= 0x10065; ++code) {
        const auto shape = static_cast<MobraTypes::ShapeType>(code);
        if (AllItems::made(shape))
            made << shape;
    }
    return made;
}

/// The classes that show nothing of their own and hold other items.
[[nodiscard]] inline bool isContainer(MobraTypes::ShapeType shape)
{
    return shape == MobraTypes::GroupShape || shape == MobraTypes::LayerShape;
}

/// The codes of the items that show something.
[[nodiscard]] inline QList<MobraTypes::ShapeType> shapes()
{
    QList<MobraTypes::ShapeType> shown = shapesAndContainers();
    shown.removeIf(isContainer);
    return shown;
}

/// The classes that draw a text inside their outline, in a way of their own.
[[nodiscard]] inline bool isText(MobraTypes::ShapeType shape)
{
    return shape == MobraTypes::LabelTextShape || shape == MobraTypes::RichTextShape;
}

/// The classes that print through an image of their own.
[[nodiscard]] inline bool isPicture(MobraTypes::ShapeType shape)
{
    return shape == MobraTypes::PixmapShape || shape == MobraTypes::SvgShape;
}

/// The classes that scale pixels or a drawing of a size of its own.
[[nodiscard]] inline bool isScaled(MobraTypes::ShapeType shape)
{
    return isPicture(shape) || shape == MobraTypes::SymbolShape;
}

/// The classes that are no shapes, with neither pen nor brush.
[[nodiscard]] inline bool isWithoutPen(MobraTypes::ShapeType shape)
{
    return shape == MobraTypes::BarcodeShape || isScaled(shape);
}

[[nodiscard]] inline QGraphicsItem &graphics(Item &item)
{
    return dynamic_cast<QGraphicsItem &>(item);
}

[[nodiscard]] inline QObject &object(Item &item)
{
    return dynamic_cast<QObject &>(item);
}

/// A picture of one colour.
[[nodiscard]] inline QPixmap plainPicture(const QSize &size, const QColor &colour)
{
    QPixmap picture(size);
    picture.fill(colour);
    return picture;
}

/// A new item that draws nothing but its outline and fill: a text or barcode is empty, a picture clear,
/// and there is nothing in a drawing.
[[nodiscard]] inline std::unique_ptr<Item> madeWithoutText(MobraTypes::ShapeType shape)
{
    std::unique_ptr<Item> item = made(shape);
    if (auto *text = dynamic_cast<ITextGenericItem *>(item.get()))
        text->setItemText({});
    if (auto *barcode = dynamic_cast<IBarcodeItem *>(item.get()))
        barcode->setBarcodeText({});
    if (auto *symbol = dynamic_cast<SymbolItem *>(item.get()))
        symbol->fixInvalidSymbol("black");
    if (auto *svg = dynamic_cast<SvgItem *>(item.get()))
        svg->setErrorSvg();
    if (auto *picture = dynamic_cast<PixMapItem *>(item.get()))
        picture->pixmapImportActions(plainPicture(QSize(100, 100), Qt::transparent));
    return item;
}

/// The item's coordinates of a point that lies so far from its corner, measured along its sides in the size
/// in which it shows: the transforms of label texts, pictures and drawings hold their scales.
[[nodiscard]] inline QPointF pointIn(const Item &item, double x, double y)
{
    if (!dynamic_cast<const ResizeRotatedHelper *>(&item))
        return QPointF(x, y);
    return QPointF(x / item.getItemScaleX(), y / item.getItemScaleY());
}

/// Shows a drawing in the symbol, in the frame that it has.
inline void draw(SymbolItem &symbol)
{
    symbol.reloadItemFromData(
        "<svg width=\"30\" height=\"20\"><circle cx=\"10\" cy=\"10\" r=\"8\" stroke=\"#000000\" "
        "fill=\"#FFFFFF\"/><rect x=\"20\" width=\"8\" height=\"6\"/></svg>");
}

/// Gives everything that the item has in common with others a value of its own.
inline void change(Item &item)
{
    auto *const symbol = dynamic_cast<SymbolItem *>(&item);
    if (symbol)
        draw(*symbol);
    if (auto *svg = dynamic_cast<SvgItem *>(&item))
        svg->loadItemFromData("<svg width=\"30\" height=\"20\"><circle cx=\"10\" cy=\"10\" r=\"8\" "
                              "fill=\"#2060a0\"/></svg>");
    if (auto *picture = dynamic_cast<PixMapItem *>(&item))
        picture->pixmapImportActions(plainPicture(QSize(50, 40), QColor(0x20, 0x60, 0xA0, 0x80)));
    item.setItemId(1234);
    item.setItemSize(QSizeF(60.0, 40.0));
    item.setItemRotation(30.0);
    item.setItemHorizontalMirror(true);
    item.setItemVerticalMirror(true);
    item.setAllowOverprint(false);
    item.setItemZValue(2.5);
    item.setItemFlags(MobraTypes::FlagReadOnly, true);
    item.setDatasourceId(3);
    item.setDatasourceField(QStringLiteral("Name"));
    graphics(item).moveBy(20.0, 10.0);
    if (auto *contoured = dynamic_cast<ContouredItem *>(&item)) {
        contoured->setItemPenColor(QColor(0x20, 0x60, 0xA0));
        contoured->setItemPenWidth(5);
        contoured->setItemPenCapStyle(Qt::FlatCap);
        contoured->setItemPenJoinStyle(Qt::MiterJoin);
        contoured->setItemPenStyle(Qt::DashLine);
    }
    if (auto *fillable = dynamic_cast<FillableItem *>(&item)) {
        fillable->setItemFillColor(QColor(0xE0, 0x90, 0x10));
        fillable->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    }
    if (symbol) {
        symbol->setItemPenColor(QColor(0x20, 0x60, 0xA0));
        symbol->setItemFillColor(QColor(0xE0, 0x90, 0x10));
    }
    if (auto *barcode = dynamic_cast<BarcodeItem *>(&item)) {
        barcode->setItemFillColor(QColor(0xE0, 0x90, 0x10));
        barcode->setItemTextColor(QColor(0x20, 0x60, 0xA0));
        barcode->setBarcodeSymbol(8);
        barcode->setBarcodeOption2(1);
        barcode->setBarcodeText(QStringLiteral("ABC 12"));
    }
}

/// The item as made by the factory, changed in everything if asked to.
[[nodiscard]] inline std::unique_ptr<Item> madeOrChanged(MobraTypes::ShapeType shape, bool changed)
{
    std::unique_ptr<Item> item = made(shape);
    if (changed)
        change(*item);
    return item;
}

[[nodiscard]] inline const char *nameOf(MobraTypes::ShapeType shape)
{
    return object(*made(shape)).metaObject()->className();
}

/// The names of the class's own properties in declared order.
[[nodiscard]] inline QStringList propertiesOf(Item &item)
{
    QStringList names;
    const QMetaObject *meta = object(item).metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QString name = QString::fromLatin1(meta->property(i).name());
        if (!Item::ignoredPropertyNames().contains(name))
            names << name;
    }
    return names;
}

/// The codes of the classes that are drawn in colours of their own, which an ink can be.
[[nodiscard]] inline QList<MobraTypes::ShapeType> shapesWithColours()
{
    QList<MobraTypes::ShapeType> coloured = shapes();
    coloured.removeIf(isPicture);
    return coloured;
}

/// Adds one row for each of the classes, named after it, with its code in the column "shape".
inline void addRows(const QList<MobraTypes::ShapeType> &classes = shapes())
{
    QTest::addColumn<MobraTypes::ShapeType>("shape");
    for (const MobraTypes::ShapeType shape : classes)
        QTest::addRow("%s", nameOf(shape)) << shape;
}

} // namespace AllItems
