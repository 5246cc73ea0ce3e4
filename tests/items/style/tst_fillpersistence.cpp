// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/fillableshape.h"
#include "tests/support/gradients.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QBrush>
#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Gradients::compareStops;
using Images::imageOf;
using MobraTypes::BrushStyle;

class tst_FillPersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Copying
    void copyCarriesTheFillButNoPrintState();
    void copyCarriesTheDefaultsOfPrintingToo();
    void copyRebuildsTheBrushOfAnEqualFill_data();
    void copyRebuildsTheBrushOfAnEqualFill();
    void copyToAPlainItemCopiesTheRest();

    // Record
    void recordEndsWithStyleAndFill_data();
    void recordEndsWithStyleAndFill();
    void loadingRebuildsTheBrushOfAnEqualFill();
    void loadingExtendsTheSignOfTheStyle();
};

// Copying

void tst_FillPersistence::copyCarriesTheFillButNoPrintState()
{
    FillableShape source;
    source.setItemSize(QSizeF(40, 30));
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    source.setSceneBackgroundColor(yellow);
    source.setPrintScaling(2.0);
    source.setPrintDitherMethod(Qt::MonoOnly | Qt::ThresholdDither);
    source.setItemPalette({ red, white });
    source.setPreprintedImage(imageOf({ { blackPixel } }));
    source.updateItemBrush();

    FillableShape target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemFillColor(), red);
    QCOMPARE(target.getItemBrushStyle(), MobraTypes::BrushRadialGradient);
    QCOMPARE(target.getSceneBackgroundColor(), yellow);
    QCOMPARE(target.getScaling(), 2.0);
    QCOMPARE(target.getPrintDitherMethod(), Qt::MonoOnly | Qt::ThresholdDither);
    QVERIFY(target.getPreprintedImage().isNull());
    QVERIFY(!source.partialColorRender().isNull());
    QVERIFY(target.partialColorRender().isNull());
    compareStops(target.getItemBrush(), { { 0.0, yellow }, { 0.5, red } });
}

void tst_FillPersistence::copyCarriesTheDefaultsOfPrintingToo()
{
    FillableShape target;
    target.setSceneBackgroundColor(yellow);
    target.setPrintScaling(2.0);
    target.setPrintDitherMethod(Qt::MonoOnly | Qt::ThresholdDither);
    target.setItemFillColor(red);
    target.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    compareStops(target.getItemBrush(), { { 0.0, yellow }, { 1.0, red } });

    FillableShape source;
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getSceneBackgroundColor(), transparent);
    QCOMPARE(target.getScaling(), 1.0);
    QCOMPARE(target.getPrintDitherMethod(), Qt::MonoOnly | Qt::DiffuseAlphaDither);
    // The brush is built from them: white to red over the height of 100.
    compareStops(target.getItemBrush(), { { 0.0, white }, { 1.0, red } });
    const QBrush brush = target.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 100));
}

void tst_FillPersistence::copyRebuildsTheBrushOfAnEqualFill_data()
{
    QTest::addColumn<bool>("copySize");
    QTest::addColumn<QPointF>("end");

    QTest::newRow("with the size of the source") << true << QPointF(0, 30);
    QTest::newRow("with the size of the target") << false << QPointF(0, 70);
}

void tst_FillPersistence::copyRebuildsTheBrushOfAnEqualFill()
{
    QFETCH(const bool, copySize);
    FillableShape source;
    source.setItemSize(QSizeF(40, 30));
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    FillableShape target;
    target.setItemSize(QSizeF(50, 70));
    target.setItemFillColor(red);
    target.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    source.copyItemProperties(&target, copySize);
    const QBrush brush = target.getItemBrush();
    QTEST(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), "end");
}

void tst_FillPersistence::copyToAPlainItemCopiesTheRest()
{
    FillableShape source;
    source.setItemId(31);
    ParentStandIn target(MobraTypes::GroupShape);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.itemId(), short(31));
}

// Record

void tst_FillPersistence::recordEndsWithStyleAndFill_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QByteArray>("tail");

    // Two bytes of style; then kind, alpha, red, green, blue and padding of the colour.
    QTest::newRow("solid, transparent") << 1 << transparent
                                        << QByteArray("0001"
                                                      "01"
                                                      "0000"
                                                      "0000"
                                                      "0000"
                                                      "0000"
                                                      "0000");
    QTest::newRow("conical, red") << 17 << red
                                  << QByteArray("0011"
                                                "01"
                                                "ffff"
                                                "ffff"
                                                "0000"
                                                "0000"
                                                "0000");
    QTest::newRow("none, translucent") << 0 << QColor(16, 32, 48, 128)
                                       << QByteArray("0000"
                                                     "01"
                                                     "8080"
                                                     "1010"
                                                     "2020"
                                                     "3030"
                                                     "0000");
    QTest::newRow("negative, red") << -3 << red
                                   << QByteArray("fffd"
                                                 "01"
                                                 "ffff"
                                                 "ffff"
                                                 "0000"
                                                 "0000"
                                                 "0000");
}

void tst_FillPersistence::recordEndsWithStyleAndFill()
{
    QFETCH(const int, style);
    QFETCH(const QColor, fill);
    FillableShape shape;
    shape.setItemBrushStyle(static_cast<BrushStyle>(style));
    shape.setItemFillColor(fill);
    const QByteArray record = ItemRecords::saved(shape);
    QCOMPARE(record.size(), 158 + 11 + 14 + 13);
    QTEST(record.last(13).toHex(), "tail");

    FillableShape loaded;
    QCOMPARE(ItemRecords::load(loaded, record), QDataStream::Ok);
    QCOMPARE(int(loaded.getItemBrushStyle()), style);
    QCOMPARE(loaded.getItemFillColor(), fill);
}

void tst_FillPersistence::loadingRebuildsTheBrushOfAnEqualFill()
{
    FillableShape source;
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushDense5);
    FillableShape target;
    target.setItemFillColor(red);
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(target.getItemBrush(), QBrush(red, Qt::Dense5Pattern));
    QVERIFY(!target.itemIsOpaque());
}

void tst_FillPersistence::loadingExtendsTheSignOfTheStyle()
{
    FillableShape shape;
    QByteArray record = ItemRecords::saved(shape);
    record.replace(183, 2, QByteArray::fromHex("ffff"));
    QCOMPARE(ItemRecords::load(shape, record), QDataStream::Ok);
    QCOMPARE(int(shape.getItemBrushStyle()), -1);
    QCOMPARE(ItemRecords::saved(shape).mid(183, 2).toHex(), QByteArray("ffff"));
}

QTEST_MAIN(tst_FillPersistence)
#include "tst_fillpersistence.moc"
