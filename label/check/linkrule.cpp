// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/linkrule.h"

#include "items/graphics/svgguard.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"

using namespace Qt::StringLiterals;

namespace {

/// The drawing of the item as it was given; empty for items that have none.
QByteArray drawingOf(const Item &item)
{
    if (const auto *drawing = dynamic_cast<const SvgItem *>(&item))
        return QByteArray::fromBase64(drawing->getSvgContents().toByteArray());
    const auto *symbol = dynamic_cast<const SymbolItem *>(&item);
    return symbol ? symbol->getSvgContents() : QByteArray();
}

} // namespace

void LinkRule::check(const CheckScope &scope, Findings &findings)
{
    for (const std::size_t item : scope.items) {
        const QByteArray drawing = drawingOf(scope.itemAt(item));
        const SvgGuard::Answer answer = drawing.isEmpty() ? SvgGuard::Answer() : SvgGuard::check(drawing);
        if (answer.verdict == SvgGuard::Verdict::Links)
            findings.append(scope.finding(Finding::Warning, "drawing-links", item,
                u"its drawing is printed without the files that it refers to: "_s + answer.reason,
                u"save the drawing with its pictures in it"_s));
    }
}
