// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/interfaces/ipieitem.h"
#include "items/shapes/ellipseitem.h"

/// A wedge of an ellipse, on screen optionally with the outline of the whole ellipse. It is picked up and
/// framed as the whole ellipse. Angles are in 1/16 degree, counter-clockwise from three o'clock; they are
/// kept as given, and a span of 5760 or more is the full disc with a line to its centre.
class VX_EXPORT PieItem : public EllipseItem, public IPieItem
{
    Q_OBJECT
    Q_PROPERTY(bool drawCircle READ getDrawCircle WRITE setDrawCircle)
    Q_PROPERTY(int startPieAngle READ startPieAngle WRITE setStartPieAngle)
    Q_PROPERTY(int spanPieAngle READ spanPieAngle WRITE setSpanPieAngle)

public:
    PieItem();
    ~PieItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::PieShape };
    int type() const override { return Type; }
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // IPieItem
    bool getDrawCircle() override { return m_drawCircle; }
    int startPieAngle() override { return startAngle(); }
    int spanPieAngle() override { return spanAngle(); }

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;

    // FillableItem
    /// The image ends at the wedge: what drawCircle adds outside it shows on screen only.
    void preparePrintImage() override;

public Q_SLOTS:
    /// Returns false, changing nothing, for the present value.
    bool setDrawCircle(bool drawCircle) override;
    void setStartPieAngle(int angle) override;
    void setSpanPieAngle(int angle) override;

private:
    QPainterPath wedgeIn(const QRectF &ellipse) const;

    bool m_drawCircle = false;
};
