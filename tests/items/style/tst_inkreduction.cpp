// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/fillableshape.h"

#include <QBrush>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using MobraTypes::BrushStyle;

namespace {

/// What an outline does to a reduction: its rules have their own test, here they only feed the fill's rules.
struct Outline
{
    const char *name;
    QColor colour;
    Qt::PenStyle style;
    bool inPrintColour; ///< visible and red
    bool printsIfBlackIsKept;
    bool printsIfBlackIsDropped;
    bool printsNegatively;
};

const Outline outlines[] = {
    { "red pen", red, Qt::SolidLine, true, true, true, false },
    { "black pen", black, Qt::SolidLine, false, true, false, true },
    { "dashed black pen", black, Qt::DashLine, false, false, false, true },
    { "no pen", red, Qt::NoPen, false, false, false, false },
    { "transparent pen", transparent, Qt::SolidLine, false, false, false, true },
};

struct Fill
{
    const char *name;
    QColor colour;
};

const Fill fills[] = {
    { "transparent", transparent },
    { "near-white", nearWhite },
    { "white", white },
    { "black", black },
    { "red", red },
    { "blue", blue },
    { "translucent red", translucentRed },
};

struct Style
{
    const char *name;
    BrushStyle style;
};

const Style styles[] = {
    { "no brush", MobraTypes::BrushNone },
    { "solid", MobraTypes::BrushSolid },
    { "dense", MobraTypes::BrushDense4 },
    { "linear", MobraTypes::BrushLinearGradient },
};

/// What is left of a fill after a reduction.
struct Reduced
{
    QColor colour;
    BrushStyle style;
    bool printed;
    bool throughImage;
};

/// The positive rules for red, written out: what becomes of a fill, given whether black is kept and whether
/// the outline prints.
Reduced reducedForRed(const QColor &fill, BrushStyle style, bool blackIsKept, bool outlinePrints)
{
    if (fill == transparent || fill == nearWhite)
        return { fill, MobraTypes::BrushNone, outlinePrints, false };
    if (style == MobraTypes::BrushLinearGradient) {
        if (fill == red)
            return { black, style, true, true };
        if (outlinePrints)
            return { white, style, true, true };
        return { white, MobraTypes::BrushSolid, false, false };
    }
    if (fill == red)
        return { black, style, true, false };
    if (fill == black && style == MobraTypes::BrushSolid && blackIsKept)
        return { black, style, true, false };
    return { white, style, outlinePrints, false };
}

/// The negative rules for red, written out.
Reduced reducedNegativelyForRed(const QColor &fill, BrushStyle style, bool outlinePrints)
{
    if (fill == transparent || fill == nearWhite)
        return { fill, MobraTypes::BrushNone, outlinePrints, false };
    if (style == MobraTypes::BrushLinearGradient) {
        if (fill != red)
            return { black, style, true, true };
        if (outlinePrints)
            return { white, style, true, true };
        return { white, MobraTypes::BrushSolid, false, false };
    }
    if (fill == red)
        return { white, style, outlinePrints, false };
    return { black, style, true, false };
}

/// The flag word after a reduction of an item that was read-only before.
unsigned int flagsAfter(const Reduced &reduced)
{
    unsigned int flags = 0x20;
    if (reduced.printed)
        flags |= 0x01;
    if (reduced.throughImage)
        flags |= 0x02;
    if (reduced.style == MobraTypes::BrushLinearGradient)
        flags |= 0x80;
    return flags;
}

void prepareForReduction(FillableShape &shape, const Outline &outline, const Fill &fill, const Style &style)
{
    shape.setItemPenColor(outline.colour);
    shape.setItemPenStyle(outline.style);
    shape.setItemFillColor(fill.colour);
    shape.setItemBrushStyle(style.style);
    shape.updateItemPen();
    shape.updateItemBrush();
    shape.setItemFlags(0x21U | (shape.itemFlags() & 0x80U));
}

/// Fails the running test where the shape is not as expected.
void compareReduced(FillableShape &shape, const Reduced &expected)
{
    const bool gradient = expected.style == MobraTypes::BrushLinearGradient;
    QCOMPARE(shape.getItemFillColor(), expected.colour);
    QCOMPARE(shape.getItemBrushStyle(), expected.style);
    QCOMPARE(shape.getItemBrush().style(),
        gradient ? Qt::LinearGradientPattern : static_cast<Qt::BrushStyle>(int(expected.style)));
    if (!gradient)
        QCOMPARE(shape.getItemBrush().color(), expected.colour);
    QCOMPARE(shape.itemFlags(), flagsAfter(expected));
    QCOMPARE(shape.itemIsOpaque(), gradient || expected.style == MobraTypes::BrushSolid);
    QCOMPARE(shape.preparations, expected.throughImage ? 1 : 0);
    QCOMPARE(shape.getPreprintedImage().isNull(), !expected.throughImage);
}

} // namespace

class tst_InkReduction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void reductionForOneInk_data();
    void reductionForOneInk();
    void reductionForABlackInk_data();
    void reductionForABlackInk();
    void negativeReduction_data();
    void negativeReduction();
    void solidBlackFillStaysWhenBlackIsKept_data();
    void solidBlackFillStaysWhenBlackIsKept();
};

void tst_InkReduction::reductionForOneInk_data()
{
    QTest::addColumn<const Outline *>("outline");
    QTest::addColumn<const Fill *>("fill");
    QTest::addColumn<const Style *>("style");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("keepOthers");

    for (const Outline &outline : outlines) {
        for (const Fill &fill : fills) {
            for (const Style &style : styles) {
                for (const int keep : { 0, 1, 2, 3 })
                    QTest::addRow("%s fill, %s, %s, keep %d", fill.name, style.name, outline.name, keep)
                        << &outline << &fill << &style << bool(keep & 1) << bool(keep & 2);
            }
        }
    }
}

void tst_InkReduction::reductionForOneInk()
{
    QFETCH(const Outline *, outline);
    QFETCH(const Fill *, fill);
    QFETCH(const Style *, style);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, keepOthers);
    FillableShape shape;
    prepareForReduction(shape, *outline, *fill, *style);

    const bool inPrintColour
        = outline->inPrintColour || (fill->colour == red && style->style != MobraTypes::BrushNone);
    const bool blackIsKept = inPrintColour ? keepBlack : keepBlack && keepOthers;
    const bool outlinePrints = blackIsKept ? outline->printsIfBlackIsKept : outline->printsIfBlackIsDropped;
    const Reduced expected = reducedForRed(fill->colour, style->style, blackIsKept, outlinePrints);

    QCOMPARE(shape.resetItemColors(red, keepBlack, keepOthers), expected.printed);
    QCOMPARE(shape.getItemPenColor(), outlinePrints ? black : white);
    compareReduced(shape, expected);
}

void tst_InkReduction::reductionForABlackInk_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<BrushStyle>("style");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QColor>("penAfter");
    QTest::addColumn<QColor>("fillAfter");

    QTest::newRow("black on nothing")
        << black << transparent << MobraTypes::BrushSolid << true << black << transparent;
    QTest::newRow("red on black") << red << black << MobraTypes::BrushSolid << true << white << black;
    QTest::newRow("red on dense black") << red << black << MobraTypes::BrushDense2 << true << white << black;
    QTest::newRow("red on black gradient")
        << red << black << MobraTypes::BrushRadialGradient << true << white << black;
    QTest::newRow("black on red") << black << red << MobraTypes::BrushSolid << true << black << white;
    QTest::newRow("red on red") << red << red << MobraTypes::BrushSolid << false << white << white;
}

void tst_InkReduction::reductionForABlackInk()
{
    QFETCH(const QColor, pen);
    QFETCH(const QColor, fill);
    QFETCH(const BrushStyle, style);
    FillableShape shape;
    shape.setItemPenColor(pen);
    shape.setItemFillColor(fill);
    shape.setItemBrushStyle(style);
    QTEST(shape.resetItemColors(black, false, false), "printed");
    QTEST(shape.getItemPenColor(), "penAfter");
    QTEST(shape.getItemFillColor(), "fillAfter");
}

void tst_InkReduction::negativeReduction_data()
{
    QTest::addColumn<const Outline *>("outline");
    QTest::addColumn<const Fill *>("fill");
    QTest::addColumn<const Style *>("style");

    for (const Outline &outline : outlines) {
        for (const Fill &fill : fills) {
            for (const Style &style : styles)
                QTest::addRow("%s fill, %s, %s", fill.name, style.name, outline.name)
                    << &outline << &fill << &style;
        }
    }
}

void tst_InkReduction::negativeReduction()
{
    QFETCH(const Outline *, outline);
    QFETCH(const Fill *, fill);
    QFETCH(const Style *, style);
    FillableShape shape;
    prepareForReduction(shape, *outline, *fill, *style);

    const Reduced expected = reducedNegativelyForRed(fill->colour, style->style, outline->printsNegatively);
    QCOMPARE(shape.resetItemColorsNegative(red), expected.printed);
    QCOMPARE(shape.getItemPenColor(), outline->printsNegatively ? black : white);
    compareReduced(shape, expected);
}

void tst_InkReduction::solidBlackFillStaysWhenBlackIsKept_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<bool>("keepOthers");
    QTest::addColumn<QColor>("fillAfter");

    QTest::newRow("black pen, others kept") << black << true << black;
    QTest::newRow("black pen, others dropped") << black << false << white;
    QTest::newRow("red pen, others dropped") << red << false << black;
}

void tst_InkReduction::solidBlackFillStaysWhenBlackIsKept()
{
    QFETCH(const QColor, pen);
    QFETCH(const bool, keepOthers);
    FillableShape shape;
    shape.setItemPenColor(pen);
    shape.setItemFillColor(black);
    shape.resetItemColors(red, true, keepOthers);
    QTEST(shape.getItemFillColor(), "fillAfter");
}

QTEST_MAIN(tst_InkReduction)
#include "tst_inkreduction.moc"
