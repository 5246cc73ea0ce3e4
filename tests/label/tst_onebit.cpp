// SPDX-License-Identifier: BSD-3-Clause
#include "label/onebit.h"

#include <QRegularExpression>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb black = 0xFF000000;
constexpr QRgb white = 0xFFFFFFFF;

QImage page(QSize size, QImage::Format format = QImage::Format_ARGB32_Premultiplied)
{
    QImage image(size, format);
    image.fill(white);
    return image;
}

QImage randomPage(QSize size, QImage::Format format, unsigned int seed)
{
    std::mt19937 random(seed);
    QImage image = page(size, format);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, random() % 2 ? black : white);
    }
    return image;
}

QImage converted(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseAlphaDither);
}

QByteArray row(const QImage &mono, int y)
{
    return QByteArray(reinterpret_cast<const char *>(mono.constScanLine(y)), (mono.width() + 7) / 8);
}

} // namespace

class tst_OneBit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void firstPixelIsTheHighestBit();
    void sameBitsAsQtsOwnConversion_data();
    void sameBitsAsQtsOwnConversion();
    void greysAreBlackBelowTheMiddle();
    void otherFormatsAreConverted();
    void nullImageStaysNull();
    void blackIsCountedWithoutPadding();
};

void tst_OneBit::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_OneBit::firstPixelIsTheHighestBit()
{
    QImage image = page({ 11, 2 });
    for (const int x : { 0, 3, 6, 8, 10 })
        image.setPixel(x, 0, black);
    image.setPixel(1, 1, black);
    const QImage mono = OneBit::fromGreys(image);
    QCOMPARE(mono.format(), QImage::Format_Mono);
    QCOMPARE(mono.size(), QSize(11, 2));
    QCOMPARE(mono.colorTable(), QList<QRgb>({ white, black }));
    QCOMPARE(row(mono, 0), QByteArray("\x92\xA0"));
    QCOMPARE(row(mono, 1), QByteArray("\x40\x00", 2));
}

void tst_OneBit::sameBitsAsQtsOwnConversion_data()
{
    QTest::addColumn<QSize>("size");
    for (const int width : { 1, 7, 8, 9, 31, 32, 33, 64, 1181 })
        QTest::addRow("%d wide", width) << QSize(width, 13);
}

void tst_OneBit::sameBitsAsQtsOwnConversion()
{
    QFETCH(QSize, size);
    for (const auto format :
        { QImage::Format_ARGB32_Premultiplied, QImage::Format_ARGB32, QImage::Format_RGB32 }) {
        const QImage image = randomPage(size, format, unsigned(size.width()));
        QCOMPARE(OneBit::fromGreys(image), converted(image));
    }
}

void tst_OneBit::greysAreBlackBelowTheMiddle()
{
    // A ramp in which an error that is passed on, as dithering does, would show.
    QImage ramp = page({ 256, 3 });
    for (int x = 0; x < 256; ++x) {
        for (int y = 0; y < 3; ++y)
            ramp.setPixel(x, y, qRgb(x, x, x));
    }
    const QImage mono = OneBit::fromGreys(ramp);
    for (int y = 0; y < 3; ++y)
        QCOMPARE(row(mono, y), QByteArray(16, '\xFF') + QByteArray(16, '\0'));
}

void tst_OneBit::otherFormatsAreConverted()
{
    const QImage image = randomPage({ 45, 13 }, QImage::Format_RGB32, 4);
    const QImage expected = OneBit::fromGreys(image);
    QCOMPARE(OneBit::fromGreys(image.convertToFormat(QImage::Format_Grayscale8)), expected);
    QCOMPARE(OneBit::fromGreys(image.convertToFormat(QImage::Format_RGB888)), expected);
}

void tst_OneBit::nullImageStaysNull()
{
    QVERIFY(OneBit::fromGreys(QImage()).isNull());
    QCOMPARE(OneBit::countBlack(QImage()), 0);
}

void tst_OneBit::blackIsCountedWithoutPadding()
{
    for (const int width : { 1, 7, 8, 63, 64, 65, 77, 136 }) {
        QImage mono(width, 3, QImage::Format_Mono);
        mono.fill(0);
        for (int y = 0; y < 3; ++y)
            std::fill_n(mono.scanLine(y), mono.bytesPerLine(), uchar(0xFF));
        QCOMPARE(OneBit::countBlack(mono), 3 * width);
        mono.setPixel(0, 0, 0);
        mono.setPixel(width - 1, 2, 0);
        QCOMPARE(OneBit::countBlack(mono), 3 * width - 2);
    }
}

QTEST_APPLESS_MAIN(tst_OneBit)
#include "tst_onebit.moc"
