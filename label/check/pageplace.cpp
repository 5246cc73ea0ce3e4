// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/pageplace.h"

#include "items/barcode/barcodeitem.h"
#include "items/text/richtextitem.h"
#include "label/itemtree.h"
#include "label/separation.h"
#include "platform/zint/symbologies.h"

#include <QAbstractTextDocumentLayout>
#include <QGlyphRun>
#include <QGraphicsItem>
#include <QRawFont>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// The free modules at the sides, and above and below; of symbols that have none built in.
struct Zone
{
    int symbol; ///< the encoder's number
    int beside;
    int above;
};

/// What the standards of these symbologies ask for.
constexpr std::array zones {
    Zone { 55, 2, 2 }, // PDF417 and its smaller forms
    Zone { 56, 2, 2 },
    Zone { 84, 1, 1 },
    Zone { 106, 2, 2 },
    Zone { 108, 1, 1 },
    Zone { 57, 1, 1 }, // MaxiCode
    Zone { 58, 4, 4 }, // QR Code
    Zone { 104, 4, 4 },
    Zone { 143, 4, 4 },
    Zone { 97, 2, 2 }, // Micro QR Code
    Zone { 145, 2, 2 },
    Zone { 71, 1, 1 }, // Data Matrix
    Zone { 102, 1, 1 },
    Zone { 115, 3, 3 }, // DotCode
    Zone { 116, 3, 3 }, // Han Xin Code
    // Theirs lies within the symbol
    Zone { 13, 0, 0 },
    Zone { 14, 0, 0 },
    Zone { 34, 0, 0 },
    Zone { 35, 0, 0 },
    Zone { 37, 0, 0 },
    Zone { 38, 0, 0 },
    Zone { 69, 0, 0 },
    Zone { 89, 0, 0 },
    // GS1 DataBar ends in a guard of its own
    Zone { 29, 0, 0 },
    Zone { 30, 0, 0 },
    Zone { 31, 0, 0 },
};

/// Bars with one row need it at their ends.
constexpr int besideBars = 10;

Zone zoneFor(int symbol)
{
    if (const auto *found = std::ranges::find(zones, symbol, &Zone::symbol); found != zones.end())
        return *found;
    const Zint::Symbology *symbology = Zint::symbologyOf(symbol);
    const bool isLinear = symbology && symbology->kind == Zint::Symbology::Kind::Linear;
    return { symbol, isLinear ? besideBars : 0, 0 };
}

/// What its letters paint; the bounds of a run are as high as its font.
QRectF lettersOfLine(const QTextLine &line)
{
    QRectF letters;
    for (const QGlyphRun &run : line.glyphRuns()) {
        const QList<quint32> glyphs = run.glyphIndexes();
        const QList<QPointF> places = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i)
            letters |= run.rawFont().boundingRect(glyphs[i]).translated(places[i]);
    }
    return letters;
}

QRectF heightOfLine(const QTextLine &line)
{
    return line.textLength() > 0 ? line.naturalTextRect() : QRectF();
}

/// The union of what is told of each line of the text, in units of the item.
template <typename OfLine> QRectF unionOf(const TextItem &text, OfLine ofLine)
{
    QRectF all;
    const QTextDocument &document = *text.document();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextLayout &layout = *block.layout();
        QRectF lines;
        for (int i = 0; i < layout.lineCount(); ++i)
            lines |= ofLine(layout.lineAt(i));
        // Qt tells where the layout's lines lie together, whatever tables the block is in.
        const QPointF place
            = document.documentLayout()->blockBoundingRect(block).topLeft() - layout.boundingRect().topLeft();
        if (!lines.isEmpty())
            all |= lines.translated(place);
    }
    return all;
}

/// As it is mirrored within the item.
QRectF mirrored(QRectF rect, const Item &item, const QRectF &bounds)
{
    if (item.getItemHorizontalMirror())
        rect.moveLeft(bounds.left() + bounds.right() - rect.right());
    if (item.getItemVerticalMirror())
        rect.moveTop(bounds.top() + bounds.bottom() - rect.bottom());
    return rect;
}

QPolygonF onPage(const BarcodeItem &barcode, const QRectF &rect)
{
    return barcode.sceneTransform().map(QPolygonF(mirrored(rect, barcode, barcode.boundingRect())));
}

} // namespace

QSizeF PagePlace::stretchOf(const Item &item)
{
    const QTransform transform = ItemTree::graphicsOf(item).sceneTransform();
    return { std::hypot(transform.m11(), transform.m12()), std::hypot(transform.m21(), transform.m22()) };
}

QRectF PagePlace::boundsOf(const Item &item)
{
    const QGraphicsItem &graphics = ItemTree::graphicsOf(item);
    return graphics.sceneTransform().mapRect(graphics.boundingRect());
}

QRectF PagePlace::linesOf(const TextItem &text)
{
    return unionOf(text, heightOfLine);
}

QRectF PagePlace::lettersOf(const TextItem &text)
{
    return unionOf(text, lettersOfLine);
}

QRectF PagePlace::lettersOnPage(const TextItem &text)
{
    const bool isBox = dynamic_cast<const RichTextItem *>(&text);
    const QRectF frame = isBox ? QRectF(QPointF(), text.getItemSize()) : text.boundingRect();
    return text.sceneTransform().mapRect(mirrored(lettersOf(text), text, frame));
}

QMarginsF PagePlace::quietZoneOf(const BarcodeItem &barcode)
{
    const Zone zone = zoneFor(barcode.getBarcodeSymbol());
    const double beside = std::max(zone.beside - barcode.getBarcodeWhiteSpace(), 0);
    return { beside, double(zone.above), beside, double(zone.above) };
}

QPolygonF PagePlace::symbolOf(const BarcodeItem &barcode, const PrintedBarcode &printed)
{
    return printed.place.isEmpty() ? QPolygonF() : onPage(barcode, printed.place);
}

QPolygonF PagePlace::zoneOf(const BarcodeItem &barcode, const PrintedBarcode &printed)
{
    if (printed.place.isEmpty() || printed.modules.isEmpty())
        return {};
    const double width = printed.place.width() / printed.modules.width();
    const double height = printed.squareModules ? printed.place.height() / printed.modules.height() : width;
    const QMarginsF modules = quietZoneOf(barcode);
    return onPage(barcode,
        printed.place.marginsAdded({ modules.left() * width, modules.top() * height, modules.right() * width,
            modules.bottom() * height }));
}
