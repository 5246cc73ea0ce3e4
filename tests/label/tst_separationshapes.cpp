// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "items/shapes/pieitem.h"
#include "tests/label/printing.h"
#include "tests/support/allitems.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;
using MobraTypes::ShapeType;

namespace {

struct Turn
{
    const char *name;
    double rotation;
    bool horizontal;
    bool vertical;
};

constexpr Turn turns[] = { { "upright", 0, false, false }, { "turned", 30, false, false },
    { "mirrored", 0, true, false }, { "mirrored and turned", 75, true, true } };

constexpr MobraTypes::BrushStyle gradients[]
    = { MobraTypes::BrushLinearGradient, MobraTypes::BrushRadialGradient, MobraTypes::BrushConicalGradient };
const QRectF place(36, 40, 60, 45);

QByteArray nameOf(ShapeType shape)
{
    return AllItems::object(*AllItems::made(shape)).metaObject()->className();
}

bool hasFill(ShapeType shape)
{
    return dynamic_cast<FillColorItem *>(AllItems::made(shape).get());
}

bool hasGradient(ShapeType shape)
{
    return dynamic_cast<FillableItem *>(AllItems::made(shape).get());
}

/// A new item without a text; a symbol of which the left half is ink and the rest paper.
std::unique_ptr<Item> madeToBeSeen(ShapeType shape)
{
    std::unique_ptr<Item> item = AllItems::madeWithoutText(shape);
    if (auto *symbol = dynamic_cast<SymbolItem *>(item.get()))
        symbol->loadItemFromData(
            "<svg width=\"60\" height=\"45\"><rect width=\"60\" height=\"45\" fill=\"#FFFFFF\"/>"
            "<rect width=\"30\" height=\"45\" fill=\"#000000\"/></svg>");
    return item;
}

/// A page with an item of the class, with all that its class can paint, on a document of so many inks.
LabelDocument documentOf(ShapeType shape, const Look &look, const Turn &turn, int inks = 2)
{
    LabelDocument document = blackAndRed({ 13, 13 });
    document.setInks((document.inks() + QList<Ink> { { u"blue"_s, blue } }).first(inks));
    if (inks > 2)
        addRectangle(document, { 15, 15, 50, 100 }, { blue });
    Item &item = *addItem(document, madeToBeSeen(shape), place, look);
    if (auto *pie = dynamic_cast<PieItem *>(&item)) {
        pie->setDrawCircle(true);
        pie->setStartPieAngle(20 * 16);
        pie->setSpanPieAngle(200 * 16);
    }
    if (auto *line = dynamic_cast<LineItem *>(&item))
        line->setItemArrows(MobraTypes::LeftArrowChevron, MobraTypes::RightArrowFilled);
    item.setItemHorizontalMirror(turn.horizontal);
    item.setItemVerticalMirror(turn.vertical);
    item.setItemRotation(turn.rotation);
    return document;
}

/// What a view without antialiasing shows, a pixel for each dot.
QImage screenOf(const LabelDocument &document, double scaling)
{
    QImage image(document.pageSizeInDots(document.designDpi() * scaling), QImage::Format_RGB32);
    image.fill(Qt::white);
    const QRectF page(QPointF(), document.pageSizeInUnits());
    QGraphicsScene scene(page);
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    for (const auto &item : document.items())
        scene.addItem(dynamic_cast<QGraphicsItem *>(item->createItemCopy()));
    QPainter painter(&image);
    painter.scale(scaling, scaling);
    scene.render(&painter, page, page, Qt::IgnoreAspectRatio);
    return image;
}

/// Where the screen has a colour.
auto shows(const QImage &screen, const QColor &color)
{
    return [screen, pixel = color.rgb()](int x, int y) { return screen.pixel(x, y) == pixel; };
}

/// Where it has the colour within so many dots.
auto showsNear(const QImage &screen, const QColor &color, int reach)
{
    return [=, isShown = shows(screen, color)](int x, int y) {
        for (int v = qMax(0, y - reach); v <= qMin(screen.height() - 1, y + reach); ++v) {
            for (int u = qMax(0, x - reach); u <= qMin(screen.width() - 1, x + reach); ++u) {
                if (isShown(u, v))
                    return true;
            }
        }
        return false;
    };
}

/// Nothing when no dot prints outside the area; otherwise the first that does.
template <typename Area> QString strayDot(const QImage &plate, Area area)
{
    return difference(plate, [&](int x, int y) { return prints(plate, x, y) && area(x, y); });
}

/// Nothing when every dot of the area prints; otherwise the first that does not.
template <typename Area> QString missingDot(const QImage &plate, Area area)
{
    return difference(plate, [&](int x, int y) { return prints(plate, x, y) || area(x, y); });
}

int dotsOf(const QImage &screen, const QColor &color)
{
    int dots = 0;
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x)
            dots += screen.pixel(x, y) == color.rgb() ? 1 : 0;
    }
    return dots;
}

/// Upright pictures of gradients are moved to whole dots: the place lies there at both scalings of theirs.
void addTurnedRows(bool gradientsOnly)
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<Turn>("turn");
    QTest::addColumn<double>("scaling");
    for (const ShapeType shape : AllItems::shapesWithColours()) {
        for (const Turn &turn : turns) {
            for (const double scaling : { 1.0, gradientsOnly ? 2.5 : 2.04 }) {
                // On the screen, Qt smooths those edges of a drawing that do not lie between pixels.
                const bool smooth
                    = shape == MobraTypes::SymbolShape && (scaling != 1.0 || turn.rotation != 0);
                if (!smooth && (hasGradient(shape) || !gradientsOnly))
                    QTest::addRow("%s %s x %g", nameOf(shape).constData(), turn.name, scaling)
                        << shape << turn << scaling;
            }
        }
    }
}

} // namespace

/// The plates of every class.
class tst_SeparationShapes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void platesShowTheScreen_data() { addTurnedRows(false); }
    void platesShowTheScreen();
    void negativePlatesLeaveTheInkOut_data() { addTurnedRows(false); }
    void negativePlatesLeaveTheInkOut();
    void overprintLeavesTheInksBelow_data() { AllItems::addRows(AllItems::shapesWithColours()); }
    void overprintLeavesTheInksBelow();
    void gradientStaysInTheShape_data() { addTurnedRows(true); }
    void gradientStaysInTheShape();
    void outlineOfAGradientIsWhole_data() { addTurnedRows(true); }
    void outlineOfAGradientIsWhole();
    void circleOfAGradientPiePrints();
    void lineEndsPrint_data();
    void lineEndsPrint();
    void endsPrintWithoutALine();
    void linePrintsAlone();
    void lineKnocksOut();
    void colourWithoutInkIsWarnedAbout_data() { AllItems::addRows(AllItems::shapesWithColours()); }
    void colourWithoutInkIsWarnedAbout();
    void largeGradientIsRefused_data() { AllItems::addRows(AllItems::shapesWithColours()); }
    void largeGradientIsRefused();
};

// Solid fills and outlines: a dot of an ink is a pixel of its colour, and the plates together are all that is
// to be seen.
void tst_SeparationShapes::platesShowTheScreen()
{
    QFETCH(ShapeType, shape);
    QFETCH(Turn, turn);
    QFETCH(double, scaling);
    const QColor penOfInks[] = { black, red, red };
    const QColor fillOfInks[] = { black, black, black };
    for (int inks = 1; inks <= 3; ++inks) {
        const LabelDocument document = documentOf(
            shape, { fillOfInks[inks - 1], MobraTypes::BrushSolid, penOfInks[inks - 1], 5 }, turn, inks);
        const QImage screen = screenOf(document, scaling);
        const Separation separation = separated(document, { 254.0 * scaling });
        qint64 dots = 0;
        for (const Plate &plate : separation.plates) {
            // A line has one colour, and a barcode without bars shows one.
            QVERIFY(plate.dots > 0 || !hasGradient(shape));
            QCOMPARE(difference(plate.image, shows(screen, plate.ink.color)), QString());
            dots += plate.dots;
        }
        QCOMPARE(dots, qint64(screen.width()) * screen.height() - dotsOf(screen, white));
        QVERIFY(dots > 0);
    }
}

void tst_SeparationShapes::negativePlatesLeaveTheInkOut()
{
    QFETCH(ShapeType, shape);
    QFETCH(Turn, turn);
    QFETCH(double, scaling);
    const LabelDocument document = documentOf(shape, { red, MobraTypes::BrushSolid, black, 5 }, turn, 3);
    const QImage screen = screenOf(document, scaling);
    for (const Plate &plate : separated(document, { 254.0 * scaling, true }).plates) {
        const auto isInk = shows(screen, plate.ink.color);
        QCOMPARE(difference(plate.image, [&](int x, int y) { return !isInk(x, y); }), QString());
    }
}

void tst_SeparationShapes::overprintLeavesTheInksBelow()
{
    QFETCH(ShapeType, shape);
    LabelDocument document = documentOf(shape, { red, MobraTypes::BrushSolid, red, 5 }, turns[0], 3);
    const auto isBelow = [](int x, int y) { return QRect(15, 15, 50, 100).contains(x, y); };
    const QImage screen = screenOf(document, 1.0);
    const Separation over = separatedAtDesign(document, false, true);
    QCOMPARE(difference(over.plates[2].image, isBelow), QString());
    QCOMPARE(difference(over.plates[1].image, shows(screen, red)), QString());
    // What does not allow it knocks out.
    document.items()[1]->setAllowOverprint(false);
    QCOMPARE(
        difference(separatedAtDesign(document, false, true).plates[2].image, shows(screen, blue)), QString());
    QVERIFY(dotsOf(screen, blue) < 50 * 100);
}

void tst_SeparationShapes::gradientStaysInTheShape()
{
    QFETCH(ShapeType, shape);
    QFETCH(Turn, turn);
    QFETCH(double, scaling);
    const QImage solid = screenOf(documentOf(shape, { red }, turn), scaling);
    const int area = dotsOf(solid, red);
    for (const MobraTypes::BrushStyle style : gradients) {
        const Separation separation = separated(documentOf(shape, { red, style }, turn), { 254.0 * scaling });
        QVERIFY(isEmpty(separation.plates[0].image));
        QCOMPARE(strayDot(separation.plates[1].image, showsNear(solid, red, 1)), QString());
        // Dithered: some of the dots, but not all.
        const auto dots = double(separation.plates[1].dots);
        QVERIFY2(dots > 0.1 * area && dots < 0.9 * area, qPrintable(u"%1 of %2"_s.arg(dots).arg(area)));
    }
}

void tst_SeparationShapes::outlineOfAGradientIsWhole()
{
    QFETCH(ShapeType, shape);
    QFETCH(Turn, turn);
    QFETCH(double, scaling);
    const Look outline { nothing, MobraTypes::BrushSolid, black, 6 };
    const QImage screen = screenOf(documentOf(shape, outline, turn), scaling);
    const QImage solid
        = screenOf(documentOf(shape, { red, MobraTypes::BrushSolid, black, 6 }, turn), scaling);
    QVERIFY(dotsOf(screen, black) > 0);
    const int reach
        = turn.rotation == 0.0 ? 1 : 2; // a turned picture has its dots between those of the plate
    for (const MobraTypes::BrushStyle style : gradients) {
        const Separation separation
            = separated(documentOf(shape, { red, style, black, 6 }, turn), { 254.0 * scaling });
        QCOMPARE(missingDot(separation.plates[0].image, shows(screen, black)), QString());
        QCOMPARE(strayDot(separation.plates[0].image, showsNear(screen, black, reach)), QString());
        QCOMPARE(strayDot(separation.plates[1].image, showsNear(solid, red, reach)), QString());
        QVERIFY(separation.plates[1].dots > dotsOf(solid, red) / 10);
    }
}

// The picture of the fill ends at the wedge; the ellipse that the item shows around it prints all the same.
void tst_SeparationShapes::circleOfAGradientPiePrints()
{
    LabelDocument document = blackAndRed({ 12, 12 });
    auto *pie = dynamic_cast<PieItem *>(addItem(document, AllItems::made(MobraTypes::PieShape),
        { 10, 10, 100, 100 }, { red, MobraTypes::BrushLinearGradient, black, 4 }));
    pie->setStartPieAngle(0);
    pie->setSpanPieAngle(90 * 16);
    for (const bool circle : { false, true }) {
        pie->setDrawCircle(circle);
        const Separation separation = separatedAtDesign(document);
        const QImage &outline = separation.plates[0].image;
        // The wedge is the upper right quarter about (60, 60): its radii, and its arc at 45 degrees.
        QVERIFY(prints(outline, 85, 59) && prints(outline, 60, 35));
        QVERIFY(prints(outline, 60 + 34, 59 - 34));
        // Left, below, and at the lower left.
        QCOMPARE(prints(outline, 11, 59), circle);
        QCOMPARE(prints(outline, 59, 107), circle);
        QCOMPARE(prints(outline, 59 - 34, 60 + 34), circle);
        QCOMPARE(separation.plates[1].dots, qint64(dotsIn(separation.plates[1].image, { 58, 12, 50, 50 })));
    }
}

void tst_SeparationShapes::lineEndsPrint_data()
{
    QTest::addColumn<unsigned short>("arrows");
    QTest::addColumn<QPoint>("dot");
    QTest::addColumn<bool>("printed");

    const auto row = [](const char *name, unsigned int arrows, QPoint dot, bool printed) {
        QTest::newRow(name) << static_cast<unsigned short>(arrows) << dot << printed;
    };
    // The line runs from (50, 100) to (200, 100) with a pen of 4. A barb is 16 long and stands at 30 degrees:
    // it ends 13.9 along the line and 8 across; chevrons follow at distances of 12.8.
    row("no left head", MobraTypes::ArrowNone, { 62, 107 }, false);
    row("open left head", MobraTypes::LeftArrowOpen, { 62, 107 }, true);
    row("open left head is hollow", MobraTypes::LeftArrowOpen, { 62, 104 }, false);
    row("filled left head", MobraTypes::LeftArrowFilled, { 62, 104 }, true);
    row("left chevrons", MobraTypes::LeftArrowChevron, { 88, 107 }, true);
    row("no left chevrons", MobraTypes::LeftArrowOpen, { 88, 107 }, false);
    row("left bar", MobraTypes::LeftArrowBar, { 50, 93 }, true);
    row("no right head", MobraTypes::ArrowNone, { 187, 93 }, false);
    row("open right head", MobraTypes::RightArrowOpen, { 187, 93 }, true);
    row("open right head is hollow", MobraTypes::RightArrowOpen, { 187, 96 }, false);
    row("filled right head", MobraTypes::RightArrowFilled, { 187, 96 }, true);
    row("right chevrons", MobraTypes::RightArrowChevron, { 161, 93 }, true);
    row("right bar", MobraTypes::RightArrowBar, { 199, 106 }, true);
    row("both ends", 0x38, { 62, 104 }, true);
}

void tst_SeparationShapes::lineEndsPrint()
{
    QFETCH(unsigned short, arrows);
    QFETCH(QPoint, dot);
    LabelDocument document = blackAndRed({ 25, 20 });
    auto *line = dynamic_cast<LineItem *>(addItem(document, AllItems::made(MobraTypes::LineShape),
        { 50, 100, 150, 0 }, { nothing, MobraTypes::BrushSolid, red, 4 }));
    line->setItemArrows(arrows);
    const Separation separation = separatedAtDesign(document);
    QVERIFY(isEmpty(separation.plates[0].image));
    QTEST(prints(separation.plates[1].image, dot.x(), dot.y()), "printed");
    // Dashes leave the ends as they are, and so does a line without a pen.
    for (const Qt::PenStyle style : { Qt::DotLine, Qt::NoPen }) {
        line->setItemPenStyle(style);
        QTEST(prints(separatedAtDesign(document).plates[1].image, dot.x(), dot.y()), "printed");
    }
}

// The line itself is not painted then.
void tst_SeparationShapes::endsPrintWithoutALine()
{
    LabelDocument document = blackAndRed({ 25, 20 });
    addRectangle(document, { 20, 20, 210, 160 }, { black });
    auto *line = dynamic_cast<LineItem *>(addItem(document, AllItems::made(MobraTypes::LineShape),
        { 50, 100, 150, 0 }, { nothing, MobraTypes::BrushSolid, red, 4 }));
    line->setItemArrows(MobraTypes::LeftArrowFilled, MobraTypes::RightArrowBar);
    line->setItemPenStyle(Qt::NoPen);
    const QImage screen = screenOf(document, 1.0);
    QVERIFY(dotsOf(screen, red) > 0);
    for (const bool negative : { false, true }) {
        for (const Plate &plate : separatedAtDesign(document, negative).plates) {
            const auto isInk = shows(screen, plate.ink.color);
            QCOMPARE(
                difference(plate.image, [&](int x, int y) { return isInk(x, y) != negative; }), QString());
        }
    }
    const Separation overprinted = separatedAtDesign(document, false, true);
    QCOMPARE(difference(overprinted.plates[1].image, shows(screen, red)), QString());

    line->setItemPenColor(nothing);
    for (const bool negative : { false, true })
        QCOMPARE(difference(separatedAtDesign(document, negative).plates[1].image,
                     [&](int, int) { return negative; }),
            QString());
    line->setItemPenColor(blue);
    QCOMPARE(separatedAtDesign(document).warnings.size(), 1);
    line->setItemArrows(0);
    QCOMPARE(separatedAtDesign(document).warnings.size(), 0);
}

// A line has no height and no fill.
void tst_SeparationShapes::linePrintsAlone()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    addItem(document, AllItems::made(MobraTypes::LineShape), { 20, 50, 100, 0 },
        { nothing, MobraTypes::BrushSolid, red, 4 });
    dynamic_cast<LineItem &>(*document.items()[0]).setItemPenCapStyle(Qt::FlatCap);
    const Separation separation = separatedAtDesign(document);
    QVERIFY(separation.warnings.isEmpty());
    QCOMPARE(difference(separation.plates[1].image,
                 [](int x, int y) { return QRect(20, 48, 100, 4).contains(x, y); }),
        QString());
    QVERIFY(isEmpty(separation.plates[0].image));
}

void tst_SeparationShapes::lineKnocksOut()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    addRectangle(document, { 10, 10, 180, 80 }, { black });
    addItem(document, AllItems::made(MobraTypes::LineShape), { 20, 50, 100, 0 },
        { nothing, MobraTypes::BrushSolid, red, 4 });
    dynamic_cast<LineItem &>(*document.items()[1]).setItemPenCapStyle(Qt::FlatCap);
    const QRect line(20, 48, 100, 4);
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return QRect(10, 10, 180, 80).contains(x, y) && !line.contains(x, y); }),
        QString());
    QCOMPARE(separation.plates[1].dots, qint64(400));
}

void tst_SeparationShapes::colourWithoutInkIsWarnedAbout()
{
    QFETCH(ShapeType, shape);
    const QColor green(0, 255, 0);
    const LabelDocument document = documentOf(shape, { green, MobraTypes::BrushSolid, blue, 3 }, turns[0]);
    Problems warnings = separatedAtDesign(document).warnings;
    // A barcode of any place may be too small as well.
    warnings.removeIf([](const Problem &problem) { return !problem.what.startsWith(u"no ink prints"_s); });
    QCOMPARE(warnings.size(), 1);
    QCOMPARE(warnings[0].where, u"/items/0"_s);
    QString parts = u"pen #0000ff"_s;
    if (shape == MobraTypes::BarcodeShape)
        parts = u"fill #00ff00 and the bars #0000ff"_s;
    else if (hasFill(shape))
        parts += u" and the fill #00ff00"_s;
    QCOMPARE(warnings[0].what,
        u"no ink prints the %1 of %2"_s.arg(parts, document.items()[0]->toDescriptionString().trimmed()));
}

void tst_SeparationShapes::largeGradientIsRefused()
{
    QFETCH(ShapeType, shape);
    LabelDocument document = blackAndRed({ 1000, 1000 });
    addItem(document, AllItems::made(shape), { 0, 0, 6001, 6000 },
        { red, MobraTypes::BrushLinearGradient, black, 1 });
    Problems problems;
    // A line as long has no gradient, nor has a barcode; but the page is large enough to wait for.
    if (!hasGradient(shape))
        document.setPageSize({ 10, 10 });
    const bool printed = separate(document, { 254.0 }, problems).has_value();
    QCOMPARE(printed, !hasGradient(shape));
    QCOMPARE(problems.size(), printed ? 0 : 1);
    if (!printed)
        QVERIFY(problems[0].what.startsWith(u"the gradients of the document are too large"_s));
}

QTEST_MAIN(tst_SeparationShapes)
#include "tst_separationshapes.moc"
