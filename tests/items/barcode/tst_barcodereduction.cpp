// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/colours.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

const QColor ink = red;
const QColor other = blue;

/// Fill and text colour of an item, what becomes of them, and whether anything prints.
struct Row
{
    const char *name;
    QColor fill;
    QColor text;
    QColor reducedFill;
    QColor reducedText;
    bool prints;
};

// All pairs of the ink, another colour, black, white, and the two fills that stay as they are. Black is not
// kept.
const Row positive[] = {
    { "ink on ink", ink, ink, black, black, true },
    { "other on ink", ink, other, black, white, true },
    { "black on ink", ink, black, black, white, true },
    { "white on ink", ink, white, black, white, true },
    { "transparent on ink", ink, transparent, black, white, true },
    { "near-white on ink", ink, nearWhite, black, white, true },
    { "ink on other", other, ink, white, black, true },
    { "other on other", other, other, white, white, false },
    { "black on other", other, black, white, white, false },
    { "white on other", other, white, white, white, false },
    { "transparent on other", other, transparent, white, white, false },
    { "near-white on other", other, nearWhite, white, white, false },
    { "ink on black", black, ink, white, black, true },
    { "other on black", black, other, white, white, false },
    { "black on black", black, black, white, white, false },
    { "white on black", black, white, white, white, false },
    { "transparent on black", black, transparent, white, white, false },
    { "near-white on black", black, nearWhite, white, white, false },
    { "ink on white", white, ink, white, black, true },
    { "other on white", white, other, white, white, false },
    { "black on white", white, black, white, white, false },
    { "white on white", white, white, white, white, false },
    { "transparent on white", white, transparent, white, white, false },
    { "near-white on white", white, nearWhite, white, white, false },
    { "ink on transparent", transparent, ink, transparent, black, true },
    { "other on transparent", transparent, other, transparent, white, false },
    { "black on transparent", transparent, black, transparent, white, false },
    { "white on transparent", transparent, white, transparent, white, false },
    { "transparent on transparent", transparent, transparent, transparent, white, false },
    { "near-white on transparent", transparent, nearWhite, transparent, white, false },
    { "ink on near-white", nearWhite, ink, nearWhite, black, true },
    { "other on near-white", nearWhite, other, nearWhite, white, false },
    { "black on near-white", nearWhite, black, nearWhite, white, false },
    { "white on near-white", nearWhite, white, nearWhite, white, false },
    { "transparent on near-white", nearWhite, transparent, nearWhite, white, false },
    { "near-white on near-white", nearWhite, nearWhite, nearWhite, white, false },
    { "invalid on invalid", {}, {}, white, white, false },
    { "ink on invalid", {}, ink, white, black, true },
};

// Keeping black changes these two only: one of the colours has to be the ink, and the other one black.
const Row keepingBlack[] = {
    { "black on ink", ink, black, black, black, true },
    { "ink on black", black, ink, black, black, true },
};

const Row negative[] = {
    { "ink on ink", ink, ink, white, white, false },
    { "other on ink", ink, other, white, black, true },
    { "black on ink", ink, black, white, black, true },
    { "white on ink", ink, white, white, black, true },
    { "transparent on ink", ink, transparent, white, black, true },
    { "near-white on ink", ink, nearWhite, white, black, true },
    { "ink on other", other, ink, black, white, true },
    { "other on other", other, other, black, black, true },
    { "black on other", other, black, black, black, true },
    { "white on other", other, white, black, black, true },
    { "transparent on other", other, transparent, black, black, true },
    { "near-white on other", other, nearWhite, black, black, true },
    { "ink on black", black, ink, black, white, true },
    { "other on black", black, other, black, black, true },
    { "black on black", black, black, black, black, true },
    { "white on black", black, white, black, black, true },
    { "transparent on black", black, transparent, black, black, true },
    { "near-white on black", black, nearWhite, black, black, true },
    { "ink on white", white, ink, black, white, true },
    { "other on white", white, other, black, black, true },
    { "black on white", white, black, black, black, true },
    { "white on white", white, white, black, black, true },
    { "transparent on white", white, transparent, black, black, true },
    { "near-white on white", white, nearWhite, black, black, true },
    { "ink on transparent", transparent, ink, transparent, white, false },
    { "other on transparent", transparent, other, transparent, black, true },
    { "black on transparent", transparent, black, transparent, black, true },
    { "white on transparent", transparent, white, transparent, black, true },
    { "transparent on transparent", transparent, transparent, transparent, black, true },
    { "near-white on transparent", transparent, nearWhite, transparent, black, true },
    { "ink on near-white", nearWhite, ink, black, white, true },
    { "other on near-white", nearWhite, other, black, black, true },
    { "black on near-white", nearWhite, black, black, black, true },
    { "white on near-white", nearWhite, white, black, black, true },
    { "transparent on near-white", nearWhite, transparent, black, black, true },
    { "near-white on near-white", nearWhite, nearWhite, black, black, true },
    { "invalid on invalid", {}, {}, black, black, true },
    { "ink on invalid", {}, ink, black, white, true },
};

// Inks that have a meaning of their own.
const struct
{
    QColor ink;
    Row row;
} specialInks[] = {
    { black, { "black plate, black on white", white, black, white, black, true } },
    { black, { "black plate, black on black", black, black, black, black, true } },
    { black, { "black plate, red on black", black, red, black, white, true } },
    { black, { "black plate, red on transparent", transparent, red, transparent, white, false } },
    { white, { "white plate, black on white", white, black, black, white, true } },
    { white, { "white plate, white on near-white", nearWhite, white, nearWhite, black, true } },
    { transparent, { "no ink, black on transparent", transparent, black, black, white, true } },
    { nearWhite, { "near-white plate, black on near-white", nearWhite, black, black, white, true } },
};

void addColumns()
{
    QTest::addColumn<QColor>("printColor");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("reducedFill");
    QTest::addColumn<QColor>("reducedText");
    QTest::addColumn<bool>("prints");
}

QTestData &add(const Row &row, const char *condition, const QColor &printColor = ink)
{
    return QTest::addRow("%s%s", row.name, condition)
        << printColor << row.fill << row.text << row.reducedFill << row.reducedText << row.prints;
}

void prepare(BarcodeItem &item)
{
    QFETCH(const QColor, fill);
    QFETCH(const QColor, text);
    item.setItemFillColor(fill);
    item.setItemTextColor(text);
}

void compare(BarcodeItem &item, bool result, unsigned int flags)
{
    QFETCH(const bool, prints);
    QTEST(item.getItemFillColor(), "reducedFill");
    QTEST(item.getItemTextColor(), "reducedText");
    QCOMPARE(result, prints);
    QCOMPARE(item.itemFlags(), prints ? flags | 1U : flags & ~1U);
}

} // namespace

/// The colours of a barcode in one ink.
class tst_BarcodeReduction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void inkBecomesBlackAndTheRestWhite_data();
    void inkBecomesBlackAndTheRestWhite();
    void negativeInkBecomesWhiteAndTheRestBlack_data();
    void negativeInkBecomesWhiteAndTheRestBlack();
    void onlyTheFlagOfPrintChanges_data();
    void onlyTheFlagOfPrintChanges();
    void reducedBarcodeIsPaintedInItsColours();
};

void tst_BarcodeReduction::inkBecomesBlackAndTheRestWhite_data()
{
    addColumns();
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("keepOthers");
    for (const bool keepOthers : { false, true }) {
        const char *others = keepOthers ? ", keeping others" : "";
        for (const Row &row : positive)
            add(row, others) << false << keepOthers;
        for (const auto &[printColor, row] : specialInks)
            add(row, others, printColor) << false << keepOthers;
        for (const Row &row : positive) {
            const auto isKept
                = [&row](const Row &kept) { return kept.fill == row.fill && kept.text == row.text; };
            const auto *kept = std::ranges::find_if(keepingBlack, isKept);
            add(kept == std::end(keepingBlack) ? row : *kept,
                keepOthers ? ", keeping black and others" : ", keeping black")
                << true << keepOthers;
        }
    }
}

void tst_BarcodeReduction::inkBecomesBlackAndTheRestWhite()
{
    QFETCH(const QColor, printColor);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, keepOthers);
    BarcodeItem item;
    prepare(item);
    compare(item, item.resetItemColors(printColor, keepBlack, keepOthers), 0x01);
}

void tst_BarcodeReduction::negativeInkBecomesWhiteAndTheRestBlack_data()
{
    addColumns();
    for (const Row &row : negative)
        add(row, "");
}

void tst_BarcodeReduction::negativeInkBecomesWhiteAndTheRestBlack()
{
    QFETCH(const QColor, printColor);
    BarcodeItem item;
    prepare(item);
    compare(item, item.resetItemColorsNegative(printColor), 0x01);
}

void tst_BarcodeReduction::onlyTheFlagOfPrintChanges_data()
{
    QTest::addColumn<unsigned int>("before");
    for (const unsigned int before : { 0x00U, 0x01U, 0x28U, 0x29U, 0xFFFFFFFFU })
        QTest::addRow("%x", before) << before;
}

void tst_BarcodeReduction::onlyTheFlagOfPrintChanges()
{
    QFETCH(const unsigned int, before);
    const auto reduced = [before](const QColor &text, bool isNegative) {
        BarcodeItem item;
        item.setItemFlags(before);
        item.setItemFillColor(transparent);
        item.setItemTextColor(text);
        static_cast<void>(
            isNegative ? item.resetItemColorsNegative(ink) : item.resetItemColors(ink, true, true));
        return item.itemFlags();
    };
    QCOMPARE(reduced(ink, false), before | 1U);
    QCOMPARE(reduced(other, false), before & ~1U);
    QCOMPARE(reduced(ink, true), before & ~1U);
    QCOMPARE(reduced(other, true), before | 1U);
}

void tst_BarcodeReduction::reducedBarcodeIsPaintedInItsColours()
{
    BarcodeItem item;
    item.setItemFillColor(yellow);
    item.setItemTextColor(ink);
    const auto pictureOf = [](BarcodeItem &shown) {
        QImage image(100, 100, QImage::Format_RGB32);
        image.fill(Qt::green);
        QPainter painter(&image);
        const QStyleOptionGraphicsItem option;
        shown.paint(&painter, &option, nullptr);
        return image;
    };
    const QImage before = pictureOf(item);
    QVERIFY(item.resetItemColors(ink, false, false));
    const QImage after = pictureOf(item);
    int bars = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const bool bar = before.pixel(x, y) == redPixel;
            bars += bar ? 1 : 0;
            QCOMPARE(before.pixel(x, y), bar ? redPixel : yellowPixel);
            QCOMPARE(after.pixel(x, y), bar ? blackPixel : whitePixel);
        }
    }
    QVERIFY(bars > 3000 && bars < 7000);
}

QTEST_MAIN(tst_BarcodeReduction)
#include "tst_barcodereduction.moc"
