// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemcolors.h"
#include "items/core/itemproperties.h"
#include "items/core/resizerotatedhelper.h"
#include "items/graphics/svgdrawing.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/style/coloreditem.h"

#include <QByteArray>
#include <QGraphicsSvgItem>

#include <optional>

/// A symbol: a drawing in black for ink and white for paper, of which the pen colour replaces black and the
/// fill colour white; a transparent fill takes white and the background away. The untouched drawing is kept
/// beside the recoloured one, so that colours can be changed again and again.
///
/// A drawing that cannot be shown in its colours is replaced by an empty one, with a transparent fill, in the
/// same frame.
class VX_EXPORT SymbolItem : public QGraphicsSvgItem,
                             public ColoredItem,
                             public ResizeRotatedHelper,
                             public FillColorItem,
                             public IDatasourceItem
{
    Q_OBJECT
    Q_PROPERTY(bool fillBoundingRectangle READ getFillBoundingRectangle WRITE setFillBoundingRectangle)
    VX_OVERPRINT_PROPERTY
    VX_OLD_TRANSFORM_PROPERTIES
    VX_SHAPE_PROPERTY
    VX_IDENTITY_PROPERTIES
    VX_ROTATION_PROPERTIES
    VX_SIZE_PROPERTIES
    VX_TRANSFORM_PROPERTY
    VX_DATASOURCE_PROPERTIES
    VX_PEN_COLOR_PROPERTY
    VX_FILL_COLOR_PROPERTY
    VX_POSITION_PROPERTIES
    Q_PROPERTY(bool hasSingleColor READ getSingleColor WRITE setSingleColor)
    Q_PROPERTY(QVariant svgContentsOriginal READ getSvgContentsOriginal WRITE setSvgContentsOriginal)

public:
    SymbolItem();
    ~SymbolItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::SymbolShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return m_drawing.bounds(); }
    /// The bounding rectangle unless the fill is transparent.
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;
    /// New colours are drawn when the item is painted: what QGraphicsSvgItem::renderer() returns may still
    /// hold the old ones.
    QSvgRenderer *renderer() const { return m_drawing.renderer(); }
    /// About as many bytes as the loaded drawing takes, with its pictures; 0 as long as it is not loaded.
    qint64 drawingMemory() const { return m_drawing.memory(); }

    // The drawing
    /// Loads a drawing at its own size, in colours given as texts: those of the item stay as they are.
    /// Returns false for a drawing that cannot be shown; the size is then 0.
    bool loadItemFromData(
        const QByteArray &svg, bool hasFill, const QByteArray &penColor, const QByteArray &fillColor);
    /// The same in the frame that the item has. What cannot be shown is replaced by the empty drawing.
    bool reloadItemFromData(
        const QByteArray &svg, bool hasFill, const QByteArray &penColor, const QByteArray &fillColor);
    /// Both in the colours of the item.
    bool loadItemFromData(const QByteArray &svg);
    bool reloadItemFromData(const QByteArray &svg);
    /// The same from a file, with its path in UTF-8. The first returns false if the file cannot be read or
    /// shown; the other shows the empty drawing then, and returns true.
    bool loadItemFromFile(const QByteArray &path);
    bool reloadItemFromFile(const QByteArray &path);
    /// Shows the empty drawing in its size, with a transparent fill.
    void fixInvalidSymbol(const QByteArray &penColor);
    /// The recoloured text.
    QByteArray getSvgContents() const { return m_contents; }
    /// The drawing as it was loaded, in Base64.
    QVariant getSvgContentsOriginal() const;
    bool getSingleColor() const { return m_singleColor; }
    bool getFillBoundingRectangle() const { return m_fillBoundingRectangle; }

    // Colours
    /// Recolours a text as the item's own drawing would be.
    void replacePenFillColors(QByteArray &svg, const QColor &pen, const QColor &fill) const;
    /// Recolours the drawing. With normaliseRoot, only its texts: the original gets a normal root, and
    /// nothing is shown yet.
    void replacePenFillColors(const QColor &pen, const QColor &fill, bool normaliseRoot);
    /// Makes an original of recoloured contents.
    void restorePenFillColorsAndOpaque(const QColor &pen, const QColor &fill, bool hasFill);
    /// Gives gradient stops of the colour "none" white with opacity 0.
    static void fixTransparentStops(QByteArray &svg);
    void setItemPenColor(const QColor &color) override;
    void setItemFillColor(const QColor &color) override;
    /// Sets both colours, and recolours once.
    void setItemPenFillColorPrePrint(QColor pen, QColor fill);

    // Size and place
    void setItemRotation(double degrees) override;
    /// Scales a drawing that has just been loaded into a frame. Returns whether the item's size has changed.
    bool setItemSizeOnUpdate(const QSizeF &size);
    void updateItemSize(const QSizeF &size) override { setItemSize(size); }
    void resetTransform();

    // Datasource
    QVariant getItemData() const override { return {}; }
    int getItemDatasourceID() const override { return getDatasourceId(); }
    QString getItemDatasourceField() const override { return getDatasourceField(); }
    bool isDatasourceConnected() const override { return getDatasourceId() != -1; }

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    using Item::copyPrivatePropeties;
    void copyPrivatePropeties(const QByteArray &contents, const QByteArray &original, const QSizeF &size,
        double m31, double m32, bool firstResize, const QColor &pen, const QColor &fill, bool singleColor,
        bool fillBoundingRectangle);
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

public Q_SLOTS:
    void setSingleColor(bool hasSingleColor) { m_singleColor = hasSingleColor; }
    void setFillBoundingRectangle(bool fillBoundingRect) { m_fillBoundingRectangle = fillBoundingRect; }
    /// Takes Base64; nothing is recoloured yet.
    void setSvgContentsOriginal(const QVariant &svgContentsOriginal);
    void setItemPenColorString(const QString &newPenColor) override;
    /// "transparent", or any form that QColor::fromString knows.
    void setItemFillColorString(const QString &newFillColor) override;
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
    /// What the colours of a print job become.
    struct Reduction
    {
        QColor pen;
        QColor fill;
        bool printed;
    };
    bool reduce(const Reduction &reduction);
    void setColors(const QColor &pen, const QColor &fill);
    bool isFilled() const { return m_fillColor != ItemColors::transparent; }
    void storePenColor(const QColor &color) { ColoredItem::setItemPenColor(color); }

    void takeState(const QByteArray &contents, const QByteArray &original, const QSizeF &size, double m31,
        double m32, bool firstResize, const QColor &pen, const QColor &fill, bool singleColor,
        bool fillBoundingRectangle);
    void setOriginal(const QByteArray &svg);
    /// Recolours the original and shows it, at once or, where that makes no difference, when it is painted.
    void recolor(const QColor &pen, const QColor &fill);
    bool canWait(bool hasFill) const;
    void showRecolored(bool hasFill);
    /// Shows the recoloured original with another renderer, in the geometry that the item has.
    void showLoaded();
    void showEmpty();

    QByteArray m_contents;
    QByteArray m_original;
    mutable SvgDrawing m_drawing; ///< May wait to be loaded.
    /// Whether what was last shown had a fill; nothing if it is not known to be the original recoloured.
    std::optional<bool> m_shownWithFill;
    bool m_singleColor = false;
    bool m_fillBoundingRectangle = false;
    bool m_loadingMap = false;
};
