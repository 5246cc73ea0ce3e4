// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/platebits.h"

#include <QTest>

#include <functional>
#include <random>

using namespace Qt::StringLiterals;

namespace {

/// A plate of random dots, with anything behind the last dot of each row.
QImage randomPlate(QSize size)
{
    QImage plate(size, QImage::Format_Mono);
    plate.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    std::mt19937 random(unsigned(size.width() * 1000 + size.height()));
    for (int y = 0; y < plate.height(); ++y) {
        for (qsizetype i = 0; i < plate.bytesPerLine(); ++i)
            plate.scanLine(y)[i] = uchar(random());
    }
    return plate;
}

bool prints(const QImage &plate, int x, int y)
{
    return plate.pixelIndex(x, y) == 1;
}

/// Empty if a plate has a size and the dots that are expected; otherwise what differs.
QString difference(const QImage &plate, QSize size, const std::function<bool(int, int)> &expected)
{
    if (plate.size() != size || plate.format() != QImage::Format_Mono)
        return u"%1 x %2 dots"_s.arg(plate.width()).arg(plate.height());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (prints(plate, x, y) != expected(x, y))
                return u"dot %1, %2"_s.arg(x).arg(y);
        }
    }
    return {};
}

/// Around whole bytes, in both directions.
const QList<QSize> sizes { { 1, 1 }, { 7, 3 }, { 8, 8 }, { 9, 17 }, { 16, 5 }, { 23, 9 }, { 24, 16 },
    { 31, 33 }, { 3, 40 }, { 65, 63 } };

} // namespace

/// Plates, changed dot by dot.
class tst_PlateBits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void platesAreTurned();
    void platesAreMirrored();
    void platesArePlaced();
    void platesAreAddedAndCleared();
    void resolutionsStay();
    void nothingComesOfNothing();
};

void tst_PlateBits::platesAreTurned()
{
    for (const QSize &size : sizes) {
        const QImage plate = randomPlate(size);
        const int right = size.width() - 1;
        const int bottom = size.height() - 1;
        QCOMPARE(
            difference(PlateBits::turned(plate, 0), size, [&](int x, int y) { return prints(plate, x, y); }),
            QString());
        QCOMPARE(difference(PlateBits::turned(plate, 1), size.transposed(),
                     [&](int x, int y) { return prints(plate, y, bottom - x); }),
            QString());
        QCOMPARE(difference(PlateBits::turned(plate, 2), size,
                     [&](int x, int y) { return prints(plate, right - x, bottom - y); }),
            QString());
        QCOMPARE(difference(PlateBits::turned(plate, 3), size.transposed(),
                     [&](int x, int y) { return prints(plate, right - y, x); }),
            QString());
    }
}

void tst_PlateBits::platesAreMirrored()
{
    for (const QSize &size : sizes) {
        const QImage plate = randomPlate(size);
        QCOMPARE(difference(PlateBits::mirrored(plate), size,
                     [&](int x, int y) { return prints(plate, size.width() - 1 - x, y); }),
            QString());
    }
}

/// On smaller and larger plates, partly or wholly beyond them.
void tst_PlateBits::platesArePlaced()
{
    for (const QSize &size : sizes) {
        const QImage plate = randomPlate(size);
        for (const QSize &page : { QSize(1, 1), QSize(20, 11), QSize(64, 64), QSize(77, 30) }) {
            for (const QPoint &at : { QPoint(0, 0), QPoint(3, 1), QPoint(-5, -2), QPoint(8, 0),
                     QPoint(-16, 4), QPoint(17, -9), QPoint(100, 0), QPoint(0, -100), QPoint(-100, 7) }) {
                for (const bool fill : { false, true }) {
                    const QString other
                        = difference(PlateBits::placed(plate, page, at, fill), page, [&](int x, int y) {
                              const QPoint from(x - at.x(), y - at.y());
                              return plate.rect().contains(from) ? prints(plate, from.x(), from.y()) : fill;
                          });
                    QVERIFY2(other.isEmpty(),
                        qPrintable(
                            u"%1 wide at %2, %3: %4"_s.arg(size.width()).arg(at.x()).arg(at.y()).arg(other)));
                }
            }
        }
    }
}

void tst_PlateBits::platesAreAddedAndCleared()
{
    for (const QSize &size : sizes) {
        const QImage plate = randomPlate(size);
        const QImage other = randomPlate(size).mirrored(true, true);
        QImage sum = plate;
        PlateBits::add(sum, other);
        QCOMPARE(
            difference(sum, size, [&](int x, int y) { return prints(plate, x, y) || prints(other, x, y); }),
            QString());
        QImage rest = plate;
        PlateBits::clear(rest, other);
        QCOMPARE(
            difference(rest, size, [&](int x, int y) { return prints(plate, x, y) && !prints(other, x, y); }),
            QString());
    }
}

void tst_PlateBits::resolutionsStay()
{
    QImage plate = randomPlate({ 20, 10 });
    plate.setDotsPerMeterX(11811);
    plate.setDotsPerMeterY(11811);
    for (const QImage &changed : { PlateBits::turned(plate, 1), PlateBits::turned(plate, 2),
             PlateBits::mirrored(plate), PlateBits::placed(plate, { 30, 30 }, {}, false) }) {
        QCOMPARE(changed.dotsPerMeterX(), 11811);
        QCOMPARE(changed.dotsPerMeterY(), 11811);
        QCOMPARE(changed.color(0), 0xFFFFFFFFU);
        QCOMPARE(changed.color(1), 0xFF000000U);
    }
}

void tst_PlateBits::nothingComesOfNothing()
{
    QVERIFY(PlateBits::turned({}, 1).isNull());
    QVERIFY(PlateBits::mirrored({}).isNull());
    QVERIFY(PlateBits::placed({}, { 8, 8 }, {}, true).isNull());
}

QTEST_MAIN(tst_PlateBits)
#include "tst_platebits.moc"
