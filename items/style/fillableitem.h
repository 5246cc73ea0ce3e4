// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mirrorscope.h"
#include "items/core/mobratypes.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/ibrushitem.h"
#include "items/style/contoureditem.h"

#include <QBrush>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QSize>

#include <functional>
#include <memory>

/// An item with a fill: builds the brush that it paints with, reduces itself to one ink for printing, and
/// keeps the prepared print image of a fill that cannot be reduced by colour alone.
class VX_EXPORT FillableItem : public ContouredItem, public FillColorItem, public IBrushItem
{
public:
    FillableItem();
    ~FillableItem() override;

    // Fill
    QBrush getItemBrush() const { return m_brush; }
    /// Whether the fill is solid or a gradient.
    bool itemIsOpaque() const { return m_opaque; }
    void setItemFillColor(const QColor &color) override;
    void setItemBrushStyle(MobraTypes::BrushStyle style) override;
    MobraTypes::BrushStyle getItemBrushStyle() const override { return m_brushStyle; }
    /// What the property map writes through, as a 16-bit number: 65535 is no change.
    void setItemBrushStyleInt(int style);
    /// The second colour of gradients; while transparent, that is white, or black under a white fill.
    void setSceneBackgroundColor(const QColor &color);
    QColor getSceneBackgroundColor() const { return print().background; }
    /// Builds the brush from colour, style, size and print scaling.
    void updateItemBrush();

    // Printing
    /// The inks, and the paper as the last colour.
    void setItemPalette(const QList<QColor> &palette) { print().palette = palette; }
    /// Print pixels per scene unit. The next updateItemBrush() takes it into account.
    void setPrintScaling(double scaling) { print().scaling = scaling; }
    double getScaling() const { return print().scaling; }
    void setPrintDitherMethod(Qt::ImageConversionFlags method) { print().dither = method; }
    Qt::ImageConversionFlags getPrintDitherMethod() const { return print().dither; }
    /// The image that addItemToPrintScene() hands over after a reduction that asked for it.
    void setPreprintedImage(const QImage &image) { print().image = image; }
    QImage getPreprintedImage() const { return print().image; }
    /// Renders the item's present colours into the preprinted image.
    virtual void preparePrintImage() = 0;
    /// The size in print pixels, rounded.
    QSize getItemAbsSize() const;
    /// The pixels of a rendering at scale 1, rounded up, and the offset at which the item is drawn into it.
    virtual QSize getItemAbsSize(double &x, double &y);
    /// Renders a gradient once for each ink of the palette and merges the layers; a null image for any other
    /// fill.
    QImage partialColorRender();
    /// Merges the first count layers, one for each colour of the palette but the last, the paper: black
    /// becomes the ink, and whatever else is not transparent in the first layer becomes paper. A null image
    /// if all layers are null.
    void recombineColorsOnImage(QImage &out, int count, const QList<QImage> &layers, QSize size) const;

    /// The fill's part of a reduction. printed tells whether the outline prints, and becomes true when the
    /// fill does.
    void resetItemFillColors(const QColor &printColor, bool &printed, bool keepBlack);
    /// The same for a gradient.
    void resetItemFillColorsForGradients(const QColor &printColor, bool &printed);
    /// The same for white-on-black printing.
    void resetItemFillColorsNegative(const QColor &printColor, bool &printed);

    // Item
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    void copyItemProperties(Item *target, bool copySize) override;
    bool addItemToPrintScene(QGraphicsScene *scene, double scale) override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override;
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

protected:
    void itemSizeChanged() override;
    /// Fits what the item draws into its size: runs after setItemSize() and after loading. Storing a side or
    /// a scale alone does not run it.
    virtual void layOut();

    /// Gives a new item, of which nothing has been changed, the pen and the brush that the first updates
    /// would build. No penChanged() follows.
    void takeFirstLook();

    /// The brush to paint with, without a copy.
    const QBrush &itemBrush() const { return m_brush; }
    /// The body of paint(): what draw draws into a painter that holds the item's pen, brush and mirrors, and
    /// the selection frame.
    template <typename Draw>
    void paintShape(QPainter *painter, const QStyleOptionGraphicsItem *option, Draw &&draw) const
    {
        const QRectF bounds = sizeRect();
        {
            const MirrorScope mirrored(*this, *painter, bounds.width(), bounds.height());
            painter->setPen(itemPen());
            painter->setBrush(m_brush);
            draw(*painter);
        }
        paintSelectionFrame(painter, option, bounds);
    }

    /// Draws a shape with the pen and brush that the painter holds, at a print scaling and the scaled pen's
    /// width.
    using ScaledDrawing = std::function<void(QPainter &, double scaling, double penWidth)>;
    /// Renders the preprinted image of a shape: dithered, transparent outside the area that drawArea draws.
    void prepareShapeImage(const ScaledDrawing &draw, const ScaledDrawing &drawArea);

private:
    /// What an item needs on a coloured page and in print only; most never have it.
    struct PrintState
    {
        QColor background = Qt::transparent;
        bool throughImage = false;
        double scaling = 1.0;
        QImage image;
        Qt::ImageConversionFlags dither = Qt::MonoOnly | Qt::DiffuseAlphaDither;
        QList<QColor> palette;
    };

    PrintState &print();
    const PrintState &print() const;

    bool fillIsGradient() const;
    QBrush gradientBrush() const;
    void setFillKind(bool opaque, bool gradient);
    bool dropInvisibleFill();
    void reducePlainFill(bool prints, bool &printed);
    void reduceGradientFill(bool prints, bool &printed);
    QImage inkLayer(const QColor &ink, QImage &canvas, const QPointF &offset);

    MobraTypes::BrushStyle m_brushStyle = MobraTypes::BrushSolid;
    bool m_opaque = true;
    bool m_partialColor = false;
    QBrush m_brush;
    std::unique_ptr<PrintState> m_print;
};
