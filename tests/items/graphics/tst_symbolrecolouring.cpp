// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/repaints.h"
#include "tests/support/symbols.h"

#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

const QColor green(0, 128, 0);

/// Black in another specification: no comparison takes it for black.
const QColor hsvBlack = QColor::fromHsv(0, 0, 0);

QByteArray originalOf(const SymbolItem &item)
{
    return QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray());
}

} // namespace

/// Changing the colours of a symbol, and reducing them to one ink.
class tst_SymbolRecolouring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void changedColourRecoloursTheOriginal();
    void equalColourChangesNothing();
    void colourTextsAreRead_data();
    void colourTextsAreRead();
    void bothColoursAreSetAtOnce();
    void textIsRecolouredWithTheBackground_data();
    void textIsRecolouredWithTheBackground();
    void normalisingShowsNothing();
    void coloursAreTurnedBack();
    void stopsAreFixed();
    void symbolThatBreaksComesBack();
    void changesWaitUntilTheyArePainted();
    void referencesDoNotWait();
    void reductionFollowsItsTable_data();
    void reductionFollowsItsTable();
    void negativeReductionFollowsItsTable_data();
    void negativeReductionFollowsItsTable();
    void reductionRecoloursTheDrawing();
};

void tst_SymbolRecolouring::changedColourRecoloursTheOriginal()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    Repaints repaints(item);
    const auto contents = [](const QByteArray &pen, const QByteArray &fill) {
        return "<svg fill=\"" + pen
            + "\" stroke=\"none\" width=\"40\" height=\"20\"><rect width=\"20\" height=\"20\" fill=\"" + pen
            + "\"/><rect x=\"20\" width=\"20\" height=\"20\" style=\"fill:" + fill + "\"/></svg>";
    };
    item.setItemPenColor(red);
    QCOMPARE(item.getSvgContents(), contents("#FF0000", "none"));
    QVERIFY(repaints.wanted());
    item.setItemFillColor(blue);
    QCOMPARE(item.getSvgContents(), contents("#FF0000", "#0000FF"));
    QVERIFY(repaints.wanted());
    item.setItemPenColor(white);
    item.setItemFillColor(black);
    QCOMPARE(item.getSvgContents(), contents("#FFFFFF", "#000000"));
    item.setItemFillColor(transparent);
    item.setItemPenColor(green);
    QCOMPARE(item.getSvgContents(), contents("#008000", "none"));
    QCOMPARE(originalOf(item), Symbols::halves);
    QCOMPARE(item.getItemSize(), QSizeF(40, 20));
}

void tst_SymbolRecolouring::equalColourChangesNothing()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves, true, "#FF0000", "#0000FF"));
    const QByteArray contents = item.getSvgContents();
    Repaints repaints(item);
    item.setItemPenColor(black);
    item.setItemFillColor(transparent);
    item.setItemPenFillColorPrePrint(black, transparent);
    QCOMPARE(item.getSvgContents(), contents);
    QVERIFY(!repaints.wanted());
}

void tst_SymbolRecolouring::colourTextsAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");
    QTest::newRow("transparent") << u"transparent"_s << transparent;
    QTest::newRow("capital") << u"Transparent"_s << QColor(Qt::transparent);
    QTest::newRow("number") << u"#80ff0000"_s << translucentRed;
    QTest::newRow("name") << u"blue"_s << blue;
    QTest::newRow("nonsense") << u"mauvish"_s << QColor();
}

void tst_SymbolRecolouring::colourTextsAreRead()
{
    QFETCH(QString, text);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemFillColor(green);
    item.setItemFillColorString(text);
    QTEST(item.getItemFillColor(), "color");
    item.setItemPenColorString(text);
    QTEST(item.getItemPenColor(), "color");
}

void tst_SymbolRecolouring::bothColoursAreSetAtOnce()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemPenFillColorPrePrint(red, transparent);
    QVERIFY(item.getSvgContents().contains("fill=\"#FF0000\"/>"));
    QCOMPARE(item.getItemPenColor(), red);
    item.setItemPenFillColorPrePrint(red, blue);
    QVERIFY(item.getSvgContents().contains("fill:#0000FF"));
    QCOMPARE(item.getItemFillColor(), blue);
}

void tst_SymbolRecolouring::textIsRecolouredWithTheBackground_data()
{
    QTest::addColumn<bool>("background");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("filled") << true << blue
                            << "<rect id=\"background_fix\" fill=\"#0000FF\" fill-opacity=\"1\"/>"_ba;
    QTest::newRow("transparent") << true << transparent << ">"_ba;
    QTest::newRow("filled, no flag")
        << false << blue << "<rect id=\"background_fix\" fill=\"#0000FF\" fill-opacity=\"0\"/>"_ba;
    QTest::newRow("transparent, no flag")
        << false << transparent << "<rect id=\"background_fix\" fill=\"none\" fill-opacity=\"0\"/>"_ba;
}

void tst_SymbolRecolouring::textIsRecolouredWithTheBackground()
{
    QFETCH(bool, background);
    QFETCH(QColor, fill);
    SymbolItem item;
    item.setFillBoundingRectangle(background);
    QByteArray svg = "<rect id=\"background_fix\" fill=\"#FFFFFF\" fill-opacity=\"0\"/>";
    item.replacePenFillColors(svg, red, fill);
    QTEST(svg, "result");
}

void tst_SymbolRecolouring::normalisingShowsNothing()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setSvgContentsOriginal("<svg width=\"8\" height=\"8\"><g fill=\"#000000\"/></svg>"_ba.toBase64());
    Repaints repaints(item);
    item.replacePenFillColors(red, blue, true);
    QCOMPARE(originalOf(item), Symbols::root + "width=\"8\" height=\"8\"><g fill=\"#000000\"/></svg>");
    QCOMPARE(item.getSvgContents(),
        "<svg fill=\"#FF0000\" stroke=\"none\" width=\"8\" height=\"8\"><g fill=\"#FF0000\"/></svg>"_ba);
    QCOMPARE(item.getItemPenColor(), black);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QVERIFY(!repaints.wanted());
}

void tst_SymbolRecolouring::coloursAreTurnedBack()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::onBackground, true, "#FF0000", "#0000FF"));
    item.setSvgContentsOriginal({});
    item.restorePenFillColorsAndOpaque(red, blue, true);
    QCOMPARE(originalOf(item), Symbols::onBackground);
    QVERIFY(item.loadItemFromData(Symbols::halves, false, "#FF0000", "#0000FF"));
    item.setSvgContentsOriginal({});
    item.restorePenFillColorsAndOpaque(red, blue, false);
    QCOMPARE(originalOf(item), Symbols::halves);
}

void tst_SymbolRecolouring::stopsAreFixed()
{
    QByteArray svg = "<linearGradient><stop offset=\"0\" stop-color=\"none\"/></linearGradient>";
    SymbolItem::fixTransparentStops(svg);
    QCOMPARE(svg,
        "<linearGradient><stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/></linearGradient>"_ba);
}

void tst_SymbolRecolouring::symbolThatBreaksComesBack()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::breakable, true, "#000000", "#0000FF"));
    item.setItemSize(QSizeF(80, 20));
    item.setItemFillColor(blue);
    item.setItemPenColor(red);
    item.setItemFillColor(transparent);
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), transparent);
    QCOMPARE(item.getItemSize(), QSizeF(80, 20));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 20));
    item.setItemPenColor(green);
    QCOMPARE(item.getItemSize(), QSizeF(80, 20));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 20));
    item.setItemFillColor(blue);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(item.getItemSize(), QSizeF(80, 20));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 20));
}

void tst_SymbolRecolouring::changesWaitUntilTheyArePainted()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemPenColor(red); // the first recolouring of a drawing shows at once
    const QGraphicsSvgItem &base = item;
    QVERIFY(base.renderer()->isValid());
    item.setItemPenColor(blue);
    QCOMPARE(Images::painted(item, QSize(40, 20)).pixel(10, 10), bluePixel);
    item.setItemPenColor(yellow);
    QImage image(40, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    item.renderer()->render(&painter);
    QCOMPARE(image.pixel(10, 10), yellowPixel);
}

void tst_SymbolRecolouring::referencesDoNotWait()
{
    // The part that it shows is named like a colour, so that a change of colours shows another.
    SymbolItem item;
    QVERIFY(item.loadItemFromData("<svg xmlns:xlink=\"http://www.w3.org/1999/xlink\"><defs>"
                                  "<rect id=\"FF0000\" width=\"30\" height=\"10\"/>"
                                  "<rect id=\"0000FF\" width=\"30\" height=\"20\"/></defs>"
                                  "<use xlink:href=\"#000000\" y=\"50\"/></svg>",
        false, "#FF0000", {}));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 30, 60));
    item.setItemPenColor(red);
    item.setItemPenColor(blue);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 30, 70));
    QCOMPARE(item.getItemSize(), QSizeF(30, 60));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 30, 60));
}

void tst_SymbolRecolouring::reductionFollowsItsTable_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("keepOthers");
    QTest::addColumn<QColor>("newPen");
    QTest::addColumn<QColor>("newFill");
    QTest::addColumn<bool>("printed");
    const auto row = [](const char *name, const QColor &pen, const QColor &fill, bool keepBlack,
                         bool keepOthers, const QColor &newPen, const QColor &newFill, bool printed) {
        QTest::newRow(name) << pen << fill << keepBlack << keepOthers << newPen << newFill << printed;
    };
    // The print colour is red.
    row("red, no fill", red, transparent, false, false, black, transparent, true);
    row("red, red", red, red, false, false, black, black, true);
    row("red, black", red, black, false, false, black, white, true);
    row("red, black kept", red, black, true, false, black, black, true);
    row("red, others kept only", red, black, false, true, black, white, true);
    row("red, blue", red, blue, false, false, black, white, true);
    row("red, blue, all kept", red, blue, true, true, black, white, true);
    row("red, white", red, white, false, false, black, white, true);

    row("black, no fill", black, transparent, false, false, white, transparent, false);
    row("black kept alone, no fill", black, transparent, true, false, white, transparent, false);
    row("black kept, no fill", black, transparent, true, true, black, transparent, true);
    row("black, red", black, red, false, false, white, black, true);
    row("black kept, red", black, red, true, false, black, black, true);
    row("black, black", black, black, false, false, white, transparent, false);
    row("black kept alone, black", black, black, true, false, white, transparent, false);
    row("black kept, black", black, black, true, true, black, black, true);
    row("black, blue", black, blue, false, false, white, white, false);
    row("black kept, blue", black, blue, true, true, black, white, true);

    row("blue, no fill", blue, transparent, false, false, white, transparent, false);
    row("blue, no fill, all kept", blue, transparent, true, true, white, transparent, false);
    row("blue, red", blue, red, false, false, white, black, true);
    row("blue, red, all kept", blue, red, true, true, white, black, true);
    row("blue, black", blue, black, false, false, white, transparent, false);
    row("blue, black kept alone", blue, black, true, false, white, transparent, false);
    row("blue, black kept", blue, black, true, true, white, black, true);
    row("blue, blue", blue, blue, true, true, white, white, false);
    row("blue, white", blue, white, false, false, white, white, false);
    row("translucent red", translucentRed, translucentRed, false, false, white, white, false);
    row("black of another kind", hsvBlack, hsvBlack, true, true, white, white, false);
}

void tst_SymbolRecolouring::reductionFollowsItsTable()
{
    QFETCH(QColor, pen);
    QFETCH(QColor, fill);
    QFETCH(bool, keepBlack);
    QFETCH(bool, keepOthers);
    QFETCH(bool, printed);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemPenFillColorPrePrint(pen, fill);
    item.setItemFlags(MobraTypes::FlagVisibleInPrint, !printed);
    QCOMPARE(item.resetItemColors(red, keepBlack, keepOthers), printed);
    QTEST(item.getItemPenColor(), "newPen");
    QTEST(item.getItemFillColor(), "newFill");
    QCOMPARE(item.itemFlags() & 1U, printed ? 1U : 0U);
}

void tst_SymbolRecolouring::negativeReductionFollowsItsTable_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("newPen");
    QTest::addColumn<QColor>("newFill");
    QTest::addColumn<bool>("printed");
    QTest::newRow("red, no fill") << red << transparent << white << transparent << false;
    QTest::newRow("red, red") << red << red << white << white << false;
    QTest::newRow("red, black") << red << black << white << black << true;
    QTest::newRow("red, white") << red << white << white << black << true;
    QTest::newRow("blue, no fill") << blue << transparent << black << transparent << true;
    QTest::newRow("black, no fill") << black << transparent << black << transparent << true;
    QTest::newRow("blue, red") << blue << red << black << white << true;
    QTest::newRow("blue, blue") << blue << blue << black << black << true;
    QTest::newRow("white, white") << white << white << black << black << true;
}

void tst_SymbolRecolouring::negativeReductionFollowsItsTable()
{
    QFETCH(QColor, pen);
    QFETCH(QColor, fill);
    QFETCH(bool, printed);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemPenFillColorPrePrint(pen, fill);
    item.setItemFlags(MobraTypes::FlagVisibleInPrint, !printed);
    QCOMPARE(item.resetItemColorsNegative(red), printed);
    QTEST(item.getItemPenColor(), "newPen");
    QTEST(item.getItemFillColor(), "newFill");
    QCOMPARE(item.itemFlags() & 1U, printed ? 1U : 0U);
}

void tst_SymbolRecolouring::reductionRecoloursTheDrawing()
{
    SymbolItem item;
    // Its colours come from texts, not from the item, and are reduced all the same.
    QVERIFY(item.loadItemFromData(Symbols::halves, true, "#0000FF", "#00FF00"));
    QVERIFY(item.resetItemColors(black, false, false));
    const QImage image = Images::painted(item, QSize(40, 20));
    QCOMPARE(image.pixel(10, 10), blackPixel);
    QCOMPARE(image.pixel(30, 10), whitePixel);
    QVERIFY(item.getSvgContents().contains("fill:none"));
}

QTEST_MAIN(tst_SymbolRecolouring)
#include "tst_symbolrecolouring.moc"
