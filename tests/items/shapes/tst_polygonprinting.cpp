// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/polygons.h"
#include "tests/support/printimages.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;

namespace {

/// The print image made step by step as it is defined, with nothing but Qt.
QImage printImageStepByStep(PolygonItem &item)
{
    const double scaling = item.getScaling();
    QPen pen = item.getItemPen();
    pen.setWidthF(pen.widthF() * scaling);
    item.updateItemBrush();
    const QPolygonF polygon = QTransform::fromScale(scaling, scaling).map(item.polygon());
    QPainterPath clip;
    clip.addPolygon(polygon);
    clip.closeSubpath();
    return PrintImages::clippedStepByStep(
        { qRound(item.getItemWidth() * scaling), qRound(item.getItemHeight() * scaling) }, pen,
        item.getItemBrush(), item.getPrintDitherMethod(),
        [&polygon](QPainter &painter) { painter.drawConvexPolygon(polygon); }, clip);
}

} // namespace

/// Polygons reduced to one ink, and their print images.
class tst_PolygonPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void printImageMatchesItsDefinition_data();
    void printImageMatchesItsDefinition();
    void blackFillPrintsThePolygonAlone_data();
    void blackFillPrintsThePolygonAlone();
    void linearGradientPrintsFromWhiteToBlack();
    void reductionKeepsTheOutline_data() { Polygons::addRows(); }
    void reductionKeepsTheOutline();
    void plainColoursAreReducedToBlackAndWhite_data();
    void plainColoursAreReducedToBlackAndWhite();
    void negativeReductionTurnsTheColoursRound_data();
    void negativeReductionTurnsTheColoursRound();
    void partialRenderingShowsThePrintImageInItsInk_data() { Polygons::addRows(); }
    void partialRenderingShowsThePrintImageInItsInk();
};

void tst_PolygonPrinting::printImageMatchesItsDefinition_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<int>("brushStyle");
    QTest::addColumn<int>("dither");

    for (int i = 0; i < Polygons::classes().size(); ++i) {
        for (const QSizeF &size : { QSizeF(100, 60), QSizeF(7.5, 23.25) }) {
            for (const double scaling : { 1.0, 2.0, 0.5, 3.3 }) {
                for (const int penWidth : { 0, 1, 5 }) {
                    for (const int brush : { 0, 1, 4, 15, 16, 17 }) {
                        for (const int dither : { 0x0A, int(Qt::MonoOnly | Qt::ThresholdDither) })
                            QTest::addRow("%s, %g wide, x %g, pen %d, brush %d, dither %d",
                                Polygons::classes()[i].name, size.width(), scaling, penWidth, brush, dither)
                                << i << size << scaling << penWidth << brush << dither;
                    }
                }
            }
        }
    }
}

void tst_PolygonPrinting::printImageMatchesItsDefinition()
{
    QFETCH(const int, index);
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const int, brushStyle);
    QFETCH(const int, dither);
    const auto item = Polygons::made(Polygons::classes()[index].shape);
    PrintImages::prepare(*item, size, scaling, penWidth, brushStyle, dither);
    PrintImages::compare(*item, printImageStepByStep(*item));
}

void tst_PolygonPrinting::blackFillPrintsThePolygonAlone_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QList<QPoint>>("printed");
    QTest::addColumn<QList<QPoint>>("clear");

    // A size of 50 in two pixels to a unit.
    using Points = QList<QPoint>;
    QTest::newRow("right triangle") << 0x10033 << Points { { 1, 5 }, { 47, 51 }, { 94, 98 } }
                                    << Points { { 5, 1 }, { 52, 47 }, { 98, 94 }, { 99, 0 } };
    QTest::newRow("equilateral triangle") << 0x10034 << Points { { 50, 4 }, { 3, 98 }, { 96, 98 } }
                                          << Points { { 46, 2 }, { 53, 2 }, { 0, 0 }, { 99, 0 } };
    QTest::newRow("diamond") << 0x10035 << Points { { 49, 3 }, { 3, 49 }, { 96, 50 }, { 50, 96 } }
                             << Points { { 22, 22 }, { 77, 22 }, { 22, 77 }, { 77, 77 } };
    QTest::newRow("pentagon") << 0x10036 << Points { { 49, 3 }, { 4, 38 }, { 95, 38 }, { 22, 97 } }
                              << Points { { 0, 0 }, { 99, 0 }, { 0, 99 }, { 99, 99 } };
    QTest::newRow("hexagon") << 0x10037 << Points { { 28, 1 }, { 71, 1 }, { 3, 49 }, { 96, 49 } }
                             << Points { { 20, 2 }, { 79, 2 }, { 20, 97 }, { 79, 97 } };
    QTest::newRow("octagon") << 0x10038 << Points { { 33, 1 }, { 66, 1 }, { 98, 33 }, { 17, 17 } }
                             << Points { { 12, 12 }, { 87, 12 }, { 12, 87 }, { 87, 87 } };
}

void tst_PolygonPrinting::blackFillPrintsThePolygonAlone()
{
    QFETCH(const int, shape);
    QFETCH(const QList<QPoint>, printed);
    QFETCH(const QList<QPoint>, clear);
    const auto item = Polygons::made(MobraTypes::ShapeType(shape));
    item->setItemSize(QSizeF(50, 50));
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(black);
    item->setPrintScaling(2.0);
    item->preparePrintImage();
    const QImage image = item->getPreprintedImage();
    QCOMPARE(coloursOf(image), (QSet<QRgb> { blackPixel, clearPixel }));
    for (const QPoint &point : printed)
        QVERIFY2(image.pixel(point) == blackPixel, qPrintable(u"%1, %2"_s.arg(point.x()).arg(point.y())));
    for (const QPoint &point : clear)
        QVERIFY2(image.pixel(point) == clearPixel, qPrintable(u"%1, %2"_s.arg(point.x()).arg(point.y())));
}

void tst_PolygonPrinting::linearGradientPrintsFromWhiteToBlack()
{
    const auto item = Polygons::made(Polygons::octagon, QSizeF(100, 100));
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(black);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setPrintScaling(2.0);
    item->preparePrintImage();

    const QImage image = item->getPreprintedImage();
    QCOMPARE(coloursOf(image), (QSet<QRgb> { blackPixel, whitePixel, clearPixel }));
    // About an eighth, and about seven eighths, of the 4000 pixels in the middle of a quarter.
    QVERIFY(qAbs(PrintImages::blackPixelsIn(image, { 60, 0, 80, 50 }) - 500) < 80);
    QVERIFY(qAbs(PrintImages::blackPixelsIn(image, { 60, 150, 80, 50 }) - 3500) < 80);
}

void tst_PolygonPrinting::reductionKeepsTheOutline()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index], QSizeF(60, 45));
    item->setItemPenJoinStyle(Qt::MiterJoin);
    item->setItemPenWidth(6);
    item->setItemFillColor(red);
    const QPolygonF drawn = item->polygon();
    const QPolygonF hit = item->getShapePolygon();
    QVERIFY(item->resetItemColors(red, true, true));
    QVERIFY(item->resetItemColorsNegative(red));
    QCOMPARE(item->polygon(), drawn);
    QCOMPARE(item->getShapePolygon(), hit);
    QCOMPARE(item->getItemSize(), QSizeF(60, 45));
}

void tst_PolygonPrinting::plainColoursAreReducedToBlackAndWhite_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<QColor>("reducedPen");
    QTest::addColumn<QColor>("reducedFill");
    QTest::addColumn<bool>("printed");

    QTest::newRow("red pen") << red << blue << true << black << white << true;
    QTest::newRow("red fill") << blue << red << true << white << black << true;
    QTest::newRow("both red") << red << red << false << black << black << true;
    QTest::newRow("neither red") << blue << yellow << true << white << white << false;
    QTest::newRow("black kept") << black << black << true << black << black << true;
    QTest::newRow("black dropped") << black << black << false << white << white << false;
    QTest::newRow("nothing filled") << red << transparent << true << black << transparent << true;
    QTest::newRow("paper white") << blue << nearWhite << true << white << nearWhite << false;
}

void tst_PolygonPrinting::plainColoursAreReducedToBlackAndWhite()
{
    QFETCH(const QColor, pen);
    QFETCH(const QColor, fill);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, printed);
    for (const Polygons::Class &kind : Polygons::classes()) {
        const auto item = Polygons::made(kind.shape);
        item->setItemPenColor(pen);
        item->setItemFillColor(fill);
        QCOMPARE(item->resetItemColors(red, keepBlack, true), printed);
        QTEST(item->getItemPenColor(), "reducedPen");
        QTEST(item->getItemFillColor(), "reducedFill");
        QCOMPARE(item->itemFlags() & 0x01U, printed ? 0x01U : 0x00U);
    }
}

void tst_PolygonPrinting::negativeReductionTurnsTheColoursRound_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("reducedPen");
    QTest::addColumn<QColor>("reducedFill");
    QTest::addColumn<bool>("printed");

    QTest::newRow("red pen") << red << blue << white << black << true;
    QTest::newRow("red fill") << blue << red << black << white << true;
    QTest::newRow("both red") << red << red << white << white << false;
    QTest::newRow("nothing filled") << red << transparent << white << transparent << false;
}

void tst_PolygonPrinting::negativeReductionTurnsTheColoursRound()
{
    QFETCH(const QColor, pen);
    QFETCH(const QColor, fill);
    QFETCH(const bool, printed);
    for (const Polygons::Class &kind : Polygons::classes()) {
        const auto item = Polygons::made(kind.shape);
        item->setItemPenColor(pen);
        item->setItemFillColor(fill);
        QCOMPARE(item->resetItemColorsNegative(red), printed);
        QTEST(item->getItemPenColor(), "reducedPen");
        QTEST(item->getItemFillColor(), "reducedFill");
        QCOMPARE(item->itemFlags() & 0x01U, printed ? 0x01U : 0x00U);
    }
}

void tst_PolygonPrinting::partialRenderingShowsThePrintImageInItsInk()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index], QSizeF(40, 20));
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setItemPalette({ blue, red, yellow });

    const auto blackened = Polygons::made(Polygons::classes()[index], QSizeF(40, 20));
    blackened->setItemPenStyle(Qt::NoPen);
    blackened->setItemFillColor(black);
    blackened->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const QImage expected
        = PrintImages::inked(printImageStepByStep(*blackened), { 40, 20 }, redPixel, yellowPixel);
    const QString difference = Images::difference(item->partialColorRender(), expected, u"partial"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_PolygonPrinting)
#include "tst_polygonprinting.moc"
