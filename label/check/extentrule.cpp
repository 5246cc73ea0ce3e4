// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/extentrule.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/shapes/lineitem.h"
#include "items/style/contoureditem.h"
#include "items/text/textitem.h"
#include "label/check/pageplace.h"
#include "label/itemtree.h"
#include "label/paintedcolors.h"
#include "label/wording.h"

#include <QGraphicsItem>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
/// Less than this part of a dot is lost in rounding.
constexpr double tolerance = 0.5;

/// Whether nothing of the item is painted on purpose, as of a frame that holds a place.
bool isBare(const Item &item)
{
    const auto *text = dynamic_cast<const TextItem *>(&item);
    if (text)
        return text->getDocumentIsEmpty();
    return dynamic_cast<const ContouredItem *>(&item) && PaintedColors::penOf(item) == ItemColors::transparent
        && PaintedColors::fillOf(item) == ItemColors::transparent;
}

/// Whether the edge of the label would take a part away that is missed: of an outline all around, or most of
/// a picture. Areas are often larger than the label, so that its edge is printed for certain.
bool isMissed(const Item &item, const QRectF &bounds, const QSizeF &page)
{
    if (dynamic_cast<const ContouredItem *>(&item))
        return !dynamic_cast<const LineItem *>(&item)
            && PaintedColors::penOf(item) != ItemColors::transparent;
    return !QRectF(QPointF(), page).contains(bounds.center());
}

/// What must not be cut: the lines of a text, the symbol of a code.
std::optional<QRectF> contentOf(const CheckScope &scope, std::size_t item)
{
    if (const auto *text = dynamic_cast<const TextItem *>(&scope.itemAt(item)))
        return PagePlace::lettersOnPage(*text);
    const auto code = std::ranges::find(scope.codes, item, &CheckedCode::item);
    return code == scope.codes.end() || code->symbol.isEmpty() ? std::nullopt
                                                               : std::optional(code->symbol.boundingRect());
}

/// How far a rectangle reaches beyond the page at its worst side.
double beyond(const QRectF &rect, const QSizeF &page)
{
    return std::max(
        { -rect.left(), -rect.top(), rect.right() - page.width(), rect.bottom() - page.height() });
}

QString lengthOf(double units, const CheckScope &scope)
{
    const double millimetres = units / scope.document.designDpi() * millimetresPerInch;
    return QString::number(millimetres, 'f', 1) + u" mm"_s;
}

} // namespace

void ExtentRule::check(const CheckScope &scope, Findings &findings)
{
    const QSizeF page = scope.document.pageSizeInUnits();
    const double allowed = tolerance / scope.scaling();
    const auto note = [&](Finding::Severity severity, std::size_t item, const QString &what) {
        findings.append(scope.finding(
            severity, "off-label", item, what, u"move it onto the label, or make it smaller"_s));
    };
    for (const std::size_t index : scope.items) {
        const Item &item = scope.itemAt(index);
        const QRectF bounds = PagePlace::boundsOf(item);
        // What has no size prints nothing anywhere.
        if (bounds.isEmpty() || isBare(item) || beyond(bounds, page) <= allowed)
            continue;
        const std::optional<QRectF> content = contentOf(scope, index);
        if (!bounds.intersects(QRectF(QPointF(), page)))
            note(Finding::Error, index, u"it lies off the label"_s);
        else if (content && beyond(*content, page) > allowed)
            note(Finding::Error, index,
                u"%1 of its content lie off the label"_s.arg(lengthOf(beyond(*content, page), scope)));
        else if (!content && isMissed(item, bounds, page))
            note(Finding::Warning, index,
                u"the edge of the label cuts %1 of it"_s.arg(lengthOf(beyond(bounds, page), scope)));
    }
}
