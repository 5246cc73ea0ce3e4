// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/safetextdocument.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"

#include <QBuffer>
#include <QImageReader>
#include <QTextBlock>
#include <QTextTable>
#include <QUrl>

#include <algorithm>

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

double pixels(int pixelSize, double pointSize)
{
    constexpr double pixelsPerPoint = 96.0 / 72.0;
    return std::max(double(pixelSize), pointSize * pixelsPerPoint);
}

double pixelsOf(const QFont &font)
{
    return pixels(font.pixelSize(), font.pointSizeF());
}

double pixelsOf(const QTextFormat &format)
{
    return pixels(
        format.intProperty(QTextFormat::FontPixelSize), format.doubleProperty(QTextFormat::FontPointSize));
}

/// How many tables lie in one another; counted no further than one more than may.
int tableDepth(const QTextFrame &frame, int around = 0)
{
    int deepest = around;
    const QList<QTextFrame *> children = frame.childFrames();
    for (const QTextFrame *child : children) {
        const int here = around + (qobject_cast<const QTextTable *>(child) ? 1 : 0);
        const bool tooDeep = here > Limits::MaxHtmlTableDepth;
        deepest = std::max(deepest, tooDeep ? here : tableDepth(*child, here));
    }
    return deepest;
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

qint64 SafeTextDocument::pictureMemory() const
{
    constexpr qint64 bytesOfPixel = 4;
    return m_decodedPixels * bytesOfPixel;
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

void SafeTextDocument::pauseLayout()
{
    if (m_pauses++ == 0)
        setLayoutEnabled(false);
}

void SafeTextDocument::resumeLayout()
{
    if (--m_pauses == 0)
        setLayoutEnabled(canBeLaidOut());
}

bool SafeTextDocument::canBeLaidOut() const
{
    // Broken HTML can hide from the guard that its tables lie in one another.
    if (tableDepth(*rootFrame()) > Limits::MaxHtmlTableDepth)
        return false;
    // The document knows formats that no letter has any more; looking at all letters takes longer.
    double greatest = pixelsOf(defaultFont());
    const QList<QTextFormat> formats = allFormats();
    for (const QTextFormat &format : formats)
        greatest = std::max(greatest, pixelsOf(format));
    return greatestHeight(greatest) <= Limits::MaxTextHeight
        || greatestHeight(greatestUsedFont()) <= Limits::MaxTextHeight;
}

double SafeTextDocument::greatestUsedFont() const
{
    const double usual = pixelsOf(defaultFont());
    double greatest = 0.0;
    const auto note = [&](const QTextCharFormat &format) {
        const double size = pixelsOf(format);
        greatest = std::max(greatest, size > 0.0 ? size : usual);
    };
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        if (block.length() == 1) // without letters
            note(block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it)
            note(it.fragment().charFormat());
    }
    return greatest;
}

double SafeTextDocument::greatestHeight(double fontSize) const
{
    // Characters are seldom wider than the size of their font, and lines seldom higher than twice of it.
    const double characters = characterCount();
    const double wrapped = textWidth() < 0.0 ? 0.0 : characters * fontSize / std::max(1.0, textWidth());
    return (blockCount() + std::min(wrapped, characters)) * 2.0 * fontSize;
}
