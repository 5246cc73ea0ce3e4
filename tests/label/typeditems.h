// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tests/label/jsontexts.h"
#include "tests/support/allitems.h"

/// Items as people type them.
namespace TypedItems {

using namespace JsonTexts;
using MobraTypes::ShapeType;

inline QByteArray itemWith(ShapeType shape, const QByteArray &members)
{
    return R"({"itemShape": )" + QByteArray::number(shape) + (members.isEmpty() ? "" : ", ") + members + "}";
}

inline QStringList problemsOfItem(ShapeType shape, const QByteArray &members)
{
    return problemsOf(withItems(itemWith(shape, members)));
}

/// What an item of the class needs to be as large as its sides say: one without pixels or a drawing has no
/// centre.
inline QByteArray contentOf(ShapeType shape)
{
    const auto drawing = [](const QByteArray &key) {
        return ", \"" + key + "\": \"" + "<svg width=\"30\" height=\"20\"><g/></svg>"_ba.toBase64() + '"';
    };
    switch (shape) {
    case MobraTypes::PixmapShape: {
        PixMapItem picture;
        picture.pixmapImportActions(AllItems::plainPicture(QSize(60, 25), Qt::red));
        return ", \"pixmapItemData\": \"" + picture.getPixmapItemData().toByteArray() + '"';
    }
    case MobraTypes::SvgShape:
        return drawing("svgContents");
    case MobraTypes::SymbolShape:
        return drawing("svgContentsOriginal");
    default:
        return {};
    }
}

/// The item of a JSON text, which has to be sound.
template <typename T> std::unique_ptr<T> itemOf(ShapeType shape, const QByteArray &members)
{
    LoadResult result = read(withItems(itemWith(shape, members)));
    if (!result.document)
        qFatal("%s", qPrintable(result.problems.value(0).text()));
    return std::unique_ptr<T>(
        dynamic_cast<T *>(dynamic_cast<T &>(*result.document->items()[0]).createItemCopy()));
}

} // namespace TypedItems
