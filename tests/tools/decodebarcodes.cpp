// SPDX-License-Identifier: BSD-3-Clause
// Reads the barcodes of images: decodebarcodes FORMATS. Standard input is any number of binary portable
// bitmaps (P4), one behind the other. For each comes a line: the format and, in hexadecimal UTF-8, the text,
// or "None" for an image that cannot be read.
//
// A program of its own because the decoder may abort on an image, which must not end the test.
#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int largestSide = 20'000;

struct GreyImage
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

int sideFrom(std::istream &input)
{
    int side = 0;
    input >> side;
    return side > 0 && side <= largestSide ? side : 0;
}

/// The next bitmap; nothing is read after the last one.
bool readBitmap(std::istream &input, GreyImage &image)
{
    std::string magic;
    if (!(input >> magic))
        return false;
    image.width = sideFrom(input);
    image.height = sideFrom(input);
    input.get(); // the one blank behind the header
    if (magic != "P4" || image.width == 0 || image.height == 0)
        throw std::runtime_error("the input is not a sequence of P4 bitmaps");
    image.pixels.clear();
    std::vector<char> bits((std::size_t(image.width) + 7) / 8);
    for (int y = 0; y < image.height; ++y) {
        if (!input.read(bits.data(), std::streamsize(bits.size())))
            throw std::runtime_error("a bitmap is cut off");
        for (int x = 0; x < image.width; ++x) {
            const bool black = ((bits[std::size_t(x) / 8] >> (7 - x % 8)) & 1) != 0;
            image.pixels.push_back(black ? 0 : 255);
        }
    }
    return true;
}

void print(const ZXing::Result &result)
{
    std::fputs(result.isValid() ? ZXing::ToString(result.format()) : "None", stdout);
    std::fputc(' ', stdout);
    for (const char byte : result.isValid() ? result.text() : std::string())
        std::printf("%02x", unsigned(static_cast<unsigned char>(byte)));
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void decodeAll(const std::string &formats)
{
    const bool extended = formats == "Code39Extended";
    const ZXing::DecodeHints hints
        = ZXing::DecodeHints()
              .setFormats(ZXing::BarcodeFormatsFromString(extended ? "Code39" : formats))
              .setTryCode39ExtendedMode(extended)
              .setReturnCodabarStartEnd(true)
              .setBinarizer(ZXing::Binarizer::BoolCast);
    GreyImage image;
    while (readBitmap(std::cin, image)) {
        const ZXing::ImageView view(image.pixels.data(), image.width, image.height, ZXing::ImageFormat::Lum);
        print(ZXing::ReadBarcode(view, hints));
    }
}

} // namespace

int main(int count, char *arguments[])
{
    if (count != 2) {
        std::fputs("usage: decodebarcodes FORMATS <images\n", stderr);
        return 2;
    }
    try {
        decodeAll(arguments[1]);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "decodebarcodes: %s\n", error.what());
        return 1;
    }
    return 0;
}
