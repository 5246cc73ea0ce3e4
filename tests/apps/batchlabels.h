// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tests/apps/samplelabels.h"

/// Labels whose items are bound to data, as JSON.
namespace BatchLabels {

using namespace SampleLabels;

[[nodiscard]] inline QJsonObject text(int x, int y, const QString &content)
{
    return { { u"itemShape"_s, 0x10015 }, { u"itemText"_s, content },
        { u"itemFontFamily"_s, u"DejaVu Sans"_s }, { u"itemFontSize"_s, 14 }, { u"itemPositionX"_s, x },
        { u"itemPositionY"_s, y } };
}

[[nodiscard]] inline QJsonObject boundText(int x, int y, int source, const QString &column)
{
    QJsonObject item = text(x, y, u"sample"_s);
    item[u"itemDatasourceId"_s] = source;
    item[u"itemDatasourceField"_s] = column;
    return item;
}

/// A Code 128.
[[nodiscard]] inline QJsonObject code(int y, const QString &content)
{
    return { { u"itemShape"_s, 0x1001D }, { u"barcodeSymbol"_s, 20 }, { u"barcodeText"_s, content },
        { u"itemWidth"_s, 180 }, { u"itemHeight"_s, 20 }, { u"itemPositionX"_s, 10 },
        { u"itemPositionY"_s, y }, { u"itemFontFamily"_s, u"DejaVu Sans"_s }, { u"itemFontSize"_s, 8 } };
}

/// 200 x 100 dots at 100 dpi, with two inks and a frame.
[[nodiscard]] inline QJsonObject labelWith(const QJsonArray &items, const QJsonArray &sources = {})
{
    QJsonArray all = items;
    all.prepend(rectangle(1, QRect(0, 0, 200, 4), u"#ff0000"_s));
    QJsonObject label = document({ { u"width"_s, 50.8 }, { u"height"_s, 25.4 }, { u"dpi"_s, 100 } },
        { ink(u"black"_s, u"#000000"_s), ink(u"red"_s, u"#ff0000"_s) }, all);
    if (!sources.isEmpty())
        label[u"sources"_s] = sources;
    return label;
}

/// Name, price and code of a row of sku, name and price.
[[nodiscard]] inline QByteArray priceLabel()
{
    return toJson(labelWith(
        { boundText(10, 10, 1, u"name"_s), text(10, 35, u"${price:%.2f} EUR"_s), code(60, u"${sku}"_s) },
        { QJsonObject { { u"id"_s, 1 }, { u"kind"_s, u"csv"_s }, { u"location"_s, u"prices.csv"_s } } }));
}

inline const QByteArray prices = "sku,name,price\nA1,Apple,1.5\nB2,Banana,22\nC3,Cherry,0.125\n";

} // namespace BatchLabels
