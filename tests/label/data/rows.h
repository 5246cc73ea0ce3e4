// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqlsource.h"

/// Sources of rows, as tests look at them.
namespace Rows {

inline QStringList texts(const Problems &problems)
{
    QStringList lines;
    for (const Problem &problem : problems)
        lines.append(problem.text());
    return lines;
}

/// The source that a query to a URL gives, relative to a folder; null with problems.
inline std::unique_ptr<SqlSource> open(const QString &url, const QString &query, Problems &problems,
    const SqlSource::Options &options = {}, const QString &folder = {})
{
    const std::optional<SqlLocation> location = SqlLocation::fromUrl(url, folder, problems);
    return location ? SqlSource::open(*location, query, options, problems) : nullptr;
}

/// The columns, the rows behind them joined by "|", and the problems where there are some.
inline QStringList linesOf(RowSource *source, const Problems &problems)
{
    QStringList lines = texts(problems);
    if (source)
        lines.append(source->columns().join(QChar(u'|')));
    RowResult result;
    while (source && (result = source->next()).kind != RowResult::End) {
        lines.append(
            result.kind == RowResult::Data ? result.row.values.join(QChar(u'|')) : result.problem.text());
        if (result.kind == RowResult::Failed)
            break;
    }
    return lines;
}

/// linesOf() the source that a query gives.
inline QStringList answer(const QString &url, const QString &query, const SqlSource::Options &options = {},
    const QString &folder = {})
{
    Problems problems;
    const std::unique_ptr<SqlSource> source = open(url, query, problems, options, folder);
    return linesOf(source.get(), problems);
}

} // namespace Rows
