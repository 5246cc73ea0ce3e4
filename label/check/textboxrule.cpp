// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/textboxrule.h"

#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/check/pageplace.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
/// In scene units: lines may be rounded up.
constexpr double tolerance = 1.0;
/// Letters of less than half their width are hard to read.
constexpr double narrowest = 0.5;

void checkBox(const CheckScope &scope, std::size_t index, const RichTextItem &text, Findings &findings)
{
    const QRectF box(QPointF(), text.getItemSize());
    if (box.adjusted(-tolerance, -tolerance, tolerance, tolerance).contains(PagePlace::linesOf(text)))
        return;
    const QRectF letters = PagePlace::lettersOf(text);
    const auto lengthOf = [&](double units) {
        return QString::number(units / scope.document.designDpi() * millimetresPerInch, 'f', 1) + u" mm"_s;
    };
    const auto note = [&](const QString &what, const QString &advice) {
        findings.append(scope.finding(Finding::Error, "text-overflow", index, what, advice));
    };
    if (const double below = letters.bottom() - box.bottom(); below > tolerance)
        note(u"the text is %1 higher than its box"_s.arg(lengthOf(below)),
            u"shorten it, or make the box higher or the letters smaller"_s);
    const double beside = std::max(letters.right() - box.right(), -letters.left());
    if (beside > tolerance)
        note(u"the text is %1 wider than its box, and cut"_s.arg(lengthOf(beside)),
            u"shorten it, or make the box wider or the letters smaller"_s);
}

/// How narrow or low letters are, compared with their other side, by a side that is fixed.
double squeezeOf(const SimpleTextItem &text)
{
    const QSizeF stretch = PagePlace::stretchOf(text);
    if (text.getItemFixedSizeWidth() && !text.getItemFixedSizeHeight())
        return stretch.width() / stretch.height();
    if (text.getItemFixedSizeHeight() && !text.getItemFixedSizeWidth())
        return stretch.height() / stretch.width();
    return text.getItemFixedSizeWidth()
        ? std::min(stretch.width() / stretch.height(), stretch.height() / stretch.width())
        : 1.0;
}

} // namespace

void TextBoxRule::check(const CheckScope &scope, Findings &findings)
{
    for (const std::size_t index : scope.items) {
        const Item &item = scope.itemAt(index);
        if (const auto *rich = dynamic_cast<const RichTextItem *>(&item); rich && !rich->getDocumentIsEmpty())
            checkBox(scope, index, *rich, findings);
        const auto *text = dynamic_cast<const SimpleTextItem *>(&item);
        const double squeeze = text && !text->getDocumentIsEmpty() ? squeezeOf(*text) : 1.0;
        if (squeeze < narrowest)
            findings.append(scope.finding(Finding::Warning, "text-squeezed", index,
                u"to fit into its fixed size, its letters are squeezed to %1 %"_s.arg(
                    std::round(squeeze * 100)),
                u"shorten the text, or make the item larger"_s));
    }
}
