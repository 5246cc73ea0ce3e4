// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>
#include <QImage>
#include <QPixmap>

class QDataStream;

/// The only way in which pictures are read that nobody vouches for: from files, bytes and records. What is in
/// them decides their format, never a name, and drawings (SVG, compressed or not) are none of the formats:
/// reading one could open other files. Pictures beyond the limits are refused before they are decoded; a host
/// sets a limit for what decoding may take with QImageReader::setAllocationLimit(), which is 128 MiB unless
/// set.
namespace PictureLoader {

/// The content of a file, whose path is UTF-8. Nothing if it is no regular file, too large or unreadable, so
/// that a pipe is not waited for and a device not read.
[[nodiscard]] VX_EXPORT QByteArray bytesOfFile(const QByteArray &path);

/// The picture of the bytes of a file; a null image if they are none. Of several pictures the first.
[[nodiscard]] VX_EXPORT QImage decoded(const QByteArray &bytes);

/// Whether the bytes are those of a bitmap file of 32 bits per pixel, whose fourth byte some programs take
/// for alpha and others do not.
[[nodiscard]] VX_EXPORT bool isDeepBitmap(const QByteArray &bytes);

/// A picture as QDataStream writes it. A null pixmap, and a status that is not Ok, if there is none; with
/// ReadCorruptData it is beyond the limits.
[[nodiscard]] VX_EXPORT QPixmap readPixmap(QDataStream &stream);

} // namespace PictureLoader
