// SPDX-License-Identifier: BSD-3-Clause
#include "label/onebit.h"
#include "label/platerenderer.h"
#include "label/printcopy.h"
#include "label/separation.h"
#include "tests/label/printing.h"
#include "tests/support/itemrecords.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

/// A quarter of the items are transparent, the rest in the inks, white or a colour that is no ink.
QColor randomColor(std::mt19937 &random)
{
    const QColor colors[] = { black, red, blue, white, nothing, QColor(0, 255, 0), QColor(255, 255, 255, 0) };
    return colors[random() % std::size(colors)];
}

/// Rectangles of any style, turned, mirrored and on top of each other.
LabelDocument randomDocument(unsigned int seed)
{
    std::mt19937 random(seed);
    LabelDocument document = blackAndRed({ 20, 12 });
    document.setInks(document.inks() + QList<Ink> { { u"blue"_s, blue } });
    for (int i = 0; i < 8; ++i) {
        const QRectF place(
            double(random() % 160), double(random() % 90), 10 + random() % 70, 10 + random() % 50);
        RectangleItem *item = addRectangle(document, place,
            { randomColor(random), static_cast<MobraTypes::BrushStyle>(random() % 18), randomColor(random),
                static_cast<unsigned short>(random() % 8) });
        if (random() % 2)
            item->setItemRotation(double(random() % 360));
        item->setItemHorizontalMirror(random() % 2);
        item->setItemVerticalMirror(random() % 2);
        item->setItemZValue(random() % 3);
    }
    return document;
}

/// The same with upright rectangles, whose edges lie on even units: at no scaling of the tests in the middle
/// of a dot.
LabelDocument uprightDocument(unsigned int seed)
{
    LabelDocument document = randomDocument(seed);
    const auto even = [](double value) { return 2 * std::floor(value / 2); };
    for (const auto &item : document.items()) {
        auto &rectangle = dynamic_cast<RectangleItem &>(*item);
        rectangle.setItemRotation(0);
        rectangle.setPos(even(rectangle.x()), even(rectangle.y()));
        rectangle.setItemSize({ even(rectangle.getItemWidth()), even(rectangle.getItemHeight()) });
        rectangle.setItemPenWidth(rectangle.getItemPenWidth() / 4 * 4);
        rectangle.setItemPenJoinStyle(Qt::MiterJoin);
    }
    return document;
}

/// The plate of the red ink before dots are made exclusive, in bands of so many rows.
QImage redPlate(const LabelDocument &document, double scaling, int rowsPerBand)
{
    QGraphicsScene scene(QRectF(QPointF(), document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    for (const auto &item : document.items()) {
        PrintCopy copy(*item, scaling, PrintCopy::Mode::Positive, {});
        copy.reduceTo(red);
        copy.handTo(scene);
    }
    const QSize dots = document.pageSizeInDots(document.designDpi() * scaling);
    return renderPlate(scene, dots, scaling, 0xFFFFFFFF, qint64(dots.width()) * rowsPerBand);
}

constexpr int oneBand = 10000;

} // namespace

/// Gradients, patterns and many items of any look upon each other.
class tst_SeparationFills : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void itemsStayAsTheyAre();
    void dotsBelongToOneInk();
    void gradientPrintsInItsInkOnly_data();
    void gradientPrintsInItsInkOnly();
    void mirroredGradientIsMirrored();
    void gradientOutlineIsWhole();
    void densePatternKeepsItsShade_data();
    void densePatternKeepsItsShade();
    void bandsDoNotShow_data();
    void bandsDoNotShow();
    void bandsHardlyShowInSlantedAndRoundEdges();
};

void tst_SeparationFills::itemsStayAsTheyAre()
{
    const LabelDocument document = randomDocument(7);
    QList<QByteArray> before;
    for (const auto &item : document.items())
        before.append(ItemRecords::saved(*item));
    QVERIFY(!separated(document, { 300, false, false }).plates.empty());
    QVERIFY(!separated(document, { 100, true, true }).plates.empty());
    for (std::size_t i = 0; i < document.items().size(); ++i)
        QCOMPARE(ItemRecords::saved(*document.items()[i]), before[qsizetype(i)]);
}

void tst_SeparationFills::dotsBelongToOneInk()
{
    const double resolutions[] = { 127.0, 254.0, 518.16 };
    qint64 printed = 0;
    for (unsigned int seed = 0; seed < 200; ++seed) {
        const Separation separation = separated(randomDocument(seed), { resolutions[seed % 3] });
        const QSize size = separation.plates[0].image.size();
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                int inks = 0;
                for (const Plate &plate : separation.plates)
                    inks += prints(plate.image, x, y) ? 1 : 0;
                if (inks > 1)
                    QFAIL(qPrintable(
                        u"dot (%1, %2) of document %3 has %4 inks"_s.arg(x).arg(y).arg(seed).arg(inks)));
                printed += inks;
            }
        }
    }
    QVERIFY(printed > 0);
}

void tst_SeparationFills::gradientPrintsInItsInkOnly_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<double>("rotation");
    const char *names[] = { "linear", "radial", "conical" };
    for (int kind = 0; kind < 3; ++kind) {
        for (const double scaling : { 0.5, 1.0, 2.04 }) {
            for (const double rotation : { 0.0, 30.0 })
                QTest::addRow("%s x %g, %g degrees", names[kind], scaling, rotation)
                    << MobraTypes::BrushLinearGradient + kind << scaling << rotation;
        }
    }
}

void tst_SeparationFills::gradientPrintsInItsInkOnly()
{
    QFETCH(int, style);
    QFETCH(double, scaling);
    QFETCH(double, rotation);
    LabelDocument document = blackAndRed({ 24, 24 });
    addRectangle(document, { 60, 80, 120, 80 }, { red, static_cast<MobraTypes::BrushStyle>(style) })
        ->setItemRotation(rotation);
    const Separation separation = separated(document, { 254.0 * scaling });
    QVERIFY(isEmpty(separation.plates[0].image));
    // Dithered: some of the dots, but not all.
    const double area = 120 * 80 * scaling * scaling;
    QVERIFY(double(separation.plates[1].dots) > 0.1 * area);
    QVERIFY(double(separation.plates[1].dots) < 0.9 * area);

    // Back into the rectangle about its middle (120, 120); the outermost dots may be cut by its edge.
    const double angle = rotation * 3.14159265358979 / 180.0;
    const double edge = 1.0 / scaling;
    QCOMPARE(difference(separation.plates[1].image,
                 [&](int x, int y) {
                     const double dx = (x + 0.5) / scaling - 120;
                     const double dy = (y + 0.5) / scaling - 120;
                     const bool inside = std::abs(dx * std::cos(angle) + dy * std::sin(angle)) <= 60 + edge
                         && std::abs(dy * std::cos(angle) - dx * std::sin(angle)) <= 40 + edge;
                     return inside && prints(separation.plates[1].image, x, y);
                 }),
        QString());
}

void tst_SeparationFills::mirroredGradientIsMirrored()
{
    LabelDocument document = blackAndRed({ 20, 12 });
    // From paper above to ink below, and the other way round.
    addRectangle(document, { 10, 10, 60, 100 }, { red, MobraTypes::BrushLinearGradient });
    addRectangle(document, { 90, 10, 60, 100 }, { red, MobraTypes::BrushLinearGradient })
        ->setItemVerticalMirror(true);
    const QImage plate = separated(document, { 254.0 }).plates[1].image;
    QVERIFY(dotsIn(plate, { 10, 10, 60, 20 }) < 60 * 20 / 4);
    QVERIFY(dotsIn(plate, { 10, 90, 60, 20 }) > 60 * 20 * 3 / 4);
    QVERIFY(dotsIn(plate, { 90, 10, 60, 20 }) > 60 * 20 * 3 / 4);
    QVERIFY(dotsIn(plate, { 90, 90, 60, 20 }) < 60 * 20 / 4);
}

void tst_SeparationFills::gradientOutlineIsWhole()
{
    LabelDocument document = blackAndRed({ 12, 12 });
    addRectangle(document, { 10, 10, 80, 60 }, { red, MobraTypes::BrushLinearGradient, black, 6 })
        ->setItemPenJoinStyle(Qt::MiterJoin);
    const QRect outside(20, 20, 160, 120);
    const QRect inside = outside.adjusted(12, 12, -12, -12);
    const Separation separation = separated(document, { 508.0 });
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return outside.contains(x, y) && !inside.contains(x, y); }),
        QString());
    QCOMPARE(qint64(dotsIn(separation.plates[1].image, inside)), separation.plates[1].dots);
}

// Dense4 sets every second dot, Dense1 about 94 % and Dense7 about 6 % of them, at any resolution.
void tst_SeparationFills::densePatternKeepsItsShade_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("scaling");
    for (const double scaling : { 0.5, 1.0, 2.04 }) {
        QTest::addRow("94 %% x %g", scaling) << int(MobraTypes::BrushDense1) << 93.75 << scaling;
        QTest::addRow("50 %% x %g", scaling) << int(MobraTypes::BrushDense4) << 50.0 << scaling;
        QTest::addRow("6 %% x %g", scaling) << int(MobraTypes::BrushDense7) << 6.25 << scaling;
    }
}

void tst_SeparationFills::densePatternKeepsItsShade()
{
    QFETCH(int, style);
    QFETCH(double, percent);
    QFETCH(double, scaling);
    LabelDocument document = blackAndRed({ 16, 16 });
    addRectangle(document, { 20, 20, 80, 80 }, { red, static_cast<MobraTypes::BrushStyle>(style) });
    addRectangle(document, { 90, 90, 50, 50 }, { red, static_cast<MobraTypes::BrushStyle>(style) })
        ->setItemRotation(30);
    const Separation separation = separated(document, { 254.0 * scaling });
    QVERIFY(isEmpty(separation.plates[0].image));
    const QRect straight(qCeil(20 * scaling), qCeil(20 * scaling), int(64 * scaling), int(64 * scaling));
    const double share
        = 100.0 * dotsIn(separation.plates[1].image, straight) / (straight.width() * straight.height());
    QVERIFY2(std::abs(share - percent) < 1.5, qPrintable(QString::number(share)));
    const QRect turned(qCeil(105 * scaling), qCeil(105 * scaling), int(24 * scaling), int(24 * scaling));
    const double turnedShare
        = 100.0 * dotsIn(separation.plates[1].image, turned) / (turned.width() * turned.height());
    QVERIFY2(std::abs(turnedShare - percent) < 6.0, qPrintable(QString::number(turnedShare)));
}

void tst_SeparationFills::bandsDoNotShow_data()
{
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("rowsPerBand");
    QTest::newRow("single rows") << 1.0 << 1;
    QTest::newRow("eight rows at half the size") << 0.5 << 8;
    QTest::newRow("13 rows at twice the size") << 2.0 << 13;
    QTest::newRow("32 rows at 2.04") << 2.04 << 32;
}

void tst_SeparationFills::bandsDoNotShow()
{
    QFETCH(double, scaling);
    QFETCH(int, rowsPerBand);
    for (unsigned int seed = 0; seed < 40; ++seed) {
        const LabelDocument document = uprightDocument(seed);
        const QImage whole = redPlate(document, scaling, oneBand);
        const QImage bands = redPlate(document, scaling, rowsPerBand);
        QCOMPARE(difference(bands, [&](int x, int y) { return prints(whole, x, y); }), QString());
    }
}

// Qt rounds the coordinates of such edges by 1/64 of a dot, one way below the top of an image and the other
// way above.
void tst_SeparationFills::bandsHardlyShowInSlantedAndRoundEdges()
{
    qint64 printed = 0;
    qint64 different = 0;
    for (unsigned int seed = 0; seed < 40; ++seed) {
        const LabelDocument document = randomDocument(seed);
        const QImage whole = redPlate(document, 2.04, oneBand);
        const QImage bands = redPlate(document, 2.04, 50);
        printed += OneBit::countBlack(whole);
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x)
                different += prints(whole, x, y) != prints(bands, x, y) ? 1 : 0;
        }
    }
    QVERIFY(printed > 0);
    QVERIFY2(different * 1000 < printed, qPrintable(u"%1 of %2 dots"_s.arg(different).arg(printed)));
}

QTEST_MAIN(tst_SeparationFills)
#include "tst_separationfills.moc"
