// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/polygons.h"
#include "tests/support/scenes.h"

#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// The item's drawn polygon with its pen and brush on white, mirrored about the middle of its size.
QImage drawnByHand(const PolygonItem &item, QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QSizeF half = item.getItemSize() / 2;
    painter.translate(half.width(), half.height());
    painter.scale(item.getItemHorizontalMirror() ? -1 : 1, item.getItemVerticalMirror() ? -1 : 1);
    painter.translate(-half.width(), -half.height());
    painter.setPen(item.getItemPen());
    painter.setBrush(item.getItemBrush());
    painter.drawConvexPolygon(item.polygon());
    return image;
}

/// Paints the item alone, for print and in a scene, with and without a pen. Returns the bounds of the scene.
QRectF drawnInEveryWay(PolygonItem &item)
{
    for (const Qt::PenStyle style : { Qt::SolidLine, Qt::NoPen, Qt::DashLine }) {
        item.setItemPenStyle(style);
        Images::painted(item, { 60, 50 }, QStyle::State_Selected);
        item.preparePrintImage();
    }
    return Scenes::boundsAfterPainting(item);
}

} // namespace

/// How polygons are painted.
class tst_PolygonPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void drawnPolygonIsPaintedWithPenAndBrush_data();
    void drawnPolygonIsPaintedWithPenAndBrush();
    void fillEndsAtTheSides_data();
    void fillEndsAtTheSides();
    void strokeStaysOnThePixelsOfTheItem_data() { Polygons::addRows(); }
    void strokeStaysOnThePixelsOfTheItem();
    void mirrorsTurnTheTriangle_data();
    void mirrorsTurnTheTriangle();
    void painterIsLeftAsItWas_data() { Polygons::addRows(); }
    void painterIsLeftAsItWas();
    void oddSizesArePaintedAsWhateverTheyAre_data() { addOddSizes(); }
    void oddSizesArePaintedAsWhateverTheyAre();
    void oddScalesArePaintedAsWhateverTheyAre_data() { addOddSizes(); }
    void oddScalesArePaintedAsWhateverTheyAre();
    void extremePensArePaintedAsWhateverTheyAre();
    void hugeDottedOutlineIsPaintedInTime_data();
    void hugeDottedOutlineIsPaintedInTime();
};

void tst_PolygonPainting::drawnPolygonIsPaintedWithPenAndBrush_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<Qt::PenJoinStyle>("join");
    QTest::addColumn<int>("brush");
    QTest::addColumn<int>("mirrors");

    for (int i = 0; i < Polygons::classes().size(); ++i) {
        for (const int penWidth : { 0, 1, 6 }) {
            for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
                for (const int brush : { 0, 1, 4, 15, 17 }) {
                    for (const int mirrors : { 0, 1, 2, 3 })
                        QTest::addRow("%s, pen %d, join %d, brush %d, mirrors %d",
                            Polygons::classes()[i].name, penWidth, int(join), brush, mirrors)
                            << i << penWidth << join << brush << mirrors;
                }
            }
        }
    }
}

void tst_PolygonPainting::drawnPolygonIsPaintedWithPenAndBrush()
{
    QFETCH(const int, index);
    QFETCH(const int, penWidth);
    QFETCH(const Qt::PenJoinStyle, join);
    QFETCH(const int, brush);
    QFETCH(const int, mirrors);
    const auto item = Polygons::made(Polygons::classes()[index], QSizeF(48, 40));
    item->setItemPenColor(blue);
    item->setItemPenJoinStyle(join);
    item->setItemPenWidth(static_cast<ushort>(penWidth));
    item->setItemFillColor(red);
    item->setItemBrushStyleInt(brush);
    item->setItemHorizontalMirror(mirrors & 1);
    item->setItemVerticalMirror(mirrors & 2);
    const QSize size(52, 44);
    const QString difference
        = Images::difference(Images::painted(*item, size), drawnByHand(*item, size), u"polygon"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PolygonPainting::fillEndsAtTheSides_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QList<QPoint>>("inside");
    QTest::addColumn<QList<QPoint>>("outside");

    using Points = QList<QPoint>;
    QTest::newRow("right triangle") << 0x10033 << Points { { 0, 2 }, { 48, 51 }, { 97, 99 }, { 0, 99 } }
                                    << Points { { 2, 0 }, { 51, 48 }, { 99, 97 }, { 99, 0 } };
    QTest::newRow("equilateral triangle")
        << 0x10034 << Points { { 49, 2 }, { 50, 2 }, { 26, 50 }, { 73, 50 }, { 2, 98 }, { 97, 98 } }
        << Points { { 47, 2 }, { 52, 2 }, { 23, 50 }, { 76, 50 }, { 0, 97 }, { 99, 97 } };
    QTest::newRow("diamond") << 0x10035 << Points { { 49, 1 }, { 1, 49 }, { 98, 50 }, { 26, 26 }, { 73, 73 } }
                             << Points { { 23, 25 }, { 76, 25 }, { 23, 74 }, { 76, 74 }, { 0, 0 } };
    // The shoulders are at 38.2 of 100, the feet at 19.1 and 80.9.
    QTest::newRow("pentagon") << 0x10036
                              << Points { { 1, 38 }, { 98, 38 }, { 49, 1 }, { 21, 99 }, { 78, 99 },
                                     { 26, 20 } }
                              << Points { { 0, 35 }, { 99, 35 }, { 16, 99 }, { 83, 99 }, { 24, 18 },
                                     { 75, 18 } };
    QTest::newRow("hexagon") << 0x10037
                             << Points { { 26, 0 }, { 73, 0 }, { 1, 49 }, { 98, 49 }, { 26, 99 }, { 73, 99 } }
                             << Points { { 23, 1 }, { 76, 1 }, { 1, 46 }, { 98, 46 }, { 23, 98 },
                                    { 76, 98 } };
    // The corners are at 29.3 and 70.7 of 100.
    QTest::newRow("octagon") << 0x10038
                             << Points { { 31, 0 }, { 68, 0 }, { 99, 31 }, { 99, 68 }, { 16, 16 },
                                    { 84, 84 } }
                             << Points { { 27, 0 }, { 72, 0 }, { 99, 27 }, { 99, 72 }, { 13, 13 },
                                    { 86, 86 } };
}

void tst_PolygonPainting::fillEndsAtTheSides()
{
    QFETCH(const int, shape);
    QFETCH(const QList<QPoint>, inside);
    QFETCH(const QList<QPoint>, outside);
    const auto item = Polygons::made(MobraTypes::ShapeType(shape));
    item->setItemSize(QSizeF(100, 100));
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(red);
    const QImage image = Images::painted(*item, { 100, 100 });
    for (const QPoint &point : inside)
        QVERIFY2(image.pixel(point) == redPixel, qPrintable(u"%1, %2"_s.arg(point.x()).arg(point.y())));
    for (const QPoint &point : outside)
        QVERIFY2(image.pixel(point) == whitePixel, qPrintable(u"%1, %2"_s.arg(point.x()).arg(point.y())));
}

void tst_PolygonPainting::strokeStaysOnThePixelsOfTheItem()
{
    QFETCH(const int, index);
    for (const Qt::PenJoinStyle join : { Qt::BevelJoin, Qt::RoundJoin }) {
        const auto item = Polygons::made(Polygons::classes()[index], QSizeF(48, 40));
        item->setItemPenJoinStyle(join);
        item->setItemPenWidth(8);
        QImage image(68, 60, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        const QStyleOptionGraphicsItem option;
        {
            QPainter painter(&image);
            painter.translate(10, 10);
            item->paint(&painter, &option, nullptr);
        }
        QVERIFY(Images::coloursOf(image).contains(blackPixel));
        QPainter(&image).fillRect(10, 10, 48, 40, Qt::white);
        QCOMPARE(Images::coloursOf(image), QSet<QRgb> { whitePixel });
    }
}

void tst_PolygonPainting::mirrorsTurnTheTriangle_data()
{
    QTest::addColumn<int>("mirrors");
    QTest::addColumn<QPoint>("empty");

    QTest::newRow("plain") << 0 << QPoint(97, 2);
    QTest::newRow("left and right") << 1 << QPoint(2, 2);
    QTest::newRow("top and bottom") << 2 << QPoint(97, 97);
    QTest::newRow("both") << 3 << QPoint(2, 97);
}

void tst_PolygonPainting::mirrorsTurnTheTriangle()
{
    QFETCH(const int, mirrors);
    QFETCH(const QPoint, empty);
    const auto item = Polygons::made(Polygons::rightTriangle.shape);
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(red);
    item->setItemHorizontalMirror(mirrors & 1);
    item->setItemVerticalMirror(mirrors & 2);
    const QImage image = Images::painted(*item, { 100, 100 });
    const QPoint opposite(99 - empty.x(), 99 - empty.y());
    QCOMPARE(image.pixel(empty), whitePixel);
    QCOMPARE(image.pixel(opposite), redPixel);
    // The shape stays where it is: mirrors are for painting only.
    Polygons::compare(item->polygon(), { { 0, 0 }, { 100, 100 }, { 0, 100 } });
}

void tst_PolygonPainting::painterIsLeftAsItWas()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index], QSizeF(48, 40));
    item->setItemFillColor(red);
    item->setItemHorizontalMirror(true);
    item->setItemVerticalMirror(true);
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Selected;
    QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const QPen pen(Qt::green, 3.0, Qt::DotLine);
    const QBrush brush(Qt::cyan, Qt::Dense2Pattern);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.translate(5, 6);
    const QTransform transform = painter.transform();
    item->paint(&painter, &option, nullptr);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), brush);
    QCOMPARE(painter.transform(), transform);
    QVERIFY(painter.end()); // warns if a saved state was left behind
}

void tst_PolygonPainting::oddSizesArePaintedAsWhateverTheyAre()
{
    QFETCH(const double, width);
    QFETCH(const double, height);
    for (const Polygons::Class &kind : Polygons::classes()) {
        for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
            const auto item = Polygons::made(kind.shape);
            item->setItemFillColor(red);
            item->setItemBrushStyle(MobraTypes::BrushRadialGradient);
            item->setItemPenWidth(9);
            item->setItemPenJoinStyle(join);
            item->setItemSize(QSizeF(width, height));
            QVERIFY(isSame(item->getItemWidth(), width));
            QVERIFY(isSame(item->getItemHeight(), height));
            QVERIFY(isFinite(item->boundingRect()));
            QVERIFY(isFinite(drawnInEveryWay(*item)));

            const auto updated = Polygons::made(kind, QSizeF(40, 30));
            updated->setItemPenJoinStyle(join);
            updated->updateItemSize(QSizeF(width, height));
            QVERIFY(isSame(updated->getItemWidth(), width));
            QVERIFY(isFinite(drawnInEveryWay(*updated)));
        }
    }
}

void tst_PolygonPainting::oddScalesArePaintedAsWhateverTheyAre()
{
    QFETCH(const double, width);
    QFETCH(const double, height);
    for (const Polygons::Class &kind : Polygons::classes()) {
        const auto item = Polygons::made(kind, QSizeF(40, 30));
        item->setItemPenWidth(3);
        item->setItemFillColor(red);
        item->setItemScaleX(width);
        item->setItemScaleY(height);
        item->setItemSizeLocal();
        QVERIFY(isSame(item->getItemScaleX(), width));
        QCOMPARE(item->boundingRect(), QRectF(0, 0, 40, 30));
        QVERIFY(isFinite(drawnInEveryWay(*item)));
        // A sound scale makes a sound outline again.
        item->setItemScaleX(40 / kind.size.width());
        item->setItemScaleY(30 / kind.size.height());
        item->setItemSizeLocal();
        Polygons::compare(
            item->getResizedPolygon(), Polygons::made(kind, QSizeF(40, 30))->getResizedPolygon());
    }
}

void tst_PolygonPainting::extremePensArePaintedAsWhateverTheyAre()
{
    for (const Polygons::Class &kind : Polygons::classes()) {
        // QPen refuses wider ones.
        for (const double width : { std::numeric_limits<double>::denorm_min(), 1e-9, 1e3, 32767.0 }) {
            const auto item = Polygons::made(kind, QSizeF(40, 30));
            for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
                Polygons::setPen(*item, width, join);
                QCOMPARE(item->getItemPen().widthF(), width);
                Images::painted(*item, { 60, 50 });
            }
            item->updateItemPen();
            Polygons::compare(item->polygon(), Polygons::made(kind, QSizeF(40, 30))->polygon());
        }
    }
}

void tst_PolygonPainting::hugeDottedOutlineIsPaintedInTime_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("byScale");
    QTest::addColumn<double>("factor");

    for (int i = 0; i < Polygons::classes().size(); ++i) {
        for (const double factor : { 1e3, 1e6, 1e12 }) {
            QTest::addRow("%s, size x %g", Polygons::classes()[i].name, factor) << i << false << factor;
            QTest::addRow("%s, scale x %g", Polygons::classes()[i].name, factor) << i << true << factor;
        }
    }
}

void tst_PolygonPainting::hugeDottedOutlineIsPaintedInTime()
{
    QFETCH(const int, index);
    QFETCH(const bool, byScale);
    QFETCH(const double, factor);
    const auto item = Polygons::made(Polygons::classes()[index].shape);
    item->setItemPenStyle(Qt::DotLine);
    if (byScale) {
        item->setItemScaleX(factor);
        item->setItemScaleY(factor);
        item->setItemSizeLocal();
    } else {
        item->setItemSize(item->getItemSize() * factor);
    }

    const auto [image, elapsed]
        = Images::paintedTimed(*item, { 400, 300 }, QTransform::fromTranslate(200, 10).rotate(10));
    QVERIFY2(elapsed < 1000, qPrintable(QString::number(elapsed)));
}

QTEST_MAIN(tst_PolygonPainting)
#include "tst_polygonpainting.moc"
