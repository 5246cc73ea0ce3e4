// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <zlib.h>

/// SVG drawings for tests.
namespace Drawings {

inline QByteArray drawing(const QByteArray &content, const QByteArray &attributes = "width='40' height='40'")
{
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' " + attributes
        + ">" + content + "</svg>";
}

/// A member of a gzip file.
inline QByteArray compressed(const QByteArray &text)
{
    z_stream stream {};
    constexpr int asGzip = 16;
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, MAX_WBITS + asGzip, 8, Z_DEFAULT_STRATEGY);
    QByteArray result(qsizetype(deflateBound(&stream, uLong(text.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.constData()));
    stream.avail_in = uInt(text.size());
    stream.next_out = reinterpret_cast<Bytef *>(result.data());
    stream.avail_out = uInt(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return result;
}

/// An image element with bytes of its own.
inline QByteArray embedded(const QByteArray &bytes, const QByteArray &type = "image/png")
{
    return "<image width='20' height='20' xlink:href='data:" + type + ";base64," + bytes.toBase64() + "'/>";
}

/// A picture of one bit per pixel, which is small in spite of its many pixels.
inline QByteArray blackPng(int width, int height)
{
    QImage image(width, height, QImage::Format_Mono);
    image.fill(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// What the renderer makes of a drawing; a null image if it refuses it.
inline QImage rendered(const QByteArray &text, QSize size = QSize(400, 400))
{
    QSvgRenderer renderer;
    if (!renderer.load(text))
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace Drawings
