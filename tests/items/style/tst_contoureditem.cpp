// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/contoureditem.h"
#include "tests/support/colours.h"
#include "tests/support/contouredshape.h"
#include "tests/support/itemrecords.h"
#include "tests/support/resizing.h"
#include "tests/support/standins.h"

#include <QPen>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// A pen that no update of the item would build: it shows what is patched and what is rebuilt.
QPen foreignPen()
{
    return QPen(QBrush(Qt::green), 7.5, Qt::DotLine, Qt::SquareCap, Qt::BevelJoin);
}

} // namespace

class tst_ContouredItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItemHasARoundSolidOutlineOfOne();
    void builtPenCarriesTheStoredValues();
    void penIsLimitedToHalfTheSmallerSide_data();
    void penIsLimitedToHalfTheSmallerSide();
    void everyResizeRebuildsThePen_data();
    void everyResizeRebuildsThePen();
    void equalSizeLeavesThePenAlone();
    void widthIsClampedTo72_data();
    void widthIsClampedTo72();
    void noWidthOrNoStyleGivesNoPen_data();
    void noWidthOrNoStyleGivesNoPen();
    void stylesOutsideTheirEnumerationsAreKept_data();
    void stylesOutsideTheirEnumerationsAreKept();
    void stylesOutsideTheirEnumerationsAreCopied();
    void equalValuesChangeNothing();
    void colourIsPatchedIntoThePen();
    void capIsFlatOrRoundAndPatchedIntoThePen_data();
    void capIsFlatOrRoundAndPatchedIntoThePen();
    void joinIsPatchedIntoThePen_data();
    void joinIsPatchedIntoThePen();
    void customDashLocksTheStyle();
    void joinMaskLocksTheJoin();
    void replacedPenLeavesTheStoredValues();
    void integerSettersCallTheEnumerationSetters();
    void copySetsWidthCapJoinStyleInThisOrder();
    void copyLimitsThePenToTheSizeOfTheTarget();
    void copyCannotUnlockACustomDash();
    void copyToAPlainItemCopiesTheRest();
    void recordEndsWithWidthStyleCapAndJoin();
    void loadingAppliesWidthStyleCapAndJoinInThisOrder();
    void loadingKeepsTheRulesOfTheSetters();
};

void tst_ContouredItem::newItemHasARoundSolidOutlineOfOne()
{
    const ContouredShape shape;
    QCOMPARE(shape.getItemPenWidth(), ushort(1));
    QCOMPARE(shape.getItemPenStyle(), Qt::SolidLine);
    QCOMPARE(shape.getItemPenCapStyle(), Qt::RoundCap);
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::RoundJoin);
    QCOMPARE(shape.getItemPenColor(), black);
    QCOMPARE(shape.getItemPen(), QPen());
}

void tst_ContouredItem::builtPenCarriesTheStoredValues()
{
    ContouredShape shape;
    shape.setItemPenColor(QColor(10, 20, 30, 40));
    shape.setItemPenCapStyle(Qt::FlatCap);
    shape.setItemPenJoinStyle(Qt::MiterJoin);
    shape.setItemPenStyle(Qt::DashDotLine);
    shape.setItemPenWidth(9);

    const QPen pen = shape.getItemPen();
    QCOMPARE(pen.brush(), QBrush(QColor(10, 20, 30, 40), Qt::SolidPattern));
    QCOMPARE(pen.widthF(), 9.0);
    QCOMPARE(pen.style(), Qt::DashDotLine);
    QCOMPARE(pen.capStyle(), Qt::FlatCap);
    QCOMPARE(pen.joinStyle(), Qt::MiterJoin);
    QCOMPARE(pen.miterLimit(), 4.0);
}

void tst_ContouredItem::penIsLimitedToHalfTheSmallerSide_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("paintedWidth");

    QTest::newRow("flat: 4 / 2 + 1") << QSizeF(10, 4) << 5 << 3.0;
    QTest::newRow("tall: 4 / 2 + 1") << QSizeF(4, 10) << 5 << 3.0;
    QTest::newRow("width at the limit") << QSizeF(10, 4) << 3 << 3.0;
    QTest::newRow("width below the limit") << QSizeF(10, 4) << 2 << 2.0;
    QTest::newRow("roomy") << QSizeF(20, 20) << 5 << 5.0;
    QTest::newRow("whole part of 2.5") << QSizeF(3, 3) << 5 << 2.0;
    QTest::newRow("whole part of 2.99") << QSizeF(3.98, 50) << 5 << 2.0;
    QTest::newRow("long: 40 / 2 + 1") << QSizeF(90, 40) << 30 << 21.0;
    QTest::newRow("high: 40 / 2 + 1") << QSizeF(40, 90) << 30 << 21.0;
    QTest::newRow("widest on 141") << QSizeF(141, 300) << 72 << 71.0;
    QTest::newRow("widest on 142") << QSizeF(142, 300) << 72 << 72.0;
    QTest::newRow("tiny") << QSizeF(0.5, 0.5) << 1 << 1.0;
    QTest::newRow("empty") << QSizeF(0, 0) << 5 << 1.0;
    QTest::newRow("negative limits are large unsigned numbers") << QSizeF(-10, 10) << 5 << 5.0;
    QTest::newRow("large") << QSizeF(1e5, 1e5) << 72 << 72.0;
}

void tst_ContouredItem::penIsLimitedToHalfTheSmallerSide()
{
    QFETCH(const QSizeF, size);
    QFETCH(const int, width);
    ContouredShape shape;
    shape.setItemSize(size);
    shape.setItemPenWidth(static_cast<ushort>(width));
    shape.updateItemPen();
    QTEST(shape.getItemPen().widthF(), "paintedWidth");
    QCOMPARE(int(shape.getItemPenWidth()), width);
}

void tst_ContouredItem::everyResizeRebuildsThePen_data()
{
    Resizing::addRows();
}

void tst_ContouredItem::everyResizeRebuildsThePen()
{
    QFETCH(const int, parameters);
    ContouredShape shape;
    shape.setItemSize(QSizeF(10, 4));
    shape.setItemPenWidth(5);
    QCOMPARE(shape.getItemPen().widthF(), 3.0);
    shape.calls.clear();

    QVERIFY(Resizing::resize(shape, parameters, QSizeF(20, 20)));
    QCOMPARE(shape.getItemPen().widthF(), 5.0);
    QCOMPARE(shape.calls, QStringList { u"update"_s });
}

void tst_ContouredItem::equalSizeLeavesThePenAlone()
{
    ContouredShape shape;
    shape.setItemSize(QSizeF(10, 4));
    shape.calls.clear();
    QVERIFY(!shape.setItemSize(QSizeF(10, 4)));
    QVERIFY(!shape.setItemSize(QSizeF(10, 4), true, false));
    QVERIFY(!shape.setItemSize(QSizeF(10, 4), false, 1, 1, 100, 100, false, false));
    QVERIFY(!shape.setItemSize(QSizeF(5, 2), false, 10, 4, 100, 100, false, true));
    QCOMPARE(shape.calls, QStringList());
}

void tst_ContouredItem::widthIsClampedTo72_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("stored");

    QTest::newRow("71") << 71 << 71;
    QTest::newRow("72") << 72 << 72;
    QTest::newRow("73") << 73 << 72;
    QTest::newRow("100") << 100 << 72;
    QTest::newRow("65535") << 65535 << 72;
    QTest::newRow("0") << 0 << 0;
}

void tst_ContouredItem::widthIsClampedTo72()
{
    QFETCH(const int, width);
    ContouredShape shape;
    shape.setItemSize(QSizeF(1000, 1000));
    shape.setItemPenWidth(static_cast<ushort>(width));
    QTEST(int(shape.getItemPenWidth()), "stored");
    QTEST(int(shape.getItemPen().widthF()), "stored");
}

void tst_ContouredItem::noWidthOrNoStyleGivesNoPen_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<Qt::PenStyle>("style");

    QTest::newRow("no width") << 0 << Qt::SolidLine;
    QTest::newRow("no style") << 3 << Qt::NoPen;
    QTest::newRow("neither") << 0 << Qt::NoPen;
}

void tst_ContouredItem::noWidthOrNoStyleGivesNoPen()
{
    QFETCH(const int, width);
    QFETCH(const Qt::PenStyle, style);
    ContouredShape shape;
    shape.setItemPenWidth(static_cast<ushort>(width));
    shape.setItemPenStyle(style);
    QCOMPARE(shape.getItemPen().style(), Qt::NoPen);
    QCOMPARE(shape.getItemPen().widthF(), 0.0);
    QCOMPARE(int(shape.getItemPenWidth()), width);
    QCOMPARE(shape.getItemPenStyle(), style);
}

void tst_ContouredItem::stylesOutsideTheirEnumerationsAreKept_data()
{
    QTest::addColumn<int>("number");

    for (const int number : { 0x200, 0x0FFF, 0x8000, 0xFFFF })
        QTest::addRow("%d", number) << number;
}

void tst_ContouredItem::stylesOutsideTheirEnumerationsAreKept()
{
    QFETCH(const int, number);
    const auto style = static_cast<ushort>(number);
    ContouredShape shape;
    shape.setItemPenStyleInt(style);
    shape.setItemPenCapStyleInt(style);
    shape.setItemPenJoinStyleInt(style);
    shape.updateItemPen();
    QCOMPARE(shape.getItemPenStyleInt(), style);
    QCOMPARE(shape.getItemPenCapStyleInt(), ushort(0));
    QCOMPARE(shape.getItemPenJoinStyleInt(), style);
    QCOMPARE(shape.getItemPen().style(), Qt::NoPen);

    shape.setItemPenStyleInt(ushort(Qt::DashLine));
    QCOMPARE(shape.getItemPen().style(), Qt::DashLine);
    QCOMPARE(shape.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(shape.getItemPen().joinStyle(), Qt::RoundJoin);
}

void tst_ContouredItem::stylesOutsideTheirEnumerationsAreCopied()
{
    ContouredShape source;
    source.setItemPenStyleInt(0x8001);
    source.setItemPenJoinStyleInt(0x8002);
    ContouredShape target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemPenStyleInt(), ushort(0x8001));
    QCOMPARE(target.getItemPenJoinStyleInt(), ushort(0x8002));
    QCOMPARE(target.getItemPen().style(), Qt::NoPen);
}

void tst_ContouredItem::equalValuesChangeNothing()
{
    ContouredShape shape;
    shape.setItemPen(foreignPen());
    shape.setItemPenColor(black);
    shape.setItemPenWidth(1);
    shape.setItemPenStyle(Qt::SolidLine);
    shape.setItemPenCapStyle(Qt::RoundCap);
    shape.setItemPenJoinStyle(Qt::RoundJoin);
    QCOMPARE(shape.getItemPen(), foreignPen());
}

void tst_ContouredItem::colourIsPatchedIntoThePen()
{
    ContouredShape shape;
    shape.setItemPen(foreignPen());
    shape.setItemPenColor(QColor(255, 0, 0, 128));
    QPen expected = foreignPen();
    expected.setColor(QColor(255, 0, 0, 128));
    QCOMPARE(shape.getItemPen(), expected);
    QCOMPARE(shape.getItemPenColor(), QColor(255, 0, 0, 128));
}

void tst_ContouredItem::capIsFlatOrRoundAndPatchedIntoThePen_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("cap");
    QTest::addColumn<int>("stored");

    QTest::newRow("round to flat") << 0x20 << 0x00 << 0x00;
    QTest::newRow("flat to round") << 0x00 << 0x20 << 0x20;
    QTest::newRow("square becomes flat") << 0x20 << 0x10 << 0x00;
    QTest::newRow("the cap mask becomes flat") << 0x20 << 0x30 << 0x00;
    QTest::newRow("an unknown cap becomes flat") << 0x20 << 0x05 << 0x00;
    QTest::newRow("a join becomes flat") << 0x20 << 0x80 << 0x00;
}

void tst_ContouredItem::capIsFlatOrRoundAndPatchedIntoThePen()
{
    QFETCH(const int, before);
    QFETCH(const int, cap);
    QFETCH(const int, stored);
    ContouredShape shape;
    shape.setItemPenCapStyle(static_cast<Qt::PenCapStyle>(before));
    shape.setItemPen(foreignPen());
    shape.calls.clear();
    shape.setItemPenCapStyle(static_cast<Qt::PenCapStyle>(cap));

    QPen expected = foreignPen();
    expected.setCapStyle(static_cast<Qt::PenCapStyle>(stored));
    QCOMPARE(int(shape.getItemPenCapStyle()), stored);
    QCOMPARE(shape.getItemPen(), expected);
    QVERIFY(!shape.calls.contains(u"update"_s));
}

void tst_ContouredItem::joinIsPatchedIntoThePen_data()
{
    QTest::addColumn<Qt::PenJoinStyle>("join");

    QTest::newRow("miter") << Qt::MiterJoin;
    QTest::newRow("bevel") << Qt::BevelJoin;
    QTest::newRow("svg miter") << Qt::SvgMiterJoin;
}

void tst_ContouredItem::joinIsPatchedIntoThePen()
{
    QFETCH(const Qt::PenJoinStyle, join);
    ContouredShape shape;
    shape.setItemPen(foreignPen());
    shape.setItemPenJoinStyle(join);
    QPen expected = foreignPen();
    expected.setJoinStyle(join);
    QCOMPARE(shape.getItemPenJoinStyle(), join);
    QCOMPARE(shape.getItemPen(), expected);
    QVERIFY(!shape.calls.contains(u"update"_s));
}

void tst_ContouredItem::customDashLocksTheStyle()
{
    ContouredShape shape;
    shape.setItemPenStyle(Qt::CustomDashLine);
    QCOMPARE(shape.getItemPenStyle(), Qt::CustomDashLine);
    shape.calls.clear();
    shape.setItemPenStyle(Qt::SolidLine);
    QCOMPARE(shape.getItemPenStyle(), Qt::CustomDashLine);
    QVERIFY(!shape.calls.contains(u"update"_s));
    shape.setItemPenStyleInt(512); // no style at all
    QCOMPARE(shape.getItemPenStyle(), Qt::CustomDashLine);
}

void tst_ContouredItem::joinMaskLocksTheJoin()
{
    ContouredShape shape;
    shape.setItemPenJoinStyle(Qt::MPenJoinStyle);
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::MPenJoinStyle);
    shape.setItemPenJoinStyle(Qt::MiterJoin);
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::MPenJoinStyle);
    shape.setItemPenJoinStyleInt(1024); // no join at all
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::MPenJoinStyle);
}

void tst_ContouredItem::replacedPenLeavesTheStoredValues()
{
    ContouredShape shape;
    shape.setItemPen(foreignPen());
    QCOMPARE(shape.getItemPen(), foreignPen());
    QCOMPARE(shape.getItemPenColor(), black);
    QCOMPARE(shape.getItemPenWidth(), ushort(1));
    QCOMPARE(shape.getItemPenStyle(), Qt::SolidLine);
    QCOMPARE(shape.getItemPenCapStyle(), Qt::RoundCap);
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::RoundJoin);
}

void tst_ContouredItem::integerSettersCallTheEnumerationSetters()
{
    ContouredShape shape;
    shape.setItemPenStyleInt(2);
    shape.setItemPenCapStyleInt(0x10);
    shape.setItemPenJoinStyleInt(0x40);
    QCOMPARE(shape.getItemPenStyle(), Qt::DashLine);
    QCOMPARE(shape.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(shape.getItemPenJoinStyle(), Qt::BevelJoin);
    QCOMPARE(shape.calls, (QStringList { u"style 2"_s, u"update"_s, u"cap 16"_s, u"join 64"_s }));
}

void tst_ContouredItem::copySetsWidthCapJoinStyleInThisOrder()
{
    ContouredShape source;
    source.setItemPenColor(red);
    source.setItemPenWidth(6);
    source.setItemPenCapStyle(Qt::FlatCap);
    source.setItemPenJoinStyle(Qt::BevelJoin);
    source.setItemPenStyle(Qt::DotLine);
    ContouredShape target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.calls,
        (QStringList { u"colour #ff0000"_s, u"width 6"_s, u"update"_s, u"cap 0"_s, u"join 64"_s, u"style 3"_s,
            u"update"_s, u"update"_s }));
    QCOMPARE(target.getItemPen(), source.getItemPen());
    QCOMPARE(target.getItemPen().widthF(), 6.0);
}

void tst_ContouredItem::copyLimitsThePenToTheSizeOfTheTarget()
{
    ContouredShape source;
    source.setItemPenWidth(20);
    ContouredShape target;
    target.setItemSize(QSizeF(10, 4));
    source.copyItemProperties(&target, false);
    QCOMPARE(target.getItemPenWidth(), ushort(20));
    QCOMPARE(target.getItemPen().widthF(), 3.0);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemPen().widthF(), 20.0);
}

void tst_ContouredItem::copyCannotUnlockACustomDash()
{
    ContouredShape source;
    source.setItemPenStyle(Qt::DotLine);
    ContouredShape target;
    target.setItemPenStyle(Qt::CustomDashLine);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemPenStyle(), Qt::CustomDashLine);
}

void tst_ContouredItem::copyToAPlainItemCopiesTheRest()
{
    ContouredShape source;
    source.setItemId(31);
    ParentStandIn target(MobraTypes::GroupShape);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.itemId(), short(31));
}

void tst_ContouredItem::recordEndsWithWidthStyleCapAndJoin()
{
    ContouredShape shape;
    shape.setItemPenWidth(72);
    shape.setItemPenStyle(Qt::DashDotDotLine);
    shape.setItemPenJoinStyle(Qt::SvgMiterJoin);
    const QByteArray record = ItemRecords::saved(shape);
    // 158 bytes of the item and 11 of the pen colour come first.
    QCOMPARE(record.size(), 169 + 14);
    QCOMPARE(record.last(14).toHex(),
        QByteArray("0048"
                   "00000005"
                   "00000020"
                   "00000100"));
}

void tst_ContouredItem::loadingAppliesWidthStyleCapAndJoinInThisOrder()
{
    ContouredShape source;
    source.setItemPenColor(red);
    source.setItemPenWidth(6);
    source.setItemPenStyle(Qt::DotLine);
    source.setItemPenCapStyle(Qt::FlatCap);
    source.setItemPenJoinStyle(Qt::BevelJoin);
    ContouredShape target;
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(target.calls,
        (QStringList {
            u"width 6"_s, u"update"_s, u"style 3"_s, u"update"_s, u"cap 0"_s, u"join 64"_s, u"update"_s }));
    QCOMPARE(target.getItemPen(), source.getItemPen());
    QCOMPARE(target.getItemPen().color(), red);
}

void tst_ContouredItem::loadingKeepsTheRulesOfTheSetters()
{
    ContouredShape source;
    QByteArray record = ItemRecords::saved(source);
    record.replace(169, 14,
        QByteArray::fromHex("0064"
                            "00000006"
                            "00000010"
                            "000001c0"));
    ContouredShape target;
    QCOMPARE(ItemRecords::load(target, record), QDataStream::Ok);
    QCOMPARE(target.getItemPenWidth(), ushort(72));
    QCOMPARE(target.getItemPenStyle(), Qt::CustomDashLine);
    QCOMPARE(target.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(target.getItemPenJoinStyle(), Qt::MPenJoinStyle);

    // The dash and join are locked now: another record changes neither.
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(target.getItemPenWidth(), ushort(1));
    QCOMPARE(target.getItemPenStyle(), Qt::CustomDashLine);
    QCOMPARE(target.getItemPenCapStyle(), Qt::RoundCap);
    QCOMPARE(target.getItemPenJoinStyle(), Qt::MPenJoinStyle);
}

QTEST_MAIN(tst_ContouredItem)
#include "tst_contoureditem.moc"
