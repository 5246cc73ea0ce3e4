// SPDX-License-Identifier: BSD-3-Clause
#include "label/printcopy.h"

#include "items/core/itemcolors.h"
#include "items/style/fillableitem.h"
#include "label/paintedcolors.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

#include <cmath>
#include <utility>

PrintCopy::PrintCopy(Item &original, double scaling, Mode mode)
    : m_item(original.createItemCopy())
    , m_graphics(dynamic_cast<QGraphicsItem *>(m_item.get()))
    , m_fillable(dynamic_cast<FillableItem *>(m_item.get()))
    , m_scaling(scaling)
    , m_mode(mode)
{
    prepareStacking();
    prepareColors();
}

PrintCopy::~PrintCopy() = default;

void PrintCopy::prepareStacking()
{
    m_graphics->setSelected(false);
    // A page has one size, and its items lie in the order of their z values, whatever a file's flags say.
    m_graphics->setFlag(QGraphicsItem::ItemIgnoresTransformations, false);
    m_graphics->setFlag(QGraphicsItem::ItemNegativeZStacksBehindParent, false);
    m_graphics->setFlag(QGraphicsItem::ItemStacksBehindParent);
}

void PrintCopy::prepareColors()
{
    if (auto *colored = dynamic_cast<ColoredItem *>(m_item.get())) {
        colored->setItemPenColor(PaintedColors::penOf(*m_item));
        m_penIsClear = colored->getItemPenColor() == ItemColors::transparent;
    }
    if (!m_fillable)
        return;
    m_fillable->setItemFillColor(PaintedColors::fillOf(*m_item));
    // Gradients end in the paper, which is what does not print.
    m_fillable->setSceneBackgroundColor(m_mode == Mode::Negative ? ItemColors::black : ItemColors::white);
    m_fillable->setPrintScaling(m_scaling);
}

bool PrintCopy::reduceTo(const QColor &ink)
{
    const QColor pen = PaintedColors::penOf(*m_item);
    bool prints = m_mode == Mode::Negative ? m_item->resetItemColorsNegative(ink)
                                           : m_item->resetItemColors(ink, false, false);
    if (PaintedColors::hasEndsOnly(*m_item))
        prints = reduceEnds(pen, ink);
    restoreClearPen();
    preparePicture();
    return prints;
}

/// A reduction takes a line without a pen style for one of which nothing is painted.
bool PrintCopy::reduceEnds(const QColor &pen, const QColor &ink)
{
    const bool prints = (pen == ink) == (m_mode == Mode::Positive);
    if (auto *colored = dynamic_cast<ColoredItem *>(m_item.get()))
        colored->setItemPenColor(prints ? ItemColors::black : ItemColors::white);
    return prints;
}

void PrintCopy::restoreClearPen()
{
    auto *colored = dynamic_cast<ColoredItem *>(m_item.get());
    if (!colored || !m_penIsClear)
        return;
    // The reduction has made it opaque white, which would clear what shows through it.
    colored->setItemPenColor(ItemColors::transparent);
    if (!m_fillable || m_fillable->getPreprintedImage().isNull())
        return;
    m_fillable->setPreprintedImage({});
    m_fillable->preparePrintImage();
}

void PrintCopy::preparePicture()
{
    if (!m_fillable || m_fillable->getPreprintedImage().isNull())
        return;
    QImage picture = m_fillable->getPreprintedImage();
    m_fillable->setPreprintedImage({}); // the only owner now, so that the changes copy no pixels
    picture = std::move(picture).mirrored(m_item->getItemHorizontalMirror(), m_item->getItemVerticalMirror());
    picture.setDevicePixelRatio(m_scaling);
    m_fillable->setPreprintedImage(picture);
    alignPicture();
}

void PrintCopy::alignPicture()
{
    if (m_graphics->transform().type() > QTransform::TxTranslate)
        return;
    // Dot upon dot: between two dots, Qt could draw a row twice or leave one out.
    const QPointF corner = m_graphics->mapToScene(QPointF()) * m_scaling;
    const QPointF whole(std::round(corner.x()), std::round(corner.y()));
    m_graphics->setPos(m_graphics->pos() + (whole - corner) / m_scaling);
}

bool PrintCopy::outlineIsPainted() const
{
    return m_fillable && PaintedColors::penOf(*m_item) != ItemColors::transparent;
}

void PrintCopy::handTo(QGraphicsScene &scene)
{
    const bool asPicture = m_item->addItemToPrintScene(&scene, 1.0);
    if (asPicture && outlineIsPainted()) {
        // The picture ends within the outline, which is therefore drawn once more over it.
        m_fillable->setPreprintedImage({});
        m_fillable->setItemFillColor(ItemColors::transparent);
        scene.addItem(m_graphics);
    } else if (asPicture) {
        return;
    }
    static_cast<void>(m_item.release()); // the scene's own now
}
