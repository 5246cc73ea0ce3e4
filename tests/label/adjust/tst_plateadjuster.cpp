// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/plateadjuster.h"
#include "tests/label/printing.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

/// 20 × 10 dots.
const QSizeF page(2, 1);
constexpr double dpi = 254.0;

LengthPair inDots(QPoint dots)
{
    return { { double(dots.x()), Length::Unit::Dot }, { double(dots.y()), Length::Unit::Dot } };
}

/// Both plates of a label, of which one dot is not like all others.
Separation withDot(QSize size, QPoint dot, bool negative)
{
    QImage plate(size, QImage::Format_Mono);
    plate.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    plate.fill(negative ? 1 : 0);
    plate.setPixel(dot, negative ? 0 : 1);
    Separation separation;
    const QList<Ink> inks = blackAndRed(page).inks();
    for (const Ink &ink : inks)
        separation.plates.push_back({ .ink = ink, .image = plate, .dots = 1, .dpi = dpi });
    return separation;
}

} // namespace

/// What of a label an adjustment lets print.
class tst_PlateAdjuster : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsSeenIsWhatIsPrinted_data();
    void whatIsSeenIsWhatIsPrinted();
    void offsetsCutOff();
    void inksAreSeenAsTheyArePrinted();
};

void tst_PlateAdjuster::whatIsSeenIsWhatIsPrinted_data()
{
    QTest::addColumn<PrintAdjustment>("adjustment");
    for (const int rotation : { 0, 90, 180, 270 }) {
        for (const bool mirror : { false, true }) {
            for (const double scale : { 0.5, 1.0, 1.5 }) {
                for (const QPoint offset : { QPoint(0, 0), QPoint(3, 0), QPoint(-2, 4), QPoint(0, -9) }) {
                    PrintAdjustment adjustment { .rotation = rotation, .mirror = mirror, .scale = scale };
                    adjustment.offset = inDots(offset);
                    QTest::addRow("%d° %s × %g, %d %d", rotation, mirror ? "mirrored" : "as it is", scale,
                        offset.x(), offset.y())
                        << adjustment;
                }
            }
        }
    }
}

void tst_PlateAdjuster::whatIsSeenIsWhatIsPrinted()
{
    QFETCH(PrintAdjustment, adjustment);
    for (const bool negative : { false, true }) {
        Problems problems;
        const auto adjuster = PlateAdjuster::of(
            blackAndRed(page), { .dpi = dpi, .negative = negative }, adjustment, problems);
        QVERIFY(adjuster);
        const QSize size = blackAndRed(page).pageSizeInDots(adjuster->separation().dpi);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                Separation printed = withDot(size, { x, y }, negative);
                const QImage seen = adjuster->seen(printed, problems).value().plates[0].image;
                QVERIFY(adjuster->apply(printed, problems));
                const qint64 dots = printed.plates[0].dots;
                const bool isPrinted = negative ? dots < 200 : dots > 0;
                QCOMPARE(
                    difference(seen,
                        [&](int atX, int atY) { return negative != (isPrinted && atX == x && atY == y); }),
                    QString());
            }
        }
    }
}

void tst_PlateAdjuster::offsetsCutOff()
{
    PrintAdjustment adjustment { .rotation = 90, .mirror = true };
    adjustment.offset = inDots({ 3, 4 });
    Problems problems;
    const auto adjuster = PlateAdjuster::of(blackAndRed(page), { .dpi = dpi }, adjustment, problems);
    QVERIFY(adjuster);
    Separation all = withDot({ 20, 10 }, {}, false);
    for (Plate &plate : all.plates)
        plate.image.fill(1);
    // Turned clockwise, the upper side of the mirrored label is at the right and its left side above. So the
    // four dots below are those of its right side, which is the left one of the label.
    const Separation seen = adjuster->seen(all, problems).value();
    for (const Plate &plate : seen.plates)
        QCOMPARE(difference(plate.image, [](int x, int y) { return x >= 4 && y >= 3; }), QString());
}

void tst_PlateAdjuster::inksAreSeenAsTheyArePrinted()
{
    const PrintAdjustment adjustment { .replacements = { { u"black"_s, u"red"_s } } };
    Problems problems;
    const auto adjuster = PlateAdjuster::of(blackAndRed(page), { .dpi = dpi }, adjustment, problems);
    QVERIFY(adjuster);
    const Separation seen = adjuster->seen(withDot({ 20, 10 }, { 7, 5 }, false), problems).value();
    QCOMPARE(seen.plates.size(), std::size_t(1));
    QCOMPARE(seen.plates[0].ink.name, u"red"_s);
    QCOMPARE(difference(seen.plates[0].image, [](int x, int y) { return x == 7 && y == 5; }), QString());
}

QTEST_MAIN(tst_PlateAdjuster)
#include "tst_plateadjuster.moc"
