// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/classfactory.h"
#include "items/core/mobratypes.h"
#include "items/shapes/polygonitem.h"

#include <QPen>
#include <QPolygonF>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

/// The six polygons, and what tests do to all of them.
namespace Polygons {

struct Class
{
    const char *name;
    MobraTypes::ShapeType shape;
    int code;
    const char *description;
    QSizeF size;
    QPolygonF points;
    double bevelReach; ///< Row 2 of the overshoot table for bevels,
    double roundReach; ///< and for joins other than miters and bevels.
};

inline const Class rightTriangle { "RightTriangleItem", MobraTypes::RightTriangleShape, 0x10033,
    "right triangle", { 100, 100 }, { { 0, 0 }, { 100, 100 }, { 0, 100 } }, 1.5, 1.5 };
inline const Class equilateralTriangle { "EquilateralTriangleItem", MobraTypes::EquilateralTriangleShape,
    0x10034, "equilateral triangle", { 100, 86.60254038 },
    { { 50, 0 }, { 0, 86.60254038 }, { 100, 86.60254038 } }, 0.7, 0.65 };
inline const Class diamond { "DiamondItem", MobraTypes::DiamondShape, 0x10035, "diamond", { 100, 100 },
    { { 50, 0 }, { 100, 50 }, { 50, 100 }, { 0, 50 } }, 0.4, 0.4 };
inline const Class pentagon { "PentagonItem", MobraTypes::PentagonShape, 0x10036, "pentagon",
    { 95.10565163, 90.45084972 },
    { { 0, 34.54915028 }, { 47.55282581, 0 }, { 95.10565163, 34.54915028 }, { 76.94208843, 90.45084972 },
        { 18.1635632, 90.45084972 } },
    0.25, 0.25 };
inline const Class hexagon { "HexagonItem", MobraTypes::HexagonShape, 0x10037, "hexagon",
    { 100, 86.60254038 },
    { { 25, 0 }, { 75, 0 }, { 100, 43.30127019 }, { 75, 86.60254038 }, { 25, 86.60254038 },
        { 0, 43.30127019 } },
    0.123, 0.123 };
inline const Class octagon { "OctagonItem", MobraTypes::OctagonShape, 0x10038, "octagon", { 92, 92 },
    { { 27, 0 }, { 65, 0 }, { 92, 27 }, { 92, 65 }, { 65, 92 }, { 27, 92 }, { 0, 65 }, { 0, 27 } }, 0.13,
    0.13 };

/// A function, so that data of other files can be built from it whatever is initialised first.
[[nodiscard]] inline const QList<Class> &classes()
{
    static const QList<Class> all { rightTriangle, equilateralTriangle, diamond, pentagon, hexagon, octagon };
    return all;
}

/// One of the polygons' codes in, a polygon out; null if the factory makes something else.
[[nodiscard]] inline std::unique_ptr<PolygonItem> made(MobraTypes::ShapeType shape)
{
    std::unique_ptr<Item> item(ClassFactory().create(shape));
    auto *polygon = dynamic_cast<PolygonItem *>(item.get());
    if (polygon)
        static_cast<void>(item.release());
    return std::unique_ptr<PolygonItem>(polygon);
}

[[nodiscard]] inline std::unique_ptr<PolygonItem> made(const Class &kind, const QSizeF &size)
{
    auto item = made(kind.shape);
    if (item)
        item->setItemSize(size);
    return item;
}

/// Gives the polygon a pen of exactly this width, which the stored width allows for whole numbers up to half
/// a side only.
inline void setPen(PolygonItem &item, double width, Qt::PenJoinStyle join)
{
    item.setItemPenJoinStyle(join);
    QPen pen = item.getItemPen();
    pen.setStyle(Qt::SolidLine);
    pen.setWidthF(width);
    item.setItemPen(pen);
    item.adjustForPen();
}

/// Equal but for the last digits, in which ways of calculating differ.
[[nodiscard]] inline bool isClose(double actual, double expected)
{
    return std::abs(actual - expected) <= 1e-9 * std::max(1.0, std::abs(expected));
}

/// Fails the running test where the polygons differ in number or place of their points.
inline void compare(const QPolygonF &actual, const QPolygonF &expected)
{
    QCOMPARE(actual.size(), expected.size());
    for (qsizetype i = 0; i < actual.size(); ++i) {
        if (!isClose(actual[i].x(), expected[i].x()) || !isClose(actual[i].y(), expected[i].y()))
            QFAIL(qPrintable(QStringLiteral("point %1 is (%2, %3) instead of (%4, %5)")
                                 .arg(i)
                                 .arg(actual[i].x(), 0, 'g', 13)
                                 .arg(actual[i].y(), 0, 'g', 13)
                                 .arg(expected[i].x(), 0, 'g', 13)
                                 .arg(expected[i].y(), 0, 'g', 13)));
    }
}

/// Adds one row for each of the six, with the place of its class in classes() in the column "index".
inline void addRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < classes().size(); ++i)
        QTest::newRow(classes()[i].name) << i;
}

} // namespace Polygons
