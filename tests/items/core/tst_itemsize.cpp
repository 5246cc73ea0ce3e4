// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/block.h"
#include "tests/support/nearness.h"
#include "tests/support/oddnumbers.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ItemSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void equalSizesChangeNothing_data();
    void equalSizesChangeNothing();
    void barelyDifferentSizesAreAChange_data();
    void barelyDifferentSizesAreAChange();
    void resizingMultipliesTheScales();
    void ratioFollowsTheLeadingSide_data();
    void ratioFollowsTheLeadingSide();
    void limitsClampTheSize_data();
    void limitsClampTheSize();
    void forceReachesTheLimits();
    void sizeClampedToThePresentOneIsRefused_data();
    void sizeClampedToThePresentOneIsRefused();
    void sideOfZeroKeepsItsScale();
    void ratioWithoutADivisorTakesTheRequestedSide();
    void plainSettersStoreOnly();
    void updateItemSizeStoresOnly();
    void sizeChangesAreAnnouncedOnce();
    void adjustedWidthFollowsTheHeight_data();
    void adjustedWidthFollowsTheHeight();
    void anySizeIsStoredAsItIs_data();
    void anySizeIsStoredAsItIs();
};

void tst_ItemSize::equalSizesChangeNothing_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("request");

    QTest::newRow("same") << QSizeF(100, 60) << QSizeF(100, 60);
    // |100 - 100.00000000001| × 1e12 = 10, not above 100
    QTest::newRow("almost the same") << QSizeF(100, 60) << QSizeF(100.00000000001, 60);
    QTest::newRow("zero and almost zero") << QSizeF(0, 60) << QSizeF(1e-12, 60);
    QTest::newRow("almost zero and zero") << QSizeF(60, 1e-12) << QSizeF(60, 0);
}

void tst_ItemSize::equalSizesChangeNothing()
{
    QFETCH(QSizeF, size);
    QFETCH(QSizeF, request);
    Block block(size);
    block.setItemScaleX(3);
    block.setItemScaleY(5);
    QVERIFY(!block.setItemSize(request));
    QVERIFY(!block.setItemSize(request, false, false));
    QVERIFY(!block.setItemSize(request, true, true));
    QVERIFY(!block.setItemSize(request, false, 0, 0, 10, 10, false, false));
    QCOMPARE(block.getItemWidth(), size.width());
    QCOMPARE(block.getItemHeight(), size.height());
    QCOMPARE(block.getItemScaleX(), 3.0);
    QCOMPARE(block.getItemScaleY(), 5.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_ItemSize::barelyDifferentSizesAreAChange_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("request");

    // |100 - 100.000000001| × 1e12 = 1000, above 100
    QTest::newRow("width") << QSizeF(100, 60) << QSizeF(100.000000001, 60);
    QTest::newRow("height") << QSizeF(100, 60) << QSizeF(100, 60.000000001);
    QTest::newRow("zero") << QSizeF(0, 60) << QSizeF(1.1e-12, 60);
}

void tst_ItemSize::barelyDifferentSizesAreAChange()
{
    QFETCH(QSizeF, size);
    QFETCH(QSizeF, request);
    Block block(size);
    QVERIFY(block.setItemSize(request));
    QVERIFY(block.getItemWidth() == request.width());
    QVERIFY(block.getItemHeight() == request.height());
}

void tst_ItemSize::resizingMultipliesTheScales()
{
    Block block;
    QVERIFY(block.setItemSize(QSizeF(200, 100)));
    QCOMPARE(block.getItemSize(), QSizeF(200, 100));
    QCOMPARE(block.getItemScaleX(), 2.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.setItemSize(QSizeF(50, 300)));
    QCOMPARE(block.getItemScaleX(), 0.5);
    QCOMPARE(block.getItemScaleY(), 3.0);
    QVERIFY(block.setItemSize(QSizeF(100, 150), false, false));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.5);
    QVERIFY(block.setItemSize(QSizeF(300, 50), false, 0, 0, 1000, 1000, false, false));
    QCOMPARE(block.getItemScaleX(), 3.0);
    QCOMPARE(block.getItemScaleY(), 0.5);
}

void tst_ItemSize::ratioFollowsTheLeadingSide_data()
{
    QTest::addColumn<bool>("keepRatio");
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<QSizeF>("result");
    QTest::addColumn<QSizeF>("scale");

    // A block of 100 × 50 asked for 40 × 80.
    QTest::newRow("free") << false << false << QSizeF(40, 80) << QSizeF(0.4, 1.6);
    QTest::newRow("free, height leads") << false << true << QSizeF(40, 80) << QSizeF(0.4, 1.6);
    QTest::newRow("width leads") << true << false << QSizeF(40, 20) << QSizeF(0.4, 0.4);
    QTest::newRow("height leads") << true << true << QSizeF(160, 80) << QSizeF(1.6, 1.6);
}

void tst_ItemSize::ratioFollowsTheLeadingSide()
{
    QFETCH(bool, keepRatio);
    QFETCH(bool, heightLeads);
    QFETCH(QSizeF, result);
    QFETCH(QSizeF, scale);

    Block block(QSizeF(100, 50));
    QVERIFY(block.setItemSize(QSizeF(40, 80), keepRatio, heightLeads));
    QCOMPARE(block.getItemSize(), result);
    QVERIFY(isNear(block.getItemScaleX(), scale.width()));
    QVERIFY(isNear(block.getItemScaleY(), scale.height()));

    Block limited(QSizeF(100, 50));
    QVERIFY(limited.setItemSize(QSizeF(40, 80), keepRatio, 1, 1, 1000, 1000, heightLeads, false));
    QCOMPARE(limited.getItemSize(), result);
    QVERIFY(isNear(limited.getItemScaleX(), scale.width()));
    QVERIFY(isNear(limited.getItemScaleY(), scale.height()));
}

void tst_ItemSize::limitsClampTheSize_data()
{
    QTest::addColumn<QSizeF>("request");
    QTest::addColumn<bool>("keepRatio");
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<QSizeF>("smallest");
    QTest::addColumn<QSizeF>("largest");
    QTest::addColumn<QSizeF>("result");

    // A block of 100 × 50.
    const QSizeF low(10, 10);
    const QSizeF high(400, 300);
    QTest::newRow("within") << QSizeF(300, 20) << false << false << low << high << QSizeF(300, 20);
    QTest::newRow("width above") << QSizeF(500, 20) << false << false << low << high << QSizeF(400, 20);
    QTest::newRow("width below") << QSizeF(5, 20) << false << false << low << high << QSizeF(10, 20);
    QTest::newRow("height above") << QSizeF(300, 301) << false << false << low << high << QSizeF(300, 300);
    QTest::newRow("height below") << QSizeF(300, -7) << false << false << low << high << QSizeF(300, 10);
    QTest::newRow("both, each for itself")
        << QSizeF(500, 5) << false << true << low << high << QSizeF(400, 10);
    QTest::newRow("width leads") << QSizeF(500, 5) << true << false << low << high << QSizeF(400, 200);
    QTest::newRow("height leads") << QSizeF(5, 500) << true << true << low << QSizeF(900, 300)
                                  << QSizeF(600, 300);
    QTest::newRow("width leads, height breaks the ratio above")
        << QSizeF(500, 5) << true << false << low << QSizeF(400, 150) << QSizeF(400, 150);
    QTest::newRow("width leads, height breaks the ratio below")
        << QSizeF(5, 500) << true << false << low << high << QSizeF(10, 10);
    QTest::newRow("height leads, width breaks the ratio above")
        << QSizeF(5, 500) << true << true << low << high << QSizeF(400, 300);
    QTest::newRow("height leads, width breaks the ratio below")
        << QSizeF(500, 5) << true << true << QSizeF(30, 10) << high << QSizeF(30, 10);
}

void tst_ItemSize::limitsClampTheSize()
{
    QFETCH(QSizeF, request);
    QFETCH(bool, keepRatio);
    QFETCH(bool, heightLeads);
    QFETCH(QSizeF, smallest);
    QFETCH(QSizeF, largest);
    QFETCH(QSizeF, result);
    Block block(QSizeF(100, 50));
    QVERIFY(block.setItemSize(request, keepRatio, smallest.width(), smallest.height(), largest.width(),
        largest.height(), heightLeads, false));
    QCOMPARE(block.getItemSize(), result);
    QVERIFY(isNear(block.getItemScaleX() * 100, result.width()));
    QVERIFY(isNear(block.getItemScaleY() * 50, result.height()));
}

void tst_ItemSize::forceReachesTheLimits()
{
    Block block;
    QVERIFY(!block.setItemSize(QSizeF(100, 100), false, 0, 0, 80, 50, false, false));
    QCOMPARE(block.getItemSize(), QSizeF(100, 100));
    QVERIFY(block.setItemSize(QSizeF(100, 100), false, 0, 0, 80, 50, false, true));
    QCOMPARE(block.getItemSize(), QSizeF(80, 50));
    QVERIFY(isNear(block.getItemScaleX(), 0.8));
    QVERIFY(isNear(block.getItemScaleY(), 0.5));
}

void tst_ItemSize::sizeClampedToThePresentOneIsRefused_data()
{
    QTest::addColumn<QSizeF>("request");
    QTest::addColumn<bool>("force");

    QTest::newRow("other size") << QSizeF(150, 40) << false;
    QTest::newRow("other size, forced") << QSizeF(150, 40) << true;
    QTest::newRow("same size, forced") << QSizeF(100, 100) << true;
}

void tst_ItemSize::sizeClampedToThePresentOneIsRefused()
{
    QFETCH(QSizeF, request);
    QFETCH(bool, force);
    Block block;
    QVERIFY(!block.setItemSize(request, false, 100, 100, 100, 100, false, force));
    QCOMPARE(block.getItemSize(), QSizeF(100, 100));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_ItemSize::sideOfZeroKeepsItsScale()
{
    Block flat(QSizeF(50, 0));
    flat.setItemScaleY(3);
    QVERIFY(flat.setItemSize(QSizeF(100, 100)));
    QCOMPARE(flat.getItemSize(), QSizeF(100, 100));
    QCOMPARE(flat.getItemScaleX(), 2.0);
    QCOMPARE(flat.getItemScaleY(), 3.0);

    Block narrow(QSizeF(0, 50));
    narrow.setItemScaleX(3);
    QVERIFY(narrow.setItemSize(QSizeF(100, 100), false, 0, 0, 500, 500, false, false));
    QCOMPARE(narrow.getItemScaleX(), 3.0);
    QCOMPARE(narrow.getItemScaleY(), 2.0);
}

void tst_ItemSize::ratioWithoutADivisorTakesTheRequestedSide()
{
    Block flat(QSizeF(50, 0));
    QVERIFY(flat.setItemSize(QSizeF(70, 20), true, true));
    QCOMPARE(flat.getItemSize(), QSizeF(70, 20));

    Block narrow(QSizeF(0, 50));
    QVERIFY(narrow.setItemSize(QSizeF(70, 20), true, false));
    QCOMPARE(narrow.getItemSize(), QSizeF(70, 20));

    Block limited(QSizeF(0, 50));
    QVERIFY(limited.setItemSize(QSizeF(70, 20), true, 0, 0, 60, 15, false, false));
    QCOMPARE(limited.getItemSize(), QSizeF(60, 15));
}

void tst_ItemSize::plainSettersStoreOnly()
{
    Block block;
    block.setItemWidth(200);
    block.setItemHeight(-3);
    QCOMPARE(block.getItemSize(), QSizeF(200, -3));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_ItemSize::updateItemSizeStoresOnly()
{
    Block block;
    block.updateItemSize(QSizeF(200, 300));
    QCOMPARE(block.getItemSize(), QSizeF(200, 300));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
}

void tst_ItemSize::sizeChangesAreAnnouncedOnce()
{
    Block block;
    block.setItemSize(QSizeF(200, 100));
    block.setItemSize(QSizeF(300, 0), true, false);
    block.setItemSize(QSizeF(0, 500), true, 10, 10, 400, 50, true, false);
    QCOMPARE(block.sizesAnnounced, (QList<QSizeF> { { 200, 100 }, { 300, 150 }, { 100, 50 } }));
}

void tst_ItemSize::adjustedWidthFollowsTheHeight_data()
{
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("minWidth");
    QTest::addColumn<double>("maxWidth");
    QTest::addColumn<double>("minHeight");
    QTest::addColumn<double>("maxHeight");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QSizeF>("result");

    QTest::newRow("within") << 50.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(100, 50);
    QTest::newRow("height below") << 5.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(40, 20);
    QTest::newRow("height above") << 500.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(160, 80);
    QTest::newRow("width below") << 50.0 << 110.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(110, 50);
    QTest::newRow("width above") << 50.0 << 10.0 << 90.0 << 20.0 << 80.0 << 2.0 << QSizeF(90, 50);
    QTest::newRow("height limits crossed") << 50.0 << 10.0 << 200.0 << 60.0 << 40.0 << 2.0 << QSizeF(120, 60);
    QTest::newRow("width limits crossed") << 50.0 << 110.0 << 90.0 << 20.0 << 80.0 << 2.0 << QSizeF(110, 50);
    QTest::newRow("tall") << 50.0 << 10.0 << 200.0 << 20.0 << 80.0 << 0.5 << QSizeF(25, 50);
}

void tst_ItemSize::adjustedWidthFollowsTheHeight()
{
    QFETCH(double, height);
    QFETCH(double, minWidth);
    QFETCH(double, maxWidth);
    QFETCH(double, minHeight);
    QFETCH(double, maxHeight);
    QFETCH(double, ratio);
    for (double width : { 0.0, 77.0, 1e6 }) {
        double adjustedHeight = height;
        Item::adjustSizes(width, adjustedHeight, minWidth, maxWidth, minHeight, maxHeight, ratio);
        QTEST(QSizeF(width, adjustedHeight), "result");
    }
}

void tst_ItemSize::anySizeIsStoredAsItIs_data()
{
    addOddSizes();
}

void tst_ItemSize::anySizeIsStoredAsItIs()
{
    QFETCH(double, width);
    QFETCH(double, height);
    Block block;
    QVERIFY(block.setItemSize(QSizeF(width, height)));
    QVERIFY(isSame(block.getItemWidth(), width));
    QVERIFY(isSame(block.getItemHeight(), height));
    RectangleItem rectangle;
    QVERIFY(rectangle.setItemSize(QSizeF(width, height)));
    QVERIFY(isSame(rectangle.getItemWidth(), width));
    QVERIFY(isSame(rectangle.getItemHeight(), height));
}

QTEST_MAIN(tst_ItemSize)
#include "tst_itemsize.moc"
