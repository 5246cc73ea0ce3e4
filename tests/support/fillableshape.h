// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/style/fillableitem.h"
#include "tests/support/bareshape.h"
#include "tests/support/images.h"

#include <QPainter>

/// Counts how often a print image is asked for, and prepares one of a single black pixel.
class FillableShape : public BareShape<FillableItem>
{
public:
    int preparations = 0;
    bool prepares = true;

    void preparePrintImage() override
    {
        ++preparations;
        if (prepares)
            setPreprintedImage(Images::imageOf({ { 0xFF000000 } }));
    }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
        painter->setPen(Qt::NoPen);
        painter->setBrush(getItemBrush());
        painter->drawRect(boundingRect());
        if (getItemPenStyle() != Qt::NoPen)
            painter->fillRect(QRectF(0, 0, 1, 1), getItemPenColor());
    }
    Item *createItemCopy() override
    {
        auto *copy = new FillableShape;
        copyItemProperties(copy, true);
        copy->prepares = prepares;
        return copy;
    }
};
