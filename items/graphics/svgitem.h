// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/itemproperties.h"
#include "items/core/resizerotatedhelper.h"
#include "items/graphics/imageableitem.h"
#include "items/graphics/svgdrawing.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/interfaces/igraphicitem.h"

#include <QByteArray>
#include <QGraphicsSvgItem>

class QDomNode;

/// A vector drawing, kept as SVG text. Resizing stretches it by its transform. It prints as a raster: by
/// itself, or with what lies beneath it.
///
/// A drawing with links to pictures or with very large pictures is refused, since it would not print
/// reliably; so is one that would open files or keep the renderer busy. An empty drawing, which shows and
/// prints nothing, stands in for what is refused; the item is invalid then.
class VX_EXPORT SvgItem : public QGraphicsSvgItem,
                          public Item,
                          public ImageableItem,
                          public ResizeRotatedHelper,
                          public IGraphicItem,
                          public IDatasourceItem
{
    Q_OBJECT
    Q_PROPERTY(QVariant svgContents READ getSvgContents WRITE setSvgContents)
    Q_PROPERTY(bool svgHasTransparency READ getImageHasTransparency WRITE setImageHasTransparency)
    Q_PROPERTY(bool svgIsInvalid READ svgIsInvalid WRITE setImageIsInvalid)
    VX_OLD_TRANSFORM_PROPERTIES
    VX_SHAPE_PROPERTY
    VX_IDENTITY_PROPERTIES
    VX_OVERPRINT_PROPERTY
    VX_ROTATION_PROPERTIES
    VX_SIZE_PROPERTIES
    VX_TRANSFORM_PROPERTY
    VX_POSITION_PROPERTIES
    VX_DATASOURCE_PROPERTIES

public:
    SvgItem();
    ~SvgItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::SvgShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return m_drawing.bounds(); }
    /// Empty for a drawing with transparency.
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;
    /// A copy is loaded when it is painted: what QGraphicsSvgItem::renderer() returns may still be empty.
    QSvgRenderer *renderer() const { return m_drawing.renderer(); }
    /// About as many bytes as the loaded drawing takes, with its pictures; 0 as long as it is not loaded.
    qint64 drawingMemory() const { return m_drawing.memory(); }

    // The drawing
    /// Shows a drawing at its own size. False for one that is refused; the item is then invalid and shows the
    /// empty drawing in its size. A drawing from a file counts as transparent until checkForTransparency()
    /// has looked; its path is UTF-8.
    bool loadItemFromFile(const QByteArray &path) override;
    bool loadItemFromData(const QByteArray &svg);
    /// The same in the frame that the item has. The first always returns true.
    bool reloadItemFromFile(const QByteArray &path) override;
    bool reloadItemFromData(const QByteArray &svg);
    /// The text in Base64; of a compressed file, its bytes.
    QVariant getSvgContents() const;
    bool svgIsInvalid() const { return getImageIsInvalid(); }
    /// Shows the empty drawing, 100 × 100, and marks the item invalid.
    void setErrorSvg();
    /// Takes up to two colours ("#" and six more bytes) off the beginning of the text.
    void removeColorPrefix();
    /// Whether the text holds neither links to pictures nor very large ones; if it does, the log tells which.
    bool checkXmlOnLoad() const;
    /// The same for a node, its later siblings, and all below them.
    static bool recursiveCheckAttributesForInvalidImages(const QDomNode &node);
    /// Renders the drawing and notes whether any of it is transparent.
    void checkForTransparency();

    // Datasource
    QVariant getItemData() const override { return {}; }
    int getItemDatasourceID() const override { return getDatasourceId(); }
    QString getItemDatasourceField() const override { return getDatasourceField(); }
    bool isDatasourceConnected() const override { return getDatasourceId() != -1; }

    // Printing
    using ImageableItem::createItemImage;
    /// The drawing by itself, at scale dots per scene unit and neither turned nor mirrored away from its
    /// frame, when the print rectangle holds all of it and nothing of it is transparent; it then prints raw.
    /// Otherwise as ImageableItem does.
    [[nodiscard]] QImage createItemImage(
        QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale) override;
    bool addItemImageToScene(QGraphicsScene *scene, double z, int index) override;

    // Item
    /// Scales a drawing that has just been loaded into a frame. Returns whether the item's size has changed.
    bool setItemSizeOnUpdate(const QSizeF &size);
    void updateItemSize(const QSizeF &size) override { setItemSize(size); }
    void setItemRotation(double degrees) override;
    [[nodiscard]] Item *createItemCopy() override;
    using Item::copyPrivatePropeties;
    void copyPrivatePropeties(const QByteArray &contents, double m31, double m32, bool firstResize,
        bool invalid, bool transparency);
    /// A drawing keeps its colours: false.
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

public Q_SLOTS:
    /// Takes Base64; nothing is shown yet.
    void setSvgContents(const QVariant &svgContents);
    /// Shows a drawing from the datasource, in the item's frame: its bytes, or a text that begins with "<",
    /// or else the path of its file.
    void setItemData(const QVariant &data) override;
    void setItemDatasourceID(int id) override { setDatasourceId(id); }
    void setItemDatasourceField(const QString &field) override { setDatasourceField(field); }

Q_SIGNALS:
    void itemDataChanged(QVariant data, int datasourceId, QString field) override;
    void itemDataChanged(QVariant data, QString field);

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    bool applySize(const QSizeF &size) override;

private:
    bool readFile(const QByteArray &path);
    bool showAtOwnSize();
    bool accept(bool accepted, bool transparent);
    void takeState(const QByteArray &contents, double m31, double m32, bool firstResize, bool invalid,
        bool transparency);
    void showLoaded();
    QImage ownImage(QRgb fill, double scale);

    QByteArray m_contents;
    mutable SvgDrawing m_drawing; ///< May wait to be loaded.
};
