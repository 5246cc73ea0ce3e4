// SPDX-License-Identifier: BSD-3-Clause
#include "label/platewriter.h"

#include <QBuffer>
#include <QImageWriter>

namespace {

/// The quality that Qt turns into zlib's fastest level: plates shrink well at any.
constexpr int fastestQuality = 80;

int bytesPerRow(const QImage &plate)
{
    return (plate.width() + 7) / 8;
}

/// Rows of dots end in bits that are no dots and may hold anything; files get zeros there.
QImage withClearPadding(QImage image)
{
    const int used = image.width() % 8;
    if (image.format() != QImage::Format_Mono || used == 0)
        return image;
    const auto dots = uchar(0xFF << (8 - used));
    for (int y = 0; y < image.height(); ++y)
        image.scanLine(y)[bytesPerRow(image) - 1] &= dots;
    return image;
}

} // namespace

QByteArray PlateWriter::toPng(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    QImageWriter writer(&buffer, QByteArrayLiteral("png"));
    writer.setQuality(fastestQuality);
    return writer.write(withClearPadding(image)) ? png : QByteArray();
}

QByteArray PlateWriter::toPbm(const QImage &plate)
{
    const QImage image = withClearPadding(plate);
    const qsizetype row = bytesPerRow(image);
    QByteArray pbm = QByteArrayLiteral("P4\n") + QByteArray::number(image.width()) + ' '
        + QByteArray::number(image.height()) + '\n';
    pbm.reserve(pbm.size() + row * image.height());
    for (int y = 0; y < image.height(); ++y)
        pbm.append(reinterpret_cast<const char *>(image.constScanLine(y)), row);
    return pbm;
}
