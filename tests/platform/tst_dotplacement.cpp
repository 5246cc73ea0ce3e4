// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/dotplacement.h"
#include "platform/zint/symbolgeometry.h"
#include "tests/support/nearness.h"

#include <QRegularExpression>
#include <QTest>
#include <QTransform>

using namespace Qt::StringLiterals;
using Zint::DotPlacement;
using Zint::placeOnDots;
using Zint::SymbolGeometry;

namespace {

SymbolGeometry symbolOf(const QSizeF &modules)
{
    SymbolGeometry geometry;
    geometry.size = modules;
    geometry.addBar(SymbolGeometry::Foreground, { 0, 0, 1, 1 });
    return geometry;
}

void addColumns()
{
    QTest::addColumn<QSizeF>("modules");
    QTest::addColumn<QRectF>("place");
    QTest::addColumn<QTransform>("toDots");
    QTest::addColumn<QRectF>("expected"); // in dots
    QTest::addColumn<QSizeF>("dots");
    QTest::addColumn<bool>("sharp");
}

} // namespace

/// Symbols on the dots of a device.
class tst_DotPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void squareModulesHaveWholeDots_data();
    void squareModulesHaveWholeDots();
    void barsKeepTheirHeight_data();
    void barsKeepTheirHeight();
    void slantedPlacesStayAsTheyAre_data();
    void slantedPlacesStayAsTheyAre();
    void emptySymbolsStayAsTheyAre();

private:
    static void place(bool squareModules);
};

void tst_DotPlacement::place(bool squareModules)
{
    QFETCH(QSizeF, modules);
    QFETCH(QRectF, place);
    QFETCH(QTransform, toDots);
    QFETCH(QRectF, expected);
    QFETCH(QSizeF, dots);
    const DotPlacement placement = placeOnDots(symbolOf(modules), squareModules, place, toDots);
    const QRectF found = toDots.mapRect(placement.place);
    QVERIFY(areNear(found.topLeft(), expected.topLeft()));
    QVERIFY(areNear(found.bottomRight(), expected.bottomRight()));
    QVERIFY(isNear(placement.dots.width(), dots.width()));
    QVERIFY(isNear(placement.dots.height(), dots.height()));
    QTEST(placement.sharp, "sharp");
}

void tst_DotPlacement::squareModulesHaveWholeDots_data()
{
    addColumns();
    const QSizeF qr(29, 29);
    const QSizeF ten(10, 10);
    const QRectF hundred(0, 0, 100, 100);
    const QTransform none;

    // 29 x 3 of 100 dots leave 13, of which 6 lie before the symbol: the middle would be at half a dot.
    QTest::newRow("upright") << qr << hundred << none << QRectF(6, 6, 87, 87) << QSizeF(3, 3) << true;
    QTest::newRow("turned by 90") << qr << hundred << QTransform().rotate(90) << QRectF(-94, 6, 87, 87)
                                  << QSizeF(3, 3) << true;
    QTest::newRow("turned by 180") << qr << hundred << QTransform().rotate(180) << QRectF(-94, -94, 87, 87)
                                   << QSizeF(3, 3) << true;
    QTest::newRow("turned by 270") << qr << hundred << QTransform().rotate(270) << QRectF(6, -94, 87, 87)
                                   << QSizeF(3, 3) << true;
    QTest::newRow("mirrored") << qr << hundred << QTransform::fromScale(-1, 1) << QRectF(-94, 6, 87, 87)
                              << QSizeF(3, 3) << true;
    // From 0.3 to 100.3: 6.8 would be the middle.
    QTest::newRow("scaled and shifted") << qr << QRectF(0, 0, 50, 50) << QTransform(2, 0, 0, 2, 0.3, 0.3)
                                        << QRectF(7, 7, 87, 87) << QSizeF(3, 3) << true;
    QTest::newRow("exactly whole") << ten << QRectF(4, 5, 30, 30) << none << QRectF(4, 5, 30, 30)
                                   << QSizeF(3, 3) << true;
    QTest::newRow("whole but for the last digits") << ten << QRectF(4, 5, 29.9999999, 29.9999999) << none
                                                   << QRectF(4, 5, 30, 30) << QSizeF(3, 3) << true;
    QTest::newRow("of one dot") << ten << QRectF(0, 0, 19.9, 19.9) << none << QRectF(5, 5, 10, 10)
                                << QSizeF(1, 1) << true;
    QTest::newRow("of less than a dot")
        << ten << QRectF(0, 0, 9.9, 9.9) << none << QRectF(0, 0, 9.9, 9.9) << QSizeF(0.99, 0.99) << false;
    QTest::newRow("of 2.9 x 3.1 dots")
        << ten << QRectF(0, 0, 29, 31) << none << QRectF(4, 5, 20, 20) << QSizeF(2, 2) << true;
    QTest::newRow("stretched") << ten << QRectF(0, 0, 29, 45) << none << QRectF(4, 2, 20, 40) << QSizeF(2, 4)
                               << true;
    QTest::newRow("stretched and turned") << ten << QRectF(0, 0, 29, 45) << QTransform().rotate(90)
                                          << QRectF(-43, 4, 40, 20) << QSizeF(2, 4) << true;
    QTest::newRow("flattened to less than a dot")
        << ten << QRectF(0, 0, 35, 5) << none << QRectF(2, 0, 30, 5) << QSizeF(3, 0.5) << false;
}

void tst_DotPlacement::squareModulesHaveWholeDots()
{
    place(true);
}

void tst_DotPlacement::barsKeepTheirHeight_data()
{
    addColumns();
    const QSizeF bars(29, 10);
    const QRectF wide(0, 0, 100, 37.5);
    QTest::newRow("upright") << bars << wide << QTransform() << QRectF(6, 0, 87, 37.5) << QSizeF(3, 3.75)
                             << true;
    QTest::newRow("turned by 90") << bars << wide << QTransform().rotate(90) << QRectF(-37.5, 6, 37.5, 87)
                                  << QSizeF(3, 3.75) << true;
    QTest::newRow("of less than a dot") << bars << QRectF(0, 0, 28, 37.5) << QTransform()
                                        << QRectF(0, 0, 28, 37.5) << QSizeF(28.0 / 29.0, 3.75) << false;
    QTest::newRow("lower than a dot a module")
        << bars << QRectF(0, 0, 87, 5) << QTransform() << QRectF(0, 0, 87, 5) << QSizeF(3, 0.5) << true;
}

void tst_DotPlacement::barsKeepTheirHeight()
{
    place(false);
}

void tst_DotPlacement::slantedPlacesStayAsTheyAre_data()
{
    QTest::addColumn<QTransform>("toDots");
    QTest::addColumn<QSizeF>("dots");
    QTest::newRow("by 30 degrees") << QTransform().rotate(30) << QSizeF(3.5, 2.5);
    QTest::newRow("by 45 degrees, enlarged") << QTransform().rotate(45).scale(2, 2) << QSizeF(7, 5);
}

void tst_DotPlacement::slantedPlacesStayAsTheyAre()
{
    QFETCH(QTransform, toDots);
    QFETCH(QSizeF, dots);
    const QRectF place(1, 2, 35, 25);
    const DotPlacement placement = placeOnDots(symbolOf({ 10, 10 }), true, place, toDots);
    QCOMPARE(placement.place, place);
    QVERIFY(isNear(placement.dots.width(), dots.width()));
    QVERIFY(isNear(placement.dots.height(), dots.height()));
    QVERIFY(!placement.sharp);
}

void tst_DotPlacement::emptySymbolsStayAsTheyAre()
{
    SymbolGeometry gap; // as of the zeros of Flattermarken
    gap.size = QSizeF(10, 10);
    const DotPlacement placement = placeOnDots(gap, true, { 0, 0, 35, 35 }, {});
    QCOMPARE(placement.place, QRectF(0, 0, 35, 35));
    QVERIFY(!placement.sharp);
}

QTEST_APPLESS_MAIN(tst_DotPlacement)
#include "tst_dotplacement.moc"
