// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkwarnings.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/graphics/emptysvg.h"
#include "items/graphics/imageableitem.h"
#include "items/graphics/symbolitem.h"
#include "label/paintedcolors.h"
#include "label/textcolors.h"
#include "label/wording.h"

#include <QImage>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

bool leavesPaperBare(const QColor &color, const LabelDocument &document)
{
    return color == ItemColors::transparent || color == ItemColors::white || color == ItemColors::nearWhite
        || color.rgba() == document.paper().rgba();
}

bool isPrintable(const QColor &color, const LabelDocument &document)
{
    return leavesPaperBare(color, document) || std::ranges::any_of(document.inks(), [&color](const Ink &ink) {
        return ink.color.rgba() == color.rgba();
    });
}

QString nameOf(const QColor &color)
{
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

/// "pen #00ff00" and the like, of what no ink prints.
QStringList unprintable(Item &item, const LabelDocument &document)
{
    QStringList parts;
    const auto note = [&](const QString &part, const QColor &color) {
        if (!isPrintable(color, document))
            parts.append(part + u' ' + nameOf(color));
    };
    note(u"pen"_s, PaintedColors::penOf(item));
    note(u"fill"_s, PaintedColors::fillOf(item));
    for (const QColor &color : TextColors::of(item))
        note(u"text"_s, color);
    if (const auto *barcode = dynamic_cast<BarcodeItem *>(&item))
        note(u"bars"_s, PaintedColors::barsOf(*barcode));
    return parts;
}

/// Whether the item is a picture, or holds a drawing, that could not be loaded.
bool isMissing(const Item &item)
{
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item))
        return !symbol->getSvgContents().isEmpty()
            && (symbol->getSvgContents() == EmptySvg::getEmptySvg() || !symbol->renderer()->isValid());
    const auto *picture = dynamic_cast<const ImageableItem *>(&item);
    return picture && picture->getImageIsInvalid();
}

/// Whether the drawing of the symbol, in black on white, shows another colour: one that neither its pen nor
/// its fill takes the place of.
bool showsOwnColors(Item &item)
{
    if (item.getItemShape() != MobraTypes::SymbolShape)
        return false;
    const std::unique_ptr<Item> copy(item.createItemCopy());
    auto &symbol = dynamic_cast<SymbolItem &>(*copy);
    symbol.setItemPenFillColorPrePrint(ItemColors::black, ItemColors::white);
    constexpr int side = 128;
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    symbol.renderer()->render(&painter);
    painter.end();
    for (int y = 0; y < side; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (!std::all_of(row, row + side, qIsGray))
            return true;
    }
    return false;
}

} // namespace

std::vector<InkWarning> inkWarnings(const LabelDocument &document, std::size_t index)
{
    std::vector<InkWarning> warnings;
    Item &item = *document.items()[index];
    if (!item.getItemIsVisible())
        return warnings;
    const QString name = Wording::item(item);
    const auto warn = [&](InkWarning::Kind kind, const QString &what, const QString &advice) {
        warnings.push_back({ kind, { {}, u"/items/%1"_s.arg(index), what, advice } });
    };
    if (isMissing(item))
        warn(InkWarning::MissingPicture,
            u"%1 prints nothing: its picture or drawing could not be loaded"_s.arg(name), u"load it again"_s);
    if (showsOwnColors(item))
        warn(InkWarning::OwnColors,
            u"each ink prints what %1 holds besides its pen and its fill colour"_s.arg(name),
            u"draw it in #000000 and #FFFFFF alone, or show it as an SVG drawing"_s);
    if (const QStringList parts = unprintable(item, document); !parts.isEmpty())
        warn(InkWarning::UnprintableColor,
            u"no ink prints the %1 of %2"_s.arg(parts.join(u" and the "_s), name),
            u"use an ink's colour or add an ink"_s);
    return warnings;
}

Problems inkWarnings(const LabelDocument &document)
{
    Problems warnings;
    for (std::size_t i = 0; i < document.items().size(); ++i) {
        for (const InkWarning &warning : inkWarnings(document, i))
            warnings.append(warning.problem);
    }
    return warnings;
}
