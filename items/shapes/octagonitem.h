// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The octagon of stop signs, with a flat top.
class VX_EXPORT OctagonItem : public PolygonItem
{
    Q_OBJECT

public:
    OctagonItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
};
