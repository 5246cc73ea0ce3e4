// SPDX-License-Identifier: BSD-3-Clause
#include "label/separation.h"
#include "tests/label/printing.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;

class tst_Separation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void pageHasRoundedDots_data();
    void pageHasRoundedDots();
    void rectangleCoversItsDots_data();
    void rectangleCoversItsDots();
    void outlineLiesInsideItsRectangle();
    void laterItemClearsWhatLiesBelow();
    void whiteClearsWhatLiesBelow();
    void frameWithoutFillClearsNothing();
    void clearOutlineClearsNothing_data();
    void clearOutlineClearsNothing();
    void clearWhiteFillClearsNothing();
    void colorsOfOtherSpecsPrint();
    void zValueDecidesBeforeOrder();
    void invisibleItemsAreLeftOut();
    void selectionIsNotPrinted();
    void unscaledItemsPrintAtTheirSize();
    void overprintKeepsDotsBelow();
    void itemsThatRefuseOverprintClear();
    void negativeIsTheComplement();
    void negativeOverprintKeepsTheInk();
    void colorsWithoutInkAreReportedOnce();
    void colorsThatLeaveThePaperBareAreNoProblem();
    void brokenDocumentIsRefused();
    void largePageIsRefused();
    void tinyPageIsRefused();
    void oddResolutionIsRefused();
    void largeGradientIsRefused();
    void coverageAndAreaAreThoseOfTheDots();
};

void tst_Separation::pageHasRoundedDots_data()
{
    QTest::addColumn<QSizeF>("millimetres");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<QSize>("dots");
    QTest::addColumn<int>("dotsPerMetre");
    QTest::newRow("100 x 50 at 300") << QSizeF(100, 50) << 300.0 << QSize(1181, 591) << 11811;
    QTest::newRow("100 x 50 at 203") << QSizeF(100, 50) << 203.0 << QSize(799, 400) << 7992;
    QTest::newRow("25.4 x 12.7 at 600") << QSizeF(25.4, 12.7) << 600.0 << QSize(600, 300) << 23622;
    QTest::newRow("10 x 3 at 72") << QSizeF(10, 3) << 72.0 << QSize(28, 9) << 2835;
}

void tst_Separation::pageHasRoundedDots()
{
    QFETCH(QSizeF, millimetres);
    QFETCH(double, dpi);
    QFETCH(QSize, dots);
    QFETCH(int, dotsPerMetre);
    const Separation separation = separated(blackAndRed(millimetres), { dpi });
    QCOMPARE(separation.plates.size(), std::size_t(2));
    for (const Plate &plate : separation.plates) {
        QCOMPARE(plate.image.format(), QImage::Format_Mono);
        QCOMPARE(plate.image.size(), dots);
        QCOMPARE(plate.image.dotsPerMeterX(), dotsPerMetre);
        QCOMPARE(plate.image.dotsPerMeterY(), dotsPerMetre);
        QCOMPARE(plate.image.colorTable(), QList<QRgb>({ 0xFFFFFFFF, 0xFF000000 }));
        QCOMPARE(plate.dpi, dpi);
        QVERIFY(isEmpty(plate.image));
    }
    QCOMPARE(separation.plates[0].ink.name, u"black"_s);
    QCOMPARE(separation.plates[1].ink.name, u"red"_s);
}

// (30, 60) to (120, 180) at 300 units an inch. A dot prints when its middle lies inside.
void tst_Separation::rectangleCoversItsDots_data()
{
    QTest::addColumn<double>("dpi");
    QTest::addColumn<QRect>("dots");
    QTest::newRow("100 dpi") << 100.0 << QRect(10, 20, 30, 40);
    QTest::newRow("203 dpi: 20.3, 40.6 to 81.2, 121.8") << 203.0 << QRect(20, 41, 61, 81);
    QTest::newRow("300 dpi") << 300.0 << QRect(30, 60, 90, 120);
    QTest::newRow("600 dpi") << 600.0 << QRect(60, 120, 180, 240);
}

void tst_Separation::rectangleCoversItsDots()
{
    QFETCH(double, dpi);
    QFETCH(QRect, dots);
    LabelDocument document = blackAndRed({ 12.7, 25.4 });
    document.setDesignDpi(300);
    addRectangle(document, { 30, 60, 90, 120 }, { red });
    const Separation separation = separated(document, { dpi });
    QVERIFY(isEmpty(separation.plates[0].image));
    QCOMPARE(
        difference(separation.plates[1].image, [&](int x, int y) { return dots.contains(x, y); }), QString());
    QCOMPARE(separation.plates[1].dots, qint64(dots.width()) * dots.height());
}

void tst_Separation::outlineLiesInsideItsRectangle()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 10, 10, 40, 30 }, { red, MobraTypes::BrushSolid, black, 4 })
        ->setItemPenJoinStyle(Qt::MiterJoin);
    const QRect outside(20, 20, 80, 60);
    const QRect inside = outside.adjusted(8, 8, -8, -8);
    const Separation separation = separated(document, { 508.0 });
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return outside.contains(x, y) && !inside.contains(x, y); }),
        QString());
    QCOMPARE(difference(separation.plates[1].image, [&](int x, int y) { return inside.contains(x, y); }),
        QString());
}

void tst_Separation::laterItemClearsWhatLiesBelow()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { black });
    addRectangle(document, { 20, 10, 30, 10 }, { red });
    const QRect below(5, 5, 40, 30);
    const QRect above(20, 10, 30, 10);
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return below.contains(x, y) && !above.contains(x, y); }),
        QString());
    QCOMPARE(difference(separation.plates[1].image, [&](int x, int y) { return above.contains(x, y); }),
        QString());
}

void tst_Separation::whiteClearsWhatLiesBelow()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { black });
    addRectangle(document, { 20, 10, 10, 10 }, { white });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(separation.plates[0].dots, 40 * 30 - 10 * 10);
    QVERIFY(!prints(separation.plates[0].image, 20, 10));
    QVERIFY(!prints(separation.plates[0].image, 29, 19));
    QVERIFY(isEmpty(separation.plates[1].image));
}

void tst_Separation::frameWithoutFillClearsNothing()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { black });
    addRectangle(document, { 10, 10, 20, 20 }, { nothing, MobraTypes::BrushSolid, red, 2 })
        ->setItemPenJoinStyle(Qt::MiterJoin);
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(separation.plates[1].dots, 20 * 20 - 16 * 16);
    QCOMPARE(separation.plates[0].dots, 40 * 30 - (20 * 20 - 16 * 16));
    QVERIFY(prints(separation.plates[0].image, 20, 20));
}

void tst_Separation::clearOutlineClearsNothing_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::newRow("transparent") << QColor(Qt::transparent);
    QTest::newRow("clear white") << QColor(255, 255, 255, 0);
    QTest::newRow("clear red") << QColor(255, 0, 0, 0);
}

void tst_Separation::clearOutlineClearsNothing()
{
    QFETCH(QColor, pen);
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { black });
    // The fill reaches to the middle of the outline: 3 within.
    addRectangle(document, { 10, 10, 20, 20 }, { red, MobraTypes::BrushSolid, pen, 6 });
    const QRect fill(13, 13, 14, 14);
    for (const bool negative : { false, true }) {
        const Separation separation = separatedAtDesign(document, negative);
        QCOMPARE(difference(separation.plates[0].image,
                     [&](int x, int y) {
                         return (QRect(5, 5, 40, 30).contains(x, y) && !fill.contains(x, y)) != negative;
                     }),
            QString());
        QCOMPARE(difference(separation.plates[1].image,
                     [&](int x, int y) { return fill.contains(x, y) != negative; }),
            QString());
    }
}

void tst_Separation::clearWhiteFillClearsNothing()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { black });
    addRectangle(document, { 10, 10, 20, 20 }, { QColor(255, 255, 255, 0) });
    addRectangle(document, { 10, 10, 20, 20 }, { white, MobraTypes::BrushNone });
    QCOMPARE(separatedAtDesign(document).plates[0].dots, 40 * 30);
}

void tst_Separation::colorsOfOtherSpecsPrint()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 20, 10 }, { QColor::fromHsv(0, 255, 255) });
    addRectangle(document, { 30, 5, 20, 10 },
        { nothing, MobraTypes::BrushSolid, QColor::fromCmyk(0, 255, 255, 0), 30 });
    const Separation separation = separatedAtDesign(document);
    QVERIFY(isEmpty(separation.plates[0].image));
    QCOMPARE(dotsIn(separation.plates[1].image, { 5, 5, 20, 10 }), 200);
    QVERIFY(prints(separation.plates[1].image, 30, 10));
    QVERIFY(separation.warnings.isEmpty());
}

void tst_Separation::zValueDecidesBeforeOrder()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 20, 20 }, { black })->setItemZValue(2);
    // A file may hold any flags; they do not change the order on paper.
    addRectangle(document, { 15, 5, 20, 20 }, { red })->setItemQFlags(0);
    addRectangle(document, { 30, 5, 20, 20 }, { black });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(separation.plates[0].dots, 20 * 20 + 20 * 20);
    QCOMPARE(separation.plates[1].dots, 5 * 20);
    QCOMPARE(dotsIn(separation.plates[1].image, { 25, 5, 5, 20 }), 5 * 20);
}

void tst_Separation::invisibleItemsAreLeftOut()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 20, 20 }, { black });
    addRectangle(document, { 5, 5, 20, 20 }, { blue })->setItemIsVisible(false);
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(separation.plates[0].dots, 400);
    QVERIFY(separation.warnings.isEmpty());
}

void tst_Separation::selectionIsNotPrinted()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    RectangleItem *item = addRectangle(document, { 5, 5, 20, 20 }, { nothing });
    item->setSelected(true);
    QVERIFY(item->isSelected());
    const Separation separation = separatedAtDesign(document);
    QVERIFY(isEmpty(separation.plates[0].image));
    QVERIFY(isEmpty(separation.plates[1].image));
    QVERIFY(item->isSelected());
}

void tst_Separation::unscaledItemsPrintAtTheirSize()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 20, 10 }, { black })->setFlag(QGraphicsItem::ItemIgnoresTransformations);
    const QRect dots(10, 10, 40, 20);
    QCOMPARE(difference(separated(document, { 508.0 }).plates[0].image,
                 [&](int x, int y) { return dots.contains(x, y); }),
        QString());
}

void tst_Separation::overprintKeepsDotsBelow()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { red });
    addRectangle(document, { 20, 10, 10, 10 }, { black });
    const Separation separation = separatedAtDesign(document, false, true);
    QCOMPARE(separation.plates[0].dots, 10 * 10);
    QCOMPARE(separation.plates[1].dots, 40 * 30);
}

void tst_Separation::itemsThatRefuseOverprintClear()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { red });
    addRectangle(document, { 20, 10, 10, 10 }, { black })->setAllowOverprint(false);
    const Separation separation = separatedAtDesign(document, false, true);
    QCOMPARE(separation.plates[0].dots, 10 * 10);
    QCOMPARE(separation.plates[1].dots, 40 * 30 - 10 * 10);
}

void tst_Separation::negativeIsTheComplement()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { red, MobraTypes::BrushSolid, black, 3 });
    addRectangle(document, { 20, 10, 10, 10 }, { black });
    addRectangle(document, { 25, 15, 20, 30 }, { white, MobraTypes::BrushSolid, red, 2 });
    addRectangle(document, { 30, 20, 10, 10 }, { blue })->setItemRotation(30);
    const Separation positive = separatedAtDesign(document);
    const Separation negative = separatedAtDesign(document, true);
    for (std::size_t ink = 0; ink < positive.plates.size(); ++ink) {
        QVERIFY(positive.plates[ink].dots > 0);
        QCOMPARE(difference(negative.plates[ink].image,
                     [&](int x, int y) { return !prints(positive.plates[ink].image, x, y); }),
            QString());
        QCOMPARE(negative.plates[ink].dots, 60 * 50 - positive.plates[ink].dots);
    }
}

void tst_Separation::negativeOverprintKeepsTheInk()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 40, 30 }, { red });
    addRectangle(document, { 20, 10, 10, 10 }, { black });
    const Separation separation = separatedAtDesign(document, true, true);
    QCOMPARE(separation.plates[0].dots, 60 * 50 - 10 * 10);
    QCOMPARE(separation.plates[1].dots, 60 * 50 - 40 * 30);
}

void tst_Separation::colorsWithoutInkAreReportedOnce()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 5, 5, 20, 20 }, { black });
    addRectangle(document, { 5, 5, 20, 20 }, { blue })->setItemId(3);
    addRectangle(
        document, { 5, 5, 20, 20 }, { QColor(255, 0, 0, 128), MobraTypes::BrushSolid, QColor(0, 255, 0), 2 })
        ->setItemId(4);
    const Problems warnings = separatedAtDesign(document).warnings;
    QCOMPARE(warnings.size(), 2);
    QCOMPARE(warnings[0].where, u"/items/1"_s);
    QCOMPARE(warnings[0].what, u"no ink prints the fill #0000ff of rectangle 3"_s);
    QCOMPARE(warnings[0].advice, u"use an ink's colour or add an ink"_s);
    QCOMPARE(warnings[1].where, u"/items/2"_s);
    QCOMPARE(warnings[1].what, u"no ink prints the pen #00ff00 and the fill #80ff0000 of rectangle 4"_s);
}

void tst_Separation::colorsThatLeaveThePaperBareAreNoProblem()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    document.setPaper(QColor(255, 255, 0));
    for (const QColor &color :
        { white, nothing, QColor(255, 255, 0), QColor(255, 255, 254), QColor(1, 2, 3, 0) })
        addRectangle(document, { 5, 5, 20, 20 }, { color, MobraTypes::BrushSolid, color, 2 });
    addRectangle(document, { 5, 5, 20, 20 }, { blue, MobraTypes::BrushNone, blue, 0 });
    addRectangle(document, { 5, 5, 20, 20 }, { nothing, MobraTypes::BrushSolid, blue, 3 })
        ->setItemPenStyle(Qt::NoPen);
    QVERIFY(separatedAtDesign(document).warnings.isEmpty());
}

void tst_Separation::brokenDocumentIsRefused()
{
    LabelDocument document = blackAndRed({ 6, 5 });
    document.setInks({});
    Problems problems;
    QVERIFY(!separate(document, {}, problems));
    QVERIFY(!problems.isEmpty());
}

void tst_Separation::largePageIsRefused()
{
    // 100 inches: 65535 dots along a side at 655 dpi, one more dot than that at 655.36.
    LabelDocument wide = blackAndRed({ 2540, 25.4 });
    Problems problems;
    QVERIFY(!separate(wide, { 656 }, problems));
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0].advice.contains(u" 655 dpi"));
    QCOMPARE(wide.pageSizeInDots(655), QSize(65500, 655));

    // 10 x 10 inches: 128,000,000 dots at 1131.37 dpi.
    const LabelDocument square = blackAndRed({ 254, 254 });
    problems.clear();
    QVERIFY(!separate(square, { 1132 }, problems));
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0].advice.contains(u" 1131 dpi"));
}

void tst_Separation::tinyPageIsRefused()
{
    Problems problems;
    QVERIFY(!separate(blackAndRed({ 0.5, 20 }), { 20 }, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].where, u"/page"_s);
}

void tst_Separation::oddResolutionIsRefused()
{
    for (const double dpi : { 0.0, -300.0, 9.9, 9601.0, qQNaN(), qInf() }) {
        Problems problems;
        QVERIFY(!separate(blackAndRed({ 6, 5 }), { dpi }, problems));
        QCOMPARE(problems.size(), 1);
    }
}

void tst_Separation::largeGradientIsRefused()
{
    // 6000 x 6000 dots are the limit.
    const Look gradient { red, MobraTypes::BrushLinearGradient };
    LabelDocument document = blackAndRed({ 6, 5 });
    addRectangle(document, { 0, 0, 6000, 5000 }, gradient);
    Problems problems;
    QVERIFY(separate(document, { 254 }, problems));
    addRectangle(document, { 0, 0, 6000, 1001 }, gradient);
    QVERIFY(!separate(document, { 254 }, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].where, u"/items"_s);
    QVERIFY(problems[0].what.contains(u"36000000"_s));
    // At half the resolution they have a quarter of the dots.
    QVERIFY(separate(document, { 127 }, problems));
}

void tst_Separation::coverageAndAreaAreThoseOfTheDots()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    addRectangle(document, { 0, 0, 50, 20 }, { black });
    const Separation separation = separated(document, { 254.0 });
    QCOMPARE(separation.plates[0].dots, 1000);
    QCOMPARE(separation.plates[0].coverage(), 10.0);
    QCOMPARE(separation.plates[0].area(), 10.0);
    QCOMPARE(Plate().coverage(), 0.0);
}

QTEST_MAIN(tst_Separation)
#include "tst_separation.moc"
