// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemproperties.h"
#include "items/style/fillableitem.h"

#include <QGraphicsPolygonItem>
#include <QObject>
#include <QPolygonF>

#include <array>
#include <functional>

/// The base of the shapes with a fixed outline. A subclass defines its outline once at a reference size; the
/// base scales it to the item's size and moves it inwards, so that the painted outline stays inside. How far
/// a vertex has to move depends on its angle and on the pen's join: that is the overshoot table.
///
/// Four polygons are kept: the original at the reference size; the resized one; the one drawn, which is
/// QGraphicsPolygonItem::polygon(); and the one for hit-testing, the shape polygon.
class VX_EXPORT PolygonItem : public QObject, public QGraphicsPolygonItem, public FillableItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_SHAPE_PROPERTY
    VX_IDENTITY_PROPERTIES
    VX_ROTATION_PROPERTIES
    VX_OVERPRINT_PROPERTY
    VX_SIZE_PROPERTIES
    VX_TRANSFORM_PROPERTY
    VX_DATASOURCE_PROPERTIES
    VX_FILLED_SHAPE_PROPERTIES

public:
    PolygonItem();
    ~PolygonItem() override;

    // QGraphicsItem
    /// The same for all subclasses; getItemShape() tells them apart.
    int type() const override { return MobraTypes::PolygonShape; }
    QRectF boundingRect() const override { return sizeRect(); }
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // The polygons, in item coordinates
    QPolygonF getShapePolygon() const { return m_shapePolygon; }
    void setShapePolygon(const QPolygonF &polygon) { m_shapePolygon = polygon; }
    QPolygonF getOriginalPolygon() const { return m_originalPolygon; }
    void setOriginalPolygon(const QPolygonF &polygon) { m_originalPolygon = polygon; }
    QPolygonF getResizedPolygon() const { return m_resizedPolygon; }
    void setResizedPolygon(const QPolygonF &polygon) { m_resizedPolygon = polygon; }

    /// In pen widths or halves of them, as the subclass says: rows 0 and 1 tell how far the vertices of two
    /// roles move inwards, row 2 how far the corners of the shape polygon are cut or moved outwards. The
    /// column is the pen's JoinClass. Both in 0 to 2, unchecked.
    double getOvershoot(int row, int column) const { return m_overshoot[row * joinClasses + column]; }
    void setOvershoot(int row, int column, double value) { m_overshoot[row * joinClasses + column] = value; }

    /// Scales the original polygon by the item's scale factors, and rebuilds from it what is drawn.
    void setItemSizeLocal();

    // The steps of a subclass
    /// Sets all polygons to the reference outline, the size to its size, and fills the overshoot table.
    virtual void setPolygonShape() = 0;
    /// Builds the drawn and the shape polygon from the resized polygon and the pen.
    virtual void adjustForPen() = 0;
    /// Computes the factors that depend on the size.
    virtual void calculateOvershoot() = 0;

    // Item
    void updateItemSize(const QSizeF &size) override;
    /// All properties but "objectName", also those with the names of Qt's own that other items leave out.
    QVariantMap saveItemToJSON() override;

    // FillableItem
    void preparePrintImage() override;

protected:
    /// The columns of the overshoot table.
    enum JoinClass { Mitered, Beveled, OtherwiseJoined };
    /// The height of an equilateral triangle of 100: 100 sin 60°.
    static constexpr double equilateralHeight = 86.60254038;

    /// What adjustForPen() makes of the resized polygon.
    struct Outlines
    {
        QPolygonF drawn;
        QPolygonF shape;
    };
    /// Computes the outlines for a pen measure other than 0 and the pen's column of the overshoot table.
    using Inset = std::function<Outlines(const QPolygonF &resized, double measure, int column)>;

    void announceGeometryChange() override { prepareGeometryChange(); }
    void itemSizeChanged() override;
    void penChanged() override { adjustForPen(); }
    void penJoinChanged() override { adjustForPen(); }
    void layOut() override;

    /// The last steps of a subclass's constructor.
    void initialize(MobraTypes::ShapeType shape);
    /// The body of setPolygonShape(): points fill a rectangle of the given size from (0, 0); bevelCut and
    /// otherCut are row 2 of the overshoot table.
    void setReference(const QPolygonF &points, const QSizeF &size, double bevelCut, double otherCut);
    /// The body of adjustForPen(): both outlines are the resized polygon itself if the measure or a side is
    /// 0, or if a host has set a polygon of another number of vertices.
    void insetOutlines(double measure, const Inset &inset);
    /// The body of createItemCopy(): the copy's outline is built from the copied size and scales.
    template <typename T> [[nodiscard]] T *copyOutline()
    {
        auto copy = copyAs<T>();
        copy->layOut();
        return copy.release();
    }
    double halfPenWidth() const { return itemPen().widthF() / 2.0; }
    /// The point after scaling about the centre of the size, so that the size grows by the given lengths. No
    /// side is 0.
    QPointF grown(const QPointF &point, double width, double height) const;
    QPolygonF grown(const QPolygonF &polygon, double width, double height) const;

private:
    static constexpr int joinClasses = 3;

    JoinClass joinClass() const;
    void setOutlines(const Outlines &outlines);

    QPolygonF m_shapePolygon;
    QPolygonF m_originalPolygon;
    QPolygonF m_resizedPolygon;
    std::array<double, 3 * joinClasses> m_overshoot {};
    qsizetype m_vertexCount = 0;
};
