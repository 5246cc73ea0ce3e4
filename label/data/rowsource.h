// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QStringList>

#include <optional>

/// One row of data.
struct Row
{
    qint64 number = 0; ///< from 1, in the order of the source
    QStringList values; ///< one for each column
    QString address; ///< for people: "prices.csv:17"
};

/// A row's problems begin with where the row is, unless they tell it better themselves.
[[nodiscard]] inline Problem ofRow(const Problem &problem, const Row &row)
{
    const bool isLocated = !problem.file.isEmpty() && row.address.startsWith(problem.file);
    return isLocated ? problem : Problem { row.address, problem.where, problem.what, problem.advice };
}

/// What reading a row has come to.
struct RowResult
{
    enum Kind {
        Data, ///< a row
        Broken, ///< a row that cannot be used, and why; those behind it can be read
        Failed, ///< why nothing more can be read
        End ///< there is no further row
    };

    Kind kind = End;
    Row row; ///< of a broken one, number and address
    Problem problem;
};

/// Where rows come from, one after the other: none holds them all at once.
class VX_LABEL_EXPORT RowSource
{
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    Q_DISABLE_COPY_MOVE(RowSource)

    /// The names of the columns: none empty, and none twice.
    [[nodiscard]] virtual const QStringList &columns() const = 0;
    /// How many rows there are; nothing where only reading them all could tell.
    [[nodiscard]] virtual std::optional<qint64> total() const { return {}; }
    /// How many there are about, as those that were read suggest; nothing before the first, and where nothing
    /// suggests it.
    [[nodiscard]] virtual std::optional<qint64> estimate() const { return {}; }
    /// The next row.
    [[nodiscard]] virtual RowResult next() = 0;
};
