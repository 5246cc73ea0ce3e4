// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/encoderguard.h"

#include "platform/zint/barcodesettings.h"

#include <QStringEncoder>

#include <zint.h>

#include <array>
#include <string_view>

namespace Zint {

namespace {

// The sub-modes in which PDF417 writes characters. Some characters are in several.
constexpr unsigned char Capitals = 1;
constexpr unsigned char SmallLetters = 2;
constexpr unsigned char Figures = 4;
constexpr unsigned char Punctuation = 8;
constexpr unsigned char Bytes = 16;

constexpr std::array<unsigned char, 256> subModeTable()
{
    std::array<unsigned char, 256> table {};
    const auto add = [&table](std::string_view characters, unsigned char mode) {
        for (const char character : characters)
            table[static_cast<unsigned char>(character)] |= mode;
    };
    add("ABCDEFGHIJKLMNOPQRSTUVWXYZ ", Capitals);
    add("abcdefghijklmnopqrstuvwxyz ", SmallLetters);
    add("0123456789&\r\t,:#-.$/+%*=^ ", Figures);
    add(";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'", Punctuation);
    for (unsigned char &modes : table) {
        if (modes == 0)
            modes = Bytes;
    }
    return table;
}

bool isPdf417(int symbol)
{
    // The HIBC kinds take 110 characters, which libzint checks before it fills tables.
    return symbol == BARCODE_PDF417 || symbol == BARCODE_PDF417COMP || symbol == BARCODE_MICROPDF417;
}

} // namespace

qsizetype pdf417Entries(QByteArrayView utf8)
{
    static constexpr std::array<unsigned char, 256> subModes = subModeTable();
    qsizetype switches = 0;
    // The sub-modes in which all characters since the last switch are.
    unsigned char current = Capitals;
    for (const char character : utf8) {
        const unsigned char possible = subModes[static_cast<unsigned char>(character)];
        current &= possible;
        if (current == 0) {
            ++switches;
            current = possible;
        }
    }
    return utf8.size() + 2 * switches;
}

std::optional<QByteArray> encoderText(const QString &text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    QByteArray utf8 = encoder.encode(text);
    if (encoder.hasError())
        return std::nullopt;
    return utf8;
}

bool isTooLong(const BarcodeSettings &settings, QByteArrayView utf8)
{
    if (utf8.size() > MaxTextBytes)
        return true;
    if (isPdf417(settings.symbol))
        return pdf417Entries(utf8) > MaxPdf417Entries;
    if (settings.symbol == BARCODE_AZTEC)
        return utf8.size() > (settings.width > 0 ? MaxSizedAztecBytes : MaxAztecBytes);
    return false;
}

} // namespace Zint
