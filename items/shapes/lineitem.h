// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemproperties.h"
#include "items/interfaces/ilineitem.h"
#include "items/shapes/linedecoration.h"
#include "items/style/contoureditem.h"

#include <QGraphicsLineItem>
#include <QObject>

/// A straight line with a decoration at each end. In its own coordinates it always runs from (0, 0) to
/// (length, 0); only the rotation gives it a direction on the canvas. Its size is (length, 0).
class VX_EXPORT LineItem : public QObject, public QGraphicsLineItem, public ContouredItem, public ILineItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_GEOMETRY_PROPERTIES
    VX_DATASOURCE_PROPERTIES
    VX_PEN_PROPERTIES
    VX_PEN_COLOR_PROPERTY
    Q_PROPERTY(ushort itemArrows READ getItemArrows WRITE setItemArrows)
    Q_PROPERTY(double itemLength READ getItemLength WRITE setItemLength)
    VX_POSITION_PROPERTIES

public:
    LineItem();
    ~LineItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::LineShape };
    int type() const override { return Type; }
    /// The line with its pen and decorations, and 5 units more on every side.
    QRectF boundingRect() const override { return m_bounds; }
    /// The bounding rectangle, which makes thin lines easy to hit.
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Decorations
    /// Takes from each style the bits of its end.
    void setItemArrows(MobraTypes::ArrowStyle left, MobraTypes::ArrowStyle right);
    /// Both ends as one number, the left end in bits 4 to 7. Other bits are kept and mean nothing.
    void setItemArrows(unsigned short arrows);
    unsigned short getItemArrows() const { return m_arrows; }
    /// Each replaces one end; false, changing nothing, for the present style.
    bool setItemArrowLeft(MobraTypes::ArrowStyle style) override;
    MobraTypes::ArrowStyle getItemArrowLeft() override;
    bool setItemArrowRight(MobraTypes::ArrowStyle style) override;
    MobraTypes::ArrowStyle getItemArrowRight() override;

    // Geometry
    virtual double getItemLength() const { return line().length(); }
    /// A length below 1 becomes 1.
    virtual void setItemLength(double length);
    /// The ends in scene coordinates. Moving one leaves the other where it is; where they would come closer
    /// than 1, the second gives way. The mirrors are not heeded: a later rotation or mirroring of a mirrored
    /// line swaps the ends.
    virtual void setItemPoint1(const QPointF &point);
    virtual QPointF getItemPoint1() const;
    virtual void setItemPoint2(const QPointF &point);
    virtual QPointF getItemPoint2() const;
    /// The length, and the height kept for the host.
    QSizeF getShapeSize() const { return QSizeF(line().length(), m_shapeHeight); }
    void setShapeHeight(double height) { m_shapeHeight = height; }
    /// Computes the bounding rectangle and the size from length, pen and decorations.
    void updateLineItem();

    // Item
    /// All forms take the width as the length, and ignore the height and the limits.
    bool setItemSize(QSizeF size) override;
    bool setItemSize(QSizeF size, bool keepRatio, bool heightLeads) override;
    bool setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
        double maxHeight, bool heightLeads, bool force) override;
    void updateItemSize(const QSizeF &size) override;
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override;
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

    // ContouredItem
    /// No style locks itself.
    void setItemPenStyle(Qt::PenStyle style) override;
    /// Builds the pen from the stored values. A line's width has no limit but that of its setter.
    void updateItemPen() override;

public Q_SLOTS:
    /// Turns the line about the centre of its bounding rectangle.
    void setItemRotation(double degrees) override;
    /// Widths below 1 become 1, widths above 72 become 72.
    void setItemPenWidth(unsigned short newPenWidth) override;
    /// A mirrored line is the line turned by half a circle.
    void setItemHorizontalMirror(bool mirror) override;
    /// Ignored, and the getter stays false: a line is its own vertical mirror image.
    void setItemVerticalMirror(bool mirror) override;

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    void penChanged() override { updateLineItem(); }
    void penJoinChanged() override { updateLineItem(); }

private:
    bool replaceArrows(unsigned int arrows);
    void setLength(double length);
    /// Makes the line run from one point of the scene to another, or by a length of 1 towards it.
    void runBetween(const QPointF &sceneStart, const QPointF &sceneEnd);

    unsigned short m_arrows = MobraTypes::ArrowNone;
    double m_shapeHeight = 100.0;
    LineDecoration m_decoration;
    QRectF m_bounds;
};
