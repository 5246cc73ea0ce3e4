// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <zint.h>

#include <cstring>
#include <memory>

/// Symbols of libzint itself, to hold ours against.
namespace RawSymbols {

struct Deleter
{
    void operator()(zint_symbol *symbol) const { ZBarcode_Delete(symbol); }
};
using Symbol = std::unique_ptr<zint_symbol, Deleter>;

/// A symbol that is set up but not encoded.
[[nodiscard]] inline Symbol make(int symbology, const char *primary = "")
{
    Symbol symbol(ZBarcode_Create());
    symbol->symbology = symbology;
    symbol->input_mode = UNICODE_MODE;
    symbol->show_hrt = 0;
    std::strncpy(symbol->primary, primary, sizeof symbol->primary - 1);
    return symbol;
}

[[nodiscard]] inline int encode(zint_symbol &symbol, const char *text)
{
    return ZBarcode_Encode(&symbol, reinterpret_cast<const unsigned char *>(text), int(std::strlen(text)));
}

} // namespace RawSymbols
