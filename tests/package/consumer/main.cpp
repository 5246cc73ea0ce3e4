// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/core/classfactory.h"
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
#ifdef HOST_HAS_LOGGER
    checkHostLogger();
#endif
    return failures == 0 ? 0 : 1;
}
