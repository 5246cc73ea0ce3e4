// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>

/// Files of pictures, good and bad.
namespace Pictures {

/// The file that the image makes in a format.
[[nodiscard]] inline QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

/// A picture of one colour.
[[nodiscard]] inline QImage plain(
    const QSize &size, const QColor &colour, QImage::Format format = QImage::Format_ARGB32)
{
    QImage image(size, format);
    image.fill(colour);
    return image;
}

/// Writes the bytes into a file of the folder; returns its path.
[[nodiscard]] inline QByteArray written(
    const QTemporaryDir &folder, const QString &name, const QByteArray &bytes)
{
    const QString path = folder.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return path.toUtf8();
}

inline void append16(QByteArray &bytes, quint16 value)
{
    bytes.append(char(value & 0xFF)).append(char(value >> 8));
}

inline void append32(QByteArray &bytes, quint32 value)
{
    append16(bytes, quint16(value & 0xFFFF));
    append16(bytes, quint16(value >> 16));
}

/// A bitmap file of 2 x 2 pixels, all of a grey, with 24 or 32 bits each.
[[nodiscard]] inline QByteArray bitmapFile(int bits, char grey)
{
    constexpr int headers = 14 + 40;
    const int rowBytes = bits == 24 ? 8 : 2 * bits / 8; // padded to four bytes
    QByteArray bytes("BM");
    append32(bytes, headers + 2 * quint32(rowBytes));
    append32(bytes, 0);
    append32(bytes, headers); // where the pixels begin
    append32(bytes, 40); // the size of the second header
    append32(bytes, 2); // width
    append32(bytes, 2); // height
    append16(bytes, 1); // planes
    append16(bytes, quint16(bits)); // the bytes 28 and 29
    for (int i = 0; i < 6; ++i)
        append32(bytes, 0); // not compressed; size, resolution and colours as they are
    return bytes + QByteArray(2 * rowBytes, grey);
}

/// A PNG file that says that it has these sides, and holds nothing of them.
[[nodiscard]] inline QByteArray pngHeader(quint32 width, quint32 height)
{
    const auto bigEndian = [](quint32 value) {
        QByteArray bytes(4, '\0');
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    const QByteArray header
        = "IHDR" + bigEndian(width) + bigEndian(height) + QByteArray("\x01\x00\x00\x00\x00", 5);
    quint32 crc = 0xFFFFFFFF;
    for (const char byte : header) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return QByteArray("\x89PNG\r\n\x1A\n") + bigEndian(13) + header + bigEndian(~crc) + bigEndian(1000)
        + "IDAT";
}

} // namespace Pictures
