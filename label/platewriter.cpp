// SPDX-License-Identifier: BSD-3-Clause
#include "label/platewriter.h"

#include "label/onebit.h"

#include <QBuffer>
#include <QImageWriter>

namespace {

/// The quality that Qt turns into zlib's fastest level: plates shrink well at any.
constexpr int fastestQuality = 80;

} // namespace

QByteArray PlateWriter::toPng(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    QImageWriter writer(&buffer, QByteArrayLiteral("png"));
    writer.setQuality(fastestQuality);
    return writer.write(OneBit::withClearPadding(image)) ? png : QByteArray();
}

QByteArray PlateWriter::toPbm(const QImage &plate)
{
    const QImage image = OneBit::withClearPadding(plate);
    const qsizetype row = (qsizetype(image.width()) + 7) / 8;
    QByteArray pbm = QByteArrayLiteral("P4\n") + QByteArray::number(image.width()) + ' '
        + QByteArray::number(image.height()) + '\n';
    pbm.reserve(pbm.size() + row * image.height());
    for (int y = 0; y < image.height(); ++y)
        pbm.append(reinterpret_cast<const char *>(image.constScanLine(y)), row);
    return pbm;
}
