// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/codedecoder.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <exception>

namespace {

/// Code 39 of all letters is one of the formats to us, and a hint to ZXing.
constexpr auto extendedCode39 = "Code39Extended";

std::optional<std::string> readWith(const CodeDecoder::Picture &picture, const std::string &formats)
{
    const bool isExtended = formats == extendedCode39;
    const ZXing::DecodeHints hints
        = ZXing::DecodeHints()
              .setFormats(ZXing::BarcodeFormatsFromString(isExtended ? "Code39" : formats))
              .setTryCode39ExtendedMode(isExtended)
              .setReturnCodabarStartEnd(true)
              .setBinarizer(ZXing::Binarizer::BoolCast);
    const ZXing::ImageView view(picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum);
    const ZXing::Result result = ZXing::ReadBarcode(view, hints);
    return result.isValid() ? std::optional(result.text()) : std::nullopt;
}

} // namespace

bool CodeDecoder::isAvailable()
{
    return true;
}

std::optional<std::string> CodeDecoder::read(const Picture &picture, const std::string &formats)
{
    try {
        return readWith(picture, formats);
    } catch (const std::exception &) {
        return {};
    }
}
