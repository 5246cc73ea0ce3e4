// SPDX-License-Identifier: BSD-3-Clause
// JSON documents. What is accepted can be saved in both forms and read again.
#include "fuzz/fuzzsupport.h"
#include "label/jsonformat.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    const auto text = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const LoadResult strict = JsonFormat::read(text, {}, BrokenItems::Refuse);
    const LoadResult lenient = JsonFormat::read(text, {}, BrokenItems::LeaveOut);
    Fuzz::require(strict.document.has_value() == strict.problems.isEmpty());
    Fuzz::require(lenient.document.has_value() || !strict.document.has_value());
    if (lenient.document) {
        Fuzz::requireRoundTrip(*lenient.document, DocumentFormat::Json);
        Fuzz::requireRoundTrip(*lenient.document, DocumentFormat::Binary);
    }
    return 0;
}
