// SPDX-License-Identifier: BSD-3-Clause
// Pictures: the bytes of a file, and the same behind the marker of a record.
#include "fuzz/fuzzsupport.h"
#include "items/core/safeimage.h"
#include "items/graphics/pictureloader.h"
#include "items/graphics/pixmapitem.h"

#include <QDataStream>
#include <QImageReader>

namespace {

/// Nothing that is read from the bytes is a drawing, which only a plugin could make of them.
void requireNoDrawing(const QByteArray &bytes)
{
    if (bytes.trimmed().startsWith('<') || bytes.startsWith("\x1F\x8B"))
        Fuzz::require(PictureLoader::decoded(bytes).isNull());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    constexpr int megabytes = 64; // so that a run takes no longer than it should
    QImageReader::setAllocationLimit(megabytes);

    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    requireNoDrawing(bytes);
    const QImage image = PictureLoader::decoded(bytes);
    Fuzz::require(image.isNull() || SafeImage::fits(image.size()));
    if (!image.isNull()) {
        PixMapItem item;
        item.pixmapImportActions(QPixmap::fromImage(image));
        item.setItemSize(QSizeF(64.0, 64.0));
        Fuzz::paint(item);
    }

    QDataStream stream(QByteArray("\0\0\0\1", 4) + bytes);
    const QPixmap pixmap = PictureLoader::readPixmap(stream);
    Fuzz::require(pixmap.isNull() || SafeImage::fits(pixmap.size()));
    Fuzz::require(pixmap.isNull() == (stream.status() != QDataStream::Ok));
    return 0;
}
