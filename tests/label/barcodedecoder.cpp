// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/barcodedecoder.h"

#include <QProcess>

namespace BarcodeDecoder {

namespace {

constexpr int longestRun = 300'000; // milliseconds

/// As a binary portable bitmap, in which 1 is black.
QByteArray bitmapOf(const QImage &image)
{
    QByteArray bytes
        = "P4 " + QByteArray::number(image.width()) + ' ' + QByteArray::number(image.height()) + '\n';
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char *>(image.constScanLine(y)), (image.width() + 7) / 8);
    return bytes;
}

Reading readingOf(const QByteArray &line)
{
    const qsizetype blank = line.indexOf(' ');
    return { QString::fromLatin1(line.first(blank)),
        QString::fromUtf8(QByteArray::fromHex(line.sliced(blank + 1))) };
}

} // namespace

QList<Reading> read(const QList<QImage> &images, const QString &formats)
{
    QProcess decoder;
    decoder.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    decoder.start(QStringLiteral(VX_BARCODE_DECODER), { formats });
    for (const QImage &image : images)
        decoder.write(bitmapOf(image));
    decoder.closeWriteChannel();
    if (!decoder.waitForFinished(longestRun) || decoder.exitCode() != 0)
        qWarning("the decoder failed: %s", qPrintable(decoder.errorString()));

    QList<Reading> readings;
    for (const QByteArray &line : decoder.readAllStandardOutput().split('\n')) {
        if (line.contains(' '))
            readings << readingOf(line);
    }
    return readings;
}

} // namespace BarcodeDecoder
