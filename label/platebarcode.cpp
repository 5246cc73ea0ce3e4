// SPDX-License-Identifier: BSD-3-Clause
#include "label/platebarcode.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/mirrorscope.h"
#include "label/barcodeencoding.h"
#include "platform/zint/dotrendering.h"

PlateBarcode::PlateBarcode(std::unique_ptr<BarcodeItem> item)
    : m_item(std::move(item))
    , m_barcode(BarcodeEncoding::of(*m_item))
{
    setFlags(m_item->flags());
    setZValue(m_item->zValue());
    setTransform(m_item->transform());
    setPos(m_item->pos());
}

PlateBarcode::~PlateBarcode() = default;

QRectF PlateBarcode::boundingRect() const
{
    return m_item->boundingRect();
}

void PlateBarcode::paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/)
{
    const QRectF bounds = boundingRect();
    const MirrorScope mirrored(*m_item, *painter, bounds.width(), bounds.height());
    Zint::renderOnDots(m_barcode, *painter, bounds, BarcodeEncoding::modeOf(*m_item));
}
