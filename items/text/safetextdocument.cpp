// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/safetextdocument.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"

#include <QBuffer>
#include <QImageReader>
#include <QUrl>

namespace {

/// A picture that can be shown must not be null: Qt would look for a file of its name.
QImage placeholder()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(ItemColors::transparentRgb);
    return image;
}

/// The bytes of a "data:" address; empty for any other.
QByteArray dataOf(const QUrl &url)
{
    if (url.scheme().compare(QLatin1String("data"), Qt::CaseInsensitive) != 0)
        return {};
    const QByteArray path = url.path(QUrl::FullyEncoded).toLatin1();
    const qsizetype comma = path.indexOf(',');
    if (comma < 0)
        return {};
    const QByteArray body = QByteArray::fromPercentEncoding(path.sliced(comma + 1));
    return path.first(comma).trimmed().endsWith("base64") ? QByteArray::fromBase64(body) : body;
}

bool isPixelFormat(const QByteArray &format)
{
    static const QList<QByteArray> formats { "png", "jpeg", "jpg", "gif", "bmp" };
    return formats.contains(format);
}

} // namespace

SafeTextDocument::SafeTextDocument(QObject *parent)
    : QTextDocument(parent)
{
}

QVariant SafeTextDocument::loadResource(int type, const QUrl &name)
{
    if (type != ImageResource)
        return QByteArray();
    // Qt asks again each time it lays the text out or paints it.
    const auto known = m_pictures.constFind(name);
    if (known != m_pictures.cend())
        return *known;
    const QImage image = decoded(name);
    if (image.isNull())
        return placeholder();
    m_pictures.insert(name, image);
    return image;
}

void SafeTextDocument::forgetPictures()
{
    m_pictures.clear();
    m_decodedPixels = 0;
}

QImage SafeTextDocument::decoded(const QUrl &url)
{
    QByteArray bytes = dataOf(url);
    if (bytes.isEmpty())
        return {};
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (!isPixelFormat(reader.format()))
        return {};
    const qint64 pixels = qint64(reader.size().width()) * reader.size().height();
    const bool fits = reader.size().isValid() && pixels <= Limits::MaxInlineImagePixels
        && m_decodedPixels + pixels <= Limits::MaxInlinePixels;
    if (!fits)
        return {};
    m_decodedPixels += pixels;
    return reader.read();
}
