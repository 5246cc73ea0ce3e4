// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/colours.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

/// A line's pen, which knows no lower limit from the size and no lock of the style.
class tst_LinePen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void widthStaysWithinLimits_data();
    void widthStaysWithinLimits();
    void widthIsNotLimitedByTheSize();
    void everyStyleReplacesEveryOther();
    void invisibleStyleComesBack();
    void capIsFlatOrRound();
    void everyJoinReplacesEveryOther();
    void oneJoinIsLocked();
    void colourIsPutIntoThePen();
    void updateRebuildsThePen();
    void updateOfAnEqualPenKeepsIt();
    void reductionToOneInkRepaintsThePen_data();
    void reductionToOneInkRepaintsThePen();
};

void tst_LinePen::widthStaysWithinLimits_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("stored");

    QTest::newRow("zero") << 0 << 1;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("two") << 2 << 2;
    QTest::newRow("common") << 17 << 17;
    QTest::newRow("71") << 71 << 71;
    QTest::newRow("72") << 72 << 72;
    QTest::newRow("73") << 73 << 72;
    QTest::newRow("largest") << 65535 << 72;
}

void tst_LinePen::widthStaysWithinLimits()
{
    QFETCH(const int, width);
    QFETCH(const int, stored);
    for (const ushort before : { 1, 5, 72 }) {
        LineItem item;
        item.setItemPenWidth(before);
        item.setItemPenWidth(static_cast<ushort>(width));
        QCOMPARE(item.getItemPenWidth(), static_cast<ushort>(stored));
        QCOMPARE(item.getItemPen().widthF(), double(stored));
        QCOMPARE(item.getItemPen().style(), Qt::SolidLine);
        const double margin = stored / 2.0 + 5.0;
        QCOMPARE(item.boundingRect(), QRectF(-margin, -margin, 100 + 2 * margin, 2 * margin));
    }
}

void tst_LinePen::widthIsNotLimitedByTheSize()
{
    LineItem item;
    item.setItemLength(1);
    item.setItemPenWidth(40);
    QCOMPARE(item.getItemPen().widthF(), 40.0);
    item.updateItemPen();
    QCOMPARE(item.getItemPen().widthF(), 40.0);
    item.setItemSize(QSizeF(2, 0));
    QCOMPARE(item.getItemPen().widthF(), 40.0);
}

void tst_LinePen::everyStyleReplacesEveryOther()
{
    const Qt::PenStyle styles[] = { Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
        Qt::DashDotDotLine, Qt::CustomDashLine };
    for (const Qt::PenStyle before : styles) {
        for (const Qt::PenStyle after : styles) {
            LineItem item;
            item.setItemPenWidth(3);
            item.setItemPenStyle(before);
            QCOMPARE(item.getItemPenStyle(), before);
            item.setItemPenStyle(after);
            QCOMPARE(item.getItemPenStyle(), after);
            QCOMPARE(item.getItemPen().style(), after);
            QCOMPARE(item.getItemPen().widthF(), 3.0);
        }
    }
}

void tst_LinePen::invisibleStyleComesBack()
{
    LineItem item;
    item.setItemPenWidth(6);
    item.setItemPenStyle(Qt::NoPen);
    QCOMPARE(item.getItemPenStyle(), Qt::NoPen);
    QCOMPARE(item.getItemPen().style(), Qt::NoPen);
    QCOMPARE(item.getItemPenWidth(), ushort(6));
    item.setItemPenStyle(Qt::DashLine);
    QCOMPARE(item.getItemPen().style(), Qt::DashLine);
    QCOMPARE(item.getItemPen().widthF(), 6.0);
}

void tst_LinePen::capIsFlatOrRound()
{
    LineItem item;
    item.setItemPenCapStyle(Qt::FlatCap);
    QCOMPARE(item.getItemPen().capStyle(), Qt::FlatCap);
    item.setItemPenCapStyle(Qt::RoundCap);
    QCOMPARE(item.getItemPen().capStyle(), Qt::RoundCap);
    item.setItemPenCapStyle(Qt::SquareCap);
    QCOMPARE(item.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(item.getItemPen().capStyle(), Qt::FlatCap);
}

void tst_LinePen::everyJoinReplacesEveryOther()
{
    const Qt::PenJoinStyle joins[] = { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin };
    for (const Qt::PenJoinStyle before : joins) {
        for (const Qt::PenJoinStyle after : joins) {
            LineItem item;
            item.setItemPenJoinStyle(before);
            item.setItemPenJoinStyle(after);
            QCOMPARE(item.getItemPenJoinStyle(), after);
            QCOMPARE(item.getItemPen().joinStyle(), after);
        }
    }
}

void tst_LinePen::oneJoinIsLocked()
{
    LineItem item;
    item.setItemPenJoinStyle(Qt::MPenJoinStyle);
    QCOMPARE(int(item.getItemPenJoinStyle()), 448);
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin }) {
        item.setItemPenJoinStyle(join);
        QCOMPARE(int(item.getItemPenJoinStyle()), 448);
    }
}

void tst_LinePen::colourIsPutIntoThePen()
{
    LineItem item;
    item.setItemPenWidth(4);
    item.setItemPenColor(red);
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemPen().color(), red);
    QCOMPARE(item.getItemPen().widthF(), 4.0);
}

void tst_LinePen::updateRebuildsThePen()
{
    LineItem item;
    item.setItemPenWidth(4);
    item.setItemPenColor(red);
    item.setItemPenStyle(Qt::DashLine);
    item.setItemPenCapStyle(Qt::FlatCap);
    item.setItemPenJoinStyle(Qt::BevelJoin);
    item.setItemPen(QPen(blue, 33));
    QCOMPARE(item.getItemPen().widthF(), 33.0);
    item.updateItemPen();

    const QPen pen = item.getItemPen();
    QCOMPARE(pen.brush(), QBrush(red, Qt::SolidPattern));
    QCOMPARE(pen.widthF(), 4.0);
    QCOMPARE(pen.style(), Qt::DashLine);
    QCOMPARE(pen.capStyle(), Qt::FlatCap);
    QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
}

void tst_LinePen::updateOfAnEqualPenKeepsIt()
{
    LineItem item;
    item.setItemPenWidth(4);
    item.setItemPenColor(red);
    const QPen before = item.getItemPen();
    const QRectF bounds = item.boundingRect();
    item.updateItemPen();
    QCOMPARE(item.getItemPen(), before);
    QCOMPARE(item.boundingRect(), bounds);
}

void tst_LinePen::reductionToOneInkRepaintsThePen_data()
{
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<bool>("printed");

    QTest::newRow("ink of the line") << red << true;
    QTest::newRow("other ink") << blue << false;
}

void tst_LinePen::reductionToOneInkRepaintsThePen()
{
    QFETCH(const QColor, colour);
    QFETCH(const bool, printed);
    LineItem item;
    item.setItemPenColor(red);
    item.setItemPenWidth(40);
    QCOMPARE(item.resetItemColors(colour, false, false), printed);
    QCOMPARE(item.itemFlags(), printed ? 0x01U : 0x00U);
    QCOMPARE(item.getItemPenColor(), printed ? black : white);
    QCOMPARE(item.getItemPen().color(), printed ? black : white);
    QCOMPARE(item.getItemPen().widthF(), 40.0);

    LineItem negative;
    negative.setItemPenColor(red);
    negative.setItemPenWidth(40);
    QCOMPARE(negative.resetItemColorsNegative(colour), !printed);
    QCOMPARE(negative.getItemPen().color(), printed ? white : black);
    QCOMPARE(negative.getItemPen().widthF(), 40.0);
}

QTEST_MAIN(tst_LinePen)
#include "tst_linepen.moc"
