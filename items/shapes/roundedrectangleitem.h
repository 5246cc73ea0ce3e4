// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/interfaces/iroundrectitem.h"
#include "items/shapes/rectangleitem.h"

/// The rectangle with rounded corners. The radii are lengths: they stay as they are when the item is resized,
/// and painting shortens those that exceed half a side.
class VX_EXPORT RoundedRectangleItem : public RectangleItem, public IRoundRectItem
{
    Q_OBJECT
    Q_PROPERTY(double roundingRadiusX READ getRoundingRadiusX WRITE setRoundingRadiusX)
    Q_PROPERTY(double roundingRadiusY READ getRoundingRadiusY WRITE setRoundingRadiusY)

public:
    RoundedRectangleItem();
    ~RoundedRectangleItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::RoundedRectangleShape };
    int type() const override { return Type; }
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // IRoundRectItem
    double getRoundingRadiusX() const override { return m_radiusX; }
    double getRoundingRadiusY() const override { return m_radiusY; }

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;

    // FillableItem
    void preparePrintImage() override;

public Q_SLOTS:
    /// The radii in scene units. Any number is kept; unless both are positive, corners are painted square.
    void setRoundingRadiusX(double radius) override;
    void setRoundingRadiusY(double radius) override;

private:
    double m_radiusX = 25.0;
    double m_radiusY = 25.0;
};
