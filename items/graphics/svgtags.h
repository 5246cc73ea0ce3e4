// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// What must be known of a text before any XML reader may see it.
namespace SvgTags {

/// The attributes of tags: the most of any, and the sum of the squares, which is how readers' time grows.
struct Attributes
{
    qsizetype most = 0;
    qint64 work = 0;
};

/// At least the true numbers, in a known encoding.
[[nodiscard]] Attributes attributesOf(const QByteArray &text);

/// Whether the text's first element begins within so many bytes. What is before it may define attributes of
/// all elements, for which readers take quadratic time as well.
[[nodiscard]] bool beginsWithin(const QByteArray &text, qsizetype bytes);

/// Whether the text is in an encoding of which ASCII is a part, or in UTF-16 or UTF-32. In others tags could
/// be hidden from those who look at bytes.
[[nodiscard]] bool isInKnownEncoding(const QByteArray &text);

/// Whether a reader could find the word in the text.
[[nodiscard]] bool mayHold(const QByteArray &text, const char *word);

} // namespace SvgTags
