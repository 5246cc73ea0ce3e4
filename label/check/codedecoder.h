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

[[nodiscard]] bool isAvailable();

/// The text of a barcode in UTF-8; nothing if there is none to read. The formats are ZXing's names, with bars
/// between them. It may abort the process on some pictures: see DecoderProcess.
[[nodiscard]] std::optional<std::string> read(const Picture &picture, const std::string &formats);

} // namespace CodeDecoder
