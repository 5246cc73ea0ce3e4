// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The triangle that stands on its base, of equal sides at the reference size.
class VX_EXPORT EquilateralTriangleItem : public PolygonItem
{
    Q_OBJECT

public:
    EquilateralTriangleItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
};
