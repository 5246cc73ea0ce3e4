// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/core/classfactory.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/rectangleitem.h"
#ifdef HOST_HAS_LOGGER
#include "platform/logging/cutemessagelogger.h"
#endif

#include <QApplication>

#include <cstdio>
#include <memory>

namespace {

int failures = 0;

void check(bool holds, const char *promise)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", promise);
        ++failures;
    }
}

void checkRectangle()
{
    const std::unique_ptr<Item> item(ClassFactory().create(MobraTypes::RectangleShape));
    check(item != nullptr, "the factory makes a rectangle");
    if (!item)
        return;
    check(item->getItemShape() == MobraTypes::RectangleShape, "the item knows its shape");

    // The cast proves that the class has one type information object for the library and for this program.
    const auto *rectangle = dynamic_cast<const RectangleItem *>(item.get());
    check(rectangle != nullptr, "the item is a RectangleItem to this program too");
    if (!rectangle)
        return;
    check(item->setItemSize(QSizeF(30, 20)), "a new size is taken");
    check(rectangle->boundingRect() == QRectF(0, 0, 30, 20), "the bounding rectangle is the logical size");
}

/// Holds with our encoder and with the host's.
void checkBarcode()
{
    BarcodeItem item;
    item.setBarcodeText(QStringLiteral("4711"));
    const std::unique_ptr<Item> copy(item.createItemCopy());
    const auto *barcode = dynamic_cast<const BarcodeItem *>(copy.get());
    check(barcode != nullptr && barcode->getBarcodeText() == QStringLiteral("4711"), "a copy has the text");
    item.setBarcodeText(QString());
    check(barcode != nullptr && !barcode->getBarcodeText().isEmpty(), "a copy has a text of its own");
}

/// The classes whose bases are items of Qt's SVG library, which a consumer gets with ours.
void checkGraphics()
{
    const QByteArray drawing = "<svg width=\"30\" height=\"20\"><rect width=\"9\" height=\"9\"/></svg>";
    SvgItem svg;
    check(svg.loadItemFromData(drawing), "a drawing is loaded");
    check(svg.boundingRect() == QRectF(0, 0, 30, 20), "a drawing has its size");
    SymbolItem symbol;
    check(symbol.loadItemFromData(drawing), "a symbol is loaded");
    symbol.setItemPenColor(Qt::red);
    check(symbol.getSvgContents().contains("#FF0000"), "a symbol takes a colour");
    QPixmap pixels(3, 2);
    pixels.fill(Qt::red);
    PixMapItem picture;
    picture.pixmapImportActions(pixels);
    check(picture.pixmap().size() == QSize(3, 2), "a picture has its pixels");
}

#ifdef HOST_HAS_LOGGER
void checkHostLogger()
{
    CuteMessageLogger(1, "main", 7, "checkHostLogger").write("%d of %s", 2, "two");
    check(loggerInstance().lines == QStringList("1 main:7 checkHostLogger: 2 of two"),
        "the host's logger is in use");
}
#endif

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    checkRectangle();
    checkBarcode();
    checkGraphics();
#ifdef HOST_HAS_LOGGER
    checkHostLogger();
#endif
    return failures == 0 ? 0 : 1;
}
