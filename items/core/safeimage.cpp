// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/safeimage.h"

#include "items/core/limits.h"

#include <cstdlib>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

namespace {

/// A page of memory as large as the processor has them.
constexpr size_t hugePage = size_t(2) << 20;
/// Images of this size on lie in huge pages: the first touch of every small one would take as long as
/// drawing.
constexpr size_t largeImage = 2 * hugePage;

constexpr size_t pixelBytes = 4;

size_t bytesOf(QSize size)
{
    return size_t(size.width()) * size_t(size.height()) * pixelBytes;
}

/// An image of 32-bit pixels in huge pages, where the system has them to give.
QImage createLarge(QSize size, QImage::Format format)
{
    const size_t pages = (bytesOf(size) + hugePage - 1) / hugePage;
    void *memory = std::aligned_alloc(hugePage, pages * hugePage);
    if (!memory)
        return {};
#ifdef MADV_HUGEPAGE
    madvise(memory, pages * hugePage, MADV_HUGEPAGE);
#endif
    return QImage(static_cast<uchar *>(memory), size.width(), size.height(), format, std::free, memory);
}

} // namespace

namespace SafeImage {

bool fits(QSize size)
{
    const bool sidesFit = size.width() >= 1 && size.height() >= 1 && size.width() <= Limits::MaxImageSide
        && size.height() <= Limits::MaxImageSide;
    return sidesFit && qint64(size.width()) * size.height() <= Limits::MaxImagePixels;
}

QImage create(double width, double height, QImage::Format format)
{
    return create(QSize(Limits::toInt(width), Limits::toInt(height)), format);
}

QImage create(QSize size, QImage::Format format)
{
    if (!fits(size))
        return {};
    const bool wholeWords = QImage::toPixelFormat(format).bitsPerPixel() == pixelBytes * 8;
    if (wholeWords && bytesOf(size) >= largeImage)
        return createLarge(size, format);
    return QImage(size, format);
}

} // namespace SafeImage
