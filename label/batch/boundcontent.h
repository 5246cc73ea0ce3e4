// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/assetpaths.h"
#include "label/problem.h"

#include <QString>

#include <optional>

class Item;

/// What data do to the items of each kind.
namespace BoundContent {

/// Whether items of this kind show data: texts, barcodes, pictures, drawings and symbols.
[[nodiscard]] bool isPossible(const Item &item);

/// Whether items of this kind show files: pictures, drawings and symbols.
[[nodiscard]] bool showsFile(const Item &item);
/// The file that a value names for one of these. Nothing for none, for a drawing that is the value itself,
/// and, with the reason in problem, if it cannot be taken.
[[nodiscard]] std::optional<QString> fileFor(
    const Item &item, const QString &value, const AssetPaths &assets, Problem &problem);

/// The text of an item that may have places for values; for a rich text its HTML. Empty for other items.
[[nodiscard]] QString templateOf(const Item &item);
/// Whether that is HTML.
[[nodiscard]] bool hasHtml(const Item &item);

/// Shows such a text with its places filled.
void showTemplate(Item &item, const QString &text);
/// Shows what a function has made: for a rich text HTML, for others a plain text.
[[nodiscard]] bool showFunction(Item &item, const QString &text, const AssetPaths &assets, Problem &problem);
/// Shows a value. For a picture, drawing or symbol it is the path of a file, or a drawing itself, and an
/// empty one hides the item. False, with the reason in problem, if it cannot be shown.
[[nodiscard]] bool showValue(Item &item, const QString &value, const AssetPaths &assets, Problem &problem);

} // namespace BoundContent
