// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>

/// Labels of a few rectangles, as JSON, and what programs tell in JSON.
namespace SampleLabels {

using namespace Qt::StringLiterals;

/// The objects of JSON Lines, an empty one for a line that is none.
[[nodiscard]] inline QList<QJsonObject> objectsOf(const QByteArray &lines)
{
    QList<QJsonObject> objects;
    for (const QByteArray &line : lines.trimmed().split('\n'))
        objects.append(QJsonDocument::fromJson(line).object());
    return objects;
}

/// A solid rectangle without outline, in dots.
[[nodiscard]] inline QJsonObject rectangle(int id, const QRect &place, const QString &color)
{
    return {
        { u"allowOverprint"_s, true },
        { u"itemBrushStyle"_s, 1 },
        { u"itemFillColor"_s, color },
        { u"itemFlags"_s, 1 },
        { u"itemHeight"_s, place.height() },
        { u"itemHorizontalMirror"_s, 0 },
        { u"itemId"_s, id },
        { u"itemPenCapStyle"_s, 0 },
        { u"itemPenColor"_s, u"#000000"_s },
        { u"itemPenJoinStyle"_s, 0 },
        { u"itemPenStyle"_s, 0 },
        { u"itemPenWidth"_s, 1 },
        { u"itemPositionX"_s, place.x() },
        { u"itemPositionY"_s, place.y() },
        { u"itemQFlags"_s, 263 },
        { u"itemRotation"_s, 0 },
        { u"itemScaleX"_s, 1 },
        { u"itemScaleY"_s, 1 },
        { u"itemShape"_s, 0x1002A },
        { u"itemTransform"_s, QJsonArray { 1, 0, 0, 0, 1, 0, 0, 0 } },
        { u"itemVerticalMirror"_s, 0 },
        { u"itemWidth"_s, place.width() },
        { u"itemZValue"_s, 0 },
    };
}

[[nodiscard]] inline QJsonObject ink(const QString &name, const QString &color)
{
    return { { u"name"_s, name }, { u"color"_s, color } };
}

/// 100 x 50 dots at 100 dpi.
[[nodiscard]] inline QJsonObject smallPage()
{
    return { { u"width"_s, 25.4 }, { u"height"_s, 12.7 }, { u"dpi"_s, 100 } };
}

[[nodiscard]] inline QJsonObject document(
    const QJsonObject &page, const QJsonArray &inks, const QJsonArray &items)
{
    return { { u"format"_s, u"vxlabel"_s }, { u"version"_s, 6 }, { u"page"_s, page }, { u"inks"_s, inks },
        { u"paper"_s, u"#ffffff"_s }, { u"items"_s, items } };
}

/// A black rectangle of 200 dots and a red one of as many above it, which covers 50 of them.
[[nodiscard]] inline QJsonObject smallLabel()
{
    return document(smallPage(), { ink(u"black"_s, u"#000000"_s), ink(u"red"_s, u"#ff0000"_s) },
        { rectangle(1, QRect(10, 10, 20, 10), u"#000000"_s),
            rectangle(2, QRect(20, 15, 20, 10), u"#ff0000"_s) });
}

/// The small label with other values under some keys of its first item.
[[nodiscard]] inline QJsonObject smallLabelWith(const QJsonObject &values)
{
    QJsonObject label = smallLabel();
    QJsonArray items = label[u"items"_s].toArray();
    QJsonObject item = items[0].toObject();
    for (auto value = values.begin(); value != values.end(); ++value)
        item[value.key()] = value.value();
    items[0] = item;
    label[u"items"_s] = items;
    return label;
}

[[nodiscard]] inline QJsonObject withPage(const QJsonObject &page)
{
    return document(page, { ink(u"black"_s, u"#000000"_s) }, {});
}

[[nodiscard]] inline QByteArray toJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

} // namespace SampleLabels
