// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/safeimage.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_SafeImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void sidesAreRoundedHalfAwayFromZero_data();
    void sidesAreRoundedHalfAwayFromZero();
    void sidesThatAreNoneGiveANullImage_data();
    void sidesThatAreNoneGiveANullImage();
    void wholeSidesHaveTheSameLimits();
    void formatIsTheRequestedOne();
    void largeImagesAreLikeAnyOther_data();
    void largeImagesAreLikeAnyOther();
};

void tst_SafeImage::sidesAreRoundedHalfAwayFromZero_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    QTest::addColumn<QSize>("size");

    QTest::newRow("whole") << 30.0 << 20.0 << QSize(30, 20);
    QTest::newRow("down") << 30.49 << 20.25 << QSize(30, 20);
    QTest::newRow("half") << 30.5 << 21.5 << QSize(31, 22);
    QTest::newRow("up") << 30.75 << 20.51 << QSize(31, 21);
    QTest::newRow("half a pixel") << 0.5 << 0.5 << QSize(1, 1);
    QTest::newRow("widest") << 65535.0 << 1.0 << QSize(65535, 1);
    QTest::newRow("highest") << 1.0 << 65535.0 << QSize(1, 65535);
    QTest::newRow("rounds to the widest") << 65535.49 << 1.0 << QSize(65535, 1);
    QTest::newRow("largest") << 12800.0 << 10000.0 << QSize(12800, 10000);
    QTest::newRow("rounds to the largest") << 12800.4 << 10000.4 << QSize(12800, 10000);
    // 65,535 × 1,953 = 127,989,855
    QTest::newRow("widest of almost the largest") << 65535.0 << 1953.0 << QSize(65535, 1953);
}

void tst_SafeImage::sidesAreRoundedHalfAwayFromZero()
{
    QFETCH(double, width);
    QFETCH(double, height);
    const QImage image = SafeImage::create(width, height, QImage::Format_Mono);
    QVERIFY(!image.isNull());
    QTEST(image.size(), "size");
}

void tst_SafeImage::sidesThatAreNoneGiveANullImage_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");

    const struct
    {
        const char *name;
        double side;
    } sides[] = {
        { "no number", notANumber },
        { "infinite", infinity },
        { "negative infinite", -infinity },
        { "zero", 0.0 },
        { "rounded to zero", 0.49 },
        { "negative", -1.0 },
        { "most negative", std::numeric_limits<double>::lowest() },
        { "one too many", 65536.0 },
        { "rounded to one too many", 65535.5 },
        { "beyond 32 bits", 4294967297.0 },
        { "largest", std::numeric_limits<double>::max() },
    };
    for (const auto &[name, side] : sides) {
        QTest::addRow("width %s", name) << side << 1.0;
        QTest::addRow("height %s", name) << 1.0 << side;
    }
    QTest::newRow("one row above the largest area") << 12800.0 << 10001.0;
    QTest::newRow("one column above the largest area") << 12801.0 << 10000.0;
    QTest::newRow("widest and highest") << 65535.0 << 65535.0;
    // 65,535 × 1,954 = 128,055,390
    QTest::newRow("widest above the largest area") << 65535.0 << 1954.0;
    // 11,313 × 11,315 = 128,006,595, while 11,313 × 11,314 = 127,995,282
    QTest::newRow("square above the largest area") << 11313.0 << 11315.0;
    // 2,001 × 63,968 = 127,999,968, and a row more is 128,001,969.
    QTest::newRow("oblong above the largest area") << 2001.0 << 63969.0;
}

void tst_SafeImage::sidesThatAreNoneGiveANullImage()
{
    QFETCH(double, width);
    QFETCH(double, height);
    QVERIFY(SafeImage::create(width, height, QImage::Format_Mono).isNull());
}

void tst_SafeImage::wholeSidesHaveTheSameLimits()
{
    QCOMPARE(SafeImage::create(QSize(65535, 1), QImage::Format_Mono).size(), QSize(65535, 1));
    QCOMPARE(SafeImage::create(QSize(12800, 10000), QImage::Format_Mono).size(), QSize(12800, 10000));
    QVERIFY(SafeImage::create(QSize(65536, 1), QImage::Format_Mono).isNull());
    QVERIFY(SafeImage::create(QSize(12800, 10001), QImage::Format_Mono).isNull());
    QVERIFY(SafeImage::create(QSize(0, 1), QImage::Format_Mono).isNull());
    QVERIFY(SafeImage::create(QSize(), QImage::Format_Mono).isNull());
}

void tst_SafeImage::formatIsTheRequestedOne()
{
    for (const auto format :
        { QImage::Format_Mono, QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB32 })
        QCOMPARE(SafeImage::create(3.0, 2.0, format).format(), format);
}

void tst_SafeImage::largeImagesAreLikeAnyOther_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<QSize>("size");

    // 4 MiB are 1,024 × 1,024 pixels of 4 bytes, or 5,793 × 5,793 of one bit.
    QTest::newRow("colour, below") << QImage::Format_ARGB32_Premultiplied << QSize(1023, 1024);
    QTest::newRow("colour, above") << QImage::Format_ARGB32_Premultiplied << QSize(1025, 1024);
    QTest::newRow("one bit, below") << QImage::Format_Mono << QSize(5780, 5780);
    QTest::newRow("one bit, above") << QImage::Format_Mono << QSize(5801, 5800);
    QTest::newRow("grey, uneven lines") << QImage::Format_Grayscale8 << QSize(2501, 2000);
    QTest::newRow("24 bits, uneven lines") << QImage::Format_RGB888 << QSize(1501, 1000);
}

void tst_SafeImage::largeImagesAreLikeAnyOther()
{
    QFETCH(const QImage::Format, format);
    QFETCH(const QSize, size);
    QImage image = SafeImage::create(size, format);
    QImage plain(size, format);
    QCOMPARE(image.format(), format);
    QCOMPARE(image.bytesPerLine(), plain.bytesPerLine());
    QCOMPARE(image.sizeInBytes(), plain.sizeInBytes());
    QCOMPARE(image.colorTable(), plain.colorTable());
    for (QImage *each : { &image, &plain }) {
        each->fill(0xFFFFFFFF);
        each->scanLine(size.height() - 1)[0] = 0;
    }
    QVERIFY(image == plain);

    const QImage before = image;
    image.fill(0);
    QVERIFY(image != before);
    QVERIFY(before == plain);
}

QTEST_MAIN(tst_SafeImage)
#include "tst_safeimage.moc"
