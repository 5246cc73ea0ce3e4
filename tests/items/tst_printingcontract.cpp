// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/allitems.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/scenes.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;
using MobraTypes::ShapeType;

namespace {

std::unique_ptr<FillableItem> fillable(ShapeType shape)
{
    std::unique_ptr<Item> item = AllItems::made(shape);
    auto *fillable = dynamic_cast<FillableItem *>(item.get());
    if (fillable)
        static_cast<void>(item.release());
    return std::unique_ptr<FillableItem>(fillable);
}

/// The classes that print their fill as a shape, by their codes and names.
QList<std::pair<ShapeType, const char *>> fillables()
{
    QList<std::pair<ShapeType, const char *>> all;
    for (const ShapeType shape : AllItems::shapes()) {
        if (fillable(shape) && !AllItems::isText(shape))
            all << std::pair(shape, AllItems::object(*AllItems::made(shape)).metaObject()->className());
    }
    return all;
}

/// The print image of a size in a scaling, filled with red.
QImage printImageOf(ShapeType shape, const QSizeF &size, MobraTypes::BrushStyle style, double scaling)
{
    const auto item = fillable(shape);
    item->setItemSize(size);
    item->setItemFillColor(red);
    item->setItemBrushStyle(style);
    item->setPrintScaling(scaling);
    item->preparePrintImage();
    return item->getPreprintedImage();
}

} // namespace

/// What every class with a fill keeps to in print images and in one ink, whatever it draws.
class tst_PrintingContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyItemButLineAndThoseWithoutPenIsFillable_data() { AllItems::addRows(); }
    void everyItemButLineAndThoseWithoutPenIsFillable();
    void printImageIsAsLargeAsTheScaledItem_data();
    void printImageIsAsLargeAsTheScaledItem();
    void sizesWithoutPixelsHaveNoPrintImage_data();
    void sizesWithoutPixelsHaveNoPrintImage();
    void printImageIgnoresTheMirrors_data();
    void printImageIgnoresTheMirrors();
    void reducedGradientReachesThePrintSceneAsItsImage_data();
    void reducedGradientReachesThePrintSceneAsItsImage();
    void transparentOutlineReducedNegatively_data();
    void transparentOutlineReducedNegatively();
};

void tst_PrintingContract::everyItemButLineAndThoseWithoutPenIsFillable()
{
    QFETCH(const ShapeType, shape);
    QCOMPARE(!fillable(shape), shape == MobraTypes::LineShape || AllItems::isWithoutPen(shape));
}

void tst_PrintingContract::printImageIsAsLargeAsTheScaledItem_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<QSize>("pixels");

    for (const auto &[shape, name] : fillables()) {
        const auto add = [shape = shape, name = name](
                             const char *what, const QSizeF &size, double scaling, const QSize &pixels) {
            QTest::addRow("%s %s", name, what) << shape << size << scaling << pixels;
        };
        add("plain", QSizeF(30, 20), 1.0, { 30, 20 });
        add("plain, larger", QSizeF(100, 60), 1.0, { 100, 60 });
        add("doubled", QSizeF(30, 20), 2.0, { 60, 40 });
        add("tripled, once and not twice", QSizeF(30, 20), 3.0, { 90, 60 });
        add("halved", QSizeF(30, 20), 0.5, { 15, 10 });
        add("halved to 16.5 and 8.5", QSizeF(33, 17), 0.5, { 17, 9 });
        add("scaled to 82.5 and 42.5", QSizeF(33, 17), 2.5, { 83, 43 });
        add("rounded down", QSizeF(30.4, 20.4), 1.0, { 30, 20 });
        add("rounded up", QSizeF(30.5, 20.6), 1.0, { 31, 21 });
        add("rounded down and up", QSizeF(10.25, 10.75), 1.0, { 10, 11 });
        add("rounded after scaling", QSizeF(30.3, 20.2), 2.0, { 61, 40 });
        add("one pixel", QSizeF(1, 0.5), 1.0, { 1, 1 });
    }
}

void tst_PrintingContract::printImageIsAsLargeAsTheScaledItem()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    QTEST(printImageOf(shape, size, MobraTypes::BrushSolid, scaling).size(), "pixels");
}

void tst_PrintingContract::sizesWithoutPixelsHaveNoPrintImage_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QSizeF>("size");

    for (const auto &[shape, name] : fillables()) {
        QTest::addRow("%s empty", name) << shape << QSizeF(0, 0);
        QTest::addRow("%s without height", name) << shape << QSizeF(10, 0);
        QTest::addRow("%s rounded to nothing", name) << shape << QSizeF(10, 0.4);
        QTest::addRow("%s negative", name) << shape << QSizeF(-10, 10);
        QTest::addRow("%s not a number", name)
            << shape << QSizeF(std::numeric_limits<double>::quiet_NaN(), 10);
        QTest::addRow("%s infinite", name) << shape << QSizeF(std::numeric_limits<double>::infinity(), 10);
        QTest::addRow("%s huge", name) << shape << QSizeF(1e9, 1e9);
    }
}

void tst_PrintingContract::sizesWithoutPixelsHaveNoPrintImage()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QSizeF, size);
    QVERIFY(printImageOf(shape, size, MobraTypes::BrushLinearGradient, 1.0).isNull());
}

void tst_PrintingContract::printImageIgnoresTheMirrors_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<MobraTypes::BrushStyle>("style");

    for (const auto &[shape, name] : fillables()) {
        QTest::addRow("%s, plain fill", name) << shape << MobraTypes::BrushSolid;
        QTest::addRow("%s, linear gradient", name) << shape << MobraTypes::BrushLinearGradient;
    }
}

void tst_PrintingContract::printImageIgnoresTheMirrors()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const MobraTypes::BrushStyle, style);
    const auto made = [shape, style] {
        auto item = fillable(shape);
        item->setItemFillColor(black);
        item->setItemBrushStyle(style);
        return item;
    };
    const auto plain = made();
    plain->preparePrintImage();
    const QImage image = plain->getPreprintedImage();
    QVERIFY(coloursOf(image).contains(blackPixel));
    const auto untouched = made();
    for (FillableItem *item : { plain.get(), untouched.get() }) {
        item->setItemHorizontalMirror(true);
        item->setItemVerticalMirror(true);
        item->preparePrintImage();
        QCOMPARE(item->getPreprintedImage(), image);
    }
}

void tst_PrintingContract::reducedGradientReachesThePrintSceneAsItsImage_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<Qt::PenStyle>("pen");

    for (const auto &[shape, name] : fillables()) {
        for (const auto style : { MobraTypes::BrushLinearGradient, MobraTypes::BrushRadialGradient,
                 MobraTypes::BrushConicalGradient }) {
            QTest::addRow("%s, brush %d", name, int(style)) << shape << style << Qt::NoPen;
            QTest::addRow("%s, brush %d, with a pen", name, int(style)) << shape << style << Qt::SolidLine;
        }
    }
}

void tst_PrintingContract::reducedGradientReachesThePrintSceneAsItsImage()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const Qt::PenStyle, pen);
    const auto item = fillable(shape);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    item->setItemSize(QSizeF(40, 20));
    graphics.setPos(10, 20);
    item->setItemPenStyle(pen);
    item->setItemFillColor(red);
    item->setItemBrushStyle(style);
    item->setPrintScaling(2.0);
    QVERIFY(item->resetItemColors(red, true, true));
    QCOMPARE(item->itemFlags(), 0x83U);

    // A rectangle without a pen leaves no pixel of its image free.
    QSet<QRgb> colours { blackPixel, whitePixel };
    if (shape != MobraTypes::RectangleShape || pen != Qt::NoPen)
        colours << clearPixel;
    QCOMPARE(coloursOf(item->getPreprintedImage()), colours);

    QGraphicsScene scene;
    QVERIFY(item->addItemToPrintScene(&scene, 2.0));
    const QGraphicsPixmapItem *pixmap = Scenes::onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), QPointF(20, 40));
    QCOMPARE(pixmap->pixmap().size(), QSize(80, 40));
    const QString difference
        = Images::difference(pixmap->pixmap().toImage(), item->getPreprintedImage(), u"scene"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(!graphics.scene());
}

void tst_PrintingContract::transparentOutlineReducedNegatively_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("printed");

    // Only rectangles except the transparent outline; the others spare nothing but the print colour.
    for (const auto &[shape, name] : fillables())
        QTest::addRow("%s", name) << shape
                                  << (shape != MobraTypes::RectangleShape
                                         && shape != MobraTypes::RoundedRectangleShape);
}

void tst_PrintingContract::transparentOutlineReducedNegatively()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, printed);
    const auto outline = fillable(shape);
    outline->setItemPenColor(transparent);
    QCOMPARE(outline->resetItemPenColorsNegative(red), printed);
    QCOMPARE(outline->getItemPenColor(), printed ? black : white);

    const auto item = fillable(shape);
    item->setItemPenColor(transparent);
    QCOMPARE(item->resetItemColorsNegative(red), printed);
    QCOMPARE(item->getItemPenColor(), printed ? black : white);
    QCOMPARE(item->itemFlags(), printed ? 0x01U : 0x00U);
}

QTEST_MAIN(tst_PrintingContract)
#include "tst_printingcontract.moc"
