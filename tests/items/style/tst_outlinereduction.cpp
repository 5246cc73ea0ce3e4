// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/contouredshape.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// The outlines that the print rules tell apart; the print colour is red throughout.
struct Outline
{
    QColor colour;
    Qt::PenStyle style = Qt::SolidLine;
    ushort width = 2;

    void applyTo(ContouredShape &shape) const
    {
        shape.setItemPenColor(colour);
        shape.setItemPenStyle(style);
        shape.setItemPenWidth(width);
        shape.calls.clear();
    }
};

const Outline redSolid { red };
const Outline redDashed { red, Qt::DashLine };
const Outline redNoPen { red, Qt::NoPen };
const Outline redWithoutWidth { red, Qt::SolidLine, 0 };
const Outline translucentRedOutline { translucentRed };
const Outline blackSolid { black };
const Outline blackDashed { black, Qt::DashLine };
const Outline blackNoPen { black, Qt::NoPen };
const Outline blueSolid { blue };
const Outline whiteSolid { white };
const Outline transparentOutline { transparent };

} // namespace

class tst_OutlineReduction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void outlineIsReducedForOneInk_data();
    void outlineIsReducedForOneInk();
    void outlineInTheColourOfABlackInkPrints_data();
    void outlineInTheColourOfABlackInkPrints();
    void outlineIsReducedNegatively_data();
    void outlineIsReducedNegatively();
    void itemReductionWeighsBothSwitches_data();
    void itemReductionWeighsBothSwitches();
    void negativeItemReductionSetsTheFlag_data();
    void negativeItemReductionSetsTheFlag();
};

void tst_OutlineReduction::outlineIsReducedForOneInk_data()
{
    QTest::addColumn<Outline>("outline");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("printed");

    QTest::newRow("red solid, black kept") << redSolid << true << true;
    QTest::newRow("red solid, black dropped") << redSolid << false << true;
    QTest::newRow("red dashed, black kept") << redDashed << true << true;
    QTest::newRow("red dashed, black dropped") << redDashed << false << true;
    QTest::newRow("red without style, black kept") << redNoPen << true << false;
    QTest::newRow("red without style, black dropped") << redNoPen << false << false;
    QTest::newRow("red without width, black kept") << redWithoutWidth << true << false;
    QTest::newRow("red without width, black dropped") << redWithoutWidth << false << false;
    QTest::newRow("translucent red, black kept") << translucentRedOutline << true << false;
    QTest::newRow("black solid, black kept") << blackSolid << true << true;
    QTest::newRow("black solid, black dropped") << blackSolid << false << false;
    QTest::newRow("black dashed, black kept") << blackDashed << true << false;
    QTest::newRow("black dashed, black dropped") << blackDashed << false << false;
    QTest::newRow("black without style, black kept") << blackNoPen << true << false;
    QTest::newRow("blue solid, black kept") << blueSolid << true << false;
    QTest::newRow("blue solid, black dropped") << blueSolid << false << false;
    QTest::newRow("white solid, black kept") << whiteSolid << true << false;
    QTest::newRow("transparent, black kept") << transparentOutline << true << false;
    QTest::newRow("transparent, black dropped") << transparentOutline << false << false;
}

void tst_OutlineReduction::outlineIsReducedForOneInk()
{
    QFETCH(const Outline, outline);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, printed);
    ContouredShape shape;
    outline.applyTo(shape);
    QCOMPARE(shape.resetItemPenColors(red, keepBlack), printed);
    QCOMPARE(shape.getItemPenColor(), printed ? black : white);
    QCOMPARE(shape.calls, (QStringList { printed ? u"colour #000000"_s : u"colour #ffffff"_s, u"update"_s }));
    QCOMPARE(shape.getItemPenStyle(), outline.style);
    QCOMPARE(shape.getItemPenWidth(), outline.width);
}

void tst_OutlineReduction::outlineInTheColourOfABlackInkPrints_data()
{
    QTest::addColumn<Outline>("outline");
    QTest::addColumn<bool>("printed");

    QTest::newRow("black solid") << blackSolid << true;
    QTest::newRow("black dashed") << blackDashed << true;
    QTest::newRow("black without style") << blackNoPen << false;
    QTest::newRow("red solid") << redSolid << false;
    QTest::newRow("transparent is not black") << transparentOutline << false;
}

void tst_OutlineReduction::outlineInTheColourOfABlackInkPrints()
{
    QFETCH(const Outline, outline);
    QFETCH(const bool, printed);
    ContouredShape shape;
    outline.applyTo(shape);
    QCOMPARE(shape.resetItemPenColors(black, false), printed);
    QCOMPARE(shape.getItemPenColor(), printed ? black : white);
}

void tst_OutlineReduction::outlineIsReducedNegatively_data()
{
    QTest::addColumn<Outline>("outline");
    QTest::addColumn<bool>("printed");

    QTest::newRow("red solid") << redSolid << false;
    QTest::newRow("red dashed") << redDashed << false;
    QTest::newRow("red without style") << redNoPen << false;
    QTest::newRow("translucent red") << translucentRedOutline << true;
    QTest::newRow("black solid") << blackSolid << true;
    QTest::newRow("black dashed") << blackDashed << true;
    QTest::newRow("black without style") << blackNoPen << false;
    QTest::newRow("blue without width") << Outline { blue, Qt::SolidLine, 0 } << false;
    QTest::newRow("white solid") << whiteSolid << true;
    QTest::newRow("transparent") << transparentOutline << true;
}

void tst_OutlineReduction::outlineIsReducedNegatively()
{
    QFETCH(const Outline, outline);
    QFETCH(const bool, printed);
    ContouredShape shape;
    outline.applyTo(shape);
    QCOMPARE(shape.resetItemPenColorsNegative(red), printed);
    QCOMPARE(shape.getItemPenColor(), printed ? black : white);
    QCOMPARE(shape.calls, (QStringList { printed ? u"colour #000000"_s : u"colour #ffffff"_s, u"update"_s }));
}

void tst_OutlineReduction::itemReductionWeighsBothSwitches_data()
{
    QTest::addColumn<Outline>("outline");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("keepOthers");
    QTest::addColumn<bool>("printed");

    QTest::newRow("red, both kept") << redSolid << true << true << true;
    QTest::newRow("red, none kept") << redSolid << false << false << true;
    QTest::newRow("red dashed, none kept") << redDashed << false << false << true;
    QTest::newRow("red without style, both kept") << redNoPen << true << true << false;
    QTest::newRow("black, both kept") << blackSolid << true << true << true;
    QTest::newRow("black, only black kept") << blackSolid << true << false << false;
    QTest::newRow("black, only others kept") << blackSolid << false << true << false;
    QTest::newRow("black, none kept") << blackSolid << false << false << false;
    QTest::newRow("black dashed, both kept") << blackDashed << true << true << false;
    QTest::newRow("blue, both kept") << blueSolid << true << true << false;
    QTest::newRow("transparent, both kept") << transparentOutline << true << true << false;
}

void tst_OutlineReduction::itemReductionWeighsBothSwitches()
{
    QFETCH(const Outline, outline);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, keepOthers);
    QFETCH(const bool, printed);
    for (const unsigned int before : { 0x20U, 0x21U }) {
        ContouredShape shape;
        outline.applyTo(shape);
        shape.setItemFlags(before);
        QCOMPARE(shape.resetItemColors(red, keepBlack, keepOthers), printed);
        QCOMPARE(shape.getItemPenColor(), printed ? black : white);
        QCOMPARE(shape.itemFlags(), printed ? 0x21U : 0x20U);
    }
}

void tst_OutlineReduction::negativeItemReductionSetsTheFlag_data()
{
    outlineIsReducedNegatively_data();
}

void tst_OutlineReduction::negativeItemReductionSetsTheFlag()
{
    QFETCH(const Outline, outline);
    QFETCH(const bool, printed);
    for (const unsigned int before : { 0x20U, 0x21U }) {
        ContouredShape shape;
        outline.applyTo(shape);
        shape.setItemFlags(before);
        QCOMPARE(shape.resetItemColorsNegative(red), printed);
        QCOMPARE(shape.getItemPenColor(), printed ? black : white);
        QCOMPARE(shape.itemFlags(), printed ? 0x21U : 0x20U);
    }
}

QTEST_MAIN(tst_OutlineReduction)
#include "tst_outlinereduction.moc"
