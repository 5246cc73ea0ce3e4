// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The regular hexagon with a flat top.
class VX_EXPORT HexagonItem : public PolygonItem
{
    Q_OBJECT

public:
    HexagonItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
};
