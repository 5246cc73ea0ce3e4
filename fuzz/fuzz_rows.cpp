// SPDX-License-Identifier: BSD-3-Clause
// Rows of data. The first byte chooses JSON, or the dialect of separated values. Every row has a value for
// each column, reading comes to an end, and stays there.
#include "fuzz/fuzzsupport.h"
#include "label/data/csvsource.h"
#include "label/data/jsonrows.h"

#include <QBuffer>

namespace {

constexpr std::uint8_t json = 'J';

CsvDialect dialectOf(std::uint8_t choice)
{
    constexpr char delimiters[] { 0, ',', ';', '\t' };
    const QByteArray encodings[] { {}, "UTF-8", "UTF-16", "windows-1252" };
    return { encodings[choice / 4 % 4], delimiters[choice % 4] };
}

std::unique_ptr<RowSource> sourceOf(std::uint8_t choice, const QByteArray &bytes, Problems &problems)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    DataInput input { QStringLiteral("rows"), std::move(buffer) };
    if (choice == json)
        return JsonRows::open(std::move(input), problems);
    return CsvSource::open(std::move(input), dialectOf(choice), problems);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, qsizetype(size) - 1);
    Problems problems;
    const std::unique_ptr<RowSource> source = sourceOf(data[0], bytes, problems);
    Fuzz::require(bool(source) == problems.isEmpty());
    if (!source)
        return 0;
    Fuzz::require(!source->columns().isEmpty());
    qint64 rows = 0;
    RowResult result = source->next();
    for (; result.kind == RowResult::Data || result.kind == RowResult::Broken; result = source->next()) {
        Fuzz::require(++rows == result.row.number && rows <= qint64(size));
        if (result.kind == RowResult::Data)
            Fuzz::require(result.row.values.size() == source->columns().size());
        else
            Fuzz::require(!result.problem.what.isEmpty());
    }
    Fuzz::require(!source->total() || *source->total() == rows);
    Fuzz::require(source->next().kind == result.kind);
    return 0;
}
