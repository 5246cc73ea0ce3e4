// SPDX-License-Identifier: BSD-3-Clause
// Barcodes: eight 16-bit numbers are the symbology and the options, the others the text in UTF-16, whether it
// is sound or not; all in little-endian order.
#include "fuzz/fuzzsupport.h"
#include "tests/support/answeredbarcode.h"

#include <QtEndian>

#include <array>

namespace {

using Setter = void (Zint::QZint::*)(int);
constexpr std::array<Setter, 8> setters { &Zint::QZint::setSymbol, &Zint::QZint::setSecurityLevel,
    &Zint::QZint::setWidth, &Zint::QZint::setInputMode, &Zint::QZint::setBorderType,
    &Zint::QZint::setBorderWidth, &Zint::QZint::setHeight, &Zint::QZint::setWhitespace };

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t headSize = 2 * setters.size();
    if (size < headSize)
        return -1;
    Fuzz::start();
    Zint::QZint barcode;
    for (const Setter setter : setters) {
        (barcode.*setter)(qFromLittleEndian<qint16>(data));
        data += 2;
    }
    QString text(qsizetype((size - headSize) / 2), Qt::Uninitialized);
    qFromLittleEndian<char16_t>(data, text.size(), text.data());
    barcode.setText(text);
    Fuzz::require(Barcodes::isAnswered(barcode));

    const Zint::QZint copy = barcode;
    Fuzz::require(Zint::geometryOf(copy) == Zint::geometryOf(barcode));
    return 0;
}
