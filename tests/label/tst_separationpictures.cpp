// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "tests/label/printing.h"
#include "tests/support/allitems.h"
#include "tests/support/itemrecords.h"

#include <QRegularExpression>
#include <QTest>

using namespace Printing;
using namespace Qt::StringLiterals;

namespace {

/// A picture of one colour, one pixel to a scene unit.
std::unique_ptr<PixMapItem> pictureOf(const QImage &pixels)
{
    auto picture = std::make_unique<PixMapItem>();
    picture->pixmapImportActions(QPixmap::fromImage(pixels));
    return picture;
}

QImage plain(QSize size, const QColor &color)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// Black on the left, nothing on the right.
QImage halfBlack(QSize size)
{
    QImage image = plain(size, Qt::transparent);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width() / 2; ++x)
            image.setPixelColor(x, y, black);
    }
    return image;
}

template <typename T> T *place(LabelDocument &document, std::unique_ptr<T> item, QPointF position)
{
    item->setPos(position);
    return dynamic_cast<T *>(document.addItem(std::move(item)));
}

/// A difference from dots that print within a rectangle and nowhere else.
QString differenceFrom(const QImage &plate, const QRect &rect)
{
    return difference(plate, [&rect](int x, int y) { return rect.contains(x, y); });
}

constexpr int blackPlate = 0;
constexpr int redPlate = 1;

} // namespace

/// Pictures and SVG drawings on plates.
class tst_SeparationPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void coloursOfInksAreSolid();
    void dotsFollowTheResolution();
    void colourBetweenInksIsDithered_data();
    void colourBetweenInksIsDithered();
    void whatIsClearLeavesThePlate();
    void translucentPictureShowsWhatLiesBeneath();
    void itemsAboveKnockThePictureOut();
    void itemsOfOneZValueLieInTheirOrder();
    void stretchedAndTurnedDrawingsKeepTheirPlace();
    void picturesBeyondThePageAreCut();
    void hiddenPicturesDoNotPrint();
    void invalidPicturesAreWarnedAbout();
    void negativePlatesAreInverted();
    void overprintLeavesTheInksBelow();
    void documentStaysAsItIs();
};

void tst_SeparationPictures::coloursOfInksAreSolid()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 20, 10 }, black)), { 3, 5 });
    place(document, pictureOf(plain({ 20, 10 }, red)), { 30, 40 });
    place(document, pictureOf(plain({ 20, 10 }, white)), { 8, 8 }); // knocks out
    const Separation separation = separatedAtDesign(document);
    QVERIFY(separation.warnings.isEmpty());
    QCOMPARE(difference(separation.plates[blackPlate].image,
                 [](int x, int y) {
                     return QRect(3, 5, 20, 10).contains(x, y) && !QRect(8, 8, 20, 10).contains(x, y);
                 }),
        QString());
    QCOMPARE(differenceFrom(separation.plates[redPlate].image, QRect(30, 40, 20, 10)), QString());
}

void tst_SeparationPictures::dotsFollowTheResolution()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 20, 10 }, red)), { 3, 5 });
    const Separation doubled = separated(document, { 508.0 });
    QCOMPARE(differenceFrom(doubled.plates[redPlate].image, QRect(6, 10, 40, 20)), QString());
    QVERIFY(isEmpty(doubled.plates[blackPlate].image));
}

void tst_SeparationPictures::colourBetweenInksIsDithered_data()
{
    QTest::addColumn<Dither>("dither");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    // Half the light of white is the grey 188: half of the 2,500 dots.
    QTest::newRow("diffusion") << Dither::Diffusion << 1'200 << 1'300;
    QTest::newRow("ordered") << Dither::Ordered << 1'200 << 1'300;
    QTest::newRow("threshold") << Dither::Threshold << 0 << 0;
}

void tst_SeparationPictures::colourBetweenInksIsDithered()
{
    QFETCH(Dither, dither);
    QFETCH(int, least);
    QFETCH(int, most);
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 50, 50 }, QColor(188, 188, 188))), { 5, 5 });
    SeparationOptions options { 254.0 };
    options.dither = dither;
    const Separation chosen = separated(document, options);
    const int dots = dotsIn(chosen.plates[blackPlate].image, QRect(5, 5, 50, 50));
    QVERIFY2(dots >= least && dots <= most, qPrintable(QString::number(dots)));
    QCOMPARE(qint64(dots), chosen.plates[blackPlate].dots);
    QVERIFY(isEmpty(chosen.plates[redPlate].image));

    document.setDither(dither);
    QCOMPARE(separatedAtDesign(document).plates[blackPlate].image, chosen.plates[blackPlate].image);
}

// Not even in a colour that would be dithered in a picture.
void tst_SeparationPictures::whatIsClearLeavesThePlate()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    addRectangle(document, { 0, 0, 60, 60 }, { red });
    place(document, pictureOf(halfBlack({ 20, 10 })), { 10, 10 });
    const Separation separation = separatedAtDesign(document);
    const QRect covered(10, 10, 10, 10);
    QCOMPARE(differenceFrom(separation.plates[blackPlate].image, covered), QString());
    QCOMPARE(
        difference(separation.plates[redPlate].image, [&](int x, int y) { return !covered.contains(x, y); }),
        QString());
}

void tst_SeparationPictures::translucentPictureShowsWhatLiesBeneath()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    addRectangle(document, { 0, 0, 30, 60 }, { black })->setZValue(1);
    // Nearly clear: black stays black beneath it, and paper paper, but for a few dots.
    place(document, pictureOf(plain({ 40, 40 }, QColor(255, 255, 255, 1))), { 10, 10 })->setZValue(2);
    const Separation separation = separatedAtDesign(document);
    QVERIFY(dotsIn(separation.plates[blackPlate].image, QRect(10, 10, 20, 40)) > 780);
    QVERIFY(dotsIn(separation.plates[blackPlate].image, QRect(30, 10, 20, 40)) < 20);
}

void tst_SeparationPictures::itemsAboveKnockThePictureOut()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 40, 40 }, black)), { 10, 10 })->setZValue(2);
    addRectangle(document, { 20, 20, 10, 10 }, { red })->setZValue(3);
    addRectangle(document, { 12, 12, 4, 4 }, { red })->setZValue(1);
    const Separation separation = separatedAtDesign(document);
    const QRect above(20, 20, 10, 10);
    QCOMPARE(differenceFrom(separation.plates[redPlate].image, above), QString());
    QCOMPARE(separation.plates[blackPlate].dots, qint64(1'600 - 100));
}

void tst_SeparationPictures::itemsOfOneZValueLieInTheirOrder()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    addRectangle(document, { 10, 10, 20, 20 }, { black });
    place(document, pictureOf(plain({ 20, 20 }, QColor(255, 255, 255, 1))), { 10, 10 });
    addRectangle(document, { 12, 12, 4, 4 }, { red });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(differenceFrom(separation.plates[redPlate].image, QRect(12, 12, 4, 4)), QString());
    QVERIFY(separation.plates[blackPlate].dots > 400 - 16 - 10);
}

void tst_SeparationPictures::stretchedAndTurnedDrawingsKeepTheirPlace()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    auto drawing = std::make_unique<SvgItem>();
    drawing->loadItemFromData("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"4\" height=\"4\">"
                              "<rect width=\"4\" height=\"2\" fill=\"#ff0000\"/>"
                              "<rect y=\"2\" width=\"4\" height=\"2\"/></svg>");
    drawing->setItemSize({ 40, 20 });
    drawing->setItemRotation(90);
    QGraphicsItem *shown = place(document, std::move(drawing), { 0, 0 });
    shown->setPos(shown->pos() - shown->sceneBoundingRect().topLeft() + QPointF(10, 10));
    QCOMPARE(shown->sceneBoundingRect(), QRectF(10, 10, 20, 40));
    for (const double dpi : { 254.0, 508.0 }) {
        const int k = qRound(dpi / 254.0);
        const Separation separation = separated(document, { dpi });
        // Turned clockwise, the top is on the right.
        QCOMPARE(differenceFrom(separation.plates[blackPlate].image, QRect(10 * k, 10 * k, 10 * k, 40 * k)),
            QString());
        QCOMPARE(differenceFrom(separation.plates[redPlate].image, QRect(20 * k, 10 * k, 10 * k, 40 * k)),
            QString());
    }
}

void tst_SeparationPictures::picturesBeyondThePageAreCut()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 20, 20 }, black)), { -10, 50 });
    place(document, pictureOf(plain({ 20, 20 }, black)), { 100, 100 });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(differenceFrom(separation.plates[blackPlate].image, QRect(0, 50, 10, 10)), QString());
}

void tst_SeparationPictures::hiddenPicturesDoNotPrint()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(plain({ 20, 20 }, black)), { 10, 10 })->setItemIsVisible(false);
    place(document, pictureOf(plain({ 5, 5 }, QColor(255, 255, 255, 1))), { 10, 10 });
    const Separation separation = separatedAtDesign(document);
    QVERIFY(separation.plates[blackPlate].dots < 5);
}

void tst_SeparationPictures::invalidPicturesAreWarnedAbout()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    auto picture = pictureOf(plain({ 20, 20 }, black));
    picture->reloadItemFromFile("/nowhere/at.all");
    place(document, std::move(picture), { 10, 10 });
    auto drawing = std::make_unique<SvgItem>();
    drawing->loadItemFromData("no drawing");
    drawing->setItemIsVisible(false);
    place(document, std::move(drawing), { 10, 10 });
    const Separation separation = separatedAtDesign(document);
    QVERIFY(isEmpty(separation.plates[blackPlate].image));
    QCOMPARE(separation.warnings.size(), 1);
    QCOMPARE(separation.warnings[0].where, u"/items/0"_s);
    QCOMPARE(separation.warnings[0].what,
        u"Pixmap -1 prints nothing: its picture or drawing could not be loaded"_s);
}

void tst_SeparationPictures::negativePlatesAreInverted()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    place(document, pictureOf(halfBlack({ 20, 10 })), { 10, 10 });
    const Separation separation = separatedAtDesign(document, true);
    QCOMPARE(difference(separation.plates[blackPlate].image,
                 [](int x, int y) { return !QRect(10, 10, 10, 10).contains(x, y); }),
        QString());
    QCOMPARE(difference(separation.plates[redPlate].image, [](int, int) { return true; }), QString());
}

void tst_SeparationPictures::overprintLeavesTheInksBelow()
{
    for (const bool allowed : { true, false }) {
        LabelDocument document = blackAndRed({ 6, 6 });
        addRectangle(document, { 0, 0, 60, 60 }, { black });
        place(document, pictureOf(plain({ 20, 20 }, red)), { 10, 10 })->setAllowOverprint(allowed);
        const Separation separation = separatedAtDesign(document, false, true);
        QCOMPARE(differenceFrom(separation.plates[redPlate].image, QRect(10, 10, 20, 20)), QString());
        QCOMPARE(separation.plates[blackPlate].dots, qint64(allowed ? 3'600 : 3'200));
    }
}

void tst_SeparationPictures::documentStaysAsItIs()
{
    LabelDocument document = blackAndRed({ 6, 6 });
    addRectangle(document, { 0, 0, 30, 60 }, { black });
    PixMapItem *picture = place(document, pictureOf(plain({ 40, 40 }, QColor(1, 2, 3, 99))), { 10, 10 });
    auto drawing = std::make_unique<SvgItem>();
    drawing->loadItemFromData("<svg width=\"4\" height=\"4\"><rect width=\"2\" height=\"4\"/></svg>");
    SvgItem *shown = place(document, std::move(drawing), { 5, 5 });
    QList<QByteArray> before;
    for (const std::unique_ptr<Item> &item : document.items())
        before.append(ItemRecords::saved(*item));
    separatedAtDesign(document);
    QList<QByteArray> after;
    for (const std::unique_ptr<Item> &item : document.items())
        after.append(ItemRecords::saved(*item));
    QCOMPARE(after, before);
    QCOMPARE(picture->scene(), nullptr);
    QVERIFY(picture->getListOfMonoImages().isEmpty() && shown->getListOfMonoImages().isEmpty());
    QVERIFY(!shown->getImageHasTransparency());
}

QTEST_MAIN(tst_SeparationPictures)
#include "tst_separationpictures.moc"
