// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "tests/items/looks.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int gradientTolerance = 2;
const QColor red(0xC0, 0x20, 0x20);
const QColor blue(0x20, 0x40, 0xC0);
const QColor yellow(0xFF, 0xE0, 0x60);
const QPointF centre(48.0, 40.0);

using Change = std::function<void(SimpleTextItem &)>;
using RichChange = std::function<void(RichTextItem &)>;

void nothing(SimpleTextItem & /*label*/) { }
void nothingRich(RichTextItem & /*box*/) { }

template <typename Text> void fill(Text &text, int style, const QColor &color)
{
    text.setItemFillColor(color);
    text.setItemBrushStyleInt(style);
}

template <typename Text> void frame(Text &text, int width, Qt::PenStyle style = Qt::SolidLine)
{
    text.setItemPenColor(blue);
    text.setItemPenWidth(static_cast<ushort>(width));
    text.setItemPenStyle(style);
}

/// A label text in its natural size, in the middle of the cell.
Look written(const QByteArray &name, const QString &letters, int pixels, const Change &change = nothing,
    Look::Place place = Look::Alone)
{
    const auto write = [=](Item &item) {
        auto &label = dynamic_cast<SimpleTextItem &>(item);
        label.resetTransform();
        label.setItemText(letters);
        label.setItemFontSize(pixels);
        label.setItemTextColor(red);
        label.setPos(centre - QPointF(label.getItemWidth(), label.getItemHeight()) / 2.0);
        change(label);
    };
    return { name, write, place, name.endsWith("gradient") ? gradientTolerance : 0 };
}

QList<Look> fontLooks()
{
    const QString lines = u"gÄ\nWide"_s;
    const auto aligned = [](Qt::Alignment alignment) {
        return [alignment](SimpleTextItem &label) { label.setItemAlignment(alignment); };
    };
    return {
        written("bold", u"Ägypt"_s, 22),
        written("regular", u"Ägypt"_s, 22, [](auto &label) { label.setItemBold(false); }),
        written("italic", u"Ägypt"_s, 22, [](auto &label) { label.setItemItalic(true); }),
        written("underlined", u"Ägypt"_s, 22, [](auto &label) { label.setItemUnderline(true); }),
        written("left", lines, 18, aligned(Qt::AlignLeft)),
        written("centred", lines, 18, aligned(Qt::AlignHCenter)),
        written("right", lines, 18, aligned(Qt::AlignRight)),
        written("thai", u"ที่อยู่"_s, 24),
        written("translucent", u"Ägypt"_s, 22,
            [](auto &label) { label.setItemTextColor(QColor(0xC0, 0x20, 0x20, 0x60)); }),
        written("filled", u"Ägypt"_s, 22, [](auto &label) { fill(label, 1, yellow); }),
        written("gradient", u"Ägypt"_s, 22, [](auto &label) { fill(label, 15, blue); }),
    };
}

QList<Look> placeLooks()
{
    const auto stretched = [](bool pinned, double degrees) {
        return [=](SimpleTextItem &label) {
            label.setItemPinToCenter(pinned);
            label.setItemSize(QSizeF(70.0, 24.0));
            label.setPos(centre - QPointF(35.0, 12.0));
            label.setItemRotation(degrees);
        };
    };
    const auto mirrored = [](bool horizontally, bool vertically) {
        return [=](SimpleTextItem &label) {
            label.setItemHorizontalMirror(horizontally);
            label.setItemVerticalMirror(vertically);
        };
    };
    const auto vertical = [](double degrees) {
        return [=](SimpleTextItem &label) {
            label.setTextVertical(true);
            label.setPos(centre - QPointF(label.getItemWidth(), label.getItemHeight()) / 2.0);
            label.setItemRotation(degrees);
        };
    };
    const auto turned = [](SimpleTextItem &label) { label.setItemRotation(30.0); };
    return {
        written("rotated", u"Ägypt"_s, 22, turned),
        written("rotated-selected", u"Ägypt"_s, 22, turned, Look::Selected),
        written("stretched", u"Ägypt"_s, 22, stretched(false, 0.0)),
        written("stretched-rotated", u"Ägypt"_s, 22, stretched(false, 30.0)),
        written("stretched-rotated-pinned", u"Ägypt"_s, 22, stretched(true, 30.0)),
        written("mirrored-horizontally", u"Ägypt"_s, 22, mirrored(true, false)),
        written("mirrored-vertically", u"Ägypt"_s, 22, mirrored(false, true)),
        written("mirrored-both", u"Ägypt"_s, 22, mirrored(true, true)),
        written("vertical", u"A b"_s, 16, vertical(0.0)),
        written("vertical-rotated", u"A b"_s, 16, vertical(60.0)),
        written("skewed", u"Ägypt"_s, 22,
            [](auto &label) { label.setTransform(QTransform(1.0, 0.2, -0.5, 1.0, 12.0, -6.0)); }),
    };
}

QList<Look> frameLooks()
{
    const auto framed = [](int width, const QSizeF &size, double degrees) {
        return [=](SimpleTextItem &label) {
            frame(label, width);
            if (!size.isEmpty())
                label.setItemSize(size);
            label.setPos(centre - QPointF(label.getItemWidth(), label.getItemHeight()) / 2.0);
            label.setItemRotation(degrees);
        };
    };
    return {
        written("framed", u"Ägypt"_s, 22, framed(3, {}, 0.0)),
        written("framed-equal-scales", u"Ägypt"_s, 11, framed(3, QSizeF(68.0, 40.0), 0.0)),
        written("framed-unequal-scales", u"Ägypt"_s, 22, framed(4, QSizeF(40.0, 60.0), 0.0)),
        written("framed-unequal-rotated", u"Ägypt"_s, 22, framed(4, QSizeF(70.0, 18.0), 30.0)),
        written("framed-dashed", u"Ägypt"_s, 22, [](auto &label) { frame(label, 2, Qt::DashLine); }),
        written("framed-gradient", u"Ägypt"_s, 22,
            [](auto &label) {
                frame(label, 3);
                fill(label, 16, yellow);
            }),
    };
}

QList<Look> stateLooks()
{
    const auto white = [](SimpleTextItem &label) {
        label.setItemTextColor(Qt::white);
        fill(label, 1, blue);
    };
    return {
        written("selected", u"Ägypt"_s, 22, nothing, Look::Selected),
        written("selected-in-group", u"Ägypt"_s, 22, nothing, Look::SelectedInGroup),
        written("edited", u"Ägypt"_s, 22, nothing, Look::Edited),
        written("edited-white", u"Ägypt"_s, 22, white, Look::Edited),
        written(
            "edited-framed", u"Ägypt"_s, 22, [](auto &label) { frame(label, 2); }, Look::Edited),
        written("marked-empty", {}, 22, nothing, Look::Marked),
        written("marked-blank", u"   "_s, 22, nothing, Look::Marked),
        written("marked-with-text", u"Ägypt"_s, 22, nothing, Look::Marked),
        written("empty", {}, 22),
    };
}

/// A box of 64 x 48 with a text.
Look boxed(const QByteArray &name, const QString &html, const RichChange &change = nothingRich,
    Look::Place place = Look::Alone)
{
    const auto write = [=](Item &item) {
        auto &box = dynamic_cast<RichTextItem &>(item);
        box.setItemHtml(
            u"<div style='font-family:Loma; font-size:9pt; color:#202020;'>"_s + html + u"</div>"_s);
        change(box);
    };
    return { name, write, place, name.endsWith("gradient") ? gradientTolerance : 0 };
}

const QString price
    = u"<p style='margin:0'>Now <b style='font-size:12pt; color:#c02020'>9.<sup>99</sup></b></p>"_s;

QList<Look> boxLooks()
{
    const QString tooMuch = u"more text than fits"_s;
    const auto low = [](RichTextItem &box) {
        box.setItemSize(QSizeF(64.0, 24.0));
        box.setEmptyFontSize(8); // the height of a line may be missing
    };
    const QString dot = u"data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAgAAAAICAIAAABLbSncAAAAHElEQVR42mNQ"
                        "cDgARwcUFOCIgYoSyBxkRVSUAACSTkQByohs3gAAAABJRU5ErkJggg=="_s;
    return {
        boxed("price", price),
        boxed("styles", u"<b>b</b> <i>i</i> <u>u</u> <s>s</s> <span style='background:#ffe060'>bg</span>"_s),
        boxed("centred", u"<p align='center' style='margin:0'>two<br>lines</p>"_s),
        boxed("list", u"<ul style='margin:0'><li>one</li><li>two</li></ul>"_s),
        boxed("table",
            u"<table border='1' cellspacing='0' width='100%'><tr><td>a</td><td bgcolor='#ffe060'>b</td></tr>"
            "<tr><td>c</td><td>d</td></tr></table>"_s),
        boxed("picture", u"in <img src='%1' width='16' height='16'> line"_s.arg(dot)),
        boxed("thai", u"ราคาพิเศษ"_s),
        boxed("filled", price, [](auto &box) { fill(box, 1, yellow); }),
        boxed("gradient", price, [](auto &box) { fill(box, 15, yellow); }),
        boxed("framed", price, [](auto &box) { frame(box, 4); }),
        boxed("framed-dashed", price, [](auto &box) { frame(box, 2, Qt::DashLine); }),
        boxed("rotated", price, [](auto &box) { box.setItemRotation(30.0); }),
        boxed(
            "rotated-selected", price, [](auto &box) { box.setItemRotation(30.0); }, Look::Selected),
        boxed("mirrored-horizontally", price, [](auto &box) { box.setItemHorizontalMirror(true); }),
        boxed("mirrored-vertically", price, [](auto &box) { box.setItemVerticalMirror(true); }),
        boxed("overflow", tooMuch, low),
        boxed("overflow-bordered", tooMuch, low, Look::Bordered),
        boxed("fits-bordered", price, nothingRich, Look::Bordered),
        boxed("selected", price, nothingRich, Look::Selected),
        boxed("overflow-selected", tooMuch, low, Look::Selected),
        boxed("selected-in-group", price, nothingRich, Look::SelectedInGroup),
        boxed("edited", price, nothingRich, Look::Edited),
        boxed("marked-with-text", price, nothingRich, Look::Marked),
    };
}

} // namespace

QList<Look> labelTextLooks()
{
    const auto asMade = [](Item & /*item*/) {};
    const QList<Look> made { { "new", asMade }, { "selected-new", asMade, Look::Selected } };
    return made + fontLooks() + placeLooks() + frameLooks() + stateLooks();
}

QList<Look> richTextLooks()
{
    const auto asMade = [](Item & /*item*/) {};
    const QList<Look> made { { "new", asMade }, { "selected-new", asMade, Look::Selected },
        { "marked-new", asMade, Look::Marked } };
    return made + boxLooks();
}
