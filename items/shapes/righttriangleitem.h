// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The triangle with its right angle at the bottom left.
class VX_EXPORT RightTriangleItem : public PolygonItem
{
    Q_OBJECT

public:
    RightTriangleItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
};
