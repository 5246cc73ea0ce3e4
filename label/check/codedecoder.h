// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// The reader of barcodes: ZXing, or nothing in builds without it.
namespace CodeDecoder {

/// A picture of one byte for each pixel: 0 is dark, 255 light.
struct Picture
{
    const std::uint8_t *pixels;
    int width;
    int height;
};

/// The text of a barcode in UTF-8.
struct Reading
{
    std::string text; ///< what does not say in which characters it is written is taken for Latin 1
    std::string guess; ///< the same as scanners guess it; often no other
};

[[nodiscard]] bool isAvailable();

/// Nothing if there is no barcode to read. The formats are ZXing's names, with bars between them. It may
/// abort the process on some pictures: see DecoderProcess.
[[nodiscard]] std::optional<Reading> read(const Picture &picture, const std::string &formats);

} // namespace CodeDecoder
