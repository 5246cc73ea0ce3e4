// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "tests/support/colours.h"
#include "tests/support/drawings.h"
#include "tests/support/images.h"
#include "tests/support/recordingsink.h"
#include "tests/support/svgtexts.h"

#include <QFile>
#include <QGraphicsScene>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using SvgTexts::drawing;

namespace {

const QSize canvas(40, 20);

QByteArray contentsOf(const SvgItem &item)
{
    return QByteArray::fromBase64(item.getSvgContents().toByteArray());
}

/// Writes a file and returns its path as items take it.
QByteArray written(const QTemporaryDir &folder, const QString &name, const QByteArray &bytes)
{
    const QString path = folder.filePath(name);
    QFile file(path);
    const bool complete = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    return complete ? path.toUtf8() : QByteArray();
}

/// As gzip -n writes '<svg width="4" height="3"><g/></svg>'.
const QByteArray compressed
    = QByteArray::fromHex("1f8b0800000000000003b3292e4b5728cf4c29c9b055325152c848cd4ccf"
                          "28b1553256b2b349d7b7b3d1074adb0100f6b2332e24000000");

/// An item that already shows a drawing, at twice its size.
void fill(SvgItem &item)
{
    item.loadItemFromData(SvgTexts::redAndBlue);
    item.setItemSize({ 80, 40 });
}

bool showsNothing(SvgItem &item)
{
    return Images::coloursOf(Images::painted(item, canvas)) == QSet<QRgb> { Colours::whitePixel };
}

} // namespace

/// The SVG item: loading, place and painting.
class tst_SvgItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItemIsEmpty();
    void drawingIsShownAtItsSize();
    void prefixesAreRemoved_data();
    void prefixesAreRemoved();
    void refusedDrawingsLeaveTheEmptyOne_data();
    void refusedDrawingsLeaveTheEmptyOne();
    void filesAreLoaded();
    void prefixesOfDataAreRemoved();
    void drawingsWithLinksAreRefused_data();
    void drawingsWithLinksAreRefused();
    void anyNumberConnectsADatasource_data();
    void anyNumberConnectsADatasource();
    void compressedFilesAreKeptCompressed_data();
    void compressedFilesAreKeptCompressed();
    void unreadableFilesAreRefused_data();
    void unreadableFilesAreRefused();
    void reloadingKeepsTheFrame();
    void reloadingWhatIsRefusedKeepsTheFrame();
    void frameOfAnItemScaledBeforeIsKept();
    void datasourceGivesBytesTextsAndPaths();
    void settingContentsShowsNothingYet();
    void transparencyIsFound_data();
    void transparencyIsFound();
    void resizingScalesInPlace();
    void rotationTurnsAboutTheCentre();
    void selectedItemHasOneFrame();
    void mirrorsAreDrawn();
};

void tst_SvgItem::newItemIsEmpty()
{
    SvgItem item;
    QCOMPARE(item.type(), 0x1000B);
    QCOMPARE(item.getItemShape(), MobraTypes::SvgShape);
    QCOMPARE(item.itemFlags(), 3U);
    QCOMPARE(item.itemQFlags(), 0x10FU);
    QCOMPARE(item.cacheMode(), QGraphicsItem::NoCache);
    QCOMPARE(contentsOf(item), QByteArray());
    QCOMPARE(item.boundingRect(), QRectF());
    QVERIFY(!item.svgIsInvalid() && !item.getImageHasTransparency());
    QVERIFY(!item.getItemData().isValid());
    item.setItemId(7);
    QCOMPARE(item.toDescriptionString(), u"Svg 7\n"_s);
    QVERIFY(showsNothing(item));
}

void tst_SvgItem::drawingIsShownAtItsSize()
{
    SvgItem item;
    item.setImageIsInvalid(true);
    item.setImageHasTransparency(true);
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(item.getItemSize(), QSizeF(40, 20));
    QVERIFY(!item.svgIsInvalid() && !item.getImageHasTransparency());
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    QPainterPath whole;
    whole.addRect(0, 0, 40, 20);
    QCOMPARE(item.opaqueArea(), whole);
    const QImage image = Images::painted(item, canvas);
    QCOMPARE(image.pixel(10, 10), Colours::redPixel);
    QCOMPARE(image.pixel(30, 10), Colours::bluePixel);
}

void tst_SvgItem::prefixesAreRemoved_data()
{
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QByteArray>("kept");
    QTest::newRow("none") << "<svg/>"_ba
                          << "<svg/>"_ba;
    QTest::newRow("one") << "#12aB9f<svg/>"_ba
                         << "<svg/>"_ba;
    QTest::newRow("two") << "#12aB9f#000000<svg/>"_ba
                         << "<svg/>"_ba;
    QTest::newRow("three") << "#12aB9f#000000#ffffff<svg/>"_ba
                           << "#ffffff<svg/>"_ba;
    QTest::newRow("any six bytes") << "# <svg><svg/>"_ba
                                   << "<svg/>"_ba;
    QTest::newRow("seven bytes") << "#12aB9f"_ba
                                 << "#12aB9f"_ba;
    QTest::newRow("eight bytes") << "#12aB9f<"_ba
                                 << "<"_ba;
    QTest::newRow("eight, then one") << "#12aB9f#"_ba
                                     << "#"_ba;
    QTest::newRow("nothing") << ""_ba
                             << ""_ba;
}

void tst_SvgItem::prefixesAreRemoved()
{
    QFETCH(QByteArray, given);
    SvgItem item;
    item.setSvgContents(given.toBase64());
    item.removeColorPrefix();
    QTEST(contentsOf(item), "kept");
}

void tst_SvgItem::refusedDrawingsLeaveTheEmptyOne_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::newRow("nothing") << ""_ba;
    QTest::newRow("no drawing") << "A text."_ba;
    QTest::newRow("without extent") << drawing(0, 0, "<g/>");
    QTest::newRow("three prefixes") << "#000000#000000#000000" + SvgTexts::redAndBlue;
    QTest::newRow("too deep") << drawing(
        10, 10, QByteArray("<g>").repeated(2000) + QByteArray("</g>").repeated(2000));
    QTest::newRow("broken compression") << compressed.first(30);
}

void tst_SvgItem::refusedDrawingsLeaveTheEmptyOne()
{
    QFETCH(QByteArray, svg);
    SvgItem item;
    fill(item);
    QVERIFY(!item.loadItemFromData(svg));
    QVERIFY(item.svgIsInvalid() && item.getImageHasTransparency());
    QCOMPARE(contentsOf(item), EmptySvg::getEmptySvg());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QVERIFY(item.opaqueArea().isEmpty());
    QVERIFY(showsNothing(item));
    QVERIFY(item.createItemImage(&item, 0xFFFFFFFF, QRectF(-999, -999, 1999, 1999), 1.0).isNull());
}

void tst_SvgItem::filesAreLoaded()
{
    const QTemporaryDir folder;
    SvgItem item;
    QVERIFY(item.loadItemFromFile(written(folder, u"größe.svg"_s, "#000000" + SvgTexts::redAndBlue)));
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    QCOMPARE(item.getItemSize(), QSizeF(40, 20));
    QVERIFY(!item.svgIsInvalid());
    // Nothing has looked yet.
    QVERIFY(item.getImageHasTransparency());
    item.checkForTransparency();
    QVERIFY(!item.getImageHasTransparency());
}

void tst_SvgItem::prefixesOfDataAreRemoved()
{
    for (const QByteArray prefixes : { "#000000", "#12aB9f#000000" }) {
        SvgItem item;
        QVERIFY(item.loadItemFromData(prefixes + SvgTexts::redAndBlue));
        QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    }
}

void tst_SvgItem::drawingsWithLinksAreRefused_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QString>("message");
    const QString link = u"Unable to load svg, it contains an image link"_s;
    QTest::newRow("link") << SvgTexts::linked << link;
    QTest::newRow("compressed link") << Drawings::compressed(SvgTexts::linked) << link;
    const QByteArray giant = Drawings::embedded(Drawings::blackPng(2, 2))
                                 .replace("width='20'", "width='600'")
                                 .replace("height='20'", "height='500'");
    QTest::newRow("giant picture") << drawing(
        40, 20, giant) << u"Unable to load svg, it contains a giant embedded image: 600.00 500.00"_s;
}

// From a file as well as from data, whichever way the item was filled before.
void tst_SvgItem::drawingsWithLinksAreRefused()
{
    QFETCH(QByteArray, svg);
    QFETCH(QString, message);
    const QTemporaryDir folder;
    const QByteArray path = written(folder, svg.startsWith('<') ? u"linked.svg"_s : u"linked.svgz"_s, svg);
    for (const bool fromFile : { true, false }) {
        SvgItem item;
        fill(item);
        RecordingSink sink;
        installLogSink(&sink);
        const bool loaded = fromFile ? item.loadItemFromFile(path) : item.loadItemFromData(svg);
        installLogSink(nullptr);
        QVERIFY(!loaded);
        QVERIFY(item.svgIsInvalid() && item.getImageHasTransparency());
        QCOMPARE(contentsOf(item), EmptySvg::getEmptySvg());
        QCOMPARE(sink.records.size(), 1);
        QCOMPARE(sink.records[0].text, message);
    }
}

void tst_SvgItem::anyNumberConnectsADatasource_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("connected");
    QTest::newRow("none") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("negative") << -2 << true;
}

void tst_SvgItem::anyNumberConnectsADatasource()
{
    QFETCH(int, id);
    QFETCH(bool, connected);
    SvgItem svg;
    svg.setItemDatasourceID(id);
    QCOMPARE(svg.isDatasourceConnected(), connected);
    SymbolItem symbol;
    symbol.setItemDatasourceID(id);
    QCOMPARE(symbol.isDatasourceConnected(), connected);
}

void tst_SvgItem::compressedFilesAreKeptCompressed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("lower case") << u"a.svgz"_s;
    QTest::newRow("capitals") << u"A.SVGZ"_s;
    QTest::newRow("other name") << u"a.svg"_s;
}

void tst_SvgItem::compressedFilesAreKeptCompressed()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    SvgItem item;
    QVERIFY(item.loadItemFromFile(written(folder, name, compressed)));
    QCOMPARE(contentsOf(item), compressed);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 4, 3));
}

void tst_SvgItem::unreadableFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    static const QTemporaryDir folder;
    const QByteArray pipe = folder.filePath(u"pipe.svg"_s).toUtf8();
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QTest::newRow("missing") << folder.filePath(u"missing.svg"_s).toUtf8();
    QTest::newRow("no path") << QByteArray();
    QTest::newRow("folder") << folder.path().toUtf8();
    QTest::newRow("pipe") << pipe;
    QTest::newRow("device") << "/dev/zero"_ba;
    QTest::newRow("empty") << written(folder, u"empty.svg"_s, {});
    QTest::newRow("empty, compressed") << written(folder, u"empty.svgz"_s, {});
    QTest::newRow("prefix in a compressed file")
        << written(folder, u"prefix.svgz"_s, "#000000" + SvgTexts::redAndBlue);
    QTest::newRow("the same in capitals")
        << written(folder, u"PREFIX.SVGZ"_s, "#000000" + SvgTexts::redAndBlue);
}

void tst_SvgItem::unreadableFilesAreRefused()
{
    QFETCH(QByteArray, path);
    SvgItem item;
    fill(item);
    QVERIFY(!item.loadItemFromFile(path));
    QVERIFY(item.svgIsInvalid());
    QCOMPARE(contentsOf(item), EmptySvg::getEmptySvg());
}

void tst_SvgItem::reloadingKeepsTheFrame()
{
    const QTemporaryDir folder;
    SvgItem item;
    fill(item);
    QVERIFY(item.reloadItemFromFile(written(folder, u"a.svg"_s, drawing(10, 10, "<g/>"))));
    QCOMPARE(item.getItemSize(), QSizeF(80, 40));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 10, 10));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 40));
    QVERIFY(item.reloadItemFromData(SvgTexts::redAndBlue));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 40));
}

void tst_SvgItem::reloadingWhatIsRefusedKeepsTheFrame()
{
    SvgItem item;
    fill(item);
    QVERIFY(item.reloadItemFromFile("/missing.svg"));
    QVERIFY(item.svgIsInvalid());
    QCOMPARE(item.getItemSize(), QSizeF(80, 40));
    QCOMPARE(item.sceneBoundingRect(), QRectF(0, 0, 80, 40));
    QVERIFY(item.reloadItemFromData(SvgTexts::halfRed));
    QVERIFY(!item.svgIsInvalid());
    QVERIFY(!item.reloadItemFromData("no drawing"));
    QVERIFY(item.svgIsInvalid());
    QCOMPARE(item.getItemSize(), QSizeF(80, 40));
}

// The scales of the old drawing do not count for the new one.
void tst_SvgItem::frameOfAnItemScaledBeforeIsKept()
{
    SvgItem item;
    fill(item);
    QCOMPARE(item.getItemScaleX(), 2.0);
    QVERIFY(item.reloadItemFromData(drawing(8, 80, "<g/>")));
    QCOMPARE(item.getItemScaleX(), 10.0);
    QCOMPARE(item.getItemScaleY(), 0.5);
}

void tst_SvgItem::datasourceGivesBytesTextsAndPaths()
{
    const QTemporaryDir folder;
    const QByteArray path = written(folder, u"a.svg"_s, SvgTexts::halfRed);
    SvgItem item;
    item.setItemData(SvgTexts::redAndBlue);
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    item.setItemData(QString::fromUtf8(path));
    QCOMPARE(contentsOf(item), SvgTexts::halfRed);
    item.setItemData(QString::fromLatin1(SvgTexts::redAndBlue));
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    item.setItemData(path); // bytes are no path
    QVERIFY(item.svgIsInvalid());
    item.setItemData(QString::fromLatin1(SvgTexts::redAndBlue));
    QVERIFY(!item.svgIsInvalid());
    item.setItemData(QVariant());
    QVERIFY(item.svgIsInvalid());
}

void tst_SvgItem::settingContentsShowsNothingYet()
{
    SvgItem item;
    item.setSvgContents(SvgTexts::redAndBlue.toBase64());
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    QCOMPARE(item.boundingRect(), QRectF());
}

void tst_SvgItem::transparencyIsFound_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<bool>("transparent");
    QTest::newRow("covered") << SvgTexts::redAndBlue << QSizeF(40, 20) << false;
    QTest::newRow("covered, larger") << SvgTexts::redAndBlue << QSizeF(400, 100) << false;
    QTest::newRow("open") << SvgTexts::halfRed << QSizeF(40, 20) << true;
    QTest::newRow("half transparent")
        << drawing(4, 4, "<rect width=\"4\" height=\"4\" fill-opacity=\"0.5\"/>") << QSizeF(4, 4) << true;
    QTest::newRow("too large to look at") << SvgTexts::redAndBlue << QSizeF(60000, 60000) << true;
}

void tst_SvgItem::transparencyIsFound()
{
    QFETCH(QByteArray, svg);
    QFETCH(QSizeF, size);
    SvgItem item;
    QVERIFY(item.loadItemFromData(svg));
    item.setItemSize(size);
    item.checkForTransparency();
    QTEST(item.getImageHasTransparency(), "transparent");
    QCOMPARE(item.opaqueArea().isEmpty(), item.getImageHasTransparency());
}

void tst_SvgItem::resizingScalesInPlace()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setPos(5, 7);
    QVERIFY(item.setItemSize({ 80, 10 }));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(item.sceneBoundingRect(), QRectF(5, 7, 80, 10));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 0.5);
    QVERIFY(!item.setItemSize({ 80, 10 }));
}

void tst_SvgItem::rotationTurnsAboutTheCentre()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setItemRotation(450);
    QCOMPARE(item.getItemRotation(), 90.0);
    QCOMPARE(item.mapToScene(QPointF(20, 10)), QPointF(20, 10));
    QCOMPARE(item.sceneBoundingRect(), QRectF(10, -10, 20, 40));
}

void tst_SvgItem::selectedItemHasOneFrame()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(drawing(40, 20, "<g/>")));
    QImage frame(canvas, QImage::Format_ARGB32_Premultiplied);
    frame.fill(Qt::white);
    QStyleOptionGraphicsItem selected;
    selected.state = QStyle::State_Selected;
    QPainter painter(&frame);
    Item::drawSelectionRectangle(&painter, &selected, QRectF(0, 0, 40, 20));
    painter.end();
    QCOMPARE(Images::painted(item, canvas, QStyle::State_Selected), frame);
}

void tst_SvgItem::mirrorsAreDrawn()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setItemHorizontalMirror(true);
    const QImage image = Images::painted(item, canvas);
    QCOMPARE(image.pixel(10, 10), Colours::bluePixel);
    QCOMPARE(image.pixel(30, 10), Colours::redPixel);
}

QTEST_MAIN(tst_SvgItem)
#include "tst_svgitem.moc"
