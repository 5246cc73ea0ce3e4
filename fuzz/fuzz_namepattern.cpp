// SPDX-License-Identifier: BSD-3-Clause
// Names of files: the pattern before the first line end, the values behind it. Whatever the values, a name
// has the folders of its pattern, and no more.
#include "fuzz/fuzzsupport.h"
#include "label/data/namepattern.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QStringList parts = text.split(u'\n');
    const QStringList columns { QStringLiteral("sku"), QStringLiteral("name") };
    Problems problems;
    const std::optional<NamePattern> parsed = NamePattern::parse(parts.first(), columns, problems);
    Fuzz::require(parsed.has_value() == problems.isEmpty());
    if (!parsed)
        return 0;
    Problem problem;
    const Row row { 1, parts.sliced(1), QStringLiteral("row") };
    const std::optional<QString> name = parsed->nameFor({ row, 3 }, QStringLiteral("red"), problem);
    Fuzz::require(name.has_value() == problem.what.isEmpty());
    if (!name)
        return 0;
    const QStringList own = parts.first().split(u'/');
    const QStringList made = name->split(u'/');
    Fuzz::require(own.size() == made.size());
    for (qsizetype i = 0; i < own.size(); ++i)
        Fuzz::require((made[i] != u".." && made[i] != u".") || own[i] == made[i]);
    return 0;
}
