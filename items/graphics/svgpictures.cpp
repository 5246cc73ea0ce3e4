// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgpictures.h"

#include "items/core/limits.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

/// The bytes within a reference, as the renderer takes them from it; nothing if it would look for a file.
QByteArray embeddedBytes(QStringView reference)
{
    const QStringView mark = u"base64,";
    const qsizetype at = reference.lastIndexOf(mark);
    if (!reference.startsWith(u"data") || at < 0)
        return {};
    return QByteArray::fromBase64(reference.sliced(at + mark.size()).toLatin1());
}

/// Formats of pixels only: others, such as a drawing in a drawing, may refer to files.
bool isRaster(const QByteArray &bytes)
{
    using namespace std::string_view_literals;
    constexpr std::array marks { "\x89PNG\r\n\x1A\n"sv, "\xFF\xD8\xFF"sv, "GIF8"sv, "BM"sv };
    return std::ranges::any_of(marks, [&](std::string_view mark) { return bytes.startsWith(mark); });
}

/// Whether Qt refuses to decode an image of that size, and says so aloud.
bool exceedsMemory(QSize size)
{
    constexpr qint64 bytesOfPixel = 4;
    const qint64 mebibytes = QImageReader::allocationLimit();
    return mebibytes > 0 && size.width() * bytesOfPixel * size.height() > mebibytes * 1024 * 1024;
}

} // namespace

SvgPictures::Kind SvgPictures::add(QStringView reference)
{
    const QStringView trimmed = reference.trimmed();
    if (trimmed.isEmpty())
        return Kind::None;
    QByteArray bytes = embeddedBytes(trimmed);
    if (!isRaster(bytes))
        return Kind::Link;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isEmpty())
        return Kind::Link;
    m_pixels += qint64(size.width()) * size.height();
    if (m_pixels > Limits::MaxSvgImagePixels)
        return Kind::TooLarge;
    // What cannot be decoded the renderer looks for as a file of that long name.
    if (exceedsMemory(size))
        return Kind::Link;
    return reader.read().isNull() ? Kind::Link : Kind::Embedded;
}
