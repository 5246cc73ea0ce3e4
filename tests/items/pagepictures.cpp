// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/pagepictures.h"

#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/diamonditem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/equilateraltriangleitem.h"
#include "items/shapes/hexagonitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/octagonitem.h"
#include "items/shapes/pentagonitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/shapes/righttriangleitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/symbols.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace MobraTypes;

namespace {

const QSize pictureSize(320, 200);
constexpr int tolerance = 2;

const QColor navy(0x1D, 0x35, 0x57);
const QColor red(0xD6, 0x28, 0x39);
const QColor orange(0xF7, 0x7F, 0x00);
const QColor yellow(0xFF, 0xD1, 0x66);
const QColor green(0x2A, 0x9D, 0x5C);
const QColor blue(0x11, 0x8A, 0xB2);
const QColor violet(0x7B, 0x2C, 0xBF);

/// An outline and a fill.
struct Style
{
    QColor pen;
    int width;
    QColor fill;
    BrushStyle brush = BrushSolid;
};

QGraphicsItem &graphics(Item &item)
{
    return dynamic_cast<QGraphicsItem &>(item);
}

/// Moves what the item shows to the middle of a place.
void centre(Item &item, const QPointF &place = QPointF(160.0, 100.0))
{
    QGraphicsItem &shown = graphics(item);
    shown.setPos(shown.pos() + place - shown.mapToScene(shown.boundingRect()).boundingRect().center());
}

void paint(FillableItem &item, const Style &style)
{
    item.setItemPenColor(style.pen);
    item.setItemPenWidth(static_cast<ushort>(style.width));
    item.setItemFillColor(style.fill);
    item.setItemBrushStyle(style.brush);
}

template <typename Shape>
std::unique_ptr<Shape> shapeAt(const QPointF &place, const QSizeF &size, const Style &style)
{
    auto item = std::make_unique<Shape>();
    item->setItemSize(size);
    paint(*item, style);
    centre(*item, place);
    return item;
}

template <typename Shape> std::unique_ptr<Shape> shape(const QSizeF &size, const Style &style)
{
    return shapeAt<Shape>(QPointF(160.0, 100.0), size, style);
}

/// A shape whose picture nothing else is to be told about.
template <typename Shape>
PagePicture plain(ShapeType code, const QString &page, const QSizeF &size, const Style &style)
{
    return { code, page, [=] { return shape<Shape>(size, style); },
        style.brush >= BrushLinearGradient ? tolerance : 0 };
}

std::unique_ptr<SimpleTextItem> textAt(
    const QPointF &place, const QString &letters, int pixels, const QColor &colour)
{
    auto item = std::make_unique<SimpleTextItem>();
    item->setItemText(letters);
    item->setItemFontSize(pixels);
    item->setItemTextColor(colour);
    centre(*item, place);
    return item;
}

/// An umbrella with drops of rain: paper on ink.
const QByteArray umbrella = Symbols::root
    + "width=\"120\" height=\"120\"><rect id=\"background_fix\" fill=\"#FFFFFF\" stroke-width=\"0\" "
      "fill-opacity=\"0\" width=\"120\" height=\"120\" />"
      "<rect x=\"4\" y=\"4\" width=\"112\" height=\"112\" rx=\"16\" fill=\"#000000\"/>"
      "<path d=\"M60 34C34 34 18 50 16 70C22 64 30 64 36 70C42 64 52 64 57 70V94A5 5 0 0 1 47 94H41A11 11 0 "
      "0 0 "
      "63 94V70C68 64 78 64 84 70C90 64 98 64 104 70C102 50 86 34 60 34Z\" fill=\"#FFFFFF\"/>"
      "<path d=\"M30 14L25 28M50 12L45 26M70 12L65 26M90 14L85 28\" stroke=\"#FFFFFF\" stroke-width=\"5\" "
      "stroke-linecap=\"round\"/></svg>";

std::unique_ptr<SymbolItem> symbolAt(const QPointF &place, double side)
{
    auto item = std::make_unique<SymbolItem>();
    item->loadItemFromData(umbrella);
    item->setItemSize(QSizeF(side, side));
    item->setItemPenColor(navy);
    item->setItemFillColor(yellow);
    centre(*item, place);
    return item;
}

std::unique_ptr<BarcodeItem> barcodeAt(
    const QPointF &place, int symbol, const QString &text, const QSizeF &size)
{
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(static_cast<short>(symbol));
    item->setBarcodeText(text);
    item->setItemTextColor(navy);
    item->setItemFontSize(10);
    item->setItemSize(size);
    centre(*item, place);
    return item;
}

/// A turned delivery note. In a list, members need z values of their own.
std::unique_ptr<Item> group()
{
    QList<QGraphicsItem *> members;
    const auto add = [&members](std::unique_ptr<Item> item) {
        graphics(*item).setZValue(double(members.size()));
        members << &graphics(*item.release());
    };
    const QColor card(0xF1, 0xFA, 0xEE);
    auto ground
        = shapeAt<RoundedRectangleItem>(QPointF(160.0, 100.0), QSizeF(264.0, 140.0), { navy, 4, card });
    ground->setRoundingRadiusX(14.0);
    ground->setRoundingRadiusY(14.0);
    add(std::move(ground));
    add(symbolAt(QPointF(84.0, 88.0), 80.0));
    add(textAt(QPointF(204.0, 66.0), u"Keep dry"_s, 32, red));
    add(barcodeAt(QPointF(208.0, 122.0), 20, u"VX-2048"_s, QSizeF(140.0, 62.0)));
    auto strip = shapeAt<RectangleItem>(QPointF(84.0, 148.0), QSizeF(80.0, 12.0), { navy, 0, yellow });
    add(std::move(strip));

    auto item = std::make_unique<GroupItem>();
    item->addToGroup(members);
    item->setItemRotation(352.0);
    centre(*item);
    return item;
}

/// A price sign of four items.
std::unique_ptr<Item> layer()
{
    auto item = std::make_unique<LayerItem>();
    const auto add
        = [&item](std::unique_ptr<Item> member) { graphics(*member.release()).setParentItem(item.get()); };
    add(shape<RectangleItem>(QSizeF(290.0, 170.0), { yellow, 0, yellow }));
    add(textAt(QPointF(90.0, 58.0), u"Apples"_s, 36, navy));
    auto line = std::make_unique<LineItem>();
    line->setItemLength(116.0);
    line->setItemPenWidth(5);
    line->setItemPenColor(navy);
    line->setPos(32.0, 86.0);
    add(std::move(line));
    add(textAt(QPointF(90.0, 124.0), u"from the\norchard"_s, 24, navy));
    add(shapeAt<EllipseItem>(QPointF(232.0, 100.0), QSizeF(128.0, 128.0), { Qt::white, 5, red }));
    auto price = textAt(QPointF(232.0, 100.0), u"2.49"_s, 44, Qt::white);
    add(std::move(price));
    return item;
}

std::unique_ptr<Item> drawing()
{
    auto item = std::make_unique<SvgItem>();
    item->loadItemFromData(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"288\" height=\"176\">"
        "<linearGradient id=\"sky\" x1=\"0\" y1=\"0\" x2=\"0\" y2=\"1\"><stop offset=\"0\" "
        "stop-color=\"#7b2cbf\"/>"
        "<stop offset=\"0.6\" stop-color=\"#f77f00\"/><stop offset=\"1\" "
        "stop-color=\"#ffd166\"/></linearGradient>"
        "<rect width=\"288\" height=\"176\" rx=\"14\" fill=\"url(#sky)\"/>"
        "<circle cx=\"214\" cy=\"112\" r=\"30\" fill=\"#fff3b0\"/>"
        "<path d=\"M0 120H288V162A14 14 0 0 1 274 176H14A14 14 0 0 1 0 162Z\" fill=\"#118ab2\"/>"
        "<path d=\"M184 128h60M192 138h44M200 148h28\" stroke=\"#fff3b0\" stroke-width=\"4\" "
        "stroke-linecap=\"round\"/>"
        "<path d=\"M104 24V118H40C48 84 72 50 104 24Z\" fill=\"#ffffff\"/>"
        "<path d=\"M110 36C128 62 140 88 144 118H110Z\" fill=\"#f1faee\"/>"
        "<path d=\"M34 126H156C152 142 144 150 132 152H62C48 150 38 140 34 126Z\" fill=\"#d62839\"/>"
        "<path d=\"M0 156q12 -8 24 0t24 0t24 0t24 0t24 0t24 0t24 0t24 0t24 0t24 0t24 0t24 0V162A14 14 0 0 1 "
        "274 "
        "176H14A14 14 0 0 1 0 162Z\" fill=\"#1d3557\"/></svg>");
    centre(*item);
    return item;
}

/// Hills behind each other, the nearer the darker, under the evening sun.
QImage landscape(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0.0, 0.0, 0.0, 0.7 * size.height());
    sky.setColorAt(0.0, QColor(0x3A, 0x5A, 0x98));
    sky.setColorAt(0.6, QColor(0xF4, 0xA2, 0x61));
    sky.setColorAt(1.0, QColor(0xFF, 0xE8, 0xA3));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xFF, 0xF4, 0xD0));
    painter.drawEllipse(QPointF(0.68 * size.width(), 0.5 * size.height()), 22.0, 22.0);
    constexpr int ranges = 5;
    for (int range = 0; range < ranges; ++range) {
        const double nearness = double(range) / (ranges - 1);
        QPainterPath hills(QPointF(0.0, size.height()));
        for (int x = 0; x <= size.width(); ++x) {
            const double wave = std::sin(x * 0.021 + range * 1.9) + 0.5 * std::sin(x * 0.047 + range * 2.7)
                + 0.06 * std::sin(x * 0.61 + range);
            hills.lineTo(x, size.height() * (0.56 + 0.09 * range) - 9.0 * wave);
        }
        hills.lineTo(size.width(), size.height());
        painter.setBrush(QColor::fromHsvF(0.62F, float(0.3 + 0.4 * nearness), float(0.78 - 0.56 * nearness)));
        painter.drawPath(hills);
    }
    return image;
}

std::unique_ptr<Item> picture()
{
    auto item = std::make_unique<PixMapItem>();
    item->pixmapImportActions(QPixmap::fromImage(landscape(QSize(288, 176))));
    centre(*item);
    return item;
}

std::unique_ptr<Item> labelText()
{
    auto item = textAt(QPointF(), u"Ripe figs\n4.99"_s, 52, red);
    paint(*item, { red, 6, yellow });
    centre(*item);
    return item;
}

std::unique_ptr<Item> richText()
{
    auto item = std::make_unique<RichTextItem>();
    item->setItemSize(QSizeF(296.0, 180.0));
    item->setItemHtml(
        u"<p style='font-family:Loma; font-size:21pt; color:#1d3557'>Garden herbs</p>"
        "<ul style='font-family:Loma; font-size:13pt; font-weight:400; color:#2a9d5c'>"
        "<li>basil, mint, <i>thyme</i></li><li>from <u>our "
        "own</u> beds</li></ul>"
        "<p align='right' style='font-family:Loma; font-size:36pt; color:#d62839'>"
        "<s style='font-size:15pt; font-weight:400; color:#808080'>2.60</s> 1<sup>95</sup></p>"_s);
    centre(*item);
    return item;
}

std::unique_ptr<Item> line()
{
    auto item = std::make_unique<LineItem>();
    item->setItemLength(270.0);
    item->setItemPenWidth(8);
    item->setItemPenColor(red);
    item->setItemArrows(LeftArrowBar, RightArrowFilled);
    item->setItemRotation(335.0);
    centre(*item);
    return item;
}

std::unique_ptr<Item> roundedRectangle()
{
    auto item = shape<RoundedRectangleItem>(
        QSizeF(270.0, 160.0), { green, 8, QColor(0x8F, 0xD9, 0x9F), BrushRadialGradient });
    item->setRoundingRadiusX(40.0);
    item->setRoundingRadiusY(40.0);
    return item;
}

std::unique_ptr<Item> pie()
{
    auto item = shape<PieItem>(QSizeF(176.0, 176.0), { navy, 5, orange });
    item->setStartPieAngle(90 * 16);
    item->setSpanPieAngle(270 * 16);
    item->setDrawCircle(true);
    return item;
}

std::unique_ptr<Item> warningTriangle()
{
    return shape<EquilateralTriangleItem>(QSizeF(200.0, 173.2), { Qt::black, 18, yellow });
}

std::unique_ptr<Item> hazardDiamond()
{
    auto item = shape<DiamondItem>(QSizeF(180.0, 180.0), { red, 16, Qt::white });
    item->setItemPenJoinStyle(Qt::MiterJoin);
    return item;
}

} // namespace

const QList<PagePicture> &pagePictures()
{
    static const QList<PagePicture> pictures {
        { GroupShape, u"group"_s, group, tolerance },
        { LayerShape, u"layer"_s, layer },
        { SvgShape, u"svg"_s, drawing, tolerance },
        { PixmapShape, u"picture"_s, picture, tolerance },
        { SymbolShape, u"symbol"_s, [] { return symbolAt(QPointF(160.0, 100.0), 180.0); } },
        { LabelTextShape, u"label-text"_s, labelText },
        { RichTextShape, u"rich-text"_s, richText },
        { BarcodeShape, u"barcode"_s,
            [] {
                return barcodeAt(
                    QPointF(160.0, 100.0), 58, u"Fresh apples, 2.49 a kilo"_s, QSizeF(174.0, 174.0));
            } },
        { LineShape, u"line"_s, line },
        plain<RectangleItem>(
            RectangleShape, u"rectangle"_s, QSizeF(270.0, 160.0), { navy, 10, blue, BrushLinearGradient }),
        { RoundedRectangleShape, u"rounded-rectangle"_s, roundedRectangle, tolerance },
        plain<EllipseItem>(
            EllipseShape, u"ellipse"_s, QSizeF(270.0, 164.0), { violet, 6, violet, BrushConicalGradient }),
        { PieShape, u"pie"_s, pie },
        plain<RightTriangleItem>(RightTriangleShape, u"right-triangle"_s, QSizeF(220.0, 160.0),
            { navy, 6, blue, BrushForwardDiagonal }),
        { EquilateralTriangleShape, u"equilateral-triangle"_s, warningTriangle },
        { DiamondShape, u"diamond"_s, hazardDiamond },
        plain<PentagonItem>(
            PentagonShape, u"pentagon"_s, QSizeF(185.0, 176.0), { blue, 6, blue, BrushRadialGradient }),
        plain<HexagonItem>(
            HexagonShape, u"hexagon"_s, QSizeF(203.0, 176.0), { green, 6, green, BrushLinearGradient }),
        plain<OctagonItem>(
            OctagonShape, u"octagon"_s, QSizeF(172.0, 172.0), { QColor(0x80, 0x10, 0x1C), 10, red }),
    };
    return pictures;
}

QImage rendered(const PagePicture &picture)
{
    const std::unique_ptr<Item> item = picture.make();
    QGraphicsItem &shown = graphics(*item);
    QGraphicsScene scene(QRectF(QPointF(), pictureSize));
    scene.addItem(&shown);
    shown.setSelected(picture.shape == GroupShape);
    QImage image(pictureSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene.render(&painter);
    scene.removeItem(&shown);
    return image;
}
