// SPDX-License-Identifier: BSD-3-Clause
// Texts with places for the values of a row: the template before the first line end, the values behind it.
#include "fuzz/fuzzsupport.h"
#include "label/data/rowtemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QStringList parts = text.split(u'\n');
    const QStringList columns { QStringLiteral("sku"), QStringLiteral("price"), QStringLiteral("a:b|c") };
    Problems problems;
    const std::optional<RowTemplate> parsed = RowTemplate::parse(parts.first(), columns, problems);
    Fuzz::require(parsed.has_value() == problems.isEmpty());
    if (!parsed)
        return 0;
    Problem problem;
    const Row row { 1, parts.sliced(1), QStringLiteral("row") };
    const RowTemplate::Context context { QDateTime(QDate(2026, 2, 28), QTime(23, 59)), 12 };
    const std::optional<QString> filled = parsed->textFor(row, context, problem);
    Fuzz::require(filled.has_value() == problem.what.isEmpty());
    if (!RowTemplate::hasPlaces(parts.first()))
        Fuzz::require(filled == parts.first());
    return 0;
}
