// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/polygons.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using Polygons::isClose;

namespace {

/// A row of the file that tests/tools/polygon_outlines.py writes.
struct Row
{
    QString kind;
    QString className;
    QSizeF size;
    QString pen; ///< Empty, as the join, where they do not matter.
    QString join;
    QList<double> values;

    QByteArray title() const
    {
        return u"%1 of %2, %3 x %4, pen %5, join %6"_s.arg(kind, className)
            .arg(size.width())
            .arg(size.height())
            .arg(pen, join)
            .toLatin1();
    }
};

Row rowOf(const QString &line)
{
    const QStringList columns = line.split(u',');
    Row row { columns.value(0), columns.value(1),
        QSizeF(columns.value(2).toDouble(), columns.value(3).toDouble()), columns.value(4), columns.value(5),
        {} };
    for (const QString &value : columns.mid(6))
        row.values << value.toDouble();
    return row;
}

QList<Row> rowsOfTheFile()
{
    QFile file(QStringLiteral(VX_TEST_DATA_DIR "/polygonoutlines.csv"));
    QList<Row> rows;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return rows;
    while (!file.atEnd()) {
        const QString line = QString::fromLatin1(file.readLine().trimmed());
        if (!line.startsWith(u'#'))
            rows << rowOf(line);
    }
    return rows;
}

const Polygons::Class *classOf(const QString &name)
{
    const auto &all = Polygons::classes();
    const auto found = std::find_if(
        all.begin(), all.end(), [&name](const auto &kind) { return name == QLatin1StringView(kind.name); });
    return found == all.end() ? nullptr : &*found;
}

QPolygonF polygonOf(const QList<double> &values)
{
    QPolygonF polygon;
    for (qsizetype i = 0; i + 1 < values.size(); i += 2)
        polygon << QPointF(values[i], values[i + 1]);
    return polygon;
}

QList<double> tableOf(const PolygonItem &item)
{
    QList<double> table;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            table << item.getOvershoot(row, column);
    }
    return table;
}

QPolygonF outlineOf(const PolygonItem &item, const QString &kind)
{
    if (kind == "resized"_L1)
        return item.getResizedPolygon();
    return kind == "drawn"_L1 ? item.polygon() : item.getShapePolygon();
}

void compareNumbers(const QList<double> &actual, const QList<double> &expected)
{
    QCOMPARE(actual.size(), expected.size());
    for (qsizetype i = 0; i < actual.size(); ++i)
        QVERIFY2(isClose(actual[i], expected[i]),
            qPrintable(u"number %1 is %2 instead of %3"_s.arg(i).arg(actual[i]).arg(expected[i])));
}

} // namespace

Q_DECLARE_METATYPE(Row)

/// The outlines of the polygons for sizes, pens and joins.
class tst_PolygonOutlines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void fileHoldsEveryCombination();
    void outlinesAreThoseOfTheFile_data();
    void outlinesAreThoseOfTheFile();
    void outlinesDoNotDependOnTheWayToThem_data() { Polygons::addRows(); }
    void outlinesDoNotDependOnTheWayToThem();
    void drawnPolygonOfAPenOfFour_data();
    void drawnPolygonOfAPenOfFour();
    void shapePolygonOfAPenOfFour_data();
    void shapePolygonOfAPenOfFour();
    void withoutPenTheOutlineIsTheResizedPolygon_data() { Polygons::addRows(); }
    void withoutPenTheOutlineIsTheResizedPolygon();
    void reachOfTheRightTriangleFollowsBothSides();
    void miterLeavesTwoRepeatedCornersInTheRightTriangle();
    void squareDiamondReachesByTheRootOfTwo();
    void pentagonCountsWholePensOnly_data();
    void pentagonCountsWholePensOnly();
    void hexagonTakesTheMiterColumnForEveryJoin();
    void octagonIgnoresTheTableWhereItIsDrawn();
    void apexOfTheEquilateralTriangleDoesNotCross();
    void zeroSideLeavesTheResizedPolygon_data();
    void zeroSideLeavesTheResizedPolygon();
};

void tst_PolygonOutlines::fileHoldsEveryCombination()
{
    // 6 classes in 4 sizes: a table, a resized polygon, and 2 polygons for each of 5 pens and 4 joins.
    const QList<Row> rows = rowsOfTheFile();
    QCOMPARE(rows.size(), 6 * 4 * (2 + 2 * 5 * 4));
    for (const Row &row : rows) {
        QVERIFY2(classOf(row.className), qPrintable(row.className));
        QVERIFY2((QStringList { u"table"_s, u"resized"_s, u"drawn"_s, u"shape"_s }).contains(row.kind),
            qPrintable(row.kind));
        QVERIFY(row.values.size() >= 6);
    }
}

void tst_PolygonOutlines::outlinesAreThoseOfTheFile_data()
{
    QTest::addColumn<Row>("row");
    for (const Row &row : rowsOfTheFile())
        QTest::newRow(row.title().constData()) << row;
}

void tst_PolygonOutlines::outlinesAreThoseOfTheFile()
{
    QFETCH(const Row, row);
    const Polygons::Class *kind = classOf(row.className);
    QVERIFY(kind);
    const auto item = Polygons::made(*kind, row.size);
    QVERIFY(item);
    if (!row.pen.isEmpty())
        Polygons::setPen(*item, row.pen.toDouble(), Qt::PenJoinStyle(row.join.toInt()));
    if (row.kind == "table"_L1)
        compareNumbers(tableOf(*item), row.values);
    else
        Polygons::compare(outlineOf(*item, row.kind), polygonOf(row.values));
}

void tst_PolygonOutlines::outlinesDoNotDependOnTheWayToThem()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto direct = Polygons::made(kind, QSizeF(60, 45));
    Polygons::setPen(*direct, 6, Qt::MiterJoin);

    const auto detour = Polygons::made(kind, QSizeF(10, 300));
    Polygons::setPen(*detour, 20, Qt::BevelJoin);
    detour->setItemSize(QSizeF(1, 1));
    detour->setItemPenJoinStyle(Qt::MiterJoin);
    detour->setItemPenWidth(6);
    detour->updateItemSize(QSizeF(120, 7));
    detour->setItemSize(QSizeF(60, 45));
    Polygons::compare(detour->polygon(), direct->polygon());
    Polygons::compare(detour->getShapePolygon(), direct->getShapePolygon());
    Polygons::compare(detour->getResizedPolygon(), direct->getResizedPolygon());
    compareNumbers(tableOf(*detour), tableOf(*direct));
}

void tst_PolygonOutlines::drawnPolygonOfAPenOfFour_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Qt::PenJoinStyle>("join");
    QTest::addColumn<QPolygonF>("drawn");

    // Half the pen is 2. The diagonal of 200 × 100 is 223.606797750, so the upper corner moves by
    // (100 + 223.606797750) / 200 × 2 and the right one by (200 + 223.606797750) / 100 × 2.
    const QSizeF wide(200, 100);
    QTest::newRow("right triangle, miter")
        << 0x10033 << wide << Qt::MiterJoin
        << QPolygonF({ { 2, 3.2360679775 }, { 191.527864045, 98 }, { 2, 98 } });
    QTest::newRow("right triangle, bevel")
        << 0x10033 << wide << Qt::BevelJoin << QPolygonF({ { 2, 2 }, { 198, 98 }, { 2, 98 } });
    QTest::newRow("right triangle, round")
        << 0x10033 << wide << Qt::RoundJoin << QPolygonF({ { 2, 2 }, { 198, 98 }, { 2, 98 } });

    // The sides of 100 × 50 √3 rise at 60 degrees: 1 / tan 30° = √3 and 1 / cos 60° = 2 for miters,
    // 1.05 sin 60° = 0.909326673974 and 1 / tan 60° = 0.577350269190 for bevels.
    const double height = 50 * std::sqrt(3.0);
    const QSizeF equilateral(100, height);
    QTest::newRow("equilateral triangle, miter")
        << 0x10034 << equilateral << Qt::MiterJoin
        << QPolygonF({ { 50, 4 }, { 3.46410161514, height - 2 }, { 96.53589838486, height - 2 } });
    QTest::newRow("equilateral triangle, bevel")
        << 0x10034 << equilateral << Qt::BevelJoin
        << QPolygonF(
               { { 50, 1.15470053838 }, { 1.818653347947, height - 2 }, { 98.181346652053, height - 2 } });
    QTest::newRow("equilateral triangle, round")
        << 0x10034 << equilateral << Qt::RoundJoin
        << QPolygonF({ { 50, 2 }, { 2, height - 2 }, { 98, height - 2 } });

    const QSizeF square(100, 100);
    const double root = 2.828427124746; // twice the root of 2
    QTest::newRow("diamond, miter") << 0x10035 << square << Qt::MiterJoin
                                    << QPolygonF({ { 50, root }, { 100 - root, 50 }, { 50, 100 - root },
                                           { root, 50 } });
    QTest::newRow("diamond, bevel") << 0x10035 << square << Qt::BevelJoin
                                    << QPolygonF({ { 50, 2 }, { 98, 50 }, { 50, 98 }, { 2, 50 } });

    // Shrunk by the whole pen: to 0.96 of the width, and 0.92 of a height of 50. The resized points lie at
    // 0, 0.190983005630, 0.5, 0.809016994370 and 1 of the width, and at 0, 0.381966011250 and 1 of the
    // height.
    QTest::newRow("pentagon, round") << 0x10036 << QSizeF(100, 50) << Qt::RoundJoin
                                     << QPolygonF({ { 2, 25 - 5.90169943749 * 0.92 }, { 50, 2 },
                                            { 98, 25 - 5.90169943749 * 0.92 },
                                            { 50 + 30.9016994375 * 0.96, 48 },
                                            { 50 - 30.9016994375 * 0.96, 48 } });

    // Shrunk to 96 × (height - 4); the corners above and below by 2 / √3 of the pen across instead.
    const double side = 25 * (100 - 4 * 1.154700538379) / 100;
    const QPolygonF hexagon { { 50 - side, 2 }, { 50 + side, 2 }, { 98, height / 2 },
        { 50 + side, height - 2 }, { 50 - side, height - 2 }, { 2, height / 2 } };
    QTest::newRow("hexagon, miter") << 0x10037 << equilateral << Qt::MiterJoin << hexagon;
    QTest::newRow("hexagon, bevel") << 0x10037 << equilateral << Qt::BevelJoin << hexagon;

    // Shrunk from 92 to 88: 46 - 19 × 88 / 92 = 27.826086956522.
    const double near = 27.826086956522;
    const double far = 92 - near;
    const QPolygonF octagon { { near, 2 }, { far, 2 }, { 90, near }, { 90, far }, { far, 90 }, { near, 90 },
        { 2, far }, { 2, near } };
    QTest::newRow("octagon, miter") << 0x10038 << QSizeF(92, 92) << Qt::MiterJoin << octagon;
    QTest::newRow("octagon, round") << 0x10038 << QSizeF(92, 92) << Qt::RoundJoin << octagon;
}

void tst_PolygonOutlines::drawnPolygonOfAPenOfFour()
{
    QFETCH(const int, shape);
    QFETCH(const QSizeF, size);
    QFETCH(const Qt::PenJoinStyle, join);
    QFETCH(const QPolygonF, drawn);
    const auto item = Polygons::made(MobraTypes::ShapeType(shape));
    item->setItemSize(size);
    item->setItemPenJoinStyle(join);
    item->setItemPenWidth(4);
    // The reference points have ten digits, which leaves a few 1e-8 to these numbers.
    QCOMPARE(item->polygon().size(), drawn.size());
    for (qsizetype i = 0; i < drawn.size(); ++i)
        QVERIFY2((item->polygon()[i] - drawn[i]).manhattanLength() < 1e-7,
            qPrintable(
                u"point %1 is (%2, %3)"_s.arg(i).arg(item->polygon()[i].x()).arg(item->polygon()[i].y())));
}

void tst_PolygonOutlines::shapePolygonOfAPenOfFour_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Qt::PenJoinStyle>("join");
    QTest::addColumn<QPolygonF>("hit");

    const QSizeF square(100, 100);
    QTest::newRow("right triangle, bevel")
        << 0x10033 << square << Qt::BevelJoin
        << QPolygonF({ { 0, 0 }, { 3, 0 }, { 100, 97 }, { 100, 100 }, { 0, 100 } });
    QTest::newRow("equilateral triangle, miter")
        << 0x10034 << square << Qt::MiterJoin
        << QPolygonF({ { 50, 0 }, { 50, 0 }, { 50, 0 }, { 0, 100 }, { 100, 100 } });
    QTest::newRow("equilateral triangle, bevel")
        << 0x10034 << square << Qt::BevelJoin
        << QPolygonF({ { 51.4, 0 }, { 50, -2.8 }, { 48.6, 0 }, { 0, 100 }, { 100, 100 } });
    QTest::newRow("equilateral triangle, round")
        << 0x10034 << square << Qt::RoundJoin
        << QPolygonF({ { 51.3, 0 }, { 50, -2.6 }, { 48.7, 0 }, { 0, 100 }, { 100, 100 } });
    QTest::newRow("diamond, miter") << 0x10035 << square << Qt::MiterJoin
                                    << QPolygonF({ { 50, 0 }, { 100, 50 }, { 50, 100 }, { 0, 50 } });
    QTest::newRow("diamond, bevel") << 0x10035 << square << Qt::BevelJoin
                                    << QPolygonF(
                                           { { 50, -0.4 }, { 100.4, 50 }, { 50, 100.4 }, { -0.4, 50 } });
    const double waist = 50 - 11.803398874989 * 1.01;
    QTest::newRow("pentagon, bevel") << 0x10036 << square << Qt::BevelJoin
                                     << QPolygonF({ { -0.5, waist }, { 50, -0.5 }, { 100.5, waist },
                                            { 50 + 30.9016994375 * 1.01, 100.5 },
                                            { 50 - 30.9016994375 * 1.01, 100.5 } });
    QTest::newRow("hexagon, round") << 0x10037 << square << Qt::RoundJoin
                                    << QPolygonF({ { 24.877, -0.246 }, { 75.123, -0.246 }, { 100.246, 50 },
                                           { 75.123, 100.246 }, { 24.877, 100.246 }, { -0.246, 50 } });
    const double low = 46 - 19 * 92.26 / 92;
    QTest::newRow("octagon, bevel") << 0x10038 << QSizeF(92, 92) << Qt::BevelJoin
                                    << QPolygonF({ { low, -0.13 }, { 92 - low, -0.13 }, { 92.13, low },
                                           { 92.13, 92 - low }, { 92 - low, 92.13 }, { low, 92.13 },
                                           { -0.13, 92 - low }, { -0.13, low } });
}

void tst_PolygonOutlines::shapePolygonOfAPenOfFour()
{
    QFETCH(const int, shape);
    QFETCH(const QSizeF, size);
    QFETCH(const Qt::PenJoinStyle, join);
    QFETCH(const QPolygonF, hit);
    const auto item = Polygons::made(MobraTypes::ShapeType(shape));
    item->setItemSize(size);
    item->setItemPenJoinStyle(join);
    item->setItemPenWidth(4);
    const QPolygonF actual = item->getShapePolygon();
    QCOMPARE(actual.size(), hit.size());
    for (qsizetype i = 0; i < hit.size(); ++i)
        QVERIFY2((actual[i] - hit[i]).manhattanLength() < 1e-7,
            qPrintable(u"point %1 is (%2, %3)"_s.arg(i).arg(actual[i].x()).arg(actual[i].y())));
}

void tst_PolygonOutlines::withoutPenTheOutlineIsTheResizedPolygon()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
        const auto item = Polygons::made(kind, QSizeF(60, 45));
        item->setItemPenJoinStyle(join);
        item->setItemPenWidth(9);
        QVERIFY(item->polygon() != item->getResizedPolygon());
        item->setItemPenWidth(0);
        QCOMPARE(item->polygon(), item->getResizedPolygon());
        QCOMPARE(item->getShapePolygon(), item->getResizedPolygon());
    }
}

void tst_PolygonOutlines::reachOfTheRightTriangleFollowsBothSides()
{
    const auto item = Polygons::made(Polygons::rightTriangle, QSizeF(200, 100));
    QVERIFY(isClose(item->getOvershoot(0, 0), (200 + 223.606797749979) / 100));
    QVERIFY(isClose(item->getOvershoot(1, 0), (100 + 223.606797749979) / 200));
}

void tst_PolygonOutlines::miterLeavesTwoRepeatedCornersInTheRightTriangle()
{
    const auto item = Polygons::made(Polygons::rightTriangle, QSizeF(200, 100));
    item->setItemPenJoinStyle(Qt::MiterJoin);
    item->setItemPenWidth(8);
    Polygons::compare(
        item->getShapePolygon(), { { 0, 0 }, { 0, 0 }, { 200, 100 }, { 200, 100 }, { 0, 100 } });
}

void tst_PolygonOutlines::squareDiamondReachesByTheRootOfTwo()
{
    for (const double side : { 1.0, 100.0, 37.5 }) {
        const auto item = Polygons::made(Polygons::diamond, QSizeF(side, side));
        QVERIFY(isClose(item->getOvershoot(0, 0), 1.414213562373095));
        QVERIFY(isClose(item->getOvershoot(1, 0), 1.414213562373095));
    }
}

void tst_PolygonOutlines::pentagonCountsWholePensOnly_data()
{
    QTest::addColumn<Qt::PenJoinStyle>("join");

    QTest::newRow("miter") << Qt::MiterJoin;
    QTest::newRow("bevel") << Qt::BevelJoin;
    QTest::newRow("round") << Qt::RoundJoin;
}

void tst_PolygonOutlines::pentagonCountsWholePensOnly()
{
    QFETCH(const Qt::PenJoinStyle, join);
    const auto item = Polygons::made(Polygons::pentagon, QSizeF(100, 100));
    Polygons::setPen(*item, 0.4, join);
    QCOMPARE(item->polygon(), item->getResizedPolygon());
    QCOMPARE(item->getShapePolygon(), item->getResizedPolygon());
    Polygons::setPen(*item, 1.0, join);
    QVERIFY(item->polygon() != item->getResizedPolygon());
}

void tst_PolygonOutlines::hexagonTakesTheMiterColumnForEveryJoin()
{
    const auto item = Polygons::made(Polygons::hexagon, QSizeF(100, 100));
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin }) {
        Polygons::setPen(*item, 10, join);
        for (int column = 0; column < 3; ++column) {
            item->setOvershoot(0, column, column == 0 ? 2 : 40);
            item->setOvershoot(1, column, column == 0 ? 3 : 40);
        }
        item->adjustForPen();
        // Across by 2 and 3 times the pen, down by the pen: 50 - 25 × 80 / 100, and 50 - 50 × 70 / 100.
        Polygons::compare(
            item->polygon(), { { 30, 5 }, { 70, 5 }, { 85, 50 }, { 70, 95 }, { 30, 95 }, { 15, 50 } });
    }
}

void tst_PolygonOutlines::octagonIgnoresTheTableWhereItIsDrawn()
{
    const auto item = Polygons::made(Polygons::octagon, QSizeF(92, 92));
    Polygons::setPen(*item, 4, Qt::RoundJoin);
    const QPolygonF drawn = item->polygon();
    const QPolygonF hit = item->getShapePolygon();
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            item->setOvershoot(row, column, 7);
    }
    item->adjustForPen();
    QCOMPARE(item->polygon(), drawn);
    QVERIFY(item->getShapePolygon() != hit);
}

void tst_PolygonOutlines::apexOfTheEquilateralTriangleDoesNotCross()
{
    const auto item = Polygons::made(Polygons::equilateralTriangle, QSizeF(100, 100));
    Polygons::setPen(*item, 20, Qt::BevelJoin);
    // Convex: it turns the same way at every point.
    const QPolygonF hit = item->getShapePolygon();
    QCOMPARE(hit.size(), 5);
    QList<bool> left;
    for (qsizetype i = 0; i < hit.size(); ++i) {
        const QPointF in = hit[i] - hit[(i + 4) % 5];
        const QPointF out = hit[(i + 1) % 5] - hit[i];
        left << (in.x() * out.y() - in.y() * out.x() < 0);
    }
    QCOMPARE(left.count(true), 5);
}

void tst_PolygonOutlines::zeroSideLeavesTheResizedPolygon_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QSizeF>("size");
    for (int i = 0; i < Polygons::classes().size(); ++i) {
        for (const QSizeF &size : { QSizeF(0, 50), QSizeF(50, 0), QSizeF(0, 0) })
            QTest::addRow("%s, %g x %g", Polygons::classes()[i].name, size.width(), size.height())
                << i << size;
    }
}

void tst_PolygonOutlines::zeroSideLeavesTheResizedPolygon()
{
    QFETCH(const int, index);
    QFETCH(const QSizeF, size);
    const Polygons::Class &kind = Polygons::classes()[index];
    QPolygonF expected;
    for (const QPointF &point : kind.points)
        expected << QPointF(
            point.x() * size.width() / kind.size.width(), point.y() * size.height() / kind.size.height());
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
        const auto item = Polygons::made(kind, size);
        Polygons::setPen(*item, 5, join);
        Polygons::compare(item->getResizedPolygon(), expected);
        Polygons::compare(item->polygon(), expected);
        Polygons::compare(item->getShapePolygon(), expected);
    }
}

QTEST_MAIN(tst_PolygonOutlines)
#include "tst_polygonoutlines.moc"
