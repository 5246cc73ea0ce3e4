// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/items/looks.h"

using namespace Qt::StringLiterals;

namespace {

const QColor red(0xC0, 0x20, 0x20);
const QColor yellow(0xFF, 0xE0, 0x60);

using Change = std::function<void(BarcodeItem &)>;

void nothing(BarcodeItem & /*barcode*/) { }

/// A barcode of the symbol and text, changed further.
Look encoded(const QByteArray &name, int symbol, const QString &text, const Change &change = nothing,
    Look::Place place = Look::Alone)
{
    const auto encode = [=](Item &item) {
        auto &barcode = dynamic_cast<BarcodeItem &>(item);
        barcode.setBarcodeSymbol(static_cast<short>(symbol));
        barcode.setBarcodeText(text);
        change(barcode);
    };
    return { name, encode, place };
}

Look code39(const QByteArray &name, const Change &change, Look::Place place = Look::Alone)
{
    return encoded(name, 8, u"AB1"_s, change, place);
}

QList<Look> symbologyLooks()
{
    return {
        { "new", [](Item & /*item*/) {} },
        { "selected-new", [](Item & /*item*/) {}, Look::Selected },
        { "selected-in-group", [](Item & /*item*/) {}, Look::SelectedInGroup },
        encoded("code-128", 20, u"B1234"_s),
        encoded("ean-13", 13, u"590123412345"_s),
        encoded("pdf417", 55, u"PDF417"_s),
        encoded("pdf417-columns", 55, u"PDF417"_s, [](auto &barcode) { barcode.setBarcodeOption2(2); }),
        encoded("qr-level-h", 58, u"B123456"_s, [](auto &barcode) { barcode.setBarcodeSecurityLevel(4); }),
        encoded("data-matrix", 71, u"B123456"_s),
        encoded("aztec", 92, u"B123456"_s),
        encoded("maxicode", 57, u"B123456"_s),
        encoded("dotcode", 115, u"B123456"_s),
        encoded("postnet", 40, u"12345678901"_s),
        encoded("telepen-quiet", 32, u"AB"_s, [](auto &barcode) { barcode.setBarcodeWhiteSpace(10); }),
        encoded("invalid", 13, u"letters"_s, [](auto &barcode) { barcode.setItemFillColor(yellow); }),
    };
}

QList<Look> lineLooks()
{
    const auto aligned = [](Qt::Alignment alignment) {
        return [alignment](BarcodeItem &barcode) { barcode.setItemAlignment(alignment); };
    };
    const auto family = [](BarcodeItem &barcode) {
        barcode.setItemFontFamily(u"DejaVu Serif"_s);
        barcode.setItemFontSize(10);
    };
    return {
        code39("below", nothing),
        code39("above", [](auto &barcode) { barcode.setBarcodeTextAbove(true); }),
        code39("hidden", [](auto &barcode) { barcode.setBarcodeHideText(true); }),
        code39("left", aligned(Qt::AlignLeft)),
        code39("centred", aligned(Qt::AlignHCenter)),
        code39("right", aligned(Qt::AlignRight)),
        code39("bold", [](auto &barcode) { barcode.setItemBold(true); }),
        code39("italic", [](auto &barcode) { barcode.setItemItalic(true); }),
        code39("underlined", [](auto &barcode) { barcode.setItemUnderline(true); }),
        code39("start-and-stop", [](auto &barcode) { barcode.setBarcodeShowStartStop(true); }),
        code39("check-digit", [](auto &barcode) { barcode.setBarcodeOption2(1); }),
        code39("other-font", family),
        code39("large-above",
            [](auto &barcode) {
                barcode.setItemFontSize(14);
                barcode.setBarcodeTextAbove(true);
            }),
        code39("too-large", [](auto &barcode) { barcode.setItemFontSize(40); }),
    };
}

QList<Look> placeLooks()
{
    const auto coloured = [](BarcodeItem &barcode) {
        barcode.setItemFillColor(yellow);
        barcode.setItemTextColor(red);
    };
    const auto mirrored = [](bool horizontally, bool vertically) {
        return [=](BarcodeItem &barcode) {
            barcode.setItemHorizontalMirror(horizontally);
            barcode.setItemVerticalMirror(vertically);
        };
    };
    const auto turned = [coloured](BarcodeItem &barcode) {
        coloured(barcode);
        barcode.setItemRotation(30.0);
    };
    return {
        code39("coloured", coloured),
        code39("translucent",
            [](auto &barcode) {
                barcode.setItemFillColor(QColor(0xFF, 0xE0, 0x60, 0x80));
                barcode.setItemTextColor(QColor(0xC0, 0x20, 0x20, 0x80));
            }),
        code39("rotated", turned),
        code39("rotated-selected", turned, Look::Selected),
        code39("upright", [](auto &barcode) { barcode.setItemRotation(90.0); }),
        code39("mirrored-horizontally", mirrored(true, false)),
        code39("mirrored-vertically", mirrored(false, true)),
        code39("mirrored-both", mirrored(true, true)),
    };
}

} // namespace

QList<Look> barcodeLooks()
{
    return symbologyLooks() + lineLooks() + placeLooks();
}
