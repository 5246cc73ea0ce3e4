// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/polygonitem.h"

/// The regular pentagon that stands on a side.
class VX_EXPORT PentagonItem : public PolygonItem
{
    Q_OBJECT

public:
    PentagonItem();

    // PolygonItem
    void setPolygonShape() override;
    void adjustForPen() override;
    void calculateOvershoot() override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;

private:
    Outlines insetForMiter(const QPolygonF &resized, double half) const;

    /// How far half a pen with a miter join moves the two side vertices inwards and down.
    double m_sideInset = 0.0;
    double m_sideDrop = 0.0;
};
