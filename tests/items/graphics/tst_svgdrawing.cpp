// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "items/graphics/svgdrawing.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/images.h"

#include <QFile>
#include <QGraphicsScene>
#include <QGraphicsSvgItem>
#include <QPainter>
#include <QPointer>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

/// A drawing whose left half is of one colour, the rest clear.
QByteArray halfFilled(int width, int height, const char *color = "red")
{
    return u"<svg width=\"%1\" height=\"%2\"><rect width=\"%3\" height=\"%2\" fill=\"%4\"/></svg>"_s
        .arg(width)
        .arg(height)
        .arg(width / 2)
        .arg(QLatin1String(color))
        .toLatin1();
}

QImage painted(SvgDrawing &drawing, const Item &item, QStyle::State state = QStyle::State_None)
{
    QImage image(40, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionGraphicsItem option;
    option.state = state;
    drawing.paint(item, &painter, &option, nullptr);
    return image;
}

} // namespace

/// The renderer of an item's drawing, its extent and its painting.
class tst_SvgDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void emptyDrawingIsWrittenOut();
    void emptyDrawingHasAnExtentAndShowsNothing();
    void newDrawingIsEmpty();
    void extentIsThatOfTheDrawing_data();
    void extentIsThatOfTheDrawing();
    void loadingKeepsTheRenderer();
    void replacingReleasesTheRendererLater();
    void rendererGoesWithTheItem();
    void refusedDrawingLeavesNothing_data();
    void refusedDrawingLeavesNothing();
    void drawingIsPaintedMirrored();
    void selectionIsNotPainted();
    void waitingDrawingIsLoadedWhenPainted();
    void waitingDrawingIsLoadedForWhoAsksForTheRenderer();
    void onlyPlainFilesAreRead();
};

void tst_SvgDrawing::emptyDrawingIsWrittenOut()
{
    const QByteArray svg = EmptySvg::getEmptySvg();
    QCOMPARE(svg.size(), 202);
    QCOMPARE(svg.split('\n'),
        QByteArrayList(
            { "<!DOCTYPE html>", "<svg fill=\"#000000\" stroke=\"#000000\" width=\"100\" height=\"100\">",
                ("<rect id=\"background_fix\" fill=\"#fffffe\" stroke-width=\"0\" fill-opacity=\"0\" x=\"0\" "
                 "y=\"0\" width=\"100\" height=\"100\" />"),
                "", "", "</svg>" }));
    QCOMPARE(EmptySvg::createEmptySvg(), svg);
}

void tst_SvgDrawing::emptyDrawingHasAnExtentAndShowsNothing()
{
    QGraphicsSvgItem item;
    const RectangleItem frame;
    SvgDrawing drawing(item);
    QVERIFY(drawing.load(EmptySvg::getEmptySvg()));
    QCOMPARE(drawing.bounds(), QRectF(0, 0, 100, 100));
    QCOMPARE(Images::coloursOf(painted(drawing, frame)), QSet<QRgb>({ 0xFFFFFFFF }));
}

void tst_SvgDrawing::newDrawingIsEmpty()
{
    QGraphicsSvgItem item;
    SvgDrawing drawing(item);
    QCOMPARE(drawing.bounds(), QRectF());
    QCOMPARE(item.cacheMode(), QGraphicsItem::NoCache);
    QCOMPARE(item.renderer(), drawing.renderer());
}

void tst_SvgDrawing::extentIsThatOfTheDrawing_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QRectF>("bounds");
    QTest::newRow("whole") << halfFilled(30, 40) << QRectF(0, 0, 30, 40);
    QTest::newRow("fractions are cut")
        << "<svg width=\"10.6\" height=\"20.4\"><g/></svg>"_ba << QRectF(0, 0, 10, 20);
    QTest::newRow("view box") << "<svg viewBox=\"5 5 7 9\"><g/></svg>"_ba << QRectF(0, 0, 7, 9);
    QTest::newRow("no width") << "<svg width=\"0\" height=\"20\"><g/></svg>"_ba << QRectF();
    QTest::newRow("nothing") << QByteArray() << QRectF();
}

void tst_SvgDrawing::extentIsThatOfTheDrawing()
{
    QFETCH(QByteArray, svg);
    QFETCH(QRectF, bounds);
    QGraphicsSvgItem item;
    SvgDrawing drawing(item);
    QCOMPARE(drawing.load(svg), !bounds.isEmpty());
    QCOMPARE(drawing.bounds(), bounds);
    QCOMPARE(drawing.replace(svg), !bounds.isEmpty());
    QCOMPARE(drawing.bounds(), bounds);
}

void tst_SvgDrawing::loadingKeepsTheRenderer()
{
    QGraphicsSvgItem item;
    SvgDrawing drawing(item);
    const QSvgRenderer *const renderer = drawing.renderer();
    QVERIFY(drawing.load(halfFilled(30, 40)));
    QVERIFY(drawing.load(halfFilled(20, 10)));
    QCOMPARE(drawing.renderer(), renderer);
    QCOMPARE(item.renderer(), renderer);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 20, 10));
    // Refused by the guard, and nothing at all.
    const QByteArray deep
        = "<svg>" + QByteArray("<g>").repeated(600) + QByteArray("</g>").repeated(600) + "</svg>";
    for (const QByteArray &refused : { deep, QByteArray() }) {
        QVERIFY(drawing.load(halfFilled(20, 10)));
        QVERIFY(!drawing.load(refused));
        QCOMPARE(drawing.renderer(), renderer);
        QVERIFY(!renderer->isValid());
        QCOMPARE(drawing.bounds(), QRectF());
    }
}

void tst_SvgDrawing::replacingReleasesTheRendererLater()
{
    QGraphicsSvgItem item;
    SvgDrawing drawing(item);
    const QPointer<QSvgRenderer> old = drawing.renderer();
    QVERIFY(drawing.replace(halfFilled(30, 40)));
    QVERIFY(drawing.renderer() != old);
    QCOMPARE(item.renderer(), drawing.renderer());
    QVERIFY(old);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!old);
}

void tst_SvgDrawing::rendererGoesWithTheItem()
{
    auto item = std::make_unique<QGraphicsSvgItem>();
    SvgDrawing drawing(*item);
    const QPointer<QSvgRenderer> first = drawing.renderer();
    drawing.replace(halfFilled(30, 40));
    const QPointer<QSvgRenderer> second = drawing.renderer();
    item.reset();
    QVERIFY(!first);
    QVERIFY(!second);
}

void tst_SvgDrawing::refusedDrawingLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("too deep") << "<svg width=\"9\" height=\"9\">" + QByteArray("<g>").repeated(600)
            + QByteArray("</g>").repeated(600) + "</svg>";
    QTest::newRow("cut") << halfFilled(40, 20).chopped(5);
}

void tst_SvgDrawing::refusedDrawingLeavesNothing()
{
    QGraphicsSvgItem item;
    const RectangleItem frame;
    SvgDrawing drawing(item);
    QVERIFY(drawing.load(halfFilled(40, 20)));
    QFETCH(QByteArray, svg);
    QVERIFY(!drawing.load(svg));
    QCOMPARE(drawing.bounds(), QRectF());
    QCOMPARE(Images::coloursOf(painted(drawing, frame)), QSet<QRgb>({ 0xFFFFFFFF }));
    QVERIFY(drawing.load(halfFilled(40, 20)));
    QVERIFY(!drawing.replace(svg));
    QCOMPARE(drawing.bounds(), QRectF());
}

void tst_SvgDrawing::drawingIsPaintedMirrored()
{
    QGraphicsSvgItem item;
    RectangleItem frame;
    SvgDrawing drawing(item);
    QVERIFY(drawing.load(halfFilled(40, 20)));
    QCOMPARE(painted(drawing, frame).pixel(5, 10), 0xFFFF0000);
    QCOMPARE(painted(drawing, frame).pixel(35, 10), 0xFFFFFFFF);
    frame.setItemHorizontalMirror(true);
    QCOMPARE(painted(drawing, frame).pixel(5, 10), 0xFFFFFFFF);
    QCOMPARE(painted(drawing, frame).pixel(35, 10), 0xFFFF0000);
}

void tst_SvgDrawing::selectionIsNotPainted()
{
    QGraphicsSvgItem item;
    const RectangleItem frame;
    SvgDrawing drawing(item);
    QVERIFY(drawing.load(halfFilled(40, 20)));
    QCOMPARE(painted(drawing, frame, QStyle::State_Selected), painted(drawing, frame));
}

void tst_SvgDrawing::waitingDrawingIsLoadedWhenPainted()
{
    QGraphicsSvgItem item;
    const RectangleItem frame;
    SvgDrawing drawing(item);
    QVERIFY(drawing.load(halfFilled(40, 20)));
    drawing.loadWhenSeen(halfFilled(40, 20, "lime"), QRectF(0, 0, 40, 20));
    drawing.loadWhenSeen(halfFilled(40, 20, "blue"), QRectF(0, 0, 40, 20));
    QCOMPARE(drawing.bounds(), QRectF(0, 0, 40, 20));
    QCOMPARE(painted(drawing, frame).pixel(5, 10), 0xFF0000FF);
    QVERIFY(drawing.load(halfFilled(40, 20)));
    QCOMPARE(painted(drawing, frame).pixel(5, 10), 0xFFFF0000);
}

void tst_SvgDrawing::waitingDrawingIsLoadedForWhoAsksForTheRenderer()
{
    QGraphicsSvgItem item;
    SvgDrawing drawing(item);
    drawing.loadWhenSeen(halfFilled(30, 40), QRectF(0, 0, 30, 40));
    QCOMPARE(drawing.bounds(), QRectF(0, 0, 30, 40));
    QCOMPARE(drawing.renderer()->defaultSize(), QSize(30, 40));
}

void tst_SvgDrawing::onlyPlainFilesAreRead()
{
    const QTemporaryDir folder;
    const auto path = [&folder](const QString &name) { return folder.filePath(name).toUtf8(); };
    QFile file(folder.filePath(u"Zeichnung-ä.svg"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<svg/>");
    file.close();
    QCOMPARE(SvgDrawing::read(path(u"Zeichnung-ä.svg"_s)), "<svg/>"_ba);
    QVERIFY(!SvgDrawing::read(path(u"missing.svg"_s)));
    QVERIFY(!SvgDrawing::read(folder.path().toUtf8()));
    QVERIFY(!SvgDrawing::read("/dev/zero"));
    QVERIFY(!SvgDrawing::read({}));

    QCOMPARE(mkfifo(path(u"pipe"_s).constData(), 0600), 0);
    QVERIFY(!SvgDrawing::read(path(u"pipe"_s)));

    QVERIFY(file.resize(qint64(32) << 20));
    QCOMPARE(SvgDrawing::read(path(u"Zeichnung-ä.svg"_s))->size(), qint64(32) << 20);
    QVERIFY(file.resize((qint64(32) << 20) + 1));
    QVERIFY(!SvgDrawing::read(path(u"Zeichnung-ä.svg"_s)));
}

QTEST_MAIN(tst_SvgDrawing)
#include "tst_svgdrawing.moc"
