// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"

#include <QGraphicsItem>

#include <memory>

class BarcodeItem;

/// A barcode as it is printed: it takes the place of an item in a print scene and paints modules of whole
/// dots.
class PlateBarcode : public QGraphicsItem
{
public:
    explicit PlateBarcode(std::unique_ptr<BarcodeItem> item);
    ~PlateBarcode() override;

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    std::unique_ptr<BarcodeItem> m_item;
    Zint::QZint m_barcode;
};
