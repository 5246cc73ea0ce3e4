// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/limits.h"

#include <QtGlobal>

/// What the host library accepts. A document beyond a limit is refused with a problem that names it.
namespace LabelLimits {

/// The largest document file: a label of the most items takes about 20 MB.
inline constexpr qint64 MaxFileBytes = 64 * 1024 * 1024;
/// The most values (objects, arrays and their members) in a JSON document: the parser takes up to 100 bytes
/// for each.
inline constexpr qint64 MaxJsonValues = 2'000'000;
inline constexpr int MaxItems = 20'000;
/// What the pixels of all pictures and the parts of all drawings of a document take in bytes: 256 million
/// pixels.
inline constexpr qint64 MaxContentBytes = 1'024'000'000;
/// The levels of items within items, of which the innermost holds no others.
inline constexpr int MaxNesting = Limits::MaxNesting;
/// JSON values within values: two for each of the items, and a transform or so.
inline constexpr int MaxJsonNesting = 2 * MaxNesting + 8;
/// A proof holds one bit of each pixel's byte for each ink.
inline constexpr int MaxInks = 8;
/// A file of data, which is read row by row.
inline constexpr qint64 MaxDataBytes = 1'000'000'000;
inline constexpr qint64 MaxValueBytes = 16'000'000;
inline constexpr int MaxColumns = 4096;
inline constexpr qint64 MaxRows = 1'000'000;
/// Of a row of a batch.
inline constexpr qint64 MaxCopies = 10'000;
/// The data sources of a document, and the characters of each text of one.
inline constexpr int MaxSources = 64;
inline constexpr int MaxSourceText = 100'000;
inline constexpr int MaxLayerNameLength = 256;
inline constexpr int MaxInkNameLength = 64;
/// Page sides in millimetres: ten metres of banner.
inline constexpr double MaxPageSide = 10'000.0;
inline constexpr double MinPageSide = 0.1;
/// Design and output resolutions in dots per inch.
inline constexpr double MinDpi = 10.0;
inline constexpr double MaxDpi = 9'600.0;
/// How many problems of one document are reported; one more entry counts the others.
inline constexpr int MaxProblems = 100;
/// The pixels of a page that are rendered in 32-bit colour at a time, before they shrink to one bit.
inline constexpr qint64 BandPixels = 8'000'000;
/// The dots of a sheet of labels, whose plates are in memory together: an A3 sheet at 2000 dpi, and 125 MB
/// for each ink.
inline constexpr qint64 SheetDots = 1'000'000'000;
/// The pixels of all gradients of a page together at the output resolution: an A4 page at 600 dpi, 144 MB.
inline constexpr qint64 GradientPixels = 36'000'000;

} // namespace LabelLimits
