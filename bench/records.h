// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDataStream>
#include <QTransform>

/// Records written by the obvious code.
namespace Records {

/// What all items with an outline and a fill have in common, by the stream's own operators.
template <typename Type> void saveByOperators(QDataStream &stream, const Type &item)
{
    const QTransform t = item.transform();
    stream << qint16(item.itemId()) << qint32(item.itemFlags()) << item.getItemHorizontalMirror()
           << item.getItemVerticalMirror() << item.getAllowOverprint() << item.zValue()
           << qint32(item.flags()) << item.isVisible() << item.getItemRotation() << item.getItemSize().width()
           << item.getItemSize().height() << item.getItemScaleX() << item.getItemScaleY() << t.m11()
           << t.m12() << t.m13() << t.m21() << t.m22() << t.m23() << t.m31() << t.m32() << t.m33()
           << item.pos().x() << item.pos().y() << qint32(item.getDatasourceId()) << item.getDatasourceField()
           << item.getItemPenColor() << qint16(item.getItemPenWidth()) << qint32(item.getItemPenStyle())
           << qint32(item.getItemPenCapStyle()) << qint32(item.getItemPenJoinStyle())
           << qint16(item.getItemBrushStyle()) << item.getItemFillColor();
}

} // namespace Records
