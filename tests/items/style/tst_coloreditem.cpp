// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/coloreditem.h"
#include "tests/support/bareshape.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class ColoredShape : public BareShape<ColoredItem>
{
public:
    int colourCalls = 0;

    void setItemPenColor(const QColor &color) override
    {
        ++colourCalls;
        ColoredItem::setItemPenColor(color);
    }
    Item *createItemCopy() override { return new ColoredShape; }
    bool resetItemColors(const QColor & /*printColour*/, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        return false;
    }
    bool resetItemColorsNegative(const QColor & /*printColour*/) override { return false; }
};

} // namespace

class tst_ColoredItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItemHasABlackPen();
    void textSetsTheColour_data();
    void textSetsTheColour();
    void copyGoesThroughTheSetterOfTheTarget();
    void copyToAnItemWithoutColourCopiesTheRest();
    void recordEndsWithTheFullColour();
    void loadingStoresTheColourWithoutTheSetter();
    void cutRecordLeavesTheStreamInItsErrorState();
};

void tst_ColoredItem::newItemHasABlackPen()
{
    const ColoredShape shape;
    QCOMPARE(shape.getItemPenColor(), QColor(0, 0, 0));
    QCOMPARE(shape.getItemPenColorString(), u"#000000"_s);
}

void tst_ColoredItem::textSetsTheColour_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<QString>("readBack");

    QTest::newRow("name") << u"red"_s << QColor(255, 0, 0) << u"#ff0000"_s;
    QTest::newRow("upper case digits") << u"#12ABEF"_s << QColor(0x12, 0xAB, 0xEF) << u"#12abef"_s;
    QTest::newRow("three digits") << u"#0f8"_s << QColor(0x00, 0xFF, 0x88) << u"#00ff88"_s;
    QTest::newRow("alpha is kept, not read back") << u"#80ff0000"_s << QColor(255, 0, 0, 128) << u"#ff0000"_s;
    QTest::newRow("transparent reads as black") << u"transparent"_s << QColor(0, 0, 0, 0) << u"#000000"_s;
    QTest::newRow("nonsense is invalid") << u"no colour"_s << QColor() << u"#000000"_s;
}

void tst_ColoredItem::textSetsTheColour()
{
    QFETCH(const QString, text);
    ColoredShape shape;
    shape.setItemPenColorString(text);
    QTEST(shape.getItemPenColor(), "colour");
    QTEST(shape.getItemPenColorString(), "readBack");
    QCOMPARE(shape.colourCalls, 1);
}

void tst_ColoredItem::copyGoesThroughTheSetterOfTheTarget()
{
    ColoredShape source;
    source.setItemPenColor(QColor(1, 2, 3, 4));
    source.setItemId(12);
    ColoredShape target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemPenColor(), QColor(1, 2, 3, 4));
    QCOMPARE(target.itemId(), short(12));
    QCOMPARE(target.colourCalls, 1);
}

void tst_ColoredItem::copyToAnItemWithoutColourCopiesTheRest()
{
    ColoredShape source;
    source.setItemPenColor(Qt::green);
    source.setItemId(12);
    ParentStandIn target(MobraTypes::GroupShape);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.itemId(), short(12));
}

void tst_ColoredItem::recordEndsWithTheFullColour()
{
    ColoredShape shape;
    shape.setItemPenColor(QColor(255, 64, 0, 128));
    const QByteArray record = ItemRecords::saved(shape);
    // 158 bytes of the item itself; then the colour's kind (RGB), alpha, red, green, blue and padding, each
    // 8-bit component doubled to 16 bits.
    QCOMPARE(record.size(), 158 + 11);
    QCOMPARE(record.last(11).toHex(),
        QByteArray("01"
                   "8080"
                   "ffff"
                   "4040"
                   "0000"
                   "0000"));
}

void tst_ColoredItem::loadingStoresTheColourWithoutTheSetter()
{
    ColoredShape source;
    source.setItemPenColor(QColor(255, 64, 0, 128));
    ColoredShape target;
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(target.getItemPenColor(), QColor(255, 64, 0, 128));
    QCOMPARE(target.colourCalls, 0);
}

void tst_ColoredItem::cutRecordLeavesTheStreamInItsErrorState()
{
    ColoredShape source;
    source.setItemPenColor(Qt::red);
    source.setItemId(12);
    ColoredShape target;
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source).first(158)), QDataStream::ReadPastEnd);
    QCOMPARE(target.itemId(), short(12));
    QVERIFY(!target.getItemPenColor().isValid());
}

QTEST_MAIN(tst_ColoredItem)
#include "tst_coloreditem.moc"
