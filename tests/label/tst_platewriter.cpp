// SPDX-License-Identifier: BSD-3-Clause
#include "label/platewriter.h"

#include <QMap>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

QImage plate()
{
    QImage image(11, 3, QImage::Format_Mono);
    image.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    image.fill(0);
    for (const int x : { 0, 3, 6, 8, 10 })
        image.setPixel(x, 0, 1);
    image.setPixel(1, 2, 1);
    image.setDotsPerMeterX(11811);
    image.setDotsPerMeterY(7992);
    return image;
}

/// Sets the bits of the rows that are no dots.
void setPadding(QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        image.scanLine(y)[1] |= 0x1F;
}

quint32 number(const QByteArray &bytes, int at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

/// The chunks of a PNG by their names: length, name, content and checksum after the eight bytes of the
/// signature.
QMap<QByteArray, QByteArray> chunksOf(const QByteArray &png)
{
    QMap<QByteArray, QByteArray> chunks;
    for (int at = 8; at + 12 <= png.size(); at += int(number(png, at)) + 12)
        chunks.insert(png.mid(at + 4, 4), png.mid(at + 8, number(png, at)));
    return chunks;
}

} // namespace

class tst_PlateWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void pngOfAPlateHasOneBitAndItsSize();
    void pngOfAProofHasItsPalette();
    void pngHasTheDots();
    void pngOfNothingIsEmpty();
    void pbmHasTheDots();
    void equalImagesGiveEqualBytes();
};

void tst_PlateWriter::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PlateWriter::pngOfAPlateHasOneBitAndItsSize()
{
    const QByteArray png = PlateWriter::toPng(plate());
    QCOMPARE(png.first(8), QByteArray("\x89PNG\r\n\x1A\n"));
    const auto chunks = chunksOf(png);
    const QByteArray header = chunks[QByteArrayLiteral("IHDR")];
    QCOMPARE(header.size(), 13);
    QCOMPARE(number(header, 0), 11U);
    QCOMPARE(number(header, 4), 3U);
    QCOMPARE(int(header[8]), 1); // bits
    QCOMPARE(int(header[9]), 3); // palette
    QCOMPARE(chunks[QByteArrayLiteral("PLTE")], QByteArray("\xFF\xFF\xFF\0\0\0", 6));
    const QByteArray size = chunks[QByteArrayLiteral("pHYs")];
    QCOMPARE(size.size(), 9);
    QCOMPARE(number(size, 0), 11811U);
    QCOMPARE(number(size, 4), 7992U);
    QCOMPARE(int(size[8]), 1); // metres
    QVERIFY(!chunks.contains(QByteArrayLiteral("tIME")));
    QVERIFY(!chunks.contains(QByteArrayLiteral("tEXt")));
}

void tst_PlateWriter::pngOfAProofHasItsPalette()
{
    QImage proof(5, 2, QImage::Format_Indexed8);
    proof.setColorTable({ 0xFFFFD100, 0xFF000000, 0xFFC8102E, 0xFF000000 });
    proof.fill(2);
    proof.setDotsPerMeterX(11811);
    proof.setDotsPerMeterY(11811);
    const auto chunks = chunksOf(PlateWriter::toPng(proof));
    QCOMPARE(int(chunks[QByteArrayLiteral("IHDR")][8]), 8);
    QCOMPARE(int(chunks[QByteArrayLiteral("IHDR")][9]), 3);
    QCOMPARE(chunks[QByteArrayLiteral("PLTE")], QByteArray("\xFF\xD1\0\0\0\0\xC8\x10\x2E\0\0\0", 12));
    QCOMPARE(number(chunks[QByteArrayLiteral("pHYs")], 0), 11811U);
}

void tst_PlateWriter::pngHasTheDots()
{
    const QImage read = QImage::fromData(PlateWriter::toPng(plate()), "PNG");
    QCOMPARE(read, plate());
    QCOMPARE(read.dotsPerMeterX(), 11811);
}

void tst_PlateWriter::pngOfNothingIsEmpty()
{
    QVERIFY(PlateWriter::toPng(QImage()).isEmpty());
}

void tst_PlateWriter::pbmHasTheDots()
{
    QCOMPARE(PlateWriter::toPbm(plate()), QByteArray("P4\n11 3\n\x92\xA0\x00\x00\x40\x00", 14));
    QImage whole(16, 1, QImage::Format_Mono);
    whole.fill(1);
    QCOMPARE(PlateWriter::toPbm(whole), QByteArray("P4\n16 1\n\xFF\xFF"));
}

void tst_PlateWriter::equalImagesGiveEqualBytes()
{
    QImage padded = plate();
    setPadding(padded);
    QCOMPARE(padded, plate());
    QCOMPARE(PlateWriter::toPng(padded), PlateWriter::toPng(plate()));
    QCOMPARE(PlateWriter::toPbm(padded), PlateWriter::toPbm(plate()));
    QCOMPARE(padded.constScanLine(0)[1] & 0x1F, 0x1F);
}

QTEST_GUILESS_MAIN(tst_PlateWriter)
#include "tst_platewriter.moc"
