// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/encodedsymbol.h"

#include "platform/zint/barcodesettings.h"
#include "platform/zint/encoderguard.h"
#include "platform/zint/matrixgeometry.h"
#include "platform/zint/vectorgeometry.h"

#include <zint.h>

namespace Zint {

namespace {

struct Deleter
{
    void operator()(zint_symbol *symbol) const { ZBarcode_Delete(symbol); }
};
using Symbol = std::unique_ptr<zint_symbol, Deleter>;

int borderOption(int borderType)
{
    switch (borderType) {
    case 1:
        return BARCODE_BIND;
    case 2:
        return BARCODE_BOX;
    default:
        return 0;
    }
}

/// A MaxiCode of mode 0 takes its mode from a second message, which a barcode has not.
int firstOption(const BarcodeSettings &settings)
{
    const bool isUnset = settings.symbol == BARCODE_MAXICODE && settings.securityLevel == 0;
    return isUnset ? -1 : settings.securityLevel;
}

void apply(const BarcodeSettings &settings, zint_symbol &symbol)
{
    symbol.symbology = settings.symbol;
    symbol.option_1 = firstOption(settings);
    symbol.option_2 = settings.width;
    symbol.input_mode = settings.inputMode;
    symbol.output_options |= borderOption(settings.borderType);
    symbol.border_width = settings.borderWidth;
    symbol.height = float(settings.height);
    symbol.whitespace_width = settings.whitespace;
}

int makeGeometry(zint_symbol &symbol, SymbolGeometry &geometry)
{
    if (!isPlainMatrix(symbol))
        return vectorGeometry(symbol, geometry);
    geometry = matrixGeometry(symbol);
    return 0;
}

/// The libzint code; fills in the rest of the result unless that is an error.
int encode(const BarcodeSettings &settings, const QByteArray &utf8, EncodedSymbol &result)
{
    const Symbol symbol(ZBarcode_Create());
    if (!symbol)
        return ZINT_ERROR_MEMORY;
    apply(settings, *symbol);
    const auto *bytes = reinterpret_cast<const unsigned char *>(utf8.constData());
    const int code = ZBarcode_Encode(symbol.get(), bytes, int(utf8.size()));
    result.message = QString::fromLatin1(symbol->errtxt);
    if (code >= ZINT_ERROR)
        return code;
    const int drawn = makeGeometry(*symbol, result.geometry);
    if (drawn >= ZINT_ERROR)
        return drawn;
    result.symbol = symbol->symbology;
    result.text = QString::fromUtf8(reinterpret_cast<const char *>(symbol->text));
    return code;
}

int checkAndEncode(const BarcodeSettings &settings, EncodedSymbol &result)
{
    // A character has one to three bytes: there is no need to convert megabytes.
    if (settings.text.size() > MaxTextBytes)
        return ZINT_ERROR_TOO_LONG;
    const std::optional<QByteArray> utf8 = encoderText(settings.text);
    if (!utf8)
        return ZINT_ERROR_INVALID_DATA;
    return isTooLong(settings, *utf8) ? ZINT_ERROR_TOO_LONG : encode(settings, *utf8, result);
}

} // namespace

bool EncodedSymbol::isValid() const
{
    return error < ZINT_ERROR;
}

std::shared_ptr<const EncodedSymbol> encode(const BarcodeSettings &settings)
{
    auto result = std::make_shared<EncodedSymbol>();
    result->error = checkAndEncode(settings, *result);
    return result;
}

} // namespace Zint
