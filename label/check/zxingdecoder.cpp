// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/codedecoder.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <exception>
#include <string>
#include <string_view>

namespace {

/// Code 39 of all letters is one of the formats to us, and a hint to ZXing.
constexpr auto extendedCode39 = "Code39Extended";

/// What symbols hold that do not say otherwise. Left alone, ZXing guesses, and takes some words for Japanese;
/// so do scanners, for whom libzint writes some Japanese without saying so.
constexpr auto ownCharacterSet = "ISO-8859-1";

/// What ZXing puts for a character that it does not know, in UTF-8.
constexpr std::string_view unknown = "\xEF\xBF\xBD";
/// The designator of ISO 8859-7. ZXing has its first edition, without the three characters of the second, of
/// which one is the euro sign.
constexpr std::string_view greek = "\\000009";

std::string_view addedToGreek(std::uint8_t byte)
{
    switch (byte) {
    case 0xA4:
        return "\u20AC";
    case 0xA5:
        return "\u20AF";
    case 0xAA:
        return "\u037A";
    default:
        return {};
    }
}

/// The text of a symbol that is in Greek letters as a whole, with all of its characters.
std::string withAllOfGreek(std::string text, const ZXing::ByteArray &bytes)
{
    std::size_t place = 0;
    for (const std::uint8_t byte : bytes) {
        const std::string_view added = addedToGreek(byte);
        place = added.empty() ? place : text.find(unknown, place);
        if (place == std::string::npos)
            break;
        if (!added.empty()) {
            text.replace(place, unknown.size(), added);
            place += added.size();
        }
    }
    return text;
}

std::string textOf(const ZXing::Result &result)
{
    constexpr std::size_t identifier = 3; // "]Q2"
    const ZXing::ByteArray bytes = result.bytesECI();
    const bool isGreek = std::string(bytes.begin(), bytes.end()).find(greek) == identifier;
    return isGreek ? withAllOfGreek(result.text(), bytes) : result.text();
}

ZXing::DecodeHints hintsFor(const std::string &formats)
{
    const bool isExtended = formats == extendedCode39;
    return ZXing::DecodeHints()
        .setFormats(ZXing::BarcodeFormatsFromString(isExtended ? "Code39" : formats))
        .setTryCode39ExtendedMode(isExtended)
        .setReturnCodabarStartEnd(true)
        .setBinarizer(ZXing::Binarizer::BoolCast);
}

std::optional<CodeDecoder::Reading> readWith(const CodeDecoder::Picture &picture, const std::string &formats)
{
    ZXing::DecodeHints hints = hintsFor(formats);
    const ZXing::ImageView view(picture.pixels, picture.width, picture.height, ZXing::ImageFormat::Lum);
    const ZXing::Result guessed = ZXing::ReadBarcode(view, hints);
    if (!guessed.isValid())
        return {};
    const ZXing::Result result = ZXing::ReadBarcode(view, hints.setCharacterSet(ownCharacterSet));
    return CodeDecoder::Reading { textOf(result), textOf(guessed) };
}

} // namespace

bool CodeDecoder::isAvailable()
{
    return true;
}

std::optional<CodeDecoder::Reading> CodeDecoder::read(const Picture &picture, const std::string &formats)
{
    try {
        return readWith(picture, formats);
    } catch (const std::exception &) {
        return {};
    }
}
