// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The square standing on a corner; a rhombus when the sides differ.
class VX_EXPORT DiamondItem : public PolygonItem
{
    Q_OBJECT

public:
    DiamondItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
};
