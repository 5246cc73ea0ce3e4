// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/barcode/barcodeitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/rectangleitem.h"
#include "label/separation.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>

/// Documents of rectangles, and the dots of their plates.
namespace Printing {

inline const QColor black(0, 0, 0);
inline const QColor red(255, 0, 0);
inline const QColor blue(0, 0, 255);
inline const QColor white(255, 255, 255);
inline const QColor nothing(Qt::transparent);

/// A page of whole millimetres in black and red, one scene unit to a dot at 254 dpi: ten dots to the
/// millimetre.
inline LabelDocument blackAndRed(QSizeF millimetres)
{
    LabelDocument document;
    document.setPageSize(millimetres);
    document.setDesignDpi(254.0);
    document.setInks({ { QStringLiteral("black"), black }, { QStringLiteral("red"), red } });
    return document;
}

struct Look
{
    QColor fill = nothing;
    MobraTypes::BrushStyle style = MobraTypes::BrushSolid;
    QColor pen = nothing;
    unsigned short penWidth = 0;
};

/// Adds an item of any class; a line runs along the top of its place, and the bars of a barcode have the
/// colour of the pen.
inline Item *addItem(
    LabelDocument &document, std::unique_ptr<Item> item, const QRectF &place, const Look &look)
{
    item->setItemSize(place.size());
    dynamic_cast<QGraphicsItem &>(*item).setPos(place.topLeft());
    if (auto *contoured = dynamic_cast<ContouredItem *>(item.get())) {
        contoured->setItemPenColor(look.pen);
        contoured->setItemPenWidth(look.penWidth);
    }
    if (auto *fillable = dynamic_cast<FillableItem *>(item.get())) {
        fillable->setItemFillColor(look.fill);
        fillable->setItemBrushStyle(look.style);
    }
    if (auto *barcode = dynamic_cast<BarcodeItem *>(item.get())) {
        barcode->setItemFillColor(look.fill);
        barcode->setItemTextColor(look.pen);
    }
    if (auto *symbol = dynamic_cast<SymbolItem *>(item.get()))
        symbol->setItemPenFillColorPrePrint(look.pen, look.fill);
    return document.addItem(std::move(item));
}

inline RectangleItem *addRectangle(LabelDocument &document, const QRectF &place, const Look &look)
{
    return dynamic_cast<RectangleItem *>(addItem(document, std::make_unique<RectangleItem>(), place, look));
}

inline bool prints(const QImage &plate, int x, int y)
{
    return plate.pixelIndex(x, y) == 1;
}

/// Nothing when exactly the dots print for which expected(x, y) is true; otherwise the first other dot in
/// words.
template <typename Expected> QString difference(const QImage &plate, Expected expected)
{
    for (int y = 0; y < plate.height(); ++y) {
        for (int x = 0; x < plate.width(); ++x) {
            if (prints(plate, x, y) != expected(x, y))
                return QStringLiteral("dot (%1, %2) %3")
                    .arg(x)
                    .arg(y)
                    .arg(prints(plate, x, y) ? QStringLiteral("prints") : QStringLiteral("does not print"));
        }
    }
    return {};
}

/// The dots that print within a rectangle.
inline int dotsIn(const QImage &plate, const QRect &rect)
{
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            count += prints(plate, x, y) ? 1 : 0;
    }
    return count;
}

inline Separation separated(const LabelDocument &document, const SeparationOptions &options)
{
    Problems problems;
    std::optional<Separation> separation = separate(document, options, problems);
    if (!separation)
        qFatal("not separated: %s", qPrintable(problems.value(0).what));
    return std::move(*separation);
}

inline Separation separatedAtDesign(
    const LabelDocument &document, bool negative = false, bool overprint = false)
{
    return separated(document, { document.designDpi(), negative, overprint });
}

inline bool isEmpty(const QImage &plate)
{
    return difference(plate, [](int, int) { return false; }).isEmpty();
}

} // namespace Printing
