// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

#include <QStringList>

#include <utility>

/// A polygon without an outline that notes the calls of a subclass's steps.
class SketchPolygon : public PolygonItem
{
public:
    QStringList calls;
    QPolygonF drawnBeforeThePen;

    void setPolygonShape() override { calls << QStringLiteral("shape"); }
    void adjustForPen() override
    {
        calls << QStringLiteral("pen");
        drawnBeforeThePen = polygon();
    }
    void calculateOvershoot() override { calls << QStringLiteral("overshoot"); }
    Item *createItemCopy() override { return new SketchPolygon; }
    QString toDescriptionString() const override { return QStringLiteral("sketch"); }

    /// Forgets what was called so far.
    QStringList takeCalls() { return std::exchange(calls, {}); }
};
