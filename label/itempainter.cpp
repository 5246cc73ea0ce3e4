// SPDX-License-Identifier: BSD-3-Clause
#include "label/itempainter.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/item.h"
#include "label/barcodeencoding.h"
#include "label/itemtree.h"
#include "label/labeldocument.h"

#include <QGraphicsItem>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>

namespace {

/// Their items are those of groups and layers, which paint nothing themselves.
class Painting
{
public:
    explicit Painting(QPainter &painter)
        : m_painter(painter)
        , m_page(painter.worldTransform())
        , m_opacity(painter.opacity())
    {
    }
    ~Painting()
    {
        m_painter.setWorldTransform(m_page);
        m_painter.setOpacity(m_opacity);
    }
    Q_DISABLE_COPY_MOVE(Painting)

    void paint(Item &item, double opacity)
    {
        if (!ItemTree::isShown(item))
            return;
        QGraphicsItem &graphics = ItemTree::graphicsOf(item);
        opacity *= graphics.opacity();
        if (!ItemTree::isContainer(item)) {
            paintLeaf(graphics, opacity);
            return;
        }
        for (Item *member : ItemTree::membersOf(item))
            paint(*member, opacity);
    }

private:
    /// Items leave the painter as they found it; to save and restore it makes paint engines, that of PDF
    /// above all, set everything anew.
    void paintLeaf(QGraphicsItem &item, double opacity)
    {
        const bool isClipped = item.flags() & QGraphicsItem::ItemClipsToShape;
        if (isClipped)
            m_painter.save();
        m_painter.setWorldTransform(item.sceneTransform() * m_page);
        if (isClipped)
            m_painter.setClipPath(item.shape(), Qt::IntersectClip);
        m_painter.setOpacity(opacity);
        m_option.exposedRect = item.boundingRect();
        m_option.rect = m_option.exposedRect.toAlignedRect();
        if (const auto *barcode = dynamic_cast<const BarcodeItem *>(&item))
            BarcodeEncoding::paint(*barcode, m_painter);
        else
            item.paint(&m_painter, &m_option, nullptr);
        if (isClipped)
            m_painter.restore();
    }

    QPainter &m_painter;
    QTransform m_page;
    double m_opacity;
    QStyleOptionGraphicsItem m_option;
};

} // namespace

void ItemPainter::paint(QPainter &painter, const LabelDocument &document)
{
    QList<Item *> items;
    items.reserve(qsizetype(document.items().size()));
    for (const auto &item : document.items())
        items.append(item.get());
    std::ranges::stable_sort(items, {}, [](const Item *item) { return item->getItemZValue(); });
    Painting painting(painter);
    for (Item *item : items)
        painting.paint(*item, 1.0);
}
