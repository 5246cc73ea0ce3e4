// SPDX-License-Identifier: BSD-3-Clause
// Binary documents. What is accepted can be saved and read again; as JSON as well, unless that would lose
// something.
#include "fuzz/fuzzsupport.h"
#include "label/binaryformat.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const LoadResult strict = BinaryFormat::read(bytes, {}, BrokenItems::Refuse);
    const LoadResult lenient = BinaryFormat::read(bytes, {}, BrokenItems::LeaveOut);
    Fuzz::require(strict.document.has_value() == strict.problems.isEmpty());
    Fuzz::require(lenient.document.has_value() || !strict.document.has_value());
    if (!lenient.document)
        return 0;
    Fuzz::requireRoundTrip(*lenient.document, DocumentFormat::Binary);
    Problems losses;
    if (!DocumentFile::toData(*lenient.document, DocumentFormat::Json, losses).isEmpty())
        Fuzz::requireRoundTrip(*lenient.document, DocumentFormat::Json);
    return 0;
}
