// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/pieitem.h"
#include "tests/support/colours.h"

#include <QPen>
#include <QRectF>
#include <QTest>

#include <limits>
#include <utility>

/// Angles and wedges for the tests of the pie.
namespace Pies {

inline constexpr int least = std::numeric_limits<int>::min();
inline constexpr int most = std::numeric_limits<int>::max();

/// Adds rows of angles, whole turns and more among them.
inline void addAngleRows()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("span");

    const std::pair<int, int> angles[] = { { 1440, 4320 }, { 0, 1440 }, { 100, 1 }, { 0, 0 }, { 0, -1440 },
        { -720, -2000 }, { 5760, 1440 }, { 9000, 720 }, { 0, 5760 }, { 16, 5761 }, { 0, 12000 },
        { 720, -5760 }, { 720, -9000 }, { least, 1440 }, { most, 1440 }, { 0, least }, { 0, most },
        { least, least }, { most, most }, { least, most } };
    for (const auto &[start, span] : angles)
        QTest::addRow("%d from %d", span, start) << start << span;
}

/// A wedge of 100 x 60 with a pen of its own.
inline void shape(PieItem &item, int start, int span)
{
    item.setItemSize(QSizeF(100, 60));
    item.setItemPenWidth(5);
    item.setItemPenColor(Colours::red);
    item.setItemFillColor(Colours::blue);
    item.setStartPieAngle(start);
    item.setSpanPieAngle(span);
}

inline QPen shapedPen()
{
    QPen pen(QBrush(Colours::red), 5, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(4.0);
    return pen;
}

inline constexpr QRectF shapedRect(2.5, 2.5, 95, 55);

} // namespace Pies
