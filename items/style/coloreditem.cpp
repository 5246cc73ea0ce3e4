// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/coloreditem.h"

#include "items/core/itemcolors.h"
#include "items/core/record.h"

ColoredItem::ColoredItem()
    : m_penColor(ItemColors::black)
{
}

ColoredItem::~ColoredItem() = default;

void ColoredItem::setItemPenColorString(const QString &color)
{
    setItemPenColor(QColor::fromString(color));
}

QString ColoredItem::getItemPenColorString() const
{
    return m_penColor.name();
}

void ColoredItem::copyItemProperties(Item *target, bool copySize)
{
    Item::copyItemProperties(target, copySize);
    if (auto *colored = dynamic_cast<ColoredItem *>(target))
        colored->setItemPenColor(m_penColor);
}

void ColoredItem::saveItemToData(QDataStream &stream)
{
    Item::saveItemToData(stream);
    Record::write(stream, m_penColor);
}

void ColoredItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    Item::loadItemFromData(stream, version);
    Record::read(stream, std::tie(m_penColor));
}
