// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QList>
#include <QString>

/// Reads barcodes with a decoder that knows nothing of this library, in a process of its own.
namespace BarcodeDecoder {

struct Reading
{
    QString format; ///< "None" if there is nothing to read
    QString text;
};

/// One reading for each image of QImage::Format_Mono; fewer when the decoder fails. formats are the names of
/// ZXing; each dot is read as enlargement x enlargement pixels.
[[nodiscard]] QList<Reading> read(const QList<QImage> &images, const QString &formats);

} // namespace BarcodeDecoder
