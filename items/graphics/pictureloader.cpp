// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pictureloader.h"

#include "items/core/limits.h"
#include "items/core/safeimage.h"

#include <QBitmap>
#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace {

/// What is asked for its own mark in turn. Qt would ask every plugin, and that of drawings among them.
constexpr const char *formats[]
    = { "png", "jpeg", "gif", "bmp", "ppm", "pgm", "pbm", "ico", "webp", "tiff", "xpm", "xbm" };

constexpr QDataStream::Version nullMarkerSince = QDataStream::Qt_3_1;

quint8 byteAt(const QByteArray &bytes, qsizetype index)
{
    return static_cast<quint8>(bytes[index]);
}

/// Where the segment of a JPEG that begins at start ends, or the end of the bytes.
qsizetype segmentEnd(const QByteArray &bytes, qsizetype start)
{
    constexpr int lengthBytes = 2;
    if (start + lengthBytes > bytes.size())
        return bytes.size();
    const int length = byteAt(bytes, start) << 8 | byteAt(bytes, start + 1);
    return std::min(bytes.size(), start + std::max(length, lengthBytes));
}

/// The number of passes in which a JPEG draws its picture.
int scansOf(const QByteArray &bytes)
{
    constexpr quint8 mark = 0xFF;
    constexpr quint8 startOfScan = 0xDA;
    constexpr quint8 firstWithoutLength = 0xD0;
    constexpr quint8 lastWithoutLength = 0xD9;
    int scans = 0;
    for (qsizetype i = 0; i + 1 < bytes.size();) {
        const quint8 code = byteAt(bytes, i + 1);
        if (byteAt(bytes, i) != mark || code == mark) {
            ++i; // the coded picture, and padding before a mark
            continue;
        }
        i += 2;
        scans += code == startOfScan ? 1 : 0;
        if (code > 1 && (code < firstWithoutLength || code > lastWithoutLength))
            i = segmentEnd(bytes, i);
    }
    return scans;
}

bool isEndlessJpeg(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xD8") && scansOf(bytes) > Limits::MaxJpegScans;
}

/// Qt's reader of GIF files takes pictures behind any other six bytes as well.
bool mayBe(const char *format, const QByteArray &bytes)
{
    return qstrcmp(format, "gif") != 0 || bytes.startsWith("GIF8");
}

/// Clears the bits behind the last pixel of each row of one-bit pixels. They hold anything, and would be
/// saved with the picture.
void clearPadding(QImage &image)
{
    const int used = image.width() % 8;
    if (used == 0)
        return;
    for (int y = 0; y < image.height(); ++y)
        image.scanLine(y)[image.width() / 8] &= uchar(0xFF << (8 - used));
}

} // namespace

namespace PictureLoader {

QByteArray bytesOfFile(const QByteArray &path)
{
    if (path.contains('\0'))
        return {};
    const QString name = QString::fromUtf8(path);
    const QFileInfo info(name);
    if (!info.isFile() || info.size() > Limits::MaxPictureBytes)
        return {};
    QFile file(name);
    // Files that the system makes up as they are read have a size of 0.
    return file.open(QIODevice::ReadOnly) ? file.read(info.size()) : QByteArray();
}

QImage decoded(const QByteArray &bytes)
{
    if (isEndlessJpeg(bytes))
        return {};
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    for (const char *format : formats) {
        buffer.seek(0);
        QImageReader reader(&buffer, format);
        reader.setAutoDetectImageFormat(false);
        if (mayBe(format, bytes) && reader.canRead())
            return SafeImage::fits(reader.size()) ? reader.read() : QImage();
    }
    return {};
}

bool isDeepBitmap(const QByteArray &bytes)
{
    constexpr int depthOffset = 28;
    constexpr int deep = 32;
    if (bytes.size() < depthOffset + 2 || !bytes.startsWith("BM"))
        return false;
    // The weight of 16 instead of 256 is kept: 2 in the high byte makes a depth of 0 a deep bitmap.
    return byteAt(bytes, depthOffset + 1) * 16 + byteAt(bytes, depthOffset) == deep;
}

QPixmap readPixmap(QDataStream &stream)
{
    if (stream.version() >= nullMarkerSince) {
        qint32 present = 0;
        stream >> present;
        if (present == 0)
            return {};
    }
    if (!stream.device())
        return {};
    QImageReader reader(stream.device(), "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isValid() && !SafeImage::fits(size)) {
        stream.setStatus(QDataStream::ReadCorruptData);
        return {};
    }
    QImage image = reader.read();
    if (image.isNull()) {
        stream.setStatus(QDataStream::ReadPastEnd);
        return {};
    }
    // As Qt reads pixmaps: one of a single bit takes the painter's colours.
    if (image.format() == QImage::Format_Mono) {
        clearPadding(image);
        return QBitmap::fromImage(image);
    }
    return QPixmap::fromImage(image);
}

} // namespace PictureLoader
