// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/quietzonerule.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "label/check/pageplace.h"
#include "label/check/scannerlight.h"
#include "label/itempainter.h"
#include "label/paintedcolors.h"
#include "label/wording.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// The most dots in which a zone is looked at; a larger one is looked at in fewer.
constexpr double mostDots = 4'000'000.0;

/// The items that may print in the zone, and the code itself, from bottom to top.
std::vector<std::size_t> itemsIn(const CheckScope &scope, const CheckedCode &code)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < scope.document.items().size(); ++i) {
        const Item &item = scope.itemAt(i);
        const bool isOther = i != code.item;
        if (!item.getItemIsVisible()
            || (isOther && !PagePlace::boundsOf(item).intersects(code.zone.boundingRect())))
            continue;
        // On all labels alike, only what is on all labels alike is in the way.
        if (!isOther || scope.isRow || !scope.isBound[i])
            found.push_back(i);
    }
    return found;
}

/// Those items alone, with the background of the code but without its bars.
LabelDocument without(const CheckScope &scope, const std::vector<std::size_t> &items, std::size_t code)
{
    LabelDocument document = scope.document.withoutItems();
    for (const std::size_t index : items) {
        std::unique_ptr<Item> copy(scope.itemAt(index).createItemCopy());
        if (index == code)
            dynamic_cast<BarcodeItem &>(*copy).setItemTextColor(ItemColors::transparent);
        document.addItem(std::move(copy));
    }
    return document;
}

/// The part of the page that the area is, in the dots of the output. What lies beside an area that is turned
/// has the background.
QImage pictureOf(const LabelDocument &document, const QPolygonF &area, double scaling, QRgb background)
{
    const QRectF zone = area.boundingRect();
    const double dots = zone.width() * zone.height() * scaling * scaling;
    const double fitting = scaling * std::min(1.0, std::sqrt(mostDots / std::max(dots, 1.0)));
    const QSize size(int(std::ceil(zone.width() * fitting)), int(std::ceil(zone.height() * fitting)));
    QImage picture = SafeImage::create(size, QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    picture.fill(document.paper());
    QPainter painter(&picture);
    painter.scale(fitting, fitting);
    painter.translate(-zone.topLeft());
    ItemPainter::paint(painter, document);
    QPainterPath outside;
    outside.addRect(zone);
    outside.addPolygon(area);
    painter.fillPath(outside, QColor(background));
    return picture;
}

bool hasDarkDots(const QImage &picture, QRgb background)
{
    for (int y = 0; y < picture.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        const auto isDark = [&](QRgb color) {
            return color != background && ScannerLight::isDark(color, background, ScannerLight::Light::Red);
        };
        if (std::any_of(row, row + picture.width(), isDark))
            return true;
    }
    return false;
}

/// What the bars are seen against: the background of the code, or the paper.
QRgb backgroundOf(const CheckScope &scope, std::size_t code)
{
    const QColor fill = PaintedColors::fillOf(scope.itemAt(code));
    const bool isPaper = fill == ItemColors::transparent || fill == ItemColors::nearWhite;
    return (isPaper ? scope.document.paper() : fill).rgb();
}

} // namespace

void QuietZoneRule::check(const CheckScope &scope, Findings &findings)
{
    for (const CheckedCode &code : scope.codes) {
        if (!code.symbol.isEmpty())
            checkCode(scope, code, findings);
    }
}

void QuietZoneRule::checkCode(const CheckScope &scope, const CheckedCode &code, Findings &findings)
{
    const bool isDue = scope.isDue(code.item);
    const auto note = [&](const QString &what, const QString &advice) {
        findings.append(scope.finding(Finding::Warning, "quiet-zone", code.item, what, advice));
    };
    const QSizeF page = scope.document.pageSizeInUnits();
    const bool leavesPage = !QRectF(QPointF(), page).contains(code.zone.boundingRect());
    const bool symbolIsOnPage = QRectF(QPointF(), page).contains(code.symbol.boundingRect());
    if (isDue && leavesPage && symbolIsOnPage)
        note(u"the free space that it needs reaches over the edge of the label"_s,
            u"move it away from the edge, or make it smaller"_s);
    const std::vector<std::size_t> items = itemsIn(scope, code);
    const bool isNew = std::ranges::any_of(items, [&](std::size_t item) { return scope.isDue(item); });
    if (items.size() < 2 || !isNew)
        return;
    const QRgb background = backgroundOf(scope, code.item);
    const auto isDark = [&](const std::vector<std::size_t> &shown, const QPolygonF &area) {
        return hasDarkDots(
            pictureOf(without(scope, shown, code.item), area, scope.scaling(), background), background);
    };
    if (!isDark(items, code.zone))
        return;
    // The background of the code may cover what lies below it.
    const auto besideCode = [&](std::size_t item) {
        return std::vector { std::min(item, code.item), std::max(item, code.item) };
    };
    const auto culprit = std::ranges::find_if(
        items, [&](std::size_t item) { return item != code.item && isDark(besideCode(item), code.zone); });
    const bool isCovered = culprit != items.end() && isDark(besideCode(*culprit), code.symbol);
    note(u"%1 prints %2"_s.arg(
             culprit == items.end() ? u"another item"_s : Wording::item(scope.itemAt(*culprit)),
             isCovered ? u"on the symbol"_s : u"in the free space that it needs"_s),
        u"move one of them"_s);
}
