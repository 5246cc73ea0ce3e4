// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <algorithm>
#include <iterator>

/// What a decoder makes of the samples of all symbologies that it reads.
namespace BarcodeReadings {

struct Expected
{
    int symbol;
    const char *formats; ///< that the decoder looks for; the first is what it finds
    const char *text; ///< what it reads, in UTF-8: with all check digits
    /// Pixels for each dot, if modules are of one dot: the decoder needs more for some symbologies.
    int enlargement = 1;
    /// The decoder reads the symbology, or large symbols of it, upright only: the plate is turned back
    /// before.
    bool upright = false;
    double growth = 1.0; ///< of the sizes of others
    const char *sample = nullptr; ///< what is encoded; null: the symbology's sample
    const char *name = nullptr; ///< null: the symbology's
};

inline constexpr Expected all[] = {
    { 3, "ITF", "12345678" },
    { 8, "Code39", "ABC 12" },
    { 9, "Code39Extended", "aB*c1" },
    { 13, "EAN-13", "5901234123457" },
    { 13, "EAN-8", "96385074", 1, false, 1.0, "9638507", "EAN-8" },
    { 14, "EAN-13", "5901234123457" },
    { 16, "Code128", "010950600013435210ABC" },
    { 18, "Codabar", "A123456B" },
    { 20, "Code128", "Code 128" },
    { 21, "ITF", "21348075016401" },
    { 22, "ITF", "803780141007" },
    { 25, "Code93", "CODE93" },
    { 29, "DataBar", "09506000134352" },
    { 31, "DataBarExpanded", "(01)09506000134352(10)A1" },
    { 34, "UPC-A", "012345678905" },
    { 35, "UPC-A", "012345678905" },
    { 37, "UPC-E", "12345670" },
    { 38, "UPC-E", "12345670" },
    { 50, "Code39", "LOG 12" },
    { 52, "Code39", "-12345678" },
    { 55, "PDF417", "PDF417 text 12345" },
    { 56, "PDF417", "Truncated 12345" },
    { 57, "MaxiCode", "MaxiCode 12345", 1, true, 2.0 },
    { 58, "QRCode", "QR Code 12345" },
    { 58, "QRCode", "Gr\u00f6\u00dfe 5 \u00b5m, \u6771\u4eac", 1, false, 1.0,
        "Gr\u00f6\u00dfe 5 \u00b5m, \u6771\u4eac", "QR Code beyond Latin 1" },
    { 60, "Code128", "Code128B" },
    { 69, "EAN-13", "9781234567897" },
    { 71, "DataMatrix", "Data Matrix 1", 2 },
    { 72, "Code128", "0109506000134352" },
    { 73, "Code39", "1M8GDM9AXKP042788" },
    { 75, "Code128", "00376123450000010039" },
    { 79, "DataBar", "09506000134352" },
    { 80, "DataBar", "09506000134352" },
    { 81, "DataBarExpanded", "(01)09506000134352(10)A1234567890" },
    { 89, "ITF", "09506000134352" },
    { 92, "Aztec", "Aztec Code", 2 },
    { 96, "Code128", "%000393206219912345678101040" },
    { 97, "MicroQRCode", "01234567" },
    { 98, "Code128", "+A123BJC5D6E71G" },
    { 99, "Code39", "+A123BJC5D6E71G" },
    { 102, "DataMatrix", "+A123BJC5D6E71G", 2 },
    { 104, "QRCode", "+A123BJC5D6E71G" },
    { 106, "PDF417", "+A123BJC5D6E71G" },
    { 112, "Aztec", "+A123BJC5D6E71G", 2 },
    { 129, "Code39", "0CSSBD" },
    { 143, "QRCode", "UPNQR" },
};

} // namespace BarcodeReadings
