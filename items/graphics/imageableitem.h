// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QImage>
#include <QList>
#include <QPointF>
#include <QSize>
#include <QTransform>

class QGraphicsItem;
class QGraphicsScene;
class QPixmap;

/// For items that do not print as vector graphics: renders an item together with what lies beneath it into an
/// image, keeps the one-bit images that the host makes of that, and places them in the print scene.
///
/// For each print job the host calls createItemImage(), hands the converted images back with
/// setItemImageList(), places each with addItemImageToScene(), and ends with clearItemImageList().
class VX_EXPORT ImageableItem
{
public:
    ImageableItem();
    virtual ~ImageableItem();
    Q_DISABLE_COPY_MOVE(ImageableItem)

    /// Renders what the item covers of the print rectangle, at scale dots per scene unit, on a ground of
    /// rgbFill: below the item, all that stacks below it, as far as the first neighbour whose z value is not
    /// below its own. Containers are no neighbours, their members are. The item's scene is afterwards as it
    /// was; an item without a scene is rendered alone. A null image for invalid content, an empty
    /// intersection, and a picture beyond the limits; then nothing changes.
    [[nodiscard]] virtual QImage createItemImage(
        QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale);
    /// The same for another rectangle than what the item covers, whether its content is valid or not.
    [[nodiscard]] QImage createItemImage(QGraphicsItem *item, const unsigned int &rgbFill,
        const QRectF &itemRect, const QRectF &printRect, double scale);

    /// The images to be placed. With destroyOnFinish, each is released as soon as it has been.
    const QList<QImage> &getListOfMonoImages() const { return m_monoImages; }
    void setItemImageList(const QList<QImage> &images, bool destroyOnFinish);
    void clearItemImageList() { m_monoImages.clear(); }
    /// Releases one image if the list is to be destroyed on finish.
    void cleanupImageInList(int index);
    bool shouldDestroyImageOnFinish() const { return m_destroyImageOnFinish; }

    /// Places an image of the list where the item lies: true. A block of the fill colour takes the place of a
    /// null image, or one that the list does not have: false. Without a list or a scene nothing is placed:
    /// false.
    virtual bool addItemImageToScene(QGraphicsScene *scene, double z, int index);
    /// Places a black block where the item lies, in the transform if the item prints raw. False without a
    /// list or a scene.
    bool addBlobToScene(QGraphicsScene *scene, double z, QTransform transform);

    /// Notes whether any pixel of the image is not opaque.
    void checkTransparency(const QImage &image);
    bool getImageHasTransparency() const { return m_imageHasTransparency; }
    void setImageHasTransparency(bool transparent) { m_imageHasTransparency = transparent; }
    /// The content could not be loaded; such an item prints nothing.
    bool getImageIsInvalid() const { return m_imageIsInvalid; }
    void setImageIsInvalid(bool invalid) { m_imageIsInvalid = invalid; }
    /// The image is not rendered as the item shows, and is placed in the item's transform.
    bool getShouldPrintRaw() const { return m_shouldPrintRaw; }
    void setShouldPrintRaw(bool raw) { m_shouldPrintRaw = raw; }

    // What the last rendering left for the placing: size and position in dots, and the ground
    QSize getImageSize() const { return m_imageSize; }
    void setImageSize(const QSize &size) { m_imageSize = size; }
    QPointF getCalculatedItemPosition() const { return m_calculatedItemPosition; }
    void setCalculatedItemPosition(const QPointF &position) { m_calculatedItemPosition = position; }
    QRgb getRgbFillColor() const { return m_rgbFillColor; }
    void setRgbFillColor(QRgb color) { m_rgbFillColor = color; }

protected:
    /// The transform in which images are placed; a rendering resets it.
    void setImageTransform(const QTransform &transform) { m_imageTransform = transform; }

private:
    void place(QGraphicsScene &scene, const QPixmap &pixmap, double z, const QTransform &transform) const;
    QPixmap block(QRgb color) const;

    QList<QImage> m_monoImages;
    QSize m_imageSize { 0, 0 };
    QRgb m_rgbFillColor;
    QPointF m_calculatedItemPosition;
    QTransform m_imageTransform;
    bool m_imageIsInvalid = false;
    bool m_destroyImageOnFinish = false;
    bool m_imageHasTransparency = false;
    bool m_shouldPrintRaw = false;
};
