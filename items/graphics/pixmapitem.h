// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/itemproperties.h"
#include "items/core/resizerotatedhelper.h"
#include "items/graphics/imageableitem.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/interfaces/igraphicitem.h"

#include <QGraphicsPixmapItem>
#include <QObject>

/// A picture of pixels from a file or a datasource. Resizing stretches it by its transform; the pixels stay.
class VX_EXPORT PixMapItem : public QObject,
                             public QGraphicsPixmapItem,
                             public Item,
                             public ImageableItem,
                             public ResizeRotatedHelper,
                             public IGraphicItem,
                             public IDatasourceItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    Q_PROPERTY(QVariant pixmapItemData READ getPixmapItemData WRITE setPixmapItemData)
    VX_GEOMETRY_PROPERTIES
    VX_DATASOURCE_PROPERTIES
    VX_OLD_TRANSFORM_PROPERTIES
    Q_PROPERTY(bool imageHasTransparency READ getImageHasTransparency WRITE setImageHasTransparency)
    Q_PROPERTY(bool firstResizeAfterAddedToGroup READ getFirstResizeAfterAddedToGroup WRITE
            setFirstResizeAfterAddedToGroup)
    VX_POSITION_PROPERTIES

public:
    PixMapItem();
    ~PixMapItem() override;

    /// A pixel that paints nothing, which stretched over the item's frame stands in for a picture that could
    /// not be loaded.
    static const QImage m_blankPixmap;

    // QGraphicsItem
    int type() const override { return MobraTypes::PixmapShape; }
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    /// Empty for a picture with transparency.
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // The picture
    /// Shows the file's picture in its own size, made smaller if a side is beyond the limit. False, changing
    /// nothing, if it is no picture, or a bitmap file of 32 bits per pixel.
    bool loadItemFromFile(const QByteArray &path) override;
    /// Always true: a file without a picture leaves an invalid item of the same size.
    bool reloadItemFromFile(const QByteArray &path) override;
    /// Shows a picture of the host's in its own size.
    void pixmapImportActions(const QPixmap &pixmap);
    /// The picture as QDataStream writes it, in Base64.
    QVariant getPixmapItemData() const;

    // Datasource
    QVariant getItemData() const override { return {}; }
    int getItemDatasourceID() const override { return getDatasourceId(); }
    QString getItemDatasourceField() const override { return getDatasourceField(); }
    bool isDatasourceConnected() const override { return getDatasourceId() != -1; }

    // Printing
    using ImageableItem::createItemImage;
    [[nodiscard]] QImage createItemImage(
        QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale) override;
    bool addItemImageToScene(QGraphicsScene *scene, double z, int index) override;

    // Item
    /// Stretches a picture that has just been replaced over the size. Returns whether that is another size.
    bool setItemSizeOnUpdate(const QSizeF &size);
    void updateItemSize(const QSizeF &size) override { setItemSize(size); }
    [[nodiscard]] Item *createItemCopy() override;
    using Item::copyPrivatePropeties;
    void copyPrivatePropeties(double m31, double m32, bool firstResize, bool transparency);
    /// A picture keeps its colours: false.
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override
    {
        Item::loadItemFromJSON(map, version);
    }

public Q_SLOTS:
    void setItemRotation(double degrees) override;
    /// Shows the file that the data name; see reloadItemFromFile().
    void setItemData(const QVariant &data) override;
    void setItemDatasourceID(int id) override { setDatasourceId(id); }
    void setItemDatasourceField(const QString &field) override { setDatasourceField(field); }
    /// Shows the picture without touching the item's size; none if the data hold none.
    void setPixmapItemData(const QVariant &pixmapData);

Q_SIGNALS:
    void itemDataChanged(QVariant data, int datasourceId, QString field) override;
    void itemDataChanged(QVariant data, QString field);

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    void itemSizeChanged() override;

private:
    static const unsigned char m_blankPixels[4];

    QSizeF naturalSize() const;
    void showPicture(const QPixmap &picture);
    void showBlank(const QSizeF &size);
};
