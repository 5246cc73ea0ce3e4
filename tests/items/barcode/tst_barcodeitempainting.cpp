// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"

#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;
using Images::painted;

using Change = std::function<void(BarcodeItem &)>;
Q_DECLARE_METATYPE(Change)

namespace {

/// The corner of a QR Code, of 7 x 7 modules.
constexpr const char *finder[]
    = { "#######", "#.....#", "#.###.#", "#.###.#", "#.###.#", "#.....#", "#######" };
constexpr int finderModules = 7;
constexpr int modules = 21; // of the smallest QR Code, which a new barcode is

/// Whether the finder lies at the corner, in modules of the given size.
bool hasFinder(const QImage &image, const QPoint &corner, const QSize &module)
{
    for (int y = 0; y < finderModules * module.height(); ++y) {
        for (int x = 0; x < finderModules * module.width(); ++x) {
            const bool dark = finder[y / module.height()][x / module.width()] == '#';
            if (image.pixel(corner + QPoint(x, y)) != (dark ? blackPixel : whitePixel))
                return false;
        }
    }
    return true;
}

/// The corners that have a finder, of a QR Code that fills the rectangle.
QString findersIn(const QImage &image, const QRect &rect)
{
    const QSize module = rect.size() / modules;
    const QSize far = rect.size() - module * finderModules;
    QString found;
    for (const auto &[name, corner] : { std::pair(u"top left "_s, QPoint(0, 0)),
             { u"top right "_s, QPoint(far.width(), 0) }, { u"bottom left "_s, QPoint(0, far.height()) },
             { u"bottom right "_s, QPoint(far.width(), far.height()) } }) {
        if (hasFinder(image, rect.topLeft() + corner, module))
            found += name;
    }
    return found;
}

const QSize canvas(240, 120);
constexpr int width = 200;
constexpr int height = 100;

/// A Code 39 with its text, of 200 x 100.
std::unique_ptr<BarcodeItem> code39()
{
    auto item = std::make_unique<BarcodeItem>();
    item->setItemSize(QSizeF(width, height));
    item->setBarcodeSymbol(8);
    item->setBarcodeText(u"AB"_s);
    item->setItemFontFamily(u"Loma"_s);
    item->setItemFontSize(15);
    return item;
}

/// The smallest rectangle about all pixels that are not white.
QRect inkedRect(const QImage &image)
{
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != whitePixel)
                rect |= QRect(x, y, 1, 1);
        }
    }
    return rect;
}

/// How many black pixels have as much black as the image.
int darkness(const QImage &image)
{
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += 255 - qGray(image.pixel(x, y));
    }
    return sum / 255;
}

/// Whether a bar ends in the row: the first one does not begin with white.
bool hasBars(const QImage &image, int row)
{
    return image.pixel(0, row) == blackPixel;
}

/// The strip of the picture that has the text and no bars.
QImage textOf(BarcodeItem &item)
{
    const QImage image = painted(item, canvas);
    int top = 0;
    while (top < height && hasBars(image, top))
        ++top;
    int bottom = top;
    while (bottom < height && !hasBars(image, bottom))
        ++bottom;
    return image.copy(0, top, width, bottom - top);
}

} // namespace

/// What a barcode paints, and where.
class tst_BarcodeItemPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newBarcodeFillsItsRectangle();
    void proportionsFollowTheMode_data();
    void proportionsFollowTheMode();
    void mirrorsMirror_data();
    void mirrorsMirror();
    void backgroundIsTheFill_data();
    void backgroundIsTheFill();
    void barsAreInTheTextColour();
    void invalidTextLeavesTheBackground();
    void textIsBelowAboveOrHidden();
    void textIsAligned();
    void fontChangesTheText_data();
    void fontChangesTheText();
    void startAndStopAreShown();
    void emptySizesPaintNothing_data();
    void emptySizesPaintNothing();
    void sceneClipsToTheRectangle();
};

void tst_BarcodeItemPainting::newBarcodeFillsItsRectangle()
{
    BarcodeItem item;
    item.setItemSize(QSizeF(5 * modules, 5 * modules));
    const QImage image = painted(item, canvas);
    QCOMPARE(findersIn(image, QRect(0, 0, 105, 105)), u"top left top right bottom left "_s);
    QCOMPARE(coloursOf(image), QSet<QRgb>({ blackPixel, whitePixel }));
    QCOMPARE(inkedRect(image), QRect(0, 0, 105, 105));
    // Between the finders, every other module of the seventh row is dark.
    for (int module = 8; module < 13; ++module)
        QCOMPARE(image.pixel(5 * module + 2, 5 * 6 + 2), module % 2 == 0 ? blackPixel : whitePixel);
}

void tst_BarcodeItemPainting::proportionsFollowTheMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("symbol");
    QTest::newRow("stretched") << 0 << QSize(210, 105) << QRect(0, 0, 210, 105);
    QTest::newRow("left") << 1 << QSize(205, 105) << QRect(0, 0, 105, 105);
    QTest::newRow("centred") << 2 << QSize(205, 105) << QRect(50, 0, 105, 105);
    QTest::newRow("top") << 1 << QSize(63, 103) << QRect(0, 0, 63, 63);
    QTest::newRow("middle") << 2 << QSize(63, 103) << QRect(0, 20, 63, 63);
    QTest::newRow("unknown") << 3 << QSize(210, 105) << QRect(0, 0, 210, 105);
    QTest::newRow("negative") << -1 << QSize(210, 105) << QRect(0, 0, 210, 105);
}

void tst_BarcodeItemPainting::proportionsFollowTheMode()
{
    QFETCH(const int, mode);
    QFETCH(const QSize, size);
    QFETCH(const QRect, symbol);
    BarcodeItem item;
    item.setItemSize(size);
    item.setBarcodeAspectRatio(mode);
    QCOMPARE(item.getBarcodeAspectRatioMode(), mode);
    const QImage image = painted(item, canvas);
    QCOMPARE(inkedRect(image), symbol);
    QCOMPARE(findersIn(image, symbol), u"top left top right bottom left "_s);
}

void tst_BarcodeItemPainting::mirrorsMirror_data()
{
    QTest::addColumn<bool>("horizontally");
    QTest::addColumn<bool>("vertically");
    QTest::addColumn<QString>("finders");
    QTest::newRow("horizontally") << true << false << u"top left top right bottom right "_s;
    QTest::newRow("vertically") << false << true << u"top left bottom left bottom right "_s;
    QTest::newRow("both") << true << true << u"top right bottom left bottom right "_s;
}

void tst_BarcodeItemPainting::mirrorsMirror()
{
    QFETCH(const bool, horizontally);
    QFETCH(const bool, vertically);
    BarcodeItem item;
    item.setItemSize(QSizeF(84, 105));
    const QRect rect(0, 0, 84, 105);
    const QImage upright = painted(item, rect.size());
    item.setItemHorizontalMirror(horizontally);
    item.setItemVerticalMirror(vertically);
    const QImage mirrored = painted(item, rect.size());
    QTEST(findersIn(mirrored, rect), "finders");
    QCOMPARE(mirrored, upright.mirrored(horizontally, vertically));
}

void tst_BarcodeItemPainting::backgroundIsTheFill_data()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QRgb>("background");
    QTest::newRow("invalid") << QColor() << whitePixel;
    QTest::newRow("transparent") << transparent << whitePixel;
    QTest::newRow("near-white") << nearWhite << 0xFFFFFFFEU;
    QTest::newRow("yellow") << yellow << yellowPixel;
    // 255 - 255 x 128 / 255 of white is left of green and blue.
    QTest::newRow("translucent") << translucentRed << 0xFFFF7F7FU;
}

void tst_BarcodeItemPainting::backgroundIsTheFill()
{
    QFETCH(const QColor, fill);
    QFETCH(const QRgb, background);
    BarcodeItem item;
    item.setItemSize(QSizeF(63, 63));
    item.setItemFillColor(fill);
    const QImage image = painted(item, QSize(80, 70));
    QCOMPARE(coloursOf(image.copy(0, 0, 63, 63)), QSet<QRgb>({ blackPixel, background }));
    QCOMPARE(coloursOf(image.copy(63, 0, 17, 70)), QSet<QRgb>({ whitePixel }));
    QCOMPARE(coloursOf(image.copy(0, 63, 80, 7)), QSet<QRgb>({ whitePixel }));
    QCOMPARE(image.pixel(62, 62) == background || image.pixel(62, 62) == blackPixel, true);
}

void tst_BarcodeItemPainting::barsAreInTheTextColour()
{
    BarcodeItem item;
    item.setItemTextColor(blue);
    QCOMPARE(coloursOf(painted(item, QSize(100, 100))), QSet<QRgb>({ bluePixel, whitePixel }));
    item.setItemTextColor(transparent);
    QCOMPARE(coloursOf(painted(item, QSize(100, 100))), QSet<QRgb>({ whitePixel }));
}

void tst_BarcodeItemPainting::invalidTextLeavesTheBackground()
{
    BarcodeItem item;
    item.setItemFillColor(yellow);
    item.setBarcodeText({});
    QVERIFY(!item.isValidInput());
    QCOMPARE(coloursOf(painted(item, QSize(100, 100))), QSet<QRgb>({ yellowPixel }));
    item.setBarcodeText(u"A"_s);
    QCOMPARE(coloursOf(painted(item, QSize(100, 100))), QSet<QRgb>({ yellowPixel, blackPixel }));
}

void tst_BarcodeItemPainting::textIsBelowAboveOrHidden()
{
    const auto item = code39();
    QImage image = painted(*item, canvas);
    QVERIFY(hasBars(image, 0) && !hasBars(image, height - 1));
    const int textHeight = textOf(*item).height();
    QVERIFY2(textHeight > 20 && textHeight < 40, "15 points are 20 units and what lines have between them");
    QVERIFY(darkness(textOf(*item)) > 20);
    // One row of bars is as the other.
    QCOMPARE(image.copy(0, 0, width, 1), image.copy(0, height - textHeight - 1, width, 1));

    item->setBarcodeTextAbove(true);
    image = painted(*item, canvas);
    QVERIFY(!hasBars(image, 0) && hasBars(image, height - 1));
    QCOMPARE(textOf(*item).height(), textHeight);

    item->setBarcodeHideText(true);
    image = painted(*item, canvas);
    QVERIFY(hasBars(image, 0) && hasBars(image, height - 1));
    QCOMPARE(image.copy(0, 0, width, 1), image.copy(0, height - 1, width, 1));
}

void tst_BarcodeItemPainting::textIsAligned()
{
    const auto item = code39();
    const auto inked = [&item](Qt::Alignment alignment) {
        item->setItemAlignment(alignment);
        return inkedRect(textOf(*item));
    };
    const QRect left = inked(Qt::AlignLeft);
    const QRect centred = inked(Qt::AlignHCenter);
    const QRect right = inked(Qt::AlignRight);
    QVERIFY(left.left() <= 2 && left.right() < 60);
    QVERIFY(right.right() >= width - 3 && right.left() > width - 60);
    QVERIFY(qAbs(centred.left() + centred.right() - (width - 1)) <= 3);
    QVERIFY(qAbs(centred.width() - left.width()) <= 1); // letters may begin between two pixels
    QVERIFY(qAbs(right.width() - left.width()) <= 1);
    // It has one line, which has its own place.
    QCOMPARE(inked(Qt::AlignHCenter | Qt::AlignTop), centred);
    QCOMPARE(inked(Qt::AlignHCenter | Qt::AlignVCenter), centred);
}

void tst_BarcodeItemPainting::fontChangesTheText_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("bold") << Change([](auto &item) { item.setItemBold(true); });
    QTest::newRow("italic") << Change([](auto &item) { item.setItemItalic(true); });
    QTest::newRow("underlined") << Change([](auto &item) { item.setItemUnderline(true); });
    QTest::newRow("larger") << Change([](auto &item) { item.setItemFontSize(20); });
    QTest::newRow("family") << Change([](auto &item) { item.setItemFontFamily(u"DejaVu Serif"_s); });
}

void tst_BarcodeItemPainting::fontChangesTheText()
{
    QFETCH(const Change, change);
    const auto item = code39();
    const QImage plain = textOf(*item);
    change(*item);
    const QImage changed = textOf(*item);
    QVERIFY(changed != plain);
    const QByteArray row = QTest::currentDataTag();
    if (row == "bold")
        QVERIFY(darkness(changed) > darkness(plain) * 11 / 10);
    if (row == "larger")
        QVERIFY(inkedRect(changed).height() > inkedRect(plain).height());
    if (row == "underlined") {
        const QRect letters = inkedRect(plain);
        const QRect withLine = inkedRect(changed);
        QVERIFY(withLine.bottom() > letters.bottom() && withLine.top() == letters.top());
        const QRect line(letters.left(), withLine.bottom(), letters.width(), 1);
        QVERIFY(!coloursOf(changed.copy(line)).contains(whitePixel));
    }
}

void tst_BarcodeItemPainting::startAndStopAreShown()
{
    const auto item = code39();
    const QRect without = inkedRect(textOf(*item));
    const QImage bars = painted(*item, canvas).copy(0, 0, width, 1);
    item->setBarcodeShowStartStop(true);
    const QRect with = inkedRect(textOf(*item));
    QVERIFY(with.left() < without.left() - 3 && with.right() > without.right() + 3);
    QCOMPARE(painted(*item, canvas).copy(0, 0, width, 1), bars);

    // Others have none that people can read.
    item->setBarcodeSymbol(20);
    const QImage code128 = textOf(*item);
    item->setBarcodeShowStartStop(false);
    QCOMPARE(textOf(*item), code128);
}

void tst_BarcodeItemPainting::emptySizesPaintNothing_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("nothing") << QSizeF(0, 0);
    QTest::newRow("no width") << QSizeF(0, 50);
    QTest::newRow("no height") << QSizeF(50, 0);
    QTest::newRow("negative") << QSizeF(-20, 50);
    QTest::newRow("no number") << QSizeF(std::numeric_limits<double>::quiet_NaN(), 50);
}

void tst_BarcodeItemPainting::emptySizesPaintNothing()
{
    QFETCH(const QSizeF, size);
    BarcodeItem item;
    item.setItemFillColor(yellow);
    item.updateItemSize(size);
    QCOMPARE(coloursOf(painted(item, QSize(100, 100))), QSet<QRgb>({ whitePixel }));
}

void tst_BarcodeItemPainting::sceneClipsToTheRectangle()
{
    BarcodeItem item;
    QVERIFY(item.flags().testFlag(QGraphicsItem::ItemClipsToShape));
    QVERIFY(item.isClipped());
    QCOMPARE(item.clipPath().boundingRect(), QRectF(0, 0, 100, 100));
    QVERIFY(item.contains(QPointF(99, 99)) && !item.contains(QPointF(101, 50)));
}

QTEST_MAIN(tst_BarcodeItemPainting)
#include "tst_barcodeitempainting.moc"
