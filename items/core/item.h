// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "items/core/vxexport.h"
#include "items/interfaces/ibasicitem.h"
#include "items/interfaces/itemplatelockitem.h"

#include <QMap>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTransform>
#include <QVariant>

#include <memory>

class QDataStream;
class QGraphicsItem;
class QGraphicsScene;
class QImage;
class QPainter;
class QStyleOptionGraphicsItem;

/// The base of every canvas item: identity, flags, size and scale, rotation, mirroring, datasource binding,
/// persistence and the hand-off to a print scene.
///
/// It is no QGraphicsItem: a concrete class derives from one of Qt's and from Item, mostly through
/// ColoredItem, ContouredItem and FillableItem. An item belongs to whoever created it, until it is added to a
/// scene or parent.
class VX_EXPORT Item : public IBasicItem, public ITemplateLockItem
{
public:
    Item();
    ~Item() override = 0;
    Q_DISABLE_COPY_MOVE(Item)

    // Identity and flags
    /// The number shown in the description, -1 for a new item.
    short itemId() const { return m_id; }
    void setItemId(short id) { m_id = id; }
    /// The code of the concrete class. The six polygons share one QGraphicsItem::type(); only this tells them
    /// apart.
    MobraTypes::ShapeType getItemShape() const { return m_shape; }
    void setItemShape(MobraTypes::ShapeType shape) { m_shape = shape; }
    unsigned int getItemShapeInt() const { return m_shape; }
    void setItemShapeInt(unsigned int shape) { m_shape = static_cast<MobraTypes::ShapeType>(shape); }
    /// A word of MobraTypes::Flags, unrelated to itemQFlags().
    unsigned int itemFlags() const { return m_flags; }
    void setItemFlags(unsigned int flags) { m_flags = flags; }
    /// Sets or clears the bits of flag alone.
    void setItemFlags(MobraTypes::Flags flag, bool on);
    /// The flag word in binary digits without leading zeros, for logging.
    QString printItemFlags() const;
    /// QGraphicsItem::flags() as a number.
    unsigned int itemQFlags() const;
    void setItemQFlags(unsigned int flags);
    bool itemIsSupplyTemplate() const { return hasFlag(MobraTypes::FlagSupplyTemplate); }
    void setItemAsSupplyTemplate(bool on) { setItemFlags(MobraTypes::FlagSupplyTemplate, on); }
    bool itemHasMultiLock() const { return hasFlag(MobraTypes::FlagMultiLock); }
    void setItemHasMultiLock(bool on) { setItemFlags(MobraTypes::FlagMultiLock, on); }
    /// Whether a host may let the item's inks print over those below it; true for a new item.
    bool getAllowOverprint() const { return m_allowOverprint; }
    void setAllowOverprint(bool allow) { m_allowOverprint = allow; }

    // State of the graphics item
    double getItemZValue() const;
    /// NaN, which has no place in an order, is taken as 0.
    void setItemZValue(double z);
    bool getItemIsVisible() const;
    void setItemIsVisible(bool visible);
    /// The position in parent coordinates.
    double getItemPositionX() const;
    double getItemPositionY() const;
    /// Both store a pending position only, which updateItemPositionAfterLoading() applies.
    void setItemPositionX(double x) { setPendingPosition(QPointF(x, pendingPosition().y())); }
    void setItemPositionY(double y) { setPendingPosition(QPointF(pendingPosition().x(), y)); }
    void updateItemPositionAfterLoading();

    // Datasource binding: -1 and an empty field when unbound
    int getDatasourceId() const { return rare().binding.id; }
    void setDatasourceId(int id) { rare().binding.id = id; }
    QString getDatasourceField() const { return rare().binding.field; }
    void setDatasourceField(const QString &field) { rare().binding.field = field; }

    // Size and scale
    QSizeF getItemSize() const override;
    double getItemWidth() const { return getItemSize().width(); }
    double getItemHeight() const { return getItemSize().height(); }
    void setItemWidth(double width) override;
    void setItemHeight(double height) override;
    /// The accumulated ratio of the present size to that at creation; some classes keep it at 1.
    double getItemScaleX() const { return m_scaleX; }
    void setItemScaleX(double scale) { m_scaleX = scale; }
    double getItemScaleY() const { return m_scaleY; }
    void setItemScaleY(double scale) { m_scaleY = scale; }
    bool setItemSize(QSizeF size) override;
    bool setItemSize(QSizeF size, bool keepRatio, bool heightLeads) override;
    bool setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
        double maxHeight, bool heightLeads, bool force) override;
    /// Stores the size without touching the scales; classes with a geometry of their own lay it out again.
    virtual void updateItemSize(const QSizeF &size);
    /// Limits the height, then sets the width to height × ratio within its limits. The incoming width is
    /// ignored.
    static void adjustSizes(double &width, double &height, double minWidth, double maxWidth, double minHeight,
        double maxHeight, double ratio);

    // Transform
    double getItemRotation() const override { return m_rotation; }
    /// Replaces the item's transform by a rotation about the centre of its size, which keeps its place in the
    /// scene.
    void setItemRotation(double degrees) override;
    bool getItemHorizontalMirror() const override { return m_horizontalMirror; }
    bool getItemVerticalMirror() const override { return m_verticalMirror; }
    void setItemHorizontalMirror(bool mirror) override { m_horizontalMirror = mirror; }
    void setItemVerticalMirror(bool mirror) override { m_verticalMirror = mirror; }
    /// m11, m12, m13, m21, m22, m23, m31, m32 of the item's transform.
    QVariantList getItemTransform() const;
    /// Sets the transform from the same eight numbers, with m33 = 1. A shorter list changes nothing, nor
    /// does one with a number that is not finite or beyond the drawable range.
    void setItemTransformFromList(const QList<QVariant> &list);
    /// The item's transform without its accumulated scale; the translation stays.
    QTransform getItemUnitTransform() const;
    /// Saves the painter and mirrors it within (0, 0, width, height). The caller restores the painter.
    void painterMirrorTransform(QPainter *painter, double width, double height) const;

    // Painting, copying, printing
    /// Draws the dotted selection frame if the option says that the item is selected.
    static void drawSelectionRectangle(
        QPainter *painter, const QStyleOptionGraphicsItem *option, const QRectF &rect);
    /// A new item that looks and saves like this one, in no scene. The caller owns it. What only a print run
    /// set (palette, prepared image) and the parked binding of a lock stay behind.
    [[nodiscard]] virtual Item *createItemCopy() = 0;
    /// Copies everything that target has in common with this item; size and scales only with copySize. The
    /// parked binding of a locked item is not copied.
    virtual void copyItemProperties(Item *target, bool copySize);
    /// Stores rotation, binding and, with copySize, size and scales. The transform stays as it is.
    void copyPrivatePropeties(double rotation, const QSizeF &size, double scaleX, double scaleY,
        bool copySize, int datasourceId, const QString &datasourceField);
    /// Reduces the item to one ink: what prints in printColor becomes black, everything else white or
    /// transparent. Returns whether anything prints, which FlagVisibleInPrint keeps. This overwrites colours:
    /// use it on copies. With keepBlack, solid black stays; keepOthers extends that to items that have
    /// nothing else in the ink.
    virtual bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) = 0;
    /// The same for white-on-black printing: what prints in printColor becomes white, everything else black.
    virtual bool resetItemColorsNegative(const QColor &printColor) = 0;
    /// For logs and lists, for example "rectangle 7".
    virtual QString toDescriptionString() const = 0;
    /// Hands the item to a print scene. At a scale that rounds to 1 the scene takes the item itself, and owns
    /// it: false. Otherwise it gets a picture of the item, magnified by scale, and the caller keeps the item:
    /// true. A null scene: false. The item leaves its parent and its scene, except where a prepared image
    /// prints in its place.
    virtual bool addItemToPrintScene(QGraphicsScene *scene, double scale);

    // Persistence
    /// Appends the item's record to the stream. The type code, which tells a reader what class to create, and
    /// the length of the record belong to the caller's framing.
    virtual void saveItemToData(QDataStream &stream);
    /// Reads a record written by a document of the given version; mirrors and overprint exist since
    /// version 6. No value is an error: what the scene cannot hold is limited, and the stream's
    /// status tells whether the record was whole.
    virtual void loadItemFromData(QDataStream &stream, unsigned int version);
    /// The item's Qt properties, less ignoredPropertyNames(). Colours lose their alpha in it: a host that
    /// keeps maps stores translucent and transparent colours itself, as "#aarrggbb" and "transparent", which
    /// loading accepts.
    virtual QVariantMap saveItemToJSON() = 0;
    /// Applies a property map; unknown keys and unusable values are skipped.
    virtual void loadItemFromJSON(const QVariantMap &map, unsigned int version) = 0;
    /// The properties of Qt's own classes that no property map holds.
    static const QStringList &ignoredPropertyNames();

    void setItemAsUserTemplate(bool on) override;
    bool itemIsUserTemplate() const override { return hasFlag(MobraTypes::FlagUserTemplate); }
    bool itemIsReadOnly() const override { return hasFlag(MobraTypes::FlagReadOnly); }
    void setItemAsReadOnly(bool on) override;
    bool itemIsNonModifiable() const override { return hasFlag(MobraTypes::MaskNonModifiable); }

    /// This item as its own graphics item. Null in the constructors of the bases; not for their destructors.
    QGraphicsItem *graphicsItem() const;

protected:
    /// Announces to the scene that the bounding rectangle is about to change: every concrete class forwards
    /// to its protected QGraphicsItem::prepareGeometryChange().
    virtual void announceGeometryChange() = 0;
    /// Runs after each form of setItemSize has stored a new size. An override calls that of its base first.
    virtual void itemSizeChanged();
    /// Announces the change and stores the size, nothing else.
    void storeItemSize(const QSizeF &size);
    /// What every form of setItemSize ends in: multiplies the scales, stores the size, runs
    /// itemSizeChanged(). Returns true.
    virtual bool applySize(const QSizeF &size);
    /// Moves the graphics item, within the drawable range.
    void moveItem(const QPointF &position);
    /// Replaces the transform, unless one of its numbers is not finite or beyond the drawable range.
    void setItemTransform(const QTransform &transform);
    /// Replaces the transform by a rotation about a point in item coordinates, which keeps its place in the
    /// scene.
    void rotateAbout(const QPointF &point, double degrees);

    /// A new item of class T with everything that copyItemProperties() copies. The first step of
    /// createItemCopy().
    template <typename T> [[nodiscard]] std::unique_ptr<T> copyAs()
    {
        auto copy = std::make_unique<T>();
        copyItemProperties(copy.get(), true);
        return copy;
    }

    /// (0, 0, width, height), within the drawable range.
    QRectF sizeRect() const;

    /// The last step of paint(): the selection frame, which an item draws when it has no parent or lies in a
    /// layer.
    void paintSelectionFrame(
        QPainter *painter, const QStyleOptionGraphicsItem *option, const QRectF &rect) const;

private:
    struct Binding
    {
        int id = -1;
        QString field;
    };

    /// What few items ever need: kept apart, because the size of an item decides how fast large scenes paint.
    struct Rare
    {
        Binding binding;
        Binding savedBinding;
        QPointF pendingPosition;
    };

    Rare &rare();
    const Rare &rare() const;
    void setBinding(const Binding &binding);
    const QPointF &pendingPosition() const { return rare().pendingPosition; }
    void setPendingPosition(const QPointF &position);

    bool hasFlag(MobraTypes::Flags mask) const { return (m_flags & mask) != 0; }
    void lockBinding(MobraTypes::Flags flag, bool on);
    QImage renderedAlone(const QRectF &source, const QRectF &sceneRect, double scale);

    mutable QGraphicsItem *m_graphicsItem = nullptr;
    short m_id = -1;
    bool m_allowOverprint = true;
    MobraTypes::ShapeType m_shape = MobraTypes::RectangleShape;
    unsigned int m_flags = MobraTypes::FlagVisibleInPrint;
    double m_scaleX = 1.0;
    double m_scaleY = 1.0;
    std::unique_ptr<Rare> m_rare;
};
