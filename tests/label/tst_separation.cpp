// SPDX-License-Identifier: BSD-3-Clause
#include "label/onebit.h"
#include "label/platerenderer.h"
#include "label/printcopy.h"
#include "label/separation.h"
#include "tests/label/printing.h"
#include "tests/support/itemrecords.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

Separation separated(const LabelDocument &document, const SeparationOptions &options)
{
    Problems problems;
    std::optional<Separation> separation = separate(document, options, problems);
    if (!separation)
        qFatal("not separated: %s", qPrintable(problems.value(0).what));
    return std::move(*separation);
}

Separation separatedAtDesign(const LabelDocument &document, bool negative = false, bool overprint = false)
{
    return separated(document, { document.designDpi(), negative, overprint });
}

bool isEmpty(const QImage &plate)
{
    return difference(plate, [](int, int) { return false; }).isEmpty();
}

/// A quarter of the items are transparent, the rest in the inks, white or a colour that is no ink.
QColor randomColor(std::mt19937 &random)
{
    const QColor colors[] = { black, red, blue, white, nothing, QColor(0, 255, 0), QColor(255, 255, 255, 0) };
    return colors[random() % std::size(colors)];
}

/// Rectangles of any style, turned, mirrored and on top of each other.
LabelDocument randomDocument(unsigned int seed)
{
    std::mt19937 random(seed);
    LabelDocument document = blackAndRed({ 20, 12 });
    document.setInks(document.inks() + QList<Ink> { { u"blue"_s, blue } });
    for (int i = 0; i < 8; ++i) {
        const QRectF place(
            double(random() % 160), double(random() % 90), 10 + random() % 70, 10 + random() % 50);
        RectangleItem *item = addRectangle(document, place,
            { randomColor(random), static_cast<MobraTypes::BrushStyle>(random() % 18), randomColor(random),
                static_cast<unsigned short>(random() % 8) });
        if (random() % 2)
            item->setItemRotation(double(random() % 360));
        item->setItemHorizontalMirror(random() % 2);
        item->setItemVerticalMirror(random() % 2);
        item->setItemZValue(random() % 3);
    }
    return document;
}

/// The same with upright rectangles, whose edges lie on even units: at no scaling of the tests in the middle
/// of a dot.
LabelDocument uprightDocument(unsigned int seed)
{
    LabelDocument document = randomDocument(seed);
    const auto even = [](double value) { return 2 * std::floor(value / 2); };
    for (const auto &item : document.items()) {
        auto &rectangle = dynamic_cast<RectangleItem &>(*item);
        rectangle.setItemRotation(0);
        rectangle.setPos(even(rectangle.x()), even(rectangle.y()));
        rectangle.setItemSize({ even(rectangle.getItemWidth()), even(rectangle.getItemHeight()) });
        rectangle.setItemPenWidth(rectangle.getItemPenWidth() / 4 * 4);
        rectangle.setItemPenJoinStyle(Qt::MiterJoin);
    }
    return document;
}

/// The plate of the red ink before dots are made exclusive, in bands of so many rows.
QImage redPlate(const LabelDocument &document, double scaling, int rowsPerBand)
{
    QGraphicsScene scene(QRectF(QPointF(), document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    for (const auto &item : document.items()) {
        PrintCopy copy(*item, scaling, PrintCopy::Mode::Positive);
        copy.reduceTo(red);
        copy.handTo(scene);
    }
    const QSize dots = document.pageSizeInDots(document.designDpi() * scaling);
    return renderPlate(scene, dots, scaling, 0xFFFFFFFF, qint64(dots.width()) * rowsPerBand);
}

constexpr int oneBand = 10000;

} // namespace

class tst_Separation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
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
    void itemsStayAsTheyAre();
    void selectionIsNotPrinted();
    void unscaledItemsPrintAtTheirSize();
    void dotsBelongToOneInk();
    void overprintKeepsDotsBelow();
    void itemsThatRefuseOverprintClear();
    void negativeIsTheComplement();
    void negativeOverprintKeepsTheInk();
    void gradientPrintsInItsInkOnly_data();
    void gradientPrintsInItsInkOnly();
    void mirroredGradientIsMirrored();
    void gradientOutlineIsWhole();
    void densePatternKeepsItsShade_data();
    void densePatternKeepsItsShade();
    void bandsDoNotShow_data();
    void bandsDoNotShow();
    void bandsHardlyShowInSlantedAndRoundEdges();
    void colorsWithoutInkAreReportedOnce();
    void colorsThatLeaveThePaperBareAreNoProblem();
    void brokenDocumentIsRefused();
    void largePageIsRefused();
    void tinyPageIsRefused();
    void oddResolutionIsRefused();
    void largeGradientIsRefused();
    void coverageAndAreaAreThoseOfTheDots();
};

void tst_Separation::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

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

void tst_Separation::itemsStayAsTheyAre()
{
    const LabelDocument document = randomDocument(7);
    QList<QByteArray> before;
    for (const auto &item : document.items())
        before.append(ItemRecords::saved(*item));
    QVERIFY(!separated(document, { 300, false, false }).plates.empty());
    QVERIFY(!separated(document, { 100, true, true }).plates.empty());
    for (std::size_t i = 0; i < document.items().size(); ++i)
        QCOMPARE(ItemRecords::saved(*document.items()[i]), before[qsizetype(i)]);
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

void tst_Separation::dotsBelongToOneInk()
{
    const double resolutions[] = { 127.0, 254.0, 518.16 };
    qint64 printed = 0;
    for (unsigned int seed = 0; seed < 200; ++seed) {
        const Separation separation = separated(randomDocument(seed), { resolutions[seed % 3] });
        const QSize size = separation.plates[0].image.size();
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                int inks = 0;
                for (const Plate &plate : separation.plates)
                    inks += prints(plate.image, x, y) ? 1 : 0;
                if (inks > 1)
                    QFAIL(qPrintable(
                        u"dot (%1, %2) of document %3 has %4 inks"_s.arg(x).arg(y).arg(seed).arg(inks)));
                printed += inks;
            }
        }
    }
    QVERIFY(printed > 0);
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

void tst_Separation::gradientPrintsInItsInkOnly_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<double>("rotation");
    const char *names[] = { "linear", "radial", "conical" };
    for (int kind = 0; kind < 3; ++kind) {
        for (const double scaling : { 0.5, 1.0, 2.04 }) {
            for (const double rotation : { 0.0, 30.0 })
                QTest::addRow("%s x %g, %g degrees", names[kind], scaling, rotation)
                    << MobraTypes::BrushLinearGradient + kind << scaling << rotation;
        }
    }
}

void tst_Separation::gradientPrintsInItsInkOnly()
{
    QFETCH(int, style);
    QFETCH(double, scaling);
    QFETCH(double, rotation);
    LabelDocument document = blackAndRed({ 24, 24 });
    addRectangle(document, { 60, 80, 120, 80 }, { red, static_cast<MobraTypes::BrushStyle>(style) })
        ->setItemRotation(rotation);
    const Separation separation = separated(document, { 254.0 * scaling });
    QVERIFY(isEmpty(separation.plates[0].image));
    // Dithered: some of the dots, but not all.
    const double area = 120 * 80 * scaling * scaling;
    QVERIFY(double(separation.plates[1].dots) > 0.1 * area);
    QVERIFY(double(separation.plates[1].dots) < 0.9 * area);

    // Back into the rectangle about its middle (120, 120); the outermost dots may be cut by its edge.
    const double angle = rotation * 3.14159265358979 / 180.0;
    const double edge = 1.0 / scaling;
    QCOMPARE(difference(separation.plates[1].image,
                 [&](int x, int y) {
                     const double dx = (x + 0.5) / scaling - 120;
                     const double dy = (y + 0.5) / scaling - 120;
                     const bool inside = std::abs(dx * std::cos(angle) + dy * std::sin(angle)) <= 60 + edge
                         && std::abs(dy * std::cos(angle) - dx * std::sin(angle)) <= 40 + edge;
                     return inside && prints(separation.plates[1].image, x, y);
                 }),
        QString());
}

void tst_Separation::mirroredGradientIsMirrored()
{
    LabelDocument document = blackAndRed({ 20, 12 });
    // From paper above to ink below, and the other way round.
    addRectangle(document, { 10, 10, 60, 100 }, { red, MobraTypes::BrushLinearGradient });
    addRectangle(document, { 90, 10, 60, 100 }, { red, MobraTypes::BrushLinearGradient })
        ->setItemVerticalMirror(true);
    const QImage plate = separated(document, { 254.0 }).plates[1].image;
    QVERIFY(dotsIn(plate, { 10, 10, 60, 20 }) < 60 * 20 / 4);
    QVERIFY(dotsIn(plate, { 10, 90, 60, 20 }) > 60 * 20 * 3 / 4);
    QVERIFY(dotsIn(plate, { 90, 10, 60, 20 }) > 60 * 20 * 3 / 4);
    QVERIFY(dotsIn(plate, { 90, 90, 60, 20 }) < 60 * 20 / 4);
}

void tst_Separation::gradientOutlineIsWhole()
{
    LabelDocument document = blackAndRed({ 12, 12 });
    addRectangle(document, { 10, 10, 80, 60 }, { red, MobraTypes::BrushLinearGradient, black, 6 })
        ->setItemPenJoinStyle(Qt::MiterJoin);
    const QRect outside(20, 20, 160, 120);
    const QRect inside = outside.adjusted(12, 12, -12, -12);
    const Separation separation = separated(document, { 508.0 });
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return outside.contains(x, y) && !inside.contains(x, y); }),
        QString());
    QCOMPARE(qint64(dotsIn(separation.plates[1].image, inside)), separation.plates[1].dots);
}

// Dense4 sets every second dot, Dense1 about 94 % and Dense7 about 6 % of them, at any resolution.
void tst_Separation::densePatternKeepsItsShade_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("scaling");
    for (const double scaling : { 0.5, 1.0, 2.04 }) {
        QTest::addRow("94 %% x %g", scaling) << int(MobraTypes::BrushDense1) << 93.75 << scaling;
        QTest::addRow("50 %% x %g", scaling) << int(MobraTypes::BrushDense4) << 50.0 << scaling;
        QTest::addRow("6 %% x %g", scaling) << int(MobraTypes::BrushDense7) << 6.25 << scaling;
    }
}

void tst_Separation::densePatternKeepsItsShade()
{
    QFETCH(int, style);
    QFETCH(double, percent);
    QFETCH(double, scaling);
    LabelDocument document = blackAndRed({ 16, 16 });
    addRectangle(document, { 20, 20, 80, 80 }, { red, static_cast<MobraTypes::BrushStyle>(style) });
    addRectangle(document, { 90, 90, 50, 50 }, { red, static_cast<MobraTypes::BrushStyle>(style) })
        ->setItemRotation(30);
    const Separation separation = separated(document, { 254.0 * scaling });
    QVERIFY(isEmpty(separation.plates[0].image));
    const QRect straight(qCeil(20 * scaling), qCeil(20 * scaling), int(64 * scaling), int(64 * scaling));
    const double share
        = 100.0 * dotsIn(separation.plates[1].image, straight) / (straight.width() * straight.height());
    QVERIFY2(std::abs(share - percent) < 1.5, qPrintable(QString::number(share)));
    const QRect turned(qCeil(105 * scaling), qCeil(105 * scaling), int(24 * scaling), int(24 * scaling));
    const double turnedShare
        = 100.0 * dotsIn(separation.plates[1].image, turned) / (turned.width() * turned.height());
    QVERIFY2(std::abs(turnedShare - percent) < 6.0, qPrintable(QString::number(turnedShare)));
}

void tst_Separation::bandsDoNotShow_data()
{
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("rowsPerBand");
    QTest::newRow("single rows") << 1.0 << 1;
    QTest::newRow("eight rows at half the size") << 0.5 << 8;
    QTest::newRow("13 rows at twice the size") << 2.0 << 13;
    QTest::newRow("32 rows at 2.04") << 2.04 << 32;
}

void tst_Separation::bandsDoNotShow()
{
    QFETCH(double, scaling);
    QFETCH(int, rowsPerBand);
    for (unsigned int seed = 0; seed < 40; ++seed) {
        const LabelDocument document = uprightDocument(seed);
        const QImage whole = redPlate(document, scaling, oneBand);
        const QImage bands = redPlate(document, scaling, rowsPerBand);
        QCOMPARE(difference(bands, [&](int x, int y) { return prints(whole, x, y); }), QString());
    }
}

// Qt rounds the coordinates of such edges by 1/64 of a dot, one way below the top of an image and the other
// way above.
void tst_Separation::bandsHardlyShowInSlantedAndRoundEdges()
{
    qint64 printed = 0;
    qint64 different = 0;
    for (unsigned int seed = 0; seed < 40; ++seed) {
        const LabelDocument document = randomDocument(seed);
        const QImage whole = redPlate(document, 2.04, oneBand);
        const QImage bands = redPlate(document, 2.04, 50);
        printed += OneBit::countBlack(whole);
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x)
                different += prints(whole, x, y) != prints(bands, x, y) ? 1 : 0;
        }
    }
    QVERIFY(printed > 0);
    QVERIFY2(different * 1000 < printed, qPrintable(u"%1 of %2 dots"_s.arg(different).arg(printed)));
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
