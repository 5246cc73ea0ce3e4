// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBrush>
#include <QColor>
#include <QGradient>
#include <QList>
#include <QTest>

/// What gradients are made of.
namespace Gradients {

struct Stop
{
    double position;
    QColor colour;
};

/// Fails the running test where the brush is no gradient of these stops.
inline void compareStops(const QBrush &brush, const QList<Stop> &expected)
{
    QVERIFY(brush.gradient());
    const QGradientStops stops = brush.gradient()->stops();
    QCOMPARE(stops.size(), expected.size());
    for (qsizetype i = 0; i < stops.size(); ++i) {
        QCOMPARE(stops[i].first, expected[i].position);
        QCOMPARE(stops[i].second, expected[i].colour);
    }
}

} // namespace Gradients
