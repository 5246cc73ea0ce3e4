// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "tests/support/bareshape.h"

#include <QList>
#include <QSizeF>

/// An item and nothing else. It prints in no ink.
class Block final : public BareShape<Item>
{
public:
    Block() = default;
    explicit Block(QSizeF size) { storeItemSize(size); }

    Item *createItemCopy() override { return copyAs<Block>().release(); }
    bool resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        return false;
    }
    bool resetItemColorsNegative(const QColor & /*printColor*/) override { return false; }

    void setItemHorizontalMirror(bool mirror) override
    {
        ++horizontalMirrorCalls;
        Item::setItemHorizontalMirror(mirror);
    }
    void setItemVerticalMirror(bool mirror) override
    {
        ++verticalMirrorCalls;
        Item::setItemVerticalMirror(mirror);
    }

    int horizontalMirrorCalls = 0;
    int verticalMirrorCalls = 0;
    QList<QSizeF> sizesAnnounced;

protected:
    void itemSizeChanged() override
    {
        Item::itemSizeChanged();
        sizesAnnounced.append(getItemSize());
    }
};
