// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkwarnings.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/graphics/imageableitem.h"
#include "label/paintedcolors.h"
#include "label/textcolors.h"
#include "label/wording.h"

#include <QStringList>

#include <algorithm>

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

/// Whether the item is a picture that could not be loaded.
bool isMissing(const Item &item)
{
    const auto *picture = dynamic_cast<const ImageableItem *>(&item);
    return picture && picture->getImageIsInvalid();
}

} // namespace

Problems inkWarnings(const LabelDocument &document)
{
    Problems warnings;
    for (std::size_t i = 0; i < document.items().size(); ++i) {
        Item &item = *document.items()[i];
        const QString where = u"/items/%1"_s.arg(i);
        if (item.getItemIsVisible() && isMissing(item))
            warnings.append({ {}, where,
                u"%1 prints nothing: its picture or drawing could not be loaded"_s.arg(Wording::item(item)),
                u"load it again"_s });
        const QStringList parts = item.getItemIsVisible() ? unprintable(item, document) : QStringList();
        if (parts.isEmpty())
            continue;
        warnings.append(
            { {}, where, u"no ink prints the %1 of %2"_s.arg(parts.join(u" and the "_s), Wording::item(item)),
                u"use an ink's colour or add an ink"_s });
    }
    return warnings;
}
