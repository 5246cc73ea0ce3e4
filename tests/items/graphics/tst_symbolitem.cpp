// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/symbols.h"

#include <QFile>
#include <QGraphicsScene>
#include <QPainterPath>
#include <QPointer>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Symbols::halves;
using Symbols::onBackground;

namespace {

const QSize canvas(40, 20);

/// The pixels in the middle of the left and the right half of the drawing.
QList<QRgb> halvesOf(SymbolItem &item)
{
    const QImage image = Images::painted(item, canvas);
    return { image.pixel(10, 10), image.pixel(30, 10) };
}

} // namespace

/// The symbol: loading, place and painting.
class tst_SymbolItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newSymbolIsEmptyAndUnfilled();
    void loadingNormalisesTheOriginal();
    void loadingTwiceGivesTheRootOnePair();
    void loadingWritesTheColours_data();
    void loadingWritesTheColours();
    void loadingOpensTheBackgroundOnlyWithAFill();
    void loadingFindsTheBackground();
    void loadingSetsTheSizeAndNotTheColours();
    void loadingReplacesTheRendererLater();
    void drawingThatCannotBeShownHasNoSize_data();
    void drawingThatCannotBeShownHasNoSize();
    void reloadingKeepsTheFrame();
    void reloadingWhatCannotBeShownShowsTheEmptyDrawing();
    void invalidSymbolIsFixed();
    void formsWithoutColoursUseThoseOfTheItem();
    void filesAreLoaded();
    void linksAreNotFollowed();
    void datasourceGivesBytesTextsAndPaths();
    void resizingScalesTheDrawingInPlace();
    void frameOfAnotherDrawingIsKept();
    void rotationTurnsAboutTheCentre();
    void resetTransformForgetsThePlacing();
    void symbolIsPaintedInItsColours();
    void mirrorsAndSelectionArePainted();
    void opaqueAreaNeedsAFill();
    void copiesAreLikeTheirOriginal();
    void recolouredTextsHaveTheirExtent();
    void copiesShowWhatWasReplaced();
    void copyOfPrivateProperties();
};

void tst_SymbolItem::newSymbolIsEmptyAndUnfilled()
{
    SymbolItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::SymbolShape);
    QCOMPARE(item.type(), 0x1000D);
    item.setItemId(7);
    QCOMPARE(item.toDescriptionString(), u"Symbol 7\n"_s);
    QCOMPARE(item.itemQFlags(), 0x10FU);
    QCOMPARE(item.cacheMode(), QGraphicsItem::NoCache);
    QCOMPARE(item.itemFlags(), 1U);
    QCOMPARE(item.getItemPenColor(), black);
    QCOMPARE(item.getItemFillColor(), transparent);
    QCOMPARE(item.getSvgContents(), QByteArray());
    QCOMPARE(item.getSvgContentsOriginal(), QVariant(QString()));
    QVERIFY(!item.getSingleColor());
    QVERIFY(!item.getFillBoundingRectangle());
    QCOMPARE(item.boundingRect(), QRectF());
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QVERIFY(!item.getItemData().isValid());
}

void tst_SymbolItem::loadingNormalisesTheOriginal()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData("<svg fill=\"#000000\" stroke=\"#000000\" width=\"4\" height=\"2\">"
                                  "<path fill=\"#ffffff\" style=\"stroke:#ffffff;color:#FFffff\"/></svg>",
        true, "#123456", "#ABCDEF"));
    const QByteArray original = Symbols::root
        + "width=\"4\" height=\"2\"><path fill=\"#FFFFFF\" style=\"stroke:#FFFFFF;color:#FFffff\"/></svg>";
    QCOMPARE(QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray()), original);
    QCOMPARE(item.getSvgContents(),
        "<svg fill=\"#123456\" stroke=\"none\" width=\"4\" height=\"2\">"
        "<path fill=\"#ABCDEF\" style=\"stroke:#ABCDEF;color:#FFffff\"/></svg>"_ba);
}

void tst_SymbolItem::loadingTwiceGivesTheRootOnePair()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData("<svg width=\"4\" height=\"2\"><g/></svg>"));
    const QByteArray once = QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray());
    QVERIFY(item.loadItemFromData(once));
    QCOMPARE(QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray()), once);
    QCOMPARE(once, Symbols::root + "width=\"4\" height=\"2\"><g/></svg>");
}

void tst_SymbolItem::loadingWritesTheColours_data()
{
    QTest::addColumn<bool>("hasFill");
    QTest::addColumn<QByteArray>("pen");
    QTest::addColumn<QByteArray>("fill");
    QTest::addColumn<QList<QRgb>>("pixels");
    QTest::newRow("both") << true << "#FF0000"_ba
                          << "#0000FF"_ba << QList<QRgb> { redPixel, bluePixel };
    QTest::newRow("swapped") << true << "#FFFFFF"_ba
                             << "#000000"_ba << QList<QRgb> { whitePixel, blackPixel };
    QTest::newRow("names") << true << "red"_ba
                           << "blue"_ba << QList<QRgb> { redPixel, bluePixel };
    QTest::newRow("no fill") << false << "#FF0000"_ba
                             << "#0000FF"_ba << QList<QRgb> { redPixel, whitePixel };
}

void tst_SymbolItem::loadingWritesTheColours()
{
    QFETCH(bool, hasFill);
    QFETCH(QByteArray, pen);
    QFETCH(QByteArray, fill);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves, hasFill, pen, fill));
    QTEST(halvesOf(item), "pixels");
}

void tst_SymbolItem::loadingOpensTheBackgroundOnlyWithAFill()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(onBackground, true, "#FF0000", "#0000FF"));
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, bluePixel }));
    QVERIFY(item.loadItemFromData(onBackground, false, "#FF0000", "#0000FF"));
    QVERIFY(item.getSvgContents().contains("id=\"background_fix\" fill=\"none\" fill-opacity=\"0\""));
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, whitePixel }));
}

void tst_SymbolItem::loadingFindsTheBackground()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(onBackground));
    QVERIFY(item.getFillBoundingRectangle());
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(!item.getFillBoundingRectangle());
}

void tst_SymbolItem::loadingSetsTheSizeAndNotTheColours()
{
    SymbolItem item;
    item.setItemScaleX(3.0);
    QVERIFY(item.loadItemFromData(halves, true, "#FF0000", "#0000FF"));
    QCOMPARE(item.getItemSize(), QSizeF(40, 20));
    QCOMPARE(item.getItemScaleX(), 3.0);
    QCOMPARE(item.getItemPenColor(), black);
    QCOMPARE(item.getItemFillColor(), transparent);
}

void tst_SymbolItem::loadingReplacesTheRendererLater()
{
    SymbolItem item;
    const QPointer<QSvgRenderer> old = item.renderer();
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(item.renderer() != old);
    QVERIFY(old);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!old);
}

void tst_SymbolItem::drawingThatCannotBeShownHasNoSize_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no drawing") << "colourful"_ba;
    QTest::newRow("no width") << "<svg width=\"0\" height=\"5\"><g/></svg>"_ba;
    QTest::newRow("cut") << halves.chopped(6);
    QTest::newRow("too deep") << "<svg width=\"9\" height=\"9\">" + QByteArray("<g>").repeated(600)
            + QByteArray("</g>").repeated(600) + "</svg>";
}

void tst_SymbolItem::drawingThatCannotBeShownHasNoSize()
{
    QFETCH(QByteArray, svg);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(!item.loadItemFromData(svg));
    QCOMPARE(item.boundingRect(), QRectF());
    QCOMPARE(item.getItemSize(), QSizeF(0, 0));

    SymbolItem framed;
    framed.setItemSize(QSizeF(80, 60));
    QVERIFY(!framed.reloadItemFromData(svg));
    QCOMPARE(framed.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(framed.getItemSize(), QSizeF(80, 60));
}

void tst_SymbolItem::reloadingKeepsTheFrame()
{
    SymbolItem item;
    item.setItemSize(QSizeF(80, 60));
    QVERIFY(item.reloadItemFromData(halves, true, "#FF0000", "#0000FF"));
    QCOMPARE(item.getItemSize(), QSizeF(80, 60));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 60));
}

void tst_SymbolItem::reloadingWhatCannotBeShownShowsTheEmptyDrawing()
{
    SymbolItem item;
    item.setItemSize(QSizeF(80, 60));
    item.setItemFillColor(blue);
    QVERIFY(!item.reloadItemFromData("nothing", true, "#FF0000", "#0000FF"));
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), transparent);
    QCOMPARE(item.getItemSize(), QSizeF(80, 60));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 60));
}

void tst_SymbolItem::invalidSymbolIsFixed()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves, true, "#FF0000", "#0000FF"));
    const QPointer<QSvgRenderer> old = item.renderer();
    item.fixInvalidSymbol("blue");
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
    QCOMPARE(item.getItemPenColor(), blue);
    QCOMPARE(item.getItemFillColor(), transparent);
    QCOMPARE(Images::coloursOf(Images::painted(item, QSize(100, 100))), QSet<QRgb>({ whitePixel }));
    QVERIFY(item.renderer() != old);
}

void tst_SymbolItem::formsWithoutColoursUseThoseOfTheItem()
{
    SymbolItem item;
    item.setItemPenColor(red);
    QVERIFY(item.loadItemFromData(halves));
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, whitePixel }));
    item.setItemFillColor(blue);
    item.setItemSize(QSizeF(40, 20));
    QVERIFY(item.reloadItemFromData(onBackground));
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, bluePixel }));
    QVERIFY(item.getSvgContents().contains("\"#0000ff\"")); // as the colour's name is written
}

void tst_SymbolItem::filesAreLoaded()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"Ä.svg"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(halves);
    file.close();
    const QByteArray path = file.fileName().toUtf8();

    SymbolItem item;
    QVERIFY(item.loadItemFromFile(path));
    QCOMPARE(item.getItemSize(), QSizeF(40, 20));
    QVERIFY(!item.loadItemFromFile(path + "x"));
    QCOMPARE(item.getItemSize(), QSizeF(40, 20)); // nothing was read, nothing has changed
    item.setItemSize(QSizeF(80, 60));
    QVERIFY(item.reloadItemFromFile(path));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 60));
    QVERIFY(item.reloadItemFromFile(path + "x"));
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(item.getItemSize(), QSizeF(80, 60));
}

void tst_SymbolItem::linksAreNotFollowed()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"red.png"_s);
    QImage picture(40, 20, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(path));
    const QByteArray svg
        = "<svg width=\"40\" height=\"20\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"><image "
          "width=\"40\" height=\"20\" xlink:href=\""
        + path.toUtf8() + "\"/></svg>";
    SymbolItem item;
    QVERIFY(item.loadItemFromData(svg));
    QCOMPARE(halvesOf(item), QList<QRgb>({ whitePixel, whitePixel }));
    item.setItemFillColor(blue);
    item.setItemPenColor(blue);
    QCOMPARE(halvesOf(item), QList<QRgb>({ whitePixel, whitePixel }));
}

void tst_SymbolItem::datasourceGivesBytesTextsAndPaths()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"symbol.svg"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(halves);
    file.close();

    SymbolItem item;
    item.setItemSize(QSizeF(80, 60));
    for (const QVariant &data :
        { QVariant(halves), QVariant(QString::fromLatin1(halves)), QVariant(file.fileName()) }) {
        item.setItemData(data);
        QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
        QCOMPARE(item.getItemSize(), QSizeF(80, 60));
        item.setItemData(QVariant(QString()));
        QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    }
    // Bytes are a drawing, even if they look like a path.
    item.setItemData(QVariant(file.fileName().toUtf8()));
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
}

void tst_SymbolItem::resizingScalesTheDrawingInPlace()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    item.setPos(5, 6);
    QVERIFY(item.setItemSize(QSizeF(80, 60)));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 3.0);
    QCOMPARE(item.transform(), QTransform::fromScale(2.0, 3.0));
    QCOMPARE(item.sceneBoundingRect(), QRectF(5, 6, 80, 60));
    QVERIFY(!item.setItemSize(QSizeF(80, 60)));
    QVERIFY(item.setItemSize(QSizeF(40, 1), true, false));
    QCOMPARE(item.getItemSize(), QSizeF(40, 30));
    QCOMPARE(item.sceneBoundingRect(), QRectF(5, 6, 40, 30));
    QVERIFY(item.setItemSize(QSizeF(500, 500), false, 1.0, 1.0, 120.0, 40.0, false, false));
    QCOMPARE(item.sceneBoundingRect(), QRectF(5, 6, 120, 40));
}

void tst_SymbolItem::frameOfAnotherDrawingIsKept()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(item.setItemSizeOnUpdate(QSizeF(80, 60)));
    QVERIFY(!item.setItemSizeOnUpdate(QSizeF(80, 60)));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 3.0);
    QVERIFY(item.reloadItemFromData(Symbols::root + "width=\"10\" height=\"10\"><g/></svg>"));
    QCOMPARE(item.getItemScaleX(), 8.0);
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 60));
}

void tst_SymbolItem::rotationTurnsAboutTheCentre()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    item.setPos(5, 6);
    item.setItemRotation(450.0);
    QCOMPARE(item.getItemRotation(), 90.0);
    QCOMPARE(item.pos(), QPointF(5, 6));
    QCOMPARE(item.sceneBoundingRect(), QRectF(15, -4, 20, 40));
    // (20, 10) + turned (-20, -10)
    QCOMPARE(item.getOldTransformCoefficientM31(), 30.0);
    QCOMPARE(item.getOldTransformCoefficientM32(), -10.0);
    QVERIFY(item.setItemSize(QSizeF(80, 40)));
    QCOMPARE(item.pos(), QPointF(5, 6));
    QCOMPARE(item.sceneBoundingRect(), QRectF(-5, -4, 40, 80));
}

void tst_SymbolItem::resetTransformForgetsThePlacing()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(item.setItemSize(QSizeF(80, 60)));
    item.setItemRotation(90.0);
    item.setPositionChangeOnX(3.0);
    item.resetTransform();
    QCOMPARE(item.getOldTransformCoefficientM31(), 0.0);
    QCOMPARE(item.getOldTransformCoefficientM32(), 0.0);
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    QCOMPARE(item.transform(), QTransform());
    item.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(0, 0));
}

void tst_SymbolItem::symbolIsPaintedInItsColours()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    QCOMPARE(halvesOf(item), QList<QRgb>({ blackPixel, whitePixel }));
    item.setItemPenColor(red);
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, whitePixel }));
    item.setItemFillColor(yellow);
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, yellowPixel }));
    item.setItemPenFillColorPrePrint(white, black);
    QCOMPARE(halvesOf(item), QList<QRgb>({ whitePixel, blackPixel }));
}

void tst_SymbolItem::mirrorsAndSelectionArePainted()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    item.setItemHorizontalMirror(true);
    QCOMPARE(halvesOf(item), QList<QRgb>({ whitePixel, blackPixel }));
    item.setItemHorizontalMirror(false);

    QGraphicsScene scene;
    scene.addItem(&item);
    const QImage selected = Images::painted(item, canvas, QStyle::State_Selected);
    QVERIFY(selected != Images::painted(item, canvas));
    auto *group = new QGraphicsRectItem;
    scene.addItem(group);
    item.setParentItem(group);
    QCOMPARE(Images::painted(item, canvas, QStyle::State_Selected), Images::painted(item, canvas));
    item.setParentItem(nullptr);
    scene.removeItem(&item);
}

void tst_SymbolItem::opaqueAreaNeedsAFill()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    QVERIFY(item.opaqueArea().isEmpty());
    item.setItemFillColor(blue);
    QCOMPARE(item.opaqueArea().boundingRect(), QRectF(0, 0, 40, 20));
}

void tst_SymbolItem::copiesAreLikeTheirOriginal()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(onBackground));
    item.setItemPenColor(red);
    item.setItemFillColor(blue);
    item.setSingleColor(true);
    item.setItemSize(QSizeF(80, 60));
    item.setItemRotation(30.0);
    item.setFirstResizeAfterAddedToGroup(true);
    const std::unique_ptr<Item> made(item.createItemCopy());
    auto &copy = dynamic_cast<SymbolItem &>(*made);
    QCOMPARE(copy.getSvgContents(), item.getSvgContents());
    QCOMPARE(copy.getSvgContentsOriginal(), item.getSvgContentsOriginal());
    QCOMPARE(copy.getItemPenColor(), red);
    QCOMPARE(copy.getItemFillColor(), blue);
    QVERIFY(copy.getSingleColor());
    QVERIFY(copy.getFillBoundingRectangle());
    QVERIFY(copy.getFirstResizeAfterAddedToGroup());
    QCOMPARE(copy.getOldTransformCoefficientM31(), item.getOldTransformCoefficientM31());
    QCOMPARE(copy.getOldTransformCoefficientM32(), item.getOldTransformCoefficientM32());
    QCOMPARE(copy.boundingRect(), item.boundingRect());
    QCOMPARE(copy.sceneBoundingRect(), item.sceneBoundingRect());
    QVERIFY(copy.renderer() != item.renderer());
    QCOMPARE(halvesOf(copy), QList<QRgb>({ redPixel, bluePixel }));
    copy.setItemFillColor(transparent);
    QCOMPARE(halvesOf(copy), QList<QRgb>({ redPixel, whitePixel }));
    QCOMPARE(halvesOf(item), QList<QRgb>({ redPixel, bluePixel }));
}

// A text may show the letters of a colour, which are wide or narrow.
void tst_SymbolItem::recolouredTextsHaveTheirExtent()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData("<svg><text y=\"20\">:#000000</text></svg>"));
    QSet<int> widths;
    for (const QColor &pen :
        { QColor(0x11, 0x11, 0x11), QColor(0xDD, 0xDD, 0xDD), QColor(0x11, 0x1D, 0xDD) }) {
        item.setItemPenColor(pen);
        const QSize extent = QSvgRenderer(item.getSvgContents()).defaultSize();
        QCOMPARE(item.boundingRect(), QRectF(QPointF(0, 0), extent));
        widths.insert(extent.width());
    }
    QVERIFY(widths.size() > 1);
}

void tst_SymbolItem::copiesShowWhatWasReplaced()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(halves));
    item.setSvgContentsOriginal(
        QByteArray(Symbols::root + "width=\"10\" height=\"12\"><g/></svg>").toBase64());
    item.replacePenFillColors(red, blue, true); // which does not show it
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    const std::unique_ptr<Item> copy(item.createItemCopy());
    QCOMPARE(dynamic_cast<SymbolItem &>(*copy).boundingRect(), QRectF(0, 0, 10, 12));
}

void tst_SymbolItem::copyOfPrivateProperties()
{
    SymbolItem item;
    item.copyPrivatePropeties(halves, onBackground, QSizeF(7, 8), 1.5, 2.5, true, red, blue, true, true);
    QCOMPARE(item.getSvgContents(), halves);
    QCOMPARE(QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray()), onBackground);
    QCOMPARE(item.getItemSize(), QSizeF(7, 8));
    QCOMPARE(item.getOldTransformCoefficientM31(), 1.5);
    QCOMPARE(item.getOldTransformCoefficientM32(), 2.5);
    QVERIFY(item.getFirstResizeAfterAddedToGroup());
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), blue);
    QVERIFY(item.getSingleColor());
    QVERIFY(item.getFillBoundingRectangle());
    QCOMPARE(halvesOf(item), QList<QRgb>({ blackPixel, whitePixel })); // the contents as they are
}

QTEST_MAIN(tst_SymbolItem)
#include "tst_symbolitem.moc"
