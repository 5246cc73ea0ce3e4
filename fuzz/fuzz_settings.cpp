// SPDX-License-Identifier: BSD-3-Clause
// What people give options: rows, shares, lengths, sheets, inks, databases. Each text is understood or
// refused with a reason, and what is written out again means the same.
#include "fuzz/fuzzsupport.h"
#include "label/adjust/inkreplacement.h"
#include "label/adjust/lengthpair.h"
#include "label/batch/rowselection.h"
#include "label/batch/shard.h"
#include "label/data/sqllocation.h"
#include "label/sheet/sheetoptions.h"

#include <QProcessEnvironment>

namespace {

template <typename Parse> auto parsed(Parse parse, const QString &text)
{
    Problem problem;
    const auto value = parse(text, problem);
    Fuzz::require(value.has_value() == problem.what.isEmpty());
    return value;
}

void checkRows(const QString &text)
{
    const auto rows = parsed(&RowSelection::parse, text);
    if (!rows)
        return;
    qint64 chosen = 0;
    constexpr qint64 most = 100;
    for (qint64 row = 1; row <= most; ++row)
        chosen += rows->contains(row) ? 1 : 0;
    Fuzz::require(rows->countOf(most) == chosen);
}

void checkShare(const QString &text)
{
    const auto inNoCluster
        = [](const QString &share, Problem &problem) { return Shard::parse(share, {}, problem); };
    if (const auto shard = parsed(inNoCluster, text))
        Fuzz::require(shard->index >= 0 && shard->index < shard->count && shard->count <= Shard::MaxCount);
}

template <typename Value, typename Parse> void checkText(Parse parse, const QString &text)
{
    if (const std::optional<Value> value = parsed(parse, text))
        Fuzz::require(parsed(parse, value->text()) == value);
}

void checkReplacements(const QString &text)
{
    if (const auto replacements = parsed(&InkReplacement::parse, text))
        Fuzz::require(parsed(&InkReplacement::parse, InkReplacement::text(*replacements)) == replacements);
}

void checkCells(const QString &text)
{
    if (const auto cells = parsed(&SheetOptions::parseCells, text))
        Fuzz::require(!cells->isEmpty());
}

void checkDatabase(const QString &text)
{
    Problems problems;
    const auto location = SqlLocation::fromUrl(text, QStringLiteral("/nowhere"), problems);
    Fuzz::require(location.has_value() == problems.isEmpty());
    (void)SqlLocation::unknownScheme(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    checkRows(text);
    checkShare(text);
    checkText<Length>(&Length::parse, text);
    checkText<LengthPair>(&LengthPair::parse, text);
    checkText<LengthPair>(&LengthPair::parseDistances, text);
    checkReplacements(text);
    (void)parsed(&SheetOptions::parseSize, text);
    checkCells(text);
    checkDatabase(text);
    return 0;
}
